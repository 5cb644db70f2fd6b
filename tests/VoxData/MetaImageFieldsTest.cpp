// MetaImage: the parser of "Name = value" lines, and what each value of a header gives.
#include "VoxData/MetaImage.h"
#include "tests/VoxData/MetaImageFile.h"

#include <cstdio>
#include <memory>

namespace {

FieldRecord Key(const char* name, FieldType type, bool required = false) {
  FieldRecord record;
  record.name = name;
  record.type = type;
  record.required = required;
  return record;
}

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};

class MetaFieldsTest : public testing::Test {
protected:
  std::vector<FieldRecord> records;
  std::unique_ptr<std::FILE, CloseFile> stream;
  std::string words;

  void Text(const std::string& text) {
    stream.reset(std::tmpfile());
    std::fwrite(text.data(), 1, text.size(), stream.get());
    std::fseek(stream.get(), 0, SEEK_SET);
  }
  bool Parse(int stopIndex, bool rewind = true, char separator = '=') {
    testing::internal::CaptureStdout();
    const bool read = ReadFields(stream.get(), records, stopIndex, rewind, separator);
    words = testing::internal::GetCapturedStdout();
    return read;
  }
};

TEST_F(MetaFieldsTest, EveryTypeIsReadInItsOwnWay) {
  records = {Key("mark", FieldType::None),     Key("letter", FieldType::Character),
             Key("whole", FieldType::Integer), Key("real", FieldType::Real),
             Key("text", FieldType::Text),     Key("end", FieldType::Text)};
  Text("mark\nletter = A\nwhole = 12.75\nreal=-2e3\ntext = a b  \nend = .\n");
  ASSERT_TRUE(Parse(5));

  EXPECT_EQ(words, "");
  for (const FieldRecord& record : records) { EXPECT_TRUE(record.defined) << record.name; }
  EXPECT_TRUE(records[0].numbers.empty());
  EXPECT_EQ(records[1].numbers, std::vector<float>{65.0F});
  EXPECT_EQ(records[2].numbers, std::vector<float>{12.75F});
  EXPECT_EQ(records[3].numbers, std::vector<float>{-2000.0F});
  EXPECT_EQ(records[4].text, "a b");
  EXPECT_EQ(records[4].length, 3);
}

TEST_F(MetaFieldsTest, AnotherRecordGivesTheLengthOfATextOrAnArray) {
  records = {Key("n", FieldType::Integer), Key("text", FieldType::Text),
             Key("wholes", FieldType::Integers), Key("reals", FieldType::Reals)};
  for (std::size_t i = 1; i < records.size(); ++i) { records[i].dependsOn = 0; }
  Text("n = 3\nwholes = 1 2 3\ntext = abcdef\nn = 2\nreals = 0.5 -1.5\n");
  ASSERT_TRUE(Parse(3));

  EXPECT_EQ(records[2].numbers, (std::vector<float>{1.0F, 2.0F, 3.0F}));
  EXPECT_EQ(records[1].text, "abc");
  EXPECT_EQ(words, "Unknown field = def\nUnknown value = \n");
  EXPECT_EQ(records[3].numbers, (std::vector<float>{0.5F, -1.5F}));
  EXPECT_EQ(records[3].length, 2);
}

TEST_F(MetaFieldsTest, AnArrayOfNoLengthEndsTheParse) {
  records = {Key("numbers", FieldType::Reals), Key("end", FieldType::Text)};
  Text("numbers = 1 2\nend = .\n");

  EXPECT_FALSE(Parse(1));
  EXPECT_EQ(words, "Float and Int arrays must have dependency\n");
  EXPECT_FALSE(records[0].defined);

  records[0].length = 2;
  EXPECT_TRUE(Parse(1));
  EXPECT_EQ(records[0].numbers, (std::vector<float>{1.0F, 2.0F}));
}

TEST_F(MetaFieldsTest, NumbersThatAreMissingOrBeyondTheirRoomAreLeftOut) {
  records = {Key("n", FieldType::Integer), Key("numbers", FieldType::Reals),
             Key("end", FieldType::Text)};
  records[1].dependsOn = 0;
  Text("n = 4\nnumbers = 7 8\nend = .\n");
  ASSERT_TRUE(Parse(2));
  EXPECT_EQ(records[1].numbers, (std::vector<float>{7.0F, 8.0F, 0.0F, 0.0F}));

  std::string many = "n = 100000\nnumbers =";
  for (int i = 0; i < 255; ++i) { many += " 1"; }
  Text(many + "\nend = .\n");
  ASSERT_TRUE(Parse(2));
  EXPECT_EQ(records[1].numbers.size(), 255U);
}

