// The contour measures on one slice: choices and sizes first, the labels behind them.
#include "fuzz/FuzzInput.h"
#include "tests/slicemeasures/PlainSlices.h"
#include "tests/support/TestVolume.h"
#include "views/slicemeasures/SliceContour.h"

#include <cstring>

namespace {

struct Pictures {
  measure::Picture result;
  measure::Picture mark;
};

struct Choice {
  int direction, slice, otherSlice, label;
  bool interior;
};

/// The pictures of one measure and of the plain one begin alike, with what slices left behind.
Pictures& Started(Pictures& pictures) {
  std::memset(&pictures, 0, sizeof pictures);
  return pictures;
}

void Compare(const TestVolume& a, const TestVolume& b, const Choice& c) {
  static Pictures fast;
  static Pictures slow;
  Pictures& pictures = Started(fast);
  Pictures& expected = Started(slow);
  const LabelSlice first{a.Labels(), c.direction, c.slice};
  const LabelSlice second{b.Labels(), c.direction, c.slice};
  const measure::ContourPictures on{
      pictures.result, pictures.mark, {first.Width(), first.Height()}};
  plain::Contour contour(expected.result, expected.mark);
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
  choice.interior = input.Small(0, 1) == 1;
  choice.label = input.Small(0, 3);
  const int dims[3] = {input.Small(1, 16), input.Small(1, 16), input.Small(1, 16)};
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
