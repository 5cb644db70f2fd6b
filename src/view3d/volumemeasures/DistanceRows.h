// Distances of voxels in a row along x, 16 at a time: the largest, and their colours.
//
// Internal to the volume measures.
#pragma once

#include "base/DistanceField.h"
#include "view3d/volumemeasures/VoxelBlocks.h"

#include <limits>

namespace measure {

/// How the voxels on one side of a surface are coloured.
struct SideShade {
  double divisor = 1.0;
  double sign = 1.0;    ///< of the steps away from the base colour: 1 or -1
  double beyond = 0.0;  ///< the value where the steps exceed their limit or are not-a-number
};

/// A colour is base + sign * steps, with steps = distance * range / divisor up to `limit`; its low
/// byte is what counts. All in double, from the distance rounded to 32 bits.
struct DistanceShades {
  double base = 0.0;
  double range = 0.0;
  double limit = std::numeric_limits<double>::infinity();
  SideShade sides[2];  ///< where a mask is clear, and where it is set
};

/// Largest squared length at those of `count` voxels from element `first`, 16 at most, that are in
/// the mask; 0 where there is none.
double LargestSquare(const DistanceField& field, std::size_t first, int count, Bytes mask);

/// Colours of a slab, by x and along z, from the mask of one side by z and along x.
void ShadeSlab(const DistanceField& field, const SlabPlace& at, const DistanceShades& shades,
               Slab& sideThenColours);

}  // namespace measure
