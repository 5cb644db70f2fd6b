// Small transposes: voxels of some slices into runs along z, a register at a time.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace raw {

#ifdef __SSE2__

inline __m128i LoadBytes(const void* from) {
  return _mm_loadu_si128(static_cast<const __m128i*>(from));
}
inline void StoreBytes(void* to, __m128i value) {
  _mm_storeu_si128(static_cast<__m128i*>(to), value);
}

/// Smallest and largest of the 16-bit values that went by.
class WordRange {
public:
  void Add(__m128i words) {
    // The instruction set compares signed words: the top bit is turned round for that.
    const __m128i turned = _mm_xor_si128(words, _mm_set1_epi16(static_cast<short>(0x8000)));
    low = _mm_min_epi16(low, turned);
    high = _mm_max_epi16(high, turned);
  }
  int Min() const {
    return Extreme(low, [](int a, int b) { return std::min(a, b); });
  }
  int Max() const {
    return Extreme(high, [](int a, int b) { return std::max(a, b); });
  }

private:
  template <class Better>
  static int Extreme(__m128i words, Better better) {
    std::int16_t lanes[8];
    StoreBytes(lanes, words);
    int best = lanes[0];
    for (const std::int16_t lane : lanes) { best = better(best, lane); }
    return best + 0x8000;
  }

  __m128i low = _mm_set1_epi16(0x7FFF);
  __m128i high = _mm_set1_epi16(static_cast<short>(0x8000));
};

/// Eight columns of eight slices of big-endian words: runs[c][0..7] takes column c.
inline void TransposeWords(const void* const* slices, std::size_t at, std::uint16_t* const* runs,
                           WordRange& range) {
  __m128i r[8];
  for (int k = 0; k < 8; ++k) {
    const __m128i big = LoadBytes(static_cast<const std::uint8_t*>(slices[k]) + 2 * at);
    r[k] = _mm_or_si128(_mm_slli_epi16(big, 8), _mm_srli_epi16(big, 8));
    range.Add(r[k]);
  }
  __m128i a[8];
  for (int k = 0; k < 4; ++k) {
    a[2 * k] = _mm_unpacklo_epi16(r[2 * k], r[2 * k + 1]);
    a[2 * k + 1] = _mm_unpackhi_epi16(r[2 * k], r[2 * k + 1]);
  }
  __m128i b[8];
  for (int half = 0; half < 2; ++half) {
    const __m128i* from = a + 4 * half;
    b[4 * half] = _mm_unpacklo_epi32(from[0], from[2]);
    b[4 * half + 1] = _mm_unpackhi_epi32(from[0], from[2]);
    b[4 * half + 2] = _mm_unpacklo_epi32(from[1], from[3]);
    b[4 * half + 3] = _mm_unpackhi_epi32(from[1], from[3]);
  }
  for (int c = 0; c < 4; ++c) {
    StoreBytes(runs[2 * c], _mm_unpacklo_epi64(b[c], b[c + 4]));
    StoreBytes(runs[2 * c + 1], _mm_unpackhi_epi64(b[c], b[c + 4]));
  }
}

/// Sixteen columns of sixteen slices of bytes: runs[c][0..15] takes column c.
inline void TransposeBytes(const void* const* slices, std::size_t at, std::uint8_t* const* runs) {
  __m128i r[16];
  for (int k = 0; k < 16; ++k) {
    r[k] = LoadBytes(static_cast<const std::uint8_t*>(slices[k]) + at);
  }
  // Four rounds of interleaving slice k with slice k + 8 turn rows into columns.
  for (int round = 0; round < 4; ++round) {
    __m128i next[16];
    for (int k = 0; k < 8; ++k) {
      next[2 * k] = _mm_unpacklo_epi8(r[k], r[k + 8]);
      next[2 * k + 1] = _mm_unpackhi_epi8(r[k], r[k + 8]);
    }
    std::copy(next, next + 16, r);
  }
  for (int c = 0; c < 16; ++c) { StoreBytes(runs[c], r[c]); }
}

#endif

}  // namespace raw
