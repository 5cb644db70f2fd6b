// The pixel of a region that lies farthest from a mapped one.
#pragma once

#include "base/LabelSlice.h"
#include "views/slicemeasures/Picture.h"
#include "views/slicemeasures/SliceDistance.h"

namespace measure {

constexpr std::int32_t kScanned = 13500;  ///< a pixel of the scanned image

/// Where a scan found its largest distance; starts at pixel (0, 0) with distance 0.
struct FarPoint {
  double distance = 0.0;
  int i = 0;
  int j = 0;
};

/// Which index runs in the inner loop: among equal distances the first one found wins.
enum class ScanOrder { RowsInside, ColumnsInside };

/// Scans the slice and paints it: 13500 the label, 65535 the pixel farthest from the mapped image,
/// 0 elsewhere.
///
/// Units: pixels. ON PURPOSE: the first improvement repaints pixel (0, 0) as well.
void MarkFarPoint(const LabelSlice& scanned, int label, const SliceVectors& map, ScanOrder order,
                  FarPoint& far, Picture& result);

}  // namespace measure
