// The sweep of one plane of the distance transform, for vectors of any width.
//
// Everything in here has internal linkage and nothing calls an inline function of another header:
// the files that include it are compiled for different instruction sets.
//
// What a voxel offers a neighbour is the squared length of its own vector moved there. Offers are
// formed a row at a time, since they share squares, and kept beside one another by the voxel that
// gives them; an offer outside the volume is infinite and never taken.
#pragma once

#include "view3d/volumemeasures/DistancePlane.h"

#include <cstring>

// Vectors stay in registers only where these are part of their loop.
#define TOLVEX_INLINE inline __attribute__((always_inline))

namespace measure {
namespace {

/// Sweeps with the vectors `Floats` of components and `Lengths` of squared lengths.
template <class Floats, class Lengths>
class Sweep {
public:
  explicit Sweep(const PlaneJob& planeJob)
      : job(planeJob), stepX(Floats::All(job.steps.x)), stepLeft(Floats::All(-job.steps.x)),
        depth(job.backward ? job.steps.z : -job.steps.z), stepZ(Floats::All(depth)) {
    Length** const rows[kLengthRows] = {
        &along.held,     &along.right, &along.left,       &beside.straight,
        &beside.right,   &beside.left, &nextBeside.right, &nextBeside.left,
        &above.straight, &above.right, &above.left,       &nextAbove.right,
        &nextAbove.left, &aboveDown,   &nextAboveDown,    &none};
    Length* next = static_cast<Length*>(job.lengths) + kRowPad;
    for (Length** row : rows) {
      *row = next;
      next += job.stride;
    }
    nextBeside.straight = beside.straight;
    nextAbove.straight = above.straight;
  }

  void Run() {
    if (job.source == nullptr) {
      for (int y = 0; y < job.dimY; ++y) { StartRow(y); }
      return;
    }
    Down();
    Up();
  }

private:
  using Length = typename Lengths::Element;
  static constexpr int kLanes = Floats::kLanes;
  static constexpr float kNever = __builtin_inff();  // a step that no offer survives

  /// A row of vectors: element 0 of each component.
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
  /// What the voxels of a row offer the row or the plane beside it: straight, and one to the side.
  struct Offers {
    Length* straight;
    Length* right;
    Length* left;
  };
  /// The squared lengths of a row, and what its voxels offer one another.
  struct RowOffers {
    Length* held;
    Length* right;
    Length* left;
  };
  /// The vectors of a block of voxels and their squared lengths.
  struct Block {
    Floats x;
    Floats y;
    Floats z;
    Lengths length;
  };

  static TOLVEX_INLINE Lengths Square(Floats component) {
    const Lengths wide(component);
    return wide * wide;
  }
  static Length Square(float component) {
    const auto wide = static_cast<Length>(component);
    return wide * wide;
  }
  static void Swap(Offers& a, Offers& b) {
    const Offers other = a;
    a = b;
    b = other;
  }

  Row TargetRow(int y) const {
    float* row = job.target + std::ptrdiff_t{y} * 3 * job.stride + kRowPad;
    return {row, row + job.stride, row + 2 * job.stride};
  }
  ConstRow SourceRow(int y) const {
    return {job.source + std::ptrdiff_t{y} * 3 * job.stride + kRowPad, job.stride};
  }

  // ---- rows between the arrays and work memory ----

  void StartRow(int y) {
    const Row row = TargetRow(y);
    const std::int32_t* mask = job.mask + std::ptrdiff_t{y} * job.dimX;
    for (int x = 0; x < job.dimX; ++x) {
      row.x[x] = row.y[x] = row.z[x] = mask[x] != 0 ? 0.0F : job.steps.far;
    }
    WriteRow(y);
  }
  void WriteRow(int y) const {
    const Row row = TargetRow(y);
    const std::ptrdiff_t first = std::ptrdiff_t{y} * job.dimX;
    const std::size_t bytes = sizeof(float) * static_cast<std::size_t>(job.dimX);
    std::memcpy(job.x + first, row.x, bytes);
    std::memcpy(job.y + first, row.y, bytes);
    std::memcpy(job.z + first, row.z, bytes);
  }
  /// Puts into the target row what its start is read from.
  void ReadRow(int y) const {
    const Row row = TargetRow(y);
    const std::ptrdiff_t first = std::ptrdiff_t{y} * job.dimX;
    const std::size_t bytes = sizeof(float) * static_cast<std::size_t>(job.dimX);
    if (!job.backward) {
      std::memcpy(row.x, job.mask + first, bytes);
      return;
    }
    std::memcpy(row.x, job.x + first, bytes);
    std::memcpy(row.y, job.y + first, bytes);
    std::memcpy(row.z, job.z + first, bytes);
  }

