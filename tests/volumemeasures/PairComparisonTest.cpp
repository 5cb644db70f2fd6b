// The batch over image pairs: worked by hand, its edge cases, and against plain loops that repeat
// every transform.
#include "view3d/volumemeasures/PairComparison.h"

#include "tests/support/GoldenStudy.h"
#include "tests/volumemeasures/PlainPairs.h"
#include "tests/volumemeasures/RandomVolumes.h"
#include "tests/volumemeasures/TestPairStudy.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <numeric>

namespace {

using measure::SlotPair;

constexpr int kLabel = 2;
constexpr measure::CompareColumns kAll = {true, true, true};

/// Two cubes of 3 voxels a side, the second one voxel further along x, and a third that is empty.
class CubesTest : public testing::Test {
protected:
  TestVolume a{9, 9, 9};
  TestVolume b{9, 9, 9};
  TestVolume empty{9, 9, 9};
  TestPairStudy study{{&a, &b, &empty}};

  CubesTest() {
    a.Fill({2, 3, 3}, {4, 5, 5}, kLabel);
    b.Fill({3, 3, 3}, {5, 5, 5}, kLabel);
    study.stages = {kAll, false, true};
  }
};

TEST_F(CubesTest, TheOverlayCountsBothSidesAndTheMiddle) {
  study.Compare({{0, 1}});

  const CompareRecord& record = study.records[0];
  EXPECT_EQ(record.nbPixel1, 9);
  EXPECT_EQ(record.nbPixel2, 9);
  EXPECT_EQ(record.intersection, 18);
  EXPECT_FLOAT_EQ(record.average, 27.0F);
  EXPECT_FLOAT_EQ(record.overlayMajor, 18.0F / 27.0F);
}

TEST_F(CubesTest, OnPurposeTheUnionLeavesOutTheIntersection) {
  study.Compare({{0, 1}});

  EXPECT_EQ(study.records[0].unionCount, 18);
}

TEST_F(CubesTest, OnPurposeTheAverageIsNotTruncated) {
  b.voxel(8, 8, 8) = kLabel;

  study.Compare({{0, 1}});

  EXPECT_FLOAT_EQ(study.records[0].average, 27.5F);
  EXPECT_FLOAT_EQ(study.records[0].overlayMajor, 18.0F / 27.5F);
}

TEST_F(CubesTest, TheHaussdorfDistancesAreDirected) {
  b.Fill({3, 3, 3}, {5, 5, 5}, 0).Fill({3, 3, 3}, {7, 5, 5}, kLabel);

  study.Compare({{0, 1}});

  EXPECT_EQ(study.records[0].haussdorf1, 1.0F);  // from the first image to the second
  EXPECT_EQ(study.records[0].haussdorf2, 3.0F);
  EXPECT_EQ(study.records[0].haussdorfDistance, 3.0F);
}

TEST_F(CubesTest, TheSurfaceOfTheSecondImageIsSplitByTheSideOfTheFirst) {
  study.Compare({{0, 1}});

  // Of 26 surface voxels of b, 9 lie one voxel outside of a; of the 17 inside, those of the shell
  // of a are at 0, and only the middle of b's face x = 3, which is the middle of a, is at 1.
  const CompareRecord& record = study.records[0];
  EXPECT_EQ(record.nbOutside, 9);
  EXPECT_EQ(record.nbInside, 17);
  EXPECT_EQ(record.nbBoundary, 26);
  EXPECT_EQ(record.distanceOutside, 9.0F);
  EXPECT_EQ(record.distanceInside, 1.0F);
  EXPECT_EQ(record.distance, 10.0F);
  EXPECT_FLOAT_EQ(record.averageOutside, 1.0F);
  EXPECT_FLOAT_EQ(record.averageInside, 1.0F / 17.0F);
  EXPECT_FLOAT_EQ(record.averageAll, 10.0F / 26.0F);
}

TEST_F(CubesTest, APairOfOneImageWithItselfIsAPerfectOverlap) {
  study.Compare({{1, 1}});

  const CompareRecord& record = study.records[0];
  EXPECT_EQ(record.nbPixel1, 0);
  EXPECT_EQ(record.nbPixel2, 0);
  EXPECT_EQ(record.overlayMajor, 1.0F);
  EXPECT_EQ(record.haussdorfDistance, 0.0F);
  EXPECT_EQ(record.distance, 0.0F);
  EXPECT_EQ(record.nbInside, 26);
}

TEST_F(CubesTest, AZeroDivisorGivesNoNumber) {
  study.Compare({{2, 2}});

  const CompareRecord& record = study.records[0];
  EXPECT_TRUE(std::isnan(record.overlayMajor));
  EXPECT_TRUE(std::isnan(record.averageInside));
  EXPECT_TRUE(std::isnan(record.averageOutside));
  EXPECT_TRUE(std::isnan(record.averageAll));
}

TEST_F(CubesTest, ARunWithoutPairsSaysTwoLinesAndWritesNothing) {
  study.Compare({});

  EXPECT_EQ(study.progress.printed, "nb compare0\nThat's finished !!!!\n");
  EXPECT_EQ(study.rows, "");
  EXPECT_TRUE(study.transformed.empty());
}

TEST_F(CubesTest, TheWordsOfTheConsoleComeInTheOrderOfTheStages) {
  study.Compare({{0, 1}});

  EXPECT_EQ(study.progress.printed, "nb compare1\n"
                                    "0<->1\n"
                                    "Overlay result Image #1 finished\n"
                                    "Computing Surface...\n"
                                    "starting forward scan\n"
                                    "starting backward scan\n"
                                    "step 1\n"
                                    "computing....\n"
                                    "Starting HaussDorf...\n"
                                    "starting forward scan\n"
                                    "starting backward scan\n"
                                    "Starting Danielsson 2...\n"
                                    "starting forward scan\n"
                                    "starting backward scan\n"
                                    "Write File #1\n"
                                    "That's finished !!!!\n");
}

TEST_F(CubesTest, TheHeadingComesWithTheFirstPairOfARunAlone) {
  study.stages.columns = {false, true, false};

  study.Compare({{0, 1}, {1, 0}});
  study.Compare({{1, 1}});

  EXPECT_EQ(study.rows, "Image 1\tImage 2\tHaussdorf 1\tHaussdorf 2\tHaussdorf Distance\t\n"
                        "0\t1\t1.000000\t1.000000\t1.000000\t\n"
                        "1\t0\t1.000000\t1.000000\t1.000000\t\n"
                        "Image 1\tImage 2\tHaussdorf 1\tHaussdorf 2\tHaussdorf Distance\t\n"
                        "1\t1\t0.000000\t0.000000\t0.000000\t\n");
}

TEST_F(CubesTest, ARunThatDoesNotWriteSaysNothingOfAFile) {
  study.stages = {{true, false, false}, false, false};

  study.Compare({{0, 1}});

  EXPECT_EQ(study.progress.printed,
            "nb compare1\n0<->1\nOverlay result Image #1 finished\nThat's finished !!!!\n");
  EXPECT_EQ(study.rows, "");
}

TEST_F(CubesTest, AStageThatIsLeftOutKeepsTheFieldsOfAnEarlierRun) {
  study.Compare({{0, 1}});
  study.stages.columns = {true, false, false};

  study.Compare({{1, 1}});

  EXPECT_EQ(study.records[0].nbPixel1, 0);
  EXPECT_EQ(study.records[0].haussdorf1, 1.0F);
}

TEST_F(CubesTest, LongNamesAreCutAt49Characters) {
  study.names[0] = std::string(300, 'x');

  study.Compare({{0, 1}});

  EXPECT_EQ(std::string(study.records[0].name1), std::string(49, 'x'));
  EXPECT_EQ(std::string(study.records[0].name2), "1");
}

TEST_F(CubesTest, OnPurposeAnotherLabelBesideTheFirstImageMakesNoSurface) {
  a.Fill({1, 1, 1}, {7, 7, 7}, 5).Fill({2, 3, 3}, {4, 5, 5}, kLabel);  // no 0 touches the cube

  study.Compare({{0, 1}});

  // No shell: the distances are those of a label that is absent, and no surface voxel of b is at 0.
  EXPECT_EQ(study.records[0].nbInside, 17);
  EXPECT_GT(study.records[0].distanceInside, 17.0F);
}

TEST_F(CubesTest, ANeighbourOutsideTheVolumeMakesASurfaceOfTheFirstImage) {
  a.Fill({0, 0, 0}, {8, 8, 8}, kLabel);

  study.Compare({{0, 1}});

  // The border of the volume is the shell: a voxel of b is as far from it as from its nearest side.
  EXPECT_EQ(study.records[0].nbInside, 26);
  EXPECT_EQ(study.records[0].distanceInside, 26 * 3.0F);
}

TEST_F(CubesTest, TheOutermostLayerOfTheSecondImageIsLeftOut) {
  b.Fill({3, 3, 3}, {5, 5, 5}, 0).Fill({0, 0, 0}, {8, 8, 0}, kLabel);

  study.Compare({{0, 1}});

  EXPECT_EQ(study.records[0].nbBoundary, 0);
}

TEST_F(CubesTest, TheHaussdorfDistanceLeavesOutNoPlane) {
  b.voxel(8, 4, 4) = kLabel;

  study.Compare({{0, 1}});

  EXPECT_EQ(study.records[0].haussdorf2, 4.0F);
}

TEST_F(CubesTest, OnPurposeAHistogramBehindTheSurfaceHoldsItsOneDirectionAlone) {
  study.stages = {{false, false, true}, true, false};

  study.Compare({{0, 1}});

  EXPECT_EQ(study.progress.printed, "nb compare1\n"
                                    "0<->1\n"
                                    "Computing Surface...\n"
                                    "starting forward scan\n"
                                    "starting backward scan\n"
                                    "step 1\n"
                                    "computing....\n"
                                    "Nb point: 26\n"
                                    "That's finished !!!!\n");
  EXPECT_EQ(study.transformed, std::vector<int>{0});
}

TEST_F(CubesTest, AHistogramAloneHoldsBothDirections) {
  study.stages = {{false, false, false}, true, true};

  study.Compare({{0, 1}});

  EXPECT_EQ(study.progress.printed, "nb compare1\n"
                                    "0<->1\n"
                                    "Computing Surface...\n"
                                    "starting forward scan\n"
                                    "starting backward scan\n"
                                    "computing....\n"
                                    "Computing Surface reverse...\n"
                                    "starting forward scan\n"
                                    "starting backward scan\n"
                                    "computing....\n"
                                    "Nb point: 52\n"
                                    "Write File #1\n"
                                    "That's finished !!!!\n");
  EXPECT_EQ(study.rows, "Image 1\tImage 2\t\n0\t1\t\n");
  // 1 inside at each end, zeros, 9 outside at each end: the opening 0 joins no value, since -1
  // comes behind it; and the last entry is not written.
  EXPECT_EQ(study.histogramRows, "Image 1\tImage 2\t0.000000\t-1.000000\t-0.000000\t\n"
                                 "0\t1\t1\t2\t32\t\n");
}

TEST_F(CubesTest, TheLabelsAreWholeAgain) {
  const auto before = a.Bytes();

  study.Compare({{0, 1}, {1, 0}});

  EXPECT_EQ(a.Bytes(), before);
  EXPECT_EQ(study.altered, 0);
}

TEST_F(CubesTest, ALabelThatIsChosenMeanwhileIsMeasuredFromThenOn) {
  a.Fill({2, 3, 7}, {2, 3, 7}, 3);
  b.Fill({2, 3, 3}, {2, 3, 3}, 3);
  study.stages.columns = {false, true, false};
  study.meanwhile = [this] {
    if (study.transformed.size() == 2) { study.label = 3; }
  };

  study.Compare({{0, 1}, {0, 1}});

  EXPECT_EQ(study.records[0].haussdorf1, 1.0F);
  EXPECT_EQ(study.records[1].haussdorf1, 4.0F);
  EXPECT_EQ(study.transformed.size(), 4U);  // readings for another label are of no use
}

TEST_F(CubesTest, TheSurfaceOfALabelThatIsChosenMeanwhileIsMeasuredFromThenOn) {
  a.Fill({2, 3, 7}, {2, 3, 7}, 3);
  b.Fill({1, 3, 3}, {1, 3, 3}, 3);
  study.stages.columns = {false, false, true};
  study.meanwhile = [this] {
    study.label = 3;
  };

  study.Compare({{0, 1}, {0, 1}});

  EXPECT_EQ(study.records[0].nbBoundary, 26);
  EXPECT_EQ(study.records[1].nbBoundary, 1);
  EXPECT_EQ(study.records[1].distanceOutside, std::sqrt(17.0F));
}

TEST_F(CubesTest, AHistogramThatIsAskedForMeanwhileIsMadeFromTheNextPairOn) {
  TestPairStudy asked{{&a, &b, &empty}};
  asked.stages = {{false, false, true}, true, true};
  asked.Compare({{0, 1}});
  study.stages = {{false, false, true}, false, true};
  study.meanwhile = [this] {
    study.stages.histogram = true;
  };

  study.Compare({{0, 1}, {0, 1}});

  EXPECT_NE(study.histogramRows, "");
  EXPECT_EQ(study.histogramRows, asked.histogramRows);
}

TEST_F(CubesTest, TheFirstHistogramBinsStayAtZero) {
  study.Compare({{0, 1}});

  for (const std::int32_t bin : study.records[0].histogram) { EXPECT_EQ(bin, 0); }
}

/// Studies of random labels.
class RandomPairsTest : public testing::Test {
protected:
  std::mt19937 random{5};
  std::vector<std::unique_ptr<TestVolume>> volumes;
  std::vector<TestVolume*> images;
  measure::VoxelSize size;

