#include "view3d/volumemeasures/Shell.h"

namespace measure {

namespace {

/// The saved run of a column and those of its four neighbours; null outside the volume.
struct Runs {
  const std::int32_t* own;
  const std::int32_t* beside[4];

  Runs(SavedLabels saved, const EditVolume& image, int x, int y)
      : own(saved[x][y]), beside{x > 0 ? saved[x - 1][y] : nullptr,
                                 x < image.dimX - 1 ? saved[x + 1][y] : nullptr,
                                 y > 0 ? saved[x][y - 1] : nullptr,
                                 y < image.dimY - 1 ? saved[x][y + 1] : nullptr} {}
};

template <class Counts>
bool IsSurface(const Runs& runs, int z, int lastZ, Counts counts) {
  if (z == 0 || z == lastZ || counts(runs.own[z + 1]) || counts(runs.own[z - 1])) { return true; }
  for (const std::int32_t* run : runs.beside) {
    if (run == nullptr || counts(run[z])) { return true; }
  }
  return false;
}

template <class Counts>
void ReduceColumn(const Runs& runs, int label, int dimZ, Counts counts, std::uint8_t* column) {
  for (int z = 0; z < dimZ; ++z) {
    const bool stays = runs.own[z] == label && IsSurface(runs, z, dimZ - 1, counts);
    column[z] = stays ? static_cast<std::uint8_t>(label) : std::uint8_t{0};
  }
}

}  // namespace

void SaveLabels(const LabelVolume& image, SavedLabels saved, Progress& progress) {
  for (int x = 0; x < image.dimX; ++x) {
    for (int y = 0; y < image.dimY; ++y) {
      const std::uint8_t* column = image.voxels[x][y];
      for (int z = 0; z < image.dimZ; ++z) { saved[x][y][z] = column[z]; }
    }
    progress.Step();
  }
}

void ReduceToShell(SavedLabels saved, int label, ShellRule rule, const EditVolume& image,
                   Progress& progress) {
  for (int x = 0; x < image.dimX; ++x) {
    for (int y = 0; y < image.dimY; ++y) {
      const Runs runs(saved, image, x, y);
      std::uint8_t* column = image.voxels[x][y];
      if (rule == ShellRule::OtherValue) {
        ReduceColumn(
            runs, label, image.dimZ, [label](int value) { return value != label; }, column);
      } else {
        ReduceColumn(
            runs, label, image.dimZ, [](int value) { return value == 0; }, column);
      }
    }
    progress.Step();
  }
}

void RestoreLabels(SavedLabels saved, const EditVolume& image, Progress& progress) {
  for (int x = 0; x < image.dimX; ++x) {
    for (int y = 0; y < image.dimY; ++y) {
      std::uint8_t* column = image.voxels[x][y];
      for (int z = 0; z < image.dimZ; ++z) {
        column[z] = static_cast<std::uint8_t>(saved[x][y][z]);
      }
    }
    progress.Step();
  }
}

}  // namespace measure
