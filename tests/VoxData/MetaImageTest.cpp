// MetaImage headers: what they put into the load dialog, and what is refused in words.
#include "tests/VoxData/MetaImageFile.h"

#include <utility>

namespace {

TEST_F(MetaImageTest, AHeaderFillsTheDialog) {
  ASSERT_TRUE(Fill());

  EXPECT_EQ(words, "");
  EXPECT_EQ(dialog.headerSize, static_cast<double>(Header().size()));
  EXPECT_EQ(dialog.dims[0], 4.0);
  EXPECT_EQ(dialog.dims[1], 3.0);
  EXPECT_EQ(dialog.dims[2], 2.0);
  EXPECT_EQ(dialog.bytes, 1.0);
  EXPECT_EQ(dialog.spacing[0], 0.5);
  EXPECT_EQ(dialog.spacing[1], 0.25);
  EXPECT_EQ(dialog.spacing[2], 2.0);
}

TEST_F(MetaImageTest, AHeaderWithoutItsByteOrderLeavesTheDialogUnchanged) {
  Remove("ElementByteOrderMSB");
  const std::string path = Write();
  ASSERT_FALSE(FillFrom(path));

  EXPECT_EQ(words, "ElementByteOrderMSB required and not defined.\n"
                   "Error parsing header file: _" +
                       path + "_\n");
  ExpectOldDialog();
}

TEST_F(MetaImageTest, EachRequiredKeyIsMissedByItsName) {
  for (const char* key : {"NDims", "DimSize", "ElementType", "ElementDataFile"}) {
    const Lines whole = lines;
    Remove(key);
    if (std::string(key) == "NDims") { Remove("DimSize"); }
    if (std::string(key) != "ElementSize") { Remove("ElementSize"); }
    EXPECT_FALSE(Read()) << key;
    EXPECT_EQ(words.rfind(std::string(key) + " required and not defined.\n", 0), 0U) << words;
    EXPECT_EQ(Error(), "Error parsing header file: " + folder + "volume.mha");
    lines = whole;
  }
}

TEST_F(MetaImageTest, SizesBeforeTheirNumberFail) {
  std::swap(lines[0], lines[1]);
  ASSERT_FALSE(Fill());

  EXPECT_EQ(words.rfind("DimSize defined prior to defining NDims\n", 0), 0U) << words;
  ExpectOldDialog();
}

TEST_F(MetaImageTest, OnPurposeSignedWordsGiveAHeaderTooLargeByHalfTheData) {
  Set("ElementType", "MET_SHORT");
  elements += elements;
  ASSERT_TRUE(Fill());

  EXPECT_EQ(dialog.headerSize, static_cast<double>(Header().size()) + 24.0);
  EXPECT_EQ(dialog.bytes, 3.0);  // as it was
}

TEST_F(MetaImageTest, UnsignedWordsGiveTwoBytesAndTheRealHeader) {
  Set("ElementType", "MET_USHORT");
  elements += elements;
  ASSERT_TRUE(Fill());

  EXPECT_EQ(dialog.headerSize, static_cast<double>(Header().size()));
  EXPECT_EQ(dialog.bytes, 2.0);
}

TEST_F(MetaImageTest, OnPurposeASeparateDataFileGivesTheHeadersLengthLessTheData) {
  File("body.raw", std::string(4000, 'x'));
  Set("DimSize", "40 10 10");
  Set("ElementDataFile", "body.raw");
  elements.clear();
  ASSERT_TRUE(Fill());

  EXPECT_EQ(dialog.headerSize, static_cast<double>(Header().size()) - 4000.0);
}

TEST_F(MetaImageTest, OnPurposeOnlyAFirstLetterFIsFalse) {
  for (const char* value : {"True", "0", "1", "no", "MSB"}) {
    Set("ElementByteOrderMSB", value);
    ASSERT_TRUE(Read(false));
    EXPECT_EQ(image.elementMsb, 1) << value;
  }
  for (const char* value : {"False", "f", "fish"}) {
    Set("ElementByteOrderMSB", value);
    ASSERT_TRUE(Read(false));
    EXPECT_EQ(image.elementMsb, 0) << value;
  }
}

TEST_F(MetaImageTest, OnPurposeATwoDimensionalFileHasADepthOfZeroAndIsAllHeader) {
  Set("NDims", "2");
  Set("DimSize", "6 4");
  Set("ElementSize", "1 1");
  ASSERT_TRUE(Fill());

  EXPECT_EQ(dialog.dims[2], 0.0);
  EXPECT_EQ(dialog.headerSize, static_cast<double>(Header().size() + 24));
}

TEST_F(MetaImageTest, AFileThatMayNotBeWrittenCannotBeOpened) {
  // No user may write to a program that runs: the very same file can be read.
  ASSERT_FALSE(ReadFrom("/proc/self/exe"));

  EXPECT_EQ(words, "Error: Cannot open file: /proc/self/exe\n");
  EXPECT_EQ(Error(), "Error: Cannot open file: /proc/self/exe");
}

TEST_F(MetaImageTest, AFolderIsNoHeaderAndHoldsNoElements) {
  EXPECT_FALSE(ReadFrom(folder));
  EXPECT_EQ(Error(), "Error: Cannot open file: " + folder);

  std::filesystem::create_directory(folder + "body");
  Set("ElementDataFile", "body");
  EXPECT_FALSE(Read());
  EXPECT_EQ(Error(), "Error: cannot open element data file: " + folder + "body");
}

TEST_F(MetaImageTest, ACompressedFileIsRefusedBeforeItIsRead) {
  for (const char* name : {"volume.mha.gz", "volume.mha.Z"}) {
    const std::string path = Write(name);
    testing::internal::CaptureStderr();
    EXPECT_FALSE(FillFrom(path));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "   unzipping of data not supported\n");
    ExpectOldDialog();
  }
}

