// Studies of forty and sixty segmentations, from the list to the last table, as a user works them;
// every number and every file against plain loops over the same voxels.
#include "VoxData/VoxData.h"
#include "tests/support/Interface.h"
#include "tests/support/PlainStudy.h"
#include "tests/support/SmallStudy.h"
#include "tests/volumemeasures/PlainPairs.h"
#include "ui/Fields.h"

#include <FL/Fl_Button.H>
#include <FL/Fl_Check_Button.H>
#include <FL/Fl_Choice.H>
#include <FL/Fl_Group.H>
#include <FL/Fl_Output.H>
#include <FL/Fl_Scrollbar.H>
#include <FL/Fl_Slider.H>

#include <gmock/gmock.h>
#include <random>
#include <sstream>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr std::array<int, 3> kDims = {13, 11, 9};
constexpr std::array<float, 3> kSpacing = {1.0F, 0.5F, 2.5F};
constexpr int kLabel = 2;
constexpr int kOther = 7;
constexpr int kSlice = 4;  // the plane along z on which slices are measured

/// Not-a-number counts as equal with either sign.
std::string WithoutNanSigns(std::string text) {
  for (std::size_t at = text.find("-nan"); at != std::string::npos; at = text.find("-nan", at)) {
    text.erase(at, 1);
  }
  return text;
}

/// Ragged bodies of two labels that differ from user to user and from repeat to repeat.
void Draw(TestVolume& image, int user, int repeat) {
  std::mt19937 random(static_cast<unsigned>(100 * user + repeat));
  const auto below = [&](unsigned limit) {
    return static_cast<int>(random() % limit);
  };
  const int reachX = 3 + user % 3;
  const int reachY = 2 + below(3);
  const int reachZ = 2 + below(2);
  for (int x = 0; x < kDims[0]; ++x) {
    for (int y = 0; y < kDims[1]; ++y) {
      for (int z = 0; z < kDims[2]; ++z) {
        const double away = std::pow((x - 6.0) / reachX, 2) + std::pow((y - 5.0) / reachY, 2) +
                            std::pow((z - 4.0) / reachZ, 2);
        const bool ragged = below(9) == 0;
        if (away <= 1.0) {
          image.voxel(x, y, z) = static_cast<std::uint8_t>(ragged ? 0 : kLabel);
        } else if (away <= 1.4 && ragged) {
          image.voxel(x, y, z) = static_cast<std::uint8_t>(kOther);
        }
      }
    }
  }
}

class WholeStudyTest : public Interface {
protected:
  std::unique_ptr<plain::Study> study;

  void SetUp() override {
    Interface::SetUp();
    folder = Scratch() + "/";
  }

  std::string Path(const std::string& name) const { return folder + name; }
  std::string Text(const std::string& name) { return SmallStudy::Text(Path(name)); }
  static std::string Name(int user, int repeat) {
    return "u" + std::to_string(user) + "_r" + std::to_string(repeat) + ".gipl";
  }

  /// Draws and writes a study; returns the path of its list, with `more` lines behind it.
  std::string Make(int users, int repeats, const std::string& more = "") {
    study = std::make_unique<plain::Study>(users, repeats, kLabel, kDims);
    gipl::Header header;
    header.size = kDims;
    header.spacing = kSpacing;
    header.type = gipl::kSigned16;
    gipl::Write(Path("grey.gipl"), header, std::vector<std::uint8_t>(2 * Count(), 1));
    header.type = gipl::kUnsigned8;
    std::string list =
        std::to_string(users) + "\n" + std::to_string(repeats) + "\n" + Path("grey.gipl") + "\n";
    for (int user = 0; user < users; ++user) {
      for (int repeat = 0; repeat < repeats; ++repeat) {
        study->images.push_back(study->Empty());
        Draw(*study->images.back(), user, repeat);
        gipl::Write(Path(Name(user, repeat)), header, FileOrder(*study->images.back()));
        list += Path(Name(user, repeat)) + "\n";
      }
    }
    gipl::WriteText(Path("study.tlx"), list + more + "\n");
    return Path("study.tlx");
  }

