// VolumeHaussdorf: cases worked by hand, the studies, the edge cases, and plain loops.
#include "view3d/volumemeasures/VolumeHaussdorf.h"

#include "tests/support/GoldenStudy.h"
#include "tests/support/RecordingProgress.h"
#include "tests/support/TestField.h"
#include "tests/support/TestVolume.h"
#include "tests/volumemeasures/PlainVolumes.h"
#include "tests/volumemeasures/RandomVolumes.h"
#include "view3d/volumemeasures/DistanceTransform.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <vector>

namespace {

constexpr int kLabel = 2;

/// All that one run of the measure leaves behind.
struct Measured {
  float maxBtoA = 0.0F;
  measure::FarVoxel far;
  TestPicture picture;
  RecordingProgress progress;

  Measured(const LabelVolume& a, const LabelVolume& b, int label, const measure::VoxelSize& size)
      : picture({a.dimX, a.dimY, a.dimZ}) {
    const TestField field(a);
    measure::ComputeDistanceTransform(a, label, size, field.View(), progress);
    maxBtoA = measure::LargestDistance(b, label, field.View(), 1, a.dimX - 2, progress);
    measure::ComputeDistanceTransform(b, label, size, field.View(), progress);
    far = measure::FindFarVoxel(a, label, field.View(), progress);
    measure::PaintDistances(a, label, field.View(), far, picture.Work());
  }
  int Colour(int x, int y, int z) { return picture.Work().colours[x][y][z]; }
  float Scalar(int x, int y, int z) { return picture.Scalars()[picture.Work().Index(x, y, z)]; }
  long CountScalars() const {
    return std::count(picture.Scalars().begin(), picture.Scalars().end(), 255.0F);
  }
};

std::string Text(double value) {
  char text[40];
  std::snprintf(text, sizeof text, "%f", value);
  return text;
}

TEST(VolumeHaussdorfTest, TwoVoxelsApartAreAsFarAsTheyLie) {
  TestVolume a(9, 5, 5);
  TestVolume b(9, 5, 5);
  a.voxel(2, 2, 2) = kLabel;
  b.voxel(5, 2, 2) = kLabel;

  Measured run(a.Labels(), b.Labels(), kLabel, {1.0F, 1.0F, 1.0F});

  EXPECT_EQ(run.maxBtoA, 3.0F);
  EXPECT_EQ(run.far.distance, 3.0F);
}

TEST(VolumeHaussdorfTest, ARegionInsideTheOtherIsAtNoDistance) {
  TestVolume a(9, 9, 9);
  TestVolume b(9, 9, 9);
  a.Fill({2, 2, 2}, {6, 6, 6}, kLabel);
  b.Fill({4, 4, 4}, {4, 4, 4}, kLabel);

  Measured run(a.Labels(), b.Labels(), kLabel, {1.0F, 1.0F, 1.0F});

  EXPECT_EQ(run.maxBtoA, 0.0F);  // b lies in a
  EXPECT_FLOAT_EQ(run.far.distance, std::sqrt(12.0F));
}

TEST(VolumeHaussdorfTest, IdenticalImagesAreBlueWithTheMarkInTheCorner) {
  TestVolume a(6, 6, 6);
  a.Fill({2, 2, 2}, {4, 4, 4}, kLabel);

  Measured run(a.Labels(), a.Labels(), kLabel, {1.0F, 1.0F, 1.0F});

  EXPECT_EQ(run.maxBtoA, 0.0F);
  EXPECT_EQ(run.far.distance, 0.0F);
  EXPECT_EQ(run.Colour(3, 3, 3), 192);
  EXPECT_EQ(run.Colour(2, 2, 2), 192);
  EXPECT_EQ(run.Colour(0, 0, 0), 1);
  EXPECT_EQ(run.CountScalars(), 27 + 1);
}

TEST(VolumeHaussdorfTest, ColoursFallFromBlueByTheTruncatedDistance) {
  TestVolume a(12, 3, 3);
  TestVolume b(12, 3, 3);
  a.Fill({2, 1, 1}, {9, 1, 1}, kLabel);
  b.Fill({2, 1, 1}, {4, 1, 1}, kLabel);

  Measured run(a.Labels(), b.Labels(), kLabel, {0.5F, 1.0F, 1.0F});

  EXPECT_EQ(run.far.distance, 2.5F);  // the divisor is 2
  EXPECT_EQ(run.Colour(3, 1, 1), 192);
  EXPECT_EQ(run.Colour(7, 1, 1), 87);  // 192 - 1.5 * 140 / 2
  EXPECT_EQ(run.Colour(9, 1, 1), 17);  // 192 - 2.5 * 140 / 2, beyond the divisor
}

TEST(VolumeHaussdorfTest, OnPurposeADistanceBelowOneDividesByZero) {
  TestVolume a(8, 3, 3);
  TestVolume b(8, 3, 3);
  a.Fill({2, 1, 1}, {4, 1, 1}, kLabel);
  b.Fill({2, 1, 1}, {3, 1, 1}, kLabel);

  Measured run(a.Labels(), b.Labels(), kLabel, {0.25F, 0.25F, 0.25F});

  EXPECT_EQ(run.far.distance, 0.25F);
  EXPECT_EQ(run.Colour(2, 1, 1), 0);  // 0 / 0
  EXPECT_EQ(run.Colour(4, 1, 1), 0);  // minus infinity
}

TEST(VolumeHaussdorfTest, OnPurposeTheOuterPlanesOfBDoNotCount) {
  TestVolume a(9, 3, 3);
  TestVolume b(9, 3, 3);
  a.Fill({4, 1, 1}, {4, 1, 1}, kLabel);
  b.Fill({0, 1, 1}, {8, 1, 1}, kLabel);

  Measured run(a.Labels(), b.Labels(), kLabel, {1.0F, 1.0F, 1.0F});
  Measured reverse(b.Labels(), a.Labels(), kLabel, {1.0F, 1.0F, 1.0F});

  EXPECT_EQ(run.maxBtoA, 3.0F);           // x = 1, not x = 0
  EXPECT_EQ(reverse.far.distance, 4.0F);  // the same voxels as image A
}

TEST(VolumeHaussdorfTest, TwoPlanesOfXHaveNoPassOverB) {
  TestVolume a(2, 4, 4);
  TestVolume b(2, 4, 4);
  a.voxel(0, 0, 0) = kLabel;
  b.voxel(1, 3, 3) = kLabel;

  Measured run(a.Labels(), b.Labels(), kLabel, {1.0F, 1.0F, 1.0F});

  EXPECT_EQ(run.maxBtoA, 0.0F);
  EXPECT_GT(run.far.distance, 0.0F);
}

TEST(VolumeHaussdorfTest, OnePlaneOfXHasNoPassOverB) {
  TestVolume a(1, 4, 4);
  TestVolume b(1, 4, 4);
  a.voxel(0, 0, 0) = kLabel;
  b.voxel(0, 0, 3) = kLabel;

  Measured run(a.Labels(), b.Labels(), kLabel, {1.0F, 1.0F, 1.0F});

  EXPECT_EQ(run.maxBtoA, 0.0F);
  EXPECT_EQ(run.far.distance, 3.0F);
}

TEST(VolumeHaussdorfTest, TheSurfaceIsThatOfAWithTheMarkAlsoInTheOuterPlanes) {
  TestVolume a(7, 5, 5);
  TestVolume b(7, 5, 5);
  a.Fill({0, 2, 2}, {5, 2, 2}, kLabel);
  b.Fill({0, 2, 2}, {2, 4, 2}, kLabel);

  Measured run(a.Labels(), b.Labels(), kLabel, {1.0F, 1.0F, 1.0F});

  EXPECT_EQ(run.far.distance, 3.0F);  // at (5, 2, 2), whose neighbour at x + 1 is the mark
  EXPECT_EQ(run.Colour(6, 2, 2), 1);
  for (int x = 0; x < 7; ++x) {
    for (int y = 0; y < 5; ++y) {
      for (int z = 0; z < 5; ++z) {
        const float expected = y == 2 && z == 2 ? 255.0F : 0.0F;
        EXPECT_EQ(run.Scalar(x, y, z), expected) << x << ' ' << y << ' ' << z;
      }
    }
  }
}

TEST(VolumeHaussdorfTest, ALabelMissingInALeavesDistanceAndMarkAtTheirStart) {
  TestVolume a(6, 6, 6);
  TestVolume b(6, 6, 6);
  b.Fill({2, 2, 2}, {3, 3, 3}, kLabel);

  Measured run(a.Labels(), b.Labels(), kLabel, {1.0F, 1.0F, 1.0F});

  EXPECT_EQ(run.far.distance, 0.0F);
  EXPECT_EQ(run.Colour(0, 0, 0), 1);
  EXPECT_EQ(run.CountScalars(), 1);
  EXPECT_GT(run.maxBtoA, 6.0F);  // no measurement
}

TEST(VolumeHaussdorfTest, ALabelMissingInBGivesLargeFiniteDistances) {
  TestVolume a(6, 6, 6);
  TestVolume b(6, 6, 6);
  a.Fill({2, 2, 2}, {3, 3, 3}, kLabel);

  Measured run(a.Labels(), b.Labels(), kLabel, {1.0F, 1.0F, 1.0F});

  EXPECT_GT(run.far.distance, 6.0F);
  EXPECT_TRUE(std::isfinite(run.far.distance));
  EXPECT_EQ(run.maxBtoA, 0.0F);
}

/// Vectors that are zero but at some voxels, where they are `length` long.
class FarPointTest : public testing::Test {
protected:
  TestVolume image{5, 5, 5};
  TestField field{5, 5, 5};
  Progress silent;

