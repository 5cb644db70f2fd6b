// DistanceTransform: cases worked by hand, the studies, the edge cases, and every instruction set
// against plain loops, bit for bit.
#include "view3d/volumemeasures/DistanceTransform.h"

#include "tests/support/GoldenStudy.h"
#include "tests/support/PlainDistanceTransform.h"
#include "tests/support/RecordingProgress.h"
#include "tests/support/TestField.h"
#include "tests/support/TestVolume.h"
#include "view3d/volumemeasures/DistanceRegion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace {

using measure::InstructionSet;
using measure::VoxelSize;

constexpr int kLabel = 3;

std::string NameOf(InstructionSet set) {
  constexpr const char* kNames[] = {"Plain", "Sse2", "Avx2", "Avx512"};
  return kNames[static_cast<int>(set)];
}

/// The vectors of one run.
struct Transformed {
  TestField field;
  RecordingProgress progress;

  Transformed(const LabelVolume& image, int label, const VoxelSize& size) : field(image) {
    measure::ComputeDistanceTransform(image, label, size, field.View(), progress);
  }
  std::array<float, 3> At(int x, int y, int z) const {
    const std::size_t i = field.View().Index(x, y, z);
    return {field.X()[i], field.Y()[i], field.Z()[i]};
  }
  float Length(int x, int y, int z) const { return field.View().Length(x, y, z); }
};

bool SameBits(const TestField& a, const TestField& b) {
  const std::size_t bytes = a.Count() * sizeof(float);
  return a.Mask() == b.Mask() && std::memcmp(a.X().data(), b.X().data(), bytes) == 0 &&
         std::memcmp(a.Y().data(), b.Y().data(), bytes) == 0 &&
         std::memcmp(a.Z().data(), b.Z().data(), bytes) == 0;
}

/// Holds every instruction set against plain loops.
void ExpectPlainBits(const LabelVolume& image, const VoxelSize& size) {
  TestField expected(image);
  plain::ComputeDistanceTransform(image, kLabel, size, expected.View());
  for (const InstructionSet set : measure::SupportedInstructionSets()) {
    TestField field(image);
    Progress progress;
    measure::ComputeDistanceTransformOn(set, image, kLabel, size, field.View(), progress);
    EXPECT_TRUE(SameBits(expected, field))
        << NameOf(set) << ", " << image.dimX << " x " << image.dimY << " x " << image.dimZ
        << ", voxel " << size.x << " " << size.y << " " << size.z;
  }
}

using Arrow = std::array<float, 3>;

// ---- worked by hand ----

TEST(DistanceTransformTest, AVectorLeadsFromTheVoxelToTheLabel) {
  TestVolume volume(4, 3, 3);
  volume.voxel(2, 1, 1) = kLabel;

  const Transformed run(volume.Labels(), kLabel, {2.0F, 3.0F, 5.0F});

  EXPECT_EQ(run.At(2, 1, 1), (Arrow{0.0F, 0.0F, 0.0F}));
  EXPECT_EQ(run.At(0, 1, 1), (Arrow{4.0F, 0.0F, 0.0F}));
  EXPECT_EQ(run.At(3, 2, 0), (Arrow{-2.0F, -3.0F, 5.0F}));
  EXPECT_EQ(run.Length(0, 1, 1), 4.0F);
}

TEST(DistanceTransformTest, TheMaskIsOneWhereTheLabelIsAndZeroElsewhere) {
  TestVolume volume(19, 3, 18);
  volume.Fill({0, 0, 0}, {18, 2, 17}, 7);
  volume.voxel(0, 0, 0) = kLabel;
  volume.voxel(18, 2, 17) = kLabel;

  const Transformed run(volume.Labels(), kLabel, {1.0F, 1.0F, 1.0F});

  std::vector<std::int32_t> expected(run.field.Count(), 0);
  expected.front() = 1;
  expected.back() = 1;
  EXPECT_EQ(run.field.Mask(), expected);
}

