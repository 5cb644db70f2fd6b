// The fixed pictures that the measures on slices fill.
#pragma once

#include "base/Limits.h"

#include <cstdint>

namespace measure {

/// Element (i, j), i first; pixels of a slice only.
using Picture = std::int32_t[kMaxSliceSide][kMaxSliceSide];

constexpr std::int32_t kWhite = 65535;

}  // namespace measure
