#include "views/slicemeasures/SliceContour.h"

#include <bitset>
#include <cmath>
#include <vector>

namespace measure {

namespace {

constexpr int kSweeps = 300;
constexpr int kSide = kMaxSliceSide;

bool OnCanvas(int i, int j) { return i >= 0 && i < kSide && j >= 0 && j < kSide; }

/// Whether one of the nine values at and round a pixel equals the label.
template <class Value>
bool LabelIsNear(Value valueAt, int label, int i, int j) {
  for (int di = -1; di <= 1; ++di) {
    for (int dj = -1; dj <= 1; ++dj) {
      if (valueAt(i + di, j + dj) == label) { return true; }
    }
  }
  return false;
}

// The start looks at its neighbours in this order.
constexpr Pixel kFirstSteps[8] = {{-1, -1}, {0, -1}, {1, -1}, {-1, 0},
                                  {1, 0},   {-1, 1}, {0, 1},  {1, 1}};

// Wave and walk take the diagonal steps first.
constexpr Pixel kSteps[8] = {{-1, -1}, {-1, 1}, {1, 1}, {1, -1}, {-1, 0}, {0, 1}, {1, 0}, {0, -1}};
constexpr int kDiagonalSteps = 4;

bool IsUnnumbered(int i, int j, const Picture& result, const Picture& mark) {
  return OnCanvas(i, j) && result[i][j] == kContour && mark[i][j] == 0;
}

void NumberSecond(Pixel start, const Picture& result, Picture& mark) {
  for (const Pixel& step : kFirstSteps) {
    const int i = start.i + step.i;
    const int j = start.j + step.j;
    if (IsUnnumbered(i, j, result, mark)) {
      mark[i][j] = 2;
      return;
    }
  }
}

}  // namespace

int FindContour(const LabelSlice& slice, int label, int otherSlice, int width, int height,
                Picture& result) {
  int area = 0;
  const auto valueAt = [&slice](int i, int j) {
    return static_cast<int>(slice.At(i, j));
  };
  for (int i = 1; i <= width - 2; ++i) {
    for (int j = 1; j <= height - 2; ++j) {
      int value = 0;
      if (LabelIsNear(valueAt, label, i, j)) {
        const int before =
            slice.direction == kSliceXZ ? slice.AtSlice(i - 1, j, otherSlice) : slice.At(i - 1, j);
        value = slice.At(i + 1, j) + slice.At(i, j + 1) + slice.At(i, j - 1) + before -
                8 * slice.At(i, j);
      }
      area += slice.Bears(label, i, j) ? 1 : 0;
      result[i][j] = value > 0 ? kContour : 0;
    }
  }
  return area;
}

int FindContourOfFirst(const LabelSlice& first, const LabelSlice& second, int label, int width,
                       int height, Picture& mark, Picture& result) {
  for (int i = 1; i <= width - 2; ++i) {
    for (int j = 1; j <= height - 2; ++j) { mark[i][j] = first.Bears(label, i, j) ? label : 0; }
  }
  int area = 0;
  const auto valueAt = [&mark](int i, int j) {
    return mark[i][j];
  };
  for (int i = 1; i <= width - 2; ++i) {
    for (int j = 1; j <= height - 2; ++j) {
      int value = 0;
      if (LabelIsNear(valueAt, label, i, j)) {
        value = mark[i + 1][j] - 8 * mark[i][j] + mark[i][j - 1] + mark[i][j + 1] + mark[i - 1][j];
      }
      area += first.Bears(label, i, j) != second.Bears(label, i, j) ? 1 : 0;
      result[i][j] = value > 0 ? kContour : 0;
    }
  }
  return area;
}

Pixel FindStart(const Picture& result, int width, int height) {
  for (int i = 0; i < width; ++i) {
    for (int j = 0; j < height; ++j) {
      if (result[i][j] == kContour) { return {i, j}; }
    }
  }
  return {width, height};
}

int WaveStep(int i, int j, const Picture& result, Picture& mark) {
  if (!OnCanvas(i, j) || result[i][j] == 0 || mark[i][j] == 0) { return 0; }
  int numbered = 0;
  for (const Pixel& step : kSteps) {
    const int ni = i + step.i;
    const int nj = j + step.j;
    if (!IsUnnumbered(ni, nj, result, mark)) { continue; }
    mark[ni][nj] = mark[i][j] + 1;
    ++numbered;
  }
  return numbered;
}

int NumberContour(Pixel start, const Picture& result, int width, int height, SweepRange range,
                  Picture& mark) {
  for (int i = 0; i < width; ++i) {
    for (int j = 0; j < height; ++j) { mark[i][j] = 0; }
  }
  if (OnCanvas(start.i, start.j)) { mark[start.i][start.j] = 1; }
  NumberSecond(start, result, mark);

  // Only contour pixels can take part, and a sweep visits them column by column.
  std::vector<Pixel> contour;
  for (int i = range.firstI; i <= range.lastI; ++i) {
    for (int j = range.firstJ; j <= range.lastJ; ++j) {
      if (result[i][j] != 0 && (i != start.i || j != start.j)) { contour.push_back({i, j}); }
    }
  }
  int numbered = 0;
  for (int sweep = 0; sweep < kSweeps; ++sweep) {
    int added = 0;
    for (const Pixel& pixel : contour) { added += WaveStep(pixel.i, pixel.j, result, mark); }
    if (added == 0) { break; }  // no later sweep finds more
    numbered += added;
  }
  return numbered;
}

Pixel FindFarthest(const Picture& mark, int width, int height, Pixel none) {
  Pixel farthest = none;
  std::int32_t best = 0;
  for (int i = 0; i < width; ++i) {
    for (int j = 0; j < height; ++j) {
      if (mark[i][j] <= best) { continue; }
      best = mark[i][j];
      farthest = {i, j};
    }
  }
  return farthest;
}

float WalkBack(Pixel from, const Picture& mark, Picture& result, float perimeter) {
  if (!OnCanvas(from.i, from.j)) { return perimeter; }
  std::bitset<static_cast<std::size_t>(kSide) * kSide> walked;
  const auto place = [](Pixel p) {
    return static_cast<std::size_t>(p.i) * kSide + static_cast<std::size_t>(p.j);
  };
  for (;;) {
    walked.set(place(from));
    int taken = 0;
    Pixel next{};
    for (; taken < 8; ++taken) {
      next = {from.i + kSteps[taken].i, from.j + kSteps[taken].j};
      if (!OnCanvas(next.i, next.j)) { continue; }
      const std::int32_t number = mark[next.i][next.j];
      if (number >= 2 && number <= mark[from.i][from.j]) { break; }
    }
    if (taken == 8 || walked.test(place(next))) { return perimeter; }
    result[from.i][from.j] = kWalked;
    const double length = taken < kDiagonalSteps ? std::sqrt(2.0) : 1.0;
    perimeter = static_cast<float>(perimeter + length);
    from = next;
  }
}

void ShowNumbered(const Picture& mark, int width, int height, Picture& result) {
  for (int i = 0; i < width; ++i) {
    for (int j = 0; j < height; ++j) {
      if (mark[i][j] != 0) { result[i][j] = kContour; }
    }
  }
}

}  // namespace measure