TEST(DistanceTransformTest, AmongEqualCandidatesTheFirstOneStays) {
  TestVolume volume(3, 3, 3);
  volume.voxel(0, 1, 0) = kLabel;
  volume.voxel(2, 1, 0) = kLabel;

  const Transformed run(volume.Labels(), kLabel, {1.0F, 1.0F, 1.0F});

  // On the way up from plane 1 the left neighbour was tried before the right one.
  EXPECT_EQ(run.At(1, 1, 1), (Arrow{-1.0F, 0.0F, -1.0F}));
}

TEST(DistanceTransformTest, StepsAreOneForEachPlaneOfXAndEachVisitOfAPlaneOfZ) {
  const TestVolume volume(6, 5, 4);

  const Transformed run(volume.Labels(), kLabel, {1.0F, 1.0F, 1.0F});

  EXPECT_EQ(run.progress.steps, 6 + 2 * 3);
  EXPECT_EQ(run.progress.printed, "starting forward scan\nstarting backward scan\n");
  EXPECT_EQ(run.progress.messages, std::vector<std::string>{"Starting forward scan"});
}

// ---- studies with known results ----

TEST(DistanceTransformTest, TheStudiesGiveTheirVectorsOnEveryInstructionSet) {
  const auto check = [](const golden::GoldenStudy& study, const nlohmann::json& one) {
    const LabelVolume image = study.Labels(one["inputs"]["imageIndex"].get<int>());
    const int label = one["inputs"]["currentLabel"].get<int>();
    for (const InstructionSet set : measure::SupportedInstructionSets()) {
      SCOPED_TRACE(NameOf(set));
      TestField field(image);
      RecordingProgress progress;
      measure::ComputeDistanceTransformOn(set, image, label, study.Size(), field.View(), progress);
      EXPECT_EQ(golden::VectorChecksum(field.X().data(), field.Count()), one["distXCrc32"]);
      EXPECT_EQ(golden::VectorChecksum(field.Y().data(), field.Count()), one["distYCrc32"]);
      EXPECT_EQ(golden::VectorChecksum(field.Z().data(), field.Count()), one["distZCrc32"]);
      EXPECT_EQ(std::count(field.Mask().begin(), field.Mask().end(), 1), one["maskCount"]);
      EXPECT_EQ(progress.steps, one["side"]["progressSteps"]);
      EXPECT_EQ(progress.printed, one["side"]["out"]);
    }
  };

  EXPECT_GT(golden::ForEachCase("ComputeDanielsson3D", check), 50);
}

// ---- edge cases ----

TEST(DistanceTransformTest, AnAbsentLabelLeavesShortenedStartVectors) {
  TestVolume volume(4, 4, 4);
  volume.Fill({1, 1, 1}, {2, 2, 2}, 9);

  const Transformed run(volume.Labels(), kLabel, {1.0F, 1.0F, 1.0F});

  // As though a label voxel lay 16 away along each axis from the lowest corner.
  EXPECT_EQ(run.At(0, 0, 0), (Arrow{16.0F, 16.0F, 16.0F}));
  EXPECT_EQ(run.At(3, 3, 3), (Arrow{13.0F, 13.0F, 13.0F}));
  for (std::size_t i = 0; i < run.field.Count(); ++i) {
    EXPECT_TRUE(std::isfinite(run.field.View().Length(i)));
    EXPECT_EQ(run.field.Mask()[i], 0);
  }
}

TEST(DistanceTransformTest, OnePlaneOfZKeepsItsStartVectors) {
  TestVolume volume(5, 7, 1);
  volume.voxel(2, 3, 0) = kLabel;

  const Transformed run(volume.Labels(), kLabel, {0.5F, 0.5F, 0.5F});

  EXPECT_EQ(run.progress.steps, 5);
  EXPECT_EQ(run.At(2, 3, 0), (Arrow{0.0F, 0.0F, 0.0F}));
  EXPECT_EQ(run.At(2, 4, 0), (Arrow{28.0F, 28.0F, 28.0F}));
  EXPECT_EQ(run.Length(4, 6, 0), static_cast<float>(28.0 * std::sqrt(3.0)));
}

