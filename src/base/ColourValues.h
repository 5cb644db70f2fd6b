// Colour values of the 3D view, and the one conversion of a real number to a byte.
#pragma once

#include <cmath>
#include <cstdint>

constexpr std::uint8_t kRed = 64;
constexpr std::uint8_t kGreen = 128;
constexpr std::uint8_t kBlue = 192;

/// The low byte of `value` truncated toward zero, for every double.
///
/// Values that a 32-bit integer cannot hold, the infinities and not-a-number give 0: this is the
/// low byte of the integer that such a conversion gives on the machines the tool runs on.
inline std::uint8_t LowByte(double value) {
  if (!(value > -2147483649.0 && value < 2147483648.0)) { return 0; }
  return static_cast<std::uint8_t>(static_cast<std::uint32_t>(static_cast<std::int32_t>(value)));
}
