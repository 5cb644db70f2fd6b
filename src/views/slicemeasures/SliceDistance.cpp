#include "views/slicemeasures/SliceDistance.h"

#include <algorithm>
#include <utility>

namespace measure {

namespace {

constexpr double kGreyPerPixel = 900.0;

int SquareOf(int x, int y) { return x * x + y * y; }

/// The tries of one scan along the rows of a slice.
class RowScan {
public:
  RowScan(const RowLoops& rowLoops, int rowWidth, int stepY);

  /// The row that the next one takes from.
  void Begin(const std::int16_t* x, const std::int16_t* y) { Read(x, y, source); }
  /// Replaces the vectors of a row; it is the source of the next one.
  void Next(std::int16_t* x, std::int16_t* y);

private:
  Pair* NewRow(int place);
  void Read(const std::int16_t* x, const std::int16_t* y, Pair* row) const;
  void Write(const Pair* row, std::int16_t* x, std::int16_t* y) const;
  bool Try(int i, int neighbour, int stepX);
  void PassRight();
  void PassLeft();

  const RowLoops& loops;
  int width;
  Pair step;  ///< from a pixel of the row to the source straight above or below
  int groups;
  std::vector<Pair> memory;
  std::vector<std::uint8_t> fromLeft;   ///< pixels of each group that their left neighbour changes
  std::vector<std::uint8_t> fromRight;  ///< the same for the right one
  Pair* source;
  Pair* own;
};

RowScan::RowScan(const RowLoops& rowLoops, int rowWidth, int stepY)
    : loops(rowLoops), width(rowWidth), step(PairOf(0, stepY)),
      groups((rowWidth + kRowGroup - 1) / kRowGroup),
      memory(static_cast<std::size_t>(2 * (groups + 2) * kRowGroup), kFar),
      fromLeft(static_cast<std::size_t>(groups)), fromRight(static_cast<std::size_t>(groups)),
      source(NewRow(0)), own(NewRow(1)) {}

/// A row between two groups that stay far away.
Pair* RowScan::NewRow(int place) { return memory.data() + (place * (groups + 2) + 1) * kRowGroup; }

void RowScan::Read(const std::int16_t* x, const std::int16_t* y, Pair* row) const {
  const int count = width;  // of which the compiler knows that the loop does not write to it
  for (int i = 0; i < count; ++i) { row[i] = PairOf(x[i], y[i]); }
}

void RowScan::Write(const Pair* row, std::int16_t* x, std::int16_t* y) const {
  for (int i = 0; i < width; ++i) {
    x[i] = static_cast<std::int16_t>(XOf(row[i]));
    y[i] = static_cast<std::int16_t>(YOf(row[i]));
  }
}

void RowScan::Next(std::int16_t* x, std::int16_t* y) {
  Read(x, y, own);
  loops.takeFromSource(source, step, groups, own);
  std::fill(own + width, own + groups * kRowGroup, kFar);
  // A pass to the right makes no new work for the one to the left: what it changed is as long as
  // its left neighbour with one more step, and no shorter.
  loops.findChanges(own, groups, fromLeft.data(), fromRight.data());
  PassRight();
  PassLeft();
  Write(own, x, y);
  std::swap(source, own);
}

bool RowScan::Try(int i, int neighbour, int stepX) {
  const int x = XOf(own[neighbour]) + stepX;
  const int y = YOf(own[neighbour]);
  if (SquareOf(x, y) >= SquareOf(XOf(own[i]), YOf(own[i]))) { return false; }
  own[i] = PairOf(x, y);
  return true;
}

// A pixel that changes may change the next one: each pass follows that as far as it goes. Pixels
// that it comes by a second time stay as they are.

void RowScan::PassRight() {
  for (int group = 0; group < groups; ++group) {
    for (unsigned bits = fromLeft[static_cast<std::size_t>(group)]; bits != 0; bits &= bits - 1) {
      int i = group * kRowGroup + __builtin_ctz(bits);
      while (i < width && Try(i, i - 1, -1)) { ++i; }
    }
  }
}

void RowScan::PassLeft() {
  for (int group = groups - 1; group >= 0; --group) {
    for (unsigned bits = fromRight[static_cast<std::size_t>(group)]; bits != 0;) {
      const int highest = 31 - __builtin_clz(bits);
      bits ^= 1U << highest;
      int i = group * kRowGroup + highest;
      while (i >= 0 && Try(i, i + 1, +1)) { --i; }
    }
  }
}

}  // namespace

SliceVectors StartVectors(const LabelSlice& slice, int label, SliceSize size) {
  SliceVectors vectors;
  vectors.size = size;
  vectors.x.resize(vectors.Index(0, size.height));
  const int longer = std::max(size.width, size.height);
  const auto start = static_cast<std::int16_t>(kStartPerSide * longer);
  // A product, since a branch would be guessed wrong along every outline.
  slice.Read(size.width, size.height, vectors.x.data(), [label, start](std::uint8_t byte) {
    return static_cast<std::int16_t>(start * static_cast<int>(byte != label));
  });
  vectors.y = vectors.x;
  return vectors;
}

void ScanForward(SliceVectors& vectors, Progress& progress, const RowLoops& loops) {
  if (vectors.size.height < 2) { return; }
  RowScan scan(loops, vectors.size.width, -1);
  scan.Begin(vectors.x.data(), vectors.y.data());
  for (int j = 1; j < vectors.size.height; ++j) {
    progress.Step();
    scan.Next(&vectors.x[vectors.Index(0, j)], &vectors.y[vectors.Index(0, j)]);
  }
}

void ScanBackward(SliceVectors& vectors, Progress& progress, const RowLoops& loops) {
  if (vectors.size.height < 2) { return; }
  const std::size_t last = vectors.Index(0, vectors.size.height - 1);
  RowScan scan(loops, vectors.size.width, +1);
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
