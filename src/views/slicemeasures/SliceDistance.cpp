#include "views/slicemeasures/SliceDistance.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace measure {

namespace {

constexpr int kStartFactor = 8;
constexpr double kGreyPerPixel = 900.0;  // white at 72.8 pixels

int Squared(int x, int y) { return x * x + y * y; }

/// One row of vectors.
struct Row {
  std::int16_t* x;
  std::int16_t* y;
};

Row RowOf(SliceVectors& vectors, int j) {
  return {vectors.x.data() + vectors.Index(0, j), vectors.y.data() + vectors.Index(0, j)};
}

/// Tries the vector of `from`[k] plus (stepX, stepY) at `to`[i]; equal lengths keep the older one.
void Try(Row to, int i, Row from, int k, int stepX, int stepY) {
  const int x = from.x[k] + stepX;
  const int y = from.y[k] + stepY;
  if (Squared(x, y) < Squared(to.x[i], to.y[i])) {
    to.x[i] = static_cast<std::int16_t>(x);
    to.y[i] = static_cast<std::int16_t>(y);
  }
}

#ifdef __SSE2__

__m128i Load(const std::int16_t* from) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
}

/// Squared lengths of eight vectors, in two halves of 32 bits.
struct Lengths {
  __m128i low, high;

  Lengths(__m128i x, __m128i y) {
    const __m128i first = _mm_unpacklo_epi16(x, y);
    const __m128i second = _mm_unpackhi_epi16(x, y);
    low = _mm_madd_epi16(first, first);
    high = _mm_madd_epi16(second, second);
  }
};

/// All bits set in each of the eight lanes where `a` is shorter than `b`.
__m128i Shorter(const Lengths& a, const Lengths& b) {
  return _mm_packs_epi32(_mm_cmplt_epi32(a.low, b.low), _mm_cmplt_epi32(a.high, b.high));
}

__m128i Choose(__m128i mask, __m128i a, __m128i b) {
  return _mm_or_si128(_mm_and_si128(mask, a), _mm_andnot_si128(mask, b));
}

/// The three tries from the source row for pixels i to i + 7, none of them at an end of the row.
void TryEight(Row to, Row from, int i, int stepY) {
  __m128i x = Load(to.x + i);
  __m128i y = Load(to.y + i);
  Lengths own(x, y);
  const __m128i down = _mm_set1_epi16(static_cast<std::int16_t>(stepY));
  for (const int side : {0, -1, 1}) {
    const __m128i step = _mm_set1_epi16(static_cast<std::int16_t>(side));
    const __m128i tryX = _mm_add_epi16(Load(from.x + i + side), step);
    const __m128i tryY = _mm_add_epi16(Load(from.y + i + side), down);
    const Lengths candidate(tryX, tryY);
    const __m128i accepted = Shorter(candidate, own);
    if (_mm_movemask_epi8(accepted) == 0) { continue; }
    x = Choose(accepted, tryX, x);
    y = Choose(accepted, tryY, y);
    own = Lengths(x, y);
  }
  _mm_storeu_si128(reinterpret_cast<__m128i*>(to.x + i), x);
  _mm_storeu_si128(reinterpret_cast<__m128i*>(to.y + i), y);
}

/// First pixel from i on, in blocks of eight, where the neighbour at `side` may win; or the first
/// pixel that no whole block covers. What lies before keeps its vectors in a pass along the row,
/// since the first change of such a pass comes from a vector that it has not touched.
int SkipQuiet(Row row, int i, int width, int side) {
  const __m128i step = _mm_set1_epi16(static_cast<std::int16_t>(side));
  while (i + 8 <= width) {
    const Lengths own(Load(row.x + i), Load(row.y + i));
    const Lengths candidate(_mm_add_epi16(Load(row.x + i + side), step), Load(row.y + i + side));
    if (_mm_movemask_epi8(Shorter(candidate, own)) != 0) { return i; }
    i += 8;
  }
  return i;
}

#endif

void TryThree(Row to, Row from, int i, int width, int stepY) {
  Try(to, i, from, i, 0, stepY);
  if (i > 0) { Try(to, i, from, i - 1, -1, stepY); }
  if (i < width - 1) { Try(to, i, from, i + 1, 1, stepY); }
}

void PassFromRow(Row to, Row from, int width, int stepY) {
  int i = 0;
#ifdef __SSE2__
  if (width > 0) { TryThree(to, from, i++, width, stepY); }
  for (; i + 9 <= width; i += 8) { TryEight(to, from, i, stepY); }
#endif
  for (; i < width; ++i) { TryThree(to, from, i, width, stepY); }
}

void PassAlongRow(Row row, int width) {
  int i = 1;
#ifdef __SSE2__
  i = SkipQuiet(row, i, width, -1);
#endif
  for (; i < width; ++i) { Try(row, i, row, i - 1, -1, 0); }
}

/// Whether no pixel of the row can take its right neighbour's vector.
bool QuietFromRight(Row row, int width) {
#ifdef __SSE2__
  int i = SkipQuiet(row, 0, width - 1, 1);
  for (; i < width - 1; ++i) {
    if (Squared(row.x[i + 1] + 1, row.y[i + 1]) < Squared(row.x[i], row.y[i])) { return false; }
  }
  return true;
#else
  static_cast<void>(row);
  return width < 2;
#endif
}

void PassBackAlongRow(Row row, int width) {
  if (QuietFromRight(row, width)) { return; }
  for (int i = width - 2; i >= 0; --i) { Try(row, i, row, i + 1, 1, 0); }
}

void ScanRow(SliceVectors& vectors, int j, int source, int stepY) {
  const Row row = RowOf(vectors, j);
  PassFromRow(row, RowOf(vectors, source), vectors.width, stepY);
  PassAlongRow(row, vectors.width);
  PassBackAlongRow(row, vectors.width);
}

}  // namespace

double SliceVectors::Length(int i, int j) const {
  const double dx = x[Index(i, j)];
  const double dy = y[Index(i, j)];
  return std::sqrt(dy * dy + dx * dx);
}

void StartSliceVectors(const LabelSlice& slice, int label, int width, int height,
                       SliceVectors& vectors) {
  vectors.width = width;
  vectors.height = height;
  const auto far = static_cast<std::int16_t>(kStartFactor * std::max(width, height));
  const std::size_t count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
  vectors.x.assign(count, far);
  for (int i = 0; i < width; ++i) {
    for (int j = 0; j < height; ++j) {
      if (slice.Bears(label, i, j)) { vectors.x[vectors.Index(i, j)] = 0; }
    }
  }
  vectors.y = vectors.x;
}

void ScanForward(SliceVectors& vectors, Progress& progress) {
  for (int j = 1; j < vectors.height; ++j) {
    progress.Step();
    ScanRow(vectors, j, j - 1, -1);
  }
}

void ScanBackward(SliceVectors& vectors, Progress& progress) {
  for (int j = vectors.height - 2; j >= 0; --j) {
    progress.Step();
    ScanRow(vectors, j, j + 1, 1);
  }
}

void PaintDistances(const SliceVectors& vectors, Picture& result) {
  for (int i = 0; i < vectors.width; ++i) {
    for (int j = 0; j < vectors.height; ++j) {
      result[i][j] = static_cast<std::int32_t>(vectors.Length(i, j) * kGreyPerPixel);
    }
  }
}

}  // namespace measure
