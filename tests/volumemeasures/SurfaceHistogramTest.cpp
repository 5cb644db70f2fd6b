// Surface histogram: the counts, both tables, the two lines, and the lists of both directions.
#include "view3d/volumemeasures/SurfaceHistogram.h"

#include "tests/support/GoldenStudy.h"
#include "tests/volumemeasures/PlainPairs.h"
#include "tests/volumemeasures/RandomVolumes.h"
#include "tests/volumemeasures/TestPairStudy.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <random>

namespace {

using measure::DistanceCounts;
using measure::SlotPair;

DistanceCounts CountsOf(const std::vector<float>& values) {
  FloatList list;
  for (const float value : values) { list.Append(value); }
  return measure::CountDistances(list);
}

/// Tables whose entries all hold something before.
struct Tables {
  std::vector<float> values = std::vector<float>(20000, 5.0F);
  std::vector<std::int32_t> counts = std::vector<std::int32_t>(20000, 70);
  std::int32_t last = 99;

  measure::HistogramTable Table() { return {values.data(), counts.data(), last}; }
  std::string Rows(int end) { return measure::HistogramRows(Table(), end, "a", "b"); }
};

TEST(SurfaceHistogramTest, EveryDistinctValueIsCountedInAscendingOrder) {
  Tables tables;

  EXPECT_TRUE(measure::BuildHistogram(CountsOf({2.0F, -1.5F, 2.0F, 0.5F, -1.5F, 2.0F}),
                                      measure::kOwnHistogram, tables.Table()));

  EXPECT_EQ(tables.last, 2);
  EXPECT_EQ(tables.Rows(tables.last), "Image 1\tImage 2\t-1.500000\t0.500000\t2.000000\t\n"
                                      "a\tb\t2\t1\t3\t\n");
}

TEST(SurfaceHistogramTest, AnEmptyListGivesTheHeadingsAndTheNames) {
  Tables tables;

  EXPECT_TRUE(measure::BuildHistogram(CountsOf({}), measure::kOwnHistogram, tables.Table()));

  EXPECT_EQ(tables.last, -1);
  EXPECT_EQ(tables.Rows(tables.last), "Image 1\tImage 2\t\na\tb\t\n");
}

TEST(SurfaceHistogramTest, ZerosOfBothSignsAreOneValueWithTheSignOfTheFirst) {
  const DistanceCounts counts = CountsOf({-0.0F, 0.0F, -0.0F});

  ASSERT_EQ(counts.entries.size(), 1U);
  EXPECT_EQ(counts.entries[0].count, 3);
  EXPECT_TRUE(std::signbit(counts.entries[0].value));
}

TEST(SurfaceHistogramTest, AValueLikeTheOneBeforeTheFirstIsCounted) {
  Tables tables;

  measure::BuildHistogram(CountsOf({445361.0F, 445361.0F}), measure::kOwnHistogram, tables.Table());

  EXPECT_EQ(tables.last, 0);
  EXPECT_EQ(tables.counts[0], 2);
}

TEST(SurfaceHistogramTest, ATableOfTheButtonKeepsNothingOfAnEarlierOne) {
  Tables tables;

  measure::BuildHistogram(CountsOf({1.0F, 2.0F}), measure::kOwnHistogram, tables.Table());

  EXPECT_EQ(tables.counts[0], 1);
  EXPECT_EQ(tables.counts[1], 1);
  EXPECT_EQ(tables.counts[2], 70);  // behind the last entry nothing is touched
}

TEST(SurfaceHistogramTest, OnPurposeTheBatchOpensWithZeroAndLeavesOutTheLargest) {
  Tables tables;

  measure::BuildHistogram(CountsOf({-1.0F, -1.0F, 3.0F, 3.0F}), measure::kBatchHistogram,
                          tables.Table());

  EXPECT_EQ(tables.last, 2);
  EXPECT_EQ(tables.Rows(tables.last), "Image 1\tImage 2\t0.000000\t-1.000000\t3.000000\t\n"
                                      "a\tb\t1\t2\t1\t\n");
}

TEST(SurfaceHistogramTest, ABatchWhoseLargestValueIsSingleHasNoEntryForIt) {
  Tables tables;

  measure::BuildHistogram(CountsOf({-1.0F, 3.0F}), measure::kBatchHistogram, tables.Table());

  EXPECT_EQ(tables.last, 1);
  EXPECT_EQ(tables.values[1], -1.0F);
}

TEST(SurfaceHistogramTest, ABatchWhoseSmallestValueIsZeroAddsItToTheFirstEntry) {
  Tables tables;

  measure::BuildHistogram(CountsOf({-0.0F, 0.0F, 2.0F}), measure::kBatchHistogram, tables.Table());

  EXPECT_EQ(tables.last, 0);
  EXPECT_EQ(tables.counts[0], 3);
  EXPECT_FALSE(std::signbit(tables.values[0]));
}

TEST(SurfaceHistogramTest, ABatchOfOneValueHasTheOpeningEntryAlone) {
  Tables tables;

  measure::BuildHistogram(CountsOf({4.0F}), measure::kBatchHistogram, tables.Table());

  EXPECT_EQ(tables.last, 0);
  EXPECT_EQ(tables.values[0], 0.0F);
  EXPECT_EQ(tables.counts[0], 1);
}

TEST(SurfaceHistogramTest, ABatchOfNoValueHasNoEntry) {
  Tables tables;

  measure::BuildHistogram(CountsOf({}), measure::kBatchHistogram, tables.Table());

  EXPECT_EQ(tables.last, -1);
  EXPECT_EQ(tables.values[0], 999999.0F);
  EXPECT_EQ(tables.counts[0], 0);
}

TEST(SurfaceHistogramTest, OnPurposeTheBatchClearsItsFirst600EntriesAlone) {
  Tables tables;
  std::vector<float> values;
  for (int i = 0; i < 700; ++i) { values.push_back(static_cast<float>(i + 1)); }

  measure::BuildHistogram(CountsOf(values), measure::kBatchHistogram, tables.Table());

  EXPECT_EQ(tables.last, 699);
  EXPECT_EQ(tables.counts[599], 1);
  EXPECT_EQ(tables.counts[600], 71);  // added to what stood there
  EXPECT_EQ(tables.counts[700], 70);
}

TEST(SurfaceHistogramTest, TwentyThousandDistinctValuesFillTheTable) {
  Tables tables;
  std::vector<float> values(20000);
  for (std::size_t i = 0; i < values.size(); ++i) { values[i] = static_cast<float>(i); }

  EXPECT_TRUE(measure::BuildHistogram(CountsOf(values), measure::kOwnHistogram, tables.Table()));

  EXPECT_EQ(tables.last, 19999);
}

TEST(SurfaceHistogramTest, OneDistinctValueMoreIsToldAndOverrunsNothing) {
  Tables tables;
  std::vector<float> values(30000);
  for (std::size_t i = 0; i < values.size(); ++i) { values[i] = static_cast<float>(i); }
  const DistanceCounts counts = CountsOf(values);

  EXPECT_FALSE(measure::BuildHistogram(counts, measure::kOwnHistogram, tables.Table()));

  EXPECT_EQ(tables.last, 19999);
  EXPECT_EQ(counts.total, 30000);
}

TEST(SurfaceHistogramTest, MergedCountsAreThoseOfOneList) {
  std::mt19937 random(1);
  for (int round = 0; round < 200; ++round) {
    std::vector<float> lists[2];
    for (auto& list : lists) {
      list.resize(random() % 30);
      for (float& value : list) {
        value = static_cast<float>(static_cast<int>(random() % 9) - 4);
        if (value == 0.0F) { value = -0.0F; }
      }
    }
    std::vector<float> both = lists[0];
    both.insert(both.end(), lists[1].begin(), lists[1].end());

    const auto merged = measure::Merged(CountsOf(lists[0]), CountsOf(lists[1]));
    const DistanceCounts expected = CountsOf(both);

    ASSERT_TRUE(merged.has_value());
    ASSERT_EQ(merged->total, expected.total);
    ASSERT_EQ(merged->entries.size(), expected.entries.size());
    for (std::size_t i = 0; i < merged->entries.size(); ++i) {
      ASSERT_EQ(merged->entries[i].value, expected.entries[i].value);
      ASSERT_EQ(std::signbit(merged->entries[i].value), std::signbit(expected.entries[i].value));
      ASSERT_EQ(merged->entries[i].count, expected.entries[i].count);
    }
  }
}

TEST(SurfaceHistogramTest, ZerosOfDifferentSignsAreNotMerged) {
  EXPECT_FALSE(measure::Merged(CountsOf({-0.0F}), CountsOf({0.0F})).has_value());
  EXPECT_TRUE(measure::Merged(CountsOf({0.0F}), CountsOf({0.0F, 1.0F})).has_value());
}

/// The flow of the button: both directions of every pair into one table.
class ButtonRun {
public:
  std::string rows;

