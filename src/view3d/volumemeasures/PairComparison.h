// The measures of one pair of the all-pairs comparison, into its record.
#pragma once

#include "base/DistanceField.h"
#include "base/LabelVolume.h"
#include "view3d/volumemeasures/CompareRecord.h"
#include "view3d/volumemeasures/FloatList.h"
#include "view3d/volumemeasures/SurfaceDistance.h"
#include "view3d/volumemeasures/VolumeOverlap.h"

#include <string>

namespace measure {

/// Names of at most 49 characters; longer ones are cut.
void SetNames(CompareRecord& record, const std::string& first, const std::string& second);

/// ON PURPOSE: the union leaves out the intersection, and the average is not truncated.
void SetOverlap(CompareRecord& record, const VolumeOverlap& overlap);

void SetSurface(CompareRecord& record, const SurfaceDistance& distance);

void SetHaussdorf(CompareRecord& record, float firstToSecond, float secondToFirst);

/// Appends the signed distance of each surface voxel of `target` to the surface that the field was
/// made from: negative where the voxel lies in `source`. Returns sums and counts by side.
///
/// Shape: the outermost layer of target is left out; a neighbour of value 0 makes a surface voxel.
SurfaceDistance AppendSignedDistances(const LabelVolume& source, const LabelVolume& target,
                                      int label, const DistanceField& field, FloatList& list);

}  // namespace measure
