// Rows of vectors of a slice: the loops that treat many pixels at a time.
//
// Internal to the slice measures.
#pragma once

#include <cstdint>

namespace measure {

/// A vector in 32 bits, x in the lower half and y in the upper one.
using Pair = std::int32_t;

constexpr Pair PairOf(int x, int y) {
  return static_cast<Pair>(static_cast<std::uint32_t>(y) << 16U | static_cast<std::uint16_t>(x));
}
constexpr int XOf(Pair pair) { return static_cast<std::int16_t>(pair); }
constexpr int YOf(Pair pair) { return pair >> 16; }

/// Beyond the ends of a row: so long that no pixel takes it.
constexpr Pair kFar = PairOf(20000, 20000);

constexpr int kRowGroup = 8;  ///< pixels whose flags share a byte, the first one the lowest bit

/// Shape: rows are whole groups, with at least one pixel more before and behind them.
struct RowLoops {
  /// The tries from the source row: from straight above or below, from its left, from its right.
  void (*takeFromSource)(const Pair* source, int stepY, int groups, Pair* own);
  /// Flags the pixels that their left or their right neighbour in the row changes.
  void (*findChanges)(const Pair* own, int groups, std::uint8_t* fromLeft, std::uint8_t* fromRight);
};

/// The loops for every machine. The numbers are whole: all loops give the same.
extern const RowLoops kRowLoops;

/// Those for machines with vectors of 32 bytes; null on others.
const RowLoops* WideRowLoops();

/// The fastest that this machine runs.
const RowLoops& BestRowLoops();

}  // namespace measure
