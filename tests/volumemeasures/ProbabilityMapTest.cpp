// ProbabilityMap: cases worked by hand, the studies, the edge cases, and plain loops.
#include "view3d/volumemeasures/ProbabilityMap.h"

#include "tests/support/GoldenStudy.h"
#include "tests/support/RecordingProgress.h"
#include "tests/support/TestVolume.h"
#include "tests/volumemeasures/PlainVolumes.h"
#include "tests/volumemeasures/RandomVolumes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <vector>

namespace {

constexpr int kLabel = 2;

/// Images of one row of voxels along z, drawn as text: '2' bears the label.
class ProbabilityMapTest : public testing::Test {
protected:
  std::vector<std::unique_ptr<TestVolume>> volumes;
  std::unique_ptr<TestPicture> picture;
  RecordingProgress progress;

  double Measure(const std::vector<std::vector<std::string>>& users, int label = kLabel) {
    std::vector<LabelVolume> images;
    for (const auto& repeats : users) {
      for (const std::string& row : repeats) { images.push_back(Row(row)); }
    }
    picture = std::make_unique<TestPicture>(std::array{1, 1, images[0].dimZ});
    return measure::PaintProbability(images, static_cast<int>(users.size()),
                                     static_cast<int>(users[0].size()), label, picture->NewWork(),
                                     progress);
  }
  LabelVolume Row(const std::string& row) {
    const int length = static_cast<int>(row.size());
    volumes.push_back(std::make_unique<TestVolume>(1, 1, length));
    for (int z = 0; z < length; ++z) {
      const char c = row[static_cast<std::size_t>(z)];
      volumes.back()->voxel(0, 0, z) = static_cast<std::uint8_t>(c == '.' ? 0 : c - '0');
    }
    return volumes.back()->Labels();
  }
  std::vector<int> Colours() const {
    return {picture->Colours().begin(), picture->Colours().end()};
  }
};

using Ints = std::vector<int>;
using Floats = std::vector<float>;

TEST_F(ProbabilityMapTest, TwoIdenticalUsersGiveOneAndTheColourOfTheHighestProbability) {
  EXPECT_EQ(Measure({{".22."}, {".22."}}), 1.0);
  EXPECT_EQ(Colours(), (Ints{0, 64, 64, 0}));
  EXPECT_EQ(picture->Scalars(), (Floats{0, 255, 255, 0}));
}

TEST_F(ProbabilityMapTest, TwoUsersApartGiveZeroAndTheColourOfTheLowestProbability) {
  EXPECT_EQ(Measure({{"22..."}, {"...22"}}), 0.0);
  EXPECT_EQ(Colours(), (Ints{192, 192, 0, 192, 192}));
  EXPECT_EQ(picture->Scalars(), (Floats{255, 255, 0, 255, 255}));
}

TEST_F(ProbabilityMapTest, ColoursBetweenAreSpacedEvenlyAndTruncated) {
  Measure({{".222", "..22", "...2"}});
  EXPECT_EQ(Colours(), (Ints{0, 192, 128, 64}));  // 192 - 128 / 2

  Measure({{".2222", "..222"}, {"...22", "....2"}});
  EXPECT_EQ(Colours(), (Ints{0, 192, 150, 107, 64}));  // 192 - 42, 192 - 85
}

TEST_F(ProbabilityMapTest, TheDifferencesAreThoseOfTheSharesOfTheFirstTwoUsers) {
  // Shares 1 and 1/2, then 1/2 and 0; all images that mark the voxels: 3/4 and 1/4.
  EXPECT_EQ(Measure({{"22", "2."}, {"2.", ".."}}), 1.0 - (0.5 + 0.5) / (0.75 + 0.25) * 0.5);
}

TEST_F(ProbabilityMapTest, OnPurposeTheDivisorTakesTheTotalOfAllUsers) {
  // The third user marks both voxels: 2/3 and 1/3 become 3/3 and 2/3.
  const double overlap = Measure({{"22"}, {"2."}, {"22"}});
  const auto shares = static_cast<float>(1.0F + 2.0 / 3);
  EXPECT_EQ(overlap, 1.0 - 1.0 / shares * 0.5);
}

TEST_F(ProbabilityMapTest, OnPurposeVoxelsOfLaterUsersAloneAreLeftOut) {
  EXPECT_EQ(Measure({{"2..."}, {"2..."}, {"..22"}}), 1.0);
  const double without = Measure({{"2..."}, {".2.."}, {"...."}});
  EXPECT_EQ(Measure({{"2..."}, {".2.."}, {"..22"}}), without);
  EXPECT_EQ(Colours(), (Ints{192, 192, 192, 192}));  // painted all the same
}

TEST_F(ProbabilityMapTest, OnPurposeUsersBeyondTheEleventhAreNotInTheTotal) {
  std::vector<std::vector<std::string>> users(15, {"2.."});
  users[10] = {"22."};
  users[11] = {"..2"};
  users[14] = {"..2"};

  EXPECT_EQ(Measure(users), 1.0);
  EXPECT_EQ(Colours(), (Ints{192 - 10 * 128 / 14, 192, 0}));
  EXPECT_EQ(picture->Scalars(), (Floats{255, 255, 0}));
}

TEST_F(ProbabilityMapTest, OneUserIsComparedWithNobody) {
  EXPECT_EQ(Measure({{"22.", "22."}}), 1.0 - 2.0 / 2.0 * 0.5);
}

TEST_F(ProbabilityMapTest, WithoutTheLabelInTheFirstTwoUsersTheOverlapIsNotANumber) {
  EXPECT_TRUE(std::isnan(Measure({{"3.."}, {"..1"}, {".2."}})));
  EXPECT_EQ(Colours(), (Ints{0, 192, 0}));
  EXPECT_TRUE(std::isnan(Measure({{"2"}, {"2"}}, 300)));
}

TEST_F(ProbabilityMapTest, LabelZeroIsMeasuredLikeAnyOther) {
  EXPECT_EQ(Measure({{"2.."}, {"2.."}}, 0), 1.0);
  EXPECT_EQ(Colours(), (Ints{0, 64, 64}));
}

TEST_F(ProbabilityMapTest, OnPurposeSumsAreRoundedToThirtyTwoBitsAtEachVoxel) {
  // Thirds do not add up to whole numbers in 32 bits.
  const int length = 3000;
  const std::string all(length, '2');
  const std::string none(length, '.');
  float differences = 0.0F;
  float shares = 0.0F;
  for (int i = 0; i < length; ++i) {
    differences = static_cast<float>(differences + 1.0 / 3);
    shares = static_cast<float>(shares + 1.0 / 6);
  }

  EXPECT_EQ(Measure({{all, none, none}, {none, none, none}}),
            1.0 - static_cast<double>(differences) / shares * 0.5);
  EXPECT_NE(differences, 1000.0F);
}

TEST_F(ProbabilityMapTest, EachPlaneIsAStep) {
  std::vector<LabelVolume> images;
  for (int i = 0; i < 2; ++i) {
    volumes.push_back(std::make_unique<TestVolume>(7, 3, 2));
    images.push_back(volumes.back()->Labels());
  }
  TestPicture sevenPlanes({7, 3, 2});

  measure::PaintProbability(images, 2, 1, kLabel, sevenPlanes.NewWork(), progress);

  EXPECT_EQ(progress.steps, 7);
}

TEST(GoldenProbabilityMapTest, EveryStudyIsAsKnown) {
  int cases = 0;
  for (const std::string& name : golden::StudyNames()) {
    const golden::GoldenStudy study(name);
    for (const auto& one : study.Cases("ComputeProbabilityMap")) {
      const int users = one["inputs"]["userCount"].get<int>();
      const int repeats = one["inputs"]["slicesPerUser"].get<int>();
      if (users * repeats < 2) { continue; }  // refused by the command
      SCOPED_TRACE(name + " " + one["inputs"].dump());
      std::vector<LabelVolume> images;
      for (int slot = 0; slot < users * repeats; ++slot) { images.push_back(study.Labels(slot)); }
      TestPicture picture(study.Dims());
      Progress progress;

      const double overlap = measure::PaintProbability(
          images, users, repeats, one["inputs"]["currentLabel"], picture.NewWork(), progress);

      char text[40];
      std::snprintf(text, sizeof text, "%f", std::fabs(overlap));
      const auto expected = one["fields"]["probaOverlapOutput"].get<std::string>();
      EXPECT_EQ(text, expected[0] == '-' ? expected.substr(1) : expected);
      golden::ExpectPicture(one["displayVolume1"], picture.Work());
      ++cases;
    }
  }
  EXPECT_GT(cases, 10);
}

TEST(RandomProbabilityMapTest, EveryVoxelAndNumberIsThatOfPlainLoops) {
  for (unsigned seed = 1; seed <= 150; ++seed) {
    std::mt19937 random(seed);
    const auto dims = RandomSizes(random);
    const int users = 1 + static_cast<int>(random() % 15);
    const int repeats = std::min(users == 1 ? 2 + static_cast<int>(random() % 4)
                                            : 1 + static_cast<int>(random() % 4),
                                 60 / users);
    std::vector<std::unique_ptr<TestVolume>> volumes;
    std::vector<LabelVolume> images;
    for (int image = 0; image < users * repeats; ++image) {
      volumes.push_back(RandomLabels(random, dims));
      images.push_back(volumes.back()->Labels());
    }
    const int label = static_cast<int>(random() % 5);
    TestPicture picture(dims);
    TestPicture plainly(dims);
    Progress progress;

    const double overlap =
        measure::PaintProbability(images, users, repeats, label, picture.NewWork(), progress);
    const double expected = plain::ProbabilityMap(images, users, repeats, label, plainly.Work());

    EXPECT_TRUE(overlap == expected || (std::isnan(overlap) && std::isnan(expected)))
        << seed << ": " << overlap << " for " << expected;
    ASSERT_TRUE(picture.Colours() == plainly.Colours()) << seed;
    ASSERT_TRUE(picture.Scalars() == plainly.Scalars()) << seed;
  }
}

}  // namespace