  void Load(const std::string& list) {
    chooserAnswers.emplace_back(list);
    Menu("File/Load/Selection File");
    Settle();
  }
  void LoadAndChoose(const std::string& list) {
    Load(list);
    ASSERT_EQ(Ui().imageCount, static_cast<int>(study->images.size()));
    Choose(Ui().colorLabelChoice, 0);  // 0 has no entry
    ASSERT_EQ(Ui().currentLabel, kLabel);
    Slide(Ui().cursorSlider[2], kSlice);
    TakeOutput();
  }

  /// The voxels of a slot are those of `image`.
  void ExpectVoxels(int slot, const TestVolume& image) {
    const VoxData* loaded = Ui().images[slot];
    ASSERT_NE(loaded, nullptr) << slot;
    int differing = 0;
    study->ForEachVoxel([&](int x, int y, int z) {
      differing += loaded->Labels().At(x, y, z) != image.At({x, y, z}) ? 1 : 0;
    });
    EXPECT_EQ(differing, 0) << slot;
  }

  void ExpectUsersAgreeOnSlice() {
    for (int user = 0; user < study->users; ++user) {
      Slide(Ui().overlayIntraSlider, user);
      Click(Ui().overlayIntraButton);
      EXPECT_EQ(Ui().probaOverlapIntraOutput->value(), study->Intra(user, kSlice)) << user;
    }
    Click(Ui().overlayInterButton);
    EXPECT_EQ(Ui().probaOverlapInterOutput->value(), study->Inter(kSlice));
  }

  void ExpectProbabilityMap() {
    Click(Ui().probabilityButton);
    EXPECT_EQ(Ui().probaOverlapOutput->value(), study->Overlap());
    int differing = 0;
    study->ForEachVoxel([&](int x, int y, int z) {
      differing += Ui().displayVolume1->work[x][y][z] != study->Colour(x, y, z) ? 1 : 0;
    });
    EXPECT_EQ(differing, 0);
  }

  /// The matrix of two slots, `first` and `second`, in a file of its own.
  std::string MatrixOf(int first, int second) {
    Choose(Ui().image1Choice, first);
    Choose(Ui().image2Choice, second);
    const std::string name =
        "matrix" + std::to_string(first) + "_" + std::to_string(second) + ".xls";
    chooserAnswers.emplace_back(Path(name));
    Click(Ui().confusionMatrixButton);
    return Text(name);
  }

  void Boxes(bool overlay, bool haussdorf, bool surface) {
    Ui().compareOverlayCheck->value(overlay ? 1 : 0);
    Ui().compareHaussdorfCheck->value(haussdorf ? 1 : 0);
    Ui().compareSurfaceDistCheck->value(surface ? 1 : 0);
  }
  void PressForFile(Fl_Widget* button, const std::string& name) {
    TakeOutput();
    chooserAnswers.emplace_back(Path(name));
    Click(button);
    Settle();
  }

  /// The pairs as they are queued, from the numbers alone: the first ones of all.
  std::vector<std::pair<int, int>> FirstPairs(int images, std::size_t count) const {
    std::vector<std::pair<int, int>> pairs;
    for (int i = 0; i < images; ++i) {
      for (int j = i + 1; j < images && pairs.size() < count; ++j) { pairs.emplace_back(i, j); }
    }
    return pairs;
  }

  plain::Pairs PlainPairs() const {
    std::vector<TestVolume*> volumes;
    for (const plain::Study::Volume& image : study->images) { volumes.push_back(image.get()); }
    return {volumes, kLabel, {kSpacing[0], kSpacing[1], kSpacing[2]}};
  }

  /// A table whose rows begin with the numbers of two images, with their names instead.
  std::string WithNames(const std::string& table) const {
    std::istringstream lines(table);
    std::string text;
    for (std::string line; std::getline(lines, line); text += line + "\n") {
      if (line.rfind("Image 1\t", 0) == 0) { continue; }
      std::istringstream cells(line);
      int first = 0;
      int second = 0;
      cells >> first >> second;
      std::string rest;
      std::getline(cells, rest);
      line = EntryOf(first) + "\t" + EntryOf(second) + rest;
    }
    return text;
  }

private:
  std::string folder;

