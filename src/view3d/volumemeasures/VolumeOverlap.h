// Overlap of two label volumes, voxel by voxel.
#pragma once

#include "base/LabelVolume.h"
#include "base/Progress.h"

#include <cstdint>
#include <optional>

namespace measure {

/// Where a voxel lies. The value is the colour value that the 3D view draws it with.
enum class OverlapClass : std::uint8_t { Neither = 0, OnlyA = 64, OnlyB = 128, Both = 192 };

/// What the overlap ratio divides by; the radio buttons of the group "Overlap" in the Options
/// window.
enum class OverlapDivisor { Average, Union, FirstImage };

/// Voxel counts of two regions A and B.
struct VolumeOverlap {
  int onlyA = 0;   ///< voxels of A that are not in B; not the size of A
  int onlyB = 0;   ///< voxels of B that are not in A
  int common = 0;  ///< voxels in both
};

/// Counts where the regions of `label` in `a` and `b` lie.
/// Report: one progress step after each z plane, dimZ in all.
VolumeOverlap CountOverlap(const LabelVolume& a, const LabelVolume& b, int label,
                           Progress& progress);

/// The same, and paints each voxel's class.
///
/// Shape:   a, b and picture have the same three sizes.
/// Errors:  none; a label that is absent gives counts of 0 and an empty picture.
VolumeOverlap PaintOverlap(const LabelVolume& a, const LabelVolume& b, int label,
                           const WorkVolume& picture, Progress& progress);

/// Paints A in 64, B in 128 and their common region in 192 into a volume each.
/// Report: one progress step after each z plane.
void PaintRegions(const LabelVolume& a, const LabelVolume& b, int label, const WorkVolume& pictureA,
                  const WorkVolume& pictureB, const WorkVolume& pictureBoth, Progress& progress);

/// Common voxels divided by the chosen quantity; 1 is a perfect overlap.
///
/// Returns: nothing when the divisor is 0. The caller then leaves the field's text as it is.
/// The average is an integer division, truncated.
std::optional<double> OverlapRatio(const VolumeOverlap& overlap, OverlapDivisor divisor);

}  // namespace measure