TEST(DistanceTransformTest, OneRowOfYIsReachedFromTheNeighbouringPlanesAlone) {
  TestVolume volume(6, 1, 3);
  volume.voxel(0, 0, 1) = kLabel;

  const Transformed run(volume.Labels(), kLabel, {1.0F, 1.0F, 1.0F});

  EXPECT_EQ(run.At(0, 0, 2), (Arrow{0.0F, 0.0F, -1.0F}));
  EXPECT_EQ(run.At(1, 0, 2), (Arrow{-1.0F, 0.0F, -1.0F}));
  EXPECT_EQ(run.At(1, 0, 0), (Arrow{-1.0F, 0.0F, 1.0F}));
  EXPECT_EQ(run.At(2, 0, 1), (Arrow{-2.0F, 0.0F, 0.0F}));  // by way of the plane above
  EXPECT_GT(run.Length(3, 0, 1), 30.0F);                   // no pass along the row
}

TEST(DistanceTransformTest, StartVectorsWinWhereVoxelsAreLarge) {
  TestVolume volume(5, 3, 3);
  volume.voxel(0, 1, 1) = kLabel;

  const Transformed run(volume.Labels(), kLabel, {100.0F, 100.0F, 100.0F});

  EXPECT_EQ(run.At(0, 1, 1), (Arrow{0.0F, 0.0F, 0.0F}));
  EXPECT_EQ(run.At(1, 1, 1), (Arrow{20.0F, 20.0F, 20.0F}));  // not 100 away
  EXPECT_EQ(run.At(4, 2, 2), (Arrow{20.0F, 20.0F, 20.0F}));
}

TEST(DistanceTransformTest, TheVoxelSizeIsTheOneGivenForEveryImage) {
  TestVolume first(5, 3, 3);
  TestVolume second(5, 3, 3);
  first.voxel(1, 1, 1) = kLabel;
  second.voxel(3, 1, 1) = kLabel;
  const VoxelSize ofSlotZero = {0.25F, 2.0F, 4.0F};

  const Transformed runFirst(first.Labels(), kLabel, ofSlotZero);
  const Transformed runSecond(second.Labels(), kLabel, ofSlotZero);

  EXPECT_EQ(runFirst.Length(0, 1, 1), 0.25F);
  EXPECT_EQ(runSecond.Length(4, 1, 1), 0.25F);
  EXPECT_EQ(runSecond.Length(3, 1, 0), 4.0F);
}

TEST(DistanceTransformTest, AVoxelExactlyAtTheLimitIsInsideTheRegion) {
  TestVolume volume(8, 3, 3);
  volume.voxel(0, 1, 1) = kLabel;
  const Transformed run(volume.Labels(), kLabel, {1.0F, 1.0F, 1.0F});
  TestVolume colours(8, 3, 3);
  std::vector<float> scalars(run.field.Count(), -1.0F);
  RecordingProgress progress;

  measure::PaintDistanceRegion(run.field.View(), 3.0, colours.Work(scalars.data()), progress);

  EXPECT_EQ(colours.At({3, 1, 1}), 128);
  EXPECT_EQ(colours.At({4, 1, 1}), 0);
  EXPECT_EQ(colours.At({3, 2, 1}), 0);  // the root of 10
  EXPECT_EQ(progress.steps, 8);
}

TEST(DistanceTransformTest, ALabelEverywhereIsAtNoDistance) {
  TestVolume volume(17, 5, 4);
  volume.Fill({0, 0, 0}, {16, 4, 3}, kLabel);

  const Transformed run(volume.Labels(), kLabel, {1.7F, 0.3F, 1.0F});

  const std::vector<float> zeros(run.field.Count(), 0.0F);
  EXPECT_EQ(run.field.X(), zeros);
  EXPECT_EQ(run.field.Y(), zeros);
  EXPECT_EQ(run.field.Z(), zeros);
}

TEST(DistanceTransformTest, ALabelThatIsNoByteIsAbsent) {
  TestVolume volume(3, 3, 3);
  volume.Fill({0, 0, 0}, {2, 2, 2}, 1);

  const Transformed run(volume.Labels(), 257, {1.0F, 1.0F, 1.0F});

  EXPECT_EQ(run.field.Mask(), std::vector<std::int32_t>(27, 0));
  EXPECT_EQ(run.At(0, 0, 0), (Arrow{12.0F, 12.0F, 12.0F}));
}

