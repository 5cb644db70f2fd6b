// The distance transform as plain loops in the order in which it is told, one voxel at a time.
//
// The reference for the tests and for the benchmark's ratios.
#pragma once

#include "base/DistanceField.h"
#include "base/LabelVolume.h"
#include "view3d/volumemeasures/DistanceTransform.h"

#include <algorithm>
#include <cstddef>

namespace plain {

/// One volume being swept; the index of the voxel is advanced from voxel to voxel.
class DistanceTransform {
public:
  DistanceTransform(const DistanceField& arrays, const measure::VoxelSize& voxel)
      : mask(arrays.mask), vx(arrays.x), vy(arrays.y), vz(arrays.z), dimX(arrays.dimX),
        dimY(arrays.dimY), dimZ(arrays.dimZ), row(arrays.dimX),
        plane(static_cast<std::ptrdiff_t>(arrays.dimX) * arrays.dimY), size(voxel) {}

  void Run(const LabelVolume& image, int label) {
    FillMask(image, label);
    FillStart();
    for (int z = 1; z < dimZ; ++z) { SweepPlane(z, -plane, -size.z); }
    for (int z = dimZ - 2; z >= 0; --z) { SweepPlane(z, plane, size.z); }
  }

private:
  static double Squared(float x, float y, float z) {
    const double dx = x;
    const double dy = y;
    const double dz = z;
    return (dx * dx + dy * dy) + dz * dz;
  }

  void FillMask(const LabelVolume& image, int label) {
    for (int x = 0; x < dimX; ++x) {
      for (int y = 0; y < dimY; ++y) {
        for (int z = 0; z < dimZ; ++z) {
          mask[z * plane + y * row + x] = image.voxels[x][y][z] == label ? 1 : 0;
        }
      }
    }
  }

  void FillStart() {
    const auto far = static_cast<float>(4 * std::max({dimX, dimY, dimZ}));
    for (std::ptrdiff_t i = 0; i < dimZ * plane; ++i) {
      const float start = mask[i] == 1 ? 0.0F : far;
      vx[i] = start;
      vy[i] = start;
      vz[i] = start;
    }
  }

  void SweepPlane(int z, std::ptrdiff_t source, float d) {
    const std::ptrdiff_t first = z * plane;
    FromPlane(first, source, d);
    for (int y = 1; y < dimY; ++y) { SweepRow(first + y * row, -row, -size.y); }
    for (int y = dimY - 2; y >= 0; --y) { SweepRow(first + y * row, row, size.y); }
  }

  void FromPlane(std::ptrdiff_t first, std::ptrdiff_t source, float d) {
    std::ptrdiff_t i = first;
    for (int y = 0; y < dimY; ++y) {
      for (int x = 0; x < dimX; ++x, ++i) {
        double held = Squared(vx[i], vy[i], vz[i]);
        const std::ptrdiff_t s = i + source;
        Try(i, held, s, 0.0F, 0.0F, d);
        if (y > 0) { Try(i, held, s - row, 0.0F, -size.y, d); }
        if (y < dimY - 1) { Try(i, held, s + row, 0.0F, size.y, d); }
        if (x > 0) { Try(i, held, s - 1, -size.x, 0.0F, d); }
        if (x < dimX - 1) { Try(i, held, s + 1, size.x, 0.0F, d); }
      }
    }
  }

  void SweepRow(std::ptrdiff_t first, std::ptrdiff_t source, float dy) {
    std::ptrdiff_t i = first;
    for (int x = 0; x < dimX; ++x, ++i) {
      double held = Squared(vx[i], vy[i], vz[i]);
      const std::ptrdiff_t s = i + source;
      Try(i, held, s, 0.0F, dy, 0.0F);
      if (x > 0) { Try(i, held, s - 1, -size.x, dy, 0.0F); }
      if (x < dimX - 1) { Try(i, held, s + 1, size.x, dy, 0.0F); }
    }
    i = first + 1;
    for (int x = 1; x < dimX; ++x, ++i) {
      double held = Squared(vx[i], vy[i], vz[i]);
      Try(i, held, i - 1, -size.x, 0.0F, 0.0F);
    }
    i = first + dimX - 2;
    for (int x = dimX - 2; x >= 0; --x, --i) {
      double held = Squared(vx[i], vy[i], vz[i]);
      Try(i, held, i + 1, size.x, 0.0F, 0.0F);
    }
  }

  void Try(std::ptrdiff_t i, double& held, std::ptrdiff_t q, float a, float b, float c) {
    const float x = vx[q] + a;
    const float y = vy[q] + b;
    const float z = vz[q] + c;
    const double squared = Squared(x, y, z);
    if (squared < held) {
      vx[i] = x;
      vy[i] = y;
      vz[i] = z;
      held = squared;
    }
  }

  std::int32_t* mask;
  float* vx;
  float* vy;
  float* vz;
  int dimX;
  int dimY;
  int dimZ;
  std::ptrdiff_t row;
  std::ptrdiff_t plane;
  measure::VoxelSize size;
};

inline void ComputeDistanceTransform(const LabelVolume& image, int label,
                                     const measure::VoxelSize& size, const DistanceField& field) {
  DistanceTransform(field, size).Run(image, label);
}

}  // namespace plain
