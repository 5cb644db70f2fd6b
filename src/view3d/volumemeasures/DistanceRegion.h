// The region within a distance of a label.
#pragma once

#include "base/DistanceField.h"
#include "base/LabelVolume.h"
#include "base/Progress.h"

namespace measure {

/// Paints 128 where the distance is at most `limit`, else 0. Report: a step after each x plane.
void PaintDistanceRegion(const DistanceField& field, double limit, const WorkVolume& picture,
                         Progress& progress);

}  // namespace measure
