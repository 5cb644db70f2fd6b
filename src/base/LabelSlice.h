// One slice of a label volume, addressed by picture column and row.
#pragma once

#include "base/LabelVolume.h"

#include <algorithm>

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

  /// Writes pixelOf(byte) of a picture of width by height pixels to out[j * width + i], of the byte
  /// 0 outside the volume.
  template <class Pixel, class PixelOf>
  void Read(int width, int height, Pixel* out, PixelOf pixelOf) const {
    std::fill_n(out, static_cast<std::size_t>(width) * static_cast<std::size_t>(height),
                pixelOf(std::uint8_t{0}));
    const int slices[] = {volume.dimX, volume.dimY, volume.dimZ};
    if (index < 0 || index >= slices[direction]) { return; }
    const int rows = std::min(height, Height());
    for (int first = 0; first < rows; first += kStrip) {
      ReadRows(first, std::min(first + kStrip, rows), width, out, pixelOf);
    }
  }

private:
  static constexpr int kStrip = 32;  // rows that stay in the cache while the columns change
  static constexpr int kTileColumns = 64;

  template <class Pixel, class PixelOf>
  void ReadRows(int first, int end, int width, Pixel* out, PixelOf pixelOf) const {
    const int columns = std::min(width, Width());
    const auto row = [&](int j) {
      return out + static_cast<std::size_t>(j) * static_cast<std::size_t>(width);
    };
    if (direction == kSliceXY) {
      std::uint8_t tile[kStrip][kTileColumns];
      for (int left = 0; left < columns; left += kTileColumns) {
        const int count = std::min(kTileColumns, columns - left);
        for (int i = 0; i < count; ++i) {
          const std::uint8_t* const* column = volume.voxels[left + i] + first;
          for (int j = 0; j < end - first; ++j) { tile[j][i] = column[j][index]; }
        }
        for (int j = first; j < end; ++j) {
          std::transform(tile[j - first], tile[j - first] + count, row(j) + left, pixelOf);
        }
      }
    } else {
      for (int j = first; j < end; ++j) {
        const std::uint8_t* run =
            direction == kSliceYZ ? volume.voxels[index][j] : volume.voxels[j][index];
        std::transform(run, run + columns, row(j), pixelOf);
      }
    }
  }
  std::uint8_t Voxel(int x, int y, int z) const {
    return volume.Contains(x, y, z) ? volume.At(x, y, z) : std::uint8_t{0};
  }
};
