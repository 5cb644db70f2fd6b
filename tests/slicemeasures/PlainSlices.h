// The measures on slices written down plainly, rule by rule, to hold the fast kernels against.
#pragma once

#include "base/LabelVolume.h"
#include "base/Progress.h"
#include "views/slicemeasures/Picture.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <set>
#include <utility>
#include <vector>

namespace plain {

/// A byte of the slice `s` along `direction`; the slice lies within the volume.
inline std::uint8_t Byte(const LabelVolume& volume, int direction, int s, int i, int j) {
  if (direction == 2) { return volume.voxels[i][j][s]; }
  if (direction == 0) { return volume.voxels[s][j][i]; }
  return volume.voxels[j][s][i];
}

inline int WidthOf(const LabelVolume& volume, int direction) {
  return direction == 2 ? volume.dimX : volume.dimZ;
}

inline int HeightOf(const LabelVolume& volume, int direction) {
  return direction == 1 ? volume.dimX : volume.dimY;
}

/// The slice distance map with its table of squares and its passes one by one.
class DistanceMap {
public:
  int w, h;
  std::vector<std::int16_t> x, y;

  DistanceMap(const LabelVolume& volume, int direction, int s, int label)
      : w(WidthOf(volume, direction)), h(HeightOf(volume, direction)) {
    const std::size_t pixels = static_cast<std::size_t>(w) * static_cast<std::size_t>(h);
    std::vector<std::int32_t> mask(pixels);
    for (int i = 0; i < w; ++i) {
      for (int j = 0; j < h; ++j) {
        mask[At(i, j)] = Byte(volume, direction, s, i, j) == label ? 1 : 0;
      }
    }
    const int longer = std::max(w, h);
    table.resize(static_cast<std::size_t>(32 * longer + 1));
    squares = table.data() + 16 * longer;
    for (int k = -16 * longer; k <= 16 * longer; ++k) { squares[k] = k * k; }
    x.resize(pixels);
    y.resize(pixels);
    for (std::size_t p = 0; p < pixels; ++p) {
      x[p] = y[p] = static_cast<std::int16_t>(mask[p] == 1 ? 0 : 8 * longer);
    }
    for (int j = 1; j < h; ++j) { ScanRow(j, j - 1, -1); }
    for (int j = h - 2; j >= 0; --j) { ScanRow(j, j + 1, +1); }
  }

private:
  std::size_t At(int i, int j) const {
    return static_cast<std::size_t>(j) * static_cast<std::size_t>(w) + static_cast<std::size_t>(i);
  }
  void Try(std::size_t own, int a, int b, std::size_t q) {
    const int cx = x[q] + a;
    const int cy = y[q] + b;
    if (squares[cx] + squares[cy] < squares[x[own]] + squares[y[own]]) {
      x[own] = static_cast<std::int16_t>(cx);
      y[own] = static_cast<std::int16_t>(cy);
    }
  }
  void ScanRow(int j, int from, int b) {
    for (int i = 0; i < w; ++i) {
      Try(At(i, j), 0, b, At(i, from));
      if (i > 0) { Try(At(i, j), -1, b, At(i - 1, from)); }
      if (i < w - 1) { Try(At(i, j), +1, b, At(i + 1, from)); }
    }
    for (int i = 1; i < w; ++i) { Try(At(i, j), -1, 0, At(i - 1, j)); }
    for (int i = w - 2; i >= 0; --i) { Try(At(i, j), +1, 0, At(i + 1, j)); }
  }

  std::vector<std::int32_t> table;
  std::int32_t* squares = nullptr;
};

/// Both contour measures with all of their 300 sweeps. The pictures are the caller's.
class Contour {
public:
  measure::Picture& result;
  measure::Picture& mark;
  int w = 0;
  int h = 0;
  int area = 0;
  int contourX = 0;
  int contourY = 0;
  float perimeter = 0.0F;
  bool untilStill = false;  ///< stop at the first sweep that changes nothing: no later one does

  Contour(measure::Picture& theResult, measure::Picture& theMark)
      : result(theResult), mark(theMark) {}

  /// Of the image on show; `t` is the slice of the slider of x.
  void Complexity(const LabelVolume& shown, int direction, int s, int t, int label) {
    Rule(shown, direction, s, t, label);
    Measure(1, w - 2, 1, h - 2);
  }
  void InteriorContour(const LabelVolume& shown, const LabelVolume& a, const LabelVolume& b,
                       int direction, int s, int t, int label) {
    if (direction == 2) {
      RuleOfFirst(a, b, s, label);
    } else {
      Rule(shown, direction, s, t, label);
    }
    Measure(0, w - 1, 0, h - 1);
  }

private:
  void Rule(const LabelVolume& v, int direction, int s, int t, int label) {
    w = WidthOf(v, direction);
    h = HeightOf(v, direction);
    area = 0;
    const auto at = [&](int i, int j) {
      return int{Byte(v, direction, s, i, j)};
    };
    for (int i = 1; i <= w - 2; ++i) {
      for (int j = 1; j <= h - 2; ++j) {
        bool near = false;
        for (int di = -1; di <= 1; ++di) {
          for (int dj = -1; dj <= 1; ++dj) { near = near || at(i + di, j + dj) == label; }
        }
        int value = 0;
        if (near) {
          const int left = direction == 1 ? v.voxels[j][t][i - 1] : at(i - 1, j);
          value = at(i + 1, j) + at(i, j + 1) + at(i, j - 1) + left - 8 * at(i, j);
          if (at(i, j) == label) { ++area; }
        }
        result[i][j] = value > 0 ? 65000 : 0;
      }
    }
  }

