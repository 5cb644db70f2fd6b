// What a run over all pairs and averages leave of the window, and what they refuse.
#include "VoxData/VoxData.h"
#include "tests/support/Interface.h"
#include "tests/support/PanelWatch.h"
#include "tests/support/SmallStudy.h"
#include "ui/ColorLegend.h"
#include "ui/Fields.h"
#include "view3d/Window3D.h"
#include "views/Window2D.h"

#include <FL/Fl_Box.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Check_Button.H>
#include <FL/Fl_Choice.H>
#include <FL/Fl_Group.H>
#include <FL/Fl_Input.H>
#include <FL/Fl_Output.H>
#include <FL/Fl_Scrollbar.H>
#include <FL/Fl_Slider.H>

#include <filesystem>
#include <gmock/gmock.h>
#include <set>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class PairRunsTest : public Interface {
protected:
  std::unique_ptr<SmallStudy> files;

  void SetUp() override {
    Interface::SetUp();
    files = std::make_unique<SmallStudy>(Scratch());
  }

  /// Outlines whose lengths go from 1 up.
  void Load(int users, int repeats) {
    chooserAnswers.emplace_back(files->List(users, repeats, files->Outlines(users * repeats)));
    Menu("File/Load/Selection File");
    Settle();
    ASSERT_EQ(Ui().imageCount, users * repeats);
    SetLabel(SmallStudy::kLabel);
    Ui().compareOverlayCheck->value(1);
    Ui().compareHaussdorfCheck->value(1);
    Ui().compareSurfaceDistCheck->value(1);
    TakeOutput();
  }
  void Queue(int first, int second) {
    Ui().compareImage1Choice->value(first);
    Ui().compareImage2Choice->value(second);
    Click(Ui().compareAddButton);
  }
  void Compute() {
    chooserAnswers.emplace_back(files->Path("pairs"));
    Click(Ui().compareComputeButton);
    Settle();
  }

  /// The texts of all fields of a group, but for the progress panel.
  void TextsOf(Fl_Group& group, std::vector<std::string>& texts) {
    for (int i = 0; i < group.children(); ++i) {
      Fl_Widget* child = group.child(i);
      if (child == Ui().progressPanel) { continue; }
      if (auto* inner = child->as_group()) { TextsOf(*inner, texts); }
      if (auto* field = dynamic_cast<Fl_Input_*>(child)) { texts.emplace_back(field->value()); }
    }
  }
  /// All that the main window says of the last measure.
  std::vector<std::string> Shown() {
    std::vector<std::string> texts;
    TextsOf(*Ui().mainWindow, texts);
    for (const Fl_Box* text :
         {Ui().legendTextMaxOutside, Ui().legendTextOutside, Ui().legendTextZero,
          Ui().legendTextInside, Ui().legendTextMaxInside}) {
      texts.emplace_back(text->label() != nullptr ? text->label() : "");
    }
    for (const int number :
         {Ui().window3D->displayedSurfaces, Ui().colorLegend->mode,
          Ui().updateColorButton->active() != 0 ? 1 : 0, Ui().image1Choice->value(),
          Ui().image2Choice->value(), static_cast<int>(Ui().imageSlider->value())}) {
      texts.push_back(std::to_string(number));
    }
    return texts;
  }
  /// The colours of the picture that "Update Color" has painted.
  std::vector<std::uint8_t> UpdatedColours() {
    Ui().maxInsideInput->value("3");
    Ui().maxOutsideInput->value("3");
    Click(Ui().updateColorButton);
    std::vector<std::uint8_t> colours;
    const VoxData& picture = *Ui().displayVolume1;
    for (int x = 0; x < picture.dimX; ++x) {
      for (int y = 0; y < picture.dimY; ++y) {
        colours.insert(colours.end(), picture.work[x][y], picture.work[x][y] + picture.dimZ);
      }
    }
    return colours;
  }

  enum class Run { Batch, Histogram };

  /// The same after a surface distance of two other images and a run over `pairs`.
  std::vector<std::uint8_t> ColoursAfter(const std::vector<std::pair<int, int>>& pairs, Run run) {
    Load(1, 4);
    Choose(Ui().image1Choice, 0);
    Choose(Ui().image2Choice, 3);
    Click(Ui().surfaceDistanceButton);
    Click(ButtonByLabel(Ui().compareWindow, "Clear Field"));
    for (const auto& [first, second] : pairs) { Queue(first, second); }
    if (run == Run::Batch) {
      Compute();
    } else {
      chooserAnswers.emplace_back(files->Path("histogram"));
      Click(Ui().compareSurfaceHistoButton);
    }
    return UpdatedColours();
  }
};

