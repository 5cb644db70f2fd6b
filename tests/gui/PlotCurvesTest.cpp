// The plot window on a study: what its two commands count, and how far the curves reach.
#include "tests/gui/View3DScene.h"
#include "ui/Plot.h"

#include <FL/Fl_Choice.H>
#include <FL/fl_draw.H>

#include <cmath>
#include <limits>
#include <memory>
#include <string>

namespace {

constexpr std::array<int, 3> kDims = {5, 4, 6};

/// Two images. The first holds label 2 in all of x = 1 and label 3 in the slices z = 4 and 5 of
/// x = 3; the second holds label 2 in the slice z = 0.
class PlotCurvesTest : public View3DScene {
protected:
  void SetUp() override {
    View3DScene::SetUp();
    AddImage(kDims, {1, 1, 1}, [](int x, int, int z) {
      if (x == 1) { return 2; }
      return x == 3 && z >= 4 ? 3 : 0;
    });
    AddImage(kDims, {1, 1, 1}, [](int, int, int z) { return z == 0 ? 2 : 0; });
    FillMenus();
    Ui().mainWindow->hide();  // without a window manager it would lie over the plot
    Ui().plotWindow->position(0, 0);
    Ui().plotWindow->show();
    Ui().plotWindow->wait_for_expose();
    Settle();
  }

  void FillMenus() {
    for (Fl_Choice* choice : {Ui().plotImage1Choice, Ui().plotImage2Choice}) {
      choice->add("a");
      choice->add("b");
      choice->add("none");
    }
    Ui().plotImage1Choice->value(0);
    Ui().plotImage2Choice->value(1);
    for (Fl_Choice* choice : {Ui().plotLabel1Choice, Ui().plotLabel2Choice}) {
      for (const char* label : {"0", "2", "3", "unused"}) { choice->add(label); }
      choice->value(1);
    }
    const std::uint8_t labels[] = {0, 2, 3, 9};
    std::copy(std::begin(labels), std::end(labels), Ui().labelList);
    SetLabel(2);
  }
  void Axes(bool x, bool y, bool z) {
    Ui().plotXCheck->value(x ? 1 : 0);
    Ui().plotYCheck->value(y ? 1 : 0);
    Ui().plotZCheck->value(z ? 1 : 0);
  }
  void Range(double first, double last) {
    Ui().plotSlice1Slider->value(first);
    Slide(Ui().plotSlice2Slider, last);
  }
  void PressPlot() { Click(ButtonByLabel(Ui().plotWindow, "Plot")); }

  Plot& View() { return *Ui().plot; }
  std::vector<float> First() { return {View().curve1, View().curve1 + View().count}; }
  std::vector<float> Second() { return {View().curve2, View().curve2 + View().count}; }

