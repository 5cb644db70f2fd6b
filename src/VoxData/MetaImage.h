// Reads MetaImage volumes: a text header of "Name = value" lines, then element data.
#pragma once

#include "VoxData/FieldRecord.h"
#include "VoxData/RawFields.h"

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

enum MetElementType : std::int32_t {
  MET_DEFAULT = 0,
  MET_CHAR = 1,
  MET_UCHAR = 2,
  MET_SHORT = 3,
  MET_USHORT = 4,
  MET_INT = 5,
  MET_UINT = 6,
  MET_FLOAT = 7,
  MET_DOUBLE = 8,
  MET_OTHER = 9,
};

class MetaImage {
public:
  static constexpr int kMaxDims = 10;

  char errorText[800] = {};
  char elementDataFile[800] = {};
  char headerDir[800] = {};
  std::uint8_t dataAllocated = 0;
  std::uint8_t fileOpen = 0;
  std::FILE* stream = nullptr;
  std::uint8_t writeOpen = 0;
  std::FILE* writeStream = nullptr;
  std::int32_t nDims = 0;
  std::int32_t dimSize[kMaxDims] = {};
  std::int32_t quantity = 0;
  std::int32_t subQuantity[kMaxDims] = {};
  std::int32_t elementType = MET_OTHER;
  std::int32_t elementBytes = 0;
  void* data = nullptr;  ///< Elements() elements
  std::int32_t headerSize = 0;
  void* headerBuffer = nullptr;
  std::uint8_t headerAllocated = 0;
  char comment[800] = {};
  char acquisitionDate[800] = {};
  std::int32_t modality = 0;
  float imagePosition[3] = {};
  float imageOrientation[6] = {};
  float patientPosition[3] = {};
  float sequenceId[4] = {};
  std::int32_t elementNBits = 0;
  std::uint8_t elementMsb = 0;
  float minValue = 0.0F;
  float maxValue = 0.0F;
  float elementSize[kMaxDims] = {};
  float elementSpacing[kMaxDims] = {};

  MetaImage() = default;
  MetaImage(const MetaImage&) = delete;
  MetaImage& operator=(const MetaImage&) = delete;
  ~MetaImage() { Clear(); }

  void Clear();
  /// Reads the header and, if wanted, the elements. Returns whether all went well; else the words
  /// stand in errorText and on standard output. The file has to be writable.
  bool Read(const char* path, bool readElements);
  const char* Error() const { return errorText[0] != '\0' ? errorText : nullptr; }
  /// Elements in `data`: `quantity`, or fewer where the files hold fewer.
  std::int64_t Elements() const { return allocated; }
  int DimSize(int i) const { return i >= 0 && i < nDims && i < kMaxDims ? dimSize[i] : 0; }
  float ElementSize(int i) const { return i >= 0 && i < kMaxDims ? elementSize[i] : 0.0F; }
  int ElementType(int newType = 0) {
    if (newType != 0) { elementType = newType; }
    return elementType;
  }

private:
  void Reset();
  bool Fail(const std::string& shown, const std::string& kept);
  bool TakeFields(const std::vector<FieldRecord>& records);
  bool TakeSizes(const std::vector<FieldRecord>& records);
  bool ReadElements();
  bool ReadLocal();
  bool ReadDataFile(const std::string& name);
  bool ReadSlices(const std::string& folder, const std::string& name);
  bool ReadOneFile(const std::string& name, std::int64_t first, std::int64_t count);
  /// Elements `first` to `first + count - 1`, behind the header bytes of `file`.
  void ReadData(std::int64_t first, std::int64_t count, std::FILE* file);
  void FixByteOrder();
  /// How many elements that many bytes of a file hold, its header bytes among them.
  std::int64_t ElementsIn(std::int64_t bytes) const;
  /// Room for what the files hold, whatever the header claims, but no more than `quantity`.
  bool Allocate(std::int64_t held);

  std::int64_t allocated = 0;  ///< elements that `data` has room for
};

/// Zeroed array of `count` elements of a type; null, with a line on standard output, where
/// the memory of the machine does not hold it.
void* MI_Alloc(int type, std::int64_t count);
/// Size of one element; 0 for a type that has none.
int MET_Bytes(int type);
const char* MET_TypeText(int type);
int MET_TypeFromText(const std::string& text);
int MET_ModalityFromText(const std::string& text);

/// Parses up to and including the record `stopIndex`. Returns false where a required key is
/// missing or a length is not known; the words are on standard output.
bool ReadFields(std::FILE* stream, std::vector<FieldRecord>& records, int stopIndex, bool rewind,
                char separator);

/// Records of a MetaImage header in their order.
std::vector<FieldRecord> MetaImageRecords();

/// Copies what a MetaImage file gives into `fields`; false, with the fields unchanged, on failure.
bool FillFieldsFromMetaImage(const char* path, RawFields& fields);
