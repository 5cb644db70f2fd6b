#include "view3d/SurfaceColours.h"

#include <algorithm>

namespace surface {

namespace {

constexpr double kOutsideEveryVolume = 1e9;

/// Rises from 0 at 0 to 1 at 64 and falls back to 0 at 128; never below 0.
float Hump(float t) { return std::max(t * t * -0.000244140625F + t * 0.03125F, 0.0F); }

std::uint8_t ColourAt(const LabelVolume& work, int x, int y, int z) {
  return work.Contains(x, y, z) ? work.At(x, y, z) : std::uint8_t{0};
}

}  // namespace

void FillColorTable(float (&table)[256][3]) {
  for (int value = 0; value < 256; ++value) {
    for (int channel = 0; channel < 3; ++channel) {
      table[value][channel] = Hump(static_cast<float>(value - 64 * channel));
    }
  }
}

int VoxelAt(double coordinate) {
  const double moved = coordinate + 0.5;
  const bool fits = moved > -kOutsideEveryVolume && moved < kOutsideEveryVolume;
  return static_cast<int>(fits ? moved : -kOutsideEveryVolume);
}

std::uint8_t ColourNear(const LabelVolume& work, const int* voxel) {
  constexpr int kLook[7][3] = {{0, 0, 0},  {1, 0, 0}, {-1, 0, 0}, {0, 1, 0},
                               {0, -1, 0}, {0, 0, 1}, {0, 0, -1}};
  for (const auto& step : kLook) {
    const std::uint8_t colour =
        ColourAt(work, voxel[0] + step[0], voxel[1] + step[1], voxel[2] + step[2]);
    if (colour != 0) { return colour; }
  }
  return 0;
}

}  // namespace surface