  // ---- offers ----

  /// Forms the offers of a block of the source plane. Returns what it offers the row above it.
  TOLVEX_INLINE Lengths OfferFromPlane(ConstRow row, int at, Floats up, const Offers& to,
                                       Length* toDown) const {
    const Floats x = Floats::Load(row.x + at);
    const Floats y = Floats::Load(row.y + at);
    const Lengths xx = Square(x);
    const Lengths yy = Square(y);
    const Lengths zz = Square(Floats::Load(row.z + at) + stepZ);
    ((xx + yy) + zz).Store(to.straight + at);
    ((Square(x + stepLeft) + yy) + zz).Store(to.right + at);
    ((Square(x + stepX) + yy) + zz).Store(to.left + at);
    ((xx + Square(y + Floats::All(-job.steps.y))) + zz).Store(toDown + at);
    return (xx + Square(y + up)) + zz;
  }

  /// Forms the offers of a block within its row, and to the next one, dy away.
  TOLVEX_INLINE void OfferInPlane(const Block& block, int at, Floats dy, const RowOffers& own,
                                  const Offers& to) const {
    const Lengths xx = Square(block.x);
    const Lengths yy = Square(block.y);
    const Lengths zz = Square(block.z);
    const Lengths right = Square(block.x + stepLeft);
    const Lengths left = Square(block.x + stepX);
    const Lengths ahead = Square(block.y + dy);
    block.length.Store(own.held + at);
    ((right + yy) + zz).Store(own.right + at);
    ((left + yy) + zz).Store(own.left + at);
    ((xx + ahead) + zz).Store(to.straight + at);
    ((right + ahead) + zz).Store(to.right + at);
    ((left + ahead) + zz).Store(to.left + at);
  }
  /// The same for one voxel.
  void OfferInPlane(const Row& row, int at, float dy) {
    const Length xx = Square(row.x[at]);
    const Length yy = Square(row.y[at]);
    const Length zz = Square(row.z[at]);
    const Length right = Square(row.x[at] - job.steps.x);
    const Length left = Square(row.x[at] + job.steps.x);
    const Length ahead = Square(row.y[at] + dy);
    along.right[at] = (right + yy) + zz;
    along.left[at] = (left + yy) + zz;
    beside.straight[at] = (xx + ahead) + zz;
    beside.right[at] = (right + ahead) + zz;
    beside.left[at] = (left + ahead) + zz;
  }
  /// Behind the end of a row lies nothing to take, and nothing takes.
  void EndOffers() {
    along.left[job.dimX] = beside.left[job.dimX] = static_cast<Length>(kNever);
    for (int x = job.dimX; x % kLanes != 0; ++x) { along.held[x] = 0; }
  }
  void Forget(const Offers& offers) const {
    const auto bytes = sizeof(Length) * static_cast<std::size_t>(job.stride - kRowPad);
    Length* const rows[] = {offers.straight, offers.right, offers.left};
    for (Length* row : rows) { std::memcpy(row, none, bytes); }
  }

  // ---- tries ----

  /// Takes an offer where it is shorter; returns whether it is anywhere. The vectors that give it
  /// begin at element `from` of a row.
  static TOLVEX_INLINE bool Try(Block& block, Lengths offer, ConstRow row, int from, Floats dx,
                                Floats dy, Floats dz) {
    const auto shorter = offer < block.length;
    if (!shorter.Any()) { return false; }
    block.x = shorter.Pick(Floats::Load(row.x + from) + dx, block.x);
    block.y = shorter.Pick(Floats::Load(row.y + from) + dy, block.y);
    block.z = shorter.Pick(Floats::Load(row.z + from) + dz, block.z);
    block.length = Min(offer, block.length);
    return true;
  }
  /// The three tries from the row beside, dy away.
  TOLVEX_INLINE bool TryBeside(Block& block, const Offers& offers, ConstRow row, int at,
                               Floats dy) const {
    const Floats stay = Floats::All(0.0F);
    bool taken = Try(block, Lengths::Load(offers.straight + at), row, at, stay, dy, stay);
    taken |= Try(block, Lengths::Load(offers.right + at - 1), row, at - 1, stepLeft, dy, stay);
    taken |= Try(block, Lengths::Load(offers.left + at + 1), row, at + 1, stepX, dy, stay);
    return taken;
  }

