// SurfaceDistance: cases worked by hand, the studies, the edge cases, and plain loops.
#include "view3d/volumemeasures/SurfaceDistance.h"

#include "tests/support/GoldenStudy.h"
#include "tests/support/RecordingProgress.h"
#include "tests/support/TestField.h"
#include "tests/support/TestVolume.h"
#include "tests/volumemeasures/PlainVolumes.h"
#include "tests/volumemeasures/RandomVolumes.h"
#include "view3d/volumemeasures/DistanceTransform.h"
#include "view3d/volumemeasures/Shell.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <memory>
#include <vector>

namespace {

constexpr int kLabel = 2;
constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

struct FreeSaved {
  void operator()(void* saved) const { std::free(saved); }
};

/// All that one run of the measure leaves behind; image A is whole again.
struct Measured {
  measure::SurfaceDistance distance;
  measure::DistanceLists lists;
  TestField field;
  TestPicture picture;
  RecordingProgress progress;

  Measured(TestVolume& a, const LabelVolume& b, int label, const measure::VoxelSize& size)
      : field(b), picture({b.dimX, b.dimY, b.dimZ}) {
    const std::unique_ptr<std::int32_t[][280][280], FreeSaved> saved(
        static_cast<std::int32_t(*)[280][280]>(
            std::calloc(kMaxMeasuredSide, sizeof(std::int32_t[280][280]))));
    measure::SaveLabels(a.Labels(), saved.get(), progress);
    measure::ReduceToShell(saved.get(), label, measure::ShellRule::OtherValue, a.Editable(),
                           progress);
    measure::ComputeDistanceTransform(a.Labels(), label, size, field.View(), progress);
    measure::RestoreLabels(saved.get(), a.Editable(), progress);
    distance = measure::SumAlongSurface(a.Labels(), b, label, field.View(), &lists, progress);
    measure::PaintSignedDistance(a.Labels(), b, label, field.View(), distance, picture.Work(),
                                 progress);
  }
  int Colour(int x, int y, int z) { return picture.Work().colours[x][y][z]; }
};

std::string Text(double value) {
  char text[64];
  std::snprintf(text, sizeof text, "%f", value);
  return std::isnan(value) ? "nan" : text;
}

class SurfaceDistanceTest : public testing::Test {
protected:
  TestVolume a{11, 11, 11};
  TestVolume b{11, 11, 11};

