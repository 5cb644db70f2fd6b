// Raw voxels: byte order, scaling, short files, what is refused. Worked by hand.
#include "VoxData/VoxData.h"

#include <gtest/gtest.h>
#include <vtkFloatArray.h>
#include <vtkPointData.h>
#include <vtkStructuredPoints.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace {

using Bytes = std::vector<std::uint8_t>;

class RawReaderTest : public testing::Test {
protected:
  std::string folder = testing::TempDir() + "tolvex-raw-" + std::to_string(getpid()) + "/";
  VoxData volume;

  void SetUp() override { std::filesystem::create_directories(folder); }
  void TearDown() override { std::filesystem::remove_all(folder); }

  std::string File(const Bytes& bytes, const char* name = "volume.raw") {
    std::ofstream stream(folder + name, std::ios::binary);
    stream.write(reinterpret_cast<const char*>(bytes.data()),
                 static_cast<std::streamsize>(bytes.size()));
    return folder + name;
  }
  int Grey(const Bytes& bytes, int x, int y, int z, int size, int min = 0, int max = 0,
           int header = 0) {
    return volume.ReadGrey(File(bytes).c_str(), x, y, z, size, min, max, 0, 1, 1, header);
  }
};

TEST_F(RawReaderTest, TheOwnRangeMapsToAllSixteenBits) {
  ASSERT_EQ(Grey({10, 15, 20}, 3, 1, 1, 1), 1);

  EXPECT_EQ(volume.GetScale(), 6553.5);
  EXPECT_EQ(volume.grey[0][0][0], 0);
  EXPECT_EQ(volume.grey[1][0][0], 32767);
  EXPECT_EQ(volume.grey[2][0][0], 65535);
}

TEST_F(RawReaderTest, SixteenBitsStandMostSignificantByteFirst) {
  ASSERT_EQ(Grey({0x01, 0x02, 0x00, 0x00}, 2, 1, 1, 2, 0, 65535), 1);

  EXPECT_EQ(volume.grey[0][0][0], 258);
}

TEST_F(RawReaderTest, AValueOutsideTheGivenRangeWrapsAround) {
  ASSERT_EQ(Grey({50, 100}, 2, 1, 1, 1, 100, 200), 1);

  // -50 * 655.35 is cut to -32767, which is 32769 modulo 65536.
  EXPECT_EQ(volume.grey[0][0][0], 32769);
  EXPECT_EQ(volume.grey[1][0][0], 0);
}

TEST_F(RawReaderTest, AnEmptyRangeStoresZeros) {
  ASSERT_EQ(Grey({50, 100}, 2, 1, 1, 1, 7, 7), 1);
  EXPECT_EQ(volume.grey[0][0][0], 0);
  EXPECT_EQ(volume.grey[1][0][0], 0);

  ASSERT_EQ(Grey({9, 9}, 2, 1, 1, 1), 1);
  EXPECT_EQ(volume.grey[0][0][0], 0);
}

TEST_F(RawReaderTest, TheDefaultOriginTurnsYAndZ) {
  ASSERT_EQ(Grey({0, 1, 2, 3, 4, 5, 6, 255}, 2, 2, 2, 1, 0, 65535), 1);

  EXPECT_EQ(volume.grey[0][1][1], 0);  // the first voxel of the file
  EXPECT_EQ(volume.grey[1][1][1], 1);
  EXPECT_EQ(volume.grey[0][0][1], 2);
  EXPECT_EQ(volume.grey[0][1][0], 4);
}

TEST_F(RawReaderTest, OnPurposeAnUnflippedYFillsAsManyRowsAsXHas) {
  const std::string path = File({1, 2, 3, 4, 5, 6});
  ASSERT_EQ(volume.ReadGrey(path.c_str(), 2, 3, 1, 1, 0, 65535, 0, 0, 1, 0), 1);

  EXPECT_EQ(volume.grey[0][0][0], 1);
  EXPECT_EQ(volume.grey[1][1][0], 4);
  EXPECT_EQ(volume.grey[0][2][0], 0);  // never filled
}

TEST_F(RawReaderTest, AnUnflippedYStaysInsideAnArrayThatIsWiderThanHigh) {
  const std::string path = File(Bytes(12, 7));
  ASSERT_EQ(volume.ReadGrey(path.c_str(), 4, 3, 1, 1, 0, 65535, 0, 0, 1, 0), 1);

  EXPECT_EQ(volume.grey[3][2][0], 7);
}

TEST_F(RawReaderTest, AShortFileRepeatsItsLastSlice) {
  ASSERT_EQ(Grey({1, 2, 3}, 2, 1, 3, 1, 0, 65535), 1);

  EXPECT_EQ(volume.grey[0][0][2], 1);
  EXPECT_EQ(volume.grey[1][0][2], 2);
  EXPECT_EQ(volume.grey[0][0][1], 3);  // half a slice: its rest is that of the slice before
  EXPECT_EQ(volume.grey[1][0][1], 2);
  EXPECT_EQ(volume.grey[0][0][0], 3);
  EXPECT_EQ(volume.grey[1][0][0], 2);
}