  void MakeImages(int count, const std::array<int, 3>& dims) {
    volumes.clear();
    images.clear();
    for (int i = 0; i < count; ++i) {
      volumes.push_back(RandomLabels(random, dims));
      images.push_back(volumes.back().get());
    }
    constexpr float kSizes[] = {1.0F, 0.3F, 2.5F, 7.0F};
    size = {kSizes[random() % 4], kSizes[random() % 4], kSizes[random() % 4]};
  }

  std::vector<SlotPair> RandomPairs() {
    const int count = static_cast<int>(images.size());
    if (random() % 3 == 0) { return AllPairs(count, random() % 2 == 0); }
    std::vector<SlotPair> pairs(1 + random() % 9);
    for (SlotPair& pair : pairs) {
      const auto slot = [&] {
        return static_cast<int>(random() % static_cast<unsigned>(count));
      };
      pair = {slot(), slot()};
    }
    return pairs;
  }

  /// The fast run and the plain one on the same study, from the same start.
  void ExpectPlainRun(const std::vector<SlotPair>& pairs, const plain::Boxes& boxes) {
    TestPairStudy study(images);
    study.label = static_cast<int>(random() % 4);
    study.size = size;
    study.stages = {{boxes.overlay, boxes.haussdorf, boxes.surface}, boxes.histogram, boxes.write};
    plain::Pairs reference(images, study.label, size);

    study.Compare(pairs);
    reference.Compare(pairs, boxes);

    ASSERT_EQ(study.progress.printed, reference.printed);
    ASSERT_EQ(study.rows, reference.table);
    ASSERT_EQ(study.histogramRows, reference.histogramTable);
    ASSERT_EQ(study.histogramLast, reference.histogramLast);
    ASSERT_EQ(study.histogramCount, reference.histogramCount);
    ASSERT_TRUE(SameBits(study.histogramValue, reference.histogramValue));
    ExpectArrays(study, reference);
  }

