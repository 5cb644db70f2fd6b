// GIPL headers: what each byte puts into the load dialog, and where the reader stops.
#include "VoxData/GiplIO.h"
#include "VoxData/VoxData.h"
#include "tests/VoxData/ReaderFolder.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <sys/resource.h>
#include <sys/stat.h>
#include <utility>

namespace {

class GiplTest : public ReaderFolderTest {
protected:
  /// 4 x 3 x 2 voxels of one byte, 1.0 apart.
  std::string bytes = std::string("\0\4\0\3\0\2\0\1\0\10", 10) +
                      std::string("\x3F\x80\0\0\x3F\x80\0\0\x3F\x80\0\0\0\0\0\0", 16) +
                      std::string(230, '\0') + std::string(24, 'v');
  RawFields dialog{7.0, {11.0, 12.0, 13.0}, 3.0, {0.125, 0.25, 0.375}};
  std::string errors;

  void Put(std::size_t at, int word) {
    bytes[at] = static_cast<char>(word >> 8);
    bytes[at + 1] = static_cast<char>(word);
  }
  void Read(const std::string& name = "volume.gipl") { ReadFrom(File(name, bytes)); }
  void ReadFrom(const std::string& path) {
    testing::internal::CaptureStderr();
    ipReadGiplHeader(path.c_str(), dialog);
    errors = testing::internal::GetCapturedStderr();
  }
  void ExpectDims(double x, double y, double z) const {
    EXPECT_EQ(dialog.dims[0], x);
    EXPECT_EQ(dialog.dims[1], y);
    EXPECT_EQ(dialog.dims[2], z);
  }
};

TEST_F(GiplTest, AHeaderFillsTheDialog) {
  Read();

  EXPECT_EQ(errors, "");
  EXPECT_EQ(dialog.headerSize, 256.0);
  ExpectDims(4, 3, 2);
  EXPECT_EQ(dialog.bytes, 1.0);
  EXPECT_EQ(dialog.spacing[0], 1.0);
}

TEST_F(GiplTest, BytesStandMostSignificantFirst) {
  Put(0, 0x0040);
  bytes.replace(14, 4, std::string("\xC0\x20\0\0", 4));
  Read();

  EXPECT_EQ(dialog.dims[0], 64.0);
  EXPECT_EQ(dialog.spacing[0], 1.0);  // 3F 80 00 00
  EXPECT_EQ(dialog.spacing[1], -2.5);
}

TEST_F(GiplTest, ASingleSliceIsNoVolume) {
  Put(0, 256);
  Put(2, 256);
  Put(4, 1);
  Read();

  EXPECT_EQ(errors, "Not 3D data\n");
  EXPECT_EQ(dialog.headerSize, 256.0);
  ExpectDims(11, 12, 13);
  EXPECT_EQ(dialog.bytes, 3.0);
}

TEST_F(GiplTest, TwoTimesPassAndOnlyTheFirstBlockIsRead) {
  Put(6, 2);
  bytes += std::string(24, 'w');
  Read();
  ExpectDims(4, 3, 2);

  VoxData volume;
  ASSERT_EQ(volume.ReadGrey((folder + "volume.gipl").c_str(), 4, 3, 2, 1, 0, 65535, 0, 1, 1, 256),
            1);
  for (int z = 0; z < 2; ++z) { EXPECT_EQ(volume.grey[3][2][z], 'v'); }

  Put(6, 3);
  Read();
  EXPECT_EQ(errors, "Not 3D data\n");
}

TEST_F(GiplTest, EveryKnownTypeGivesItsBytes) {
  const std::pair<int, double> types[] = {{1, 1},  {7, 1},  {8, 1},  {15, 2}, {16, 2},
                                          {31, 4}, {32, 4}, {64, 4}, {65, 8}};
  for (const auto& [code, size] : types) {
    Put(8, code);
    Read();
    EXPECT_EQ(dialog.bytes, size) << code;
  }
}

TEST_F(GiplTest, AnUnknownTypeLeavesNewSizesAndOldBytesAndSpacing) {
  for (const int code : {0, 2, 14, 33, 144, 65535}) {
    Put(8, code);
    Read();
    ExpectDims(4, 3, 2);
    EXPECT_EQ(dialog.bytes, 3.0) << code;
    EXPECT_EQ(dialog.spacing[0], 0.125) << code;
  }
}

TEST_F(GiplTest, OnPurposeTheMagicNumberIsNotLookedAt) {
  bytes = bytes.substr(0, 26);  // raw voxels whose name says GIPL
  Read("volume.gipl.raw");

  ExpectDims(4, 3, 2);
  EXPECT_EQ(dialog.spacing[2], 1.0);
}

TEST_F(GiplTest, AHeaderThatEndsEarlyReadsAsZeros) {
  for (std::size_t length = 0; length < 26; ++length) {
    File("cut.gipl", bytes.substr(0, length));
    dialog = {7.0, {11.0, 12.0, 13.0}, 3.0, {0.125, 0.25, 0.375}};
    ReadFrom(folder + "cut.gipl");
    EXPECT_EQ(dialog.headerSize, 256.0);
    EXPECT_EQ(dialog.dims[0], length < 6 ? 11.0 : 4.0) << length;
    EXPECT_EQ(dialog.bytes, length < 10 ? 3.0 : 1.0) << length;
  }
}

TEST_F(GiplTest, AFileThatCannotBeOpenedSetsTheHeaderSizeAlone) {
  const std::string pipe = folder + "pipe.gipl";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  for (const std::string& path : {folder + "absent.gipl", folder, pipe}) {
    dialog.headerSize = 7.0;
    ReadFrom(path);
    EXPECT_EQ(errors, "ERROR: Cannot open file " + path + " with permission \"rb\"\n");
    EXPECT_EQ(dialog.headerSize, 256.0);
    ExpectDims(11, 12, 13);
  }
}

TEST_F(GiplTest, AHeaderIsReadFromAPackedFileWhoseVoxelsAreRefused) {
  File("it's a \"volume\" $(x) %s.gipl", bytes);
  const std::string path = folder + "it's a \"volume\" $(x) %s.gipl";
  ASSERT_EQ(std::system(("gzip " + QuotedForShell(path)).c_str()), 0);
  ReadFrom(path + ".gz");

  ExpectDims(4, 3, 2);
  VoxData volume;
  testing::internal::CaptureStderr();
  EXPECT_EQ(volume.ReadGrey((path + ".gz").c_str(), 4, 3, 2, 1, 0, 0, 0, 1, 1, 256), -1);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "   unzipping of data not supported\n");
}

