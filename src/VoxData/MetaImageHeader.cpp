// The keys of a MetaImage header and their parser.
#include "VoxData/MetaImage.h"

#include <cctype>
#include <cmath>
#include <iostream>

namespace {

constexpr int kMaxKey = 255;
constexpr int kMaxLine = 800;
constexpr int kMaxNumbers = 255;

bool IsPrintable(int c) { return c != EOF && std::isprint(c) != 0; }

/// Skips to the separator and past it and the white space behind it.
void SkipSeparator(std::FILE* stream, char separator) {
  int c = std::fgetc(stream);
  while (c != EOF && c != separator) { c = std::fgetc(stream); }
  while (c != EOF && (c == separator || std::isspace(c) != 0)) { c = std::fgetc(stream); }
  if (c == EOF) {
    std::cout << "Incomplete file record definition" << std::endl;
    return;
  }
  std::ungetc(c, stream);
}

/// A line of at most `most` characters, its line end included, as fgets reads it.
std::string ReadLine(std::FILE* stream, int most) {
  std::string line;
  while (static_cast<int>(line.size()) < most) {
    const int c = std::fgetc(stream);
    if (c == EOF) { break; }
    line += static_cast<char>(c);
    if (c == '\n') { break; }
  }
  return line;
}

std::string ReadText(std::FILE* stream) {
  std::string line = ReadLine(stream, kMaxLine);
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (!IsPrintable(static_cast<unsigned char>(line[i]))) {
      line.resize(i);
      break;
    }
  }
  while (!line.empty() && std::isspace(static_cast<unsigned char>(line.back())) != 0) {
    line.pop_back();
  }
  return line;
}

float ReadNumber(std::FILE* stream) {
  float number = 0.0F;
  if (std::fscanf(stream, " %e ", &number) != 1) { return 0.0F; }
  return number;
}

int LengthOf(const std::vector<FieldRecord>& records, const FieldRecord& record) {
  if (record.dependsOn < 0) { return record.length; }
  const auto& numbers = records[static_cast<std::size_t>(record.dependsOn)].numbers;
  const float length = numbers.empty() ? 0.0F : numbers[0];
  if (!(length > 0.0F)) { return 0; }
  return length > kMaxNumbers ? kMaxNumbers : static_cast<int>(length);
}

/// Returns false where the parse cannot go on.
bool ReadValue(std::FILE* stream, std::vector<FieldRecord>& records, FieldRecord& record,
               char separator) {
  record.numbers.clear();
  if (record.type == FieldType::None) {
    std::fgetc(stream);
    return true;
  }
  SkipSeparator(stream, separator);
  switch (record.type) {
  case FieldType::Character:
    record.numbers.push_back(static_cast<float>(std::fgetc(stream)));
    return true;
  case FieldType::Integer:
  case FieldType::Real: record.numbers.push_back(ReadNumber(stream)); return true;
  case FieldType::Text:
    record.text =
        record.dependsOn >= 0 ? ReadLine(stream, LengthOf(records, record)) : ReadText(stream);
    record.length = static_cast<int>(record.text.size());
    return true;
  default: break;
  }
  const int length = LengthOf(records, record);
  if (record.dependsOn < 0 && length < 1) {
    std::cout << "Float and Int arrays must have dependency" << std::endl;
    return false;
  }
  record.length = length;
  for (int i = 0; i < length; ++i) { record.numbers.push_back(ReadNumber(stream)); }
  return true;
}

enum class KeyEnd { Found, FileEnded };

KeyEnd ReadKey(std::FILE* stream, char separator, std::string& key) {
  key.clear();
  int c = std::fgetc(stream);
  while (c != EOF && std::isspace(c) != 0) { c = std::fgetc(stream); }
  while (c != EOF && IsPrintable(c) && c != separator) {
    key += static_cast<char>(c);
    if (static_cast<int>(key.size()) >= kMaxKey) { return KeyEnd::FileEnded; }
    c = std::fgetc(stream);
  }
  if (c == EOF) { return KeyEnd::FileEnded; }
  std::ungetc(c, stream);
  while (!key.empty() &&
         (key.back() == separator || std::isspace(static_cast<unsigned char>(key.back())) != 0)) {
    key.pop_back();
  }
  return KeyEnd::Found;
}

void ReportUnknown(std::FILE* stream, const std::string& key) {
  std::cout << "Unknown field = " << key << std::endl;
  std::string rest = ReadLine(stream, kMaxKey);
  if (rest.empty()) { std::cout << "   error getting value." << std::endl; }
  if (!rest.empty() && rest.back() == '\n') { rest.pop_back(); }
  std::cout << "Unknown value = " << rest << std::endl;
}

bool AllRequired(const std::vector<FieldRecord>& records) {
  for (const FieldRecord& record : records) {
    if (!record.required || record.defined) { continue; }
    std::cout << record.name << " required and not defined." << std::endl;
    return false;
  }
  return true;
}

}  // namespace

std::vector<FieldRecord> MetaImageRecords() {
  using T = FieldType;
  constexpr int kNDims = 4;
  const auto record = [](const char* name, T type, bool required = false, int dependsOn = -1,
                         int length = 0) {
    FieldRecord r;
    r.name = name;
    r.type = type;
    r.required = required;
    r.dependsOn = dependsOn;
    r.length = length;
    return r;
  };
  return {record("Comment", T::Text),
          record("HeaderSize", T::Integer),
          record("AcquisitionDate", T::Text),
          record("Modality", T::Text),
          record("NDims", T::Integer, true),
          record("DimSize", T::Integers, true, kNDims),
          record("Min", T::Real),
          record("Max", T::Real),
          record("ImagePosition", T::Reals, false, -1, 3),
          record("ImageOrientation", T::Reals, false, -1, 6),
          record("PatientPosition", T::Reals, false, -1, 3),
          record("SequenceID", T::Reals, false, -1, 4),
          record("ElementSize", T::Reals, false, kNDims),
          record("ElementSpacing", T::Reals, false, kNDims),
          record("ElementType", T::Text, true),
          record("ElementNBits", T::Integer),
          record("ElementByteOrderMSB", T::Text, true),
          record("ElementDataFile", T::Text, true)};
}

bool ReadFields(std::FILE* stream, std::vector<FieldRecord>& records, int stopIndex, bool rewind,
                char separator) {
  for (FieldRecord& record : records) { record.defined = false; }
  if (rewind) { std::fseek(stream, 0, SEEK_SET); }
  std::string key;
  while (ReadKey(stream, separator, key) == KeyEnd::Found) {
    std::size_t found = 0;
    while (found < records.size() && key != records[found].name) { ++found; }
    if (found == records.size()) {
      ReportUnknown(stream, key);
      continue;
    }
    FieldRecord& record = records[found];
    if (record.dependsOn >= 0 && !records[static_cast<std::size_t>(record.dependsOn)].defined) {
      std::cout << key << " defined prior to defining "
                << records[static_cast<std::size_t>(record.dependsOn)].name << std::endl;
      return false;
    }
    if (!ReadValue(stream, records, record, separator)) { return false; }
    record.defined = true;
    if (static_cast<int>(found) == stopIndex) { break; }
  }
  return AllRequired(records);
}
