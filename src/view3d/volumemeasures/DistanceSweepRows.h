// The rows of a plane that is swept: in work memory, and in the arrays of the volume.
//
// Everything in here and in the other headers of the sweep has internal linkage, and nothing calls
// an inline function from elsewhere: the files that include them are compiled for different
// instruction sets.
#pragma once

#include "view3d/volumemeasures/DistancePlane.h"

#include <cstring>

// Vectors stay in registers only where these are part of their loop.
#define TOLVEX_INLINE inline __attribute__((always_inline))

namespace measure {
namespace {

/// A row of vectors in work memory: element 0 of each component.
struct Row {
  float* x;
  float* y;
  float* z;
};
struct ConstRow {
  const float* x;
  const float* y;
  const float* z;

  ConstRow(const float* row, int stride) : x(row), y(row + stride), z(row + 2 * stride) {}
  ConstRow(const Row& row) : x(row.x), y(row.y), z(row.z) {}
};

/// The rows of one plane's job.
class PlaneRows {
public:
  explicit PlaneRows(const PlaneJob& planeJob) : job(planeJob) {}

  Row Target(int y) const {
    float* row = job.target + std::ptrdiff_t{y} * 3 * job.stride + kRowPad;
    return {row, row + job.stride, row + 2 * job.stride};
  }
  ConstRow Source(int y) const {
    return {job.source + std::ptrdiff_t{y} * 3 * job.stride + kRowPad, job.stride};
  }

  /// Leaves start vectors in the target row and in the arrays.
  void Start(int y) const {
    const Row row = Target(y);
    const std::int32_t* mask = job.mask + FirstOf(y);
    for (int x = 0; x < job.dimX; ++x) {
      row.x[x] = row.y[x] = row.z[x] = mask[x] != 0 ? 0.0F : job.steps.far;
    }
    Write(y);
  }
  /// Puts into the target row what it starts from: the mask as x forward, the vectors backward.
  void Read(int y) const {
    const Row row = Target(y);
    const std::ptrdiff_t first = FirstOf(y);
    if (y + kAhead < job.dimY) { Fetch<kForReading>(y + kAhead); }
    if (!job.backward) {
      std::memcpy(row.x, job.mask + first, Bytes());
      return;
    }
    std::memcpy(row.x, job.x + first, Bytes());
    std::memcpy(row.y, job.y + first, Bytes());
    std::memcpy(row.z, job.z + first, Bytes());
  }
  /// Brings the target row to the arrays. Called from the last row up.
  void Write(int y) const {
    const Row row = Target(y);
    const std::ptrdiff_t first = FirstOf(y);
    if (y >= kAhead) { Fetch<kForWriting>(y - kAhead); }
    std::memcpy(job.x + first, row.x, Bytes());
    std::memcpy(job.y + first, row.y, Bytes());
    std::memcpy(job.z + first, row.z, Bytes());
  }

private:
  static constexpr int kAhead = 4;  // rows between the row that is swept and the one fetched
  static constexpr int kForReading = 0;
  static constexpr int kForWriting = 1;

  /// Has the memory bring a row of the arrays while others are swept; the processor itself does not
  /// see in time where the rows go on. Inline: GCC drops calls of what seems to have no effect.
  template <int use>
  TOLVEX_INLINE void Fetch(int y) const {
    constexpr int kLine = 16;  // elements that come at once
    const std::ptrdiff_t first = FirstOf(y);
    for (int x = 0; x < job.dimX; x += kLine) {
      if (use == kForReading && !job.backward) {
        __builtin_prefetch(job.mask + first + x, use);
        continue;
      }
      __builtin_prefetch(job.x + first + x, use);
      __builtin_prefetch(job.y + first + x, use);
      __builtin_prefetch(job.z + first + x, use);
    }
  }

  std::ptrdiff_t FirstOf(int y) const { return std::ptrdiff_t{y} * job.dimX; }
  std::size_t Bytes() const { return sizeof(float) * static_cast<std::size_t>(job.dimX); }

  const PlaneJob& job;
};

}  // namespace
}  // namespace measure
