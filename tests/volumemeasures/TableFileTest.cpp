// Table files: appending, replacing, and what happens where a file cannot be written.
#include "view3d/volumemeasures/TableFile.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

class TableFileTest : public testing::Test {
protected:
  fs::path folder;
  std::string file;

  void SetUp() override {
    const testing::TestInfo& test = *testing::UnitTest::GetInstance()->current_test_info();
    folder = fs::path(testing::TempDir()) /
             (std::string("tables.") + test.name() + "." + std::to_string(getpid()));
    fs::create_directories(folder);
    file = (folder / "table.xls").string();
  }
  void TearDown() override { fs::remove_all(folder); }

  static void Put(const std::string& name, const std::string& text) {
    std::ofstream(name, std::ios::binary) << text;
  }
  static std::string Text(const std::string& name) {
    std::ifstream stream(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }
  /// Names of all files in the folder, for holding that nothing is left beside the table.
  std::vector<std::string> Files() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder)) {
      names.push_back(entry.path().filename().string());
    }
    return names;
  }
};

/// Writes of this process beyond `bytes` of a file fail for as long as this lives.
class FileLimit {
public:
  explicit FileLimit(rlim_t bytes) {
    getrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit = {bytes, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  FileLimit(const FileLimit&) = delete;
  FileLimit& operator=(const FileLimit&) = delete;
  ~FileLimit() {
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, SIG_DFL);
  }

private:
  rlimit before{};
};

TEST_F(TableFileTest, TheExtensionIsAddedWhereItIsMissing) {
  EXPECT_EQ(tables::WithExtension("/a/table"), "/a/table.xls");
  EXPECT_EQ(tables::WithExtension("table.txt"), "table.txt.xls");
  EXPECT_EQ(tables::WithExtension("table.xls"), "table.xls");
}

TEST_F(TableFileTest, OnPurposeAnExtensionInTheMiddleOfANameIsEnough) {
  EXPECT_EQ(tables::WithExtension("a.xls.old"), "a.xls.old");
  EXPECT_EQ(tables::WithExtension("/my.xlsx/table"), "/my.xlsx/table");
}

TEST_F(TableFileTest, AppendingMakesAFile) {
  EXPECT_TRUE(tables::Append(file, "one\n"));

  EXPECT_EQ(Text(file), "one\n");
}

TEST_F(TableFileTest, AppendingKeepsWhatIsThere) {
  Put(file, "one\n");

  EXPECT_TRUE(tables::Append(file, "two\n"));
  EXPECT_TRUE(tables::Append(file, "three\n"));

  EXPECT_EQ(Text(file), "one\ntwo\nthree\n");
}

TEST_F(TableFileTest, ReplacingLeavesTheNewTextAlone) {
  Put(file, "a long old text\n");

  EXPECT_TRUE(tables::Replace(file, "new\n"));

  EXPECT_EQ(Text(file), "new\n");
}

TEST_F(TableFileTest, ReplacingByALongerTextWritesItWhole) {
  Put(file, "old\n");

  EXPECT_TRUE(tables::Replace(file, std::string(100000, 'x')));

  EXPECT_EQ(Text(file), std::string(100000, 'x'));
}

TEST_F(TableFileTest, ReplacingByNothingMakesAnEmptyFile) {
  Put(file, "old\n");

  EXPECT_TRUE(tables::Replace(file, ""));
  EXPECT_TRUE(tables::Replace(file + "2", ""));

  EXPECT_EQ(Text(file), "");
  EXPECT_TRUE(fs::exists(file + "2"));
}

TEST_F(TableFileTest, BytesOfZeroAndLineEndsAreKept) {
  const std::string text("a\0b\r\n\n", 6);

  EXPECT_TRUE(tables::Append(file, text));

  EXPECT_EQ(Text(file), text);
}

TEST_F(TableFileTest, AFolderIsNotWritten) {
  EXPECT_FALSE(tables::Append(folder.string(), "one\n"));
  EXPECT_FALSE(tables::Replace(folder.string(), "one\n"));

  EXPECT_TRUE(Files().empty());
}

TEST_F(TableFileTest, AFileInAMissingFolderIsNotWritten) {
  EXPECT_FALSE(tables::Append((folder / "none" / "t.xls").string(), "one\n"));
  EXPECT_FALSE(tables::Replace((folder / "none" / "t.xls").string(), "one\n"));
}

TEST_F(TableFileTest, AnEmptyNameIsNotWritten) {
  EXPECT_FALSE(tables::Append("", "one\n"));
  EXPECT_FALSE(tables::Replace("", "one\n"));
}

TEST_F(TableFileTest, ADeviceIsNotWritten) {
  EXPECT_FALSE(tables::Append("/dev/full", "one\n"));
  EXPECT_FALSE(tables::Replace("/dev/null", "one\n"));
}

TEST_F(TableFileTest, APipeWithoutAReaderDoesNotHang) {
  const std::string pipe = (folder / "pipe.xls").string();
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);

  EXPECT_FALSE(tables::Append(pipe, "one\n"));
  EXPECT_FALSE(tables::Replace(pipe, "one\n"));
}

TEST_F(TableFileTest, AFileThatMayNotBeWrittenStaysAsItWas) {
  if (geteuid() == 0) { GTEST_SKIP() << "the superuser may write every file"; }
  Put(file, "one\n");
  fs::permissions(file, fs::perms::owner_read);

  EXPECT_FALSE(tables::Append(file, "two\n"));
  EXPECT_FALSE(tables::Replace(file, "two\n"));

  EXPECT_EQ(Text(file), "one\n");
}

TEST_F(TableFileTest, ARowThatFindsNoRoomLeavesNothingBehind) {
  const std::string before(1000, 'a');
  Put(file, before);
  bool written = true;
  {
    const FileLimit limit(1500);
    written = tables::Append(file, std::string(1000, 'b'));
  }

  EXPECT_FALSE(written);
  EXPECT_EQ(Text(file), before);
}

TEST_F(TableFileTest, ATextThatFindsNoRoomKeepsTheOldOne) {
  const std::string before(1000, 'a');
  Put(file, before);
  bool written = true;
  {
    const FileLimit limit(1500);
    written = tables::Replace(file, std::string(5000, 'b'));
  }

  EXPECT_FALSE(written);
  EXPECT_EQ(Text(file), before);
}

TEST_F(TableFileTest, AFirstRowThatFindsNoRoomMakesNoFile) {
  bool written = true;
  {
    const FileLimit limit(500);
    written = tables::Append(file, std::string(1000, 'b'));
  }

  EXPECT_FALSE(written);
  EXPECT_TRUE(Files().empty());
}

TEST_F(TableFileTest, NothingIsLeftBesideATable) {
  tables::Append(file, "one\n");
  tables::Replace(file, "two\n");

  EXPECT_EQ(Files(), std::vector<std::string>{"table.xls"});
}

TEST_F(TableFileTest, ALinkGoesOnPointingToTheFile) {
  const fs::path link = folder / "link.xls";
  Put(file, "one\n");
  fs::create_symlink(file, link);

  EXPECT_TRUE(tables::Replace(link.string(), "two\n"));

  EXPECT_TRUE(fs::is_symlink(link));
  EXPECT_EQ(Text(file), "two\n");
}

TEST_F(TableFileTest, AReplacedFileKeepsItsRights) {
  Put(file, "one\n");
  fs::permissions(file, fs::perms::owner_read | fs::perms::owner_write);

  EXPECT_TRUE(tables::Replace(file, "two\n"));

  EXPECT_EQ(fs::status(file).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

}  // namespace