TEST(DistanceTransformTest, LabelZeroIsMeasuredLikeAnyOther) {
  TestVolume volume(3, 3, 3);
  volume.Fill({0, 0, 0}, {2, 2, 2}, 1);
  volume.voxel(0, 1, 1) = 0;

  const Transformed run(volume.Labels(), 0, {1.0F, 1.0F, 1.0F});

  EXPECT_EQ(run.At(2, 1, 1), (Arrow{-2.0F, 0.0F, 0.0F}));
}

// ---- nearest distances by brute force ----

TEST(DistanceTransformTest, TheDistanceToASingleVoxelIsTheTrueOne) {
  std::mt19937 random(11);
  for (int round = 0; round < 40; ++round) {
    std::array<int, 3> dims{};
    std::array<int, 3> place{};
    for (std::size_t axis = 0; axis < 3; ++axis) {
      dims[axis] = 2 + static_cast<int>(random() % 19);
      place[axis] = static_cast<int>(random() % static_cast<unsigned>(dims[axis]));
    }
    TestVolume volume(dims[0], dims[1], dims[2]);
    volume.voxel(place[0], place[1], place[2]) = kLabel;

    const Transformed run(volume.Labels(), kLabel, {1.0F, 0.5F, 1.5F});

    for (int x = 0; x < dims[0]; ++x) {
      for (int y = 0; y < dims[1]; ++y) {
        for (int z = 0; z < dims[2]; ++z) {
          const Arrow expected = {static_cast<float>(place[0] - x),
                                  static_cast<float>(place[1] - y) * 0.5F,
                                  static_cast<float>(place[2] - z) * 1.5F};
          ASSERT_EQ(run.At(x, y, z), expected) << x << " " << y << " " << z;
        }
      }
    }
  }
}

TEST(DistanceTransformTest, TheDistanceToABoxIsTheTrueOne) {
  TestVolume volume(30, 20, 18);
  volume.Fill({9, 5, 6}, {20, 11, 9}, kLabel);

  const Transformed run(volume.Labels(), kLabel, {1.0F, 1.0F, 2.0F});

  const auto beyond = [](int value, int low, int high) {
    return static_cast<float>(value < low ? low - value : std::min(high - value, 0));
  };
  for (int x = 0; x < 30; ++x) {
    for (int y = 0; y < 20; ++y) {
      for (int z = 0; z < 18; ++z) {
        const Arrow expected = {beyond(x, 9, 20), beyond(y, 5, 11), 2.0F * beyond(z, 6, 9)};
        ASSERT_EQ(run.At(x, y, z), expected) << x << " " << y << " " << z;
      }
    }
  }
}

// ---- every instruction set against plain loops ----

TEST(DistanceTransformTest, ThePlainInstructionsAreAlwaysThere) {
  const auto sets = measure::SupportedInstructionSets();

  ASSERT_FALSE(sets.empty());
  EXPECT_EQ(sets.front(), InstructionSet::Plain);
}

/// Absent, everywhere, one voxel, a box that may touch the border, several boxes, or noise.
void FillOneOfSix(std::mt19937& random, const std::array<int, 3>& dims, TestVolume& volume) {
  const auto below = [&](int end) {
    return static_cast<int>(random() % static_cast<unsigned>(end));
  };
  const int kind = below(6);
  if (kind == 1) { volume.Fill({0, 0, 0}, {dims[0] - 1, dims[1] - 1, dims[2] - 1}, kLabel); }
  if (kind == 2) { volume.voxel(below(dims[0]), below(dims[1]), below(dims[2])) = kLabel; }
  const int boxes = kind == 3 ? 1 : 5;
  for (int box = 0; (kind == 3 || kind == 4) && box < boxes; ++box) {
    TestVolume::Voxel low{};
    TestVolume::Voxel high{};
    for (std::size_t axis = 0; axis < 3; ++axis) {
      low[axis] = below(dims[axis]);
      high[axis] = low[axis] + below(dims[axis] - low[axis]);
    }
    volume.Fill(low, high, box % 2 == 0 ? kLabel : 1);
  }
  const int seldom = 1 + below(200);
  for (int count = dims[0] * dims[1] * dims[2] / seldom; kind == 5 && count > 0; --count) {
    volume.voxel(below(dims[0]), below(dims[1]), below(dims[2])) = kLabel;
  }
}