  static std::size_t Count() { return static_cast<std::size_t>(kDims[0]) * kDims[1] * kDims[2]; }
  std::string EntryOf(int slot) const { return Name(slot / study->repeats, slot % study->repeats); }
  /// The file holds the rows and the planes of a volume from their far ends.
  static std::vector<std::uint8_t> FileOrder(const TestVolume& image) {
    std::vector<std::uint8_t> bytes;
    for (int z = kDims[2] - 1; z >= 0; --z) {
      for (int y = kDims[1] - 1; y >= 0; --y) {
        for (int x = 0; x < kDims[0]; ++x) { bytes.push_back(image.At({x, y, z})); }
      }
    }
    return bytes;
  }
};

TEST_F(WholeStudyTest, FortySegmentationsAreAveragedAndTheAveragesAreMeasured) {
  LoadAndChoose(Make(4, 10));
  for (int slot = 0; slot < 40; ++slot) { ExpectVoxels(slot, *study->images[slot]); }

  Click(Ui().createAverageButton);

  EXPECT_THAT(alerts, IsEmpty());
  EXPECT_EQ(Ui().imageSlider->maximum(), 43.0);
  std::vector<plain::Study::Volume> averages;
  for (int user = 0; user < 4; ++user) {
    averages.push_back(study->Average(user));
    ExpectVoxels(40 + user, *averages.back());
  }
  Choose(Ui().image1Choice, 40);
  Choose(Ui().image2Choice, 43);
  Click(Ui().overlayResult3DButton);
  const std::vector<std::uint8_t>& a = averages[0]->Bytes();
  const std::vector<std::uint8_t>& b = averages[3]->Bytes();
  int common = 0;
  int onlyA = 0;
  int onlyB = 0;
  for (std::size_t i = 0; i < a.size(); ++i) {
    common += a[i] != 0 && b[i] != 0 ? 1 : 0;
    onlyA += a[i] != 0 && b[i] == 0 ? 1 : 0;
    onlyB += a[i] == 0 && b[i] != 0 ? 1 : 0;
  }
  ASSERT_GT(onlyA + onlyB, 0);
  EXPECT_EQ(Ui().intersect3DOutput->value(), std::to_string(common));
  EXPECT_EQ(Ui().nbPixelAOutput->value(), std::to_string(onlyA));
  EXPECT_EQ(Ui().nbPixelBOutput->value(), std::to_string(onlyB));
  // An average has no labels of its own in a matrix: the body holds its zeros alone.
  EXPECT_EQ(WithoutNanSigns(MatrixOf(0, 40)),
            WithoutNanSigns(plain::Matrix({Name(0, 0), study->images[0]->Bytes(), {0, 2, 7}},
                                          {"average 0", a, {}})));
}

TEST_F(WholeStudyTest, FortySegmentationsShowHowFarTheirUsersAgree) {
  LoadAndChoose(Make(4, 10));

  ExpectUsersAgreeOnSlice();
  ExpectProbabilityMap();

  EXPECT_THAT(alerts, IsEmpty());
  const auto matrix = [&](int first, int second) {
    return plain::Matrix(
        {Name(first / 10, first % 10), study->images[first]->Bytes(), {0, 2, 7}},
        {Name(second / 10, second % 10), study->images[second]->Bytes(), {0, 2, 7}});
  };
  EXPECT_EQ(MatrixOf(0, 39), matrix(0, 39));
  EXPECT_EQ(MatrixOf(17, 3), matrix(17, 3));
}

