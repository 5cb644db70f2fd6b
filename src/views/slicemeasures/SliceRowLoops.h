// The loops over rows of a slice, for the vectors of the machine that a file is compiled for.
//
// Included once by each of these files. No function of another header may be called here when the
// program runs: of two copies for two machines the linker keeps any.
#pragma once

#include "views/slicemeasures/SliceRows.h"

#ifdef __SSE2__
#include <immintrin.h>
#endif

namespace measure {

namespace {

#ifdef __AVX2__
constexpr int kLanes = 8;
#else
constexpr int kLanes = 4;
#endif
using Pairs = Pair __attribute__((vector_size(4 * kLanes)));
using Shorts = std::int16_t __attribute__((vector_size(4 * kLanes)));

Pairs Load(const Pair* from) {
  Pairs pairs;
  __builtin_memcpy(&pairs, from, sizeof pairs);
  return pairs;
}

Pairs Everywhere(Pair pair) { return Pairs{} + pair; }

/// Nothing is carried from x to y.
Pairs Sum(Pairs pairs, Pairs steps) {
  return reinterpret_cast<Pairs>(reinterpret_cast<Shorts>(pairs) + reinterpret_cast<Shorts>(steps));
}

Pairs SquaresOf(Pairs pairs) {
#if defined(__AVX2__)
  const auto components = reinterpret_cast<__m256i>(pairs);
  return reinterpret_cast<Pairs>(_mm256_madd_epi16(components, components));
#elif defined(__SSE2__)
  const auto components = reinterpret_cast<__m128i>(pairs);
  return reinterpret_cast<Pairs>(_mm_madd_epi16(components, components));
#else
  const Pairs x = (pairs << 16) >> 16;
  const Pairs y = pairs >> 16;
  return x * x + y * y;
#endif
}

/// One bit for each lane of a mask.
unsigned BitsOf(Pairs mask) {
#if defined(__AVX2__)
  return static_cast<unsigned>(_mm256_movemask_ps(reinterpret_cast<__m256>(mask)));
#elif defined(__SSE2__)
  return static_cast<unsigned>(_mm_movemask_ps(reinterpret_cast<__m128>(mask)));
#else
  unsigned bits = 0;
  for (int lane = 0; lane < kLanes; ++lane) { bits |= mask[lane] != 0 ? 1U << lane : 0U; }
  return bits;
#endif
}

/// Pixels with the squared lengths of their vectors.
struct Pixels {
  Pairs pairs;
  Pairs squares;

  explicit Pixels(Pairs from) : pairs(from), squares(SquaresOf(from)) {}

  /// One try each; of equal lengths the older vector stays.
  void Try(Pairs candidate) {
    const Pairs square = SquaresOf(candidate);
    const Pairs taken = square < squares;
    pairs = (candidate & taken) | (pairs & ~taken);
    squares = (square & taken) | (squares & ~taken);
  }
};

void TakeFromSource(const Pair* source, Pair step, int groups, Pair* own) {
  const Pairs straight = Everywhere(step);
  const Pairs left = Sum(straight, Everywhere(kLeft));
  const Pairs right = Sum(straight, Everywhere(kRight));
  for (int i = 0; i < groups * kRowGroup; i += kLanes) {
    Pixels pixels(Load(own + i));
    pixels.Try(Sum(Load(source + i), straight));
    pixels.Try(Sum(Load(source + i - 1), left));
    pixels.Try(Sum(Load(source + i + 1), right));
    __builtin_memcpy(own + i, &pixels.pairs, sizeof pixels.pairs);
  }
}

void FindChanges(const Pair* own, int groups, std::uint8_t* fromLeft, std::uint8_t* fromRight) {
  const Pairs stepLeft = Everywhere(kLeft);
  const Pairs stepRight = Everywhere(kRight);
  for (int group = 0; group < groups; ++group) {
    unsigned left = 0;
    unsigned right = 0;
    for (int lane = 0; lane < kRowGroup; lane += kLanes) {
      const Pair* at = own + group * kRowGroup + lane;
      const Pairs squares = SquaresOf(Load(at));
      left |= BitsOf(SquaresOf(Sum(Load(at - 1), stepLeft)) < squares) << lane;
      right |= BitsOf(SquaresOf(Sum(Load(at + 1), stepRight)) < squares) << lane;
    }
    fromLeft[group] = static_cast<std::uint8_t>(left);
    fromRight[group] = static_cast<std::uint8_t>(right);
  }
}

}  // namespace

}  // namespace measure
