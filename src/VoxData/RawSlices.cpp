#include "VoxData/RawSlices.h"

#include <cstring>
#include <iostream>

namespace raw {

namespace {

/// Eight labels at once where they are all the same, as nearly everywhere in a segmentation.
/// Returns false where they differ.
bool MarkEight(std::uint64_t eight, float* line, std::uint8_t* present) {
  const std::uint64_t label = eight & 0xFFU;
  if (eight != label * 0x0101010101010101ULL) { return false; }
  present[label] = 1;
  if (label != 0) { std::fill_n(line, 8, 255.0F); }
  return true;
}

/// The twin of one file slice: only labels other than 0 are written.
void MarkSlice(const std::uint8_t* voxels, const Traversal& to, int z, float* scalars,
               std::uint8_t* present) {
  for (int row = 0; row < to.rows; ++row) {
    const std::uint8_t* labels =
        voxels + static_cast<std::size_t>(row) * static_cast<std::size_t>(to.dimX);
    float* line = scalars + (static_cast<std::size_t>(z) * static_cast<std::size_t>(to.dimY) +
                             static_cast<std::size_t>(to.Y(row))) *
                                static_cast<std::size_t>(to.dimX);
    int column = 0;
    while (column < to.dimX) {
      const int end = std::min(column + 8, to.dimX);
      if (end == column + 8) {
        std::uint64_t eight = 0;
        std::memcpy(&eight, labels + column, 8);
        float* first = line + (to.flipX ? to.dimX - end : column);
        if (MarkEight(eight, first, present)) {
          column = end;
          continue;
        }
      }
      for (; column < end; ++column) {
        present[labels[column]] = 1;
        if (labels[column] != 0) { line[to.X(column)] = 255.0F; }
      }
    }
  }
}

}  // namespace

#ifdef __SSE2__

Tiled RowTiles<BigWord, std::uint16_t>::Spread(const BigWord* const* slices, std::size_t rowStart,
                                               int column0, int columnEnd, int count,
                                               std::uint16_t* const* runs) {
  const Tiled tiled{(columnEnd - column0) / 8 * 8, count / 8 * 8};
  if (tiled.slices == 0) { return {}; }
  for (int c = 0; c < tiled.columns; c += 8) {
    for (int k = 0; k < tiled.slices; k += 8) {
      const void* from[8];
      std::uint16_t* into[8];
      for (int i = 0; i < 8; ++i) {
        from[i] = slices[k + i];
        into[i] = runs[c + i] + k;
      }
      TransposeWords(from, rowStart + static_cast<std::size_t>(column0 + c), into, seen);
      any = true;
    }
  }
  return tiled;
}

void RowTiles<BigWord, std::uint16_t>::Widen(Range& range) const {
  if (!any) { return; }
  range = {std::min(range.min, seen.Min()), std::max(range.max, seen.Max())};
}

Tiled RowTiles<std::uint8_t, std::uint8_t>::Spread(const std::uint8_t* const* slices,
                                                   std::size_t rowStart, int column0, int columnEnd,
                                                   int count, std::uint8_t* const* runs) {
  const Tiled tiled{(columnEnd - column0) / 16 * 16, count / 16 * 16};
  if (tiled.slices == 0) { return {}; }
  for (int c = 0; c < tiled.columns; c += 16) {
    for (int k = 0; k < tiled.slices; k += 16) {
      const void* from[16];
      std::uint8_t* into[16];
      for (int i = 0; i < 16; ++i) {
        from[i] = slices[k + i];
        into[i] = runs[c + i] + k;
      }
      TransposeBytes(from, rowStart + static_cast<std::size_t>(column0 + c), into);
    }
  }
  return tiled;
}

#endif

void SkipHeader(std::FILE* stream, int headerSize) {
  std::fseek(stream, std::max(headerSize, 0), SEEK_SET);
}

void ReportSize(int dimX, int dimY, int dimZ) {
  std::cerr << "No volume of " << dimX << " x " << dimY << " x " << dimZ
            << " voxels can be held in memory." << std::endl;
}

bool ReadLabels(std::FILE* stream, const Traversal& to, std::uint8_t* const* const* array,
                float* scalars, std::uint8_t* present) {
  SliceBlock<std::uint8_t> block(to);
  if (!block.Ready()) { return false; }
  Range range;  // of no use for labels
  for (int first = 0; first < to.dimZ; first += block.Slices()) {
    const int count = std::min(block.Slices(), to.dimZ - first);
    block.Read(stream, first, count);
    for (int slice = 0; slice < count; ++slice) {
      const int z = to.flipZ ? to.dimZ - 1 - (first + slice) : first + slice;
      MarkSlice(block.Slice(slice), to, z, scalars, present);
    }
    Spread(block, to, first, count, array, range);
  }
  return true;
}

}  // namespace raw