/// As long as it lives the process can open nothing more, so that no command starts.
class NoMoreFiles {
public:
  NoMoreFiles() {
    getrlimit(RLIMIT_NOFILE, &before);
    rlimit none = before;
    none.rlim_cur = 0;
    setrlimit(RLIMIT_NOFILE, &none);
  }
  NoMoreFiles(const NoMoreFiles&) = delete;
  NoMoreFiles& operator=(const NoMoreFiles&) = delete;
  ~NoMoreFiles() { setrlimit(RLIMIT_NOFILE, &before); }

private:
  rlimit before{};
};

TEST_F(GiplTest, ACommandThatCannotStartIsToldAndSetsTheHeaderSizeAlone) {
  const std::string path = folder + "packed.gipl.gz";
  testing::internal::CaptureStderr();
  {
    const NoMoreFiles none;
    ipReadGiplHeader(path.c_str(), dialog);
  }

  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "Warning: popen of \"" + path + "\" failed:ds: " + std::strerror(EMFILE) + "\n");
  EXPECT_EQ(dialog.headerSize, 256.0);
  ExpectDims(11, 12, 13);
  EXPECT_EQ(dialog.bytes, 3.0);
}

TEST_F(GiplTest, ANewHeaderIsEmptyButForItsMarks) {
  const std::unique_ptr<GiplHeader> header(ipNewGiplHeader());

  EXPECT_STREQ(header->information, "Generated header");
  EXPECT_EQ(header->magic, 0xEFFFE9B0U);
  EXPECT_EQ(header->sizes[0], 0);
  EXPECT_EQ(header->pixelSizes[3], 0.0F);
}

}  // namespace
