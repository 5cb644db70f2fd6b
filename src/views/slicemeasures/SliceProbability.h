// How far repeats of a segmentation agree on a slice, within one user and between the first two.
#pragma once

#include "base/LabelSlice.h"
#include "views/slicemeasures/Picture.h"

#include <vector>

namespace measure {

constexpr std::int32_t kCertain = 65000;  ///< full probability in the picture

/// Element (i, j, u): how many repeats of user u bear the label at pixel (i, j).
using UserCounts = std::int32_t[kMaxSliceSide][kMaxSliceSide][kMaxSliceUsers];

/// Counts the label in the repeats of each user. `slices` holds all repeats of user 0, then 1, ...
void CountRepeats(const std::vector<LabelSlice>& slices, int users, int repeats, int label,
                  int width, int height, UserCounts& counts);

/// Paints the share of a user's repeats and returns the mean share over the pixels that at least
/// one repeat marked; not a number where none did.
double AgreementWithin(const UserCounts& counts, int user, int repeats, int width, int height,
                       Picture& result);

/// Paints the sum of the first two users and returns their agreement, 1 for equal shares.
///
/// ON PURPOSE: only users 0 and 1 enter, while the divisor of the picture holds all `users`.
double AgreementBetween(const UserCounts& counts, int users, int repeats, int width, int height,
                        Picture& result);

}  // namespace measure
