// The rows of squared lengths that a sweep keeps, and how they change roles from row to row.
#pragma once

#include "view3d/volumemeasures/DistanceSweepBlock.h"

namespace measure {
namespace {

template <class Length>
class SweepLengths {
public:
  RowOffers<Length> along{};  ///< of the row that is swept
  Offers<Length> beside{};    ///< of the row swept before
  Offers<Length> nextBeside{};
  Offers<Length> above{};  ///< of the source plane's row beside the target row
  Offers<Length> nextAbove{};
  Length* nextAboveDown = nullptr;  ///< what a row of the source plane offers the one after it

  explicit SweepLengths(const PlaneJob& planeJob) : job(planeJob) {
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
    // A block reads the old offer before it stores the new one in its place.
    nextBeside.straight = beside.straight;
    nextAbove.straight = above.straight;
  }

  /// Ahead of the first row nothing is offered.
  void Forget() const {
    Length* const rows[] = {beside.straight, beside.right, beside.left, aboveDown};
    for (Length* row : rows) {
      std::memcpy(row, none, sizeof(Length) * static_cast<std::size_t>(job.stride - kRowPad));
    }
  }

  /// Turns to the next row of the target plane, for blocks of `lanes` voxels.
  void NextRow(int lanes) {
    Swap(beside, nextBeside);
    // Behind the end of a row lies nothing to take, and nothing takes.
    along.left[job.dimX] = beside.left[job.dimX] = static_cast<Length>(kNever);
    for (int x = job.dimX; x % lanes != 0; ++x) { along.held[x] = 0; }
  }
  /// Turns to the next row of the source plane.
  void NextSourceRow() {
    Swap(above, nextAbove);
    above.left[job.dimX] = static_cast<Length>(kNever);
    // The row before the last gives way to the row after the next.
    Swap(aboveDown, nextAboveDown);
  }

private:
  template <class Value>
  static void Swap(Value& a, Value& b) {
    const Value other = a;
    a = b;
    b = other;
  }

  const PlaneJob& job;
  Length* aboveDown = nullptr;
  Length* none = nullptr;  // infinite throughout
};

}  // namespace
}  // namespace measure
