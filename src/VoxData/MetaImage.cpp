#include "VoxData/MetaImage.h"

#include "VoxData/VoxData.h"

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

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

/// A file to read, opened as for writing too; null for what is no file, which could block.
File OpenFile(const std::string& name) {
  struct stat status {};
  if (stat(name.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) { return nullptr; }
  return File(std::fopen(name.c_str(), "r+b"));
}

std::int64_t SizeOf(const std::string& name) {
  struct stat status {};
  return stat(name.c_str(), &status) == 0 && S_ISREG(status.st_mode) ? status.st_size : 0;
}

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

std::string DirectoryOf(const std::string& path) {
  const std::size_t at = path.find_last_of("/\\");
  return at == std::string::npos ? std::string() : path.substr(0, at + 1);
}

/// `pattern` with its one whole-number conversion replaced by `number`; false for any other use
/// of "%". Flags and widths up to two digits are followed, so that slices sort.
bool Expand(const std::string& pattern, int number, std::string& name) {
  const std::size_t percent = pattern.find('%');
  std::size_t end = percent + 1;
  while (end < pattern.size() && std::strchr("0-+ #123456789", pattern[end]) != nullptr &&
         end - percent <= 4) {
    ++end;
  }
  const bool converts = end < pattern.size() && std::strchr("diu", pattern[end]) != nullptr;
  if (!converts || pattern.find('%', end) != std::string::npos) { return false; }
  std::string flags;
  int width = 0;
  for (std::size_t i = percent + 1; i < end; ++i) {
    if (std::isdigit(static_cast<unsigned char>(pattern[i])) != 0 &&
        (pattern[i] != '0' || width > 0)) {
      width = width * 10 + (pattern[i] - '0');
    } else {
      flags += pattern[i];
    }
  }
  std::string digits = std::to_string(number);
  const bool left = flags.find('-') != std::string::npos;
  const char fill = !left && flags.find('0') != std::string::npos ? '0' : ' ';
  while (static_cast<int>(digits.size()) < std::min(width, 99)) {
    digits = left ? digits + " " : fill + digits;
  }
  name = pattern.substr(0, percent) + digits + pattern.substr(end + 1);
  return true;
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

void* MI_Alloc(int type, std::int64_t count) {
  const std::int64_t bytes = std::max<std::int64_t>(MET_Bytes(type), 0);
  void* array = nullptr;
  if (count >= 0 && (bytes == 0 || count <= std::numeric_limits<std::int64_t>::max() / bytes)) {
    array = std::calloc(static_cast<std::size_t>(std::max<std::int64_t>(count * bytes, 1)), 1);
  }
  if (array == nullptr) {
    std::cout << "ERROR: MI_Alloc(" << MET_TypeText(type) << ", " << count << ") returned NULL"
              << std::endl;
  }
  return array;
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
  std::fill(std::begin(dimSize), std::end(dimSize), 0);
  std::fill(std::begin(subQuantity), std::end(subQuantity), 0);
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
  nDims = WholeNumber(FirstNumber(records[kNDims]));
  if (nDims < 0 || nDims > kMaxDims) {
    const std::string text = "Error: NDims must lie between 0 and 10";
    return Fail(text, text);
  }
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
  elementMsb = !records[kMsb].defined || msb.empty() || msb[0] == 'f' || msb[0] == 'F' ? 0 : 1;
  if (records[kMsb].defined && msb.empty()) { elementMsb = 1; }
  CopyText(records[kDataFile].text, elementDataFile);
  return true;
}

std::int64_t MetaImage::BytesThatFilesHold() const {
  if (std::strcmp(elementDataFile, "LOCAL") == 0) {
    struct stat status {};
    return fstat(fileno(stream), &status) == 0 ? status.st_size : 0;
  }
  const std::string name = elementDataFile;
  if (name.find('%') != std::string::npos) {
    return std::numeric_limits<std::int64_t>::max();  // slices are checked one by one
  }
  return SizeOf(DirectoryOf(name).empty() ? headerDir + name : name);
}

bool MetaImage::ReadElements() {
  // No more memory than the files can fill, whatever the header claims.
  const std::int64_t wanted = std::int64_t{quantity} * elementBytes;
  const bool pattern = std::strchr(elementDataFile, '%') != nullptr;
  constexpr std::int64_t kMostForPattern = std::int64_t{1} << 31;
  const bool fits = pattern ? wanted <= kMostForPattern : true;
  const std::int64_t held = BytesThatFilesHold();
  const bool whole = pattern || elementBytes == 0 || wanted <= held;
  const std::int64_t elements = whole ? quantity : held / elementBytes + 1;
  data = fits ? MI_Alloc(elementType, elements) : nullptr;
  if (data == nullptr) {
    const std::string text = "Error: Cannot allocate memory for image data";
    return Fail(text, text);
  }
  dataAllocated = 1;
  allocated = elements;
  bool read = false;
  if (std::strcmp(elementDataFile, "LOCAL") == 0) {
    ReadData(data, elements, quantity, stream);
    read = true;
  } else {
    const std::string own = elementDataFile;
    const std::string name = DirectoryOf(own).empty() ? headerDir + own : own;
    read = pattern ? ReadPattern(name) : ReadOneFile(name, 0, elements, quantity);
  }
  if (read) { FixByteOrder(); }
  return read;
}

bool MetaImage::ReadPattern(const std::string& pattern) {
  std::string name;
  if (nDims < 1 || !Expand(pattern, 0, name)) {
    const std::string text = "Error: the element data file needs one whole number: ";
    return Fail(text + pattern, text + pattern);
  }
  const int start = OpenFile(name) ? 0 : 1;
  const int slices = dimSize[nDims - 1];
  const std::int64_t each = nDims > 1 ? std::int64_t{dimSize[0]} * dimSize[1] : dimSize[0];
  for (int i = 0; i < slices; ++i) {
    if (each * (i + 1) > quantity) { break; }
    Expand(pattern, start + i, name);
    if (!ReadOneFile(name, static_cast<std::size_t>(each * i * elementBytes), each, each)) {
      return false;
    }
  }
  return true;
}

bool MetaImage::ReadOneFile(const std::string& name, std::size_t at, std::int64_t elements,
                            std::int64_t wanted) {
  const File file = OpenFile(name);
  if (!file) {
    return Fail("Error: Cannot open element data file: _" + name + "_",
                "Error: cannot open element data file: " + name);
  }
  // ON PURPOSE: a short file leaves its words and goes on.
  ReadData(static_cast<char*>(data) + at, elements, wanted, file.get());
  return true;
}

void MetaImage::ReadData(void* buffer, std::int64_t room, std::int64_t wanted, std::FILE* file) {
  if (headerSize > 0) {
    std::int64_t skipped = 0;
    char chunk[4096];
    while (skipped < headerSize) {
      const auto most = std::min<std::int64_t>(headerSize - skipped, sizeof chunk);
      const std::size_t got = std::fread(chunk, 1, static_cast<std::size_t>(most), file);
      skipped += static_cast<std::int64_t>(got);
      if (static_cast<std::int64_t>(got) < most) { break; }
    }
    if (skipped < headerSize) {
      const std::string read = "Error: read header " + std::to_string(skipped);
      Fail(read + " but expecting " + std::to_string(headerSize),
           read + " but expected " + std::to_string(headerSize));
      return;
    }
  }
  const std::size_t got = elementBytes > 0
                              ? std::fread(buffer, static_cast<std::size_t>(elementBytes),
                                           static_cast<std::size_t>(room), file)
                              : 0;
  if (static_cast<std::int64_t>(got) == wanted) { return; }
  const std::string read = "Error: read " + std::to_string(got);
  Fail(read + " but expecting " + std::to_string(wanted),
       read + " but expected " + std::to_string(wanted));
}

void MetaImage::FixByteOrder() {
  if (elementMsb == 0) { return; }
  auto* bytes = static_cast<std::uint8_t*>(data);
  const std::int64_t total = std::min(std::int64_t{quantity}, allocated) * elementBytes;
  if (elementBytes == 2 || elementBytes == 4) {
    // ON PURPOSE: of four bytes the two halves stay in place.
    for (std::int64_t i = 0; i + 1 < total; i += 2) { std::swap(bytes[i], bytes[i + 1]); }
  }
  elementMsb = 0;
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
