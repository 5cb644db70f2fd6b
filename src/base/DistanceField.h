// View on the vectors that the distance transform leaves behind.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>

/// The vector from every voxel to its nearest label voxel.
///
/// Shape: dimX * dimY * dimZ elements each, index (z * dimY + y) * dimX + x, with x fastest.
/// Units: those of the voxel size; mask is 1 where the voxel bears the label, else 0.
struct DistanceField {
  std::int32_t* mask = nullptr;
  float* x = nullptr;
  float* y = nullptr;
  float* z = nullptr;
  int dimX = 0;
  int dimY = 0;
  int dimZ = 0;

  std::size_t Index(int ix, int iy, int iz) const {
    return (static_cast<std::size_t>(iz) * static_cast<std::size_t>(dimY) +
            static_cast<std::size_t>(iy)) *
               static_cast<std::size_t>(dimX) +
           static_cast<std::size_t>(ix);
  }
  /// Distance at an element: the double root of (x² + y²) + z², rounded once to 32 bits.
  float Length(std::size_t i) const {
    const double dx = x[i];
    const double dy = y[i];
    const double dz = z[i];
    return static_cast<float>(std::sqrt((dx * dx + dy * dy) + dz * dz));
  }
  float Length(int ix, int iy, int iz) const { return Length(Index(ix, iy, iz)); }
};
