// The contour of a label on a slice: found, numbered by a wave, walked back and measured.
#pragma once

#include "base/LabelSlice.h"
#include "views/slicemeasures/Picture.h"

namespace measure {

constexpr std::int32_t kContourPixel = 65000;
constexpr std::int32_t kWalkedPixel = 30000;  ///< left by the walk, painted over in the end
constexpr int kWaveSweeps = 300;

/// The two pictures of a contour measure. `mark` is the work image of the contour rule first, and
/// then holds the wave numbers: 0 none, 1 the start, every further pixel one more than the pixel
/// that reached it. Pixels beyond the slice keep what larger slices left there.
struct ContourPictures {
  Picture& result;
  Picture& mark;
  SliceSize size;
};

/// The pixels that the wave visits: all of the slice, or all but its outermost ring.
enum class WaveExtent { Interior, Whole };

/// Paints the contour of `label` in the interior of the slice: 65000 on it, 0 elsewhere.
///
/// A pixel with the label in its 3 x 3 neighbourhood is on the contour where the sum of its four
/// straight neighbours is above 8 times its own value. The values are the raw bytes, so that
/// another label that touches counts with its number. The border of the slice keeps its pixels.
/// `otherSlice` is read in the direction XZ alone, see the source.
/// Returns: the number of interior pixels with the label.
int PaintContour(const LabelSlice& slice, int otherSlice, int label, const ContourPictures& on);

/// The same for the region of `label` in `a` alone, whatever other labels touch it.
///
/// ON PURPOSE: the border of `mark` takes part in the rule as an earlier measure left it.
/// Returns: the number of interior pixels that bear the label in exactly one of the two slices.
int PaintContourOfFirst(const LabelSlice& a, const LabelSlice& b, int label,
                        const ContourPictures& on);

/// The first contour pixel, the smallest i first; (width, height) where there is none.
PicturePixel FirstContourPixel(const ContourPictures& on);

/// Marks the start with 1 and the first of its contour neighbours with 2, so that the wave leaves
/// in one sense only. All other pixels of the slice are unmarked before.
void StartWave(PicturePixel start, const ContourPictures& on);

/// One step of the wave: a marked pixel hands its number plus 1 to its unmarked contour neighbours.
/// The start itself does not. `perimeter` grows by 1 for each pixel reached.
void StepWave(PicturePixel start, PicturePixel pixel, const ContourPictures& on, float& perimeter);

/// The numbers that 300 sweeps of StepWave over `extent` leave, i outer and j inner.
/// What a sweep does not reach is not visited, which makes this fast.
void RunWave(PicturePixel start, WaveExtent extent, const ContourPictures& on);

/// The first pixel with the highest number; `fallback` where none has one.
PicturePixel FarthestPixel(PicturePixel fallback, const ContourPictures& on);

/// Adds the length of the path from `from` along falling or equal numbers down to number 2: 1 for
/// a straight step and the square root of 2 for a diagonal one, rounded to 32 bits at each step.
///
/// The pixels left are painted 30000. A walk that comes back to a pixel stops before it, since it
/// would go round for ever.
void WalkBack(PicturePixel from, const ContourPictures& on, float& perimeter);

/// Paints 65000 on all marked pixels of the slice.
void PaintMarked(const ContourPictures& on);

/// What the measures tell about a contour; `pixel` is where the walk began.
struct ContourWalk {
  float perimeter = 0.0F;
  PicturePixel pixel;
};

/// The wave from the first contour pixel and the walk back from the farthest one, painted.
/// The perimeter is that of an open path: the links to and from the start are not in it.
ContourWalk WalkContour(WaveExtent extent, const ContourPictures& on);

/// perimeter² / (area * 4 pi): 1 for a disc. Infinite or not a number for an area of 0.
double ContourComplexity(float perimeter, int area);

}  // namespace measure
