#include "views/slicemeasures/SliceFarPoint.h"

namespace measure {

namespace {

template <class Visit>
void ForEachPixel(SliceSize size, ScanOrder order, Visit visit) {
  if (order == ScanOrder::ColumnsOuter) {
    for (int i = 0; i < size.width; ++i) {
      for (int j = 0; j < size.height; ++j) { visit(i, j); }
    }
  } else {
    for (int j = 0; j < size.height; ++j) {
      for (int i = 0; i < size.width; ++i) { visit(i, j); }
    }
  }
}

}  // namespace

void MarkFarPoint(const LabelSlice& scanned, int label, const SliceVectors& map, ScanOrder order,
                  FarPoint& far, Picture& result) {
  ForEachPixel(map.size, order, [&](int i, int j) {
    if (!scanned.Bears(label, i, j)) {
      result[i][j] = 0;
      return;
    }
    result[i][j] = kScannedPixel;
    const double distance = map.Length(i, j);
    if (distance <= far.distance) { return; }
    result[far.pixel.i][far.pixel.j] = kScannedPixel;
    result[i][j] = kWhite;
    far = {distance, {i, j}};
  });
}

}  // namespace measure
