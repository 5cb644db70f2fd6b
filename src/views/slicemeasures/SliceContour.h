// The contour of a label on a slice: found, numbered by a wave, and walked back.
#pragma once

#include "base/LabelSlice.h"
#include "views/slicemeasures/Picture.h"

namespace measure {

constexpr std::int32_t kContour = 65000;  ///< contour pixel in the picture
constexpr std::int32_t kWalked = 30000;   ///< pixel that the walk back has left

struct Pixel {
  int i = 0;
  int j = 0;
};

/// Paints the contour of `label` on the interior pixels: 65000 on it, else 0. Border pixels stay.
///
/// Returns: how many interior pixels bear the label.
/// ON PURPOSE: the rule works on the raw bytes, so where another label touches its value counts;
/// and along direction 1 the term of the pixel before reads slice `otherSlice` of the volume.
int FindContour(const LabelSlice& slice, int label, int otherSlice, int width, int height,
                Picture& result);

/// The same on Image 1 alone, through `mark`, whose border cells keep what they held.
///
/// Returns: how many interior pixels exactly one of the two images has.
int FindContourOfFirst(const LabelSlice& first, const LabelSlice& second, int label, int width,
                       int height, Picture& mark, Picture& result);

/// First contour pixel by column, then row; (width, height) when there is none.
Pixel FindStart(const Picture& result, int width, int height);

/// The pixels that one sweep of the wave visits, each end included.
struct SweepRange {
  int firstI, lastI, firstJ, lastJ;
};

/// Numbers the contour from `start`: clears `mark` on the slice, 1 at the start, 2 at its first
/// neighbour, then 300 sweeps. Returns how many pixels the sweeps numbered.
int NumberContour(Pixel start, const Picture& result, int width, int height, SweepRange range,
                  Picture& mark);

/// One step of the wave at a pixel other than the start. Returns how many neighbours it numbered.
int WaveStep(int i, int j, const Picture& result, Picture& mark);

/// The first pixel with the highest number; `none` where all are 0.
Pixel FindFarthest(const Picture& mark, int width, int height, Pixel none);

/// Length of the walk from `from` down the numbers: 1 for straight, the root of 2 for diagonal
/// steps, added to `perimeter` in 32 bits. The walk ends where no step is left, or where it would
/// come to a pixel that it has been on: from there it would go round for ever.
float WalkBack(Pixel from, const Picture& mark, Picture& result, float perimeter);

/// 65000 wherever the slice has a number.
void ShowNumbered(const Picture& mark, int width, int height, Picture& result);

}  // namespace measure