TEST(DistanceTransformTest, RandomVolumesGiveTheBitsOfPlainLoops) {
  constexpr float kSpacings[] = {1.0F, 0.3F, 0.45F, 1.7F};
  std::mt19937 random(4);
  for (int round = 0; round < 320; ++round) {
    std::array<int, 3> dims{};
    for (int& size : dims) { size = random() % 8 == 0 ? 1 : 1 + static_cast<int>(random() % 40); }
    TestVolume volume(dims[0], dims[1], dims[2]);
    FillOneOfSix(random, dims, volume);
    const float same = kSpacings[random() % 4];
    const VoxelSize mixed = {kSpacings[random() % 4], kSpacings[random() % 4],
                             kSpacings[random() % 4]};

    ExpectPlainBits(volume.Labels(), round % 2 == 0 ? VoxelSize{same, same, same} : mixed);
  }
}

TEST(DistanceTransformTest, EveryLengthOfARowGivesTheBitsOfPlainLoops) {
  std::mt19937 random(5);
  for (int dimX = 1; dimX <= 70; ++dimX) {
    TestVolume volume(dimX, 4, 5);
    for (int voxel = 0; voxel < 3; ++voxel) {
      volume.voxel(static_cast<int>(random() % static_cast<unsigned>(dimX)),
                   static_cast<int>(random() % 4), static_cast<int>(random() % 5)) = kLabel;
    }

    ExpectPlainBits(volume.Labels(), {0.9F, 0.9F, 3.0F});
    ExpectPlainBits(volume.Labels(), {1.0F, 1.5F, 0.5F});
  }
}

TEST(DistanceTransformTest, SquaresThatFloatsHoldGiveTheBitsOfPlainLoops) {
  std::mt19937 random(6);
  constexpr float kSizes[] = {0.0625F, 0.125F, 0.5F, 0.75F, 1.0F, 2.0F, 3.0F, 17.0F, 512.0F, 1e6F};
  for (int round = 0; round < 60; ++round) {
    const std::array<int, 3> dims = {1 + static_cast<int>(random() % 50),
                                     1 + static_cast<int>(random() % 30),
                                     1 + static_cast<int>(random() % 30)};
    TestVolume volume(dims[0], dims[1], dims[2]);
    FillOneOfSix(random, dims, volume);

    ExpectPlainBits(volume.Labels(),
                    {kSizes[random() % 10], kSizes[random() % 10], kSizes[random() % 10]});
  }
}

TEST(DistanceTransformTest, TheLongestAxisGivesTheBitsOfPlainLoops) {
  TestVolume volume(280, 6, 7);
  volume.voxel(3, 2, 6) = kLabel;
  volume.voxel(277, 4, 0) = kLabel;

  ExpectPlainBits(volume.Labels(), {1.0F, 1.0F, 1.0F});
  ExpectPlainBits(volume.Labels(), {1.0F, 1.0F, 0.3F});
}

TEST(DistanceTransformTest, SizesThatAreNoSizesGiveTheBitsOfPlainLoops) {
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
  constexpr float kLargest = std::numeric_limits<float>::max();
  TestVolume volume(19, 7, 6);
  volume.Fill({4, 2, 2}, {6, 3, 3}, kLabel);

  for (const float odd : {0.0F, -1.0F, 1e-40F, kLargest, kInfinity, kNan}) {
    ExpectPlainBits(volume.Labels(), {odd, 1.0F, 1.0F});
    ExpectPlainBits(volume.Labels(), {0.3F, odd, 1.0F});
    ExpectPlainBits(volume.Labels(), {1.0F, 0.3F, odd});
    ExpectPlainBits(volume.Labels(), {odd, odd, odd});
  }
}

}  // namespace
