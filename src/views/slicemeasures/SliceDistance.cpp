#include "views/slicemeasures/SliceDistance.h"

#include <algorithm>
#include <cstring>
#include <utility>

// The loops over a row are compiled twice: for every machine, and for those with vectors of 32
// bytes, which are taken where the program finds them. The numbers are whole: both give the same.
#if defined(__x86_64__) && defined(__GNUC__) && !defined(__clang__) &&                             \
    !defined(__SANITIZE_ADDRESS__)
#define TOLVEX_WIDE __attribute__((target_clones("avx2", "default")))
#else
#define TOLVEX_WIDE
#endif

namespace measure {

namespace {

constexpr double kGreyPerPixel = 900.0;
constexpr int kStartPerSide = 8;
constexpr int kBeyond = 1 << 29;  // squared length of the margin: nothing takes its vector

/// The vectors of a row in work and their squared lengths, which save most of the arithmetic.
///
/// Shape: pixels 0 to width - 1 of each array, and a margin before and behind. No two arrays of
///        one or of two rows share memory, which the compiler has to know for its vectors.
struct Row {
  int* __restrict x;
  int* __restrict y;
  int* __restrict square;
};

/// The tries of one scan along the rows of a slice.
class RowScan {
public:
  RowScan(int rowWidth, int stepFromSource);

  /// The row that the next one takes from.
  void Begin(const std::int16_t* x, const std::int16_t* y);
  /// Replaces the vectors of a row; it is the source of the next one.
  void Next(std::int16_t* x, std::int16_t* y);

private:
  Row NewRow(int place);
  void PassRight();
  void PassLeft();

