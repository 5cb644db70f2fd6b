// The picking ray: sizes, origin and direction first, the labels behind them.
#include "VoxData/VoxData.h"
#include "fuzz/FuzzInput.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

/// Any double, one near the volume, or a whole number on a voxel boundary.
double Coordinate(fuzz::FuzzInput& input) {
  switch (input.Byte() % 3) {
  case 0: return input.Double();
  case 1: return input.Small(-40, 40) / 2.0;
  default: return input.Int() / 65536.0 / 1024.0;
  }
}

/// The walk told plainly; the axes are 0, 1 and 2.
class PlainRay {
public:
  int voxel[3] = {-7, -7, -7};

  PlainRay(const LabelVolume& labels, const double (&ray)[6])
      : volume(labels), dims{labels.dimX, labels.dimY, labels.dimZ} {
    length = std::sqrt(ray[3] * ray[3] + ray[4] * ray[4] + ray[5] * ray[5]);
    for (int axis = 0; axis < 3; ++axis) {
      position[axis] = ray[axis] + 0.5;
      direction[axis] = ray[3 + axis] / length;
    }
  }

  int Cast() {
    if (length == 0.0) { return -1; }
    int steps = 0;
    for (; !Inside() && steps < 10000; ++steps) {
      for (int axis = 0; axis < 3; ++axis) { position[axis] += direction[axis]; }
    }
    if (steps >= 9999) { return -1; }
    for (; Inside(); Step()) {
      int at[3];
      for (int axis = 0; axis < 3; ++axis) { at[axis] = static_cast<int>(position[axis]); }
      if (volume.voxels[at[0]][at[1]][at[2]] == 0) { continue; }
      std::copy(at, at + 3, voxel);
      return 1;
    }
    return 0;
  }

private:
  bool Inside() const {
    for (int axis = 0; axis < 3; ++axis) {
      if (!(position[axis] >= 0 && position[axis] < dims[axis])) { return false; }
    }
    return true;
  }

  void Step() {
    double own[3] = {};                     // way to the boundary along its axis
    double inX[3] = {9999., 9999., 9999.};  // way in x meanwhile
    for (int axis = 0; axis < 3; ++axis) {
      if (direction[axis] == 0) { continue; }
      const double sign = direction[axis] >= 0 ? 1.0 : -1.0;
      own[axis] = std::trunc(sign + position[axis]) - position[axis];
      inX[axis] = axis == 0 ? own[0] : own[axis] / direction[axis] * direction[0];
    }
    int next = 2;
    if (std::fabs(inX[1]) <= std::fabs(inX[0]) && std::fabs(inX[1]) <= std::fabs(inX[2])) {
      next = 1;
    }
    if (std::fabs(inX[0]) <= std::fabs(inX[1]) && std::fabs(inX[0]) <= std::fabs(inX[2])) {
      next = 0;
    }
    const double time = own[next] / direction[next];
    position[0] += inX[next];
    for (int axis = 1; axis < 3; ++axis) {
      position[axis] += axis == next ? own[axis] : time * direction[axis];
    }
  }

  LabelVolume volume;
  int dims[3];
  double length = 0.0;
  double position[3];
  double direction[3];
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::FuzzInput input(data, size);
  const int dims[3] = {input.Small(1, 12), input.Small(1, 12), input.Small(1, 12)};
  double ray[6];
  for (double& number : ray) { number = Coordinate(input); }
  VoxData volume;
  FUZZ_HOLDS(volume.SetupSlot("", dims[0], dims[1], dims[2], 1, 0, 0, 0, 0, 0) == 1);
  const auto labels = input.Filled(volume.Labels().Count());
  std::size_t next = 0;
  for (int x = 0; x < dims[0]; ++x) {
    for (int y = 0; y < dims[1]; ++y) {
      for (int z = 0; z < dims[2]; ++z) { volume.seg[x][y][z] = labels[next++]; }
    }
  }

  int voxel[3] = {-7, -7, -7};
  const int hit = volume.CastRay(ray[0], ray[1], ray[2], ray[3], ray[4], ray[5], voxel);
  PlainRay expected(volume.Labels(), ray);
  FUZZ_HOLDS(hit == expected.Cast());
  FUZZ_HOLDS(std::equal(voxel, voxel + 3, expected.voxel));
  return 0;
}
