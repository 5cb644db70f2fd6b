// How far the repeats of one user, and those of two users, agree on a slice.
#pragma once

#include "base/LabelSlice.h"
#include "views/slicemeasures/Picture.h"

#include <vector>

namespace measure {

constexpr std::int32_t kFullProbability = 65000;

/// For pixel (i, j) and each user: how many of the user's segmentations bear the label.
using UserCounts = std::int32_t[kMaxSliceSide][kMaxSliceSide][kMaxSliceUsers];

/// The segmentations of a study: repeat r of user u at u * repeats + r.
struct RepeatedSlices {
  std::vector<LabelSlice> slices;
  int users = 0;  ///< at most 5
  int repeats = 0;
};

/// Counts the pixels of the slice; other pixels and users beyond the last keep their counts.
void CountUsers(const RepeatedSlices& study, int label, SliceSize size, UserCounts& counts);

/// Paints the share of a user's repeats that mark each pixel, 65000 for all of them in whole steps.
/// Returns: the mean share over the pixels that at least one repeat marked; not a number where
///          there is none.
double PaintOneUser(const UserCounts& counts, int user, int repeats, SliceSize size,
                    Picture& result);

/// Paints the sum of the first two users.
///
/// ON PURPOSE: only users 0 and 1 are added, but the step is that of all users, so that with more
/// than two of them white is never reached.
/// Returns: 1 less half the quotient of their differences and their sums: 1 for users who agree, 0
///          for users with nothing in common; not a number where there is neither.
double PaintTwoUsers(const UserCounts& counts, int users, int repeats, SliceSize size,
                     Picture& result);

}  // namespace measure