  template <bool backward>
  TOLVEX_INLINE Block StartBlock(const Row& row, int at) const {
    if (backward) { return Held(row, at); }
    const Floats start =
        Floats::All(job.steps.far) + Floats::All(-job.steps.far) * Floats::OfInts(row.x + at);
    const Lengths square = Square(start);
    return {start, start, start, (square + square) + square};
  }

  // ---- the plane ----

  /// From the neighbouring plane, and from row to row down the plane.
  void Down() {
    Forget(beside);
    std::memcpy(aboveDown, none, sizeof(Length) * static_cast<std::size_t>(job.stride - kRowPad));
    for (int at = 0; at < job.dimX; at += kLanes) {
      OfferFromPlane(SourceRow(0), at, Floats::All(kNever), nextAbove, nextAboveDown);
    }
    NextSourceRow();
    for (int y = 0; y < job.dimY; ++y) {
      job.backward ? DownRow<true>(y) : DownRow<false>(y);
      NextSourceRow();
      Swap(beside, nextBeside);
      EndOffers();
      if (y > 0) { AlongRow(TargetRow(y), -job.steps.y); }
    }
    WriteRow(job.dimY - 1);
  }
  void NextSourceRow() {
    Swap(above, nextAbove);
    above.left[job.dimX] = static_cast<Length>(kNever);
    // The row before the last gives way to the row after the next.
    Length* const other = aboveDown;
    aboveDown = nextAboveDown;
    nextAboveDown = other;
  }

  template <bool backward>
  void DownRow(int y) {
    const bool last = y == job.dimY - 1;
    const Row row = TargetRow(y);
    const ConstRow rowBefore = y > 0 ? TargetRow(y - 1) : row;
    const ConstRow source = SourceRow(y);
    const ConstRow sourceBefore = y > 0 ? SourceRow(y - 1) : source;
    const ConstRow sourceAfter = last ? source : SourceRow(y + 1);
    const Floats stay = Floats::All(0.0F);
    const Floats down = Floats::All(-job.steps.y);
    const Floats up = Floats::All(job.steps.y);
    const Floats offered = last ? Floats::All(kNever) : up;
    ReadRow(y);
    // The stores of a loop may not be thought to change where it reads and writes.
    const Offers fromSource = above;
    const Offers toTarget = nextAbove;
    Length* const fromDown = nextAboveDown;
    const Offers fromRow = beside;
    const Offers toRow = nextBeside;
    const RowOffers own = along;
    const int end = job.dimX;
    for (int at = 0; at < end; at += kLanes) {
      const Lengths straight = Lengths::Load(fromSource.straight + at);
      const Lengths fromBefore = Lengths::Load(fromDown + at);
      const Lengths fromAfter = OfferFromPlane(sourceAfter, at, offered, toTarget, fromDown);
      Block block = StartBlock<backward>(row, at);
      Try(block, straight, source, at, stay, stay, stepZ);
      Try(block, fromBefore, sourceBefore, at, stay, down, stepZ);
      Try(block, fromAfter, sourceAfter, at, stay, up, stepZ);
      Try(block, Lengths::Load(fromSource.right + at - 1), source, at - 1, stepLeft, stay, stepZ);
      Try(block, Lengths::Load(fromSource.left + at + 1), source, at + 1, stepX, stay, stepZ);
      TryBeside(block, fromRow, rowBefore, at, down);
      block.x.Store(row.x + at);
      block.y.Store(row.y + at);
      block.z.Store(row.z + at);
      OfferInPlane(block, at, down, own, toRow);
    }
  }