TEST_F(RawReaderTest, ManySlicesComeInBlocksAndStillInOrder) {
  Bytes bytes;
  for (int i = 0; i < 200 * 6; ++i) { bytes.push_back(static_cast<std::uint8_t>(i % 251)); }
  ASSERT_EQ(Grey(bytes, 3, 2, 200, 1, 0, 65535), 1);

  for (int z = 0; z < 200; ++z) {
    for (int y = 0; y < 2; ++y) {
      for (int x = 0; x < 3; ++x) {
        const int inFile = ((199 - z) * 2 + (1 - y)) * 3 + x;
        ASSERT_EQ(volume.grey[x][y][z], inFile % 251) << x << " " << y << " " << z;
      }
    }
  }
}

TEST_F(RawReaderTest, ASegmentationDefinesTheLabelsItHolds) {
  volume.SetupSlot("", 2, 2, 1, 1, 0, 0, 0, 1, 1);
  const std::string path = File({0, 200, 3, 0});
  ASSERT_EQ(volume.ReadSeg(path.c_str(), 0), 1);

  EXPECT_EQ(volume.GetLabelCount(), 8);
  std::uint8_t rgb[3];
  char name[201];
  EXPECT_EQ(volume.GetLabel(200, rgb, name), 1);
  EXPECT_STREQ(name, "Label 200");
  EXPECT_EQ(volume.labelPresent[3], 1);
  EXPECT_EQ(volume.labelPresent[4], 0);
  ASSERT_EQ(volume.ReadSeg(path.c_str(), 0), 1);
  EXPECT_EQ(volume.GetLabelCount(), 8);  // the table starts over for every read
}

TEST_F(RawReaderTest, TheTwinIs255WhereALabelIs) {
  volume.SetupSlot("", 9, 2, 2, 1, 0, 0, 0, 1, 1);
  Bytes bytes(36, 0);
  bytes[8] = 5;  // file: x 8, y 0, z 0
  ASSERT_EQ(volume.ReadSeg(File(bytes).c_str(), 0), 1);

  auto* twin = vtkFloatArray::SafeDownCast(volume.GetImage()->GetPointData()->GetScalars());
  for (int i = 0; i < 36; ++i) {
    EXPECT_EQ(twin->GetValue(i), i == (2 * 1 + 1) * 9 + 8 ? 255.0F : 0.0F) << i;
  }
}

TEST_F(RawReaderTest, WhatCannotBeReadIsRefusedInWords) {
  testing::internal::CaptureStderr();
  EXPECT_EQ(volume.ReadGrey("/no/such", 2, 2, 2, 1, 0, 0, 0, 1, 1, 0), -1);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "ERROR: Cannot open file /no/such with permission \"rb\"\nALERTE");
  testing::internal::CaptureStderr();
  EXPECT_EQ(volume.ReadGrey("a.gz", 2, 2, 2, 1, 0, 0, 0, 1, 1, 0), -1);
  EXPECT_EQ(volume.ReadGrey("a.Z", 2, 2, 2, 1, 0, 0, 0, 1, 1, 0), -1);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "   unzipping of data not supported\n   unzipping of data not supported\n");
  testing::internal::CaptureStderr();
  EXPECT_EQ(Grey({1, 2}, 2, 1, 1, 4), -1);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "unsupported image data type\n");
  testing::internal::CaptureStderr();
  VoxData empty;
  EXPECT_EQ(empty.ReadSeg(File({1}).c_str(), 0), -1);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "grey data not read in yet.\n");
}

TEST_F(RawReaderTest, SizesThatMakeNoVolumeLeaveNothingOfTheVolumeBefore) {
  constexpr int kLeast = -2147483647 - 1;
  for (const int size : {kLeast, -1, 0, 2147483647}) {
    const std::string path = File(Bytes(8, 7));
    ASSERT_EQ(volume.ReadGrey(path.c_str(), 2, 2, 2, 1, 0, 0, 1, 1, 1, 0), 1);
    testing::internal::CaptureStderr();
    EXPECT_EQ(volume.ReadGrey(path.c_str(), size, size, size, 1, 0, 0, 1, 1, 1, 0), -1);
    EXPECT_EQ(volume.ReadSeg(path.c_str(), 0), -1);
    std::uint16_t grey = 0;
    std::uint8_t label = 0;
    EXPECT_EQ(volume.GetGreyVoxel(0, 0, 0, grey), -1) << size;
    EXPECT_EQ(volume.GetSegVoxel(0, 0, 0, label), -1) << size;
    EXPECT_EQ(volume.SetupSlot("", size, size, size, 1, 0, 0, 1, 1, 1), -1) << size;
    testing::internal::GetCapturedStderr();
  }
}

TEST_F(RawReaderTest, AFolderOrAPipeIsNoFile) {
  const std::string pipe = folder + "pipe.raw";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);

  testing::internal::CaptureStderr();
  EXPECT_EQ(volume.ReadGrey(folder.c_str(), 2, 2, 2, 1, 0, 0, 0, 1, 1, 0), -1);
  EXPECT_EQ(volume.ReadGrey(pipe.c_str(), 2, 2, 2, 1, 0, 0, 0, 1, 1, 0), -1);
  testing::internal::GetCapturedStderr();
}

}  // namespace
