// The few colours that a stored picture may have, chosen from the many that were painted.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace pictures {

using Rgb = std::array<std::uint8_t, 3>;

struct Reduced {
  std::vector<Rgb> palette;  ///< exactly as many entries as were asked for
  std::vector<int> index;    ///< the palette entry of each pixel
};

/// At most `count` colours for `pixels`: boxes of colours are split at their median, the one with
/// the largest spread first, and each box gives its mean.
Reduced ReduceColours(const std::vector<Rgb>& pixels, int count);

}  // namespace pictures
