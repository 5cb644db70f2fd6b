#include "VoxData/RawSlices.h"

#include <cstring>
#include <iostream>

namespace raw {

namespace {

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
      std::uint64_t eight = 0;
      if (column + 8 <= to.dimX) {
        std::memcpy(&eight, labels + column, 8);
        if (eight == 0) {  // most of a segmentation is background
          present[0] = 1;
          column += 8;
          continue;
        }
      }
      const int end = std::min(column + 8, to.dimX);
      for (; column < end; ++column) {
        present[labels[column]] = 1;
        if (labels[column] != 0) { line[to.X(column)] = 255.0F; }
      }
    }
  }
}

}  // namespace

void SkipHeader(std::FILE* stream, int headerSize) {
  std::fseek(stream, std::max(headerSize, 0), SEEK_SET);
}

void ReportSize(int dimX, int dimY, int dimZ) {
  std::cerr << "No volume of " << dimX << " x " << dimY << " x " << dimZ
            << " voxels can be held in memory." << std::endl;
}

void ReadLabels(std::FILE* stream, const Traversal& to, std::uint8_t* const* const* array,
                float* scalars, std::uint8_t* present) {
  SliceBlock<std::uint8_t> block(to);
  for (int first = 0; first < to.dimZ; first += block.Slices()) {
    const int count = std::min(block.Slices(), to.dimZ - first);
    block.Read(stream, first, count);
    for (int slice = 0; slice < count; ++slice) {
      const int z = to.flipZ ? to.dimZ - 1 - (first + slice) : first + slice;
      MarkSlice(block.Slice(slice), to, z, scalars, present);
    }
    Spread(block, to, first, count, array);
  }
}

}  // namespace raw
