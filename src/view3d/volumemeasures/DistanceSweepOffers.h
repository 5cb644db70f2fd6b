// What a voxel offers its neighbours: the squared length of its own vector moved there.
//
// Offers are formed a row at a time, since they share squares, and kept beside one another by the
// voxel that gives them; an offer outside the volume is infinite and never taken.
#pragma once

#include "view3d/volumemeasures/DistanceSweepBlock.h"

namespace measure {
namespace {

/// The steps of one sweep from voxel to voxel, and the offers that they make.
template <class Floats, class Lengths>
class Offering {
public:
  using Length = typename Lengths::Element;

  explicit Offering(const PlaneJob& job)
      : stay(Floats::All(0.0F)), toRight(Floats::All(-job.steps.x)),
        toLeft(Floats::All(job.steps.x)), down(Floats::All(-job.steps.y)),
        up(Floats::All(job.steps.y)),
        depth(Floats::All(job.backward ? job.steps.z : -job.steps.z)) {}

  /// Forms the offers of a block of the source plane. Returns what it offers the row above it,
  /// `upward` away.
  TOLVEX_INLINE Lengths FromPlane(ConstRow row, int at, Floats upward, const Offers<Length>& to,
                                  Length* toDown) const {
    const Floats x = Floats::Load(row.x + at);
    const Floats y = Floats::Load(row.y + at);
    const Lengths xx = Square<Lengths>(x);
    const Lengths yy = Square<Lengths>(y);
    const Lengths zz = Square<Lengths>(Floats::Load(row.z + at) + depth);
    ((xx + yy) + zz).Store(to.straight + at);
    ((Square<Lengths>(x + toRight) + yy) + zz).Store(to.right + at);
    ((Square<Lengths>(x + toLeft) + yy) + zz).Store(to.left + at);
    ((xx + Square<Lengths>(y + down)) + zz).Store(toDown + at);
    return (xx + Square<Lengths>(y + upward)) + zz;
  }

  /// Forms the offers of a block within its row, and to the next one, dy away.
  TOLVEX_INLINE void InPlane(const Block<Floats, Lengths>& block, int at, Floats dy,
                             const RowOffers<Length>& own, const Offers<Length>& to) const {
    const Lengths xx = Square<Lengths>(block.x);
    const Lengths yy = Square<Lengths>(block.y);
    const Lengths zz = Square<Lengths>(block.z);
    const Lengths right = Square<Lengths>(block.x + toRight);
    const Lengths left = Square<Lengths>(block.x + toLeft);
    const Lengths ahead = Square<Lengths>(block.y + dy);
    block.length.Store(own.held + at);
    ((right + yy) + zz).Store(own.right + at);
    ((left + yy) + zz).Store(own.left + at);
    ((xx + ahead) + zz).Store(to.straight + at);
    ((right + ahead) + zz).Store(to.right + at);
    ((left + ahead) + zz).Store(to.left + at);
  }

  /// The tries from the two voxels to the side in the row (dy, dz) away. Returns whether any is
  /// taken; so does the next.
  TOLVEX_INLINE bool TrySides(Block<Floats, Lengths>& block, const Offers<Length>& offers,
                              ConstRow row, int at, Floats dy, Floats dz) const {
    const bool taken =
        block.Try(Lengths::Load(offers.right + at - 1), row, at - 1, toRight, dy, dz);
    return block.Try(Lengths::Load(offers.left + at + 1), row, at + 1, toLeft, dy, dz) || taken;
  }
  /// The three tries from the row beside, dy away.
  TOLVEX_INLINE bool TryBeside(Block<Floats, Lengths>& block, const Offers<Length>& offers,
                               ConstRow row, int at, Floats dy) const {
    const bool taken = block.Try(Lengths::Load(offers.straight + at), row, at, stay, dy, stay);
    return TrySides(block, offers, row, at, dy, stay) || taken;
  }

  Floats stay;
  Floats toRight;
  Floats toLeft;
  Floats down;
  Floats up;
  Floats depth;  // from the source plane
};

}  // namespace
}  // namespace measure
