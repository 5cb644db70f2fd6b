// The contour measures on one slice: choices and sizes first, the labels behind them.
#include "fuzz/FuzzInput.h"
#include "fuzz/SliceInput.h"
#include "tests/slicemeasures/PlainSlices.h"
#include "tests/support/TestVolume.h"
#include "views/slicemeasures/SliceContour.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr int kPixels = kMaxSliceSide * kMaxSliceSide;

struct Pictures {
  measure::Picture result;
  measure::Picture mark;
};

struct Choice {
  int direction, slice, otherSlice, label;
  int left;  ///< what earlier slices left in every pixel
  bool interior;
};

/// The pictures of one measure and of the plain one begin alike.
Pictures& Started(Pictures& pictures, int left) {
  std::fill_n(&pictures.result[0][0], kPixels, left);
  std::fill_n(&pictures.mark[0][0], kPixels, left);
  return pictures;
}

void Compare(const TestVolume& a, const TestVolume& b, const Choice& c) {
  static Pictures fast;
  static Pictures slow;
  Pictures& pictures = Started(fast, c.left);
  Pictures& expected = Started(slow, c.left);
  const LabelSlice first{a.Labels(), c.direction, c.slice};
  const LabelSlice second{b.Labels(), c.direction, c.slice};
  const measure::ContourPictures on{
      pictures.result, pictures.mark, {first.Width(), first.Height()}};
  plain::Contour contour(expected.result, expected.mark);
  contour.untilStill = true;
  int area = 0;
  if (c.interior) {
    contour.InteriorContour(a.Labels(), a.Labels(), b.Labels(), c.direction, c.slice, c.otherSlice,
                            c.label);
  } else {
    contour.Complexity(a.Labels(), c.direction, c.slice, c.otherSlice, c.label);
  }
  if (c.interior && c.direction == kSliceXY) {
    area = measure::PaintContourOfFirst(first, second, c.label, on);
  } else {
    area = measure::PaintContour(first, c.otherSlice, c.label, on);
  }
  const auto extent = c.interior ? measure::WaveExtent::Whole : measure::WaveExtent::Interior;
  const measure::ContourWalk walk = measure::WalkContour(extent, on);
  FUZZ_HOLDS(area == contour.area && walk.perimeter == contour.perimeter);
  FUZZ_HOLDS(std::memcmp(pictures.result, expected.result, sizeof pictures.result) == 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::FuzzInput input(data, size);
  Choice choice{};
  choice.direction = input.Small(0, 2);
  const int kind = input.Byte();
  choice.interior = kind % 2 == 1;
  constexpr int kLeft[] = {0, measure::kContourPixel, 1, -1};
  choice.left = kLeft[kind / 2 % 4];
  choice.label = input.Small(0, 3);
  // The plain walk takes up to 300 sweeps of all pixels.
  const fuzz::Dims dims = fuzz::DrawDims(input, 6000);
  choice.slice = input.Small(0, dims[choice.direction] - 1);
  choice.otherSlice = input.Small(0, dims[1] - 1);
  TestVolume a(dims[0], dims[1], dims[2]);
  TestVolume b(dims[0], dims[1], dims[2]);
  auto labels = input.Filled(2 * a.Labels().Count());
  // Few labels, so that they touch; a byte in 16 stays what it is.
  for (std::uint8_t& label : labels) { label = label >= 240 ? label : label % 4; }
  a.FillFrom(labels.data());
  b.FillFrom(labels.data() + a.Labels().Count());
  Compare(a, b, choice);
  return 0;
}
