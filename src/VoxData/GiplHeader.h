// The header of a GIPL file.
#pragma once

#include <cstdint>

struct GiplHeader {
  std::uint16_t sizes[4];  ///< x, y, z, t
  std::uint16_t type;
  float pixelSizes[4];
  char information[80];
  std::uint32_t magic;
};
