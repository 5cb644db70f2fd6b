// The volume studies with known results are read as the program loads them.
#include "tests/support/GoldenStudy.h"

namespace {

TEST(GoldenStudyTest, EveryImageIsInMemoryAsExpected) {
  const auto names = golden::StudyNames();

  ASSERT_EQ(names.size(), 20U);
  for (const std::string& name : names) {
    SCOPED_TRACE(name);
    const golden::GoldenStudy study(name);  // throws where a checksum differs
    EXPECT_EQ(study.ImageCount(), study.Study()["imageCount"].get<int>());
  }
}

TEST(GoldenStudyTest, AnOperationThatAStudyLacksHasNoCases) {
  const golden::GoldenStudy study("study_100_general");

  EXPECT_TRUE(study.Cases("NoSuchOperation").empty());
  EXPECT_EQ(study.Cases("ComputeDanielsson3D").size(), 6U);
}

}  // namespace
