#include "VoxData/MetaImage.h"

#include "VoxData/MetaImageFiles.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <limits>
#include <memory>
#include <sys/stat.h>
#include <utility>

namespace {

using metaimage::DirectoryOf;
using metaimage::File;
using metaimage::OpenFile;
using metaimage::SizeOf;

enum Record {
  kComment,
  kHeaderSize,
  kDate,
  kModality,
  kNDims,
  kDimSize,
  kMin,
  kMax,
  kPosition,
  kOrientation,
  kPatient,
  kSequence,
  kElementSize,
  kElementSpacing,
  kElementType,
  kElementNBits,
  kMsb,
  kDataFile,
  kRecords
};

struct TypeRow {
  const char* text;
  int bytes;
};

constexpr TypeRow kTypes[] = {
    {"MET_DEFAULT", 0}, {"MET_CHAR", 1}, {"MET_UCHAR", 1}, {"MET_SHORT", 2},  {"MET_USHORT", 2},
    {"MET_INT", 4},     {"MET_UINT", 4}, {"MET_FLOAT", 4}, {"MET_DOUBLE", 8}, {"MET_OTHER", 0}};

constexpr const char* kModalities[] = {"MET_MOD_UNKNOWN", "MET_MOD_MRI", "MET_MOD_MRA",
                                       "MET_MOD_CT",      "MET_MOD_DSA", "MET_MOD_CXR",
                                       "MET_MOD_DRR"};

int WholeNumber(float value) {
  if (std::isnan(value)) { return 0; }
  constexpr float kMost = 2147483520.0F;  // the largest float that an int holds
  return static_cast<int>(std::clamp(value, -kMost, kMost));
}

float FirstNumber(const FieldRecord& record) {
  return record.defined && !record.numbers.empty() ? record.numbers[0] : 0.0F;
}

template <std::size_t N>
void CopyNumbers(const FieldRecord& record, float (&to)[N]) {
  for (std::size_t i = 0; i < N; ++i) {
    to[i] = record.defined && i < record.numbers.size() ? record.numbers[i] : 0.0F;
  }
}

template <std::size_t N>
void CopyText(const std::string& text, char (&to)[N]) {
  std::snprintf(to, N, "%s", text.c_str());
}

}  // namespace

int MET_Bytes(int type) {
  return type >= 0 && type <= MET_OTHER ? kTypes[static_cast<std::size_t>(type)].bytes : 0;
}

const char* MET_TypeText(int type) {
  return kTypes[static_cast<std::size_t>(type >= 0 && type <= MET_OTHER ? type : MET_OTHER)].text;
}

int MET_TypeFromText(const std::string& text) {
  for (int type = 0; type < MET_OTHER; ++type) {
    if (text == MET_TypeText(type)) { return type; }
  }
  return MET_OTHER;
}

int MET_ModalityFromText(const std::string& text) {
  for (int code = 0; code < static_cast<int>(std::size(kModalities)); ++code) {
    if (text == kModalities[static_cast<std::size_t>(code)]) { return code; }
  }
  return 0;
}

void MetaImage::Clear() {
  if (fileOpen != 0) { std::fclose(stream); }
  if (writeOpen != 0) { std::fclose(writeStream); }
  fileOpen = 0;
  writeOpen = 0;
  stream = nullptr;
  writeStream = nullptr;
  std::free(headerBuffer);
  std::free(data);
  headerBuffer = nullptr;
  data = nullptr;
  headerAllocated = 0;
  dataAllocated = 0;
  allocated = 0;
}

void MetaImage::Reset() {
  for (char* text : {errorText, elementDataFile, headerDir, comment, acquisitionDate}) {
    *text = '\0';
  }
  nDims = 0;
  quantity = 0;
  elementType = MET_OTHER;
  elementBytes = 0;
  headerSize = 0;
  modality = 0;
  elementNBits = 0;
  elementMsb = 0;
  minValue = 0.0F;
  maxValue = 0.0F;
  std::fill(std::begin(dimSize), std::end(dimSize), 0);
  std::fill(std::begin(subQuantity), std::end(subQuantity), 0);
  const auto clear = [](auto& numbers) {
    std::fill(std::begin(numbers), std::end(numbers), 0.0F);
  };
  clear(imagePosition);
  clear(imageOrientation);
  clear(patientPosition);
  clear(sequenceId);
  clear(elementSize);
  clear(elementSpacing);
}

bool MetaImage::Fail(const std::string& shown, const std::string& kept) {
  std::cout << shown << std::endl;
  CopyText(kept, errorText);
  return false;
}

