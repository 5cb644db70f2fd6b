// Script list files: what a load and the Create List window take from one, and how one is written.
#include "VoxData/ScriptList.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <iterator>
#include <limits>
#include <sys/resource.h>
#include <unistd.h>

namespace {

using script::ListTexts;
using script::StudyList;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
namespace fs = std::filesystem;

class ScriptListTest : public testing::Test {
protected:
  fs::path folder;
  std::string file;
  std::string problem;  ///< of the last reading

  void SetUp() override {
    const testing::TestInfo& test = *testing::UnitTest::GetInstance()->current_test_info();
    folder = fs::path(testing::TempDir()) /
             (std::string("lists.") + test.name() + "." + std::to_string(getpid()));
    fs::create_directories(folder);
    file = (folder / "study.tlx").string();
  }
  void TearDown() override { fs::remove_all(folder); }

  void Put(const std::string& text) const { std::ofstream(file, std::ios::binary) << text; }
  std::string Text() const {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }
  StudyList Study(const std::string& text) {
    Put(text);
    StudyList list;
    problem = script::ReadStudyList(file.c_str(), list);
    return list;
  }
  ListTexts Texts(const std::string& text) {
    Put(text);
    ListTexts texts;
    problem = script::ReadListTexts(file.c_str(), texts);
    return texts;
  }
};

// A load.

TEST_F(ScriptListTest, AListNamesUsersRepeatsOriginalAndSegmentations) {
  const StudyList list = Study("2\n3\n/d/grey.gipl\n/d/a.gipl\n/d/b.gipl\n\n");

  EXPECT_EQ(problem, "");
  EXPECT_TRUE(list.opened);
  EXPECT_EQ(list.users, "2");
  EXPECT_EQ(list.repeats, "3");
  EXPECT_EQ(list.userCount, 2);
  EXPECT_EQ(list.slicesPerUser, 3);
  EXPECT_EQ(list.greyPath, "/d/grey.gipl");
  EXPECT_THAT(list.segPaths, ElementsAre("/d/a.gipl", "/d/b.gipl"));
  EXPECT_EQ(list.imageLines, 3);
}

TEST_F(ScriptListTest, AnOriginalThatIsRawAloneNamesNoOriginal) {
  const StudyList list = Study("1\n2\n/d/grey.raw\n/d/a.raw\n/d/b.raw\n");

  EXPECT_EQ(list.greyPath, "");
  EXPECT_THAT(list.segPaths, IsEmpty());
  EXPECT_EQ(list.imageLines, 3);
}

TEST_F(ScriptListTest, TheFirstGiplSegmentationIsTakenForTheOriginalThatIsRaw) {
  const StudyList list = Study("1\n2\n/d/grey.raw\n/d/a.gipl\n/d/b.gipl\n");

  EXPECT_EQ(list.greyPath, "/d/a.gipl");
  EXPECT_THAT(list.segPaths, ElementsAre("/d/b.gipl"));
}

TEST_F(ScriptListTest, ARawSegmentationBehindAGiplOriginalIsLoaded) {
  EXPECT_THAT(Study("1\n1\n/d/grey.gipl\n/d/a.raw\n").segPaths, ElementsAre("/d/a.raw"));
}

TEST_F(ScriptListTest, ALineWithNeitherWordIsNoSegmentation) {
  const StudyList list = Study("1\n2\n/d/grey.gipl\n/d/a.gipl\n\n/d/notes.txt\n/d/b.gipl\n");

  EXPECT_THAT(list.segPaths, ElementsAre("/d/a.gipl", "/d/b.gipl"));
  EXPECT_EQ(list.imageLines, 3);
}

TEST_F(ScriptListTest, TheStepsCountFoldersWhoseNamesHoldTheWords) {
  const StudyList list = Study("1\n1\n/d/grey.gipl\n/rawdata/notes.txt\n/giplets/x\n/d/a.gipl\n");

  EXPECT_EQ(list.imageLines, 4);
  EXPECT_THAT(list.segPaths, ElementsAre("/d/a.gipl"));
}

TEST_F(ScriptListTest, OnPurposeALineThatBeginsWithTheDigitTwoEndsTheList) {
  const StudyList list = Study("2\n2\n/d/grey.gipl\n/d/a.gipl\n2nd/b.gipl\n/d/c.gipl\n");

  EXPECT_EQ(list.userCount, 2);  // the two numbers may begin with it
  EXPECT_THAT(list.segPaths, ElementsAre("/d/a.gipl"));
  EXPECT_EQ(list.imageLines, 2);
}

TEST_F(ScriptListTest, ALastLineWithoutALineFeedIsLoaded) {
  EXPECT_THAT(Study("1\n1\n/d/grey.gipl\n/d/a.gipl").segPaths, ElementsAre("/d/a.gipl"));
}

TEST_F(ScriptListTest, AnEmptyListNamesNothing) {
  const StudyList list = Study("");

  EXPECT_EQ(problem, "");
  EXPECT_EQ(list.userCount, 0);
  EXPECT_EQ(list.slicesPerUser, 0);
  EXPECT_THAT(list.segPaths, IsEmpty());
}

TEST_F(ScriptListTest, AListThatCannotBeOpenedSaysSo) {
  fs::create_directories(folder / "a.tlx");
  for (const char* name : {"missing.tlx", "a.tlx"}) {
    const std::string path = (folder / name).string();
    StudyList list;
    EXPECT_THAT(script::ReadStudyList(path.c_str(), list), HasSubstr(path));
    EXPECT_FALSE(list.opened);
    ListTexts texts;
    EXPECT_THAT(script::ReadListTexts(path.c_str(), texts), HasSubstr(path));
  }
}

TEST_F(ScriptListTest, ALineOfThreeHundredCharactersIsReadAndALongerOneIsRefused) {
  const std::string longest = "/" + std::string(294, 'x') + ".gipl";
  ASSERT_EQ(longest.size(), 300U);
  const std::string head = "1\n1\n/d/grey.gipl\n";

  EXPECT_THAT(Study(head + longest + "\n").segPaths, ElementsAre(longest));
  EXPECT_EQ(problem, "");
  EXPECT_THAT(Study(head + "y" + longest + "\n").segPaths, IsEmpty());
  EXPECT_THAT(problem, HasSubstr("300 characters: line 4"));
  Texts(head + "y" + longest + "\n");
  EXPECT_THAT(problem, HasSubstr("300 characters: line 4"));
}

TEST_F(ScriptListTest, SixtySegmentationsAreReadAndOneMoreIsRefused) {
  std::string text = "6\n10\n/d/grey.gipl\n";
  for (int i = 0; i < 60; ++i) { text += "/d/" + std::to_string(i) + ".gipl\n"; }

  EXPECT_EQ(Study(text).segPaths.size(), 60U);
  EXPECT_EQ(problem, "");
  Study(text + "/d/60.gipl\n");
  EXPECT_THAT(problem, HasSubstr("names 61 segmentations"));
  Study(text + "2/d/60.gipl\n/d/61.gipl\n");  // behind the end of the list
  EXPECT_EQ(problem, "");
}

TEST_F(ScriptListTest, NumbersAreReadAsFarAsTheyGo) {
  constexpr int kMost = std::numeric_limits<int>::max();
  EXPECT_EQ(script::NumberOf("12"), 12);
  EXPECT_EQ(script::NumberOf("  7 users"), 7);
  EXPECT_EQ(script::NumberOf("-3"), -3);
  EXPECT_EQ(script::NumberOf("three"), 0);
  EXPECT_EQ(script::NumberOf(""), 0);
  EXPECT_EQ(script::NumberOf("99999999999999999999"), kMost);
  EXPECT_EQ(script::NumberOf("-99999999999999999999"), std::numeric_limits<int>::min());
}

TEST_F(ScriptListTest, ALineThatIsTooLongIsNamedOnceAndNothingBehindItIsRead) {
  Study(std::string(1000, '1') + "\n1\n/d/grey.gipl\n/d/a.gipl\n");
  EXPECT_THAT(problem, HasSubstr("300 characters: line 1"));
  EXPECT_THAT(Study("1\n1\n" + std::string(1000, 'x') + "\n/d/grey.gipl\n/d/a.gipl\n").segPaths,
              IsEmpty());
  EXPECT_THAT(problem, HasSubstr("300 characters: line 3"));
  // Behind the end of the list nothing is wrong.
  EXPECT_THAT(Study("1\n1\n/d/grey.gipl\n/d/a.gipl\n2\n" + std::string(1000, 'x')).segPaths,
              ElementsAre("/d/a.gipl"));
  EXPECT_EQ(problem, "");
}

TEST_F(ScriptListTest, AListOfMillionsOfLinesTakesNoMemory) {
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "the sanitizer needs more memory than there is";
#endif
  const std::string head = "1\n1\n/d/grey.gipl\n/d/a.gipl\n";
  Put(head + std::string(10U << 20U, '\n') + "/d/b.gipl\n");
  std::size_t pages = 0;
  std::ifstream("/proc/self/statm") >> pages;
  rlimit before{};
  getrlimit(RLIMIT_AS, &before);
  const rlimit little{pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE)) + (16U << 20U),
                      before.rlim_max};
  setrlimit(RLIMIT_AS, &little);
  StudyList list;
  ListTexts texts;
  EXPECT_NO_THROW(problem = script::ReadStudyList(file.c_str(), list));
  EXPECT_EQ(problem, "");
  EXPECT_NO_THROW(problem = script::ReadListTexts(file.c_str(), texts));
  setrlimit(RLIMIT_AS, &before);

  EXPECT_THAT(list.segPaths, ElementsAre("/d/a.gipl", "/d/b.gipl"));
  EXPECT_THAT(problem, HasSubstr("9,999 characters"));
}

