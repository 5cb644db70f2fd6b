// VoxData: single voxels and planes.
#include "VoxData/VoxData.h"

namespace {

/// Writes the plane `index` of `array` in the order of its axis; -1 for another axis, an index
/// outside the volume, or an array that is not there.
template <class Voxel>
int CopyPlane(Voxel* const* const* array, const LabelVolume& shape, int axis, int index,
              Voxel* out) {
  const int sizes[3] = {shape.dimX, shape.dimY, shape.dimZ};
  if (array == nullptr || axis < 0 || axis > 2 || index < 0 || index >= sizes[axis]) { return -1; }
  if (axis == 0) {
    for (int y = 0; y < shape.dimY; ++y) {
      for (int z = 0; z < shape.dimZ; ++z) { *out++ = array[index][y][z]; }
    }
  } else if (axis == 1) {
    for (int x = 0; x < shape.dimX; ++x) {
      for (int z = 0; z < shape.dimZ; ++z) { *out++ = array[x][index][z]; }
    }
  } else {
    for (int y = 0; y < shape.dimY; ++y) {
      for (int x = 0; x < shape.dimX; ++x) { *out++ = array[x][y][index]; }
    }
  }
  return 1;
}

}  // namespace

int VoxData::GetGreyVoxel(int x, int y, int z, std::uint16_t& value) const {
  if (grey == nullptr || !Labels().Contains(x, y, z)) { return -1; }
  value = grey[x][y][z];
  return 1;
}

int VoxData::GetSegVoxel(int x, int y, int z, std::uint8_t& value) const {
  if (seg == nullptr || !Labels().Contains(x, y, z)) { return -1; }
  value = seg[x][y][z];
  return 1;
}

int VoxData::GetGreySlice(int axis, int index, std::uint16_t* out) const {
  return CopyPlane<std::uint16_t>(grey, Labels(), axis, index, out);
}

int VoxData::GetSegSlice(int axis, int index, std::uint8_t* out) const {
  return CopyPlane<std::uint8_t>(seg, Labels(), axis, index, out);
}
