// MetaImage elements: local, in a file of their own, in slice files, and their byte order.
#include "tests/VoxData/MetaImageFile.h"

#include <cstdlib>
#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;

TEST_F(MetaImageTest, LocalElementsFollowTheLastLine) {
  ASSERT_TRUE(Read());
  EXPECT_EQ(Data(), "abcdefghijklmnopqrstuvwx");
  EXPECT_EQ(image.elementBytes, 1);
  EXPECT_EQ(image.fileOpen, 0);
}

TEST_F(MetaImageTest, TwoBytesAreSwappedWhole) {
  Set("ElementType", "MET_USHORT");
  Set("ElementByteOrderMSB", "True");
  Set("DimSize", "4 3 1");
  ASSERT_TRUE(Read());

  EXPECT_EQ(Data(), "badcfehgjilknmporqtsvuxw");
  EXPECT_EQ(image.elementMsb, 0);
}

TEST_F(MetaImageTest, OnPurposeTheHalvesOfFourBytesStayInPlace) {
  for (const char* type : {"MET_INT", "MET_UINT", "MET_FLOAT"}) {
    Set("ElementType", type);
    Set("ElementByteOrderMSB", "True");
    Set("DimSize", "3 2 1");
    ASSERT_TRUE(Read());
    EXPECT_EQ(Data(), "badcfehgjilknmporqtsvuxw") << type;
  }
}

TEST_F(MetaImageTest, OnPurposeEightBytesAreNotSwapped) {
  Set("ElementType", "MET_DOUBLE");
  Set("ElementByteOrderMSB", "True");
  Set("DimSize", "3 1 1");
  ASSERT_TRUE(Read());

  EXPECT_EQ(Data(), elements);
  EXPECT_EQ(image.elementMsb, 0);
}

TEST_F(MetaImageTest, ATypeOfNoSizeReadsNothing) {
  for (const char* type : {"MET_OTHER", "MET_DEFAULT", "met_uchar"}) {
    Set("ElementType", type);
    Read();
    EXPECT_EQ(Error(), "Error: read 0 but expected 24") << type;
  }
  EXPECT_EQ(MET_TypeFromText("MET_OTHER"), MET_OTHER);
  EXPECT_EQ(MET_TypeFromText("no type"), MET_OTHER);
  EXPECT_EQ(MET_Bytes(-1), 0);
  EXPECT_EQ(MET_ModalityFromText("MET_MOD_DRR"), 6);
  EXPECT_EQ(MET_ModalityFromText("no modality"), 0);
}

TEST_F(MetaImageTest, AShortFileIsToldInNumbers) {
  elements.resize(10);
  EXPECT_TRUE(Read());  // the words stand in the error text alone
  EXPECT_EQ(words, "Error: read 10 but expecting 24\n");
  EXPECT_EQ(Error(), "Error: read 10 but expected 24");
  EXPECT_FALSE(Fill());
  ExpectOldDialog();
}

TEST_F(MetaImageTest, NoMoreMemoryIsTakenThanTheFilesCanFill) {
  Set("DimSize", "1024 1024 2047");
  Set("ElementType", "MET_DOUBLE");
  Read();
  EXPECT_EQ(Error(), "Error: read 3 but expected 2146435072");
  EXPECT_EQ(image.Elements(), 3);

  Set("ElementDataFile", "s%d.raw");
  File("s0.raw", elements);
  Read();
  EXPECT_EQ(image.Elements(), 3);
  EXPECT_EQ(Error(), "Error: cannot open element data file: " + folder + "s1.raw");

  Set("HeaderSize", "2147483647");
  Read();
  EXPECT_EQ(image.Elements(), 0);
}

TEST_F(MetaImageTest, HeaderBytesBeforeTheElementsAreSkipped) {
  Set("HeaderSize", "5");
  elements = "12345" + elements;
  ASSERT_TRUE(Read());
  EXPECT_EQ(Data(), "abcdefghijklmnopqrstuvwx");

  elements = "1234";
  Read();
  EXPECT_EQ(words, "Error: read header 4 but expecting 5\n");
  EXPECT_EQ(Error(), "Error: read header 4 but expected 5");

  elements = "abcdefghijklmnopqrstuvwx";
  for (const char* size : {"-3", "-1e30", "nan", "0"}) {
    Set("HeaderSize", size);
    EXPECT_TRUE(Read()) << size;
    EXPECT_EQ(Data(), elements) << size;
    EXPECT_EQ(image.headerSize, 0) << size;
  }
}

TEST_F(MetaImageTest, AFileOfItsOwnStandsBesideTheHeaderOrWhereItsPathSays) {
  File("body.raw", "ABCDEFGHIJKLMNOPQRSTUVWX");
  for (const std::string& name : {std::string("body.raw"), folder + "body.raw"}) {
    Set("ElementDataFile", name);
    ASSERT_TRUE(Read());
    EXPECT_EQ(Data(), "ABCDEFGHIJKLMNOPQRSTUVWX");
  }
  Set("ElementDataFile", "absent.raw");
  EXPECT_FALSE(Read());
  EXPECT_EQ(words, "Error: Cannot open element data file: _" + folder + "absent.raw_\n");
  EXPECT_EQ(Error(), "Error: cannot open element data file: " + folder + "absent.raw");
}