TEST_F(MetaFieldsTest, TheStreamStandsRightBehindTheLineOfTheLastKey) {
  records = {Key("first", FieldType::Text), Key("last", FieldType::Text)};
  const std::string header = "first = 1\nlast = 2\n";
  Text(header + " first = elements");
  ASSERT_TRUE(Parse(1));
  EXPECT_EQ(std::ftell(stream.get()), static_cast<long>(header.size()));

  // From there on, without going back, only the elements are read; nothing of before is left.
  EXPECT_TRUE(Parse(1, false));
  EXPECT_EQ(records[0].text, "elements");
  EXPECT_FALSE(records[1].defined);
}

TEST_F(MetaFieldsTest, AnotherSeparatorMaySeparate) {
  records = {Key("a", FieldType::Text), Key("b=c", FieldType::Integer)};
  Text("b=c : 5\na :: x = y\n");
  ASSERT_TRUE(Parse(0, true, ':'));
  EXPECT_EQ(records[0].text, "x = y");
  EXPECT_EQ(records[1].numbers, std::vector<float>{5.0F});
}

TEST_F(MetaFieldsTest, AFileThatEndsBeforeAValueIsToldAndTheKeyCountsAllTheSame) {
  records = {Key("a", FieldType::Integer, true), Key("b", FieldType::Text, true)};
  for (const char* text : {"a = 1\nb =", "a = 1\nb = \n \n", "a = 1\nb\n"}) {
    Text(text);
    EXPECT_TRUE(Parse(1)) << text;
    EXPECT_EQ(words, "Incomplete file record definition\n") << text;
    EXPECT_EQ(records[1].text, "");
  }
}

TEST_F(MetaFieldsTest, AKeyAtTheEndOfTheFileIsNone) {
  records = {Key("a", FieldType::Integer, true), Key("b", FieldType::Text, true)};
  Text("a = 1\nb");
  EXPECT_FALSE(Parse(1));
  EXPECT_EQ(words, "b required and not defined.\n");
}

TEST_F(MetaFieldsTest, AnEmptyValueTakesTheNextLine) {
  records = {Key("a", FieldType::Text), Key("b", FieldType::Text), Key("c", FieldType::Text)};
  Text("a =\nb = 1\nc = 2\n");
  EXPECT_TRUE(Parse(2));
  EXPECT_EQ(records[0].text, "b = 1");
  EXPECT_FALSE(records[1].defined);
  EXPECT_EQ(records[2].text, "2");
}

TEST_F(MetaFieldsTest, ATextEndsBeforeWhatCannotBePrinted) {
  records = {Key("a", FieldType::Text), Key("b", FieldType::Text)};
  Text("a = one \ttwo\nb = \xE9t\xE9\n");
  ASSERT_TRUE(Parse(1));
  EXPECT_EQ(records[0].text, "one");
  EXPECT_EQ(records[1].text, "");
}

TEST_F(MetaFieldsTest, ALineIsReadInPiecesOfEightHundredCharacters) {
  records = {Key("a", FieldType::Text), Key("b", FieldType::Text)};
  Text("a = " + std::string(800, 'x') + "yyy\nb = .\n");
  ASSERT_TRUE(Parse(1));
  EXPECT_EQ(records[0].text, std::string(800, 'x'));
  EXPECT_EQ(words, "Unknown field = yyy\nUnknown value = \n");
}

TEST_F(MetaFieldsTest, AnUnknownValueIsReadInPiecesOfTwoHundredAndFiftyFiveCharacters) {
  records = {Key("b", FieldType::Text)};
  Text("u = " + std::string(253, 'x') + "yyy\nb = .\n");
  ASSERT_TRUE(Parse(0));
  EXPECT_EQ(words, "Unknown field = u\nUnknown value = = " + std::string(253, 'x') +
                       "\nUnknown field = yyy\nUnknown value = \n");
}

TEST_F(MetaImageTest, TheKeysMayComeInAnyOrderAndTheLastOfTwoCounts) {
  lines = {{"ElementByteOrderMSB", "False"},
           {"ElementType", "MET_UCHAR"},
           {"NDims", "2"},
           {"DimSize", "9 9"},
           {"NDims", "3"},
           {"ElementSize", "1 2 3"},
           {"DimSize", "2 3 4"},
           {"ElementDataFile", "LOCAL"}};
  ASSERT_TRUE(Fill());
  EXPECT_EQ(dialog.dims[0], 2.0);
  EXPECT_EQ(dialog.dims[1], 3.0);
  EXPECT_EQ(dialog.dims[2], 4.0);
  EXPECT_EQ(dialog.spacing[2], 3.0);
  EXPECT_EQ(dialog.headerSize, static_cast<double>(Header().size()));
}

TEST_F(MetaImageTest, SizesBeforeTheirNumberFailForEveryKeyThatNeedsIt) {
  for (const char* key : {"DimSize", "ElementSize", "ElementSpacing"}) {
    lines.insert(lines.begin(), {key, "1 1 1"});
    EXPECT_FALSE(Fill());
    EXPECT_EQ(words.rfind(std::string(key) + " defined prior to defining NDims\n", 0), 0U) << words;
    ExpectOldDialog();
    lines.erase(lines.begin());
  }
}

