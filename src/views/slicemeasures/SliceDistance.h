// The vector distance map of a label on a slice, in pixels.
#pragma once

#include "base/LabelSlice.h"
#include "base/Progress.h"
#include "views/slicemeasures/Picture.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace measure {

/// The vector from every pixel to its nearest label pixel.
///
/// Shape: width * height elements each, element (i, j) at j * width + i; x runs along i.
/// Units: pixels.
struct SliceVectors {
  int width = 0;
  int height = 0;
  std::vector<std::int16_t> x;
  std::vector<std::int16_t> y;

  std::size_t Index(int i, int j) const {
    return static_cast<std::size_t>(j) * static_cast<std::size_t>(width) +
           static_cast<std::size_t>(i);
  }
  double Length(int i, int j) const;
};

/// (0, 0) on the label, 8 times the longer side in both components elsewhere.
void StartSliceVectors(const LabelSlice& slice, int label, int width, int height,
                       SliceVectors& vectors);
/// Rows 1 upward from the row before; a step of `progress` before each.
void ScanForward(SliceVectors& vectors, Progress& progress);
/// Rows downward from the row behind; nothing where there is one row only.
void ScanBackward(SliceVectors& vectors, Progress& progress);

/// Grey levels of the distances, 900 a pixel; they wrap past 72.8 pixels.
void PaintDistances(const SliceVectors& vectors, Picture& result);

}  // namespace measure
