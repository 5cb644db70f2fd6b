// The pixel of a label on a slice that lies farthest from a mapped image.
#pragma once

#include "base/LabelSlice.h"
#include "views/slicemeasures/Picture.h"
#include "views/slicemeasures/SliceDistance.h"

namespace measure {

constexpr std::int32_t kScannedPixel = 13500;  ///< dark grey

/// Where a scan found its largest distance; starts at pixel (0, 0) with distance 0.
struct FarPoint {
  double distance = 0.0;
  PicturePixel pixel;
};

/// Which index runs in the outer loop: it decides between pixels of equal distance.
enum class ScanOrder { ColumnsOuter, RowsOuter };

/// Scans the slice and paints it: 13500 the label, 65535 the pixel farthest from the mapped image,
/// 0 elsewhere. `far` carries on from an earlier scan.
///
/// Units: pixels.
/// ON PURPOSE: the first improvement repaints pixel (0, 0) with 13500, also where it does not bear
/// the label.
void MarkFarPoint(const LabelSlice& scanned, int label, const SliceVectors& map, ScanOrder order,
                  FarPoint& far, Picture& result);

}  // namespace measure
