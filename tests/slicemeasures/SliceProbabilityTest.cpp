// SliceProbability: counts and pictures worked by hand, then the edge cases.
#include "views/slicemeasures/SliceProbability.h"

#include "tests/slicemeasures/SliceDrawing.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <vector>

namespace {

constexpr int kLabel = 2;

struct Pictures {
  measure::Picture result = {};
  measure::UserCounts counts = {};
};

class SliceProbabilityTest : public testing::TestWithParam<int> {
protected:
  std::unique_ptr<Pictures> pictures = std::make_unique<Pictures>();
  std::vector<std::unique_ptr<Drawing>> drawings;
  measure::RepeatedSlices study;
  measure::SliceSize size;

  /// Counts users of one-row drawings, all with the same number of repeats.
  void Count(const std::vector<std::vector<std::string>>& users) {
    study = {};
    study.users = static_cast<int>(users.size());
    study.repeats = static_cast<int>(users[0].size());
    for (const auto& repeats : users) {
      for (const std::string& row : repeats) {
        drawings.push_back(std::make_unique<Drawing>(Rows{row}, GetParam()));
        study.slices.push_back(drawings.back()->Slice());
        size = drawings.back()->Size();
      }
    }
    measure::CountUsers(study, kLabel, size, pictures->counts);
  }
  double OneUser(int user) {
    return measure::PaintOneUser(pictures->counts, user, study.repeats, size, pictures->result);
  }
  double TwoUsers() {
    return measure::PaintTwoUsers(pictures->counts, study.users, study.repeats, size,
                                  pictures->result);
  }
  std::vector<int> Row() const {
    std::vector<int> values;
    for (int i = 0; i < size.width; ++i) { values.push_back(pictures->result[i][0]); }
    return values;
  }
};

TEST_P(SliceProbabilityTest, CountsTheRepeatsOfEachUser) {
  Count({{"22..", "2.1.", "2..."}, {"...2", "...2", "..22"}});

  EXPECT_EQ(pictures->counts[0][0][0], 3);
  EXPECT_EQ(pictures->counts[1][0][0], 1);
  EXPECT_EQ(pictures->counts[2][0][0], 0);
  EXPECT_EQ(pictures->counts[2][0][1], 1);
  EXPECT_EQ(pictures->counts[3][0][1], 3);
  EXPECT_EQ(pictures->counts[3][0][0], 0);
}

TEST_P(SliceProbabilityTest, OneUserIsShownInWholeStepsAndMeasuredWhereMarked) {
  Count({{"22..", "2...", "2..."}, {"...2", "...2", "..22"}});

  EXPECT_EQ(OneUser(0), (1.0 + 1.0 / 3) / 2);
  EXPECT_EQ(Row(), (std::vector<int>{64998, 21666, 0, 0}));
  EXPECT_EQ(OneUser(1), (1.0 / 3 + 1.0) / 2);
  EXPECT_EQ(Row(), (std::vector<int>{0, 0, 21666, 64998}));
}

TEST_P(SliceProbabilityTest, IdenticalRepeatsGiveOneAndOnlyBlackAndNearlyWhite) {
  Count({{"22..", "22..", "22.."}});

  EXPECT_EQ(OneUser(0), 1.0);
  EXPECT_EQ(Row(), (std::vector<int>{64998, 64998, 0, 0}));
}

TEST_P(SliceProbabilityTest, OneUserWithoutPixelsGivesNotANumber) {
  Count({{"....", "1..."}});

  EXPECT_TRUE(std::isnan(OneUser(0)));
  EXPECT_EQ(Row(), (std::vector<int>{0, 0, 0, 0}));
}

TEST_P(SliceProbabilityTest, OtherUsersAndPixelsKeepTheirCounts) {
  pictures->counts[0][0][4] = 7;
  pictures->counts[0][1][0] = 8;

  Count({{"2..."}});

  EXPECT_EQ(pictures->counts[0][0][4], 7);
  EXPECT_EQ(pictures->counts[0][1][0], 8);
}

TEST_P(SliceProbabilityTest, TwoUsersWithIdenticalRepeatsGiveOne) {
  Count({{"22..", "2..."}, {"22..", "2..."}});

  EXPECT_EQ(TwoUsers(), 1.0);
  EXPECT_EQ(Row(), (std::vector<int>{65000, 32500, 0, 0}));
}

TEST_P(SliceProbabilityTest, TwoUsersWithNoCommonPixelGiveZero) {
  Count({{"22..", "22.."}, {"..2.", "..2."}});

  EXPECT_EQ(TwoUsers(), 0.0);
  EXPECT_EQ(Row(), (std::vector<int>{32500, 32500, 32500, 0}));
}

TEST_P(SliceProbabilityTest, TheDifferencesAreTakenPixelByPixel) {
  Count({{"22..", "2..."}, {"2...", "2.2."}});

  // Differences 0, 1/2, 1/2; sums 1, 1/4, 1/4.
  EXPECT_EQ(TwoUsers(), 1.0 - 1.0 / 1.5 * 0.5);
}

TEST_P(SliceProbabilityTest, OneUserIsComparedWithNobody) {
  Count({{"22..", "2..."}});

  EXPECT_EQ(TwoUsers(), 0.0);
}

TEST_P(SliceProbabilityTest, OnPurposeFurtherUsersDimThePictureButDoNotEnter) {
  Count({{"2..."}, {"2..."}, {".2.."}});

  EXPECT_EQ(TwoUsers(), 1.0);
  EXPECT_EQ(Row(), (std::vector<int>{2 * 21666, 0, 0, 0}));
}

TEST_P(SliceProbabilityTest, TwoUsersWithoutPixelsGiveNotANumber) {
  Count({{"...."}, {"...."}});

  EXPECT_TRUE(std::isnan(TwoUsers()));
}

INSTANTIATE_TEST_SUITE_P(Directions, SliceProbabilityTest, testing::ValuesIn(kDirections));

}  // namespace
