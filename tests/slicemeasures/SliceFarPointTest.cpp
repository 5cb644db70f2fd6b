// SliceFarPoint: maxima worked by hand, then the edge cases.
#include "views/slicemeasures/SliceFarPoint.h"

#include "tests/slicemeasures/SliceDrawing.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

namespace {

using measure::FarPoint;
using measure::PicturePixel;
using measure::ScanOrder;

constexpr int kLabel = 2;

char LevelOf(std::int32_t value) {
  switch (value) {
  case 0: return '.';
  case 13500: return 'o';
  case 65535: return '#';
  default: return '?';
  }
}

class SliceFarPointTest : public testing::TestWithParam<int> {
protected:
  FarPoint far;
  std::unique_ptr<CanvasPictures> pictures = std::make_unique<CanvasPictures>();

  Rows Mark(const Rows& mapped, const Rows& scanned, ScanOrder order = ScanOrder::ColumnsOuter) {
    const Drawing from(mapped, GetParam());
    const Drawing of(scanned, GetParam());
    Progress progress;
    measure::SliceVectors map = measure::StartVectors(from.Slice(), kLabel, from.Size());
    measure::ScanForward(map, progress);
    measure::ScanBackward(map, progress);
    measure::MarkFarPoint(of.Slice(), kLabel, map, order, far, pictures->result);
    return TextOf(pictures->result, of.Size(), LevelOf);
  }
};

TEST_P(SliceFarPointTest, ThePixelFarthestFromTheMappedImageIsWhite) {
  const Rows picture = Mark({"......",  //
                             ".2....",  //
                             "......"},
                            {"......",  //
                             ".222..",  //
                             "...2.."});

  EXPECT_EQ(far.distance, std::sqrt(5.0));
  EXPECT_EQ(far.pixel, (PicturePixel{3, 2}));
  EXPECT_EQ(picture, (Rows{"o.....", ".ooo..", "...#.."}));
}

TEST_P(SliceFarPointTest, IdenticalImagesHaveNoDistanceAndNoWhitePixel) {
  const Rows picture = Mark({".22.", ".22."}, {".22.", ".22."});

  EXPECT_EQ(far.distance, 0.0);
  EXPECT_EQ(picture, (Rows{".oo.", ".oo."}));
}

TEST_P(SliceFarPointTest, NoPixelToScanLeavesABlackPicture) {
  pictures->result[1][1] = 9;

  const Rows picture = Mark({".2..", "...."}, {"....", ".3.."});

  EXPECT_EQ(far.distance, 0.0);
  EXPECT_EQ(picture, (Rows{"....", "...."}));
}

TEST_P(SliceFarPointTest, OnPurposeTheFirstImprovementRepaintsTheFirstPixel) {
  const Rows picture = Mark({"2...", "...."}, {"....", "..2."});

  EXPECT_EQ(picture, (Rows{"o...", "..#."}));
}

TEST_P(SliceFarPointTest, OfEqualDistancesTheFirstInTheOrderOfTheLoopsIsMarked) {
  const Rows mapped = {".....", ".....", "..2..", ".....", "....."};
  const Rows scanned = {"....2", ".....", ".....", ".....", "2...."};

  Mark(mapped, scanned, ScanOrder::ColumnsOuter);
  EXPECT_EQ(far.pixel, (PicturePixel{0, 4}));

  far = {};
  Mark(mapped, scanned, ScanOrder::RowsOuter);
  EXPECT_EQ(far.pixel, (PicturePixel{4, 0}));
}

TEST_P(SliceFarPointTest, AFurtherScanGoesOnFromTheLargestDistance) {
  Mark({"2....", "....."}, {"....2", "....."});
  const Rows picture = Mark({"2....", "....."}, {"..2..", "....."});

  EXPECT_EQ(far.distance, 4.0);
  EXPECT_EQ(picture, (Rows{"..o..", "....."}));
}

INSTANTIATE_TEST_SUITE_P(Directions, SliceFarPointTest, testing::ValuesIn(kDirections));

TEST(SliceFarPointSizeTest, AnEmptyMapScansNothing) {
  const Drawing image({"22", "22"});
  const auto pictures = std::make_unique<CanvasPictures>();
  pictures->result[0][0] = 1;
  FarPoint far;

  measure::MarkFarPoint(image.Slice(), kLabel, {}, ScanOrder::RowsOuter, far, pictures->result);

  EXPECT_EQ(pictures->result[0][0], 1);
}

}  // namespace
