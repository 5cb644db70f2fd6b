// MetaImage files for tests: a header of 4 x 3 x 2 bytes whose lines can be changed.
#pragma once

#include "VoxData/MetaImage.h"
#include "tests/VoxData/ReaderFolder.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

class MetaImageTest : public ReaderFolderTest {
protected:
  using Lines = std::vector<std::pair<std::string, std::string>>;

  Lines lines = {{"NDims", "3"},
                 {"DimSize", "4 3 2"},
                 {"ElementSize", "0.5 0.25 2"},
                 {"ElementType", "MET_UCHAR"},
                 {"ElementByteOrderMSB", "False"},
                 {"ElementDataFile", "LOCAL"}};
  std::string elements = "abcdefghijklmnopqrstuvwx";
  MetaImage image;
  std::string words;  ///< what the last read wrote on standard output

  /// Changes the value of a key, or puts the line before the last one.
  void Set(const std::string& key, const std::string& value) {
    for (auto& line : lines) {
      if (line.first == key) {
        line.second = value;
        return;
      }
    }
    lines.insert(lines.end() - 1, {key, value});
  }
  void Remove(const std::string& key) {
    for (auto line = lines.begin(); line != lines.end(); ++line) {
      if (line->first != key) { continue; }
      lines.erase(line);
      return;
    }
  }
  std::string Header() const {
    std::string text;
    for (const auto& [key, value] : lines) { text += key + " = " + value + "\n"; }
    return text;
  }
  std::string Write(const std::string& name = "volume.mha") const {
    return File(name, Header() + elements);
  }

  bool Read(bool readElements = true) { return ReadFrom(Write(), readElements); }
  bool ReadFrom(const std::string& path, bool readElements = true) {
    testing::internal::CaptureStdout();
    const bool read = image.Read(path.c_str(), readElements);
    words = testing::internal::GetCapturedStdout();
    return read;
  }
  std::string Error() const { return image.Error() != nullptr ? image.Error() : ""; }
  /// The elements, byte by byte.
  std::string Data() const {
    return {static_cast<const char*>(image.data),
            static_cast<std::size_t>(image.Elements() * image.elementBytes)};
  }

  RawFields dialog{7.0, {11.0, 12.0, 13.0}, 3.0, {0.125, 0.25, 0.375}};
  bool Fill() { return FillFrom(Write()); }
  bool FillFrom(const std::string& path) {
    testing::internal::CaptureStdout();
    const bool filled = FillFieldsFromMetaImage(path.c_str(), dialog);
    words = testing::internal::GetCapturedStdout();
    return filled;
  }
  void ExpectOldDialog() const {
    EXPECT_EQ(dialog.headerSize, 7.0);
    EXPECT_EQ(dialog.bytes, 3.0);
    EXPECT_EQ(dialog.dims[0], 11.0);
    EXPECT_EQ(dialog.dims[2], 13.0);
    EXPECT_EQ(dialog.spacing[1], 0.25);
  }
};
