// The voxels on the surface of a label region, found 16 at a time.
//
// Internal to the volume measures.
#pragma once

#include "base/LabelVolume.h"
#include "view3d/volumemeasures/VoxelBlocks.h"

#include <algorithm>
#include <cstdint>

namespace measure {

/// Calls visit(i) for each byte of `mask` that is set, in ascending order.
template <class Visit>
void ForEachSet(Bytes mask, Visit visit) {
  const auto halves = reinterpret_cast<Longs>(mask);
  for (int half = 0; half < 2; ++half) {
    for (std::uint64_t rest = halves[half]; rest != 0;) {
      const int byte = __builtin_ctzll(rest) / 8;
      visit(half * 8 + byte);
      rest &= ~(std::uint64_t{0xFF} << (byte * 8));
    }
  }
}

/// Calls visit(z), z ascending, for each voxel of a column that bears the label and has a neighbour
/// of value 0.
///
/// Shape: the column lies inside the volume, and its two ends are left out. ON PURPOSE: another
///        label beside a voxel makes no surface.
template <class Visit>
void ForEachSurfaceVoxelOfColumn(const LabelVolume& image, int label, int x, int y, Visit visit) {
  const LabelTest wanted(label);
  const LabelTest background(0);
  const std::uint8_t* own = image.voxels[x][y];
  const std::uint8_t* const neighbours[6] = {own + 1,
                                             own - 1,
                                             image.voxels[x - 1][y],
                                             image.voxels[x + 1][y],
                                             image.voxels[x][y - 1],
                                             image.voxels[x][y + 1]};
  for (int z = 1; z <= image.dimZ - 2; z += kBlock) {
    const int count = std::min(kBlock, image.dimZ - 1 - z);
    const auto mask = [&](const LabelTest& test, const std::uint8_t* run) {
      return count == kBlock ? test.Run(run + z) : test.Run(run + z, count);
    };
    const Bytes region = mask(wanted, own);
    if (!Any(region)) { continue; }
    Bytes open = {};
    for (const std::uint8_t* run : neighbours) { open |= mask(background, run); }
    ForEachSet(region & open, [&](int i) { visit(z + i); });
  }
}

/// The same for each column of the volume but the outermost ones: calls visit(x, y, z), x outer, z
/// inner.
template <class Visit>
void ForEachSurfaceVoxel(const LabelVolume& image, int label, Visit visit) {
  for (int x = 1; x <= image.dimX - 2; ++x) {
    for (int y = 1; y <= image.dimY - 2; ++y) {
      ForEachSurfaceVoxelOfColumn(image, label, x, y, [&](int z) { visit(x, y, z); });
    }
  }
}

}  // namespace measure
