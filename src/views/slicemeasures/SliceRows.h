// Rows of vectors of a slice: the loops that treat many pixels at a time.
//
// Internal to the slice measures.
#pragma once

#include "base/Limits.h"

#include <cstdint>

namespace measure {

/// A vector in 32 bits, x in the lower half and y in the upper one.
using Pair = std::int32_t;

constexpr Pair PairOf(int x, int y) {
  return static_cast<Pair>(static_cast<std::uint32_t>(y) << 16U | static_cast<std::uint16_t>(x));
}
constexpr int XOf(Pair pair) { return static_cast<std::int16_t>(pair); }
constexpr int YOf(Pair pair) { return pair >> 16; }

constexpr Pair kLeft = PairOf(-1, 0);
constexpr Pair kRight = PairOf(+1, 0);

/// What a pixel off the label starts with, in x and in y: so many times the longer side.
constexpr int kStartPerSide = 8;

/// Beyond the ends of a row, in x and in y: one step shorter it is longer than any pixel's vector
/// still, and one step longer its square and the sum of two fit their 32 bits.
constexpr int kFarSide = 20000;
static_assert(kFarSide - 1 > kStartPerSide * kMaxSliceSide);
static_assert(kFarSide + 1 < 32767);
constexpr Pair kFar = PairOf(kFarSide, kFarSide);

constexpr int kRowGroup = 8;  ///< pixels whose flags share a byte, the first one the lowest bit

/// Shape: rows are whole groups, with at least one pixel more before and behind them.
struct RowLoops {
  /// The tries from the source row, `step` away: from straight there, from its left, its right.
  void (*takeFromSource)(const Pair* source, Pair step, int groups, Pair* own);
  /// Flags the pixels that their left or their right neighbour in the row changes.
  void (*findChanges)(const Pair* own, int groups, std::uint8_t* fromLeft, std::uint8_t* fromRight);
};

/// The loops for every machine. The numbers are whole: all loops give the same.
extern const RowLoops kRowLoops;

/// Those for machines with AVX2, which the caller makes sure of; null where they were not built.
extern const RowLoops* const kAvx2RowLoops;

/// Those with vectors of 32 bytes; null where this machine has none.
const RowLoops* WideRowLoops();

/// The fastest that this machine runs.
const RowLoops& BestRowLoops();

}  // namespace measure
