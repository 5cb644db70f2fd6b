// The two checksums that the expected values use.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

/// CRC-32 (IEEE, reflected), fed byte by byte.
class Crc32 {
public:
  void Add(std::uint8_t byte) { state = Table()[(state ^ byte) & 0xFFU] ^ (state >> 8U); }
  void Add(const void* bytes, std::size_t count) {
    const auto* p = static_cast<const std::uint8_t*>(bytes);
    for (std::size_t i = 0; i < count; ++i) { Add(p[i]); }
  }
  std::uint32_t Value() const { return ~state; }

private:
  static const std::array<std::uint32_t, 256>& Table() {
    static const std::array<std::uint32_t, 256> table = [] {
      std::array<std::uint32_t, 256> t{};
      for (std::uint32_t i = 0; i < 256; ++i) {
        std::uint32_t c = i;
        for (int k = 0; k < 8; ++k) { c = (c & 1U) != 0 ? 0xEDB88320U ^ (c >> 1U) : c >> 1U; }
        t[i] = c;
      }
      return t;
    }();
    return table;
  }
  std::uint32_t state = 0xFFFFFFFFU;
};

/// FNV-1a with 64 bits, fed byte by byte.
class Fnv64 {
public:
  void Add(std::uint8_t byte) { state = (state ^ byte) * 1099511628211ULL; }
  void Add(const void* bytes, std::size_t count) {
    const auto* p = static_cast<const std::uint8_t*>(bytes);
    for (std::size_t i = 0; i < count; ++i) { Add(p[i]); }
  }
  std::uint64_t Value() const { return state; }

private:
  std::uint64_t state = 14695981039346656037ULL;
};
