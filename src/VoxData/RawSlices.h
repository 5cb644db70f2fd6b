// Raw voxels from a file into [x][y][z] tables: x is fastest in the file, z in memory.
#pragma once

#include "VoxData/Transpose.h"
#include "VoxData/VoxData.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>

namespace raw {

struct CloseFile {
  void operator()(std::FILE* stream) const { std::fclose(stream); }
};
using Stream = std::unique_ptr<std::FILE, CloseFile>;

/// A 16-bit voxel as it stands in a file: most significant byte first.
struct BigWord {
  std::uint8_t high;
  std::uint8_t low;
};

inline std::uint16_t ValueOf(std::uint8_t voxel) { return voxel; }
inline std::uint16_t ValueOf(BigWord voxel) {
  return static_cast<std::uint16_t>(voxel.high << 8U | voxel.low);
}

/// Smallest and largest value that was read.
struct Range {
  int min = 100000;
  int max = 0;
};

/// Where the voxels of the file go: the loop bounds of a volume.
struct Traversal {
  int dimX, dimY, dimZ;
  bool flipX, flipY, flipZ;
  int rows;  ///< rows of a slice that are filled; never more than the array has

  explicit Traversal(const VoxData& volume)
      : dimX(volume.dimX), dimY(volume.dimY), dimZ(volume.dimZ), flipX(volume.loopStep[0] < 0),
        flipY(volume.loopStep[1] < 0), flipZ(volume.loopStep[2] < 0),
        rows(flipY ? dimY : std::min(volume.loopEnd[1], dimY)) {}

  int X(int column) const { return flipX ? dimX - 1 - column : column; }
  int Y(int row) const { return flipY ? dimY - 1 - row : row; }
  std::size_t SliceVoxels() const {
    return static_cast<std::size_t>(dimX) * static_cast<std::size_t>(dimY);
  }
};

/// Moves to the voxels; a header that is longer than the file leaves nothing to read.
void SkipHeader(std::FILE* stream, int headerSize);

/// One line on the error stream about sizes that make no volume.
void ReportSize(int dimX, int dimY, int dimZ);

/// Some slices at a time, so that a run along z is written a whole cache line at once.
///
/// A slice that the file does not fill keeps what the slice before it held, the first one zeros.
template <class FileVoxel>
class SliceBlock {
public:
  static constexpr int kMostSlices = 64 / static_cast<int>(sizeof(FileVoxel));  // a cache line
  static constexpr std::size_t kMostBytes = std::size_t{64} << 20U;

  explicit SliceBlock(const Traversal& to)
      : sliceVoxels(to.SliceVoxels()),
        slices(static_cast<int>(
            std::clamp<std::size_t>(kMostBytes / (sliceVoxels * sizeof(FileVoxel)), 1,
                                    static_cast<std::size_t>(std::min(kMostSlices, to.dimZ))))),
        voxels(new (std::nothrow) FileVoxel[sliceVoxels * static_cast<std::size_t>(slices)]) {
    if (!Ready()) { return; }
    std::memset(static_cast<void*>(voxels.get()), 0, sliceVoxels * sizeof(FileVoxel));
  }

  bool Ready() const { return voxels != nullptr; }  ///< false without memory for it
  int Slices() const { return slices; }             ///< how many it holds at a time

  /// Reads slices `first` to `first + count - 1` of the file.
  void Read(std::FILE* stream, int first, int count) {
    for (int slice = 0; slice < count; ++slice) {
      FileVoxel* into = Slice(slice);
      const std::size_t bytes = std::fread(into, 1, sliceVoxels * sizeof(FileVoxel), stream);
      if (bytes == sliceVoxels * sizeof(FileVoxel) || first + slice == 0) { continue; }
      const FileVoxel* before = Slice(slice > 0 ? slice - 1 : lastCount - 1);
      KeepTail(into, before, bytes);
    }
    lastCount = count;
  }
  FileVoxel* Slice(int slice) {
    return voxels.get() + static_cast<std::size_t>(slice) * sliceVoxels;
  }

private:
  void KeepTail(FileVoxel* into, const FileVoxel* before, std::size_t bytes) {
    if (into == before) { return; }
    auto* to = reinterpret_cast<std::uint8_t*>(into);
    const auto* from = reinterpret_cast<const std::uint8_t*>(before);
    std::copy(from + bytes, from + sliceVoxels * sizeof(FileVoxel), to + bytes);
  }

