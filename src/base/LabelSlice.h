// One slice of a label volume, addressed by picture column and row.
#pragma once

#include "base/LabelVolume.h"

/// Slice directions: the axis that is held fixed.
enum SliceDirection : int { kSliceYZ = 0, kSliceXZ = 1, kSliceXY = 2 };

/// Slice `index` of `volume` along `direction`.
///
/// Shape: At(i, j) with i along the width and j along the height of the picture:
///        direction 2 is voxels[i][j][index], 0 is voxels[index][j][i], 1 is voxels[j][index][i].
/// A pixel outside the volume reads as 0.
struct LabelSlice {
  LabelVolume volume;
  int direction = kSliceXY;
  int index = 0;

  int Width() const { return direction == kSliceXY ? volume.dimX : volume.dimZ; }
  int Height() const { return direction == kSliceXZ ? volume.dimX : volume.dimY; }

  std::uint8_t At(int i, int j) const { return AtSlice(i, j, index); }
  /// The same pixel of another slice of the same direction.
  std::uint8_t AtSlice(int i, int j, int slice) const {
    switch (direction) {
    case kSliceXY: return Voxel(i, j, slice);
    case kSliceYZ: return Voxel(slice, j, i);
    default: return Voxel(j, slice, i);
    }
  }
  bool Bears(int label, int i, int j) const { return At(i, j) == label; }

private:
  std::uint8_t Voxel(int x, int y, int z) const {
    return volume.Contains(x, y, z) ? volume.At(x, y, z) : std::uint8_t{0};
  }
};
