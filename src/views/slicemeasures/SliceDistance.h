// Vectors from the pixels of a slice to the nearest pixel of a label.
#pragma once

#include "base/LabelSlice.h"
#include "base/Progress.h"
#include "views/slicemeasures/Picture.h"
#include "views/slicemeasures/SliceRows.h"

#include <cmath>
#include <cstddef>
#include <vector>

namespace measure {

/// The vector of every pixel, x along the width and y along the height.
///
/// Shape: element (i, j) at j * width + i; it carries its own size, since the canvas can take
///        another one while the vectors are computed. Empty before a map was made.
/// Units: pixels; the voxel size plays no part.
struct SliceVectors {
  SliceSize size;
  std::vector<std::int16_t> x;
  std::vector<std::int16_t> y;

  std::size_t Index(int i, int j) const {
    return static_cast<std::size_t>(j) * static_cast<std::size_t>(size.width) +
           static_cast<std::size_t>(i);
  }
  double Length(int i, int j) const {
    const int dx = x[Index(i, j)];
    const int dy = y[Index(i, j)];
    return std::sqrt(static_cast<double>(dx * dx + dy * dy));
  }
};

/// Vectors of (0, 0) on the label and of 8 times the longer side of the slice in x and y elsewhere.
///
/// The latter is a count of pixels and no infinity: where the label is absent, the scans shorten it
/// step by step.
SliceVectors StartVectors(const LabelSlice& slice, int label, SliceSize size);

/// Hands the vectors on from the first row to the last, and along each row both ways. A vector
/// takes another's place where it is strictly shorter, in the order of the tries.
/// Report: one step before each row but the first.
void ScanForward(SliceVectors& vectors, Progress& progress, const RowLoops& loops = BestRowLoops());
/// The same from the last row to the first.
void ScanBackward(SliceVectors& vectors, Progress& progress,
                  const RowLoops& loops = BestRowLoops());

/// Paints 900 times the length, cut to an integer, on the whole slice.
///
/// ON PURPOSE: what exceeds 65535 is shown by its low 16 bits, so that the grey level starts again
/// at black beyond 72.8 pixels.
void PaintDistances(const SliceVectors& vectors, Picture& result);

}  // namespace measure
