#include "view3d/volumemeasures/VoxelBlocks.h"

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace measure {

namespace {

// Each run of labels or colours lies in pages of its own, where the processor fetches nothing ahead
// by itself.
constexpr int kRunsAhead = 8;
constexpr int kLine = 64;  // bytes that come at once

using Shorts = std::uint16_t __attribute__((vector_size(16)));

// Two vectors, element by element in turn.
Bytes LowTurns(Bytes a, Bytes b) {
  return __builtin_shufflevector(a, b, 0, 16, 1, 17, 2, 18, 3, 19, 4, 20, 5, 21, 6, 22, 7, 23);
}
Bytes HighTurns(Bytes a, Bytes b) {
  return __builtin_shufflevector(a, b, 8, 24, 9, 25, 10, 26, 11, 27, 12, 28, 13, 29, 14, 30, 15,
                                 31);
}
Words LowTurns(Shorts a) {
  return reinterpret_cast<Words>(__builtin_shufflevector(a, a, 0, 0, 1, 1, 2, 2, 3, 3));
}
Words HighTurns(Shorts a) {
  return reinterpret_cast<Words>(__builtin_shufflevector(a, a, 4, 4, 5, 5, 6, 6, 7, 7));
}

void Interleave(const Bytes (&rows)[kBlock], Bytes (&next)[kBlock]) {
  for (int i = 0; i < kBlock / 2; ++i) {
    next[2 * i] = LowTurns(rows[i], rows[i + kBlock / 2]);
    next[2 * i + 1] = HighTurns(rows[i], rows[i + kBlock / 2]);
  }
}

Words ScalarBits() {
  constexpr float kInside = 255.0F;
  std::uint32_t bits = 0;
  std::memcpy(&bits, &kInside, sizeof bits);
  return Words{} + bits;
}

/// 255 where a byte is not 0, else 0, as 16 floats in the bits of `scalars`.
void ToScalars(Bytes row, Words (&scalars)[4]) {
  const Words inside = ScalarBits();
  const auto mask = reinterpret_cast<Bytes>(row != 0);
  const auto low = reinterpret_cast<Shorts>(LowTurns(mask, mask));
  const auto high = reinterpret_cast<Shorts>(HighTurns(mask, mask));
  scalars[0] = LowTurns(low) & inside;
  scalars[1] = HighTurns(low) & inside;
  scalars[2] = LowTurns(high) & inside;
  scalars[3] = HighTurns(high) & inside;
}

/// Scalars of a large picture are not read soon: they go past the cache where the machine can.
void Stream(float* to, const Words (&scalars)[4]) {
#ifdef __SSE2__
  for (int i = 0; i < 4; ++i) {
    _mm_stream_si128(reinterpret_cast<__m128i*>(to + 4 * i), reinterpret_cast<__m128i>(scalars[i]));
  }
#else
  std::memcpy(to, scalars, sizeof scalars);
#endif
}

/// Whether the rows of a picture are to go past the cache, and begin where such writes have to.
bool CanStream(const WorkVolume& picture) {
  constexpr std::size_t kLarge = std::size_t{1} << 22U;  // scalars of 16 MiB
  const std::size_t planes = static_cast<std::size_t>(picture.dimX) *
                             static_cast<std::size_t>(picture.dimY) *
                             static_cast<std::size_t>(picture.dimZ);
  return planes >= kLarge && picture.dimX % 4 == 0 &&
         reinterpret_cast<std::uintptr_t>(picture.scalars) % 16 == 0;
}

}  // namespace

void Block::Turn() {
  // Each round interleaves the upper with the lower half: four of them swap row and column.
  Bytes other[kBlock];
  for (int twice = 0; twice < 2; ++twice) {
    Interleave(rows, other);
    Interleave(other, rows);
  }
}

void Slab::LoadMask(const LabelVolume& image, const LabelTest& test, const SlabPlace& at) {
  const int whole = at.countZ / kBlock;
  const int rest = at.countZ % kBlock;
  for (int i = 0; i < at.BlocksX() * kBlock; ++i) {
    auto& column = blocks[i / kBlock];
    const int row = i % kBlock;
    if (i >= at.countX) {
      for (int k = 0; k < at.BlocksZ(); ++k) { column[k].rows[row] = Bytes{}; }
      continue;
    }
    const std::uint8_t* run = image.voxels[at.x + i][at.y] + at.z;
    const std::uint8_t* next =
        image.voxels[at.x + std::min(i + kRunsAhead, at.countX - 1)][at.y] + at.z;
    for (int z = 0; z < at.countZ; z += kLine) { __builtin_prefetch(next + z); }
    for (int k = 0; k < whole; ++k) { column[k].rows[row] = test.Run(run + k * kBlock); }
    if (rest > 0) { column[whole].rows[row] = test.Run(run + whole * kBlock, rest); }
  }
}

void Slab::Turn(const SlabPlace& at) {
  for (int i = 0; i < at.BlocksX(); ++i) {
    for (int k = 0; k < at.BlocksZ(); ++k) {
      if (!blocks[i][k].Empty()) { blocks[i][k].Turn(); }
    }
  }
}

void StoreColours(const WorkVolume& picture, const SlabPlace& at, const Slab& colours) {
  const int whole = at.countZ / kBlock;
  const int rest = at.countZ % kBlock;
  for (int i = 0; i < at.countX; ++i) {
    const auto& column = colours.blocks[i / kBlock];
    const int row = i % kBlock;
    std::uint8_t* run = picture.colours[at.x + i][at.y] + at.z;
    const std::uint8_t* next =
        picture.colours[at.x + std::min(i + kRunsAhead, at.countX - 1)][at.y] + at.z;
    for (int z = 0; z < at.countZ; z += kLine) { __builtin_prefetch(next + z, 1); }
    for (int k = 0; k < whole; ++k) { std::memcpy(run + k * kBlock, &column[k].rows[row], kBlock); }
    if (rest > 0) {
      std::memcpy(run + whole * kBlock, &column[whole].rows[row], static_cast<std::size_t>(rest));
    }
  }
}

void StoreScalars(const WorkVolume& picture, const SlabPlace& at, const Slab& turned) {
  const bool streams = at.x % 4 == 0 && CanStream(picture);
  const int whole = at.countX / kBlock;
  const int rest = at.countX % kBlock;
  for (int z = 0; z < at.countZ; ++z) {
    float* to = picture.scalars + picture.Index(at.x, at.y, at.z + z);
    Words scalars[4];
    for (int i = 0; i < whole; ++i) {
      const Bytes& row = turned.blocks[i][z / kBlock].rows[z % kBlock];
      if (picture.scalarsAreZero && !Any(row)) { continue; }
      ToScalars(row, scalars);
      if (streams) {
        Stream(to + i * kBlock, scalars);
      } else {
        std::memcpy(to + i * kBlock, scalars, sizeof scalars);
      }
    }
    if (rest > 0) {
      ToScalars(turned.blocks[whole][z / kBlock].rows[z % kBlock], scalars);
      std::memcpy(to + whole * kBlock, scalars, static_cast<std::size_t>(rest) * sizeof(float));
    }
  }
}

}  // namespace measure