TEST_F(MetaImageTest, SliceFilesAreNumberedFromZeroOrFromOne) {
  Set("ElementDataFile", "s%02d.raw");
  File("s01.raw", "abcdefghijkl");
  File("s02.raw", "mnopqrstuvwx");
  ASSERT_TRUE(Read());
  EXPECT_EQ(Data(), "abcdefghijklmnopqrstuvwx");

  File("s00.raw", "ABCDEFGHIJKL");
  ASSERT_TRUE(Read());
  EXPECT_EQ(Data(), "ABCDEFGHIJKLabcdefghijkl");
}

TEST_F(MetaImageTest, AShortSliceLeavesItsWordsAndTheNextOneIsRead) {
  Set("ElementDataFile", "s%d.raw");
  File("s0.raw", "abc");
  File("s1.raw", "mnopqrstuvwx");
  EXPECT_TRUE(Read());

  EXPECT_EQ(words, "Error: read 3 but expecting 12\n");
  EXPECT_EQ(Data(), "abc");
}

TEST_F(MetaImageTest, APatternKnowsFlagsWidthAndPrecisionOfOneWholeNumber) {
  const std::pair<const char*, const char*> patterns[] = {
      {"a%d", "a1"},       {"a%i.raw", "a1.raw"},  {"a%3u", "a  1"}, {"a%03d", "a001"},
      {"a%-3db", "a1  b"}, {"a%+d", "a+1"},        {"a% d", "a 1"},  {"a%.4d", "a0001"},
      {"a%+04d", "a+001"}, {"a%06.2d", "a    01"}, {"a%x", "a1"},    {"a%o", "a1"}};
  for (const auto& [pattern, name] : patterns) {
    Set("ElementDataFile", std::string(pattern));
    Set("DimSize", "4 6 1");
    File(name, elements);
    EXPECT_TRUE(Read()) << pattern << words;
    EXPECT_EQ(Data(), elements) << pattern;
    std::filesystem::remove(folder + name);
  }
}

TEST_F(MetaImageTest, APatternWithAnythingButOneWholeNumberIsRefused) {
  for (const char* pattern :
       {"a%s", "a%n", "a%d%d", "a%%", "a%%%d", "a%", "a%ld", "a%f", "a%c", "a%p", "a%*d", "a%1$d",
        "a%#d", "a%99999d", "a%.99999d", "%d%s", "a%4294967297d", "a%d%"}) {
    Set("ElementDataFile", pattern);
    EXPECT_FALSE(Read()) << pattern;
    EXPECT_THAT(Error(), HasSubstr("needs one whole number")) << pattern;
  }
}

TEST_F(MetaImageTest, APercentSignInTheFolderIsPartOfItsName) {
  const std::string outer = folder;
  folder += "50% %s/";
  std::filesystem::create_directories(folder);
  File("body.raw", elements);
  Set("ElementDataFile", "body.raw");
  EXPECT_TRUE(Read());
  EXPECT_EQ(Data(), elements);

  Set("ElementDataFile", "s%d.raw");
  File("s0.raw", "abcdefghijkl");
  File("s1.raw", "mnopqrstuvwx");
  EXPECT_TRUE(Read());
  EXPECT_EQ(Data(), elements);
  folder = outer;
}

TEST_F(MetaImageTest, SlicesOfAVolumeThatIsNoneAreOpenedButHoldNothing) {
  Set("ElementDataFile", "s%d.raw");
  Set("DimSize", "0 3 2147483647");
  File("s0.raw", elements);
  EXPECT_FALSE(Read());
  EXPECT_EQ(Error(), "Error: cannot open element data file: " + folder + "s1.raw");

  Set("NDims", "1");
  Set("DimSize", "1");
  Set("ElementSize", "1");
  EXPECT_TRUE(Read());
  EXPECT_EQ(image.Elements(), 0);
}

TEST(MetaImageAllocTest, WhatNoMachineHoldsIsRefusedInWords) {
  testing::internal::CaptureStdout();
  EXPECT_EQ(MI_Alloc(MET_DOUBLE, std::int64_t{1} << 60), nullptr);
  EXPECT_EQ(MI_Alloc(MET_UCHAR, -1), nullptr);
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "ERROR: MI_Alloc(MET_DOUBLE, 1152921504606846976) returned NULL\n"
            "ERROR: MI_Alloc(MET_UCHAR, -1) returned NULL\n");

  auto* zeros = static_cast<double*>(MI_Alloc(MET_DOUBLE, 3));
  EXPECT_EQ(zeros[0] + zeros[1] + zeros[2], 0.0);
  std::free(zeros);
}

}  // namespace