  static bool SameBits(const std::vector<float>& a, const std::vector<float>& b) {
    return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(float)) == 0;
  }

  void ExpectArrays(TestPairStudy& study, plain::Pairs& reference) const {
    const TestField& a = study.Arrays();
    const TestField& b = reference.Field();
    ASSERT_EQ(a.Mask(), b.Mask());
    ASSERT_TRUE(SameBits(a.X(), b.X()) && SameBits(a.Y(), b.Y()) && SameBits(a.Z(), b.Z()));
    const LabelVolume shape = images[0]->Labels();
    for (int x = 0; x < shape.dimX; ++x) {
      for (int y = 0; y < shape.dimY; ++y) {
        ASSERT_EQ(0, std::memcmp(study.Saved()[x][y], reference.Saved()[x][y],
                                 static_cast<std::size_t>(shape.dimZ) * sizeof(std::int32_t)));
      }
    }
  }
};

TEST_F(RandomPairsTest, TableConsoleAndArraysAreThoseOfRepeatedTransforms) {
  for (int round = 0; round < 150; ++round) {
    SCOPED_TRACE("round " + std::to_string(round));
    const auto below = [&](unsigned end) {
      return 1 + static_cast<int>(random() % end);
    };
    MakeImages(2 + static_cast<int>(random() % 4), {below(14), below(14), below(20)});
    const auto flag = [&] {
      return random() % 2 == 0;
    };
    const plain::Boxes boxes = {flag(), flag(), flag(), random() % 4 == 0, flag()};
    ASSERT_NO_FATAL_FAILURE(ExpectPlainRun(RandomPairs(), boxes));
  }
}

