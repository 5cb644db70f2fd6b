#include "view3d/volumemeasures/VolumeOverlap.h"

#include <algorithm>

namespace measure {

namespace {

// Planes of z are painted a few at a time: labels lie along z in memory, scalars along x.
constexpr int kTile = 16;

OverlapClass Classify(bool inA, bool inB) {
  if (inA && inB) { return OverlapClass::Both; }
  if (inA) { return OverlapClass::OnlyA; }
  return inB ? OverlapClass::OnlyB : OverlapClass::Neither;
}

int DivisorOf(const VolumeOverlap& overlap, OverlapDivisor divisor) {
  const auto& [onlyA, onlyB, common] = overlap;
  switch (divisor) {
  case OverlapDivisor::Average:
    // ON PURPOSE: an odd sum is truncated before the ratio is formed.
    return (onlyA + 2 * common + onlyB) / 2;
  case OverlapDivisor::Union: return common + onlyB + onlyA;
  case OverlapDivisor::FirstImage: return onlyA + common;
  }
  return 0;
}

/// Visits every voxel in tiles of z, then x, then y, and steps once for each plane of a tile.
template <class Visit>
void ForEachVoxel(const LabelVolume& a, Progress& progress, Visit visit) {
  for (int z0 = 0; z0 < a.dimZ; z0 += kTile) {
    const int z1 = std::min(z0 + kTile, a.dimZ);
    for (int y = 0; y < a.dimY; ++y) {
      for (int x0 = 0; x0 < a.dimX; x0 += kTile) {
        const int x1 = std::min(x0 + kTile, a.dimX);
        for (int x = x0; x < x1; ++x) {
          for (int z = z0; z < z1; ++z) { visit(x, y, z); }
        }
      }
    }
    for (int z = z0; z < z1; ++z) { progress.Step(); }
  }
}

}  // namespace

VolumeOverlap CountOverlap(const LabelVolume& a, const LabelVolume& b, int label,
                           Progress& progress) {
  VolumeOverlap overlap;
  const auto wanted = static_cast<std::uint8_t>(label);
  const int lastX = label == wanted ? a.dimX : 0;  // no voxel bears a label that is no byte
  for (int x = 0; x < lastX; ++x) {
    for (int y = 0; y < a.dimY; ++y) {
      const std::uint8_t* runA = a.voxels[x][y];
      const std::uint8_t* runB = b.voxels[x][y];
      int inA = 0;
      int inB = 0;
      int both = 0;
      for (int z = 0; z < a.dimZ; ++z) {
        const int bearsA = runA[z] == wanted ? 1 : 0;
        const int bearsB = runB[z] == wanted ? 1 : 0;
        inA += bearsA;
        inB += bearsB;
        both += bearsA & bearsB;
      }
      overlap.onlyA += inA - both;
      overlap.onlyB += inB - both;
      overlap.common += both;
    }
  }
  for (int z = 0; z < a.dimZ; ++z) { progress.Step(); }
  return overlap;
}

VolumeOverlap PaintOverlap(const LabelVolume& a, const LabelVolume& b, int label,
                           const WorkVolume& picture, Progress& progress) {
  VolumeOverlap overlap;
  ForEachVoxel(a, progress, [&](int x, int y, int z) {
    const OverlapClass where = Classify(a.Bears(label, x, y, z), b.Bears(label, x, y, z));
    picture.Set(x, y, z, static_cast<std::uint8_t>(where));
    overlap.onlyA += where == OverlapClass::OnlyA ? 1 : 0;
    overlap.onlyB += where == OverlapClass::OnlyB ? 1 : 0;
    overlap.common += where == OverlapClass::Both ? 1 : 0;
  });
  return overlap;
}

void PaintRegions(const LabelVolume& a, const LabelVolume& b, int label, const WorkVolume& pictureA,
                  const WorkVolume& pictureB, const WorkVolume& pictureBoth, Progress& progress) {
  const auto value = [](bool in, OverlapClass where) {
    return in ? static_cast<std::uint8_t>(where) : std::uint8_t{0};
  };
  ForEachVoxel(a, progress, [&](int x, int y, int z) {
    const bool inA = a.Bears(label, x, y, z);
    const bool inB = b.Bears(label, x, y, z);
    pictureA.Set(x, y, z, value(inA, OverlapClass::OnlyA));
    pictureB.Set(x, y, z, value(inB, OverlapClass::OnlyB));
    pictureBoth.Set(x, y, z, value(inA && inB, OverlapClass::Both));
  });
}

std::optional<double> OverlapRatio(const VolumeOverlap& overlap, OverlapDivisor divisor) {
  const int quantity = DivisorOf(overlap, divisor);
  if (quantity == 0) { return std::nullopt; }
  return static_cast<double>(overlap.common) / quantity;
}

}  // namespace measure