// Back into the window.

TEST_F(ScriptListTest, AWrittenListComesBackWithALineFeedBehindItsLastPath) {
  const ListTexts texts = Texts("2\n3\n/d/grey.gipl\n/d/a.gipl\n/d/b.gipl\n\n");

  EXPECT_EQ(texts.userCount, 2);
  EXPECT_EQ(texts.slicesPerUser, 3);
  EXPECT_EQ(texts.original, "/d/grey.gipl");
  EXPECT_EQ(texts.segs, "/d/a.gipl\n/d/b.gipl\n");
}

TEST_F(ScriptListTest, ALastLineWithoutALineFeedIsDroppedFromTheWindow) {
  EXPECT_EQ(Texts("1\n2\n/d/grey.gipl\n/d/a.gipl\n/d/b.gipl").segs, "/d/a.gipl");
  EXPECT_FALSE(Texts("1\n2\n/d/grey.gipl\n/d/a.gipl").hasSegs);
  EXPECT_FALSE(Texts("1\n2\n/d/grey.gipl").hasOriginal);
  EXPECT_FALSE(Texts("1\n2").hasRepeats);
  EXPECT_FALSE(Texts("1").hasUsers);
}

TEST_F(ScriptListTest, ATextOfTenThousandCharactersIsRefused) {
  std::string segs;
  while (segs.size() < 9999) { segs += std::string(99, 'x') + "\n"; }
  ASSERT_EQ(segs.size(), 10000U);
  segs.pop_back();  // the last line feed is no part of the text

  EXPECT_EQ(Texts("1\n1\n/d/grey.gipl\n" + segs + "\n").segs.size(), 9999U);
  EXPECT_EQ(problem, "");
  Texts("1\n1\n/d/grey.gipl\n" + segs + "\n\n");
  EXPECT_THAT(problem, HasSubstr("9,999 characters"));
}

