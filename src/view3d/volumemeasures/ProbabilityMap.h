// How many of all segmentations mark each voxel, and how far the first two users agree.
#pragma once

#include "base/LabelVolume.h"
#include "base/Progress.h"

#include <vector>

namespace measure {

/// Paints each voxel by the number of images that mark it, 192 for one down to 64 for all, and
/// returns 1 - (S1 / S2) / 2: S1 sums the differences of the first two users' shares, S2 the
/// shares of all images where one of these two marks the voxel.
///
/// Shape:  `images` holds the repeats of user 0, then of user 1, ...; at least two, at most 15
///         users. Report: a step after each x plane.
/// ON PURPOSE: users beyond the eleventh are not in the total, S2 takes the total of all users,
///             and both sums are rounded to 32 bits at each addition.
double PaintProbability(const std::vector<LabelVolume>& images, int users, int repeats, int label,
                        const WorkVolume& picture, Progress& progress);

}  // namespace measure
