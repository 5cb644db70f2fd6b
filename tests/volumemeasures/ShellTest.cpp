// Shell: cases worked by hand, the edge cases, and plain loops.
#include "view3d/volumemeasures/Shell.h"

#include "tests/support/RecordingProgress.h"
#include "tests/support/TestVolume.h"
#include "tests/volumemeasures/PlainVolumes.h"
#include "tests/volumemeasures/RandomVolumes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <memory>

namespace {

using measure::ShellRule;

constexpr int kLabel = 2;

struct FreeSaved {
  void operator()(void* saved) const { std::free(saved); }
};
using SavedArray = std::unique_ptr<std::int32_t[][280][280], FreeSaved>;

/// Zero pages, which cost nothing until they are used.
SavedArray NewSaved() {
  return SavedArray(static_cast<std::int32_t(*)[280][280]>(
      std::calloc(kMaxMeasuredSide, sizeof(std::int32_t[280][280]))));
}

class ShellTest : public testing::Test {
protected:
  TestVolume image{7, 7, 7};
  SavedArray saved = NewSaved();
  RecordingProgress progress;

  void Reduce(ShellRule rule, int label = kLabel) {
    measure::SaveLabels(image.Labels(), saved.get(), progress);
    measure::ReduceToShell(saved.get(), label, rule, image.Editable(), progress);
  }
  long Count(std::uint8_t value) const {
    return std::count(image.Bytes().begin(), image.Bytes().end(), value);
  }
};

TEST_F(ShellTest, ABoxKeepsItsSixSides) {
  image.Fill({1, 1, 1}, {5, 5, 5}, kLabel);

  Reduce(ShellRule::OtherValue);

  EXPECT_EQ(Count(kLabel), 125 - 27);
  EXPECT_EQ(image.At({1, 3, 3}), kLabel);
  EXPECT_EQ(image.At({2, 3, 3}), 0);
}

TEST_F(ShellTest, OtherLabelsAreGoneForTheMoment) {
  image.Fill({1, 1, 1}, {5, 5, 5}, kLabel + 1);

  Reduce(ShellRule::OtherValue);

  EXPECT_EQ(Count(0), 343);
}

TEST_F(ShellTest, AnotherLabelBesideMakesASurfaceUnderOtherValue) {
  image.Fill({0, 0, 0}, {6, 6, 6}, kLabel + 1);
  image.Fill({2, 2, 2}, {4, 4, 4}, kLabel);

  Reduce(ShellRule::OtherValue);

  EXPECT_EQ(Count(kLabel), 27 - 1);
}

TEST_F(ShellTest, AnotherLabelBesideMakesNoneUnderZeroNeighbour) {
  image.Fill({0, 0, 0}, {6, 6, 6}, kLabel + 1);
  image.Fill({2, 2, 2}, {4, 4, 4}, kLabel);
  image.voxel(1, 3, 3) = 0;

  Reduce(ShellRule::ZeroNeighbour);

  EXPECT_EQ(Count(kLabel), 1);
  EXPECT_EQ(image.At({2, 3, 3}), kLabel);
}

TEST_F(ShellTest, LabelVoxelsOnTheBorderOfTheVolumeAreSurfaceVoxels) {
  for (const ShellRule rule : {ShellRule::OtherValue, ShellRule::ZeroNeighbour}) {
    image.Fill({0, 0, 0}, {6, 6, 6}, kLabel);

    Reduce(rule);

    EXPECT_EQ(Count(kLabel), 343 - 125);
    EXPECT_EQ(Count(0), 125);
  }
}

TEST_F(ShellTest, CellsOfAnEarlierLargerVolumeDoNotCount) {
  TestVolume larger(9, 9, 9);
  larger.Fill({0, 0, 0}, {8, 8, 8}, kLabel);
  measure::SaveLabels(larger.Labels(), saved.get(), progress);
  image.Fill({0, 0, 0}, {6, 6, 6}, kLabel);

  Reduce(ShellRule::OtherValue);

  EXPECT_EQ(image.At({6, 3, 3}), kLabel);
  EXPECT_EQ(image.At({3, 3, 6}), kLabel);
}

TEST_F(ShellTest, TheBackgroundHasAShellToo) {
  image.Fill({3, 3, 3}, {3, 3, 3}, kLabel);

  Reduce(ShellRule::OtherValue, 0);

  EXPECT_EQ(Count(0), 343);  // the shell of label 0 cannot be told from what is cleared
}

TEST_F(ShellTest, RestoringBringsEveryLabelBack) {
  std::mt19937 random(3);
  for (int round = 0; round < 20; ++round) {
    const auto dims = RandomSizes(random);
    const auto volume = RandomLabels(random, dims);
    const std::vector<std::uint8_t> before = volume->Bytes();
    measure::SaveLabels(volume->Labels(), saved.get(), progress);
    measure::ReduceToShell(saved.get(), kLabel, ShellRule::OtherValue, volume->Editable(),
                           progress);

    measure::RestoreLabels(saved.get(), volume->Editable(), progress);

    ASSERT_EQ(volume->Bytes(), before);
  }
}

TEST_F(ShellTest, TheHighestLabelIsSavedAndRestored) {
  image.Fill({1, 1, 1}, {5, 5, 5}, 255);
  const std::vector<std::uint8_t> before = image.Bytes();

  Reduce(ShellRule::OtherValue, 255);
  EXPECT_EQ(Count(255), 125 - 27);
  EXPECT_EQ(saved[1][1][1], 255);
  measure::RestoreLabels(saved.get(), image.Editable(), progress);

  EXPECT_EQ(image.Bytes(), before);
}

TEST_F(ShellTest, EachPassStepsOncePerPlaneOfX) {
  measure::SaveLabels(image.Labels(), saved.get(), progress);
  EXPECT_EQ(progress.steps, 7);
  measure::ReduceToShell(saved.get(), kLabel, ShellRule::OtherValue, image.Editable(), progress);
  EXPECT_EQ(progress.steps, 14);
  measure::RestoreLabels(saved.get(), image.Editable(), progress);
  EXPECT_EQ(progress.steps, 21);
}

TEST_F(ShellTest, SavesAndReducesAsPlainLoopsDo) {
  std::mt19937 random(4);
  const SavedArray plainSaved = NewSaved();
  for (int round = 0; round < 200; ++round) {
    const auto dims = RandomSizes(random);
    SCOPED_TRACE(testing::PrintToString(dims));
    const auto volume = RandomLabels(random, dims);
    const int label = round % 10 == 0 ? 258 : static_cast<int>(random() % 4);
    const bool zeroOnly = random() % 2 == 0;
    TestVolume plainVolume(dims[0], dims[1], dims[2]);
    plain::Save(volume->Labels(), plainSaved.get());
    plain::Shell(plainSaved.get(), label, zeroOnly, plainVolume.Editable());

    measure::SaveLabels(volume->Labels(), saved.get(), progress);
    measure::ReduceToShell(saved.get(), label,
                           zeroOnly ? ShellRule::ZeroNeighbour : ShellRule::OtherValue,
                           volume->Editable(), progress);

    ASSERT_EQ(volume->Bytes(), plainVolume.Bytes());
  }
}

}  // namespace
