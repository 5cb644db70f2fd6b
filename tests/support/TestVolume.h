// A small label volume for tests: owns its voxels in the pointer-table shape of VoxData.
#pragma once

#include "base/LabelVolume.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

class TestVolume {
public:
  using Voxel = std::array<int, 3>;

  TestVolume(int x, int y, int z)
      : dims{x, y, z}, bytes(Size(x) * Size(y) * Size(z), 0), rows(Size(x) * Size(y)),
        planes(Size(x)) {
    for (std::size_t row = 0; row < rows.size(); ++row) { rows[row] = &bytes[row * Size(z)]; }
    for (std::size_t plane = 0; plane < planes.size(); ++plane) {
      planes[plane] = &rows[plane * Size(y)];
    }
  }

  // The tables point into the object itself.
  TestVolume(const TestVolume&) = delete;
  TestVolume& operator=(const TestVolume&) = delete;

  /// Sets every voxel from corner `low` to corner `high`, both included.
  TestVolume& Fill(Voxel low, Voxel high, std::uint8_t value) {
    for (int x = low[0]; x <= high[0]; ++x) {
      for (int y = low[1]; y <= high[1]; ++y) {
        for (int z = low[2]; z <= high[2]; ++z) { voxel(x, y, z) = value; }
      }
    }
    return *this;
  }
  /// Takes voxels that stand x fastest, then y, then z.
  void FillFrom(const std::uint8_t* xFastest) {
    for (int z = 0; z < dims[2]; ++z) {
      for (int y = 0; y < dims[1]; ++y) {
        for (int x = 0; x < dims[0]; ++x) { voxel(x, y, z) = *xFastest++; }
      }
    }
  }

  std::uint8_t& voxel(int x, int y, int z) {
    return planes[static_cast<std::size_t>(x)][y][static_cast<std::size_t>(z)];
  }
  std::uint8_t At(Voxel v) const { return planes[Size(v[0])][v[1]][v[2]]; }
  LabelVolume Labels() const { return {planes.data(), dims[0], dims[1], dims[2]}; }
  EditVolume Editable() { return {planes.data(), dims[0], dims[1], dims[2]}; }
  WorkVolume Work(float* scalars) { return {planes.data(), scalars, dims[0], dims[1], dims[2]}; }
  /// All bytes, z fastest, for comparing two volumes as a whole.
  const std::vector<std::uint8_t>& Bytes() const { return bytes; }

private:
  static std::size_t Size(int n) { return static_cast<std::size_t>(n); }

  Voxel dims;
  std::vector<std::uint8_t> bytes;
  std::vector<std::uint8_t*> rows;
  std::vector<std::uint8_t**> planes;
};
