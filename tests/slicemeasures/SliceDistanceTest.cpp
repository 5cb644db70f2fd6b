// SliceDistance: vectors worked by hand, then the edge cases.
#include "views/slicemeasures/SliceDistance.h"

#include "tests/slicemeasures/SliceDrawing.h"
#include "tests/support/RecordingProgress.h"

#include <gtest/gtest.h>

#include <memory>
#include <utility>
#include <vector>

namespace {

constexpr int kLabel = 2;

measure::SliceVectors Map(const LabelSlice& slice, measure::SliceSize size) {
  Progress progress;
  measure::SliceVectors vectors = measure::StartVectors(slice, kLabel, size);
  measure::ScanForward(vectors, progress);
  measure::ScanBackward(vectors, progress);
  return vectors;
}

std::pair<int, int> At(const measure::SliceVectors& vectors, int i, int j) {
  return {vectors.x[vectors.Index(i, j)], vectors.y[vectors.Index(i, j)]};
}

class SliceDistanceTest : public testing::TestWithParam<int> {
protected:
  measure::SliceVectors Map(const Rows& rows) const {
    const Drawing image(rows, GetParam());
    return ::Map(image.Slice(), image.Size());
  }
};

TEST_P(SliceDistanceTest, ASinglePixelGivesEveryPixelItsExactOffset) {
  const Rows rows = {".......", ".......", "....2..", ".......", ".......", "......."};

  const measure::SliceVectors vectors = Map(rows);

  for (int i = 0; i < 7; ++i) {
    for (int j = 0; j < 6; ++j) {
      EXPECT_EQ(At(vectors, i, j), std::make_pair(4 - i, 2 - j));
      EXPECT_EQ(vectors.Length(i, j), std::hypot(4 - i, 2 - j));
    }
  }
}

TEST_P(SliceDistanceTest, TheNearerOfTwoPixelsWins) {
  const measure::SliceVectors vectors = Map({"2.......2"});
  EXPECT_EQ(At(vectors, 3, 0), std::make_pair(24 * 3, 24 * 3));  // one row: no scan

  const measure::SliceVectors rows = Map({".........", "2.......2"});
  EXPECT_EQ(At(rows, 3, 0), std::make_pair(-3, 1));
  EXPECT_EQ(At(rows, 5, 0), std::make_pair(3, 1));
  EXPECT_EQ(At(rows, 8, 1), std::make_pair(0, 0));
}

TEST_P(SliceDistanceTest, OfEqualLengthsTheOlderVectorStays) {
  const measure::SliceVectors vectors = Map({"2.2", "...", "2.2"});

  EXPECT_EQ(At(vectors, 1, 1), std::make_pair(-1, -1));  // from the row above, left before right
  EXPECT_EQ(At(vectors, 0, 1), std::make_pair(0, -1));
}

TEST_P(SliceDistanceTest, ALabelThatFillsTheSliceGivesZeroEverywhere) {
  const measure::SliceVectors vectors = Map({"222", "222"});
  const auto pictures = std::make_unique<CanvasPictures>();
  pictures->result[1][1] = 5;

  measure::PaintDistances(vectors, pictures->result);

  EXPECT_EQ(NumbersOf(pictures->result, vectors.size), (Rows{"...", "..."}));
}

TEST_P(SliceDistanceTest, ASliceOfOneRowKeepsItsStartValues) {
  const measure::SliceVectors vectors = Map({"2...2"});

  EXPECT_EQ(At(vectors, 0, 0), std::make_pair(0, 0));
  for (const int i : {1, 2, 3}) { EXPECT_EQ(At(vectors, i, 0), std::make_pair(40, 40)); }
}

TEST_P(SliceDistanceTest, ASliceOfOneColumnIsScanned) {
  const measure::SliceVectors vectors = Map({".", "2", ".", "."});

  EXPECT_EQ(At(vectors, 0, 0), std::make_pair(0, 1));
  EXPECT_EQ(At(vectors, 0, 3), std::make_pair(0, -2));
}

TEST_P(SliceDistanceTest, OnPurposeWithoutTheLabelTheStartValuesShrinkStepByStep) {
  const measure::SliceVectors vectors = Map({"...", "..."});

  // The start is 24 in x and y. Below the first row the steps to the left and down shorten it, and
  // along the row further ones; the backward scan goes on from there.
  EXPECT_EQ(At(vectors, 0, 1), std::make_pair(24, 23));
  EXPECT_EQ(At(vectors, 1, 1), std::make_pair(23, 23));
  EXPECT_EQ(At(vectors, 2, 1), std::make_pair(22, 23));
  EXPECT_EQ(At(vectors, 0, 0), std::make_pair(24, 24));
  EXPECT_EQ(At(vectors, 1, 0), std::make_pair(23, 24));
  EXPECT_EQ(At(vectors, 2, 0), std::make_pair(22, 24));
}

INSTANTIATE_TEST_SUITE_P(Directions, SliceDistanceTest, testing::ValuesIn(kDirections));

TEST(SlicePictureTest, TheGreyLevelIsNineHundredTimesTheLengthCut) {
  const Drawing image({"2....", "....."});
  const auto pictures = std::make_unique<CanvasPictures>();

  measure::PaintDistances(Map(image.Slice(), image.Size()), pictures->result);

  EXPECT_EQ(pictures->result[1][0], 900);
  EXPECT_EQ(pictures->result[1][1], 1272);  // 1272.79
  EXPECT_EQ(pictures->result[3][1], 2846);  // 2846.04
}

TEST(SlicePictureTest, OnPurposeTheGreyLevelStartsAgainBeyondSeventyThreePixels) {
  TestVolume volume(80, 2, 1);
  volume.voxel(0, 0, 0) = kLabel;
  const auto pictures = std::make_unique<CanvasPictures>();

  measure::PaintDistances(Map({volume.Labels(), kSliceXY, 0}, {80, 2}), pictures->result);

  EXPECT_EQ(pictures->result[72][0], 64800);
  EXPECT_EQ(pictures->result[73][0], 65700);  // shown as 65700 - 65536
}

TEST(SliceScanTest, EachScanStepsOncePerRowButTheFirst) {
  const Drawing image({"..", ".2", "..", ".."});
  RecordingProgress progress;
  measure::SliceVectors vectors = measure::StartVectors(image.Slice(), kLabel, image.Size());

  measure::ScanForward(vectors, progress);
  EXPECT_EQ(progress.steps, 3);
  measure::ScanBackward(vectors, progress);
  EXPECT_EQ(progress.steps, 6);
}

TEST(SliceScanTest, TheForwardScanAloneReachesWhatLiesBehindTheLabel) {
  const Drawing image({"...", ".2.", "..."});
  Progress progress;
  measure::SliceVectors vectors = measure::StartVectors(image.Slice(), kLabel, image.Size());

  measure::ScanForward(vectors, progress);

  EXPECT_EQ(At(vectors, 0, 2), std::make_pair(1, -1));
  EXPECT_EQ(At(vectors, 2, 1), std::make_pair(-1, 0));
  EXPECT_EQ(At(vectors, 1, 0), std::make_pair(24, 24));
}

TEST(SliceScanTest, PixelsBeyondTheVolumeDoNotBearTheLabel) {
  const Drawing image({"2"});

  const measure::SliceVectors vectors = Map(image.Slice(), {3, 3});

  EXPECT_EQ(At(vectors, 2, 2), std::make_pair(-2, -2));
}

TEST(SliceScanTest, ASliceOfTheLargestSizeFitsItsVectors) {
  TestVolume volume(300, 300, 1);

  const measure::SliceVectors vectors = Map({volume.Labels(), kSliceXY, 0}, {300, 300});

  EXPECT_EQ(At(vectors, 0, 0), std::make_pair(2400, 2400));
  EXPECT_EQ(At(vectors, 299, 299), std::make_pair(2101, 2101));
}

}  // namespace
