// The two directed Hausdorff distances between label regions, and the picture of the farther one.
#pragma once

#include "base/DistanceField.h"
#include "base/LabelVolume.h"
#include "base/Progress.h"

namespace measure {

/// A voxel; may lie outside the volume.
struct VoxelIndex {
  int x = 0;
  int y = 0;
  int z = 0;
};

/// Largest distance at a voxel of `image` that bears the label, 0 where there is none.
///
/// `firstX` to `lastX` are the planes that are scanned, both included.
/// Units:  those of the field. Report: a step after each plane.
float LargestDistance(const LabelVolume& image, int label, const DistanceField& field, int firstX,
                      int lastX, Progress& progress);

struct FarVoxel {
  float distance = 0.0F;
  VoxelIndex mark;  ///< beside the voxel where it was found, outside the region if there is place
};

/// Largest distance at a voxel of `image`, and the voxel that marks it. Among equal distances the
/// first by x, y, z wins. A neighbour outside the volume does not bear the label.
FarVoxel FindFarVoxel(const LabelVolume& image, int label, const DistanceField& field,
                      Progress& progress);

/// Colours by distance: 192 where both touch, darker the farther; the surface is that of `image`
/// and the mark, in the darkest value.
///
/// ON PURPOSE: the divisor is the distance cut to an integer, and only an exact 0 is replaced by 1:
///             for a distance below 1 it is 0.
void PaintDistances(const LabelVolume& image, int label, const DistanceField& field,
                    const FarVoxel& far, const WorkVolume& picture);

}  // namespace measure
