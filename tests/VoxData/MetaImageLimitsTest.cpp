// What a MetaImage header may claim, and what is said where it claims more.
#include "VoxData/MetaImage.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sys/stat.h>

namespace {

namespace fs = std::filesystem;

class MetaImageLimitsTest : public testing::Test {
protected:
  fs::path folder;

  void SetUp() override {
    const testing::TestInfo* info = testing::UnitTest::GetInstance()->current_test_info();
    folder = fs::path(testing::TempDir()) / "tolvex-tests" / info->name();
    fs::remove_all(folder);
    fs::create_directories(folder);
  }

  /// The error of a header with these values; "" when there is none.
  std::string ErrorOf(const std::string& dims, const std::string& sizes, const std::string& file) {
    const fs::path path = folder / "header.mha";
    std::ofstream(path) << "NDims = " << dims << "\nDimSize = " << sizes
                        << "\nElementType = MET_UCHAR\nElementByteOrderMSB = False\n"
                        << "ElementDataFile = " << file << "\n";
    MetaImage image;
    testing::internal::CaptureStdout();
    image.Read(path.c_str(), true);
    testing::internal::GetCapturedStdout();
    return image.Error() != nullptr ? image.Error() : "";
  }
  void Fill(const char* name, std::size_t bytes) {
    std::ofstream(folder / name) << std::string(bytes, '\1');
  }
};

TEST_F(MetaImageLimitsTest, TenDimensionsAreReadAndElevenAreNot) {
  Fill("voxels", 1);
  EXPECT_EQ(ErrorOf("10", "1 1 1 1 1 1 1 1 1 1", "voxels"), "");
  for (const char* dims : {"11", "255", "1e30", "-1"}) {
    EXPECT_EQ(ErrorOf(dims, "1 1 1 1 1 1 1 1 1 1 1", "voxels"),
              "Error: NDims must lie between 0 and 10")
        << dims;
  }
}

TEST_F(MetaImageLimitsTest, SizesWhoseProductOverflowsAreAnError) {
  Fill("voxels", 8);
  for (const char* sizes : {"65536 65536 65536", "-2 2 2", "2 2 -2", "1e30 2 1", "46341 46341 1"}) {
    EXPECT_EQ(ErrorOf("3", sizes, "voxels"), "Error: DimSize makes no volume that memory can hold")
        << sizes;
  }
}

TEST_F(MetaImageLimitsTest, AClaimOfMoreThanTheFileHoldsReadsWhatIsThere) {
  Fill("voxels", 8);
  EXPECT_EQ(ErrorOf("3", "1290 1290 1290", "voxels"), "Error: read 8 but expected 2146689000");
}

TEST_F(MetaImageLimitsTest, APatternTakesOneWholeNumberAndNothingElse) {
  Fill("slice1", 4);
  Fill("slice2", 4);
  EXPECT_EQ(ErrorOf("3", "2 2 2", "slice%d"), "");
  for (const std::string pattern : {"slice%s", "slice%n", "slice%d%d", "slice%"}) {
    EXPECT_EQ(ErrorOf("3", "2 2 2", pattern).find("Error: the element data file needs one whole"),
              0)
        << pattern;
  }
}

TEST_F(MetaImageLimitsTest, VoxelsInAFolderOrAPipeAreNotRead) {
  fs::create_directory(folder / "folder");
  ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
  for (const char* name : {"folder", "pipe", "/dev/zero", "no such file"}) {
    EXPECT_EQ(ErrorOf("3", "2 2 2", name).find("Error: cannot open element data file: "), 0)
        << name;
  }
}

}  // namespace
