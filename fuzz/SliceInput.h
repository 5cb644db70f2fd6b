// Sizes of volumes whose slices are measured, taken from the bytes of an input.
#pragma once

#include "fuzz/FuzzInput.h"

#include <array>

namespace fuzz {

using Dims = std::array<int, 3>;

/// Small mostly; the largest sides meet the edge of the pictures.
inline int DrawSide(FuzzInput& input) {
  constexpr int kLarge[] = {33, 63, 64, 65, 128, 256, 299, 300};
  const int side = input.Byte();
  return side >= 248 ? kLarge[side - 248] : 1 + side % 16;
}

/// At most `most` voxels: the longest side stays, the others give way.
inline Dims DrawDims(FuzzInput& input, int most) {
  Dims dims = {DrawSide(input), DrawSide(input), DrawSide(input)};
  while (dims[0] * dims[1] * dims[2] > most) {
    int* shortest = nullptr;
    for (int& dim : dims) {
      if (dim > 1 && (shortest == nullptr || dim < *shortest)) { shortest = &dim; }
    }
    *shortest /= 2;
  }
  return dims;
}

}  // namespace fuzz