TEST_F(RandomPairsTest, EachImageIsTransformedOnceForItsRegionAndOnceForItsShell) {
  MakeImages(10, {9, 8, 7});
  TestPairStudy study(images);
  study.stages = {kAll, false, true};

  study.Compare(AllPairs(10));

  // 10 regions and 9 shells; then the region of the last image once more, which the arrays hold
  // at the end.
  EXPECT_EQ(study.transformed.size(), 20U);
  EXPECT_EQ(study.transformed.back(), 9);
}

TEST_F(RandomPairsTest, PairsTurnedRoundNeedNoImageOnceMore) {
  MakeImages(5, {9, 8, 7});
  TestPairStudy study(images);
  study.stages = {kAll, false, true};
  auto pairs = AllPairs(5);
  for (const SlotPair& turned : AllPairs(5, true)) { pairs.push_back(turned); }

  study.Compare(pairs);

  // 5 regions and 5 shells; then the region that the last pair, 4 and 3, leaves in the arrays.
  EXPECT_EQ(study.transformed.size(), 11U);
  EXPECT_EQ(study.transformed.back(), 3);
}

TEST_F(RandomPairsTest, ASinglePairRunsEachOfItsTransformsOnce) {
  MakeImages(2, {9, 8, 7});
  TestPairStudy study(images);
  study.stages = {kAll, false, true};

  study.Compare({{0, 1}});

  EXPECT_EQ(study.transformed, (std::vector<int>{0, 0, 1}));
}

