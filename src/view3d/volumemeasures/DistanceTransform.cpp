#include "view3d/volumemeasures/DistanceTransform.h"

#include <algorithm>

namespace measure {

namespace {

constexpr int kStartFactor = 4;  // start distance in voxels, times the longest axis

/// Squared length in double, in the one order that all paths share.
double Squared(float x, float y, float z) {
  const double dx = x;
  const double dy = y;
  const double dz = z;
  return (dx * dx + dy * dy) + dz * dz;
}

class Sweep {
public:
  Sweep(const DistanceField& arrays, const VoxelSize& voxel) : field(arrays), size(voxel) {}

  /// From the neighbouring plane: five tries at each voxel.
  void FromPlane(int z, int source, float dz) const {
    for (int y = 0; y < field.dimY; ++y) {
      for (int x = 0; x < field.dimX; ++x) {
        Target target = At(x, y, z);
        Try(target, field.Index(x, y, source), 0.0F, 0.0F, dz);
        if (y > 0) { Try(target, field.Index(x, y - 1, source), 0.0F, -size.y, dz); }
        if (y < field.dimY - 1) { Try(target, field.Index(x, y + 1, source), 0.0F, size.y, dz); }
        if (x > 0) { Try(target, field.Index(x - 1, y, source), -size.x, 0.0F, dz); }
        if (x < field.dimX - 1) { Try(target, field.Index(x + 1, y, source), size.x, 0.0F, dz); }
      }
    }
  }

  void DownPlane(int z) const {
    for (int y = 1; y < field.dimY; ++y) { OnRow(y, y - 1, -size.y, z); }
  }
  void UpPlane(int z) const {
    for (int y = field.dimY - 2; y >= 0; --y) { OnRow(y, y + 1, size.y, z); }
  }

private:
  struct Target {
    std::size_t index;
    double squared;
  };

  Target At(int x, int y, int z) const {
    const std::size_t i = field.Index(x, y, z);
    return {i, Squared(field.x[i], field.y[i], field.z[i])};
  }

  void Try(Target& target, std::size_t from, float dx, float dy, float dz) const {
    const float x = field.x[from] + dx;
    const float y = field.y[from] + dy;
    const float z = field.z[from] + dz;
    const double squared = Squared(x, y, z);
    if (squared < target.squared) {
      field.x[target.index] = x;
      field.y[target.index] = y;
      field.z[target.index] = z;
      target.squared = squared;
    }
  }

  void OnRow(int y, int source, float dy, int z) const {
    for (int x = 0; x < field.dimX; ++x) {
      Target target = At(x, y, z);
      Try(target, field.Index(x, source, z), 0.0F, dy, 0.0F);
      if (x > 0) { Try(target, field.Index(x - 1, source, z), -size.x, dy, 0.0F); }
      if (x < field.dimX - 1) { Try(target, field.Index(x + 1, source, z), size.x, dy, 0.0F); }
    }
    for (int x = 1; x < field.dimX; ++x) {
      Target target = At(x, y, z);
      Try(target, target.index - 1, -size.x, 0.0F, 0.0F);
    }
    for (int x = field.dimX - 2; x >= 0; --x) {
      Target target = At(x, y, z);
      Try(target, target.index + 1, size.x, 0.0F, 0.0F);
    }
  }

  const DistanceField& field;
  const VoxelSize& size;
};

void FillMask(const LabelVolume& image, int label, const DistanceField& field, Progress& progress) {
  for (int x = 0; x < field.dimX; ++x) {
    for (int y = 0; y < field.dimY; ++y) {
      for (int z = 0; z < field.dimZ; ++z) {
        field.mask[field.Index(x, y, z)] = image.Bears(label, x, y, z) ? 1 : 0;
      }
    }
    progress.Step();
  }
}

void StartVectors(const DistanceField& field) {
  const auto far =
      static_cast<float>(kStartFactor * std::max({field.dimX, field.dimY, field.dimZ}));
  const std::size_t count = static_cast<std::size_t>(field.dimX) *
                            static_cast<std::size_t>(field.dimY) *
                            static_cast<std::size_t>(field.dimZ);
  for (std::size_t i = 0; i < count; ++i) {
    const float start = field.mask[i] != 0 ? 0.0F : far;
    field.x[i] = start;
    field.y[i] = start;
    field.z[i] = start;
  }
}

}  // namespace

void ComputeDistanceTransform(const LabelVolume& image, int label, const VoxelSize& size,
                              const DistanceField& field, Progress& progress) {
  FillMask(image, label, field, progress);
  StartVectors(field);
  const Sweep sweep(field, size);
  progress.Print("starting forward scan");
  progress.ShowMessage("Starting forward scan");
  for (int z = 1; z < field.dimZ; ++z) {
    progress.Step();
    sweep.FromPlane(z, z - 1, -size.z);
    sweep.DownPlane(z);
    sweep.UpPlane(z);
  }
  progress.Print("starting backward scan");
  for (int z = field.dimZ - 2; z >= 0; --z) {
    progress.Step();
    sweep.FromPlane(z, z + 1, size.z);
    sweep.DownPlane(z);
    sweep.UpPlane(z);
  }
}

}  // namespace measure
