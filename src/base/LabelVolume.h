// Views on the voxels of an image slot: shape and access, no ownership, no VTK.
#pragma once

#include <cstddef>
#include <cstdint>

/// The labels of one image slot, for reading: voxels[x][y][z], one byte each.
///
/// Shape: the pointer tables of VoxData; only z is contiguous. Indices are not checked.
struct LabelVolume {
  const std::uint8_t* const* const* voxels = nullptr;
  int dimX = 0;
  int dimY = 0;
  int dimZ = 0;

  std::uint8_t At(int x, int y, int z) const { return voxels[x][y][z]; }
  bool Bears(int label, int x, int y, int z) const { return voxels[x][y][z] == label; }
  bool Contains(int x, int y, int z) const {
    return x >= 0 && x < dimX && y >= 0 && y < dimY && z >= 0 && z < dimZ;
  }
  bool SameSize(const LabelVolume& other) const {
    return dimX == other.dimX && dimY == other.dimY && dimZ == other.dimZ;
  }
  std::size_t Count() const {
    return static_cast<std::size_t>(dimX) * static_cast<std::size_t>(dimY) *
           static_cast<std::size_t>(dimZ);
  }
};

/// The labels of one image slot, for writing; the same shape.
struct EditVolume {
  std::uint8_t* const* const* voxels = nullptr;
  int dimX = 0;
  int dimY = 0;
  int dimZ = 0;

  void Set(int x, int y, int z, std::uint8_t value) const { voxels[x][y][z] = value; }
  LabelVolume Labels() const { return {voxels, dimX, dimY, dimZ}; }
};

/// A work volume that a measure paints.
///
/// Shape: colours[x][y][z] as above; scalars[(dimY * z + y) * dimX + x], with x fastest.
/// Units: colour values 64 red, 128 green, 192 blue, 0 outside; scalars 0 or 255.
struct WorkVolume {
  std::uint8_t* const* const* colours = nullptr;
  float* scalars = nullptr;
  int dimX = 0;
  int dimY = 0;
  int dimZ = 0;
  bool scalarsAreZero = false;  ///< known before a picture is painted, which then adds no zeros

  /// The same, with scalars that were made of zeros and that nothing has been painted in.
  WorkVolume WithNewScalars() const {
    WorkVolume fresh = *this;
    fresh.scalarsAreZero = true;
    return fresh;
  }
  std::size_t Index(int x, int y, int z) const {
    return (static_cast<std::size_t>(dimY) * static_cast<std::size_t>(z) +
            static_cast<std::size_t>(y)) *
               static_cast<std::size_t>(dimX) +
           static_cast<std::size_t>(x);
  }
  /// Colour and scalar of one voxel.
  void Set(int x, int y, int z, std::uint8_t colour) const {
    colours[x][y][z] = colour;
    scalars[Index(x, y, z)] = colour != 0 ? 255.0F : 0.0F;
  }
  /// The colour alone; the scalar, and with it the surface, stays.
  void SetColour(int x, int y, int z, std::uint8_t colour) const { colours[x][y][z] = colour; }
};