TEST_F(WholeStudyTest, AllPairsOfFortySegmentationsGiveTheirTableAndExport) {
  LoadAndChoose(Make(4, 10));
  Click(Ui().compareDataButton);
  Click(Ui().compareAllButton);
  EXPECT_THAT(alerts, ElementsAre("The list holds at most 200 pairs: 580 of 780 were left out"));
  Boxes(true, true, true);

  PressForFile(Ui().compareComputeButton, "pairs");

  const auto pairs = FirstPairs(40, 200);
  plain::Pairs expected = PlainPairs();
  expected.Compare(pairs, {true, true, true, false, true});
  const std::string table = WithoutNanSigns(WithNames(expected.table));
  EXPECT_EQ(TakeOutput(), expected.printed);
  EXPECT_EQ(WithoutNanSigns(Text("pairs.xls")), table);
  PressForFile(Ui().compareExportButton, "first");
  const std::size_t firstRow = table.find('\n', table.find('\n') + 1) + 1;
  EXPECT_EQ(WithoutNanSigns(Text("first.xls")), table.substr(0, firstRow));
  PressForFile(Ui().compareComputeButton, "pairs.xls");
  EXPECT_EQ(WithoutNanSigns(Text("pairs.xls")), table + table);
  for (int slot = 0; slot < 40; ++slot) { ExpectVoxels(slot, *study->images[slot]); }
}

TEST_F(WholeStudyTest, TheHistogramOfFortySegmentationsHoldsBothDirections) {
  LoadAndChoose(Make(4, 10));
  Click(Ui().compareAllInvButton);

  PressForFile(Ui().compareSurfaceHistoButton, "histogram");

  std::vector<std::pair<int, int>> pairs = FirstPairs(40, 200);
  for (auto& [first, second] : pairs) { std::swap(first, second); }
  plain::Pairs expected = PlainPairs();
  expected.Histogram(pairs);
  EXPECT_EQ(TakeOutput(), expected.printed);
  EXPECT_EQ(Text("histogram.xls"), WithNames(expected.histogramTable));
}

TEST_F(WholeStudyTest, SixtySegmentationsAreMeasuredAndOneMoreChangesNothing) {
  const std::string list = Make(5, 12);
  LoadAndChoose(list);
  for (int slot = 0; slot < 60; ++slot) { ExpectVoxels(slot, *study->images[slot]); }
  ExpectUsersAgreeOnSlice();
  ExpectProbabilityMap();
  EXPECT_THAT(alerts, IsEmpty());
  Click(Ui().createAverageButton);
  EXPECT_THAT(alerts, ElementsAre(HasSubstr("no room for the averages")));
  EXPECT_EQ(Ui().imageSlider->maximum(), 59.0);

  alerts.clear();
  Load(Make(5, 12, Path(Name(0, 0)) + "\n"));

  EXPECT_THAT(alerts, ElementsAre(HasSubstr("names 61 segmentations")));
  EXPECT_EQ(Ui().imageCount, 60);
  EXPECT_EQ(Ui().currentLabel, kLabel);
  for (int slot = 0; slot < 60; ++slot) { ExpectVoxels(slot, *study->images[slot]); }
  ExpectUsersAgreeOnSlice();
  EXPECT_EQ(MatrixOf(59, 0), plain::Matrix({Name(4, 11), study->images[59]->Bytes(), {0, 2, 7}},
                                           {Name(0, 0), study->images[0]->Bytes(), {0, 2, 7}}));
}

TEST_F(WholeStudyTest, AllPairsOfSixtySegmentationsGiveTheirTable) {
  LoadAndChoose(Make(5, 12));
  Click(Ui().compareAllButton);
  EXPECT_THAT(alerts, ElementsAre("The list holds at most 200 pairs: 1570 of 1770 were left out"));
  Boxes(true, true, true);

  PressForFile(Ui().compareComputeButton, "pairs");

  plain::Pairs expected = PlainPairs();
  expected.Compare(FirstPairs(60, 200), {true, true, true, false, true});
  EXPECT_EQ(WithoutNanSigns(Text("pairs.xls")), WithoutNanSigns(WithNames(expected.table)));
  EXPECT_EQ(TakeOutput(), expected.printed);
}

}  // namespace