TEST_F(PairRunsTest, ARunLeavesTheMainWindowAsItIs) {
  Load(1, 4);
  Choose(Ui().image1Choice, 1);
  Choose(Ui().image2Choice, 3);
  Click(Ui().surfaceDistanceButton);
  const std::vector<std::string> before = Shown();
  ASSERT_THAT(before, testing::Contains("Distance Outside"));
  Click(Ui().compareAllButton);
  const PanelWatch watch(Ui());

  Compute();
  EXPECT_EQ(Shown(), before);
  chooserAnswers.emplace_back(files->Path("histogram"));
  Click(Ui().compareSurfaceHistoButton);

  EXPECT_EQ(Shown(), before);
  EXPECT_THAT(watch.states, IsEmpty());  // the panel is not shown
}

TEST_F(PairRunsTest, UpdateColorShowsWhatTheLastPairAloneWouldHaveLeft) {
  const auto last = ColoursAfter({{1, 2}}, Run::Batch);

  EXPECT_NE(last, ColoursAfter({}, Run::Batch));
  EXPECT_NE(last, ColoursAfter({{1, 0}}, Run::Batch));
  EXPECT_EQ(last, ColoursAfter({{0, 1}, {0, 2}, {2, 1}, {0, 3}, {1, 2}}, Run::Batch));
  EXPECT_EQ(last, ColoursAfter({{1, 2}, {2, 1}, {1, 2}}, Run::Batch));
}

TEST_F(PairRunsTest, UpdateColorAfterAHistogramShowsWhatTheLastPairAloneWouldHaveLeft) {
  const auto last = ColoursAfter({{1, 2}}, Run::Histogram);

  EXPECT_NE(last, ColoursAfter({{1, 0}}, Run::Histogram));
  EXPECT_EQ(last, ColoursAfter({{0, 1}, {0, 2}, {2, 1}, {0, 3}, {1, 2}}, Run::Histogram));
}

/// Runs three measures by turns whenever events are handled, and keeps what they show.
class Interruption {
public:
  std::vector<std::string> shown;

  explicit Interruption(MainUI& window) : ui(window) { Fl::add_check(Run, this); }
  Interruption(const Interruption&) = delete;
  Interruption& operator=(const Interruption&) = delete;
  ~Interruption() { Fl::remove_check(Run, this); }

private:
  static void Run(void* data) {
    auto& self = *static_cast<Interruption*>(data);
    if (self.inside || self.calls++ % 7 != 0) { return; }
    self.inside = true;
    const int turn = self.calls % 3;
    Fl_Button* const buttons[] = {self.ui.overlayResult3DButton, self.ui.haussdorf3DButton,
                                  self.ui.surfaceDistanceButton};
    const Fl_Output* const fields[] = {self.ui.intersect3DOutput, self.ui.haussdorf3DOutput,
                                       self.ui.sumDistOutput};
    buttons[turn]->do_callback();
    self.shown.push_back(std::to_string(turn) + " " + fields[turn]->value());
    self.inside = false;
  }

  MainUI& ui;
  int calls = 0;
  bool inside = false;
};

TEST_F(PairRunsTest, MeasuresInsideARunShowWholeImagesAndChangeNoRow) {
  Load(1, 4);
  Click(Ui().compareAllButton);
  Compute();
  const std::string table = SmallStudy::Text(files->Path("pairs.xls"));
  chooserAnswers.emplace_back(files->Path("histogram"));
  Click(Ui().compareSurfaceHistoButton);
  const std::string histogram = SmallStudy::Text(files->Path("histogram.xls"));
  Choose(Ui().image1Choice, 0);
  Choose(Ui().image2Choice, 3);

  const Interruption interruption(Ui());
  Compute();
  chooserAnswers.emplace_back(files->Path("histogram"));
  Click(Ui().compareSurfaceHistoButton);

  // Of 16 voxels the first image has the first 4; the others lie 1, 2 and 3 beyond them.
  EXPECT_GT(interruption.shown.size(), 20U);
  EXPECT_THAT(std::set<std::string>(interruption.shown.begin(), interruption.shown.end()),
              ElementsAre("0 4", "1 3.000000", "2 24.000000"));
  EXPECT_THAT(alerts, IsEmpty());
  EXPECT_EQ(SmallStudy::Text(files->Path("pairs.xls")), table + table);
  EXPECT_EQ(SmallStudy::Text(files->Path("histogram.xls")), histogram + histogram);
}

