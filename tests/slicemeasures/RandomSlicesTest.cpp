// The fast kernels against their plain transcriptions, on random slices.
#include "tests/slicemeasures/PlainSlices.h"
#include "tests/slicemeasures/RowLoopsOfThisMachine.h"
#include "tests/slicemeasures/SliceDrawing.h"
#include "views/slicemeasures/SliceContour.h"
#include "views/slicemeasures/SliceDistance.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <random>
#include <utility>

namespace {

constexpr int kLabel = 3;

/// Volumes of three slices along a direction: noise of any density, or boxes laid over each other.
class RandomVolumes {
public:
  explicit RandomVolumes(unsigned seed) : random(seed) {}

  int Below(int bound) { return std::uniform_int_distribution<int>(0, bound - 1)(random); }

  std::unique_ptr<TestVolume> Volume(int direction, int width, int height) {
    auto volume = direction == kSliceXY   ? std::make_unique<TestVolume>(width, height, 3)
                  : direction == kSliceYZ ? std::make_unique<TestVolume>(3, height, width)
                                          : std::make_unique<TestVolume>(height, 3, width);
    const LabelVolume labels = volume->Labels();
    if (Below(2) == 0) {
      const int density = 1 + Below(40);
      for (int x = 0; x < labels.dimX; ++x) {
        for (int y = 0; y < labels.dimY; ++y) {
          for (int z = 0; z < labels.dimZ; ++z) {
            volume->voxel(x, y, z) = Below(density) == 0 ? Label() : std::uint8_t{0};
          }
        }
      }
      return volume;
    }
    for (int box = Below(12); box > 0; --box) {
      const TestVolume::Voxel low = {Below(labels.dimX), Below(labels.dimY), Below(labels.dimZ)};
      volume->Fill(low,
                   {low[0] + Below(labels.dimX - low[0]), low[1] + Below(labels.dimY - low[1]),
                    low[2] + Below(labels.dimZ - low[2])},
                   Label());
    }
    return volume;
  }

private:
  std::uint8_t Label() {
    static constexpr std::uint8_t kLabels[] = {kLabel, kLabel, kLabel, kLabel, 0, 1, 25, 255};
    return kLabels[Below(8)];
  }

  std::mt19937 random;
};

class RandomSlicesTest : public testing::TestWithParam<int> {
protected:
  RandomVolumes random{static_cast<unsigned>(GetParam())};
  int direction = kDirections[GetParam() % 3];
  int width = 1 + random.Below(GetParam() % 8 == 0 ? 300 : 40);
  int height = 1 + random.Below(GetParam() % 8 == 0 ? 300 : 40);
  std::unique_ptr<TestVolume> first = random.Volume(direction, width, height);
  std::unique_ptr<TestVolume> second = random.Volume(direction, width, height);
  int slice = random.Below(3);