  std::size_t sliceVoxels;
  int slices;
  std::unique_ptr<FileVoxel[]> voxels;
  int lastCount = 1;
};

/// Whole registers of one row: `done` columns and `slicesDone` slices went into the runs.
struct Tiled {
  int columns = 0;
  int slices = 0;
};

/// What spreads the tiles of a row; the general form leaves everything to single voxels.
template <class FileVoxel, class Voxel>
struct RowTiles {
  Tiled Spread(const FileVoxel* const* /*slices*/, std::size_t /*rowStart*/, int /*column0*/,
               int /*columnEnd*/, int /*count*/, Voxel* const* /*runs*/) {
    return {};
  }
  void Widen(Range& /*range*/) const {}
};

#ifdef __SSE2__
template <>
struct RowTiles<BigWord, std::uint16_t> {
  Tiled Spread(const BigWord* const* slices, std::size_t rowStart, int column0, int columnEnd,
               int count, std::uint16_t* const* runs);
  void Widen(Range& range) const;
  WordRange seen;
  bool any = false;
};

template <>
struct RowTiles<std::uint8_t, std::uint8_t> {
  Tiled Spread(const std::uint8_t* const* slices, std::size_t rowStart, int column0, int columnEnd,
               int count, std::uint8_t* const* runs);
  void Widen(Range& /*range*/) const {}
};
#endif

/// Spreads `count` slices, the first of them file slice `first`, over the runs along z, and widens
/// `range` by every voxel.
template <class FileVoxel, class Voxel>
void Spread(SliceBlock<FileVoxel>& block, const Traversal& to, int first, int count,
            Voxel* const* const* array, Range& range) {
  constexpr int kColumns = 32;  // a block of columns stays in the cache while rows go by
  const FileVoxel* slices[SliceBlock<FileVoxel>::kMostSlices];
  for (int k = 0; k < count; ++k) {
    // In the order of memory: the last slice of a flipped block comes first.
    slices[k] = block.Slice(to.flipZ ? count - 1 - k : k);
  }
  RowTiles<FileVoxel, Voxel> tiles;
  const int z0 = to.flipZ ? to.dimZ - first - count : first;
  for (int column0 = 0; column0 < to.dimX; column0 += kColumns) {
    const int columnEnd = std::min(column0 + kColumns, to.dimX);
    for (int row = 0; row < to.rows; ++row) {
      const std::size_t rowStart =
          static_cast<std::size_t>(row) * static_cast<std::size_t>(to.dimX);
      Voxel* runs[kColumns];
      for (int column = column0; column < columnEnd; ++column) {
        runs[column - column0] = array[to.X(column)][to.Y(row)] + z0;
      }
      const Tiled tiled = tiles.Spread(slices, rowStart, column0, columnEnd, count, runs);
      for (int column = column0; column < columnEnd; ++column) {
        Voxel* run = runs[column - column0];
        const std::size_t at = rowStart + static_cast<std::size_t>(column);
        for (int k = column - column0 < tiled.columns ? tiled.slices : 0; k < count; ++k) {
          const int value = ValueOf(slices[k][at]);
          range = {std::min(range.min, value), std::max(range.max, value)};
          run[k] = static_cast<Voxel>(value);
        }
      }
    }
  }
  tiles.Widen(range);
}

/// Reads all slices into `array` and widens `range` by every voxel that lands in it. Returns false,
/// with nothing read, without memory for a slice.
template <class FileVoxel>
bool ReadSlices(std::FILE* stream, const Traversal& to, std::uint16_t* const* const* array,
                Range& range) {
  SliceBlock<FileVoxel> block(to);
  if (!block.Ready()) { return false; }
  for (int first = 0; first < to.dimZ; first += block.Slices()) {
    const int count = std::min(block.Slices(), to.dimZ - first);
    block.Read(stream, first, count);
    Spread(block, to, first, count, array, range);
  }
  return true;
}

/// Reads labels; `scalars` gets 255 where a label is not 0, `present` a 1 for each value found.
///
/// Shape: scalars hold zeros before, x fastest, then y, then z. Returns false, with nothing read,
/// without memory for a slice.
bool ReadLabels(std::FILE* stream, const Traversal& to, std::uint8_t* const* const* array,
                float* scalars, std::uint8_t* present);

}  // namespace raw
