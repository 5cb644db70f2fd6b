// FloatList: positions, the search, and the sort against one by swaps.
#include "view3d/volumemeasures/FloatList.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <utility>
#include <vector>

namespace {

FloatList ListOf(const std::vector<float>& values) {
  FloatList list;
  for (const float value : values) { list.Append(value); }
  return list;
}

std::vector<float> ValuesOf(const FloatList& list) {
  std::vector<float> values;
  for (int position = 1; position <= list.Size(); ++position) {
    values.push_back(list.GetValue(position));
  }
  return values;
}

/// The sort as it is told: the first smallest value from each position on is swapped there.
std::vector<float> SortedBySwaps(std::vector<float> values) {
  for (std::size_t i = 0; i + 1 < values.size(); ++i) {
    std::size_t smallest = i;
    for (std::size_t j = i + 1; j < values.size(); ++j) {
      if (values[j] < values[smallest]) { smallest = j; }
    }
    std::swap(values[i], values[smallest]);
  }
  return values;
}

bool SameBits(const std::vector<float>& a, const std::vector<float>& b) {
  if (a.size() != b.size()) { return false; }
  return a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(float)) == 0;
}

TEST(FloatListTest, PositionsCountFromOne) {
  const FloatList list = ListOf({5.0F, 7.0F});

  EXPECT_EQ(list.GetValue(1), 5.0F);
  EXPECT_EQ(list.GetValue(2), 7.0F);
  EXPECT_EQ(list.Size(), 2);
}

TEST(FloatListTest, PositionsThatDoNotExistReadAsZero) {
  const FloatList list = ListOf({5.0F});

  for (const int position : {-1, 0, 2, std::numeric_limits<int>::max()}) {
    EXPECT_EQ(list.GetValue(position), 0.0F) << position;
  }
}

TEST(FloatListTest, ASetValueClearsTheSortedFlag) {
  FloatList list = ListOf({1.0F, 2.0F});
  list.Sort();

  list.SetValue(2, 0.5F);

  EXPECT_FALSE(list.sorted);
  EXPECT_EQ(list.GetValue(2), 0.5F);
}

TEST(FloatListTest, SettingAPositionThatDoesNotExistChangesNoValue) {
  FloatList list = ListOf({1.0F, 2.0F});

  for (const int position : {-3, 0, 3}) { list.SetValue(position, 9.0F); }

  EXPECT_EQ(ValuesOf(list), (std::vector<float>{1.0F, 2.0F}));
}

TEST(FloatListTest, AnAppendedValueLeavesTheSortedFlagAsItIs) {
  FloatList list = ListOf({1.0F});
  list.Sort();

  list.Append(0.5F);

  EXPECT_TRUE(list.sorted);
}

TEST(FloatListTest, TheMinimumIsSearchedFromThePositionToTheEnd) {
  const FloatList list = ListOf({1.0F, 4.0F, 3.0F, 9.0F});

  EXPECT_EQ(list.IndexOfMinimum(1), 1);
  EXPECT_EQ(list.IndexOfMinimum(2), 3);
  EXPECT_EQ(list.IndexOfMinimum(4), 4);
}

TEST(FloatListTest, AmongEqualMinimaTheFirstWins) {
  EXPECT_EQ(ListOf({2.0F, 1.0F, 3.0F, 1.0F}).IndexOfMinimum(1), 2);
}

TEST(FloatListTest, AListIsSortedOnlyOnce) {
  FloatList list = ListOf({2.0F, 1.0F});
  list.Sort();
  list.Append(0.0F);  // leaves the flag: the caller's business

  list.Sort();

  EXPECT_EQ(ValuesOf(list), (std::vector<float>{1.0F, 2.0F, 0.0F}));
}

TEST(FloatListTest, AnEmptyListStaysEmpty) {
  FloatList list;

  list.Sort();

  EXPECT_EQ(list.Size(), 0);
  EXPECT_TRUE(list.sorted);
}

TEST(FloatListTest, AClearedListCanBeSortedAgain) {
  FloatList list = ListOf({2.0F, 1.0F});
  list.Sort();

  list.Clear();

  EXPECT_EQ(list.Size(), 0);
  EXPECT_FALSE(list.sorted);
}

TEST(FloatListTest, ASwapCarriesAZeroBehindOneOfTheOtherSign) {
  FloatList list = ListOf({0.0F, -0.0F, -1.0F});  // -1 changes places with the first zero

  list.Sort();

  EXPECT_TRUE(SameBits(ValuesOf(list), {-1.0F, -0.0F, 0.0F}));
}

TEST(FloatListTest, SortsAsSwapsWouldBitForBit) {
  std::mt19937 random(11);
  for (int round = 0; round < 400; ++round) {
    std::vector<float> values(random() % 60);
    const int kinds = 1 + static_cast<int>(random() % 9);
    for (float& value : values) {
      value = static_cast<float>(static_cast<int>(random() % static_cast<unsigned>(kinds)) -
                                 kinds / 2) *
              0.75F;
      if (value == 0.0F && random() % 2 == 0) { value = -0.0F; }
    }
    FloatList list = ListOf(values);

    list.Sort();

    ASSERT_TRUE(SameBits(ValuesOf(list), SortedBySwaps(values))) << "round " << round;
  }
}

TEST(FloatListTest, NotANumberComesLast) {
  const float nan = std::numeric_limits<float>::quiet_NaN();
  std::vector<float> values(100, nan);
  for (std::size_t i = 0; i < values.size(); i += 3) { values[i] = static_cast<float>(i) - 50.0F; }
  FloatList list = ListOf(values);

  list.Sort();

  EXPECT_EQ(list.GetValue(1), -50.0F);
  EXPECT_EQ(list.GetValue(34), 49.0F);
  EXPECT_TRUE(std::isnan(list.GetValue(35)));
  EXPECT_TRUE(std::isnan(list.GetValue(100)));
}

}  // namespace
