// Blocks of voxels between two memory orders: labels lie along z, scalars and vectors along x.
//
// Internal to the volume measures. The vector types are the compiler's own, so that one code
// serves every machine.
#pragma once

#include "base/LabelVolume.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace measure {

constexpr int kBlock = 16;        ///< voxels a side of a block
constexpr int kBlocksAcross = 8;  ///< blocks along x in a slab
constexpr int kBlocksAlong = 16;  ///< and along z

/// One byte for each of 16 voxels in a row; as a mask, 255 for yes and 0 for no.
using Bytes = std::uint8_t __attribute__((vector_size(16)));
using Words = std::uint32_t __attribute__((vector_size(16)));
using Longs = std::uint64_t __attribute__((vector_size(16)));

inline Bytes AllBytes(std::uint8_t value) { return Bytes{} + value; }

inline bool Any(Bytes mask) {
  const auto halves = reinterpret_cast<Longs>(mask);
  return (halves[0] | halves[1]) != 0;
}

/// 16 rows of 16 bytes: by x and along z, or, turned, by z and along x.
struct Block {
  Bytes rows[kBlock];

  /// Byte j of row i becomes byte i of row j.
  void Turn();
  bool Empty() const {
    Bytes any{};
    for (const Bytes& row : rows) { any |= row; }
    return !Any(any);
  }
};

/// Compares runs of voxels with a label; one that is no byte is borne by none.
class LabelTest {
public:
  explicit LabelTest(int label)
      : wanted(AllBytes(static_cast<std::uint8_t>(label))),
        possible(label == static_cast<std::uint8_t>(label) ? AllBytes(255) : Bytes{}) {}

  /// Mask of 16 voxels from `run`.
  Bytes Run(const std::uint8_t* run) const {
    Bytes bytes;
    std::memcpy(&bytes, run, kBlock);
    return reinterpret_cast<Bytes>(bytes == wanted) & possible;
  }
  /// Mask of fewer voxels; 0 behind `count`.
  Bytes Run(const std::uint8_t* run, int count) const {
    Bytes bytes = ~wanted;
    std::memcpy(&bytes, run, static_cast<std::size_t>(count));
    return reinterpret_cast<Bytes>(bytes == wanted) & possible;
  }

private:
  Bytes wanted;
  Bytes possible;
};

/// Where a slab lies: its voxels from (x, y, z), at most 128 along x and 256 along z.
struct SlabPlace {
  int x;
  int y;
  int z;
  int countX;
  int countZ;

  int BlocksX() const { return (countX + kBlock - 1) / kBlock; }
  int BlocksZ() const { return (countZ + kBlock - 1) / kBlock; }
};

/// The blocks of a slab. Each stretch of memory is read or written once and whole: where sizes are
/// powers of two the rows push one another out of the cache before one would come back.
struct Slab {
  Block blocks[kBlocksAcross][kBlocksAlong];

  /// Masks of the voxels that bear the label, by x and along z; 0 outside the slab.
  void LoadMask(const LabelVolume& image, const LabelTest& test, const SlabPlace& at);
  void Turn(const SlabPlace& at);
};

/// Colours by x and along z.
void StoreColours(const WorkVolume& picture, const SlabPlace& at, const Slab& colours);

/// Scalars from colours or masks by z and along x: 255 where they are not 0, else 0.
void StoreScalars(const WorkVolume& picture, const SlabPlace& at, const Slab& turned);

/// Visits the slabs of the planes `firstX` to `lastX` of a volume; `done` follows when some planes
/// are finished, with their number.
template <class Visit, class Done>
void ForEachSlab(const LabelVolume& shape, int firstX, int lastX, Visit visit, Done done) {
  constexpr int kAcross = kBlock * kBlocksAcross;
  constexpr int kAlong = kBlock * kBlocksAlong;
  for (int x = firstX; x <= lastX; x += kAcross) {
    const int countX = std::min(kAcross, lastX + 1 - x);
    for (int y = 0; y < shape.dimY; ++y) {
      for (int z = 0; z < shape.dimZ; z += kAlong) {
        visit(SlabPlace{x, y, z, countX, std::min(kAlong, shape.dimZ - z)});
      }
    }
    done(countX);
  }
}

}  // namespace measure
