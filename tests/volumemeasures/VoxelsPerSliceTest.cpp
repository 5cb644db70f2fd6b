// VoxelsPerSlice: cases worked by hand, ranges of every kind, and plain loops.
#include "view3d/volumemeasures/VoxelsPerSlice.h"

#include "tests/support/TestVolume.h"
#include "tests/volumemeasures/RandomVolumes.h"

#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <vector>

namespace {

constexpr int kLabel = 2;

/// The counts, and two more places that have to stay as they are.
std::vector<float> Count(const LabelVolume& image, int label, int axis, int first, int count) {
  const auto places = static_cast<std::size_t>(count > 0 ? count : 0);
  std::vector<float> counts(places + 2, -7.0F);
  measure::CountPerSlice(image, label, axis, first, count, counts.data() + 1);
  EXPECT_EQ(counts.front(), -7.0F);
  EXPECT_EQ(counts.back(), -7.0F);
  return {counts.begin() + 1, counts.end() - 1};
}

/// A volume of 4 x 3 x 2 voxels with the label in planes x = 1 and 2, in row y = 2 without z = 1.
class VoxelsPerSliceTest : public testing::Test {
protected:
  VoxelsPerSliceTest() {
    volume.Fill({1, 0, 0}, {2, 1, 1}, kLabel);
    volume.Fill({1, 2, 0}, {2, 2, 0}, kLabel);
    volume.Fill({3, 0, 0}, {3, 2, 1}, kLabel + 1);
  }

  TestVolume volume{4, 3, 2};
};

TEST_F(VoxelsPerSliceTest, CountsTheLabelOnEverySliceOfAnAxis) {
  EXPECT_EQ(Count(volume.Labels(), kLabel, 0, 0, 4), (std::vector<float>{0, 5, 5, 0}));
  EXPECT_EQ(Count(volume.Labels(), kLabel, 1, 0, 3), (std::vector<float>{4, 4, 2}));
  EXPECT_EQ(Count(volume.Labels(), kLabel, 2, 0, 2), (std::vector<float>{6, 4}));
}

TEST_F(VoxelsPerSliceTest, ALabelThatDoesNotOccurCountsNothing) {
  for (const int label : {77, -1, 256, 256 + kLabel}) {
    for (const int axis : {0, 1, 2}) {
      EXPECT_EQ(Count(volume.Labels(), label, axis, 0, 2), (std::vector<float>{0, 0})) << label;
    }
  }
}

TEST_F(VoxelsPerSliceTest, ARangeBeginsAtItsFirstSlice) {
  EXPECT_EQ(Count(volume.Labels(), kLabel, 0, 2, 2), (std::vector<float>{5, 0}));
  EXPECT_EQ(Count(volume.Labels(), kLabel, 1, 2, 1), (std::vector<float>{2}));
  EXPECT_EQ(Count(volume.Labels(), kLabel, 2, 1, 1), (std::vector<float>{4}));
}

TEST_F(VoxelsPerSliceTest, SlicesOutsideTheVolumeHaveNoVoxels) {
  EXPECT_EQ(Count(volume.Labels(), kLabel, 0, -2, 8), (std::vector<float>{0, 0, 0, 5, 5, 0, 0, 0}));
  EXPECT_EQ(Count(volume.Labels(), kLabel, 1, 2, 3), (std::vector<float>{2, 0, 0}));
  EXPECT_EQ(Count(volume.Labels(), kLabel, 2, -1, 2), (std::vector<float>{0, 6}));
  for (const int first : {4, 100, INT_MAX, -5, INT_MIN}) {
    EXPECT_EQ(Count(volume.Labels(), kLabel, 0, first, 3), (std::vector<float>{0, 0, 0})) << first;
  }
}

TEST_F(VoxelsPerSliceTest, AnEmptyOrAReversedRangeWritesNothing) {
  for (const int count : {0, -1, INT_MIN}) {
    for (const int axis : {0, 1, 2}) { Count(volume.Labels(), kLabel, axis, 1, count); }
  }
}

TEST_F(VoxelsPerSliceTest, AVolumeWithoutVoxelsHasNoneOnAnySlice) {
  EXPECT_EQ(Count({}, 0, 2, 0, 3), (std::vector<float>{0, 0, 0}));
}

TEST(VoxelsPerSlice, OnPurposeACountEndsAtTwoToTheTwentyFour) {
  // One run of voxels stands for all of the slice: 4097 x 4096 of them are 4096 too many.
  constexpr int kRows = 4097;
  constexpr int kRun = 4096;
  const std::vector<std::uint8_t> run(kRun, kLabel);
  const std::vector<const std::uint8_t*> rows(kRows, run.data());
  const std::uint8_t* const* const planes[] = {rows.data()};
  const LabelVolume image = {planes, 1, kRows, kRun};

  EXPECT_EQ(Count(image, kLabel, 0, 0, 1), (std::vector<float>{16777216.0F}));
}

TEST(VoxelsPerSlice, CountsAsPlainLoopsDo) {
  std::mt19937 random(11);
  for (int round = 0; round < 60; ++round) {
    const auto dims = RandomSizes(random);
    const auto image = RandomLabels(random, dims);
    const LabelVolume labels = image->Labels();
    std::array<std::vector<float>, 3> plain;
    for (std::size_t axis = 0; axis < 3; ++axis) {
      plain[axis].resize(static_cast<std::size_t>(dims[axis]));
    }
    for (int x = 0; x < dims[0]; ++x) {
      for (int y = 0; y < dims[1]; ++y) {
        for (int z = 0; z < dims[2]; ++z) {
          if (labels.At(x, y, z) != kLabel) { continue; }
          plain[0][static_cast<std::size_t>(x)] += 1.0F;
          plain[1][static_cast<std::size_t>(y)] += 1.0F;
          plain[2][static_cast<std::size_t>(z)] += 1.0F;
        }
      }
    }

    for (std::size_t axis = 0; axis < 3; ++axis) {
      ASSERT_EQ(Count(labels, kLabel, static_cast<int>(axis), 0, dims[axis]), plain[axis]);
    }
  }
}

}  // namespace
