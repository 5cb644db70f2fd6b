// One plane's work in the distance transform, and the sweeps that can do it.
//
// Internal to the volume measures. Files that are compiled for different instruction sets include
// this: it defines no function.
#pragma once

#include <cstddef>
#include <cstdint>

namespace measure {

/// Elements before a row in work memory; blocks of all widths begin at its element 0.
constexpr int kRowPad = 16;

/// Rows of squared lengths that a sweep keeps.
constexpr int kLengthRows = 16;

/// Voxel size and start distance.
struct SweepSteps {
  float x;
  float y;
  float z;
  float far;
};

/// A plane that is brought from its start to the vectors that a scan leaves.
///
/// Shape: `source` and `target` are planes in work memory: dimY rows, each of the components x, y
///        and z one after another, `stride` elements apiece, the first of them kRowPad ahead of
///        voxel 0. mask, x, y, z are dimX * dimY elements without gaps.
struct PlaneJob {
  SweepSteps steps;
  int dimX;
  int dimY;
  int stride;                ///< elements of a row of one component or of lengths, padding included
  const float* source;       ///< the neighbouring plane; null: the target gets start vectors alone
  float* target;             ///< the plane that is swept
  void* lengths;             ///< kLengthRows rows, filled with infinity once
  bool backward;             ///< the source is the plane above, and x, y, z hold the start
  const std::int32_t* mask;  ///< where the start vectors come from
  float* x;                  ///< the result
  float* y;
  float* z;
};

/// The sweeps of one instruction set.
struct PlaneSweeps {
  void (*real)(const PlaneJob& job);   ///< squared lengths in double
  void (*whole)(const PlaneJob& job);  ///< and in float, for where these are exact
};

PlaneSweeps PlainSweeps();
/// Null where the build does not have the instruction set.
PlaneSweeps Sse2Sweeps();
PlaneSweeps Avx2Sweeps();
PlaneSweeps Avx512Sweeps();

}  // namespace measure
