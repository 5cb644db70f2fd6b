// The surface shell of a label region, made in the image itself and undone again.
#pragma once

#include "base/LabelVolume.h"
#include "base/Limits.h"
#include "base/Progress.h"

#include <cstdint>

namespace measure {

/// Which neighbours make a label voxel a surface voxel. A neighbour outside the volume does under
/// either rule.
enum class ShellRule {
  OtherValue,     ///< one that differs from the label
  ZeroNeighbour,  ///< one that is 0: another label does not count
};

/// Labels that are kept while an image is altered, [x][y][z].
using SavedLabels = std::int32_t (*)[kMaxMeasuredSide][kMaxMeasuredSide];

/// Copies all labels. Report: a step after each x plane, as the next two.
void SaveLabels(const LabelVolume& image, SavedLabels saved, Progress& progress);

/// Leaves `label` on the surface voxels of the saved region and 0 everywhere else.
void ReduceToShell(SavedLabels saved, int label, ShellRule rule, const EditVolume& image,
                   Progress& progress);

/// Puts the saved labels back.
void RestoreLabels(SavedLabels saved, const EditVolume& image, Progress& progress);

}  // namespace measure
