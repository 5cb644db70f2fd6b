// The confusion matrix: its counts, and the text of its three tables byte for byte.
#include "view3d/volumemeasures/ConfusionMatrix.h"

#include "tests/support/TestVolume.h"

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <sstream>

namespace {

using Present = std::array<std::uint8_t, 256>;

Present Labels(std::initializer_list<int> labels) {
  Present present = {};
  for (const int label : labels) { present[static_cast<std::size_t>(label)] = 1; }
  return present;
}

/// The text for two images named a and b.
std::string TextOf(const TestVolume& first, const TestVolume& second, const Present& present1,
                   const Present& present2) {
  return measure::ConfusionText(measure::CountConfusion(first.Labels(), second.Labels()),
                                {"a", present1.data()}, {"b", present2.data()});
}

/// Not-a-number counts as equal with either sign.
std::string WithoutNanSigns(std::string text) {
  for (std::size_t at = text.find("-nan"); at != std::string::npos; at = text.find("-nan", at)) {
    text.erase(at, 1);
  }
  return text;
}

TEST(ConfusionMatrixTest, RowsAreLabelsOfTheSecondImageAndColumnsOfTheFirst) {
  TestVolume first(1, 1, 10);   // 0 0 0 0 0 0 2 2 2 2
  TestVolume second(1, 1, 10);  // 0 0 0 0 0 2 0 2 2 2
  first.Fill({0, 0, 6}, {0, 0, 9}, 2);
  second.Fill({0, 0, 7}, {0, 0, 9}, 2).voxel(0, 0, 5) = 2;

  EXPECT_EQ(TextOf(first, second, Labels({0, 2}), Labels({0, 2})), "b - a\n"
                                                                   "\t0\t2\n"
                                                                   "0\t5\t1\n"
                                                                   "2\t1\t3\n"
                                                                   "\n\n"
                                                                   "a probaility\n"
                                                                   "\t0\t2\n"
                                                                   "0\t0.833333\t0.250000\n"
                                                                   "2\t0.166667\t0.750000\n"
                                                                   "\n\n"
                                                                   "b probaility\n"
                                                                   "\t0\t2\n"
                                                                   "0\t0.833333\t0.166667\n"
                                                                   "2\t0.250000\t0.750000\n");
}

TEST(ConfusionMatrixTest, TheTwoSharesDivideByTheLabelsOfTheirOwnImage) {
  TestVolume first(1, 1, 8);
  TestVolume second(1, 1, 8);
  first.Fill({0, 0, 4}, {0, 0, 7}, 1);   // 4 of each
  second.Fill({0, 0, 6}, {0, 0, 7}, 1);  // 6 and 2

  EXPECT_EQ(TextOf(first, second, Labels({0, 1}), Labels({0, 1})),
            "b - a\n\t0\t1\n0\t4\t2\n1\t0\t2\n"
            "\n\na probaility\n\t0\t1\n0\t1.000000\t0.500000\n1\t0.000000\t0.500000\n"
            "\n\nb probaility\n\t0\t1\n0\t0.666667\t0.333333\n1\t0.000000\t1.000000\n");
}

TEST(ConfusionMatrixTest, IdenticalImagesAreDiagonal) {
  TestVolume image(3, 3, 3);
  image.Fill({0, 0, 0}, {0, 2, 2}, 1).Fill({1, 0, 0}, {1, 1, 2}, 200);

  EXPECT_EQ(TextOf(image, image, Labels({0, 1, 200}), Labels({0, 1, 200})),
            "b - a\n\t0\t1\t200\n0\t12\t0\t0\n1\t0\t9\t0\n200\t0\t0\t6\n"
            "\n\na probaility\n\t0\t1\t200\n0\t1.000000\t0.000000\t0.000000\n"
            "1\t0.000000\t1.000000\t0.000000\n200\t0.000000\t0.000000\t1.000000\n"
            "\n\nb probaility\n\t0\t1\t200\n0\t1.000000\t0.000000\t0.000000\n"
            "1\t0.000000\t1.000000\t0.000000\n200\t0.000000\t0.000000\t1.000000\n");
}

TEST(ConfusionMatrixTest, OnPurposeWithoutTheValueZeroTheBodyHasAColumnMoreThanTheHeading) {
  TestVolume first(1, 1, 4);
  TestVolume second(1, 1, 4);
  first.Fill({0, 0, 0}, {0, 0, 3}, 5);
  second.Fill({0, 0, 0}, {0, 0, 3}, 5);

  EXPECT_EQ(WithoutNanSigns(TextOf(first, second, Labels({5}), Labels({5}))),
            "b - a\n\t5\n0\t0\t0\n5\t0\t4\n"
            "\n\na probaility\n\t5\n0\tnan\t0.000000\n5\tnan\t1.000000\n"
            "\n\nb probaility\n\t5\n0\tnan\tnan\n5\t0.000000\t1.000000\n");
}

TEST(ConfusionMatrixTest, ALabelOfTheSecondImageAloneMakesARow) {
  TestVolume first(1, 1, 4);
  TestVolume second(1, 1, 4);
  second.voxel(0, 0, 0) = 9;

  // Its cells meet the label 0 of the first image; one that is only marked has none but zeros.
  EXPECT_EQ(TextOf(first, second, Labels({0}), Labels({0, 9, 12})).substr(0, 26),
            "b - a\n\t0\n0\t3\n9\t1\n12\t0\n\n\na ");
}

TEST(ConfusionMatrixTest, AnImageWithoutMarkedLabelsShowsItsZerosAlone) {
  TestVolume first(1, 1, 4);
  TestVolume second(1, 1, 4);
  first.voxel(0, 0, 0) = 3;

  EXPECT_EQ(TextOf(first, second, {}, {}),
            "b - a\n\n0\t3\n\n\na probaility\n\n0\t1.000000\n\n\nb probaility\n\n0\t0.750000\n");
}

TEST(ConfusionMatrixTest, AMarkOtherThanOneIsNone) {
  const TestVolume image(1, 1, 1);
  Present present = Labels({0});
  present[7] = 2;

  EXPECT_EQ(TextOf(image, image, present, present).substr(0, 15), "b - a\n\t0\n0\t1\n\n\n");
}

TEST(ConfusionMatrixTest, TheHighestLabelIsCounted) {
  TestVolume image(2, 2, 2);
  image.Fill({0, 0, 0}, {1, 1, 1}, 255);

  const auto counts = measure::CountConfusion(image.Labels(), image.Labels());

  EXPECT_EQ(counts.joint[255 * 256 + 255], 8);
  EXPECT_EQ(counts.first[255], 8);
  EXPECT_EQ(counts.second[255], 8);
}

TEST(ConfusionMatrixTest, CountsAsPlainLoopsDo) {
  std::mt19937 random(5);
  TestVolume first(5, 7, 33);
  TestVolume second(5, 7, 33);
  std::vector<std::int32_t> joint(256 * 256);
  for (int x = 0; x < 5; ++x) {
    for (int y = 0; y < 7; ++y) {
      for (int z = 0; z < 33; ++z) {
        const unsigned a = random() % 4 == 0 ? random() % 256 : 1;
        const unsigned b = random() % 4 == 0 ? random() % 256 : 2;
        first.voxel(x, y, z) = static_cast<std::uint8_t>(a);
        second.voxel(x, y, z) = static_cast<std::uint8_t>(b);
        ++joint[a * 256 + b];
      }
    }
  }

  EXPECT_EQ(measure::CountConfusion(first.Labels(), second.Labels()).joint, joint);
}

}  // namespace
