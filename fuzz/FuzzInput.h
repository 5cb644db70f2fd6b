// The bytes of one fuzzed input, taken as numbers from the front.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace fuzz {

/// Behind the end of the input every byte is 0.
class FuzzInput {
public:
  FuzzInput(const std::uint8_t* bytes, std::size_t count) : at(bytes), left(count) {}

  std::uint8_t Byte() { return Raw<std::uint8_t>(); }
  std::int32_t Int() { return Raw<std::int32_t>(); }  ///< any 32 bits
  float Float() { return Raw<float>(); }              ///< any 32 bits, not-a-number among them
  double Double() { return Raw<double>(); }

  /// One byte spread over `low` to `high`, at most 256 values.
  int Small(int low, int high) { return low + Byte() % (high - low + 1); }

  std::string Rest() {
    std::string rest(reinterpret_cast<const char*>(at), left);
    left = 0;
    return rest;
  }
  /// `count` bytes; those that the input lacks repeat what it held.
  std::vector<std::uint8_t> Filled(std::size_t count) {
    std::vector<std::uint8_t> bytes(count, 0);
    for (std::size_t i = 0; i < count && left > 0; ++i) { bytes[i] = at[i % left]; }
    left = 0;
    return bytes;
  }

private:
  template <class Number>
  Number Raw() {
    std::uint8_t bytes[sizeof(Number)] = {};
    const std::size_t count = std::min(left, sizeof(Number));
    if (count > 0) { std::memcpy(bytes, at, count); }
    at += count;
    left -= count;
    Number number;
    std::memcpy(&number, bytes, sizeof number);
    return number;
  }

  const std::uint8_t* at;
  std::size_t left;
};

/// Ends the process where a rule does not hold, in every build.
#define FUZZ_HOLDS(condition) ((condition) ? static_cast<void>(0) : __builtin_trap())

}  // namespace fuzz
