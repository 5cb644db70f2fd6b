// Distances from the surface of one region to the surface of another, by the side they lie on.
#pragma once

#include "base/DistanceField.h"
#include "base/LabelVolume.h"
#include "base/Progress.h"
#include "view3d/volumemeasures/FloatList.h"

namespace measure {

/// One side of the surface of B; the sum is rounded to 32 bits at each addition.
struct SurfaceSide {
  int count = 0;
  float sum = 0.0F;
  float max = 0.0F;

  void Add(float distance) {
    if (distance > max) { max = distance; }
    sum += distance;
    ++count;
  }
};

struct SurfaceDistance {
  SurfaceSide inside;   ///< surface voxels of B that lie in A
  SurfaceSide outside;  ///< and those that do not
};

/// The distances themselves, for medians and quartiles.
struct DistanceLists {
  FloatList inside;
  FloatList outside;
  FloatList all;
};

/// Distances from the surface of B to the surface of A, split by the side of A they lie on.
///
/// A voxel of B is on its surface when a neighbour is 0; another label beside it does not count.
/// Shape:   a, b and field have the same sizes; the outermost layer of b is left out.
/// Units:   those of the voxel size of slot 0.
/// Report:  a step after each x plane. `lists` may be null: no medians, nothing allocated.
SurfaceDistance SumAlongSurface(const LabelVolume& a, const LabelVolume& b, int label,
                                const DistanceField& field, DistanceLists* lists,
                                Progress& progress);

/// Colours by signed distance: 128 on the surface, 192 at the farthest inside, 64 at the farthest
/// outside of A; the surface is that of `b`. Report: a step after each x plane.
void PaintSignedDistance(const LabelVolume& a, const LabelVolume& b, int label,
                         const DistanceField& field, const SurfaceDistance& distance,
                         const WorkVolume& picture, Progress& progress);

/// The same colours for other maxima; what lies beyond them stays at 192 and 64.
void RepaintSignedDistance(const LabelVolume& a, int label, const DistanceField& field,
                           float maxInside, float maxOutside, const WorkVolume& picture,
                           Progress& progress);

}  // namespace measure
