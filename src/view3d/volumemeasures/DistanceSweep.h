// The sweep of one plane of the distance transform, for vectors of any width.
#pragma once

#include "view3d/volumemeasures/DistanceSweepAlong.h"
#include "view3d/volumemeasures/DistanceSweepOffers.h"

namespace measure {
namespace {

/// Sweeps with the vectors `Floats` of components and `Lengths` of squared lengths.
template <class Floats, class Lengths>
class Sweep {
public:
  explicit Sweep(const PlaneJob& planeJob) : job(planeJob), rows(planeJob), lengths(planeJob) {}

  void Run() {
    if (job.source == nullptr) {
      for (int y = 0; y < job.dimY; ++y) { rows.Start(y); }
      return;
    }
    Down();
    Up();
  }

private:
  using Length = typename Lengths::Element;
  using Voxels = Block<Floats, Lengths>;
  using Steps = Offering<Floats, Lengths>;
  static constexpr int kLanes = Floats::kLanes;

  void Pass(const Row& row, float dy) const {
    AlongRow<Floats, Lengths>(job, lengths, row, dy).Run();
  }

  /// From the neighbouring plane, and from row to row down the plane.
  void Down() {
    const Steps by(job);
    lengths.Forget();
    for (int at = 0; at < job.dimX; at += kLanes) {
      by.FromPlane(rows.Source(0), at, Floats::All(kNever), lengths.nextAbove,
                   lengths.nextAboveDown);
    }
    lengths.NextSourceRow();
    for (int y = 0; y < job.dimY; ++y) {
      rows.Read(y);
      job.backward ? DownRow<true>(y) : DownRow<false>(y);
      lengths.NextSourceRow();
      lengths.NextRow(kLanes);
      if (y > 0) { Pass(rows.Target(y), -job.steps.y); }
    }
    rows.Write(job.dimY - 1);
  }

  template <bool backward>
  void DownRow(int y) {
    const bool last = y == job.dimY - 1;
    const Row row = rows.Target(y);
    const ConstRow rowBefore = y > 0 ? rows.Target(y - 1) : row;
    const ConstRow source = rows.Source(y);
    const ConstRow sourceBefore = y > 0 ? rows.Source(y - 1) : source;
    const ConstRow sourceAfter = last ? source : rows.Source(y + 1);
    // A copy, as are the steps: the compiler need not think that a store changes them.
    const SweepLengths<Length> own = lengths;
    const Steps by(job);
    const Floats upward = last ? Floats::All(kNever) : by.up;
    for (int at = 0, end = job.dimX; at < end; at += kLanes) {
      const Lengths straight = Lengths::Load(own.above.straight + at);
      const Lengths fromBefore = Lengths::Load(own.nextAboveDown + at);
      const Lengths fromAfter =
          by.FromPlane(sourceAfter, at, upward, own.nextAbove, own.nextAboveDown);
      auto block = backward ? Voxels::Load(row, at) : Voxels::Start(row, at, job.steps.far);
      block.Try(straight, source, at, by.stay, by.stay, by.depth);
      block.Try(fromBefore, sourceBefore, at, by.stay, by.down, by.depth);
      block.Try(fromAfter, sourceAfter, at, by.stay, by.up, by.depth);
      by.TrySides(block, own.above, source, at, by.stay, by.depth);
      by.TryBeside(block, own.beside, rowBefore, at, by.down);
      block.Store(row, at);
      by.InPlane(block, at, by.down, own.along, own.nextBeside);
    }
  }

  /// From row to row up the plane.
  void Up() {
    const Steps by(job);
    const Row last = rows.Target(job.dimY - 1);
    for (int at = 0; at < job.dimX; at += kLanes) {
      by.InPlane(Voxels::Load(last, at), at, by.up, lengths.along, lengths.nextBeside);
    }
    lengths.NextRow(kLanes);
    for (int y = job.dimY - 2; y >= 0; --y) {
      UpRow(rows.Target(y), rows.Target(y + 1));
      lengths.NextRow(kLanes);
      Pass(rows.Target(y), job.steps.y);
      rows.Write(y);
    }
  }

  void UpRow(const Row& row, const Row& rowAfter) {
    const SweepLengths<Length> own = lengths;
    const Steps by(job);
    for (int at = 0, end = job.dimX; at < end; at += kLanes) {
      auto block = Voxels::Load(row, at);
      if (by.TryBeside(block, own.beside, rowAfter, at, by.up)) { block.Store(row, at); }
      by.InPlane(block, at, by.up, own.along, own.nextBeside);
    }
  }

  const PlaneJob& job;
  PlaneRows rows;
  SweepLengths<Length> lengths;
};

template <class Floats, class Lengths>
void RunSweep(const PlaneJob& job) {
  Sweep<Floats, Lengths>(job).Run();
}

}  // namespace
}  // namespace measure
