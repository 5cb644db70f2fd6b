// VolumeOverlap: cases worked by hand, the studies, the edge cases, and plain loops.
#include "view3d/volumemeasures/VolumeOverlap.h"

#include "tests/support/GoldenStudy.h"
#include "tests/support/RecordingProgress.h"
#include "tests/support/TestVolume.h"
#include "tests/volumemeasures/PlainVolumes.h"
#include "tests/volumemeasures/RandomVolumes.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <vector>

namespace {

using measure::OverlapDivisor;
using measure::OverlapRatio;

constexpr int kLabel = 2;
constexpr std::array kDivisors = {OverlapDivisor::Average, OverlapDivisor::Union,
                                  OverlapDivisor::FirstImage};

/// Two volumes of 4 x 3 x 2 voxels, and all that the measures leave behind.
class VolumeOverlapTest : public testing::Test {
protected:
  TestVolume a{4, 3, 2};
  TestVolume b{4, 3, 2};
  TestPicture picture{{4, 3, 2}};
  TestPicture second{{4, 3, 2}};
  TestPicture third{{4, 3, 2}};
  RecordingProgress progress;

  measure::VolumeOverlap Measure(int label = kLabel) {
    return measure::PaintOverlap(a.Labels(), b.Labels(), label, picture.Work(), progress);
  }
  static std::uint8_t Colour(TestPicture& of, int x, int y, int z) {
    return of.Work().colours[x][y][z];
  }
  static float Scalar(TestPicture& of, int x, int y, int z) {
    const WorkVolume work = of.Work();
    return work.scalars[work.Index(x, y, z)];
  }
};

TEST_F(VolumeOverlapTest, CountsTheThreeClasses) {
  a.Fill({0, 0, 0}, {1, 2, 1}, kLabel);  // planes x = 0 and 1
  b.Fill({1, 0, 0}, {3, 2, 1}, kLabel);  // planes x = 1, 2 and 3

  const measure::VolumeOverlap overlap = Measure();

  EXPECT_EQ(overlap.onlyA, 6);
  EXPECT_EQ(overlap.onlyB, 12);
  EXPECT_EQ(overlap.common, 6);
}

TEST_F(VolumeOverlapTest, PaintsTheClassAndTheScalar) {
  a.Fill({0, 0, 0}, {1, 2, 1}, kLabel);
  b.Fill({1, 0, 0}, {2, 2, 1}, kLabel);

  Measure();

  const int colours[] = {64, 192, 128, 0};
  for (int x = 0; x < 4; ++x) {
    EXPECT_EQ(Colour(picture, x, 1, 1), colours[x]);
    EXPECT_EQ(Scalar(picture, x, 1, 1), colours[x] != 0 ? 255.0F : 0.0F);
  }
}

TEST_F(VolumeOverlapTest, StepsOncePerPlaneOfZ) {
  Measure();

  EXPECT_EQ(progress.steps, 2);
}

TEST_F(VolumeOverlapTest, OtherLabelsDoNotCount) {
  a.Fill({0, 0, 0}, {3, 2, 1}, kLabel + 1);
  b.Fill({0, 0, 0}, {3, 2, 1}, kLabel + 1);

  EXPECT_EQ(Measure().common, 0);
}

TEST_F(VolumeOverlapTest, TheBackgroundIsMeasuredLikeAnyLabel) {
  a.Fill({0, 0, 0}, {0, 2, 1}, kLabel);

  const measure::VolumeOverlap overlap = Measure(0);

  EXPECT_EQ(overlap.onlyB, 6);
  EXPECT_EQ(overlap.common, 18);
}

TEST_F(VolumeOverlapTest, ALabelThatIsNoByteIsBorneByNoVoxel) {
  for (const int label : {-1, 256, 258}) {
    a.Fill({0, 0, 0}, {3, 2, 1}, static_cast<std::uint8_t>(label));
    b.Fill({0, 0, 0}, {3, 2, 1}, static_cast<std::uint8_t>(label));

    EXPECT_EQ(Measure(label).common, 0) << label;
    EXPECT_EQ(Colour(picture, 1, 1, 1), 0) << label;
  }
}

TEST_F(VolumeOverlapTest, IdenticalImagesHaveNothingApart) {
  a.Fill({1, 0, 0}, {2, 2, 0}, kLabel);
  b.Fill({1, 0, 0}, {2, 2, 0}, kLabel);

  const measure::VolumeOverlap overlap = Measure();

  EXPECT_EQ(overlap.onlyA + overlap.onlyB, 0);
  for (const OverlapDivisor divisor : kDivisors) { EXPECT_EQ(OverlapRatio(overlap, divisor), 1.0); }
}

TEST_F(VolumeOverlapTest, TheCommonRegionIsPaintedIntoAllThreePictures) {
  a.Fill({0, 0, 0}, {1, 2, 1}, kLabel);
  b.Fill({1, 0, 0}, {2, 2, 1}, kLabel);

  measure::PaintRegions(a.Labels(), b.Labels(), kLabel, picture.Work(), second.Work(), third.Work(),
                        progress);

  const int expected[4][3] = {{64, 0, 0}, {64, 128, 192}, {0, 128, 0}, {0, 0, 0}};
  for (int x = 0; x < 4; ++x) {
    EXPECT_EQ(Colour(picture, x, 2, 0), expected[x][0]);
    EXPECT_EQ(Colour(second, x, 2, 0), expected[x][1]);
    EXPECT_EQ(Colour(third, x, 2, 0), expected[x][2]);
    EXPECT_EQ(Scalar(third, x, 2, 0), expected[x][2] != 0 ? 255.0F : 0.0F);
  }
  EXPECT_EQ(progress.steps, 2);
}

TEST(OverlapRatioTest, IdenticalRegionsGiveOne) {
  for (const OverlapDivisor divisor : kDivisors) {
    EXPECT_EQ(OverlapRatio({0, 0, 7}, divisor), 1.0);
  }
}

TEST(OverlapRatioTest, DisjointRegionsGiveZero) {
  for (const OverlapDivisor divisor : kDivisors) {
    EXPECT_EQ(OverlapRatio({3, 4, 0}, divisor), 0.0);
  }
}

TEST(OverlapRatioTest, EmptyRegionsGiveNone) {
  for (const OverlapDivisor divisor : kDivisors) {
    EXPECT_EQ(OverlapRatio({0, 0, 0}, divisor), std::nullopt);
  }
}

TEST(OverlapRatioTest, RegionInBAloneHasNoneToTheFirstImage) {
  EXPECT_EQ(OverlapRatio({0, 5, 0}, OverlapDivisor::FirstImage), std::nullopt);
  EXPECT_EQ(OverlapRatio({0, 5, 0}, OverlapDivisor::Union), 0.0);
}

TEST(OverlapRatioTest, OnPurposeTheAverageIsTruncated) {
  EXPECT_EQ(OverlapRatio({1, 0, 1}, OverlapDivisor::Average), 1.0);  // 1 / (3 / 2), not 2 / 3
}

TEST(OverlapRatioTest, OneVoxelApartHasNoAverage) {
  EXPECT_EQ(OverlapRatio({1, 0, 0}, OverlapDivisor::Average), std::nullopt);  // 1 / 2 is 0
}

/// The text of the ratio's field: where no divisor is left, the one of the field before it.
std::string RatioText(const measure::VolumeOverlap& overlap, OverlapDivisor divisor) {
  char text[40];
  const auto ratio = OverlapRatio(overlap, divisor);
  if (ratio) {
    std::snprintf(text, sizeof text, "%.6f", *ratio);
  } else {
    std::snprintf(text, sizeof text, "%d", overlap.onlyA + overlap.onlyB);
  }
  return text;
}

TEST(VolumeOverlapGoldenTest, OverlayResultIsAsKnown) {
  const int cases = golden::ForEachCase("ComputeOverlayResult3D", [](const auto& study, auto one) {
    const auto& inputs = one["inputs"];
    TestPicture picture(study.Dims());
    RecordingProgress progress;
    const std::string radio = inputs["radio"];
    const OverlapDivisor divisor = radio == "overlapUnionAverageRadio" ? OverlapDivisor::Average
                                   : radio == "overlapUnionARadio"     ? OverlapDivisor::FirstImage
                                                                       : OverlapDivisor::Union;

    const auto overlap = measure::PaintOverlap(study.Labels(inputs["image1Choice"]),
                                               study.Labels(inputs["image2Choice"]),
                                               inputs["currentLabel"], picture.Work(), progress);

    const auto& fields = one["fields"];
    EXPECT_EQ(std::to_string(overlap.onlyA), fields["nbPixelAOutput"]);
    EXPECT_EQ(std::to_string(overlap.onlyB), fields["nbPixelBOutput"]);
    EXPECT_EQ(std::to_string(overlap.common), fields["intersect3DOutput"]);
    EXPECT_EQ(RatioText(overlap, divisor), fields["overlapRatio3DOutput"]);
    EXPECT_EQ(progress.steps, one["side"]["progressSteps"]);
    golden::ExpectPicture(one["displayVolume1"], picture.Work());
  });
  EXPECT_GT(cases, 100);
}

TEST(VolumeOverlapGoldenTest, OverlayIsAsKnown) {
  const int cases = golden::ForEachCase("ComputeOverlay3D", [](const auto& study, auto one) {
    const auto& inputs = one["inputs"];
    TestPicture pictures[3] = {TestPicture(study.Dims()), TestPicture(study.Dims()),
                               TestPicture(study.Dims())};
    RecordingProgress progress;

    measure::PaintRegions(study.Labels(inputs["image1Choice"]),
                          study.Labels(inputs["image2Choice"]), inputs["currentLabel"],
                          pictures[0].Work(), pictures[1].Work(), pictures[2].Work(), progress);

    EXPECT_EQ(progress.steps, one["side"]["progressSteps"]);
    golden::ExpectPicture(one["displayVolume1"], pictures[0].Work());
    golden::ExpectPicture(one["displayVolume2"], pictures[1].Work());
    golden::ExpectPicture(one["displayVolume3"], pictures[2].Work());
  });
  EXPECT_GT(cases, 50);
}

void ExpectSame(TestPicture& picture, TestPicture& plain) {
  ASSERT_EQ(picture.Colours(), plain.Colours());
  ASSERT_EQ(picture.Scalars(), plain.Scalars());
}

TEST(VolumeOverlapRandomTest, PaintsAndCountsAsPlainLoopsDo) {
  std::mt19937 random(5);
  for (int round = 0; round < 150; ++round) {
    const auto dims = RandomSizes(random);
    SCOPED_TRACE(testing::PrintToString(dims));
    const auto a = RandomLabels(random, dims);
    const auto b = RandomLabels(random, dims);
    const int label = static_cast<int>(random() % 4);
    TestPicture picture(dims);
    TestPicture plainPicture(dims);
    RecordingProgress progress;

    const auto overlap =
        measure::PaintOverlap(a->Labels(), b->Labels(), label, picture.Work(), progress);
    const auto counted = measure::CountOverlap(a->Labels(), b->Labels(), label, progress);
    const auto plain = plain::OverlayResult(a->Labels(), b->Labels(), label, plainPicture.Work());

    for (const auto& counts : {overlap, counted}) {
      ASSERT_EQ(counts.onlyA, plain.onlyA);
      ASSERT_EQ(counts.onlyB, plain.onlyB);
      ASSERT_EQ(counts.common, plain.common);
    }
    ASSERT_EQ(progress.steps, 2 * dims[2]);
    ExpectSame(picture, plainPicture);
  }
}

TEST(VolumeOverlapRandomTest, PaintsThreePicturesAsPlainLoopsDo) {
  std::mt19937 random(6);
  for (int round = 0; round < 100; ++round) {
    const auto dims = RandomSizes(random);
    SCOPED_TRACE(testing::PrintToString(dims));
    const auto a = RandomLabels(random, dims);
    const auto b = RandomLabels(random, dims);
    const int label = static_cast<int>(random() % 4);
    TestPicture pictures[3] = {TestPicture(dims), TestPicture(dims), TestPicture(dims)};
    TestPicture plains[3] = {TestPicture(dims), TestPicture(dims), TestPicture(dims)};
    RecordingProgress progress;

    measure::PaintRegions(a->Labels(), b->Labels(), label, pictures[0].Work(), pictures[1].Work(),
                          pictures[2].Work(), progress);
    plain::Overlay(a->Labels(), b->Labels(), label, plains[0].Work(), plains[1].Work(),
                   plains[2].Work());

    ASSERT_EQ(progress.steps, dims[2]);
    for (int i = 0; i < 3; ++i) { ExpectSame(pictures[i], plains[i]); }
  }
}

TEST(VolumeOverlapRandomTest, NewScalarsArePaintedAsThoseOfAnEarlierPicture) {
  std::mt19937 random(8);
  for (int round = 0; round < 100; ++round) {
    const auto dims = RandomSizes(random);
    SCOPED_TRACE(testing::PrintToString(dims));
    const auto a = RandomLabels(random, dims);
    const auto b = RandomLabels(random, dims);
    TestPicture painted[4] = {TestPicture(dims), TestPicture(dims), TestPicture(dims),
                              TestPicture(dims)};
    TestPicture plains[4] = {TestPicture(dims), TestPicture(dims), TestPicture(dims),
                             TestPicture(dims)};
    RecordingProgress progress;

    measure::PaintOverlap(a->Labels(), b->Labels(), kLabel, painted[0].NewWork(), progress);
    measure::PaintRegions(a->Labels(), b->Labels(), kLabel, painted[1].NewWork(),
                          painted[2].NewWork(), painted[3].NewWork(), progress);
    plain::OverlayResult(a->Labels(), b->Labels(), kLabel, plains[0].Work());
    plain::Overlay(a->Labels(), b->Labels(), kLabel, plains[1].Work(), plains[2].Work(),
                   plains[3].Work());

    for (int i = 0; i < 4; ++i) { ExpectSame(painted[i], plains[i]); }
  }
}

TEST(VolumeOverlapRandomTest, ALargePictureIsPaintedWhole) {
  // Its scalars go past the cache.
  std::mt19937 random(7);
  for (const std::array<int, 3>& dims : {std::array{164, 160, 161}, std::array{161, 164, 160}}) {
    const auto a = RandomLabels(random, dims);
    const auto b = RandomLabels(random, dims);
    TestPicture picture(dims);
    TestPicture plainPicture(dims);
    RecordingProgress progress;

    measure::PaintOverlap(a->Labels(), b->Labels(), kLabel, picture.Work(), progress);
    plain::OverlayResult(a->Labels(), b->Labels(), kLabel, plainPicture.Work());

    ExpectSame(picture, plainPicture);
  }
}

}  // namespace