  void SetUp() override { Clear(); }
  void Clear() {
    for (float* component : {field.View().x, field.View().y, field.View().z}) {
      std::fill_n(component, field.Count(), 0.0F);
    }
  }
  void Put(int x, int y, int z, float length) {
    field.View().y[field.View().Index(x, y, z)] = length;
  }
  measure::FarVoxel Find() {
    return measure::FindFarVoxel(image.Labels(), kLabel, field.View(), silent);
  }
  static std::array<int, 3> Place(const measure::FarVoxel& far) {
    return {far.mark.x, far.mark.y, far.mark.z};
  }
};

TEST_F(FarPointTest, TheMarkLiesAtTheFirstNeighbourThatDoesNotBearTheLabel) {
  image.Fill({1, 1, 1}, {3, 3, 3}, kLabel);
  Put(2, 2, 2, 4.0F);

  EXPECT_EQ(Place(Find()), (std::array{2, 2, 2}));  // none of the four
  image.voxel(2, 3, 2) = 0;
  EXPECT_EQ(Place(Find()), (std::array{2, 3, 2}));
  image.voxel(2, 1, 2) = 7;
  EXPECT_EQ(Place(Find()), (std::array{2, 1, 2}));
  image.voxel(3, 2, 2) = 0;
  EXPECT_EQ(Place(Find()), (std::array{3, 2, 2}));
  image.voxel(1, 2, 2) = 0;
  EXPECT_EQ(Place(Find()), (std::array{1, 2, 2}));
}

TEST_F(FarPointTest, ANeighbourAlongZGivesNoMark) {
  image.Fill({0, 0, 2}, {4, 4, 2}, kLabel);
  Put(2, 2, 2, 4.0F);

  EXPECT_EQ(Place(Find()), (std::array{2, 2, 2}));
}

TEST_F(FarPointTest, ANeighbourOutsideTheVolumeDoesNotBearTheLabel) {
  image.Fill({0, 0, 0}, {4, 4, 4}, kLabel);

  Put(0, 2, 2, 4.0F);
  EXPECT_EQ(Place(Find()), (std::array{-1, 2, 2}));
  Clear();
  Put(4, 2, 2, 4.0F);
  EXPECT_EQ(Place(Find()), (std::array{5, 2, 2}));
  Clear();
  Put(2, 0, 2, 4.0F);
  EXPECT_EQ(Place(Find()), (std::array{2, -1, 2}));
  Clear();
  Put(2, 4, 2, 4.0F);
  EXPECT_EQ(Place(Find()), (std::array{2, 5, 2}));
}

TEST_F(FarPointTest, AMarkOutsideTheVolumePaintsNothing) {
  image.Fill({0, 0, 0}, {4, 4, 4}, kLabel);
  Put(0, 2, 2, 4.0F);
  TestPicture picture({5, 5, 5});

  measure::PaintDistances(image.Labels(), kLabel, field.View(), Find(), picture.Work());

  EXPECT_EQ(std::count(picture.Colours().begin(), picture.Colours().end(), 1), 0);
}

TEST_F(FarPointTest, AmongEqualDistancesTheFirstByXThenYThenZWins) {
  image.Fill({1, 1, 1}, {3, 3, 3}, kLabel);
  Put(3, 1, 1, 4.0F);
  Put(1, 3, 1, 4.0F);
  Put(1, 1, 3, 4.0F);
  EXPECT_EQ(Place(Find()), (std::array{0, 1, 3}));

  Put(1, 1, 3, 0.0F);
  EXPECT_EQ(Place(Find()), (std::array{0, 3, 1}));
}

TEST_F(FarPointTest, DistancesOutsideTheLabelDoNotCount) {
  image.voxel(2, 2, 2) = kLabel;
  Put(2, 2, 2, 1.0F);
  Put(3, 2, 2, 9.0F);

  EXPECT_EQ(Find().distance, 1.0F);
}

TEST(VolumeHaussdorfGoldenTest, IsAsKnown) {
  const int cases = golden::ForEachCase("ComputeHaussdorf3D", [](const auto& study, auto one) {
    const auto& inputs = one["inputs"];

    Measured run(study.Labels(inputs["image1Choice"]), study.Labels(inputs["image2Choice"]),
                 inputs["currentLabel"], study.Size());

    const auto& fields = one["fields"];
    EXPECT_EQ(Text(run.far.distance), fields["haussdorf3DABOutput"]);
    EXPECT_EQ(Text(run.maxBtoA), fields["haussdorf3DBAOutput"]);
    EXPECT_EQ(Text(std::max(run.maxBtoA, run.far.distance)), fields["haussdorf3DOutput"]);
    const measure::VoxelIndex& mark = run.far.mark;
    EXPECT_EQ(std::to_string(mark.x) + " " + std::to_string(mark.y) + " " + std::to_string(mark.z),
              fields["(mark)"]);
    EXPECT_EQ(run.progress.steps, one["side"]["progressSteps"]);
    EXPECT_EQ(run.progress.printed, one["side"]["out"]);
    golden::ExpectPicture(one["displayVolume1"], run.picture.Work());
  });
  EXPECT_GT(cases, 50);
}

TEST(VolumeHaussdorfRandomTest, SearchesAndPaintsAsPlainLoopsDo) {
  std::mt19937 random(8);
  for (int round = 0; round < 200; ++round) {
    const auto dims = RandomSizes(random);
    SCOPED_TRACE(testing::PrintToString(dims));
    const auto a = RandomLabels(random, dims);
    const int label = static_cast<int>(random() % 4);
    const TestField field(dims[0], dims[1], dims[2]);
    FillRandomly(random, field);
    TestPicture picture(dims);
    TestPicture plainPicture(dims);
    RecordingProgress progress;

    const float largest =
        measure::LargestDistance(a->Labels(), label, field.View(), 1, dims[0] - 2, progress);
    const auto far = measure::FindFarVoxel(a->Labels(), label, field.View(), progress);
    measure::PaintDistances(a->Labels(), label, field.View(), far, picture.Work());

    const float plainLargest =
        plain::HaussdorfPassB(a->Labels(), label, field.View(), plainPicture.Work());
    const plain::Far plainFar = plain::HaussdorfPassA(a->Labels(), label, field.View());
    plain::HaussdorfColours(a->Labels(), label, field.View(), plainFar, plainPicture.Work());
    ASSERT_EQ(largest, plainLargest);
    ASSERT_EQ(far.distance, plainFar.distance);
    ASSERT_EQ(far.mark.x, plainFar.x);
    ASSERT_EQ(far.mark.y, plainFar.y);
    ASSERT_EQ(far.mark.z, plainFar.z);
    ASSERT_EQ(progress.steps, std::max(0, dims[0] - 2) + dims[0]);
    ASSERT_EQ(picture.Colours(), plainPicture.Colours());
    const WorkVolume work = picture.Work();
    const WorkVolume plainWork = plainPicture.Work();
    for (int x = 1; x < dims[0] - 1; ++x) {  // the plain pass does not clear the outer planes
      for (int y = 0; y < dims[1]; ++y) {
        for (int z = 0; z < dims[2]; ++z) {
          ASSERT_EQ(work.scalars[work.Index(x, y, z)], plainWork.scalars[work.Index(x, y, z)]);
        }
      }
    }
  }
}

}  // namespace
