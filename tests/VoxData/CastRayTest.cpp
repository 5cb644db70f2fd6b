// The picking ray by hand: where it enters, what it passes, and what it passes over.
#include "VoxData/VoxData.h"

#include <gtest/gtest.h>

#include <array>

namespace {

using Point = std::array<double, 3>;
using Voxel = std::array<int, 3>;

/// A volume of 4 x 4 x 4 voxels without a label; voxel i reaches from i - 0.5 to i + 0.5.
class CastRayByHandTest : public testing::Test {
protected:
  CastRayByHandTest() { volume.SetupSlot("", 4, 4, 4, 1, 0, 0, 0, 1, 1); }

  void Label(int x, int y, int z) { volume.seg[x][y][z] = 3; }
  int Cast(const Point& from, const Point& direction) {
    return volume.CastRay(from[0], from[1], from[2], direction[0], direction[1], direction[2],
                          hit.data());
  }

  VoxData volume;
  Voxel hit = {-7, -7, -7};
};

TEST_F(CastRayByHandTest, TheFirstLabelOnTheWayStopsTheRay) {
  Label(1, 2, 2);
  Label(2, 2, 2);

  EXPECT_EQ(Cast({-3, 2, 2}, {1, 0, 0}), 1);
  EXPECT_EQ(hit, (Voxel{1, 2, 2}));
  EXPECT_EQ(Cast({9, 2, 2}, {-1, 0, 0}), 1);
  EXPECT_EQ(hit, (Voxel{2, 2, 2}));
}

TEST_F(CastRayByHandTest, EveryAxisIsWalkedBothWays) {
  Label(1, 1, 1);
  for (std::size_t axis = 0; axis < 3; ++axis) {
    for (const double sign : {1.0, -1.0}) {
      Point from = {1, 1, 1};
      Point direction = {0, 0, 0};
      from[axis] -= 5 * sign;
      direction[axis] = sign;
      hit = {-7, -7, -7};

      EXPECT_EQ(Cast(from, direction), 1) << axis << sign;
      EXPECT_EQ(hit, (Voxel{1, 1, 1}));
    }
  }
}

TEST_F(CastRayByHandTest, ARayThroughNoLabelLeavesTheVoxelAlone) {
  Label(0, 0, 0);

  EXPECT_EQ(Cast({-3, 2, 2}, {1, 0, 0}), 0);
  EXPECT_EQ(hit, (Voxel{-7, -7, -7}));
}

TEST_F(CastRayByHandTest, ARayFromInsideBeginsInItsOwnVoxel) {
  Label(2, 1, 3);
  Label(3, 1, 3);

  EXPECT_EQ(Cast({2.4, 1.4, 2.6}, {1, 0, 0}), 1);

  EXPECT_EQ(hit, (Voxel{2, 1, 3}));
}

TEST_F(CastRayByHandTest, AVoxelBelongsToItsLowerBoundary) {
  Label(2, 2, 2);

  EXPECT_EQ(Cast({0, 1.5, 2}, {1, 0, 0}), 1);
  EXPECT_EQ(hit, (Voxel{2, 2, 2}));
  EXPECT_EQ(Cast({0, 2.5, 2}, {1, 0, 0}), 0);
}

TEST_F(CastRayByHandTest, ALongDirectionStepsNoFurtherThanAShortOne) {
  Label(0, 1, 1);
  for (const double length : {1e-6, 1.0, 1e6}) {
    hit = {-7, -7, -7};

    EXPECT_EQ(Cast({-5, 1, 1}, {length, 0, 0}), 1) << length;
    EXPECT_EQ(hit, (Voxel{0, 1, 1}));
  }
}

TEST_F(CastRayByHandTest, TheWayToTheVolumeTakesAtMost9998Steps) {
  Label(0, 1, 1);

  EXPECT_EQ(Cast({-9998.5, 1, 1}, {1, 0, 0}), 1);
  EXPECT_EQ(Cast({-9999.5, 1, 1}, {1, 0, 0}), -1);
}

TEST_F(CastRayByHandTest, AVoxelCutAtItsCornerIsMet) {
  // From (0, 0.3) two along x for one along y: x = 0.5 at y = 0.55, so (0, 1) is passed before.
  Label(0, 1, 0);

  EXPECT_EQ(Cast({0, 0.3, 0}, {2, 1, 0}), 1);

  EXPECT_EQ(hit, (Voxel{0, 1, 0}));
}

TEST_F(CastRayByHandTest, OfTwoBoundariesAtTheSameDistanceXGoesBeforeYBeforeZ) {
  // The boundary that is stepped to is met exactly, the other one is missed by a rounding: a ray
  // through an edge passes the voxel on that side of it.
  Label(3, 0, 1);
  EXPECT_EQ(Cast({1, 0.75, 1.75}, {6, -5, -2}), 0) << "x before y";
  volume.seg[3][0][1] = 0;
  Label(2, 0, 1);
  EXPECT_EQ(Cast({0, 0.75, 0}, {9, -2, 3}), 0) << "x before z";
  Label(0, 0, 3);
  EXPECT_EQ(Cast({0.125, 2.125, 0.75}, {-1, -9, 6}), 1) << "y before z";
}

TEST_F(CastRayByHandTest, OnPurposeARayWithoutXMovementStepsAlongYAlone) {
  // Along y and z, twice as steep: it crosses (1, 0, 1) between two boundaries of y.
  Label(1, 0, 1);
  EXPECT_EQ(Cast({1, 0, 0}, {0, 1, 2}), 0);
  EXPECT_EQ(Cast({1, 0, 0}, {1e-6, 1, 2}), 1);
  EXPECT_EQ(hit, (Voxel{1, 0, 1}));

  Label(1, 1, 1);

  EXPECT_EQ(Cast({1, 0, 0}, {0, 1, 2}), 1);
  EXPECT_EQ(hit, (Voxel{1, 1, 1}));
}

}  // namespace
