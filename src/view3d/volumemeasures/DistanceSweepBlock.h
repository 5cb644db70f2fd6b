// A block of voxels in registers, and the tries that shorten its vectors.
#pragma once

#include "view3d/volumemeasures/DistanceSweepRows.h"

namespace measure {
namespace {

constexpr float kNever =
    __builtin_inff();  // an offer that is never taken, a step that none survives

/// Squared components.
template <class Lengths, class Floats>
TOLVEX_INLINE Lengths Square(Floats component) {
  const Lengths wide(component);
  return wide * wide;
}

/// What the voxels of a row offer the row or the plane beside it: straight, and one to the side.
template <class Length>
struct Offers {
  Length* straight;
  Length* right;
  Length* left;
};

/// The squared lengths of a row, and what its voxels offer one another.
template <class Length>
struct RowOffers {
  Length* held;
  Length* right;
  Length* left;
};

/// The vectors of a block of voxels and their squared lengths.
template <class Floats, class Lengths>
struct Block {
  Floats x;
  Floats y;
  Floats z;
  Lengths length;

  static TOLVEX_INLINE Block Load(ConstRow row, int at) {
    const Floats x = Floats::Load(row.x + at);
    const Floats y = Floats::Load(row.y + at);
    const Floats z = Floats::Load(row.z + at);
    return {x, y, z, (Square<Lengths>(x) + Square<Lengths>(y)) + Square<Lengths>(z)};
  }
  /// Start vectors from the mask that stands for x in a row.
  static TOLVEX_INLINE Block Start(ConstRow row, int at, float far) {
    const Floats start = Floats::All(far) + Floats::All(-far) * Floats::OfInts(row.x + at);
    const Lengths square = Square<Lengths>(start);
    return {start, start, start, (square + square) + square};
  }
  TOLVEX_INLINE void Store(const Row& row, int at) const {
    x.Store(row.x + at);
    y.Store(row.y + at);
    z.Store(row.z + at);
  }

  /// Takes an offer where it is shorter; returns whether it is anywhere. The vectors that give it
  /// begin at element `from` of a row.
  TOLVEX_INLINE bool Try(Lengths offer, ConstRow row, int from, Floats dx, Floats dy, Floats dz) {
    const auto shorter = offer < length;
    if (!shorter.Any()) { return false; }
    x = shorter.Pick(Floats::Load(row.x + from) + dx, x);
    y = shorter.Pick(Floats::Load(row.y + from) + dy, y);
    z = shorter.Pick(Floats::Load(row.z + from) + dz, z);
    length = Min(offer, length);
    return true;
  }
};

}  // namespace
}  // namespace measure
