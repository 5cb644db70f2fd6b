// Voxels of a label on every slice along an axis.
#pragma once

#include "base/LabelVolume.h"

namespace measure {

/// Counts `label` on `count` slices from `first` on, along axis 0 (x), 1 (y) or 2 (z).
///
/// Shape: a slice outside the volume has no voxels; `count` may be 0 or less.
/// ON PURPOSE: the counts are 32-bit floats that grow by 1, and so end at 16,777,216.
void CountPerSlice(const LabelVolume& image, int label, int axis, int first, int count,
                   float* counts);

}  // namespace measure
