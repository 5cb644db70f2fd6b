// One row of the label table.
#pragma once

#include <cstdint>

/// What a label id means: its colour, its name, and whether it counts. 208 bytes.
struct LabelEntry {
  std::uint8_t rgb[3];
  char name[201];
  std::int32_t defined;  ///< 1 when the label counts; only then do the look-ups answer
};

static_assert(sizeof(LabelEntry) == 208);
