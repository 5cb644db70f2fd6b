// SliceRows: packed vectors, and the loops of every machine against one pixel at a time.
#include "views/slicemeasures/SliceRows.h"

#include "tests/slicemeasures/RowLoopsOfThisMachine.h"

#include <gtest/gtest.h>

#include <random>
#include <utility>
#include <vector>

namespace {

using measure::kRowGroup;
using measure::Pair;
using measure::PairOf;
using measure::XOf;
using measure::YOf;

long SquareOf(Pair pair) {
  return static_cast<long>(XOf(pair)) * XOf(pair) + static_cast<long>(YOf(pair)) * YOf(pair);
}
Pair Moved(Pair pair, int x, int y) { return PairOf(XOf(pair) + x, YOf(pair) + y); }

TEST(SlicePairTest, BothHalvesComeBackWithTheirSigns) {
  for (const int x : {0, 1, -1, 2400, -2400, 20001, 32767, -32768}) {
    for (const int y : {0, 1, -1, 2400, -2400, 20001, 32767, -32768}) {
      EXPECT_EQ(XOf(PairOf(x, y)), x);
      EXPECT_EQ(YOf(PairOf(x, y)), y);
    }
  }
}

TEST(SlicePairTest, TheOneBeyondARowIsLongerThanAnyVectorHoweverManyItIsTriedFrom) {
  const Pair longest = PairOf(8 * 300, 8 * 300);
  for (const auto& [x, y] : {std::pair(-1, -1), std::pair(1, 1), std::pair(-1, 0)}) {
    EXPECT_GT(SquareOf(Moved(measure::kFar, x, y)), SquareOf(longest));
    EXPECT_LT(SquareOf(Moved(measure::kFar, x, y)), 1L << 31);
  }
}

/// Rows of vectors as long as they get, of both signs and often alike, between pixels far away.
class SliceRowsTest : public testing::TestWithParam<unsigned> {
protected:
  std::mt19937 random{GetParam()};
  int groups = 1 + static_cast<int>(random() % 38);
  int steps = GetParam() % 2 == 0 ? 3 : 2401;
  std::vector<Pair> source = NewRow();
  std::vector<Pair> own = NewRow();

  std::vector<Pair> NewRow() {
    std::vector<Pair> row(static_cast<std::size_t>((groups + 2) * kRowGroup), measure::kFar);
    const auto component = [&] {
      const int value = static_cast<int>(random() % static_cast<unsigned>(steps));
      return random() % 2 == 0 ? value : -value;
    };
    const std::size_t unused = random() % kRowGroup;  // behind the pixels of the last group
    for (std::size_t i = kRowGroup; i < row.size() - kRowGroup - unused; ++i) {
      row[i] = PairOf(component(), component());
    }
    return row;
  }
  Pair Try(Pair older, Pair candidate) const {
    return SquareOf(candidate) < SquareOf(older) ? candidate : older;
  }
};

TEST_P(SliceRowsTest, ThreeTriesFromTheSourceRowTakeEffectInTheirOrder) {
  for (const int stepY : {-1, +1}) {
    std::vector<Pair> expected = own;
    for (std::size_t i = kRowGroup; i < own.size() - kRowGroup; ++i) {
      expected[i] = Try(expected[i], Moved(source[i], 0, stepY));
      expected[i] = Try(expected[i], Moved(source[i - 1], -1, stepY));
      expected[i] = Try(expected[i], Moved(source[i + 1], +1, stepY));
    }
    for (const measure::RowLoops* loops : RowLoopsOfThisMachine()) {
      std::vector<Pair> row = own;
      loops->takeFromSource(&source[kRowGroup], PairOf(0, stepY), groups, &row[kRowGroup]);
      EXPECT_EQ(row, expected);
    }
  }
}

TEST_P(SliceRowsTest, EachPixelThatANeighbourShortensHasItsFlag) {
  std::vector<std::uint8_t> left(static_cast<std::size_t>(groups));
  std::vector<std::uint8_t> right(left);
  for (std::size_t i = kRowGroup; i < own.size() - kRowGroup; ++i) {
    const auto bit = static_cast<std::uint8_t>(1U << i % kRowGroup);
    const std::size_t group = i / kRowGroup - 1;
    if (SquareOf(Moved(own[i - 1], -1, 0)) < SquareOf(own[i])) { left[group] |= bit; }
    if (SquareOf(Moved(own[i + 1], +1, 0)) < SquareOf(own[i])) { right[group] |= bit; }
  }
  for (const measure::RowLoops* loops : RowLoopsOfThisMachine()) {
    std::vector<std::uint8_t> fromLeft(left.size(), 0xAA);
    std::vector<std::uint8_t> fromRight(left.size(), 0xAA);
    loops->findChanges(&own[kRowGroup], groups, fromLeft.data(), fromRight.data());
    EXPECT_EQ(fromLeft, left);
    EXPECT_EQ(fromRight, right);
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, SliceRowsTest, testing::Range(1U, 41U));

}  // namespace