TEST_F(PairRunsTest, AQueuedImageOfAnotherSizeIsRefusedBeforeTheFirstPair) {
  Load(1, 3);
  Queue(0, 1);
  Queue(0, 2);
  Ui().images[2]->dimX -= 1;

  Compute();
  chooserAnswers.emplace_back(files->Path("histogram"));
  Click(Ui().compareSurfaceHistoButton);

  Ui().images[2]->dimX += 1;
  const std::string refusal =
      "The image has another size than the first image and cannot be measured";
  EXPECT_THAT(alerts, ElementsAre(refusal, refusal));
  EXPECT_EQ(TakeOutput(), "");
  EXPECT_FALSE(std::filesystem::exists(files->Path("pairs.xls")));
  EXPECT_FALSE(std::filesystem::exists(files->Path("histogram.xls")));
}

// Averages.

TEST_F(PairRunsTest, WithoutUsersThePanelOnlyFlashes) {
  Load(1, 2);
  Ui().userCount = 0;
  Ui().progressRange->maximum(7);
  Ui().progressBar->size(100, Ui().progressBar->h());

  Click(Ui().createAverageButton);

  EXPECT_EQ(Ui().progressRange->maximum(), 0.0);  // a job of no steps
  EXPECT_EQ(Ui().progressBar->w(), 0);
  EXPECT_FALSE(Ui().progressPanel->visible());
  EXPECT_EQ(Ui().imageSlider->maximum(), 1.0);
  EXPECT_EQ(TakeOutput(), "");
}

TEST_F(PairRunsTest, AnAverageIsACopyOfTheFirstImageWhateverIsOnShow) {
  Load(1, 3);
  VoxData& first = *Ui().images[0];
  first.labels[SmallStudy::kLabel].rgb[1] = 51;  // a fifth of 255
  first.SetSpacing(1.5F, 2.5F, 3.5F);
  Slide(Ui().imageSlider, 2);

  Click(Ui().createAverageButton);

  const VoxData& average = *Ui().images[3];
  EXPECT_EQ(average.GetLabelColour(SmallStudy::kLabel)[1], 0.2F);
  EXPECT_THAT(average.spacing, ElementsAre(1.5F, 2.5F, 3.5F));
  EXPECT_EQ(average.grey, first.grey);
  EXPECT_THAT(average.labelPresent, testing::Each(0));
  EXPECT_EQ(Ui().imageSlider->value(), 2.0);
  EXPECT_EQ(Ui().imageCount, 3);
}

TEST_F(PairRunsTest, TheViewsAreDrawnAnewAfterAnAverage) {
  Load(1, 3);
  for (const Window2D* view : {Ui().yzView, Ui().xzView, Ui().xyView}) {
    ASSERT_EQ(view->damage(), 0);
  }

  Ui().createAverageButton->do_callback();

  for (const Window2D* view : {Ui().yzView, Ui().xzView, Ui().xyView}) {
    EXPECT_NE(view->damage(), 0);
  }
}

TEST_F(PairRunsTest, AnAverageIsShownInTheThreeViews) {
  Load(1, 3);  // their union has three planes along x, from 2 on
  Click(Ui().createAverageButton);
  const auto labelled = [&](Window2D* view) {
    Settle();
    int pixels = 0;
    for (const Pixel& pixel : PixelsOf(view)) {
      pixels += pixel.red != pixel.green || pixel.green != pixel.blue ? 1 : 0;
    }
    return pixels;
  };
  Slide(Ui().cursorSlider[0], 4);
  Slide(Ui().cursorSlider[1], 2);
  Slide(Ui().cursorSlider[2], 2);
  for (Window2D* view : {Ui().yzView, Ui().xzView, Ui().xyView}) {
    Slide(Ui().imageSlider, 0);
    const int ofTheFirst = labelled(view);
    Slide(Ui().imageSlider, 3);
    EXPECT_GT(labelled(view), ofTheFirst);
  }
  EXPECT_THAT(alerts, IsEmpty());
}

}  // namespace
