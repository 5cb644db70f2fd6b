#include "views/slicemeasures/SliceContour.h"

#include <algorithm>
#include <bitset>
#include <cmath>
#include <functional>
#include <queue>
#include <vector>

namespace measure {

namespace {

constexpr double kFourPi = 12.56637061432;  // these digits: results are compared over years
constexpr int kPicturePixels = kMaxSliceSide * kMaxSliceSide;

struct Step {
  int i, j;
};

// clang-format off
/// The order in which the start looks for the one neighbour that leads the wave.
constexpr Step kStartSteps[] = {
  {-1, -1}, {0, -1}, {+1, -1}, {-1, 0}, {+1, 0}, {-1, +1}, {0, +1}, {+1, +1},
};
/// The order of the wave and of the walk: diagonal steps before straight ones.
constexpr Step kWaveSteps[] = {
  {-1, -1}, {-1, +1}, {+1, +1}, {+1, -1}, {-1, 0}, {0, +1}, {+1, 0}, {0, -1},
};
// clang-format on

bool InPicture(PicturePixel p) {
  return p.i >= 0 && p.i < kMaxSliceSide && p.j >= 0 && p.j < kMaxSliceSide;
}

PicturePixel Neighbour(PicturePixel p, Step step) { return {p.i + step.i, p.j + step.j}; }

/// A pixel of a picture; 0 beyond its edge.
std::int32_t ValueAt(const Picture& picture, PicturePixel p) {
  return InPicture(p) ? picture[p.i][p.j] : 0;
}

int PlaceOf(PicturePixel p) { return p.i * kMaxSliceSide + p.j; }

bool IsUnmarkedContour(PicturePixel p, const ContourPictures& on) {
  return InPicture(p) && on.result[p.i][p.j] == kContourPixel && on.mark[p.i][p.j] == 0;
}

/// Visits the interior of the slice, i outer and j inner.
template <class Visit>
void ForInterior(SliceSize size, Visit visit) {
  for (int i = 1; i < size.width - 1; ++i) {
    for (int j = 1; j < size.height - 1; ++j) { visit(i, j); }
  }
}

/// Whether one of the nine values round a pixel is the label.
bool LabelIsNear(const Picture& values, int label, int i, int j) {
  for (int column = i - 1; column <= i + 1; ++column) {
    const std::int32_t* row = &values[column][j];
    if (row[-1] == label || row[0] == label || row[1] == label) { return true; }
  }
  return false;
}

/// The contour rule on `mark`; `left(i, j)` is the value that counts as neighbour (-1, 0).
template <class Left>
void PaintByRule(int label, const ContourPictures& on, Left left) {
  const Picture& values = on.mark;
  ForInterior(on.size, [&](int i, int j) {
    on.result[i][j] = 0;
    if (!LabelIsNear(values, label, i, j)) { return; }
    const int sum = values[i + 1][j] + values[i][j + 1] + values[i][j - 1] + left(i, j);
    if (sum - 8 * values[i][j] > 0) { on.result[i][j] = kContourPixel; }
  });
}

/// Hands a pixel's number plus 1 on. `reached` is told of each neighbour that takes it.
template <class Reached>
void SpreadFrom(PicturePixel p, const ContourPictures& on, Reached reached) {
  for (const Step step : kWaveSteps) {
    const PicturePixel next = Neighbour(p, step);
    if (!IsUnmarkedContour(next, on)) { continue; }
    on.mark[next.i][next.j] = on.mark[p.i][p.j] + 1;
    reached(next);
  }
}

/// The visits of the sweeps that do something, in their order.
///
/// A pixel hands its number on at the first visit after it got it and never again, since its
/// neighbours are marked from then on. It got the number from a pixel of the same sweep: where
/// that one stands before it, it is visited in that sweep still, else in the next.
class Visits {
public:
  Visits(WaveExtent extent, SliceSize size) {
    const int margin = extent == WaveExtent::Interior ? 1 : 0;
    low = margin;
    highI = size.width - 1 - margin;
    highJ = size.height - 1 - margin;
  }

