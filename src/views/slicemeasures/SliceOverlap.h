// Overlap of two label slices, pixel by pixel.
#pragma once

#include "base/LabelSlice.h"
#include "views/slicemeasures/Picture.h"

#include <optional>

namespace measure {

constexpr std::int32_t kOneOfTwo = 15241;  ///< a pixel that exactly one image has

/// What the overlap ratio divides by; the radio buttons of the group "Overlap" in the Options
/// window.
enum class SliceDivisor { Average, Union, FirstImage };

/// Pixel counts of two regions A and B.
struct SliceOverlap {
  int onlyA = 0;
  int onlyB = 0;
  int common = 0;

  int Union() const { return common + onlyA + onlyB; }
};

/// Adds the pixels of one slice to `overlap` and paints them: 65535 both, 15241 one of the two,
/// 0 neither.
void CountOverlap(const LabelSlice& a, const LabelSlice& b, int label, SliceSize size,
                  SliceOverlap& overlap, Picture& result);

/// Common pixels divided by the chosen quantity; 1 is a perfect overlap.
/// Returns: nothing when the divisor is 0.
std::optional<double> OverlapRatio(const SliceOverlap& overlap, SliceDivisor divisor);

/// Paints 65535 where the slice bears the label, else 0.
void PaintMask(const LabelSlice& slice, int label, SliceSize size, Picture& result);

}  // namespace measure
