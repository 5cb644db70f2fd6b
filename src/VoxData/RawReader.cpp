// VoxData: reading raw voxels behind a header.
#include "VoxData/RawSlices.h"
#include "VoxData/VoxData.h"
#include "VoxData/VoxelTable.h"

#include <vtkFloatArray.h>
#include <vtkPointData.h>
#include <vtkStructuredPoints.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <sys/stat.h>
#include <vector>

namespace {

bool EndsIn(const char* path, const char* ending, std::size_t shortest) {
  const std::size_t length = std::strlen(path);
  const std::size_t tail = std::strlen(ending);
  return length >= shortest && length >= tail && std::strcmp(path + length - tail, ending) == 0;
}

bool IsCompressed(const char* path) {
  if (!EndsIn(path, ".gz", 4) && !EndsIn(path, ".Z", 3)) { return false; }
  std::cerr << "   unzipping of data not supported" << std::endl;
  return true;
}

/// `value` cut toward zero, modulo 65536; 0 where a division by an empty range left no number.
std::uint16_t Low16(double value) {
  if (!(value > -9.0e18 && value < 9.0e18)) { return 0; }
  return static_cast<std::uint16_t>(static_cast<std::uint64_t>(static_cast<std::int64_t>(value)));
}

/// Stored value of every source value up to `highest`.
std::vector<std::uint16_t> ScaleTable(std::int64_t min, double scale, int highest) {
  std::vector<std::uint16_t> table(static_cast<std::size_t>(highest) + 1);
  for (int value = 0; value <= highest; ++value) {
    table[static_cast<std::size_t>(value)] = Low16(static_cast<double>(value - min) * scale);
  }
  return table;
}

constexpr double kStoredRange = 65535.0;  // 2^16 - 1

}  // namespace

std::FILE* VoxData::OpenFile(const char* path, const char* mode) {
  struct stat status {};
  // Only a file can be read: opening a pipe would wait for its writer for ever.
  const bool unreadable = mode[0] == 'r' && stat(path, &status) == 0 && !S_ISREG(status.st_mode);
  std::FILE* stream = unreadable ? nullptr : std::fopen(path, mode);
  if (stream == nullptr) {
    std::fprintf(stderr, "ERROR: Cannot open file %s with permission \"%s\"\n", path, mode);
  }
  return stream;
}

int VoxData::RefuseSize() {
  raw::ReportSize(dimX, dimY, dimZ);
  FreeArrays(0);  // none of an earlier volume stays, whose sizes are gone
  FreeArrays(1);
  return -1;
}

int VoxData::ReadGrey(const char* path, int sizeX, int sizeY, int sizeZ, int bytes, int min,
                      int max, int flipX, int flipY, int flipZ, int headerSize) {
  if (IsCompressed(path)) { return -1; }
  const raw::Stream stream(OpenFile(path, "rb"));
  if (!stream) {
    std::cerr << "ALERTE";
    return -1;
  }
  dimX = sizeX;
  dimY = sizeY;
  dimZ = sizeZ;
  SetFileTraversal(flipX, flipY, flipZ);
  if (AllocateArrays(0) != 1 || AllocateArrays(1) != 1) { return RefuseSize(); }
  if (bytes != 1 && bytes != 2) {
    std::cerr << "unsupported image data type" << std::endl;
    return -1;
  }
  raw::SkipHeader(stream.get(), headerSize);
  const raw::Traversal traversal(*this);
  raw::Range range;
  const bool read = bytes == 1
                        ? raw::ReadSlices<std::uint8_t>(stream.get(), traversal, grey, range)
                        : raw::ReadSlices<raw::BigWord>(stream.get(), traversal, grey, range);
  if (!read) { return RefuseSize(); }
  if (max == min && min == 0) {
    min = range.min;
    max = range.max;
  }
  // Where the range is empty the quotient is infinite, and every voxel is stored as 0.
  greyScale = kStoredRange / static_cast<double>(std::int64_t{max} - min);
  const auto table = ScaleTable(min, greyScale, range.max);
  for (int x = 0; x < dimX; ++x) {
    for (int y = 0; y < traversal.rows; ++y) {
      std::uint16_t* run = grey[x][y];
      for (int z = 0; z < dimZ; ++z) { run[z] = table[run[z]]; }
    }
  }
  return 1;
}

int VoxData::ReadSeg(const char* path, int headerSize) {
  std::fill(std::begin(labelPresent), std::end(labelPresent), std::uint8_t{0});
  if (dimX < 1 || dimY < 1 || dimZ < 1 || seg == nullptr) {
    std::cerr << "grey data not read in yet." << std::endl;
    return -1;
  }
  if (IsCompressed(path)) { return -1; }
  const raw::Stream stream(OpenFile(path, "r"));
  if (!stream) { return -1; }
  raw::SkipHeader(stream.get(), headerSize);
  InitLabels();
  const raw::Traversal traversal(*this);
  auto* scalars = static_cast<float*>(std::calloc(Labels().Count(), sizeof(float)));
  if (scalars == nullptr) { return -1; }
  voxels::PreferLargePages(scalars, Labels().Count() * sizeof(float));
  if (!raw::ReadLabels(stream.get(), traversal, seg, scalars, labelPresent)) {
    std::free(scalars);
    return -1;
  }
  for (int label = 0; label < 256; ++label) {
    if (labelPresent[label] == 0) { continue; }
    if (labels[label].defined == 0) { ++labelCount; }
    labels[label].defined = 1;
  }
  vtkFloatArray* twin = vtkFloatArray::New();
  twin->SetArray(scalars, static_cast<vtkIdType>(Labels().Count()), 0,
                 vtkFloatArray::VTK_DATA_ARRAY_FREE);
  image->GetPointData()->SetScalars(twin);
  twin->Delete();
  return 1;
}

int VoxData::SetupSlot(const char* /*path*/, int sizeX, int sizeY, int sizeZ, int /*bytes*/,
                       int min, int max, int flipX, int flipY, int flipZ) {
  dimX = sizeX;
  dimY = sizeY;
  dimZ = sizeZ;
  SetFileTraversal(flipX, flipY, flipZ);
  if (AllocateArrays(1) != 1) {
    grey = nullptr;  // the one that was borrowed is of other sizes
    return RefuseSize();
  }
  if (max == min && min == 0) {
    // ON PURPOSE: the start values of the search for the range stand in for the range itself, so
    // further slots have a scale of their own, -0.65535.
    min = 100000;
    max = 0;
  }
  greyScale = kStoredRange / static_cast<double>(std::int64_t{max} - min);
  return 1;
}