bool MetaImage::Read(const char* path, bool readElements) {
  Clear();
  Reset();
  File file = OpenFile(path);
  if (!file) {
    const std::string text = std::string("Error: Cannot open file: ") + path;
    return Fail(text, text);
  }
  stream = file.release();
  fileOpen = 1;
  std::vector<FieldRecord> records = MetaImageRecords();
  if (!ReadFields(stream, records, kDataFile, true, '=')) {
    return Fail(std::string("Error parsing header file: _") + path + "_",
                std::string("Error parsing header file: ") + path);
  }
  CopyText(DirectoryOf(path), headerDir);
  if (!TakeFields(records)) { return false; }
  if (readElements && !ReadElements()) { return false; }
  if (fileOpen != 0) { std::fclose(stream); }
  fileOpen = 0;
  stream = nullptr;
  return true;
}

bool MetaImage::TakeSizes(const std::vector<FieldRecord>& records) {
  const int dimensions = WholeNumber(FirstNumber(records[kNDims]));
  if (dimensions < 0 || dimensions > kMaxDims) {
    const std::string text = "Error: NDims must lie between 0 and 10";
    return Fail(text, text);
  }
  nDims = dimensions;
  std::fill(std::begin(subQuantity), std::end(subQuantity), 1);
  std::int64_t product = 1;
  for (int i = 0; i < nDims; ++i) {
    const auto& sizes = records[kDimSize].numbers;
    const auto at = static_cast<std::size_t>(i);
    dimSize[i] = at < sizes.size() ? WholeNumber(sizes[at]) : 0;
    subQuantity[i] = static_cast<std::int32_t>(product);
    if (dimSize[i] < 0 ||
        (dimSize[i] > 0 && product > std::numeric_limits<std::int32_t>::max() / dimSize[i])) {
      const std::string text = "Error: DimSize makes no volume that memory can hold";
      return Fail(text, text);
    }
    product *= dimSize[i];
  }
  quantity = static_cast<std::int32_t>(product);
  return true;
}

bool MetaImage::TakeFields(const std::vector<FieldRecord>& records) {
  CopyText(records[kComment].defined ? records[kComment].text : "", comment);
  CopyText(records[kDate].defined ? records[kDate].text : "", acquisitionDate);
  if (records[kModality].defined) { modality = MET_ModalityFromText(records[kModality].text); }
  if (!TakeSizes(records)) { return false; }
  headerSize = std::max(WholeNumber(FirstNumber(records[kHeaderSize])), 0);
  minValue = FirstNumber(records[kMin]);
  maxValue = FirstNumber(records[kMax]);
  CopyNumbers(records[kPosition], imagePosition);
  CopyNumbers(records[kOrientation], imageOrientation);
  CopyNumbers(records[kPatient], patientPosition);
  CopyNumbers(records[kSequence], sequenceId);
  CopyNumbers(records[kElementSize], elementSize);
  CopyNumbers(records[kElementSpacing], elementSpacing);
  elementType = records[kElementType].defined ? MET_TypeFromText(records[kElementType].text)
                                              : static_cast<int>(MET_UCHAR);
  elementBytes = MET_Bytes(elementType);
  elementNBits = records[kElementNBits].defined ? WholeNumber(FirstNumber(records[kElementNBits]))
                                                : 8 * elementBytes;
  const std::string& msb = records[kMsb].text;
  const bool isFalse = !msb.empty() && (msb[0] == 'f' || msb[0] == 'F');
  elementMsb = records[kMsb].defined && !isFalse ? 1 : 0;
  CopyText(records[kDataFile].text, elementDataFile);
  return true;
}

bool FillFieldsFromMetaImage(const char* path, RawFields& fields) {
  const std::string name = path;
  const auto endsIn = [&name](const std::string& ending) {
    return name.size() > 2 && name.size() >= ending.size() &&
           name.compare(name.size() - ending.size(), ending.size(), ending) == 0;
  };
  if ((name.size() > 3 && endsIn(".gz")) || endsIn(".Z")) {
    std::cerr << "   unzipping of data not supported" << std::endl;
    return false;
  }
  MetaImage image;
  image.Read(path, true);
  if (image.Error() != nullptr) { return false; }
  for (int axis = 0; axis < 3; ++axis) {
    fields.dims[axis] = image.DimSize(axis);
    fields.spacing[axis] = static_cast<double>(image.ElementSize(axis));
  }
  std::int64_t size = std::int64_t{image.DimSize(0)} * image.DimSize(1) * image.DimSize(2);
  if (image.ElementType() == MET_USHORT) { size *= 2; }
  fields.headerSize = static_cast<double>(SizeOf(name) - size);
  if (image.ElementType() == MET_UCHAR) { fields.bytes = 1.0; }
  if (image.ElementType() == MET_USHORT) { fields.bytes = 2.0; }
  return true;
}