  Measured Measure() { return Measured(a, b.Labels(), kLabel, {1.0F, 1.0F, 1.0F}); }
};

TEST_F(SurfaceDistanceTest, ABoxRoundTheOtherIsOutsideOnEverySide) {
  a.Fill({4, 4, 4}, {6, 6, 6}, kLabel);
  b.Fill({3, 3, 3}, {7, 7, 7}, kLabel);

  const auto run = Measure();

  EXPECT_EQ(run.distance.inside.count, 0);
  EXPECT_EQ(run.distance.outside.count, 125 - 27);
  EXPECT_FLOAT_EQ(run.distance.outside.max, std::sqrt(3.0F));
  // 54 faces at 1, 36 edges at the root of 2, 8 corners at that of 3.
  EXPECT_NEAR(run.distance.outside.sum, 54 + 36 * std::sqrt(2.0) + 8 * std::sqrt(3.0), 1e-4);
}

TEST_F(SurfaceDistanceTest, ABoxInTheOtherIsInsideOnEverySide) {
  a.Fill({3, 3, 3}, {7, 7, 7}, kLabel);
  b.Fill({4, 4, 4}, {6, 6, 6}, kLabel);

  const auto run = Measure();

  EXPECT_EQ(run.distance.outside.count, 0);
  EXPECT_EQ(run.distance.inside.count, 26);  // all but the centre
  EXPECT_EQ(run.distance.inside.sum, 26.0F);
}

TEST_F(SurfaceDistanceTest, IdenticalImagesCountEverySurfaceVoxelInside) {
  a.Fill({3, 3, 3}, {7, 7, 7}, kLabel);
  b.Fill({3, 3, 3}, {7, 7, 7}, kLabel);

  auto run = Measure();

  EXPECT_EQ(run.distance.inside.count, 125 - 27);
  EXPECT_EQ(run.distance.outside.count, 0);
  EXPECT_EQ(run.distance.inside.sum, 0.0F);
  EXPECT_EQ(run.distance.inside.max, 0.0F);
  EXPECT_EQ(run.Colour(3, 5, 5), 128);
  EXPECT_EQ(run.Colour(4, 5, 5), 192);  // 128 + 1 * 64, without a division
  EXPECT_EQ(run.Colour(2, 5, 5), 64);
}

TEST_F(SurfaceDistanceTest, OnPurposeTheOutermostLayerOfBIsLeftOut) {
  a.Fill({4, 4, 4}, {6, 6, 6}, kLabel);
  b.Fill({0, 0, 0}, {10, 10, 0}, kLabel);
  b.Fill({0, 0, 0}, {0, 10, 10}, kLabel);
  b.Fill({10, 0, 0}, {10, 10, 10}, kLabel);
  b.Fill({0, 10, 0}, {10, 10, 10}, kLabel);

  const auto run = Measure();

  EXPECT_EQ(run.distance.inside.count + run.distance.outside.count, 0);
}

TEST_F(SurfaceDistanceTest, OnPurposeARegionInAnyOneOuterLayerHasNoSurface) {
  a.Fill({4, 4, 4}, {6, 6, 6}, kLabel);
  const TestVolume::Voxel sides[6][2] = {{{0, 0, 0}, {0, 10, 10}}, {{10, 0, 0}, {10, 10, 10}},
                                         {{0, 0, 0}, {10, 0, 10}}, {{0, 10, 0}, {10, 10, 10}},
                                         {{0, 0, 0}, {10, 10, 0}}, {{0, 0, 10}, {10, 10, 10}}};
  for (const auto& [first, last] : sides) {
    b.Fill({0, 0, 0}, {10, 10, 10}, 0);
    b.Fill(first, last, kLabel);

    const auto run = Measure();

    EXPECT_EQ(run.distance.inside.count, 0);
    EXPECT_EQ(run.distance.outside.count, 0);
  }
}

TEST_F(SurfaceDistanceTest, OnPurposeBHasNoSurfaceBesideAnotherLabel) {
  a.Fill({4, 4, 4}, {6, 6, 6}, kLabel);
  b.Fill({0, 0, 0}, {10, 10, 10}, kLabel + 1);
  b.Fill({4, 4, 4}, {6, 6, 6}, kLabel);

  const auto run = Measure();

  EXPECT_EQ(run.distance.inside.count, 0);
}

TEST_F(SurfaceDistanceTest, AHasASurfaceBesideAnotherLabel) {
  a.Fill({0, 0, 0}, {10, 10, 10}, kLabel + 1);
  a.Fill({4, 4, 4}, {6, 6, 6}, kLabel);
  b.Fill({5, 5, 5}, {5, 5, 5}, kLabel);

  const auto run = Measure();

  EXPECT_EQ(run.distance.inside.count, 1);
  EXPECT_EQ(run.distance.inside.max, 1.0F);
}

TEST_F(SurfaceDistanceTest, TheImageIsAsItWasAfterwards) {
  a.Fill({1, 2, 3}, {8, 8, 8}, kLabel);
  a.Fill({2, 2, 3}, {4, 4, 4}, 9);
  b.Fill({4, 4, 4}, {6, 6, 6}, kLabel);
  const auto before = a.Bytes();

  Measure();

  EXPECT_EQ(a.Bytes(), before);
}

TEST_F(SurfaceDistanceTest, DistancesAreInUnitsOfTheVoxelSize) {
  a.voxel(2, 5, 5) = kLabel;
  b.voxel(5, 5, 5) = kLabel;

  const Measured run(a, b.Labels(), kLabel, {0.5F, 1.0F, 3.0F});

  EXPECT_EQ(run.distance.outside.max, 1.5F);
}

TEST_F(SurfaceDistanceTest, TheColoursRunFromRedOverGreenToBlue) {
  a.Fill({2, 2, 2}, {8, 8, 8}, kLabel);
  b.Fill({1, 4, 4}, {6, 6, 6}, kLabel);

  auto run = Measure();

  EXPECT_EQ(run.distance.outside.max, 1.0F);
  EXPECT_EQ(run.distance.inside.max, 2.0F);
  EXPECT_EQ(run.Colour(1, 5, 5), 64);
  EXPECT_EQ(run.Colour(2, 5, 5), 128);
  EXPECT_EQ(run.Colour(3, 5, 5), 160);
  EXPECT_EQ(run.Colour(4, 5, 5), 192);
  EXPECT_EQ(run.Colour(0, 5, 5), 0);  // beyond the farthest: 128 - 2 * 64 / 1
}

TEST_F(SurfaceDistanceTest, OnPurposeTheFirstColoursWrapRoundBeyondTheMaxima) {
  a.Fill({2, 5, 5}, {2, 5, 5}, kLabel);
  b.Fill({3, 5, 5}, {3, 5, 5}, kLabel);

  auto run = Measure();

  EXPECT_EQ(run.distance.outside.max, 1.0F);
  EXPECT_EQ(run.Colour(6, 5, 5), 128);  // 128 - 4 * 64, low byte
  EXPECT_EQ(run.Colour(5, 5, 5), 192);  // 128 - 3 * 64 = -64
}

TEST_F(SurfaceDistanceTest, OnlyTheSurfaceOfBIsInTheScalars) {
  a.Fill({4, 4, 4}, {6, 6, 6}, kLabel);
  b.Fill({3, 3, 3}, {5, 5, 5}, kLabel);

  auto run = Measure();

  const WorkVolume work = run.picture.Work();
  EXPECT_EQ(work.scalars[work.Index(3, 3, 3)], 255.0F);
  EXPECT_EQ(work.scalars[work.Index(6, 6, 6)], 0.0F);
}

TEST_F(SurfaceDistanceTest, ListsDoNotChangeTheSums) {
  a.Fill({4, 4, 4}, {6, 6, 6}, kLabel);
  std::mt19937 random(1);
  const TestField field(a.Labels());
  FillRandomly(random, field);
  RecordingProgress progress;
  measure::DistanceLists lists;

  const auto with =
      measure::SumAlongSurface(a.Labels(), a.Labels(), kLabel, field.View(), &lists, progress);
  const auto without =
      measure::SumAlongSurface(a.Labels(), a.Labels(), kLabel, field.View(), nullptr, progress);

  EXPECT_EQ(with.inside.sum, without.inside.sum);
  EXPECT_EQ(lists.all.Size(), 26);
  EXPECT_EQ(progress.steps, 2 * (11 - 2));
}

TEST_F(SurfaceDistanceTest, SumsAreRoundedTo32BitsAtEachAddition) {
  TestVolume many(60, 60, 60);
  std::mt19937 random(2);
  for (int x = 1; x < 59; ++x) {
    for (int y = 1; y < 59; ++y) {
      for (int z = 1; z < 59; ++z) {
        many.voxel(x, y, z) = random() % 2 == 0 ? std::uint8_t{kLabel} : std::uint8_t{0};
      }
    }
  }
  const TestField field(many.Labels());
  for (std::size_t i = 0; i < field.Count(); ++i) {
    field.View().x[i] = 0.1F;
    field.View().y[i] = 0.0F;
    field.View().z[i] = 0.0F;
  }
  Progress silent;

  const auto distance =
      measure::SumAlongSurface(many.Labels(), many.Labels(), kLabel, field.View(), nullptr, silent);

  float sum = 0.0F;
  for (int i = 0; i < distance.inside.count; ++i) { sum += 0.1F; }
  EXPECT_GT(distance.inside.count, 50000);
  EXPECT_EQ(distance.inside.sum, sum);
  EXPECT_NE(distance.inside.sum, 0.1F * static_cast<float>(distance.inside.count));
}

/// One voxel at a known distance, repainted.
int Repainted(bool inside, float length, float maxInside, float maxOutside) {
  TestVolume image(3, 3, 3);
  if (inside) { image.voxel(1, 1, 1) = kLabel; }
  const TestField field(image.Labels());
  for (float* component : {field.View().x, field.View().y, field.View().z}) {
    std::fill_n(component, field.Count(), 0.0F);
  }
  field.View().z[field.View().Index(1, 1, 1)] = length;
  TestPicture picture({3, 3, 3});
  RecordingProgress progress;
  measure::RepaintSignedDistance(image.Labels(), kLabel, field.View(), maxInside, maxOutside,
                                 picture.Work(), progress);
  EXPECT_EQ(progress.steps, 3);
  EXPECT_EQ(picture.Scalars()[0], -1.0F);  // the surface stays
  return picture.Work().colours[1][1][1];
}

TEST(RepaintTest, ColoursRunToTheGivenMaxima) {
  EXPECT_EQ(Repainted(true, 2.0F, 4.0F, 1.0F), 160);
  EXPECT_EQ(Repainted(false, 2.0F, 1.0F, 4.0F), 96);
  EXPECT_EQ(Repainted(true, 4.0F, 4.0F, 1.0F), 192);
  EXPECT_EQ(Repainted(false, 4.0F, 1.0F, 4.0F), 64);
}

TEST(RepaintTest, WhatLiesBeyondTheMaximaSaturates) {
  EXPECT_EQ(Repainted(true, 5.0F, 4.0F, 1.0F), 192);
  EXPECT_EQ(Repainted(false, 500.0F, 1.0F, 4.0F), 64);
}

TEST(RepaintTest, LargeMaximaStayNearGreen) {
  EXPECT_EQ(Repainted(true, 1.0F, 1000.0F, 1000.0F), 128);
  EXPECT_EQ(Repainted(false, 1.0F, 1000.0F, 1000.0F), 127);  // 127.936 truncated
}

TEST(RepaintTest, MaximaOfZeroSaturateEveryDistance) {
  EXPECT_EQ(Repainted(true, 0.001F, 0.0F, 0.0F), 192);
  EXPECT_EQ(Repainted(false, 0.001F, 0.0F, 0.0F), 64);
  EXPECT_EQ(Repainted(true, 0.0F, 0.0F, 0.0F), 192);  // not-a-number is not within the limit
  EXPECT_EQ(Repainted(false, 0.0F, 0.0F, 0.0F), 64);
}

TEST(RepaintTest, MaximaThatAreNoNumbersSaturate) {
  EXPECT_EQ(Repainted(true, 1.0F, kNan, kNan), 192);
  EXPECT_EQ(Repainted(false, 1.0F, kNan, kNan), 64);
  EXPECT_EQ(Repainted(true, 1.0F, kInfinity, kInfinity), 128);
  EXPECT_EQ(Repainted(false, 1.0F, kInfinity, kInfinity), 128);
}

TEST(RepaintTest, NegativeMaximaCountTheOtherWay) {
  EXPECT_EQ(Repainted(true, 1.0F, -2.0F, -2.0F), 96);    // 128 - 32
  EXPECT_EQ(Repainted(false, 1.0F, -2.0F, -2.0F), 160);  // 128 + 32
}

void ExpectQuartiles(FloatList& list, const nlohmann::json& fields, const std::string& side) {
  list.Sort();
  const int n = list.Size();
  EXPECT_EQ(Text(list.GetValue((n + 1) / 2)), fields["median" + side + "Output"]);
  EXPECT_EQ(Text(list.GetValue((n + 1) / 4)), fields["firstQuart" + side + "Output"]);
  EXPECT_EQ(Text(list.GetValue((3 * n + 3) / 4)), fields["thirdQuart" + side + "Output"]);
}

/// Not-a-number counts as equal with either sign.
std::string WithoutSign(const std::string& text) { return text == "-nan" ? "nan" : text; }

TEST(SurfaceDistanceGoldenTest, IsAsKnown) {
  const int cases = golden::ForEachCase("ComputeSurfaceDistance", [](const auto& study, auto one) {
    const auto& inputs = one["inputs"];

    Measured run(study.Image(inputs["image1Choice"]), study.Labels(inputs["image2Choice"]),
                 inputs["currentLabel"], study.Size());

    const auto& fields = one["fields"];
    const auto& [inside, outside] = run.distance;
    EXPECT_EQ(Text(inside.sum), fields["sumDistInsideOutput"]);
    EXPECT_EQ(Text(outside.sum), fields["sumDistOutsideOutput"]);
    EXPECT_EQ(std::to_string(inside.count), fields["nbPixelInsideOutput"]);
    EXPECT_EQ(std::to_string(outside.count), fields["nbPixelOutsideOutput"]);
    EXPECT_EQ(Text(inside.max), fields["maxInsideInput"]);
    EXPECT_EQ(Text(outside.max), fields["maxOutsideInput"]);
    EXPECT_EQ(Text(static_cast<double>(inside.sum) / inside.count),
              WithoutSign(fields["avgInsideOutput"]));
    EXPECT_EQ(Text(static_cast<double>(outside.sum) / outside.count),
              WithoutSign(fields["avgOutsideOutput"]));
    EXPECT_EQ(Text(inside.sum + outside.sum), fields["sumDistOutput"]);
    if (inputs["medianWithSurfaceCheck"]) {
      ExpectQuartiles(run.lists.inside, fields, "Inside");
      ExpectQuartiles(run.lists.outside, fields, "Outside");
      ExpectQuartiles(run.lists.all, fields, "");
    }
    EXPECT_EQ(run.progress.steps, one["side"]["progressSteps"]);
    golden::ExpectPicture(one["displayVolume1"], run.picture.Work());
    EXPECT_EQ(
        golden::VoxelChecksum(study.Labels(inputs["image1Choice"])),
        study.Study()["images"][inputs["image1Choice"].template get<std::size_t>()]["memoryCrc32"]);
  });
  EXPECT_GT(cases, 50);
}

float NumberIn(const std::string& text) {
  float value = 0.0F;
  std::sscanf(text.c_str(), "%f", &value);
  return value;
}

TEST(SurfaceDistanceGoldenTest, UpdatedColoursAreAsKnown) {
  const int cases = golden::ForEachCase("UpdateSurfaceColors", [](const auto& study, auto one) {
    const auto& inputs = one["inputs"];
    if (inputs.contains("note")) { return; }  // after another command: a test of the window
    Measured run(study.Image(inputs["image1Choice"]), study.Labels(inputs["image2Choice"]),
                 inputs["currentLabel"], study.Size());
    RecordingProgress progress;

    measure::RepaintSignedDistance(study.Labels(inputs["image1Choice"]), inputs["currentLabel"],
                                   run.field.View(), NumberIn(inputs["maxInsideInput"]),
                                   NumberIn(inputs["maxOutsideInput"]), run.picture.Work(),
                                   progress);

    EXPECT_EQ(progress.steps, one["side"]["progressSteps"]);
    golden::ExpectPicture(one["displayVolume1"], run.picture.Work());
  });
  EXPECT_GT(cases, 100);
}

TEST(SurfaceDistanceRandomTest, SumsAsPlainLoopsDo) {
  std::mt19937 random(9);
  for (int round = 0; round < 200; ++round) {
    const auto dims = RandomSizes(random);
    SCOPED_TRACE(testing::PrintToString(dims));
    const auto a = RandomLabels(random, dims);
    const auto b = RandomLabels(random, dims);
    const int label = static_cast<int>(random() % 4);
    const TestField field(dims[0], dims[1], dims[2]);
    FillRandomly(random, field);
    measure::DistanceLists lists;
    RecordingProgress progress;

    const auto distance =
        measure::SumAlongSurface(a->Labels(), b->Labels(), label, field.View(), &lists, progress);
    const auto plain = plain::AlongSurface(a->Labels(), b->Labels(), label, field.View(), true);

    const auto expectSide = [](const measure::SurfaceSide& side, const plain::Side& expected,
                               const FloatList& list) {
      ASSERT_EQ(side.count, expected.count);
      ASSERT_EQ(side.sum, expected.sum);
      ASSERT_EQ(side.max, expected.max);
      ASSERT_EQ(list.Size(), side.count);
      for (int i = 0; i < side.count; ++i) {
        ASSERT_EQ(list.GetValue(i + 1), expected.distances[static_cast<std::size_t>(i)]);
      }
    };
    expectSide(distance.inside, plain.inside, lists.inside);
    expectSide(distance.outside, plain.outside, lists.outside);
    ASSERT_EQ(static_cast<std::size_t>(lists.all.Size()), plain.all.size());
    for (std::size_t i = 0; i < plain.all.size(); ++i) {
      ASSERT_EQ(lists.all.GetValue(static_cast<int>(i) + 1), plain.all[i]);
    }
    ASSERT_EQ(progress.steps, std::max(0, dims[0] - 2));
  }
}

TEST(SurfaceDistanceRandomTest, PaintsAsPlainLoopsDo) {
  std::mt19937 random(10);
  const float maxima[] = {0.0F, -0.0F, 0.3F, 1.7F, 25.0F, -3.0F, 1e-38F, 3e38F, kInfinity, kNan};
  for (int round = 0; round < 200; ++round) {
    const auto dims = RandomSizes(random);
    const float maxInside = maxima[random() % 10];
    const float maxOutside = maxima[random() % 10];
    SCOPED_TRACE(testing::PrintToString(dims) + " " + std::to_string(maxInside) + " " +
                 std::to_string(maxOutside));
    const auto a = RandomLabels(random, dims);
    const auto b = RandomLabels(random, dims);
    const int label = static_cast<int>(random() % 4);
    const TestField field(dims[0], dims[1], dims[2]);
    FillRandomly(random, field);
    measure::SurfaceDistance distance;
    distance.inside.max = maxInside;
    distance.outside.max = maxOutside;
    TestPicture picture(dims);
    TestPicture plainPicture(dims);
    Progress silent;

    measure::PaintSignedDistance(a->Labels(), b->Labels(), label, field.View(), distance,
                                 picture.Work(), silent);
    plain::SignedColours(a->Labels(), b->Labels(), label, field.View(), maxInside, maxOutside,
                         plainPicture.Work());
    ASSERT_EQ(picture.Colours(), plainPicture.Colours());
    ASSERT_EQ(picture.Scalars(), plainPicture.Scalars());

    measure::RepaintSignedDistance(a->Labels(), label, field.View(), maxInside, maxOutside,
                                   picture.Work(), silent);
    plain::UpdatedColours(a->Labels(), label, field.View(), maxInside, maxOutside,
                          plainPicture.Work());
    ASSERT_EQ(picture.Colours(), plainPicture.Colours());
  }
}

TEST(SurfaceDistanceRandomTest, PaintsVectorsThatAreNoNumbers) {
  std::mt19937 random(12);
  const std::array<int, 3> dims = {35, 9, 18};
  const float odd[] = {kInfinity, -kInfinity, kNan, 1e30F, 1e-30F, 0.0F};
  const auto a = RandomLabels(random, dims);
  const TestField field(dims[0], dims[1], dims[2]);
  for (std::size_t i = 0; i < field.Count(); ++i) {
    field.View().x[i] = odd[random() % 6];
    field.View().y[i] = odd[random() % 6];
    field.View().z[i] = odd[random() % 6];
  }
  TestPicture picture(dims);
  TestPicture plainPicture(dims);
  Progress silent;

  measure::PaintSignedDistance(a->Labels(), a->Labels(), kLabel, field.View(), {}, picture.Work(),
                               silent);
  plain::SignedColours(a->Labels(), a->Labels(), kLabel, field.View(), 0.0F, 0.0F,
                       plainPicture.Work());

  EXPECT_EQ(picture.Colours(), plainPicture.Colours());
}

}  // namespace
