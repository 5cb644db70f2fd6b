#include "view3d/volumemeasures/Shell.h"

#include <algorithm>
#include <cstring>

namespace measure {

namespace {

constexpr int kChunk = 16;  // voxels along z that are treated together

using Labels = std::int32_t __attribute__((vector_size(16)));
using FourBytes = std::uint8_t __attribute__((vector_size(4)));
using Longs = std::uint64_t __attribute__((vector_size(16)));

/// The saved run of a column and those of its four neighbours. Outside the volume lies a run that
/// counts as other than any label, and as background.
struct Runs {
  const std::int32_t* own;
  const std::int32_t* beside[4];
};

/// Whether a neighbour makes a label voxel a surface voxel.
template <ShellRule rule>
bool Opens(std::int32_t neighbour, std::int32_t label) {
  return rule == ShellRule::OtherValue ? neighbour != label : neighbour == 0;
}

Labels Load(const std::int32_t* from) {
  Labels labels;
  std::memcpy(&labels, from, sizeof labels);
  return labels;
}

/// -1 where a label is `value`, else 0.
Labels Equal(const std::int32_t* from, std::int32_t value) {
  return Load(from) == (Labels{} + value);
}

/// Whether 16 saved labels hold `label`.
bool Holds(const std::int32_t* from, std::int32_t label) {
  const auto found = reinterpret_cast<Longs>(Equal(from, label) | Equal(from + 4, label) |
                                             Equal(from + 8, label) | Equal(from + 12, label));
  return (found[0] | found[1]) != 0;
}

/// The shell of four voxels whose neighbours along z are voxels too.
template <ShellRule rule>
Labels ShellOfFour(const Runs& runs, int z, std::int32_t label) {
  const std::int32_t* const neighbours[6] = {runs.own + z - 1,   runs.own + z + 1,
                                             runs.beside[0] + z, runs.beside[1] + z,
                                             runs.beside[2] + z, runs.beside[3] + z};
  const auto opens = [&](int i) {
    return rule == ShellRule::OtherValue ? ~Equal(neighbours[i], label) : Equal(neighbours[i], 0);
  };
  return Equal(runs.own + z, label) &
         (opens(0) | opens(1) | opens(2) | opens(3) | opens(4) | opens(5)) & (Labels{} + label);
}

template <ShellRule rule>
void ReduceChunk(const Runs& runs, int z, std::int32_t label, std::uint8_t* to) {
  if (!Holds(runs.own + z, label)) {
    std::memset(to, 0, kChunk);
    return;
  }
  for (int i = 0; i < kChunk; i += 4) {
    const auto shell = __builtin_convertvector(ShellOfFour<rule>(runs, z + i, label), FourBytes);
    std::memcpy(to + i, &shell, sizeof shell);
  }
}

template <ShellRule rule>
void ReduceColumn(const Runs& runs, std::int32_t label, int dimZ, std::uint8_t* column) {
  const auto reduceVoxel = [&](int z) {
    bool open = z == 0 || z == dimZ - 1 || Opens<rule>(runs.own[z - 1], label) ||
                Opens<rule>(runs.own[z + 1], label);
    for (const std::int32_t* run : runs.beside) { open = open || Opens<rule>(run[z], label); }
    column[z] = static_cast<std::uint8_t>(runs.own[z] == label && open ? label : 0);
  };
  int z = 0;
  for (; z < std::min(1, dimZ); ++z) { reduceVoxel(z); }
  for (; z + kChunk < dimZ; z += kChunk) { ReduceChunk<rule>(runs, z, label, column + z); }
  if (z > 1 && z < dimZ - 1) {
    // The rest of a column is the end of a chunk that begins in the one before.
    z = dimZ - 1 - kChunk;
    ReduceChunk<rule>(runs, z, label, column + z);
    z += kChunk;
  }
  for (; z < dimZ; ++z) { reduceVoxel(z); }
}

template <ShellRule rule>
void ReduceAll(SavedLabels saved, std::int32_t label, const EditVolume& image, Progress& progress) {
  std::int32_t outside[kMaxMeasuredSide];
  std::fill_n(outside, kMaxMeasuredSide, rule == ShellRule::OtherValue && label == 0 ? 1 : 0);
  for (int x = 0; x < image.dimX; ++x) {
    for (int y = 0; y < image.dimY; ++y) {
      const Runs runs = {
          saved[x][y],
          {x > 0 ? saved[x - 1][y] : outside, x < image.dimX - 1 ? saved[x + 1][y] : outside,
           y > 0 ? saved[x][y - 1] : outside, y < image.dimY - 1 ? saved[x][y + 1] : outside}};
      ReduceColumn<rule>(runs, label, image.dimZ, image.voxels[x][y]);
    }
    progress.Step();
  }
}

}  // namespace

void SaveLabels(const LabelVolume& image, SavedLabels saved, Progress& progress) {
  for (int x = 0; x < image.dimX; ++x) {
    for (int y = 0; y < image.dimY; ++y) {
      const std::uint8_t* column = image.voxels[x][y];
      int z = 0;
      for (; z + kChunk <= image.dimZ; z += kChunk) {
        for (int i = z; i < z + kChunk; i += 4) {
          FourBytes bytes;
          std::memcpy(&bytes, column + i, sizeof bytes);
          const auto labels = __builtin_convertvector(bytes, Labels);
          std::memcpy(saved[x][y] + i, &labels, sizeof labels);
        }
      }
      for (; z < image.dimZ; ++z) { saved[x][y][z] = column[z]; }
    }
    progress.Step();
  }
}

void ReduceToShell(SavedLabels saved, int label, ShellRule rule, const EditVolume& image,
                   Progress& progress) {
  if (rule == ShellRule::OtherValue) {
    ReduceAll<ShellRule::OtherValue>(saved, label, image, progress);
  } else {
    ReduceAll<ShellRule::ZeroNeighbour>(saved, label, image, progress);
  }
}

void RestoreLabels(SavedLabels saved, const EditVolume& image, Progress& progress) {
  for (int x = 0; x < image.dimX; ++x) {
    for (int y = 0; y < image.dimY; ++y) {
      std::uint8_t* column = image.voxels[x][y];
      int z = 0;
      for (; z + kChunk <= image.dimZ; z += kChunk) {
        std::int32_t labels[kChunk];
        std::uint8_t bytes[kChunk];
        std::memcpy(labels, saved[x][y] + z, sizeof labels);
        for (int i = 0; i < kChunk; ++i) { bytes[i] = static_cast<std::uint8_t>(labels[i]); }
        std::memcpy(column + z, bytes, sizeof bytes);
      }
      for (; z < image.dimZ; ++z) { column[z] = static_cast<std::uint8_t>(saved[x][y][z]); }
    }
    progress.Step();
  }
}

}  // namespace measure