  void Run(TestPairStudy& study, const std::vector<SlotPair>& pairs) {
    measure::PairMeasures measures(study, pairs, measure::ShellRule::OtherValue);
    for (int row = 0; row < static_cast<int>(pairs.size()); ++row) {
      const auto [first, second] = pairs[static_cast<std::size_t>(row)];
      measures.BeginPair(row);
      const auto there = measures.AlongSurface(first, second, measure::Origin::EitherImage, true);
      const auto back = measures.AlongSurface(second, first, measure::Origin::EitherImage, true);
      const auto both = measures.BothWays({first, second}, *there.counts, *back.counts);
      measure::BuildHistogram(both, measure::kOwnHistogram, study.Histogram());
      rows += measure::HistogramRows(study.Histogram(), study.histogramLast, study.Name(first),
                                     study.Name(second));
      measures.EndPair();
    }
    measures.LeaveArrays();
  }
};

TEST(ButtonHistogramTest, IdenticalImagesHaveASingleEntryOfAllSurfaceVoxels) {
  TestVolume a(9, 9, 9);
  a.Fill({2, 2, 2}, {4, 4, 4}, 2);
  TestVolume b(9, 9, 9);
  b.Fill({2, 2, 2}, {4, 4, 4}, 2);
  TestPairStudy study({&a, &b});
  ButtonRun run;

  run.Run(study, {{0, 1}});

  EXPECT_EQ(run.rows, "Image 1\tImage 2\t-0.000000\t\n0\t1\t52\t\n");
}

TEST(ButtonHistogramTest, DisjointRegionsHavePositiveValuesAlone) {
  TestVolume a(12, 9, 9);
  a.Fill({2, 3, 3}, {2, 3, 3}, 2);
  TestVolume b(12, 9, 9);
  b.Fill({6, 3, 3}, {6, 6, 3}, 2);
  TestPairStudy study({&a, &b});
  ButtonRun run;

  run.Run(study, {{0, 1}});

  EXPECT_EQ(run.rows, "Image 1\tImage 2\t4.000000\t4.123106\t4.472136\t5.000000\t\n"
                      "0\t1\t2\t1\t1\t1\t\n");
}

TEST(ButtonHistogramTest, AnEmptySurfaceGivesHeadingsAndNames) {
  TestVolume a(6, 6, 6);
  TestVolume b(6, 6, 6);
  TestPairStudy study({&a, &b});
  ButtonRun run;

  run.Run(study, {{0, 1}});

  EXPECT_EQ(run.rows, "Image 1\tImage 2\t\n0\t1\t\n");
}

TEST(ButtonHistogramTest, EachShellIsMadeOnceForAllPairs) {
  std::mt19937 random(2);
  std::vector<std::unique_ptr<TestVolume>> volumes;
  std::vector<TestVolume*> images;
  for (int i = 0; i < 6; ++i) {
    volumes.push_back(RandomLabels(random, {9, 8, 7}));
    images.push_back(volumes.back().get());
  }
  TestPairStudy study(images);
  ButtonRun run;

  run.Run(study, AllPairs(6));

  EXPECT_EQ(study.transformed.size(), 6U);
}

TEST(ButtonHistogramTest, TheTableIsThatOfListsSortedBySwaps) {
  std::mt19937 random(9);
  for (int round = 0; round < 120; ++round) {
    SCOPED_TRACE("round " + std::to_string(round));
    std::vector<std::unique_ptr<TestVolume>> volumes;
    std::vector<TestVolume*> images;
    const std::array<int, 3> dims = {3 + static_cast<int>(random() % 9),
                                     3 + static_cast<int>(random() % 9),
                                     3 + static_cast<int>(random() % 18)};
    for (int i = 0; i < 4; ++i) {
      volumes.push_back(RandomLabels(random, dims));
      images.push_back(volumes.back().get());
    }
    // A voxel size of 0 makes zeros of both signs: the swaps decide which one is printed.
    constexpr float kSizes[] = {0.0F, 1.0F, 0.7F, 0.0F, 9.0F};
    TestPairStudy study(images);
    study.size = {kSizes[random() % 5], kSizes[random() % 5], kSizes[random() % 5]};
    plain::Pairs reference(images, study.label, study.size);
    ButtonRun run;

    run.Run(study, AllPairs(4));
    reference.Histogram(AllPairs(4));

    ASSERT_EQ(run.rows, reference.histogramTable);
    ASSERT_EQ(study.histogramLast, reference.histogramLast);
    ASSERT_EQ(study.Arrays().X(), reference.Field().X());
    ASSERT_EQ(study.Arrays().Mask(), reference.Field().Mask());
  }
}

TEST(ButtonHistogramTest, TablesAreAsKnown) {
  const int cases = golden::ForEachCase(
      "ComputeSurfaceHistogram", [](const golden::GoldenStudy& golden, const auto& one) {
        std::vector<TestVolume*> images;
        for (int slot = 0; slot < golden.ImageCount(); ++slot) {
          images.push_back(&golden.Image(slot));
        }
        TestPairStudy study(images);
        study.label = one["inputs"]["currentLabel"];
        study.size = golden.Size();
        for (std::size_t slot = 0; slot < images.size(); ++slot) {
          study.names[slot] = golden.Study()["images"][slot]["name"];
        }
        ButtonRun run;

        run.Run(study, one["inputs"]["comparePairs"].template get<std::vector<SlotPair>>());

        EXPECT_EQ(run.rows, one["fields"]["(file)"].template get<std::string>());
      });

  EXPECT_GT(cases, 30);
}

}  // namespace