  void RuleOfFirst(const LabelVolume& a, const LabelVolume& b, int s, int label) {
    w = a.dimX;
    h = a.dimY;
    area = 0;
    for (int i = 1; i <= w - 2; ++i) {
      for (int j = 1; j <= h - 2; ++j) { mark[i][j] = a.voxels[i][j][s] == label ? label : 0; }
    }
    for (int i = 1; i <= w - 2; ++i) {
      for (int j = 1; j <= h - 2; ++j) {
        bool near = false;
        for (int di = -1; di <= 1; ++di) {
          for (int dj = -1; dj <= 1; ++dj) { near = near || mark[i + di][j + dj] == label; }
        }
        int value = 0;
        if (near) {
          value =
              mark[i + 1][j] - 8 * mark[i][j] + mark[i][j - 1] + mark[i][j + 1] + mark[i - 1][j];
        }
        if (a.voxels[i][j][s] == label && b.voxels[i][j][s] != label) { ++area; }
        if (a.voxels[i][j][s] != label && b.voxels[i][j][s] == label) { ++area; }
        result[i][j] = value > 0 ? 65000 : 0;
      }
    }
  }

  static bool Inside(int i, int j) { return i >= 0 && i < 300 && j >= 0 && j < 300; }

  bool Free(int i, int j) const { return Inside(i, j) && result[i][j] == 65000 && mark[i][j] == 0; }

  void FindStart() {
    contourX = w;
    contourY = h;
    for (int i = 0; i < w; ++i) {
      for (int j = 0; j < h; ++j) {
        if (result[i][j] != 65000) { continue; }
        contourX = i;
        contourY = j;
        return;
      }
    }
  }

  void WaveStep(int i, int j) {
    static constexpr int kSteps[8][2] = {{-1, -1}, {-1, +1}, {+1, +1}, {+1, -1},
                                         {-1, 0},  {0, +1},  {+1, 0},  {0, -1}};
    if (i == contourX && j == contourY) { return; }
    if (result[i][j] == 0 || mark[i][j] == 0) { return; }
    for (const auto& step : kSteps) {
      if (!Free(i + step[0], j + step[1])) { continue; }
      mark[i + step[0]][j + step[1]] = mark[i][j] + 1;
      perimeter += 1.0F;
    }
  }

  void Wave(int firstI, int lastI, int firstJ, int lastJ) {
    static constexpr int kSteps[8][2] = {{-1, -1}, {0, -1},  {+1, -1}, {-1, 0},
                                         {+1, 0},  {-1, +1}, {0, +1},  {+1, +1}};
    for (int i = 0; i < w; ++i) {
      for (int j = 0; j < h; ++j) { mark[i][j] = 0; }
    }
    perimeter = 0.0F;
    if (Inside(contourX, contourY)) { mark[contourX][contourY] = 1; }
    for (const auto& step : kSteps) {
      if (!Free(contourX + step[0], contourY + step[1])) { continue; }
      mark[contourX + step[0]][contourY + step[1]] = 2;
      break;
    }
    for (int sweep = 0; sweep < 300; ++sweep) {
      const float before = perimeter;
      for (int i = firstI; i <= lastI; ++i) {
        for (int j = firstJ; j <= lastJ; ++j) { WaveStep(i, j); }
      }
      if (untilStill && perimeter == before) { return; }
    }
  }

  void FindFarthest() {
    int best = 0;
    for (int i = 0; i < w; ++i) {
      for (int j = 0; j < h; ++j) {
        if (mark[i][j] <= best) { continue; }
        best = mark[i][j];
        contourX = i;
        contourY = j;
      }
    }
  }

  void WalkBack(int i, int j) {
    static const struct {
      int di, dj;
      double length;
    } kSteps[8] = {{-1, -1, std::sqrt(2.0)},
                   {-1, +1, std::sqrt(2.0)},
                   {+1, +1, std::sqrt(2.0)},
                   {+1, -1, std::sqrt(2.0)},
                   {-1, 0, 1.0},
                   {0, +1, 1.0},
                   {+1, 0, 1.0},
                   {0, -1, 1.0}};
    std::set<std::pair<int, int>> been;
    for (bool found = Inside(i, j); found;) {
      found = false;
      been.insert({i, j});
      for (const auto& step : kSteps) {
        const int ni = i + step.di;
        const int nj = j + step.dj;
        if (!Inside(ni, nj) || mark[ni][nj] < 2 || mark[ni][nj] > mark[i][j]) { continue; }
        if (been.count({ni, nj}) != 0) { return; }
        result[i][j] = 30000;
        perimeter = static_cast<float>(perimeter + step.length);
        i = ni;
        j = nj;
        found = true;
        break;
      }
    }
  }

  void Measure(int firstI, int lastI, int firstJ, int lastJ) {
    FindStart();
    Wave(firstI, lastI, firstJ, lastJ);
    FindFarthest();
    perimeter = 0.0F;
    WalkBack(contourX, contourY);
    for (int i = 0; i < w; ++i) {
      for (int j = 0; j < h; ++j) {
        if (mark[i][j] != 0) { result[i][j] = 65000; }
      }
    }
  }
};

}  // namespace plain
