// The colour table of the surfaces, and the colour value at a point of a surface.
#include "view3d/SurfaceColours.h"

#include "tests/support/Golden.h"
#include "tests/support/TestVolume.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>

namespace {

using surface::ColourNear;
using surface::VoxelAt;

struct Table {
  float rgb[256][3];
  Table() { surface::FillColorTable(rgb); }
};

void ExpectColour(const Table& table, int value, float red, float green, float blue) {
  EXPECT_EQ(table.rgb[value][0], red) << value;
  EXPECT_EQ(table.rgb[value][1], green) << value;
  EXPECT_EQ(table.rgb[value][2], blue) << value;
}

TEST(ColorTable, TheThreePureColoursStandAt64At128AndAt192) {
  const Table table;

  ExpectColour(table, 0, 0, 0, 0);
  ExpectColour(table, 64, 1, 0, 0);
  ExpectColour(table, 128, 0, 1, 0);
  ExpectColour(table, 192, 0, 0, 1);
}

TEST(ColorTable, HalfWayBetweenThemTwoColoursAreThreeQuarters) {
  const Table table;

  ExpectColour(table, 32, 0.75F, 0, 0);
  ExpectColour(table, 96, 0.75F, 0.75F, 0);
  ExpectColour(table, 160, 0, 0.75F, 0.75F);
  ExpectColour(table, 224, 0, 0, 0.75F);
  ExpectColour(table, 255, 0, 0, 0.031005859375F);
}

TEST(ColorTable, NoColourIsNegativeOrAboveOne) {
  const Table table;

  for (const auto& rgb : table.rgb) {
    for (const float channel : rgb) {
      EXPECT_GE(channel, 0.0F);
      EXPECT_LE(channel, 1.0F);
    }
  }
}

TEST(ColorTable, HoldsTheKnownValues) {
  const Table table;
  const nlohmann::json known = golden::Json("views/views.json")["colorTable"];

  ASSERT_EQ(known.size(), 768U);
  for (std::size_t i = 0; i < known.size(); ++i) {
    EXPECT_EQ(table.rgb[i / 3][i % 3], known[i].get<float>()) << i;
  }
}

TEST(VoxelAt, RoundsTheHalfUp) {
  EXPECT_EQ(VoxelAt(3.0), 3);
  EXPECT_EQ(VoxelAt(3.49), 3);
  EXPECT_EQ(VoxelAt(3.5), 4);
}

TEST(VoxelAt, TruncatesTowardZeroBelowZero) {
  EXPECT_EQ(VoxelAt(-0.6), 0);
  EXPECT_EQ(VoxelAt(-1.4), 0);
  EXPECT_EQ(VoxelAt(-1.6), -1);
}

TEST(VoxelAt, WhatIsNoVoxelLiesOutsideEveryVolume) {
  const TestVolume volume(2, 2, 2);
  for (const double value : {std::nan(""), HUGE_VAL, -HUGE_VAL, 1e300, -1e300, 1e9, -1e9}) {
    const int voxel[3] = {VoxelAt(value), 0, 0};

    EXPECT_LT(voxel[0], -1000);
    EXPECT_EQ(ColourNear(volume.Labels(), voxel), 0);
  }
}

class ColourNearTest : public testing::Test {
protected:
  TestVolume volume{5, 5, 5};

  int At(int x, int y, int z) const {
    const int voxel[3] = {x, y, z};
    return ColourNear(volume.Labels(), voxel);
  }
};

TEST_F(ColourNearTest, TheVoxelItselfComesFirst) {
  volume.Fill({0, 0, 0}, {4, 4, 4}, 64);
  volume.voxel(2, 2, 2) = 192;

  EXPECT_EQ(At(2, 2, 2), 192);
}

TEST_F(ColourNearTest, TheNeighboursFollowAlongXThenYThenZUpBeforeDown) {
  volume.voxel(3, 2, 2) = 1;
  volume.voxel(1, 2, 2) = 2;
  volume.voxel(2, 3, 2) = 3;
  volume.voxel(2, 1, 2) = 4;
  volume.voxel(2, 2, 3) = 5;
  volume.voxel(2, 2, 1) = 6;

  EXPECT_EQ(At(2, 2, 2), 1);
  volume.voxel(3, 2, 2) = 0;
  EXPECT_EQ(At(2, 2, 2), 2);
  volume.voxel(1, 2, 2) = 0;
  EXPECT_EQ(At(2, 2, 2), 3);
  volume.voxel(2, 3, 2) = 0;
  EXPECT_EQ(At(2, 2, 2), 4);
  volume.voxel(2, 1, 2) = 0;
  EXPECT_EQ(At(2, 2, 2), 5);
  volume.voxel(2, 2, 3) = 0;
  EXPECT_EQ(At(2, 2, 2), 6);
}

TEST_F(ColourNearTest, DiagonalNeighboursDoNotCount) {
  volume.Fill({0, 0, 0}, {4, 4, 4}, 64);
  volume.Fill({1, 2, 2}, {3, 2, 2}, 0).Fill({2, 1, 2}, {2, 3, 2}, 0).Fill({2, 2, 1}, {2, 2, 3}, 0);

  EXPECT_EQ(At(2, 2, 2), 0);
}

TEST_F(ColourNearTest, VoxelsOutsideTheVolumeCountAsZero) {
  volume.Fill({0, 0, 0}, {4, 4, 4}, 64);

  EXPECT_EQ(At(-1, 2, 2), 64);  // its neighbour is inside
  EXPECT_EQ(At(5, 2, 2), 64);
  EXPECT_EQ(At(-2, 2, 2), 0);
  EXPECT_EQ(At(2, 6, 2), 0);
  EXPECT_EQ(At(2, 2, -7), 0);
  volume.Fill({0, 0, 0}, {4, 4, 4}, 0);
  EXPECT_EQ(At(0, 0, 0), 0);
  EXPECT_EQ(At(4, 4, 4), 0);
}

TEST_F(ColourNearTest, AVolumeWithoutVoxelsHasNoColours) {
  const int voxel[3] = {0, 0, 0};

  EXPECT_EQ(ColourNear(LabelVolume{}, voxel), 0);
}

TEST(ColourNear, GivesTheKnownColoursAtThePointsOfAVolume) {
  const nlohmann::json views = golden::Json("views/views.json");
  const auto dims = views["rays"]["dims"].get<std::array<int, 3>>();
  const auto volume = golden::Volume("views/" + views["rays"]["labels"].get<std::string>(), dims[0],
                                     dims[1], dims[2], 0);
  ASSERT_FALSE(views["vertexColours"].empty());
  for (const auto& known : views["vertexColours"]) {
    const auto point = known["point"].get<std::array<float, 3>>();
    const int voxel[3] = {VoxelAt(point[0]), VoxelAt(point[1]), VoxelAt(point[2])};

    EXPECT_EQ(ColourNear(volume->Labels(), voxel), known["value"].get<int>());
  }
}

}  // namespace