TEST_F(MetaImageTest, OtherValuesAreTakenAndZeroWithoutTheirKey) {
  Set("Comment", "a volume   ");
  Set("AcquisitionDate", "2001.02.03");
  Set("Modality", "MET_MOD_CT");
  Set("Min", "-1.5");
  Set("Max", "2e3");
  Set("ImagePosition", "1 2 3");
  Set("ImageOrientation", "1 0 0 0 1 0");
  Set("SequenceID", "4 3 2 1");
  Set("ElementNBits", "7.9");
  ASSERT_TRUE(Read());
  EXPECT_STREQ(image.comment, "a volume");
  EXPECT_STREQ(image.acquisitionDate, "2001.02.03");
  EXPECT_EQ(image.modality, 3);
  EXPECT_EQ(image.minValue, -1.5F);
  EXPECT_EQ(image.maxValue, 2000.0F);
  EXPECT_EQ(image.imagePosition[2], 3.0F);
  EXPECT_EQ(image.imageOrientation[4], 1.0F);
  EXPECT_EQ(image.sequenceId[0], 4.0F);
  EXPECT_EQ(image.elementNBits, 7);
  EXPECT_EQ(image.headerDir, folder);

  // The same object again: nothing of the first file is left.
  while (lines[3].first != "ElementType") { lines.erase(lines.begin() + 3); }
  for (const char* key : {"Comment", "AcquisitionDate", "Modality", "Min", "Max", "ImagePosition",
                          "ImageOrientation", "SequenceID", "ElementNBits"}) {
    Remove(key);
  }
  ASSERT_TRUE(Read());
  EXPECT_STREQ(image.comment, "");
  EXPECT_EQ(image.modality, 0);
  EXPECT_EQ(image.maxValue, 0.0F);
  EXPECT_EQ(image.imagePosition[2], 0.0F);
  EXPECT_EQ(image.elementNBits, 8);
}

TEST_F(MetaImageTest, AnUnknownKeyIsNamedAndPassedOver) {
  Set("Colour", "blue and green");
  ASSERT_TRUE(Read());

  EXPECT_EQ(words, "Unknown field = Colour\nUnknown value = = blue and green\n");
}

TEST_F(MetaImageTest, ElevenDimensionsAreRefused) {
  for (const char* count : {"11", "4000", "2147483648", "1e30", "-1"}) {
    Set("NDims", count);
    EXPECT_FALSE(Read()) << count;
    EXPECT_EQ(Error(), "Error: NDims must lie between 0 and 10") << count;
    EXPECT_EQ(image.DimSize(0), 0);
  }
}

TEST_F(MetaImageTest, SizesWhoseProductOverflowsAreRefused) {
  for (const char* sizes : {"65536 65536 1", "2147483647 2 1", "-4 3 2", "4 3 1e20"}) {
    Set("DimSize", sizes);
    EXPECT_FALSE(Read()) << sizes;
    EXPECT_EQ(Error(), "Error: DimSize makes no volume that memory can hold") << sizes;
  }
}

TEST_F(MetaImageTest, TenDimensionsAreRead) {
  Set("NDims", "10");
  Set("DimSize", "2 2 2 3 1 1 1 1 1 1");
  Set("ElementSize", "1 1 1 1 1 1 1 1 1 9");
  ASSERT_TRUE(Read());

  EXPECT_EQ(image.quantity, 24);
  EXPECT_EQ(image.subQuantity[3], 8);
  EXPECT_EQ(image.subQuantity[9], 24);
  EXPECT_EQ(image.ElementSize(9), 9.0F);
  EXPECT_EQ(image.DimSize(10), 0);
  EXPECT_EQ(image.DimSize(-1), 0);
}

TEST_F(MetaImageTest, AKeyOfTwoHundredAndFiftyFiveCharactersEndsTheHeader) {
  lines.insert(lines.begin(), {std::string(253, 'k'), "1"});  // and the blank behind it
  EXPECT_TRUE(Read());
  lines[0].first += 'k';
  EXPECT_FALSE(Read());
  EXPECT_EQ(words.rfind("NDims required and not defined.\n", 0), 0U) << words;
}

TEST_F(MetaImageTest, AHeaderOfOneEndlessLineIsRefused) {
  for (const char c : {'N', '=', ' ', '\0', '9'}) {
    EXPECT_FALSE(ReadFrom(File("line.mha", std::string(1000000, c)))) << int{c};
    EXPECT_FALSE(ReadFrom(File("line.mha", "NDims = " + std::string(1000000, c)))) << int{c};
  }
}

TEST_F(MetaImageTest, WordsOnALongPathFitTheirField) {
  const std::string path = "/" + std::string(5000, 'p');
  ASSERT_FALSE(ReadFrom(path));

  EXPECT_EQ(Error(), ("Error: Cannot open file: " + path).substr(0, 799));
}

TEST_F(MetaImageTest, PercentSignsInAPathAreOnlyText) {
  ASSERT_FALSE(ReadFrom("/no/%s%n%d.mha"));
  EXPECT_EQ(Error(), "Error: Cannot open file: /no/%s%n%d.mha");
}

}  // namespace