TEST_F(RandomPairsTest, ARepeatedPairIsReadOnceAndReportedTwice) {
  MakeImages(2, {9, 8, 7});
  TestPairStudy study(images);
  study.stages = {kAll, false, true};

  study.Compare({{0, 1}, {0, 1}});

  EXPECT_EQ(study.transformed, (std::vector<int>{0, 0, 1}));
  EXPECT_EQ(std::memcmp(&study.records[0], &study.records[1], sizeof(CompareRecord)), 0);
}

/// Counts what reaches the progress panel.
TEST_F(RandomPairsTest, TheBarMovesInTheTransformsThatAreRun) {
  MakeImages(2, {9, 8, 7});
  TestPairStudy study(images);
  study.stages = {kAll, false, true};

  study.Compare({{0, 1}});

  EXPECT_EQ(study.progress.steps, 3 * (9 + 2 * (7 - 1)));
}

TEST(PairComparisonGoldenTest, TablesAndConsoleAreAsKnown) {
  const int cases = golden::ForEachCase("CompareData", [](const golden::GoldenStudy& golden,
                                                          const auto& one) {
    const auto& boxes = one["inputs"]["boxes"];
    std::vector<TestVolume*> images;
    for (int slot = 0; slot < golden.ImageCount(); ++slot) {
      images.push_back(&golden.Image(slot));
    }
    TestPairStudy study(images);
    study.label = one["inputs"]["currentLabel"];
    study.size = golden.Size();
    study.stages = {{boxes["compareOverlayCheck"], boxes["compareHaussdorfCheck"],
                     boxes["compareSurfaceDistCheck"]},
                    boxes["compareSurfaceHistoCheck"],
                    boxes["compareAlwaysWriteButton"]};
    for (std::size_t slot = 0; slot < images.size(); ++slot) {
      study.names[slot] = golden.Study()["images"][slot]["name"];
    }

    study.Compare(one["inputs"]["comparePairs"].template get<std::vector<SlotPair>>());

    const auto withoutSigns = [](std::string text) {
      for (std::size_t at; (at = text.find("-nan")) != std::string::npos;) { text.erase(at, 1); }
      return text;
    };
    const auto& fields = one["fields"];
    EXPECT_EQ(study.progress.printed, fields["(out)"].template get<std::string>());
    EXPECT_EQ(withoutSigns(study.rows), withoutSigns(fields["(file)"].template get<std::string>()));
    EXPECT_EQ(study.histogramRows, fields.value("(histoFile)", std::string()));
  });

  EXPECT_GT(cases, 300);
}

}  // namespace
