// The two overlays of volumes of 256 x 256 x 256 voxels, all but the surface, as ratios to comparing
// the bytes of both volumes with each other in one plain pass.
//
// Counter "ratio": of user and system time, the median of pairs in one run; aim: at most 3. Counter
// "user": of user time alone, over all pairs, since the system tells the two apart by ticks. The
// plain pass reads 2 bytes a voxel. Overlay Result reads as many and writes 5, Overlay 3D writes 15:
// counter "write" is the ratio of writing so many bytes and nothing else.
#include "VoxData/VoxData.h"
#include "base/Progress.h"
#include "bench/Ratios.h"
#include "view3d/volumemeasures/VolumeOverlap.h"

#include <benchmark/benchmark.h>
#include <cmath>
#include <cstring>
#include <functional>
#include <vector>

namespace {

constexpr int kSide = 256;
constexpr int kLabel = 2;
constexpr int kRounds = 15;
constexpr std::size_t kVoxels = std::size_t{kSide} * kSide * kSide;

/// Two waved balls that overlap in most of their voxels, and the volumes that are painted.
class Study {
public:
  Study() {
    FillBall(a, 120.0);
    FillBall(b, 132.0);
    for (VoxData& picture : pictures) { picture.SetupWork(kSide, kSide, kSide, 1, 0, 0, 0, 0, 0); }
    NewScalars(3);
  }

  LabelVolume A() const { return a.Labels(); }
  LabelVolume B() const { return b.Labels(); }
  WorkVolume Picture(int i) {
    return isNew ? pictures[i].Work().WithNewScalars() : pictures[i].Work();
  }
  void KeepScalars() { isNew = false; }
  /// What a command does before each run of its kernel.
  void NewScalars(int count) {
    isNew = true;
    for (int i = 0; i < count; ++i) { pictures[i].NewWorkScalars(kVoxels); }
  }

private:
  static void FillBall(VoxData& volume, double centre) {
    volume.SetupSlot("", kSide, kSide, kSide, 1, 0, 0, 0, 0, 0);
    for (int x = 0; x < kSide; ++x) {
      for (int y = 0; y < kSide; ++y) {
        for (int z = 0; z < kSide; ++z) {
          const double distance = std::hypot(x - centre, y - centre, z - centre);
          const double radius = 90.0 + 6.0 * std::sin(x * 0.2) * std::cos(z * 0.3);
          volume.seg[x][y][z] = distance < radius ? kLabel : distance < 110.0 ? 1 : 0;
        }
      }
    }
  }

  VoxData a;
  VoxData b;
  VoxData pictures[3];
  bool isNew = false;  ///< the scalars were made for this run
};

Study& TheStudy() {
  static Study study;
  return study;
}

/// The reference: how many bytes of two volumes are equal.
void CompareBytes() {
  const LabelVolume a = TheStudy().A();
  const LabelVolume b = TheStudy().B();
  int equal = 0;
  for (int x = 0; x < a.dimX; ++x) {
    for (int y = 0; y < a.dimY; ++y) {
      const std::uint8_t* runA = a.voxels[x][y];
      const std::uint8_t* runB = b.voxels[x][y];
      for (int z = 0; z < a.dimZ; ++z) { equal += runA[z] == runB[z] ? 1 : 0; }
    }
  }
  benchmark::DoNotOptimize(equal);
}

void WriteBytes(std::vector<char>& bytes, int pass) {
  std::memset(bytes.data(), pass, bytes.size());
  benchmark::ClobberMemory();
}

/// A run of a kernel over volumes that are there, and of all that its command does.
void Overlay(benchmark::State& state, int painted, const std::function<void()>& kernel) {
  const bool withScalars = state.range(0) != 0;
  const auto work = [&] {
    TheStudy().KeepScalars();
    if (withScalars) { TheStudy().NewScalars(painted); }
    kernel();
  };
  std::vector<char> bytes(kVoxels * 5 * static_cast<std::size_t>(painted));
  for (auto _ : state) {
    state.counters["ratio"] = bench::MedianRatio(work, CompareBytes, kRounds);
    state.counters["user"] = bench::UserRatio(work, CompareBytes, kRounds);
    int pass = 0;
    const auto write = [&] {
      WriteBytes(bytes, ++pass);
    };
    state.counters["write"] = bench::MedianRatio(write, CompareBytes, kRounds);
  }
}

void OverlayResult(benchmark::State& state) {
  Overlay(state, 1, [] {
    Progress progress;
    Study& study = TheStudy();
    const auto overlap =
        measure::PaintOverlap(study.A(), study.B(), kLabel, study.Picture(0), progress);
    benchmark::DoNotOptimize(overlap.common);
  });
}
BENCHMARK(OverlayResult)->ArgName("new_scalars")->Arg(0)->Arg(1)->Iterations(1);

void Overlay3D(benchmark::State& state) {
  Overlay(state, 3, [] {
    Progress progress;
    Study& study = TheStudy();
    measure::PaintRegions(study.A(), study.B(), kLabel, study.Picture(0), study.Picture(1),
                          study.Picture(2), progress);
  });
}
BENCHMARK(Overlay3D)->ArgName("new_scalars")->Arg(0)->Arg(1)->Iterations(1);

void OverlapCounts(benchmark::State& state) {
  for (auto _ : state) {
    state.counters["ratio"] = bench::MedianRatio(
        [] {
          Progress progress;
          Study& study = TheStudy();
          const auto overlap = measure::CountOverlap(study.A(), study.B(), kLabel, progress);
          benchmark::DoNotOptimize(overlap.common);
        },
        CompareBytes, kRounds);
  }
}
BENCHMARK(OverlapCounts)->Iterations(1);

}  // namespace

BENCHMARK_MAIN();
