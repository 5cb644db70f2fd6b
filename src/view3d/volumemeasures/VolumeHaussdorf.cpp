#include "view3d/volumemeasures/VolumeHaussdorf.h"

#include "base/ColourValues.h"

namespace measure {

namespace {

constexpr std::uint8_t kSurface = 50;  // any value but 0: it only puts the voxel into the scalars
constexpr std::uint8_t kMark = 1;
constexpr double kColourRange = 140.0;

VoxelIndex MarkBeside(const LabelVolume& image, int label, int x, int y, int z) {
  constexpr int kLook[4][2] = {{-1, 0}, {1, 0}, {0, -1}, {0, 1}};
  for (const auto& step : kLook) {
    const int nx = x + step[0];
    const int ny = y + step[1];
    if (!image.Contains(nx, ny, z) || !image.Bears(label, nx, ny, z)) { return {nx, ny, z}; }
  }
  return {x, y, z};
}

int DivisorOf(float distance) { return distance == 0.0F ? 1 : static_cast<int>(distance); }

}  // namespace

float LargestDistance(const LabelVolume& image, int label, const DistanceField& field, int firstX,
                      int lastX, Progress& progress) {
  float largest = 0.0F;
  for (int x = firstX; x <= lastX; ++x) {
    for (int y = 0; y < image.dimY; ++y) {
      for (int z = 0; z < image.dimZ; ++z) {
        if (!image.Bears(label, x, y, z)) { continue; }
        const float distance = field.Length(x, y, z);
        if (largest < distance) { largest = distance; }
      }
    }
    progress.Step();
  }
  return largest;
}

FarVoxel FindFarVoxel(const LabelVolume& image, int label, const DistanceField& field,
                      Progress& progress) {
  FarVoxel far;
  for (int x = 0; x < image.dimX; ++x) {
    for (int y = 0; y < image.dimY; ++y) {
      for (int z = 0; z < image.dimZ; ++z) {
        if (!image.Bears(label, x, y, z)) { continue; }
        const float distance = field.Length(x, y, z);
        if (far.distance < distance) { far = {distance, MarkBeside(image, label, x, y, z)}; }
      }
    }
    progress.Step();
  }
  return far;
}

void PaintDistances(const LabelVolume& image, int label, const DistanceField& field,
                    const FarVoxel& far, const WorkVolume& picture) {
  const double divisor = DivisorOf(far.distance);
  for (int x = 0; x < image.dimX; ++x) {
    for (int y = 0; y < image.dimY; ++y) {
      for (int z = 0; z < image.dimZ; ++z) {
        if (image.Bears(label, x, y, z)) { picture.Set(x, y, z, kSurface); }
        const double distance = field.Length(x, y, z);
        picture.SetColour(x, y, z, LowByte(kBlue - distance * kColourRange / divisor));
      }
    }
  }
  const VoxelIndex& mark = far.mark;
  if (image.Contains(mark.x, mark.y, mark.z)) { picture.Set(mark.x, mark.y, mark.z, kMark); }
}

}  // namespace measure