  /// From row to row up the plane.
  void Up() {
    const Floats up = Floats::All(job.steps.y);
    for (int at = 0; at < job.dimX; at += kLanes) {
      OfferInPlane(Held(TargetRow(job.dimY - 1), at), at, up, along, nextBeside);
    }
    Swap(beside, nextBeside);
    EndOffers();
    for (int y = job.dimY - 2; y >= 0; --y) {
      const Row row = TargetRow(y);
      UpRow(row, TargetRow(y + 1), up);
      Swap(beside, nextBeside);
      EndOffers();
      AlongRow(row, job.steps.y);
      WriteRow(y);
    }
  }
  static TOLVEX_INLINE Block Held(const Row& row, int at) {
    const Floats x = Floats::Load(row.x + at);
    const Floats y = Floats::Load(row.y + at);
    const Floats z = Floats::Load(row.z + at);
    return {x, y, z, (Square(x) + Square(y)) + Square(z)};
  }
  void UpRow(const Row& row, const Row& rowAfter, Floats up) {
    const Offers fromRow = beside;
    const Offers toRow = nextBeside;
    const RowOffers own = along;
    const int end = job.dimX;
    for (int at = 0; at < end; at += kLanes) {
      Block block = Held(row, at);
      if (TryBeside(block, fromRow, rowAfter, at, up)) {
        block.x.Store(row.x + at);
        block.y.Store(row.y + at);
        block.z.Store(row.z + at);
      }
      OfferInPlane(block, at, up, own, toRow);
    }
  }

  // ---- along a row ----

  /// To the right and to the left. Few rows take any offer: all are asked at once, and a pass
  /// starts where the first voxel takes one. dy is the step to the next row.
  void AlongRow(const Row& row, float dy) {
    const RowOffers own = along;
    auto right = Lengths::Load(own.right - 1) < Lengths::Load(own.held);
    auto left = Lengths::Load(own.left + 1) < Lengths::Load(own.held);
    for (int at = kLanes; at < job.dimX; at += kLanes) {
      const Lengths length = Lengths::Load(own.held + at);
      right = right | (Lengths::Load(own.right + at - 1) < length);
      left = left | (Lengths::Load(own.left + at + 1) < length);
    }
    const bool moved = right.Any();
    if (moved) { PassRight(row, dy); }
    if (moved || left.Any()) { PassLeft(row, dy); }
  }

  void PassRight(const Row& row, float dy) {
    const RowOffers own = along;
    int x = 1;
    for (int at = 0; at < job.dimX; at += kLanes) {
      if (!(Lengths::Load(own.right + at - 1) < Lengths::Load(own.held + at)).Any()) { continue; }
      for (x = at > x ? at : x; x < at + kLanes && x < job.dimX; ++x) {
        if (own.right[x - 1] < own.held[x]) {
          Take(row, x, x - 1, -job.steps.x, own.right[x - 1], dy);
        }
      }
    }
  }
  void PassLeft(const Row& row, float dy) {
    const RowOffers own = along;
    int x = job.dimX - 2;
    for (int at = (job.dimX - 1) / kLanes * kLanes; at >= 0; at -= kLanes) {
      if (!(Lengths::Load(own.left + at + 1) < Lengths::Load(own.held + at)).Any()) { continue; }
      for (x = at + kLanes - 1 < x ? at + kLanes - 1 : x; x >= at; --x) {
        if (own.left[x + 1] < own.held[x]) {
          Take(row, x, x + 1, job.steps.x, own.left[x + 1], dy);
        }
      }
    }
  }
  void Take(const Row& row, int x, int from, float dx, Length length, float dy) {
    row.x[x] = row.x[from] + dx;
    row.y[x] = row.y[from];
    row.z[x] = row.z[from];
    along.held[x] = length;
    OfferInPlane(row, x, dy);
  }

  const PlaneJob& job;
  Floats stepX;
  Floats stepLeft;
  float depth;  // step from the source plane
  Floats stepZ;
  RowOffers along{};  // of the row that is swept
  Offers beside{};    // of the row swept before
  Offers nextBeside{};
  Offers above{};  // of the source plane's row beside the target row
  Offers nextAbove{};
  Length* aboveDown = nullptr;  // what rows of the source plane offer the one after them
  Length* nextAboveDown = nullptr;
  Length* none = nullptr;  // infinite throughout
};

template <class Floats, class Lengths>
void RunSweep(const PlaneJob& job) {
  Sweep<Floats, Lengths>(job).Run();
}

}  // namespace
}  // namespace measure
