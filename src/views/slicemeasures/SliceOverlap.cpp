#include "views/slicemeasures/SliceOverlap.h"

namespace measure {

void CountOverlap(const LabelSlice& a, const LabelSlice& b, int label, SliceSize size,
                  SliceOverlap& overlap, Picture& result) {
  for (int i = 0; i < size.width; ++i) {
    for (int j = 0; j < size.height; ++j) {
      const bool inA = a.Bears(label, i, j);
      const bool inB = b.Bears(label, i, j);
      if (inA && inB) {
        ++overlap.common;
        result[i][j] = kWhite;
      } else {
        overlap.onlyA += inA ? 1 : 0;
        overlap.onlyB += inB ? 1 : 0;
        result[i][j] = inA || inB ? kOneOfTwo : 0;
      }
    }
  }
}

std::optional<double> OverlapRatio(const SliceOverlap& overlap, SliceDivisor divisor) {
  int quantity = 0;
  switch (divisor) {
  case SliceDivisor::Average:
    // ON PURPOSE: an odd sum is truncated before the ratio is formed.
    quantity = (overlap.onlyB + 2 * overlap.common + overlap.onlyA) / 2;
    break;
  case SliceDivisor::Union: quantity = overlap.Union(); break;
  case SliceDivisor::FirstImage: quantity = overlap.onlyA + overlap.common; break;
  }
  if (quantity == 0) { return std::nullopt; }
  return static_cast<double>(overlap.common) / quantity;
}

void PaintMask(const LabelSlice& slice, int label, SliceSize size, Picture& result) {
  for (int i = 0; i < size.width; ++i) {
    for (int j = 0; j < size.height; ++j) { result[i][j] = slice.Bears(label, i, j) ? kWhite : 0; }
  }
}

}  // namespace measure
