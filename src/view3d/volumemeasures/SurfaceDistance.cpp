#include "view3d/volumemeasures/SurfaceDistance.h"

#include "base/ColourValues.h"
#include "view3d/volumemeasures/Shell.h"

namespace measure {

namespace {

constexpr double kColourRange = 64.0;  // colour values from the surface to the farthest voxel

void Keep(float distance, FloatList& side, FloatList& all) {
  side.Append(distance);
  all.Append(distance);
}

/// Colour steps away from the surface; a maximum of exactly 0 divides nothing.
double Steps(double distance, float max) {
  return max == 0.0F ? distance * kColourRange : distance * kColourRange / max;
}

template <class Paint>
void ForEachVoxel(const LabelVolume& shape, Progress& progress, Paint paint) {
  for (int x = 0; x < shape.dimX; ++x) {
    for (int y = 0; y < shape.dimY; ++y) {
      for (int z = 0; z < shape.dimZ; ++z) { paint(x, y, z); }
    }
    progress.Step();
  }
}

}  // namespace

SurfaceDistance SumAlongSurface(const LabelVolume& a, const LabelVolume& b, int label,
                                const DistanceField& field, DistanceLists* lists,
                                Progress& progress) {
  SurfaceDistance distance;
  for (int x = 1; x <= b.dimX - 2; ++x) {
    for (int y = 1; y <= b.dimY - 2; ++y) {
      for (int z = 1; z <= b.dimZ - 2; ++z) {
        if (!b.Bears(label, x, y, z) || !TouchesBackground(b, x, y, z)) { continue; }
        const float d = field.Length(x, y, z);
        const bool inside = a.Bears(label, x, y, z);
        (inside ? distance.inside : distance.outside).Add(d);
        if (lists != nullptr) { Keep(d, inside ? lists->inside : lists->outside, lists->all); }
      }
    }
    progress.Step();
  }
  return distance;
}

void PaintSignedDistance(const LabelVolume& a, const LabelVolume& b, int label,
                         const DistanceField& field, const SurfaceDistance& distance,
                         const WorkVolume& picture, Progress& progress) {
  const float maxInside = distance.inside.max;
  const float maxOutside = distance.outside.max;
  ForEachVoxel(a, progress, [&](int x, int y, int z) {
    picture.scalars[picture.Index(x, y, z)] = b.Bears(label, x, y, z) ? 255.0F : 0.0F;
    const double d = field.Length(x, y, z);
    const double value =
        a.Bears(label, x, y, z) ? kGreen + Steps(d, maxInside) : kGreen - Steps(d, maxOutside);
    picture.SetColour(x, y, z, LowByte(value));
  });
}

void RepaintSignedDistance(const LabelVolume& a, int label, const DistanceField& field,
                           float maxInside, float maxOutside, const WorkVolume& picture,
                           Progress& progress) {
  ForEachVoxel(a, progress, [&](int x, int y, int z) {
    const double d = field.Length(x, y, z);
    if (a.Bears(label, x, y, z)) {
      const double steps = d * kColourRange / maxInside;
      picture.SetColour(x, y, z, steps <= kColourRange ? LowByte(steps + kGreen) : kBlue);
    } else {
      const double steps = d * kColourRange / maxOutside;
      picture.SetColour(x, y, z, steps <= kColourRange ? LowByte(kGreen - steps) : kRed);
    }
  });
}

}  // namespace measure
