#include "views/slicemeasures/SliceFarPoint.h"

namespace measure {

namespace {

void Visit(const LabelSlice& scanned, int label, const SliceVectors& map, int i, int j,
           FarPoint& far, Picture& result) {
  if (!scanned.Bears(label, i, j)) {
    result[i][j] = 0;
    return;
  }
  const double distance = map.Length(i, j);
  if (distance > far.distance) {
    result[far.i][far.j] = kScanned;
    result[i][j] = kWhite;
    far = {distance, i, j};
  } else {
    result[i][j] = kScanned;
  }
}

}  // namespace

void MarkFarPoint(const LabelSlice& scanned, int label, const SliceVectors& map, ScanOrder order,
                  FarPoint& far, Picture& result) {
  const bool rowsInside = order == ScanOrder::RowsInside;
  const int outer = rowsInside ? map.width : map.height;
  const int inner = rowsInside ? map.height : map.width;
  for (int a = 0; a < outer; ++a) {
    for (int b = 0; b < inner; ++b) {
      const int i = rowsInside ? a : b;
      const int j = rowsInside ? b : a;
      Visit(scanned, label, map, i, j, far, result);
    }
  }
}

}  // namespace measure
