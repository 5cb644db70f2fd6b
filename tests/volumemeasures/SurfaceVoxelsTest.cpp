// The voxels on the surface of a label: cases worked by hand, and plain loops.
#include "view3d/volumemeasures/SurfaceVoxels.h"

#include "tests/support/TestVolume.h"
#include "tests/volumemeasures/RandomVolumes.h"

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <vector>

namespace {

constexpr int kLabel = 2;

using Voxels = std::vector<std::array<int, 3>>;

Voxels SurfaceOf(const TestVolume& image, int label) {
  Voxels found;
  measure::ForEachSurfaceVoxel(image.Labels(), label, [&](int x, int y, int z) {
    found.push_back({x, y, z});
  });
  return found;
}

Voxels PlainSurfaceOf(const LabelVolume& image, int label) {
  Voxels found;
  for (int x = 1; x <= image.dimX - 2; ++x) {
    for (int y = 1; y <= image.dimY - 2; ++y) {
      for (int z = 1; z <= image.dimZ - 2; ++z) {
        const bool open = image.At(x - 1, y, z) == 0 || image.At(x + 1, y, z) == 0 ||
                          image.At(x, y - 1, z) == 0 || image.At(x, y + 1, z) == 0 ||
                          image.At(x, y, z - 1) == 0 || image.At(x, y, z + 1) == 0;
        if (open && image.Bears(label, x, y, z)) { found.push_back({x, y, z}); }
      }
    }
  }
  return found;
}

TEST(SurfaceVoxelsTest, AnyOfTheSixNeighboursMakesASurface) {
  const TestVolume::Voxel neighbours[] = {{0, 1, 1}, {2, 1, 1}, {1, 0, 1},
                                          {1, 2, 1}, {1, 1, 0}, {1, 1, 2}};
  for (const auto& [x, y, z] : neighbours) {
    TestVolume image(3, 3, 3);
    image.Fill({0, 0, 0}, {2, 2, 2}, kLabel);
    EXPECT_EQ(SurfaceOf(image, kLabel), Voxels{});

    image.voxel(x, y, z) = 0;

    EXPECT_EQ(SurfaceOf(image, kLabel), (Voxels{{1, 1, 1}}));
  }
}

TEST(SurfaceVoxelsTest, OnPurposeAnotherLabelBesideMakesNoSurface) {
  TestVolume image(3, 3, 3);
  image.Fill({0, 0, 0}, {2, 2, 2}, kLabel + 1);
  image.voxel(1, 1, 1) = kLabel;
  image.voxel(0, 0, 0) = 0;  // a corner is no neighbour

  EXPECT_EQ(SurfaceOf(image, kLabel), Voxels{});
}

TEST(SurfaceVoxelsTest, ComeInTheOrderOfPlainLoops) {
  std::mt19937 random(8);
  for (int round = 0; round < 200; ++round) {
    const auto dims = RandomSizes(random);
    SCOPED_TRACE(testing::PrintToString(dims));
    const auto image = RandomLabels(random, dims);
    const int label = round % 10 == 0 ? 258 : static_cast<int>(random() % 4);

    ASSERT_EQ(SurfaceOf(*image, label), PlainSurfaceOf(image->Labels(), label));
  }
}

}  // namespace
