// The picking ray: sizes, origin and direction first, the labels behind them.
#include "VoxData/VoxData.h"
#include "fuzz/FuzzInput.h"

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
  FUZZ_HOLDS(hit == 1 || hit == 0 || hit == -1);
  if (hit != 1) {
    FUZZ_HOLDS(voxel[0] == -7 && voxel[1] == -7 && voxel[2] == -7);
    return 0;
  }
  std::uint8_t label = 0;
  FUZZ_HOLDS(volume.GetSegVoxel(voxel[0], voxel[1], voxel[2], label) == 1 && label != 0);
  return 0;
}
