// One image from the repeats of a user: a voxel belongs to it when enough repeats mark it.
#pragma once

#include "base/LabelVolume.h"
#include "base/Progress.h"

#include <vector>

namespace measure {

/// Votes that a voxel needs among `repeats`: 1, 1, 1, 2, 2, 3 for 1 to 6.
/// ON PURPOSE: this is below a majority; at 3 repeats one vote is enough.
int VotesNeeded(int repeats);

/// Writes `label` where enough of `repeats` bear it, else 0; at most 255 repeats.
/// Report: as many steps as there are z planes.
void AverageRepeats(const std::vector<LabelVolume>& repeats, int label, const EditVolume& average,
                    Progress& progress);

}  // namespace measure
