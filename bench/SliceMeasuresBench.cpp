// The measures on slices, as ratios to their plain transcriptions in the same run.
//
// Each pair of runs measures one slice of 256 x 256 pixels; the counter "ratio" says how many times
// as fast the kernel is, median to median.
#include "base/LabelSlice.h"
#include "bench/Ratios.h"
#include "tests/slicemeasures/PlainSlices.h"
#include "tests/support/TestVolume.h"
#include "views/slicemeasures/SliceContour.h"
#include "views/slicemeasures/SliceDistance.h"

#include <benchmark/benchmark.h>
#include <cmath>
#include <cstring>
#include <ctime>
#include <memory>
#include <vector>

namespace {

constexpr int kSide = 256;
constexpr int kLabel = 3;

/// An outline of waves round the middle, as rough as a drawn one, with a hole; `lobes` of 0 is
/// scattered noise.
std::unique_ptr<TestVolume> Drawn(int lobes) {
  auto volume = std::make_unique<TestVolume>(kSide, kSide, 3);
  unsigned random = 7;
  for (int x = 0; x < kSide; ++x) {
    for (int y = 0; y < kSide; ++y) {
      random = random * 1664525U + 1013904223U;
      const double dx = x - 128.0;
      const double dy = y - 120.0;
      const double radius = 78.0 + 18.0 * std::sin(lobes * std::atan2(dy, dx));
      const double distance = std::hypot(dx, dy);
      const bool inside = lobes == 0 ? random >> 28U == 0 : distance < radius && distance > 20.0;
      if (inside) { volume->voxel(x, y, 1) = kLabel; }
    }
  }
  return volume;
}

struct Pictures {
  measure::Picture result;
  measure::Picture mark;
};

double ThreadSeconds() {
  timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

/// Runs both a number of times in turn, so that a busy machine slows both alike.
template <class Plain, class Fast>
void Compare(benchmark::State& state, Plain runPlain, Fast runFast) {
  std::vector<double> plainTimes;
  std::vector<double> fastTimes;
  for (auto _ : state) {
    const double begin = ThreadSeconds();
    runPlain();
    const double middle = ThreadSeconds();
    runFast();
    const double end = ThreadSeconds();
    plainTimes.push_back(middle - begin);
    fastTimes.push_back(end - middle);
    state.SetIterationTime(end - middle);
  }
  state.counters["ratio"] = bench::Median(plainTimes) / bench::Median(fastTimes);
}

void DistanceMap(benchmark::State& state, int lobes) {
  const auto volume = Drawn(lobes);
  const LabelSlice slice{volume->Labels(), kSliceXY, 1};
  Progress progress;
  Compare(
      state,
      [&] { benchmark::DoNotOptimize(plain::DistanceMap(volume->Labels(), 2, 1, kLabel).x[0]); },
      [&] {
        auto vectors = measure::StartVectors(slice, kLabel, {kSide, kSide});
        measure::ScanForward(vectors, progress);
        measure::ScanBackward(vectors, progress);
        benchmark::DoNotOptimize(vectors.x[0]);
      });
}

void Complexity(benchmark::State& state, int lobes) {
  const auto volume = Drawn(lobes);
  const LabelSlice slice{volume->Labels(), kSliceXY, 1};
  const auto plainPictures = std::make_unique<Pictures>();
  const auto pictures = std::make_unique<Pictures>();
  Compare(
      state,
      [&] {
        plain::Contour contour(plainPictures->result, plainPictures->mark);
        contour.Complexity(volume->Labels(), 2, 1, 0, kLabel);
        benchmark::DoNotOptimize(contour.perimeter);
      },
      [&] {
        const measure::ContourPictures on{pictures->result, pictures->mark, {kSide, kSide}};
        benchmark::DoNotOptimize(measure::PaintContour(slice, 0, kLabel, on));
        benchmark::DoNotOptimize(measure::WalkContour(measure::WaveExtent::Interior, on).perimeter);
      });
  if (std::memcmp(plainPictures->mark, pictures->mark, sizeof pictures->mark) != 0) {
    state.SkipWithError("the marks differ");
  }
}

// Fixed numbers of runs: the time of the plain ones does not count towards a limit.
void Distances(benchmark::internal::Benchmark* bench) { bench->Iterations(500); }
void Contours(benchmark::internal::Benchmark* bench) { bench->Iterations(100); }

BENCHMARK_CAPTURE(DistanceMap, Drawn, 5)
    ->Apply(Distances)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(DistanceMap, Rough, 40)
    ->Apply(Distances)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(DistanceMap, Noise, 0)
    ->Apply(Distances)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Complexity, Drawn, 5)
    ->Apply(Contours)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Complexity, Rough, 40)
    ->Apply(Contours)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Complexity, Noise, 0)
    ->Apply(Contours)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
