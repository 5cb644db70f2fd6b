// The fixed pictures that the measures on slices fill.
#pragma once

#include "base/Limits.h"

#include <cstdint>

namespace measure {

/// Element (i, j), i first: i along the width of the slice, j along its height. A slice fills the
/// corner at (0, 0); what lies beyond it is left over from larger slices.
using Picture = std::int32_t[kMaxSliceSide][kMaxSliceSide];

constexpr std::int32_t kWhite = 65535;

/// A pixel of a picture.
struct PicturePixel {
  int i = 0;
  int j = 0;

  bool operator==(const PicturePixel& other) const { return i == other.i && j == other.j; }
};

/// Width and height of a slice in pixels, at most 300 each.
struct SliceSize {
  int width = 0;
  int height = 0;
};

}  // namespace measure
