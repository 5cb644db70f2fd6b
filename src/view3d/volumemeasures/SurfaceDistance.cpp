#include "view3d/volumemeasures/SurfaceDistance.h"

#include "base/ColourValues.h"
#include "view3d/volumemeasures/DistanceRows.h"
#include "view3d/volumemeasures/SurfaceVoxels.h"
#include "view3d/volumemeasures/VoxelBlocks.h"

namespace measure {

namespace {

constexpr double kColourRange = 64.0;  // colour values from the surface to the farthest voxel
constexpr int kOutside = 0;            // side of A where its mask is clear
constexpr int kInside = 1;

void Keep(float distance, FloatList& side, FloatList& all) {
  side.Append(distance);
  all.Append(distance);
}

/// Colours the picture by the side of A that a voxel lies on; with the surface of `b` too unless
/// it is null.
void PaintSides(const LabelVolume& a, const LabelVolume* b, int label, const DistanceField& field,
                const DistanceShades& shades, const WorkVolume& picture, Progress& progress) {
  const LabelTest test(label);
  Slab slab;
  const auto paint = [&](const SlabPlace& at) {
    if (b != nullptr) {
      slab.LoadMask(*b, test, at);
      slab.Turn(at);
      StoreScalars(picture, at, slab);
    }
    slab.LoadMask(a, test, at);
    slab.Turn(at);
    ShadeSlab(field, at, shades, slab);
    StoreColours(picture, at, slab);
  };
  ForEachSlab(a, 0, a.dimX - 1, paint, [&](int planes) {
    for (int step = 0; step < planes; ++step) { progress.Step(); }
  });
}

}  // namespace

SurfaceDistance SumAlongSurface(const LabelVolume& a, const LabelVolume& b, int label,
                                const DistanceField& field, DistanceLists* lists,
                                Progress& progress) {
  SurfaceDistance distance;
  // ON PURPOSE: the outermost layer of B is left out on all six sides, and another label beside a
  // voxel makes it no surface voxel of B, while it does make one of A.
  for (int x = 1; x <= b.dimX - 2; ++x) {
    for (int y = 1; y <= b.dimY - 2; ++y) {
      ForEachSurfaceVoxelOfColumn(b, label, x, y, [&](int z) {
        const float d = field.Length(x, y, z);
        const bool inside = a.Bears(label, x, y, z);
        (inside ? distance.inside : distance.outside).Add(d);
        if (lists != nullptr) { Keep(d, inside ? lists->inside : lists->outside, lists->all); }
      });
    }
    progress.Step();
  }
  return distance;
}

void PaintSignedDistance(const LabelVolume& a, const LabelVolume& b, int label,
                         const DistanceField& field, const SurfaceDistance& distance,
                         const WorkVolume& picture, Progress& progress) {
  // ON PURPOSE: there is no limit; a distance beyond the maximum wraps round. A maximum of exactly
  // 0 divides nothing.
  const auto divisor = [](float max) {
    return max == 0.0F ? 1.0F : max;
  };
  DistanceShades shades;
  shades.base = kGreen;
  shades.range = kColourRange;
  shades.sides[kOutside] = {divisor(distance.outside.max), -1.0};
  shades.sides[kInside] = {divisor(distance.inside.max), 1.0};
  PaintSides(a, &b, label, field, shades, picture, progress);
}

void RepaintSignedDistance(const LabelVolume& a, int label, const DistanceField& field,
                           float maxInside, float maxOutside, const WorkVolume& picture,
                           Progress& progress) {
  DistanceShades shades;
  shades.base = kGreen;
  shades.range = kColourRange;
  shades.limit = kColourRange;
  shades.sides[kOutside] = {maxOutside, -1.0, kRed};
  shades.sides[kInside] = {maxInside, 1.0, kBlue};
  PaintSides(a, nullptr, label, field, shades, picture, progress);
}

}  // namespace measure
