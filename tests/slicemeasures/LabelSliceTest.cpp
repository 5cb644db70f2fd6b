// LabelSlice: which voxel a pixel is.
#include "base/LabelSlice.h"

#include "tests/support/TestVolume.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

/// 5 x 4 x 3 voxels, each with a value of its own.
class LabelSliceTest : public testing::Test {
protected:
  TestVolume volume{5, 4, 3};

  LabelSliceTest() {
    for (int x = 0; x < 5; ++x) {
      for (int y = 0; y < 4; ++y) {
        for (int z = 0; z < 3; ++z) { volume.voxel(x, y, z) = Value(x, y, z); }
      }
    }
  }
  static std::uint8_t Value(int x, int y, int z) {
    return static_cast<std::uint8_t>(1 + x + 5 * (y + 4 * z));
  }
  LabelSlice Slice(int direction, int index) const { return {volume.Labels(), direction, index}; }
};

TEST_F(LabelSliceTest, EachDirectionHoldsItsAxisFixed) {
  EXPECT_EQ(Slice(kSliceXY, 2).At(4, 3), Value(4, 3, 2));
  EXPECT_EQ(Slice(kSliceYZ, 4).At(2, 3), Value(4, 3, 2));
  EXPECT_EQ(Slice(kSliceXZ, 3).At(2, 4), Value(4, 3, 2));
}

TEST_F(LabelSliceTest, TheSizeOfAPictureFollowsTheDirection) {
  EXPECT_EQ(Slice(kSliceXY, 0).Width(), 5);
  EXPECT_EQ(Slice(kSliceXY, 0).Height(), 4);
  EXPECT_EQ(Slice(kSliceYZ, 0).Width(), 3);
  EXPECT_EQ(Slice(kSliceYZ, 0).Height(), 4);
  EXPECT_EQ(Slice(kSliceXZ, 0).Width(), 3);
  EXPECT_EQ(Slice(kSliceXZ, 0).Height(), 5);
}

TEST_F(LabelSliceTest, APixelOutsideTheVolumeReadsAsZero) {
  for (const int direction : {kSliceXY, kSliceYZ, kSliceXZ}) {
    EXPECT_EQ(Slice(direction, -1).At(0, 0), 0);
    EXPECT_EQ(Slice(direction, 5).At(0, 0), 0);
    EXPECT_EQ(Slice(direction, 0).At(5, 0), 0);
    EXPECT_EQ(Slice(direction, 0).At(0, 5), 0);
    EXPECT_EQ(Slice(direction, 0).At(-1, 0), 0);
    EXPECT_EQ(Slice(direction, 0).At(0, -1), 0);
    EXPECT_EQ(Slice(direction, 0).AtSlice(0, 0, 2147483647), 0);
    EXPECT_NE(Slice(direction, 0).At(0, 0), 0);
  }
}

TEST_F(LabelSliceTest, ReadingAPictureGivesEveryPixelAndZeroBeyondTheVolume) {
  for (const int direction : {kSliceXY, kSliceYZ, kSliceXZ}) {
    for (const int index : {-1, 0, 1, 2, 7}) {
      const LabelSlice slice = Slice(direction, index);
      for (const int width : {0, 2, 9}) {
        for (const int height : {1, 3, 70}) {
          std::vector<int> read(static_cast<std::size_t>(width * height), -1);

          slice.Read(width, height, read.data(), [](std::uint8_t byte) { return 2 * byte; });

          for (int j = 0; j < height; ++j) {
            for (int i = 0; i < width; ++i) {
              ASSERT_EQ(read[static_cast<std::size_t>(j * width + i)], 2 * slice.At(i, j));
            }
          }
        }
      }
    }
  }
}

}  // namespace