  /// The first visit to `p` at or behind place `from` of a sweep.
  void Add(PicturePixel p, int sweep, int from) {
    if (p.i < low || p.j < low || p.i > highI || p.j > highJ) { return; }
    const int place = PlaceOf(p);
    const int visited = place >= from ? sweep : sweep + 1;
    if (visited < kWaveSweeps) { waiting.push(visited * kPicturePixels + place); }
  }
  bool Empty() const { return waiting.empty(); }
  int Next() {
    const int visit = waiting.top();
    waiting.pop();
    return visit;
  }

private:
  int low, highI, highJ;
  std::priority_queue<int, std::vector<int>, std::greater<>> waiting;
};

}  // namespace

int PaintContour(const LabelSlice& slice, int otherSlice, int label, const ContourPictures& on) {
  for (int i = 0; i < on.size.width; ++i) {
    for (int j = 0; j < on.size.height; ++j) { on.mark[i][j] = slice.At(i, j); }
  }
  if (slice.direction == kSliceXZ) {
    // ON PURPOSE: along XZ the neighbour (-1, 0) of the sum comes from the slice that the slider
    // of YZ shows. The search for the label reads the right slice.
    PaintByRule(label, on,
                [&](int i, int j) -> int { return slice.AtSlice(i - 1, j, otherSlice); });
  } else {
    PaintByRule(label, on, [&](int i, int j) { return on.mark[i - 1][j]; });
  }
  int area = 0;
  ForInterior(on.size, [&](int i, int j) { area += on.mark[i][j] == label ? 1 : 0; });
  return area;
}

int PaintContourOfFirst(const LabelSlice& a, const LabelSlice& b, int label,
                        const ContourPictures& on) {
  int area = 0;
  ForInterior(on.size, [&](int i, int j) {
    const bool inA = a.Bears(label, i, j);
    on.mark[i][j] = inA ? label : 0;
    area += inA != b.Bears(label, i, j) ? 1 : 0;
  });
  PaintByRule(label, on, [&](int i, int j) { return on.mark[i - 1][j]; });
  return area;
}

PicturePixel FirstContourPixel(const ContourPictures& on) {
  for (int i = 0; i < on.size.width; ++i) {
    const std::int32_t* column = on.result[i];
    const std::int32_t* end = column + on.size.height;
    const std::int32_t* found = std::find(column, end, kContourPixel);
    if (found != end) { return {i, static_cast<int>(found - column)}; }
  }
  return {on.size.width, on.size.height};
}

void StartWave(PicturePixel start, const ContourPictures& on) {
  for (int i = 0; i < on.size.width; ++i) { std::fill_n(on.mark[i], on.size.height, 0); }
  if (InPicture(start)) { on.mark[start.i][start.j] = 1; }
  for (const Step step : kStartSteps) {
    const PicturePixel next = Neighbour(start, step);
    if (!IsUnmarkedContour(next, on)) { continue; }
    on.mark[next.i][next.j] = 2;
    return;
  }
}

void StepWave(PicturePixel start, PicturePixel pixel, const ContourPictures& on, float& perimeter) {
  if (pixel == start || ValueAt(on.result, pixel) == 0 || ValueAt(on.mark, pixel) == 0) { return; }
  SpreadFrom(pixel, on, [&perimeter](PicturePixel) { perimeter += 1.0F; });
}

void RunWave(PicturePixel start, WaveExtent extent, const ContourPictures& on) {
  Visits visits(extent, on.size);
  for (const Step step : kStartSteps) {
    const PicturePixel second = Neighbour(start, step);
    if (ValueAt(on.mark, second) == 2) { visits.Add(second, 0, 0); }
  }
  while (!visits.Empty()) {
    const int visit = visits.Next();
    const int sweep = visit / kPicturePixels;
    const int place = visit % kPicturePixels;
    SpreadFrom({place / kMaxSliceSide, place % kMaxSliceSide}, on,
               [&](PicturePixel next) { visits.Add(next, sweep, place); });
  }
}

PicturePixel FarthestPixel(PicturePixel fallback, const ContourPictures& on) {
  std::int32_t best = 0;
  PicturePixel farthest = fallback;
  for (int i = 0; i < on.size.width; ++i) {
    for (int j = 0; j < on.size.height; ++j) {
      if (on.mark[i][j] <= best) { continue; }
      best = on.mark[i][j];
      farthest = {i, j};
    }
  }
  return farthest;
}

void WalkBack(PicturePixel from, const ContourPictures& on, float& perimeter) {
  const double diagonal = std::sqrt(2.0);
  std::bitset<kPicturePixels> visited;
  PicturePixel current = from;
  while (InPicture(current)) {
    visited.set(static_cast<std::size_t>(PlaceOf(current)));
    const Step* taken =
        std::find_if(std::begin(kWaveSteps), std::end(kWaveSteps), [&](const Step& step) {
          const std::int32_t number = ValueAt(on.mark, Neighbour(current, step));
          return number >= 2 && number <= on.mark[current.i][current.j];
        });
    if (taken == std::end(kWaveSteps)) { return; }
    const PicturePixel next = Neighbour(current, *taken);
    // The next step depends on the pixel alone: from here on the walk would repeat itself.
    if (visited.test(static_cast<std::size_t>(PlaceOf(next)))) { return; }
    on.result[current.i][current.j] = kWalkedPixel;
    const bool straight = taken->i == 0 || taken->j == 0;
    perimeter = static_cast<float>(perimeter + (straight ? 1.0 : diagonal));
    current = next;
  }
}

void PaintMarked(const ContourPictures& on) {
  for (int i = 0; i < on.size.width; ++i) {
    for (int j = 0; j < on.size.height; ++j) {
      if (on.mark[i][j] != 0) { on.result[i][j] = kContourPixel; }
    }
  }
}

ContourWalk WalkContour(WaveExtent extent, const ContourPictures& on) {
  const PicturePixel start = FirstContourPixel(on);
  StartWave(start, on);
  RunWave(start, extent, on);
  ContourWalk walk;
  walk.pixel = FarthestPixel(start, on);
  WalkBack(walk.pixel, on, walk.perimeter);
  PaintMarked(on);
  return walk;
}

double ContourComplexity(float perimeter, int area) {
  const double length = perimeter;
  return length * length / (area * kFourPi);
}

}  // namespace measure
