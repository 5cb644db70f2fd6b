// The passes along a row: to the right and to the left, where each voxel waits for the one before.
#pragma once

#include "view3d/volumemeasures/DistanceSweepLengths.h"

namespace measure {
namespace {

/// Few rows take any offer: all are asked at once, and a pass starts where the first voxel takes
/// one.
template <class Floats, class Lengths>
class AlongRow {
public:
  using Length = typename Lengths::Element;

  /// `dy` is the step to the next row.
  AlongRow(const PlaneJob& planeJob, const SweepLengths<Length>& lengths, const Row& swept,
           float dy)
      : job(planeJob), own(lengths.along), next(lengths.beside), row(swept), ahead(dy) {}

  void Run() const {
    auto right = TakesFromLeft(0);
    auto left = TakesFromRight(0);
    for (int at = kLanes; at < job.dimX; at += kLanes) {
      right = right | TakesFromLeft(at);
      left = left | TakesFromRight(at);
    }
    const bool moved = right.Any();
    if (moved) { PassRight(); }
    if (moved || left.Any()) { PassLeft(); }
  }

private:
  static constexpr int kLanes = Floats::kLanes;

  TOLVEX_INLINE auto TakesFromLeft(int at) const {
    return Lengths::Load(own.right + at - 1) < Lengths::Load(own.held + at);
  }
  TOLVEX_INLINE auto TakesFromRight(int at) const {
    return Lengths::Load(own.left + at + 1) < Lengths::Load(own.held + at);
  }

  void PassRight() const {
    int x = 1;
    for (int at = 0; at < job.dimX; at += kLanes) {
      if (!TakesFromLeft(at).Any()) { continue; }
      for (x = at > x ? at : x; x < at + kLanes && x < job.dimX; ++x) {
        if (own.right[x - 1] < own.held[x]) { Take(x, x - 1, -job.steps.x, own.right[x - 1]); }
      }
    }
  }
  void PassLeft() const {
    int x = job.dimX - 2;
    for (int at = (job.dimX - 1) / kLanes * kLanes; at >= 0; at -= kLanes) {
      if (!TakesFromRight(at).Any()) { continue; }
      for (x = at + kLanes - 1 < x ? at + kLanes - 1 : x; x >= at; --x) {
        if (own.left[x + 1] < own.held[x]) { Take(x, x + 1, job.steps.x, own.left[x + 1]); }
      }
    }
  }

  void Take(int x, int from, float dx, Length length) const {
    row.x[x] = row.x[from] + dx;
    row.y[x] = row.y[from];
    row.z[x] = row.z[from];
    own.held[x] = length;
    Offer(x);
  }
  /// Forms the offers of one voxel anew.
  void Offer(int x) const {
    const auto square = [](float component) {
      const auto wide = static_cast<Length>(component);
      return wide * wide;
    };
    const Length xx = square(row.x[x]);
    const Length yy = square(row.y[x]);
    const Length zz = square(row.z[x]);
    const Length right = square(row.x[x] - job.steps.x);
    const Length left = square(row.x[x] + job.steps.x);
    const Length beyond = square(row.y[x] + ahead);
    own.right[x] = (right + yy) + zz;
    own.left[x] = (left + yy) + zz;
    next.straight[x] = (xx + beyond) + zz;
    next.right[x] = (right + beyond) + zz;
    next.left[x] = (left + beyond) + zz;
  }

  const PlaneJob& job;
  const RowOffers<Length> own;
  const Offers<Length> next;
  const Row row;
  const float ahead;
};

}  // namespace
}  // namespace measure
