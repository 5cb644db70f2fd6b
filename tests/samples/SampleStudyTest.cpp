// The sample study: the same bytes everywhere, and plausible.
#include "SampleStudy.h"

#include "tests/support/Checksums.h"
#include "tests/support/Golden.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

std::string Crc(const std::vector<std::uint8_t>& bytes) {
  Crc32 crc;
  crc.Add(bytes.data(), bytes.size());
  return golden::Hex8(crc.Value());
}

double Dice(const std::vector<std::uint8_t>& a, const std::vector<std::uint8_t>& b, int label) {
  int inA = 0;
  int inB = 0;
  int common = 0;
  for (std::size_t i = 0; i < a.size(); ++i) {
    inA += a[i] == label ? 1 : 0;
    inB += b[i] == label ? 1 : 0;
    common += a[i] == label && b[i] == label ? 1 : 0;
  }
  return 2.0 * common / (inA + inB);
}

TEST(SampleStudyTest, HasTheSameBytesOnEveryMachine) {
  EXPECT_EQ(Crc(sample::LabelVolume(0, 0)), "56b9b31e");
  EXPECT_EQ(Crc(sample::LabelVolume(1, 2)), "51f617b8");
}

TEST(SampleStudyTest, RepeatsOfOneUserAgreeMoreThanUsersDo) {
  const auto first = sample::LabelVolume(0, 0);
  const auto repeat = sample::LabelVolume(0, 1);
  const auto other = sample::LabelVolume(1, 0);

  for (const int label : {1, 2, 5}) {
    EXPECT_GT(Dice(first, repeat, label), Dice(first, other, label)) << label;
    EXPECT_GT(Dice(first, other, label), 0.75) << label;
    EXPECT_LT(Dice(first, repeat, label), 1.0) << label;
  }
}

TEST(SampleStudyTest, LabelOneTouchesTheBorder) {
  const auto labels = sample::LabelVolume(0, 0);

  int onBorder = 0;
  for (std::size_t i = 0; i < labels.size(); i += sample::kDimX) {
    onBorder += labels[i] == 1 ? 1 : 0;  // the plane x = 0
  }

  EXPECT_GT(onBorder, 100);
}

TEST(SampleStudyTest, LabelFiveLiesInsideLabelTwo) {
  const auto labels = sample::LabelVolume(1, 1);
  const std::size_t row = sample::kDimX;
  const std::size_t plane = row * sample::kDimY;

  for (std::size_t i = plane; i + plane < labels.size(); ++i) {
    if (labels[i] != 5) { continue; }
    for (const std::size_t step : {std::size_t{1}, row, plane}) {
      ASSERT_TRUE(labels[i - step] == 5 || labels[i - step] == 2) << i;
      ASSERT_TRUE(labels[i + step] == 5 || labels[i + step] == 2) << i;
    }
  }
}

TEST(SampleStudyTest, GreyValuesShowTheBodies) {
  const auto grey = sample::GreyVolume();
  const auto labels = sample::LabelVolume(0, 0);
  double inside = 0.0;
  double outside = 0.0;
  int count[2] = {0, 0};
  for (std::size_t i = 0; i < grey.size(); ++i) {
    (labels[i] == 2 ? inside : outside) += grey[i];
    ++count[labels[i] == 2 ? 0 : 1];
  }

  EXPECT_GT(inside / count[0], 1.5 * outside / count[1]);
}

}  // namespace