  LabelSlice Slice(const TestVolume& volume) const { return {volume.Labels(), direction, slice}; }
};

/// Holds the vectors of all loops that this machine runs against the plain ones.
void ExpectPlainVectors(const LabelSlice& slice, measure::SliceSize size) {
  const plain::DistanceMap expected(slice.volume, slice.direction, slice.index, kLabel);
  for (const measure::RowLoops* loops : RowLoopsOfThisMachine()) {
    Progress progress;
    auto vectors = measure::StartVectors(slice, kLabel, size);
    measure::ScanForward(vectors, progress, *loops);
    measure::ScanBackward(vectors, progress, *loops);
    EXPECT_TRUE(vectors.x == expected.x && vectors.y == expected.y)
        << size.width << " x " << size.height;
  }
}

TEST_P(RandomSlicesTest, TheDistanceMapHasTheSameVectorsByTheLoopsOfEveryMachine) {
  ExpectPlainVectors(Slice(*first), {width, height});
}

TEST(EverySizeTest, TheDistanceMapHasTheSameVectorsAtEveryEndOfARow) {
  RandomVolumes random(1000);
  for (int width = 1; width <= 40; ++width) {
    for (int height = 1; height <= 40; ++height) {
      const auto volume = random.Volume(kSliceXY, width, height);
      ExpectPlainVectors({volume->Labels(), kSliceXY, 1}, {width, height});
    }
  }
}

TEST(EverySizeTest, TheLongestVectorsOfTheLargestSlicesAreTheSame) {
  for (const auto& [width, height] :
       {std::pair(300, 300), std::pair(300, 2), std::pair(2, 300), std::pair(297, 300)}) {
    TestVolume volume(width, height, 1);
    const LabelSlice slice{volume.Labels(), kSliceXY, 0};
    ExpectPlainVectors(slice, {width, height});  // without the label the vectors are the longest
    for (const int i : {0, width - 1}) {
      for (const int j : {0, height - 1}) {
        volume.voxel(i, j, 0) = kLabel;
        ExpectPlainVectors(slice, {width, height});
        volume.voxel(i, j, 0) = 0;
      }
    }
  }
}

/// Pictures that earlier measures of larger slices left behind.
void LeaveBehind(RandomVolumes& random, CanvasPictures& pictures) {
  static constexpr std::int32_t kLeft[] = {0, 0, 0, 65000, 65000, 65535, 15241, 13500};
  for (auto& column : pictures.result) {
    for (std::int32_t& pixel : column) { pixel = kLeft[random.Below(8)]; }
  }
  for (auto& column : pictures.mark) {
    for (std::int32_t& pixel : column) {
      pixel = random.Below(3) == 0 ? random.Below(5) : 40 * random.Below(2);
    }
  }
}

TEST_P(RandomSlicesTest, BothContourMeasuresHaveTheSameNumbersAndPictures) {
  const auto expected = std::make_unique<CanvasPictures>();
  const auto pictures = std::make_unique<CanvasPictures>();
  if (GetParam() % 2 == 0) { LeaveBehind(random, *expected); }
  *pictures = *expected;
  const int otherSlice = random.Below(3);
  const measure::ContourPictures on{pictures->result, pictures->mark, {width, height}};
  plain::Contour contour(expected->result, expected->mark);

  for (const bool interior : {false, true, false}) {
    int area = 0;
    if (interior) {
      contour.InteriorContour(first->Labels(), first->Labels(), second->Labels(), direction, slice,
                              otherSlice, kLabel);
    } else {
      contour.Complexity(first->Labels(), direction, slice, otherSlice, kLabel);
    }
    area = interior && direction == kSliceXY
               ? measure::PaintContourOfFirst(Slice(*first), Slice(*second), kLabel, on)
               : measure::PaintContour(Slice(*first), otherSlice, kLabel, on);
    const measure::ContourWalk walk = measure::WalkContour(
        interior ? measure::WaveExtent::Whole : measure::WaveExtent::Interior, on);

    EXPECT_EQ(area, contour.area);
    EXPECT_EQ(walk.perimeter, contour.perimeter);
    EXPECT_EQ(walk.pixel, (measure::PicturePixel{contour.contourX, contour.contourY}));
    ASSERT_EQ(std::memcmp(pictures->result, expected->result, sizeof expected->result), 0);
    ASSERT_EQ(std::memcmp(pictures->mark, expected->mark, sizeof expected->mark), 0);
    slice = random.Below(3);
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomSlicesTest, testing::Range(1, 161));

/// A contour that a canvas can hold but a label hardly makes: paths that cross and turn at random.
TEST(RandomWaveTest, AnyContourIsNumberedAsByThreeHundredSweeps) {
  for (unsigned seed = 1; seed <= 10; ++seed) {
    RandomVolumes random(seed);
    const measure::SliceSize size{3 + random.Below(298), 3 + random.Below(298)};
    const auto pictures = std::make_unique<CanvasPictures>();
    const auto expected = std::make_unique<CanvasPictures>();
    const int density = 2 + random.Below(4);
    for (int i = 0; i < size.width; ++i) {
      for (int j = 0; j < size.height; ++j) {
        pictures->result[i][j] = random.Below(density) < 1 ? 65000 : 0;
      }
    }
    *expected = *pictures;
    const measure::WaveExtent extent =
        seed % 2 == 0 ? measure::WaveExtent::Whole : measure::WaveExtent::Interior;
    const int margin = extent == measure::WaveExtent::Interior ? 1 : 0;
    const measure::ContourPictures on{pictures->result, pictures->mark, size};
    const measure::ContourPictures plainly{expected->result, expected->mark, size};
    const measure::PicturePixel start = measure::FirstContourPixel(on);

    measure::StartWave(start, on);
    measure::RunWave(start, extent, on);

    measure::StartWave(start, plainly);
    float perimeter = 0.0F;
    for (int sweep = 0; sweep < 300; ++sweep) {
      for (int i = margin; i < size.width - margin; ++i) {
        for (int j = margin; j < size.height - margin; ++j) {
          measure::StepWave(start, {i, j}, plainly, perimeter);
        }
      }
    }
    ASSERT_EQ(std::memcmp(pictures->mark, expected->mark, sizeof expected->mark), 0) << seed;
  }
}

}  // namespace