  /// All pixels of the plot as drawn now.
  std::vector<std::uint8_t> Screen() {
    Settle();
    View().redraw();
    Fl::flush();
    View().make_current();
    const std::unique_ptr<uchar[]> bytes(fl_read_image(nullptr, 0, 0, View().w(), View().h()));
    return {bytes.get(), bytes.get() + std::ptrdiff_t{3} * View().w() * View().h()};
  }
};

using Counts = std::vector<float>;

// The button "Plot": the whole axis, by the label of the measures.

TEST_F(PlotCurvesTest, PlotCountsTheWholeAxisForTheCurrentLabel) {
  Ui().plotLabel1Choice->value(2);
  Ui().plotSlice1Slider->value(3);

  Axes(true, false, false);
  PressPlot();
  EXPECT_EQ(First(), (Counts{0, 24, 0, 0, 0}));
  EXPECT_EQ(Second(), (Counts{4, 4, 4, 4, 4}));
  EXPECT_EQ(View().yMax, 24.0F);
  EXPECT_EQ(View().xMax, 4.0F);

  Axes(false, true, false);
  PressPlot();
  EXPECT_EQ(First(), (Counts{6, 6, 6, 6}));
  EXPECT_EQ(Second(), (Counts{5, 5, 5, 5}));
  EXPECT_EQ(View().yMax, 6.0F);

  Axes(false, false, true);
  PressPlot();
  EXPECT_EQ(First(), (Counts{4, 4, 4, 4, 4, 4}));
  EXPECT_EQ(Second(), (Counts{20, 0, 0, 0, 0, 0}));
  EXPECT_EQ(View().yMax, 20.0F);
}

TEST_F(PlotCurvesTest, BothCommandsDrawAtOnce) {
  const auto onScreen = [this] {
    View().make_current();
    const std::unique_ptr<uchar[]> bytes(fl_read_image(nullptr, 0, 0, View().w(), View().h()));
    return std::vector<std::uint8_t>(bytes.get(),
                                     bytes.get() + std::ptrdiff_t{3} * View().w() * View().h());
  };
  Axes(true, false, false);
  const auto empty = Screen();

  Ui().PlotWholeRange();
  const auto whole = onScreen();
  EXPECT_NE(whole, empty);
  EXPECT_EQ(whole, Screen());
  Ui().plotSlice1Slider->value(1);
  Ui().plotSlice2Slider->value(4);
  Ui().UpdatePlot();

  const auto range = onScreen();
  EXPECT_NE(range, whole);
  EXPECT_EQ(range, Screen());
}

TEST_F(PlotCurvesTest, TheSlidersShowAHiddenWindow) {
  Ui().plotWindow->hide();
  Axes(true, false, false);

  Range(0, 3);

  EXPECT_TRUE(Ui().plotWindow->shown());
}

TEST_F(PlotCurvesTest, PlotDoesNotShowAHiddenWindow) {
  Ui().plotWindow->hide();
  Axes(true, false, false);

  Ui().PlotWholeRange();

  EXPECT_FALSE(Ui().plotWindow->shown());
  EXPECT_EQ(View().count, 5);
}

TEST_F(PlotCurvesTest, WithoutAnAxisTheCurvesStayAndTheTopGoesToZero) {
  Axes(true, false, false);
  PressPlot();
  Axes(false, false, false);

  PressPlot();
  EXPECT_EQ(First(), (Counts{0, 24, 0, 0, 0}));
  EXPECT_EQ(View().yMax, 0.0F);
  View().yMax = 7.0F;
  Range(1, 3);

  EXPECT_EQ(First(), (Counts{0, 24, 0, 0, 0}));
  EXPECT_EQ(View().yMax, 0.0F);
}

TEST_F(PlotCurvesTest, AnImageWithoutTheLabelHasACurveOfZeros) {
  SetLabel(3);
  Axes(false, false, true);
  PressPlot();
  EXPECT_EQ(First(), (Counts{0, 0, 0, 0, 4, 4}));
  EXPECT_EQ(Second(), (Counts{0, 0, 0, 0, 0, 0}));
  EXPECT_EQ(View().yMax, 4.0F);

  SetLabel(9);
  PressPlot();

  EXPECT_EQ(First(), (Counts{0, 0, 0, 0, 0, 0}));
  EXPECT_EQ(View().yMax, 0.0F);
}

TEST_F(PlotCurvesTest, WithTwoAxesTheLastOneShowsUnderTheTopOfBoth) {
  Axes(true, false, true);

  PressPlot();

  EXPECT_EQ(First(), (Counts{4, 4, 4, 4, 4, 4}));
  EXPECT_EQ(Second(), (Counts{20, 0, 0, 0, 0, 0}));
  EXPECT_EQ(View().yMax, 24.0F);  // from x
}

// The sliders: a range, by a label for each image.

TEST_F(PlotCurvesTest, TheRangeCountsEachImageForItsOwnLabel) {
  Ui().plotLabel1Choice->value(2);
  SetLabel(77);
  Axes(false, false, true);

  Range(3, 6);

  EXPECT_EQ(First(), (Counts{0, 4, 4}));
  EXPECT_EQ(Second(), (Counts{0, 0, 0}));
  EXPECT_EQ(View().yMax, 4.0F);
  EXPECT_EQ(View().xs[2], 2.0F);  // from the start of the range
  EXPECT_EQ(View().xMin, 0.0F);
  EXPECT_EQ(View().xMax, 2.0F);

  Range(0, 6);
  EXPECT_EQ(First(), (Counts{0, 0, 0, 0, 4, 4}));
  EXPECT_EQ(Second(), (Counts{20, 0, 0, 0, 0, 0}));
}

TEST_F(PlotCurvesTest, EveryAxisHasItsRange) {
  Axes(true, false, false);
  Range(1, 3);
  EXPECT_EQ(First(), (Counts{24, 0}));
  Axes(false, true, false);
  Range(1, 4);

  EXPECT_EQ(Second(), (Counts{5, 5, 5}));
}

TEST_F(PlotCurvesTest, TheEndsOfTheRangeAreTruncated) {
  Axes(true, false, false);

  Range(0.9, 2.0);

  EXPECT_EQ(First(), (Counts{0, 24}));
}

TEST_F(PlotCurvesTest, OnPurposeALastSliceInPartCountsForTheTopAlone) {
  Axes(true, false, false);

  Range(0, 1.5);

  EXPECT_EQ(First(), (Counts{0}));
  EXPECT_EQ(View().yMax, 24.0F);
}

TEST_F(PlotCurvesTest, ARangeThatRunsTheOtherWayHasNoCurve) {
  Axes(true, false, false);
  Range(4, 1);
  EXPECT_EQ(View().count, -3);
  EXPECT_EQ(View().curve1, nullptr);
  EXPECT_EQ(View().yMax, 0.0F);

  Range(2, 2);

  EXPECT_EQ(View().count, 0);
  EXPECT_EQ(View().curve1, nullptr);
}

TEST_F(PlotCurvesTest, ARangeBeyondTheImageCountsNothingThere) {
  Axes(true, false, false);

  Range(-2, 9);

  EXPECT_EQ(First(), (Counts{0, 0, 0, 24, 0, 0, 0, 0, 0, 0, 0}));
}

TEST_F(PlotCurvesTest, SlidersThatHoldNoNumberBreakNothing) {
  constexpr double kInfinite = std::numeric_limits<double>::infinity();
  const double values[] = {std::nan(""), kInfinite, -kInfinite, 1e300, -1e300, 3.0};
  Axes(true, false, false);
  for (const double first : values) {
    for (const double last : values) {
      Ui().plotSlice1Slider->value(first);
      Slide(Ui().plotSlice2Slider, last);

      EXPECT_LE(View().count, kMaxPlotSlices);
    }
  }
}

TEST_F(PlotCurvesTest, ThreeHundredSlicesArePlottedAndOneMoreIsRefused) {
  Axes(true, false, false);
  Range(0, 300);
  EXPECT_EQ(View().count, 300);
  EXPECT_TRUE(alerts.empty());
  const Counts before = First();
  const float top = View().yMax;

  Range(0, 301);

  EXPECT_EQ(alerts, std::vector<std::string>{"A plot holds at most 300 slices"});
  EXPECT_EQ(First(), before);
  EXPECT_EQ(View().yMax, top);
}

TEST_F(PlotCurvesTest, AnImageOfMoreThanThreeHundredSlicesIsRefusedOnThatAxisAlone) {
  for (int i = 0; i < Ui().imageCount; ++i) { delete Ui().images[i]; }
  Ui().imageCount = 0;
  AddImage({2, 2, 301}, {1, 1, 1}, [](int, int, int) { return 2; });
  AddImage({2, 2, 301}, {1, 1, 1}, [](int, int, int) { return 2; });
  Axes(false, false, true);
  PressPlot();
  EXPECT_EQ(alerts, std::vector<std::string>{"A plot holds at most 300 slices"});
  EXPECT_EQ(View().count, 0);

  Axes(true, false, false);
  PressPlot();

  EXPECT_EQ(First(), (Counts{602, 602}));
  EXPECT_EQ(alerts.size(), 1U);
}

TEST_F(PlotCurvesTest, AnotherImagesSizesNeverCount) {
  // Larger than the first image on every axis, and smaller.
  AddImage({7, 9, 8}, {1, 1, 1}, [](int, int, int) { return 2; });
  AddImage({3, 2, 1}, {1, 1, 1}, [](int, int, int) { return 2; });
  Ui().plotImage1Choice->value(2);
  Ui().plotImage2Choice->add("small");
  Ui().plotImage2Choice->value(3);
  Axes(true, false, false);

  PressPlot();
  EXPECT_EQ(First(), (Counts{24, 24, 24, 24, 24}));
  EXPECT_EQ(Second(), (Counts{2, 2, 2, 0, 0}));
  Range(0, 6);

  EXPECT_EQ(First(), (Counts{24, 24, 24, 24, 24, 0}));
}

TEST_F(PlotCurvesTest, AChooserEntryWithoutAnImageKeepsTheCurves) {
  Axes(true, false, false);
  PressPlot();
  Ui().plotImage2Choice->value(2);

  PressPlot();
  Range(0, 3);

  EXPECT_EQ(First(), (Counts{0, 24, 0, 0, 0}));
}

TEST_F(PlotCurvesTest, TheReadOutSaysThePlaceInTheRangeNotTheSlice) {
  // The slices z = 1 to 3 are like 0 to 2 of an image that has the label everywhere.
  AddImage(kDims, {1, 1, 1}, [](int, int, int) { return 2; });
  Ui().plotImage1Choice->value(2);
  Ui().plotImage2Choice->value(2);
  Axes(false, false, true);
  Range(0, 3);
  View().selectedSlice = 1;
  const auto fromZero = Screen();

  Range(1, 4);

  EXPECT_EQ(Screen(), fromZero);
  View().selectedSlice = 2;
  EXPECT_NE(Screen(), fromZero);
}

}  // namespace
