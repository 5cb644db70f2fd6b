// The two overlay commands on volumes of 256 x 256 x 256, without the extraction of surfaces.
//
// "ratio" is time by that of one pass that compares the bytes of both volumes in the same run,
// "user_ratio" the same without the system's time, which goes into the pages of the new scalars.
// "Overlay Result" paints one work volume of a byte and a float a voxel, "Overlay 3D" three.
#include "bench/Ratios.h"
#include "tests/support/TestVolume.h"
#include "view3d/volumemeasures/VolumeOverlap.h"

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <memory>

namespace {

constexpr int kSide = 256;
constexpr int kLabel = 2;

/// A ball among other labels; `shift` moves it along x.
void PaintBall(TestVolume& volume, int shift) {
  for (int x = 0; x < kSide; ++x) {
    for (int y = 0; y < kSide; ++y) {
      for (int z = 0; z < kSide; ++z) {
        const int dx = x - shift - kSide / 2;
        const int dy = y - kSide / 2;
        const int dz = z - kSide / 2;
        const bool inside = dx * dx + dy * dy + dz * dz < 80 * 80;
        volume.voxel(x, y, z) = inside ? kLabel : (dx > 90 ? 1 : 0);
      }
    }
  }
}

/// One pass of plain byte comparison over both volumes.
long Agreeing(const LabelVolume& a, const LabelVolume& b) {
  long agreeing = 0;
  for (int x = 0; x < kSide; ++x) {
    for (int y = 0; y < kSide; ++y) {
      const std::uint8_t* runA = a.voxels[x][y];
      const std::uint8_t* runB = b.voxels[x][y];
      for (int z = 0; z < kSide; ++z) {
        if (runA[z] == kLabel && runB[z] == kLabel) { ++agreeing; }
      }
    }
  }
  return agreeing;
}

/// Scalars as a command gets them: zero pages that were never touched.
class Scalars {
public:
  Scalars() : values(std::calloc(std::size_t{kSide} * kSide * kSide, sizeof(float)), std::free) {}
  float* Get() const { return static_cast<float*>(values.get()); }

private:
  std::unique_ptr<void, decltype(&std::free)> values;
};

struct Images {
  TestVolume a{kSide, kSide, kSide};
  TestVolume b{kSide, kSide, kSide};

  Images() {
    PaintBall(a, 0);
    PaintBall(b, 12);
  }
  void ComparePlainly() const { benchmark::DoNotOptimize(Agreeing(a.Labels(), b.Labels())); }
};

template <class Work>
void CountRatios(benchmark::State& state, Work work, const Images& images) {
  constexpr int kRounds = 40;
  const auto plain = [&] {
    images.ComparePlainly();
  };
  state.counters["ratio"] = bench::MedianRatio(work, plain, kRounds);
  double user[2] = {0.0, 0.0};
  for (int i = 0; i < kRounds; ++i) {  // in sum: user time is counted in coarse steps
    const double begin = bench::UserSeconds();
    work();
    const double between = bench::UserSeconds();
    plain();
    user[0] += between - begin;
    user[1] += bench::UserSeconds() - between;
  }
  state.counters["user_ratio"] = user[0] / user[1];
}

void OverlayResult(benchmark::State& state) {
  const Images images;
  TestVolume picture(kSide, kSide, kSide);
  Progress silent;
  const auto work = [&] {
    const Scalars scalars;
    benchmark::DoNotOptimize(measure::PaintOverlap(images.a.Labels(), images.b.Labels(), kLabel,
                                                   picture.Work(scalars.Get()).WithNewScalars(),
                                                   silent));
  };
  for (auto _ : state) { work(); }
  CountRatios(state, work, images);
}
BENCHMARK(OverlayResult)->Unit(benchmark::kMillisecond);

void Overlay3D(benchmark::State& state) {
  const Images images;
  TestVolume pictureA(kSide, kSide, kSide);
  TestVolume pictureB(kSide, kSide, kSide);
  TestVolume pictureBoth(kSide, kSide, kSide);
  Progress silent;
  const auto work = [&] {
    const Scalars scalars[3];
    measure::PaintRegions(images.a.Labels(), images.b.Labels(), kLabel,
                          pictureA.Work(scalars[0].Get()).WithNewScalars(),
                          pictureB.Work(scalars[1].Get()).WithNewScalars(),
                          pictureBoth.Work(scalars[2].Get()).WithNewScalars(), silent);
  };
  for (auto _ : state) { work(); }
  CountRatios(state, work, images);
}
BENCHMARK(Overlay3D)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