TEST_F(MetaImageTest, TheSpacingOfTheDialogIsTheSizeOfAnElementNotTheirDistance) {
  Set("ElementSpacing", "7 8 9");
  ASSERT_TRUE(Fill());
  EXPECT_EQ(dialog.spacing[2], 2.0);

  Remove("ElementSize");
  ASSERT_TRUE(Fill());
  for (const double spacing : dialog.spacing) { EXPECT_EQ(spacing, 0.0); }
  ASSERT_TRUE(Read());
  EXPECT_EQ(image.elementSpacing[1], 8.0F);
}

TEST_F(MetaImageTest, NumbersOfTheHeaderAreTruncated) {
  Set("NDims", "3.99");
  Set("DimSize", "4.9 3.5 2.999");
  Set("HeaderSize", "0.9");
  Set("ElementNBits", "-8.9");
  ASSERT_TRUE(Read());
  EXPECT_EQ(image.nDims, 3);
  EXPECT_EQ(image.quantity, 24);
  EXPECT_EQ(image.headerSize, 0);
  EXPECT_EQ(image.elementNBits, -8);
}

TEST_F(MetaImageTest, AVolumeOfNoDimensionsHasOneElement) {
  Remove("ElementSize");
  Set("NDims", "0");
  Set("DimSize", "");
  ASSERT_TRUE(Read()) << words;
  EXPECT_EQ(image.quantity, 1);
  EXPECT_EQ(image.subQuantity[0], 1);
  EXPECT_EQ(Data(), "a");
}

TEST_F(MetaImageTest, EveryTypeHasItsTextAndItsSize) {
  const std::pair<const char*, int> types[] = {
      {"MET_DEFAULT", 0}, {"MET_CHAR", 1}, {"MET_UCHAR", 1}, {"MET_SHORT", 2},  {"MET_USHORT", 2},
      {"MET_INT", 4},     {"MET_UINT", 4}, {"MET_FLOAT", 4}, {"MET_DOUBLE", 8}, {"MET_OTHER", 0}};
  EXPECT_EQ(image.ElementType(), MET_OTHER);  // before a read
  for (int code = 0; code < 10; ++code) {
    const auto& [text, bytes] = types[code];
    Set("ElementType", text);
    ASSERT_TRUE(Read(false));
    EXPECT_EQ(image.ElementType(), code);
    EXPECT_EQ(image.elementBytes, bytes) << text;
    EXPECT_EQ(image.elementNBits, 8 * bytes) << text;
    EXPECT_STREQ(MET_TypeText(code), text);
  }
  EXPECT_EQ(image.ElementType(MET_FLOAT), MET_FLOAT);
  EXPECT_EQ(image.ElementType(), MET_FLOAT);
}

TEST_F(MetaImageTest, EveryModalityHasItsCode) {
  const char* modalities[] = {"MET_MOD_UNKNOWN", "MET_MOD_MRI", "MET_MOD_MRA", "MET_MOD_CT",
                              "MET_MOD_DSA",     "MET_MOD_CXR", "MET_MOD_DRR", "MET_MOD_MRI2"};
  for (int code = 0; code < 8; ++code) {
    Set("Modality", modalities[code]);
    ASSERT_TRUE(Read(false));
    EXPECT_EQ(image.modality, code % 7) << modalities[code];
  }
}

TEST_F(MetaImageTest, TheFolderOfAHeaderEndsAtItsLastSlashOfEitherKind) {
  ASSERT_TRUE(ReadFrom(Write("back\\slash.mha")));
  EXPECT_EQ(image.headerDir, folder + "back\\");
}

TEST_F(MetaImageTest, OnlyAHeaderReadLeavesTheElementsAlone) {
  Set("ElementDataFile", "no such file");
  EXPECT_TRUE(Read(false));
  EXPECT_EQ(image.data, nullptr);
  EXPECT_EQ(image.fileOpen, 0);
  EXPECT_STREQ(image.elementDataFile, "no such file");
}

TEST_F(MetaImageTest, WhatFailsLeavesTheHeaderOpenUntilTheNextReadOrTheEnd) {
  Set("ElementDataFile", "no such file");
  EXPECT_FALSE(Read());
  EXPECT_EQ(image.fileOpen, 1);
  EXPECT_NE(image.stream, nullptr);
  image.Clear();
  EXPECT_EQ(image.fileOpen, 0);
  EXPECT_EQ(image.stream, nullptr);
  image.Clear();

  Set("ElementDataFile", "LOCAL");
  EXPECT_TRUE(Read());
  EXPECT_EQ(image.Error(), nullptr);
}

TEST_F(MetaImageTest, APathThatIsOnlyAnEndingIsNotCompressed) {
  EXPECT_FALSE(FillFrom(".gz"));
  EXPECT_EQ(words, "Error: Cannot open file: .gz\n");
  EXPECT_FALSE(FillFrom(".Z"));
  EXPECT_EQ(words, "Error: Cannot open file: .Z\n");
}

}  // namespace