// Writing.

TEST_F(ScriptListTest, AListIsWrittenByteForByte) {
  EXPECT_EQ(script::WriteList(file, 2, 3, "/d/grey.gipl", "/d/a.gipl\n/d/b.gipl\n"), "");
  EXPECT_EQ(Text(), "2\n3\n/d/grey.gipl\n/d/a.gipl\n/d/b.gipl\n\n");
  EXPECT_EQ(script::WriteList(file, -1, 0, "", ""), "");
  EXPECT_EQ(Text(), "-1\n0\n\n\n");
}

TEST_F(ScriptListTest, AListThatCannotBeWrittenLosesNothing) {
  EXPECT_THAT(script::WriteList(folder.string(), 1, 1, "o", "s\n"), HasSubstr(folder.string()));
  EXPECT_THAT(script::WriteList((folder / "no/list.tlx").string(), 1, 1, "o", "s\n"),
              HasSubstr("cannot be written"));
  EXPECT_THAT(script::WriteList("/dev/full", 1, 1, "o", "s\n"), HasSubstr("cannot be written"));
  EXPECT_THAT(script::WriteList("", 1, 1, "o", "s\n"), HasSubstr("cannot be written"));
  EXPECT_TRUE(fs::is_directory(folder));
}

TEST_F(ScriptListTest, SavingTouchesNoOtherFileAndKeepsLinksAndRights) {
  const std::string neighbour = file + ".part";
  std::ofstream(neighbour) << "of the user";
  Put("old");
  fs::permissions(file, fs::perms::owner_read | fs::perms::owner_write);
  const std::string link = (folder / "link.tlx").string();
  fs::create_symlink(file, link);

  EXPECT_EQ(script::WriteList(link, 1, 1, "o", "s\n"), "");

  EXPECT_EQ(Text(), "1\n1\no\ns\n\n");
  EXPECT_TRUE(fs::is_symlink(link));
  EXPECT_EQ(fs::status(file).permissions(), fs::perms::owner_read | fs::perms::owner_write);
  EXPECT_EQ(fs::file_size(neighbour), 11U);
}

}  // namespace
