// SliceOverlap: cases drawn by hand, then the edge cases.
#include "views/slicemeasures/SliceOverlap.h"

#include "tests/slicemeasures/SliceDrawing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <optional>

namespace {

using measure::OverlapRatio;
using measure::SliceDivisor;

constexpr int kLabel = 2;
constexpr SliceDivisor kDivisors[] = {SliceDivisor::Average, SliceDivisor::Union,
                                      SliceDivisor::FirstImage};

char LevelOf(std::int32_t value) {
  switch (value) {
  case 0: return '.';
  case 15241: return 'o';
  case 65535: return '#';
  default: return '?';
  }
}

class SliceOverlapTest : public testing::TestWithParam<int> {
protected:
  measure::SliceOverlap overlap;
  std::unique_ptr<CanvasPictures> pictures = std::make_unique<CanvasPictures>();

  Rows Count(const Rows& a, const Rows& b) {
    const Drawing first(a, GetParam());
    const Drawing second(b, GetParam());
    measure::CountOverlap(first.Slice(), second.Slice(), kLabel, first.Size(), overlap,
                          pictures->result);
    return TextOf(pictures->result, first.Size(), LevelOf);
  }
};

TEST_P(SliceOverlapTest, CountsTheThreeClassesAndPaintsThem) {
  const Rows picture = Count({".22..",  //
                              ".22..",  //
                              "....."},
                             {"..22.",  //
                              "..22.",  //
                              "..2.."});

  EXPECT_EQ(overlap.common, 2);
  EXPECT_EQ(overlap.onlyA, 2);
  EXPECT_EQ(overlap.onlyB, 3);
  EXPECT_EQ(overlap.Union(), 7);
  EXPECT_EQ(picture, (Rows{".o#o.",  //
                           ".o#o.",  //
                           "..o.."}));
}

TEST_P(SliceOverlapTest, OtherLabelsDoNotCount) {
  const Rows picture = Count({"13.4"}, {"1334"});

  EXPECT_EQ(overlap.Union(), 0);
  EXPECT_EQ(picture, (Rows{"...."}));
}

TEST_P(SliceOverlapTest, ASecondSliceAddsToTheCounts) {
  Count({"22"}, {"2."});
  Count({"22"}, {".2"});

  EXPECT_EQ(overlap.common, 2);
  EXPECT_EQ(overlap.onlyA, 2);
  EXPECT_EQ(overlap.onlyB, 0);
}

TEST_P(SliceOverlapTest, EmptyRegionsGiveNothingAndABlackPicture) {
  const Rows picture = Count({"..", ".."}, {"..", ".."});

  EXPECT_EQ(overlap.common, 0);
  EXPECT_EQ(overlap.Union(), 0);
  EXPECT_EQ(picture, (Rows{"..", ".."}));
}

TEST_P(SliceOverlapTest, IdenticalImagesHaveOnlyWhiteAndBlack) {
  const Rows picture = Count({".2.", "222"}, {".2.", "222"});

  EXPECT_EQ(overlap.common, overlap.Union());
  EXPECT_EQ(picture, (Rows{".#.", "###"}));
}

TEST_P(SliceOverlapTest, PixelsBeyondTheVolumeBelongToNeitherImage) {
  const Drawing a({"22", "22"}, GetParam());
  const Drawing b({"22", "2."}, GetParam());

  measure::CountOverlap(a.Slice(), b.Slice(), kLabel, {4, 3}, overlap, pictures->result);

  EXPECT_EQ(overlap.common, 3);
  EXPECT_EQ(overlap.onlyA, 1);
  EXPECT_EQ(TextOf(pictures->result, {4, 3}, LevelOf), (Rows{"##..", "#o..", "...."}));
}

TEST_P(SliceOverlapTest, TheMaskIsWhiteOnTheLabelAlone) {
  const Drawing image({".21", "2.2"}, GetParam());
  pictures->result[0][0] = 7;
  pictures->result[2][0] = 7;

  measure::PaintMask(image.Slice(), kLabel, image.Size(), pictures->result);

  EXPECT_EQ(TextOf(pictures->result, image.Size(), LevelOf), (Rows{".#.", "#.#"}));
}

INSTANTIATE_TEST_SUITE_P(Directions, SliceOverlapTest, testing::ValuesIn(kDirections));

TEST(SliceOverlapRatioTest, EachDivisorIsAnotherQuantity) {
  const measure::SliceOverlap overlap{5, 3, 6};  // A alone, B alone, both

  EXPECT_EQ(OverlapRatio(overlap, SliceDivisor::Average), 6.0 / 10);
  EXPECT_EQ(OverlapRatio(overlap, SliceDivisor::Union), 6.0 / 14);
  EXPECT_EQ(OverlapRatio(overlap, SliceDivisor::FirstImage), 6.0 / 11);
}

TEST(SliceOverlapRatioTest, IdenticalRegionsGiveOne) {
  for (const SliceDivisor divisor : kDivisors) { EXPECT_EQ(OverlapRatio({0, 0, 9}, divisor), 1.0); }
}

TEST(SliceOverlapRatioTest, DisjointRegionsGiveZero) {
  for (const SliceDivisor divisor : kDivisors) { EXPECT_EQ(OverlapRatio({3, 4, 0}, divisor), 0.0); }
}

TEST(SliceOverlapRatioTest, EmptyRegionsGiveNone) {
  for (const SliceDivisor divisor : kDivisors) {
    EXPECT_EQ(OverlapRatio({0, 0, 0}, divisor), std::nullopt);
  }
}

TEST(SliceOverlapRatioTest, ARegionInBAloneHasNoneToTheFirstImage) {
  EXPECT_EQ(OverlapRatio({0, 5, 0}, SliceDivisor::FirstImage), std::nullopt);
}

TEST(SliceOverlapRatioTest, OnPurposeTheAverageIsTruncated) {
  EXPECT_EQ(OverlapRatio({1, 0, 1}, SliceDivisor::Average), 1.0);  // 1 / (3 / 2), not 2 / 3
  EXPECT_EQ(OverlapRatio({1, 0, 0}, SliceDivisor::Average), std::nullopt);  // 1 / 2 is 0
}

}  // namespace
