// The average of repeats: how many votes a voxel needs, and which voxels get them.
#include "view3d/volumemeasures/AverageVote.h"

#include "tests/support/RecordingProgress.h"
#include "tests/support/TestVolume.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>

namespace {

using Repeats = std::vector<std::unique_ptr<TestVolume>>;

std::vector<LabelVolume> Views(const Repeats& repeats) {
  std::vector<LabelVolume> views;
  for (const auto& repeat : repeats) { views.push_back(repeat->Labels()); }
  return views;
}

/// One voxel that the first `votes` of `repeats` images mark with label 2.
int AverageOf(int repeats, int votes) {
  Repeats images;
  for (int r = 0; r < repeats; ++r) {
    images.push_back(std::make_unique<TestVolume>(1, 1, 1));
    if (r < votes) { images.back()->voxel(0, 0, 0) = 2; }
  }
  TestVolume average(1, 1, 1);
  RecordingProgress progress;
  measure::AverageRepeats(Views(images), 2, average.Editable(), progress);
  return average.voxel(0, 0, 0);
}

TEST(AverageVoteTest, OnPurposeFewerThanAMajorityAreNeeded) {
  const int needed[] = {1, 1, 1, 2, 2, 3, 3, 4};
  for (int repeats = 1; repeats <= 8; ++repeats) {
    EXPECT_EQ(measure::VotesNeeded(repeats), needed[repeats - 1]) << repeats;
  }
  EXPECT_EQ(measure::VotesNeeded(60), 30);
  EXPECT_EQ(measure::VotesNeeded(0), 1);
}

TEST(AverageVoteTest, OfThreeRepeatsOneIsEnough) {
  EXPECT_EQ(AverageOf(3, 1), 2);
  EXPECT_EQ(AverageOf(3, 0), 0);
}

TEST(AverageVoteTest, OfFourRepeatsOneIsNotEnoughAndTwoAre) {
  EXPECT_EQ(AverageOf(4, 1), 0);
  EXPECT_EQ(AverageOf(4, 2), 2);
}

TEST(AverageVoteTest, AllOfSixtyRepeatsAreCounted) {
  EXPECT_EQ(AverageOf(60, 29), 0);
  EXPECT_EQ(AverageOf(60, 30), 2);
  EXPECT_EQ(AverageOf(60, 60), 2);
}

TEST(AverageVoteTest, AllOfTheMostRepeatsAreCountedInAByte) {
  EXPECT_EQ(AverageOf(255, 126), 0);
  EXPECT_EQ(AverageOf(255, 127), 2);
  EXPECT_EQ(AverageOf(255, 255), 2);
}

TEST(AverageVoteTest, AnotherLabelIsNoVoteAndWhatWasThereIsGone) {
  TestVolume repeat(2, 1, 1);
  repeat.voxel(0, 0, 0) = 3;
  repeat.voxel(1, 0, 0) = 2;
  TestVolume average(2, 1, 1);
  average.Fill({0, 0, 0}, {1, 0, 0}, 7);
  RecordingProgress progress;

  measure::AverageRepeats({repeat.Labels()}, 2, average.Editable(), progress);

  EXPECT_EQ(average.voxel(0, 0, 0), 0);
  EXPECT_EQ(average.voxel(1, 0, 0), 2);
}

TEST(AverageVoteTest, TheStepsAreThePlanesAlongZ) {
  const int sizes[][3] = {{3, 4, 5}, {1, 1, 40}, {40, 2, 1}, {7, 1, 7}};
  for (const auto& size : sizes) {
    const TestVolume repeat(size[0], size[1], size[2]);
    TestVolume average(size[0], size[1], size[2]);
    RecordingProgress progress;
    measure::AverageRepeats({repeat.Labels()}, 1, average.Editable(), progress);
    EXPECT_EQ(progress.steps, size[2]);
  }
}

TEST(AverageVoteTest, CountsAsPlainLoopsDo) {
  std::mt19937 random(11);
  for (int round = 0; round < 40; ++round) {
    const int dimX = 1 + static_cast<int>(random() % 6);
    const int dimY = 1 + static_cast<int>(random() % 6);
    const int dimZ = 1 + static_cast<int>(random() % 40);
    const int count = 1 + static_cast<int>(random() % 9);
    const int label = static_cast<int>(random() % 3) * 127;  // 0, 127, 254
    Repeats repeats;
    for (int r = 0; r < count; ++r) {
      repeats.push_back(std::make_unique<TestVolume>(dimX, dimY, dimZ));
      for (int x = 0; x < dimX; ++x) {
        for (int y = 0; y < dimY; ++y) {
          for (int z = 0; z < dimZ; ++z) {
            repeats.back()->voxel(x, y, z) = static_cast<std::uint8_t>(random() % 3 * 127);
          }
        }
      }
    }
    TestVolume average(dimX, dimY, dimZ);
    RecordingProgress progress;
    measure::AverageRepeats(Views(repeats), label, average.Editable(), progress);
    for (int x = 0; x < dimX; ++x) {
      for (int y = 0; y < dimY; ++y) {
        for (int z = 0; z < dimZ; ++z) {
          int votes = 0;
          for (const auto& repeat : repeats) { votes += repeat->At({x, y, z}) == label ? 1 : 0; }
          const int needed = std::max(static_cast<int>((count + 0.5) * 0.5), 1);
          ASSERT_EQ(average.At({x, y, z}), votes >= needed ? label : 0);
        }
      }
    }
  }
}

}  // namespace