  int width;
  int stepY;
  std::vector<int> memory;
  std::vector<std::uint8_t> changesFromLeft;
  std::vector<std::uint8_t> changesFromRight;
  Row source;  ///< its vectors have the step in y already
  Row own;
};

TOLVEX_WIDE void Load(const std::int16_t* x, const std::int16_t* y, int width, Row row) {
  for (int i = 0; i < width; ++i) {
    row.x[i] = x[i];
    row.y[i] = y[i];
    row.square[i] = x[i] * x[i] + y[i] * y[i];
  }
}

TOLVEX_WIDE void Store(Row row, int width, std::int16_t* x, std::int16_t* y) {
  for (int i = 0; i < width; ++i) {
    x[i] = static_cast<std::int16_t>(row.x[i]);
    y[i] = static_cast<std::int16_t>(row.y[i]);
  }
}

/// Adds the step from a source row to its vectors.
TOLVEX_WIDE void StepAll(Row row, int width, int stepY) {
  for (int i = 0; i < width; ++i) {
    row.square[i] += 2 * stepY * row.y[i] + 1;
    row.y[i] += stepY;
  }
}

/// Squared length of a vector after one more step along the row.
inline int SquareToRight(int x, int square) { return square - 2 * x + 1; }
inline int SquareToLeft(int x, int square) { return square + 2 * x + 1; }

struct Vector {
  int x, y, square;
};

inline Vector At(const Row& row, int i) { return {row.x[i], row.y[i], row.square[i]}; }

inline void Put(const Row& row, int i, const Vector& vector) {
  row.x[i] = vector.x;
  row.y[i] = vector.y;
  row.square[i] = vector.square;
}

/// One try; of equal lengths the older vector stays.
inline Vector Shorter(Vector older, Vector candidate) {
  const bool taken = candidate.square < older.square;
  return {taken ? candidate.x : older.x, taken ? candidate.y : older.y,
          taken ? candidate.square : older.square};
}

/// The tries from the source row: from straight above or below, from its left, from its right.
TOLVEX_WIDE void TakeFromSource(Row source, int width, Row own) {
  for (int i = 0; i < width; ++i) {
    const Vector straight = At(source, i);
    const int leftX = source.x[i - 1];
    const int rightX = source.x[i + 1];
    const Vector left = {leftX - 1, source.y[i - 1], SquareToRight(leftX, source.square[i - 1])};
    const Vector right = {rightX + 1, source.y[i + 1], SquareToLeft(rightX, source.square[i + 1])};
    Put(own, i, Shorter(Shorter(Shorter(At(own, i), straight), left), right));
  }
}

/// Marks the pixels that their neighbours in the row change.
TOLVEX_WIDE void FindChanges(Row row, int width, std::uint8_t* __restrict fromLeft,
                             std::uint8_t* __restrict fromRight) {
  for (int i = 0; i < width; ++i) {
    const int square = row.square[i];
    fromLeft[i] = SquareToRight(row.x[i - 1], row.square[i - 1]) < square ? 1 : 0;
    fromRight[i] = SquareToLeft(row.x[i + 1], row.square[i + 1]) < square ? 1 : 0;
  }
}

RowScan::RowScan(int rowWidth, int stepFromSource)
    : width(rowWidth), stepY(stepFromSource),
      memory(static_cast<std::size_t>(6 * (rowWidth + 2)), kBeyond),
      changesFromLeft(static_cast<std::size_t>(rowWidth)),
      changesFromRight(static_cast<std::size_t>(rowWidth)), source(NewRow(0)), own(NewRow(3)) {}

Row RowScan::NewRow(int place) {
  const int length = width + 2;
  int* first = memory.data() + place * length + 1;
  Row row = {first, first + length, first + 2 * length};
  row.x[-1] = 0;
  row.x[width] = 0;
  return row;
}

void RowScan::Begin(const std::int16_t* x, const std::int16_t* y) {
  Load(x, y, width, source);
  StepAll(source, width, stepY);
}

void RowScan::Next(std::int16_t* x, std::int16_t* y) {
  Load(x, y, width, own);
  TakeFromSource(source, width, own);
  // A pass to the right makes no new work for the one to the left: what it changed is as long as
  // its left neighbour with one more step, and no shorter.
  FindChanges(own, width, changesFromLeft.data(), changesFromRight.data());
  PassRight();
  PassLeft();
  Store(own, width, x, y);
  StepAll(own, width, stepY);
  std::swap(source, own);
}

void RowScan::PassRight() {
  int first = 0;
  while (const void* found = std::memchr(changesFromLeft.data() + first, 1,
                                         static_cast<std::size_t>(width - first))) {
    int i = static_cast<int>(static_cast<const std::uint8_t*>(found) - changesFromLeft.data());
    Vector left = At(own, i - 1);
    for (; i < width; ++i) {
      const Vector candidate = {left.x - 1, left.y, SquareToRight(left.x, left.square)};
      if (candidate.square >= own.square[i]) { break; }
      Put(own, i, candidate);
      left = candidate;
    }
    first = std::min(i + 1, width);
  }
}

void RowScan::PassLeft() {
  int end = width;
  while (const void* found = memrchr(changesFromRight.data(), 1, static_cast<std::size_t>(end))) {
    int i = static_cast<int>(static_cast<const std::uint8_t*>(found) - changesFromRight.data());
    Vector right = At(own, i + 1);
    for (; i >= 0; --i) {
      const Vector candidate = {right.x + 1, right.y, SquareToLeft(right.x, right.square)};
      if (candidate.square >= own.square[i]) { break; }
      Put(own, i, candidate);
      right = candidate;
    }
    end = std::max(i, 0);
  }
}

}  // namespace

SliceVectors StartVectors(const LabelSlice& slice, int label, SliceSize size) {
  SliceVectors vectors;
  vectors.size = size;
  vectors.x.resize(vectors.Index(0, size.height));
  const int longer = std::max(size.width, size.height);
  const std::int16_t starts[] = {static_cast<std::int16_t>(kStartPerSide * longer), 0};
  slice.Read(size.width, size.height, vectors.x.data(),
             [&](std::uint8_t byte) { return starts[byte == label ? 1 : 0]; });
  vectors.y = vectors.x;
  return vectors;
}

void ScanForward(SliceVectors& vectors, Progress& progress) {
  if (vectors.size.height < 2) { return; }
  RowScan scan(vectors.size.width, -1);
  scan.Begin(vectors.x.data(), vectors.y.data());
  for (int j = 1; j < vectors.size.height; ++j) {
    progress.Step();
    scan.Next(&vectors.x[vectors.Index(0, j)], &vectors.y[vectors.Index(0, j)]);
  }
}

void ScanBackward(SliceVectors& vectors, Progress& progress) {
  if (vectors.size.height < 2) { return; }
  const std::size_t last = vectors.Index(0, vectors.size.height - 1);
  RowScan scan(vectors.size.width, +1);
  scan.Begin(&vectors.x[last], &vectors.y[last]);
  for (int j = vectors.size.height - 2; j >= 0; --j) {
    progress.Step();
    scan.Next(&vectors.x[vectors.Index(0, j)], &vectors.y[vectors.Index(0, j)]);
  }
}

void PaintDistances(const SliceVectors& vectors, Picture& result) {
  for (int i = 0; i < vectors.size.width; ++i) {
    for (int j = 0; j < vectors.size.height; ++j) {
      result[i][j] = static_cast<std::int32_t>(vectors.Length(i, j) * kGreyPerPixel);
    }
  }
}

}  // namespace measure
