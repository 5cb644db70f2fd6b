// The distance transform and the commands on it, as ratios to plain loops in the same run: medians
// of five, user and system time.
//
// "Transform" has a ratio for each instruction set of this machine; "extraMiB" is what a transform
// allocates, and "planes" the same, less one MiB, in planes of vectors.
#include "bench/Ratios.h"
#include "tests/support/PlainDistanceTransform.h"
#include "tests/support/TestField.h"
#include "tests/support/TestVolume.h"
#include "tests/volumemeasures/PlainVolumes.h"
#include "view3d/volumemeasures/DistanceTransform.h"
#include "view3d/volumemeasures/Shell.h"
#include "view3d/volumemeasures/SurfaceDistance.h"
#include "view3d/volumemeasures/VolumeHaussdorf.h"

#include <benchmark/benchmark.h>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <new>

namespace {

std::size_t allocated = 0;  // bytes asked for so far

}  // namespace

[[gnu::noinline]] void* operator new(std::size_t bytes) {
  allocated += bytes;
  if (void* memory = std::malloc(bytes)) { return memory; }
  throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete(void* memory, std::size_t /*bytes*/) noexcept {
  std::free(memory);
}

namespace {

using measure::InstructionSet;
using measure::VoxelSize;

constexpr int kLabel = 3;
constexpr int kRounds = 5;
constexpr VoxelSize kSizes[] = {{0.9F, 0.9F, 0.9F}, {0.9F, 0.9F, 3.0F}, {1.0F, 1.0F, 1.0F}};
enum Spacing : int { kIsotropic, kAnisotropic, kWhole };

/// A body of waves, shifted a little by `variant`, as one user's repeat is.
std::unique_ptr<TestVolume> Body(int dimX, int dimY, int dimZ, int variant) {
  auto volume = std::make_unique<TestVolume>(dimX, dimY, dimZ);
  for (int x = 0; x < dimX; ++x) {
    for (int y = 0; y < dimY; ++y) {
      for (int z = 0; z < dimZ; ++z) {
        const double a = (x - dimX * 0.45) / (dimX * 0.22) + 0.03 * variant;
        const double b = (y - dimY * 0.5) / (dimY * 0.27);
        const double c = (z - dimZ * 0.55) / (dimZ * 0.25) - 0.02 * variant;
        const double wave = 0.08 * std::sin(9.0 * a + 4.0 * c) * std::cos(7.0 * b + variant);
        if (std::sqrt(a * a + b * b + c * c) + wave < 1.0) { volume->voxel(x, y, z) = kLabel; }
      }
    }
  }
  return volume;
}

const char* NameOf(InstructionSet set) {
  constexpr const char* kNames[] = {"plain", "sse2", "avx2", "avx512"};
  return kNames[static_cast<int>(set)];
}

bool SameBits(const TestField& a, const TestField& b) {
  return a.Mask() == b.Mask() && a.X() == b.X() && a.Y() == b.Y() && a.Z() == b.Z();
}

void Transform(benchmark::State& state, int side, int depth, Spacing spacing) {
  const auto body = Body(side, side, depth, 0);
  const LabelVolume image = body->Labels();
  TestField expected(image);
  TestField field(image);
  Progress progress;
  const auto sets = measure::SupportedInstructionSets();
  std::vector<std::vector<double>> ratios(sets.size());
  for (auto _ : state) {
    for (int round = -1; round < kRounds; ++round) {  // the first one warms up
      const double reference = bench::SecondsOf([&] {
        plain::ComputeDistanceTransform(image, kLabel, kSizes[spacing], expected.View());
      });
      for (std::size_t i = 0; i < sets.size(); ++i) {
        const double time = bench::SecondsOf([&] {
          measure::ComputeDistanceTransformOn(sets[i], image, kLabel, kSizes[spacing], field.View(),
                                              progress);
        });
        if (round >= 0) { ratios[i].push_back(time / reference); }
        if (!SameBits(expected, field)) { state.SkipWithError("the vectors differ"); }
      }
    }
  }
  for (std::size_t i = 0; i < sets.size(); ++i) {
    state.counters[NameOf(sets[i])] = bench::Median(ratios[i]);
  }
}

struct FreeSaved {
  void operator()(void* saved) const { std::free(saved); }
};

/// Two bodies and all that a command on them needs.
struct Study {
  std::unique_ptr<TestVolume> a;
  std::unique_ptr<TestVolume> b;
  TestField field;
  TestVolume colours;
  std::vector<float> scalars;
  std::unique_ptr<std::int32_t[][280][280], FreeSaved> saved;
  VoxelSize size;

  Study(int side, int depth, Spacing spacing)
      : a(Body(side, side, depth, 0)), b(Body(side, side, depth, 1)), field(a->Labels()),
        colours(side, side, depth), scalars(field.Count(), 0.0F),
        saved(static_cast<std::int32_t (*)[280][280]>(
            std::calloc(kMaxMeasuredSide, sizeof(std::int32_t[280][280])))),
        size(kSizes[spacing]) {}
  WorkVolume Picture() { return colours.Work(scalars.data()); }

  float Haussdorf() {
    Progress progress;
    measure::ComputeDistanceTransform(a->Labels(), kLabel, size, field.View(), progress);
    const float first = measure::LargestDistance(b->Labels(), kLabel, field.View(), 1,
                                                 b->Labels().dimX - 2, progress);
    measure::ComputeDistanceTransform(b->Labels(), kLabel, size, field.View(), progress);
    const auto far = measure::FindFarVoxel(a->Labels(), kLabel, field.View(), progress);
    measure::PaintDistances(a->Labels(), kLabel, field.View(), far, Picture());
    return first + far.distance;
  }
  float PlainHaussdorf() {
    plain::ComputeDistanceTransform(a->Labels(), kLabel, size, field.View());
    const float first = plain::HaussdorfPassB(b->Labels(), kLabel, field.View(), Picture());
    plain::ComputeDistanceTransform(b->Labels(), kLabel, size, field.View());
    const auto far = plain::HaussdorfPassA(a->Labels(), kLabel, field.View());
    plain::HaussdorfColours(a->Labels(), kLabel, field.View(), far, Picture());
    return first + far.distance;
  }
  /// `lists` may be null: no medians.
  float Surface(measure::DistanceLists* lists) {
    Progress progress;
    measure::SaveLabels(a->Labels(), saved.get(), progress);
    measure::ReduceToShell(saved.get(), kLabel, measure::ShellRule::OtherValue, a->Editable(),
                           progress);
    measure::ComputeDistanceTransform(a->Labels(), kLabel, size, field.View(), progress);
    measure::RestoreLabels(saved.get(), a->Editable(), progress);
    const auto distance =
        measure::SumAlongSurface(a->Labels(), b->Labels(), kLabel, field.View(), lists, progress);
    measure::PaintSignedDistance(a->Labels(), b->Labels(), kLabel, field.View(), distance,
                                 Picture(), progress);
    return distance.inside.sum + distance.outside.sum;
  }
  float SurfaceWithMedians() {
    measure::DistanceLists lists;
    const float sum = Surface(&lists);
    for (FloatList* list : {&lists.inside, &lists.outside, &lists.all}) {
      list->Sort();
      benchmark::DoNotOptimize(list->GetValue((list->Size() + 1) / 2));
    }
    return sum;
  }
  float PlainSurface() {
    plain::Save(a->Labels(), saved.get());
    plain::Shell(saved.get(), kLabel, false, a->Editable());
    plain::ComputeDistanceTransform(a->Labels(), kLabel, size, field.View());
    plain::Restore(saved.get(), a->Editable());
    const auto distances =
        plain::AlongSurface(a->Labels(), b->Labels(), kLabel, field.View(), false);
    plain::SignedColours(a->Labels(), b->Labels(), kLabel, field.View(), distances.inside.max,
                         distances.outside.max, Picture());
    return distances.inside.sum + distances.outside.sum;
  }
};

void Haussdorf3D(benchmark::State& state, int side, int depth, Spacing spacing) {
  Study study(side, depth, spacing);
  float sums[2] = {};
  for (auto _ : state) {
    state.counters["ratio"] = bench::MedianRatio([&] { sums[0] = study.Haussdorf(); },
                                                 [&] { sums[1] = study.PlainHaussdorf(); });
  }
  if (sums[0] != sums[1]) { state.SkipWithError("the distances differ"); }
}

void SurfaceDistance(benchmark::State& state, int side, int depth, Spacing spacing) {
  Study study(side, depth, spacing);
  float sums[3] = {};
  for (auto _ : state) {
    state.counters["ratio"] = bench::MedianRatio([&] { sums[0] = study.Surface(nullptr); },
                                                 [&] { sums[1] = study.PlainSurface(); });
    state.counters["medians"] = bench::MedianRatio([&] { sums[2] = study.SurfaceWithMedians(); },
                                                   [&] { study.Surface(nullptr); });
  }
  if (sums[0] != sums[1] || sums[0] != sums[2]) { state.SkipWithError("the distances differ"); }
}

/// Time per voxel at 280 voxels a side by that at 64, the small volume as often as has the same
/// number of voxels; and what one transform allocates.
void LargestVolume(benchmark::State& state, Spacing spacing) {
  constexpr int kLarge = 280;
  constexpr int kSmall = 64;
  constexpr int kTimes = 84;  // small volumes in a large one
  const auto large = Body(kLarge, kLarge, kLarge, 0);
  const auto small = Body(kSmall, kSmall, kSmall, 0);
  TestField largeField(large->Labels());
  TestField smallField(small->Labels());
  Progress progress;
  const auto run = [&](const TestVolume& body, const TestField& field) {
    measure::ComputeDistanceTransform(body.Labels(), kLabel, kSizes[spacing], field.View(),
                                      progress);
  };
  for (auto _ : state) {
    const double ratio = bench::MedianRatio([&] { run(*large, largeField); },
                                            [&] {
                                              for (int i = 0; i < kTimes; ++i) {
                                                run(*small, smallField);
                                              }
                                            });
    const auto smallCount = static_cast<double>(smallField.Count());
    state.counters["perVoxel"] =
        ratio * kTimes * smallCount / static_cast<double>(largeField.Count());
    allocated = 0;
    run(*large, largeField);
    constexpr double kMiB = 1048576.0;
    const auto bytes = static_cast<double>(allocated);
    state.counters["extraMiB"] = bytes / kMiB;
    state.counters["planes"] = (bytes - kMiB) / (12.0 * kLarge * kLarge);
  }
}

// Each measures itself, once.
#define TOLVEX_CASE(function, name, ...)                                                           \
  BENCHMARK_CAPTURE(function, name, __VA_ARGS__)->Iterations(1)->Unit(benchmark::kSecond)
TOLVEX_CASE(Transform, Large_0_9, 256, 256, kIsotropic);
TOLVEX_CASE(Transform, Large_0_9_0_9_3_0, 256, 256, kAnisotropic);
TOLVEX_CASE(Transform, Large_1, 256, 256, kWhole);
TOLVEX_CASE(Transform, Middle_0_9, 128, 64, kIsotropic);
TOLVEX_CASE(Transform, Middle_0_9_0_9_3_0, 128, 64, kAnisotropic);
TOLVEX_CASE(Transform, Middle_1, 128, 64, kWhole);
TOLVEX_CASE(Haussdorf3D, Large_0_9_0_9_3_0, 256, 256, kAnisotropic);
TOLVEX_CASE(Haussdorf3D, Large_1, 256, 256, kWhole);
TOLVEX_CASE(Haussdorf3D, Middle_0_9_0_9_3_0, 128, 64, kAnisotropic);
TOLVEX_CASE(Haussdorf3D, Middle_1, 128, 64, kWhole);
TOLVEX_CASE(SurfaceDistance, Large_0_9_0_9_3_0, 256, 256, kAnisotropic);
TOLVEX_CASE(SurfaceDistance, Large_1, 256, 256, kWhole);
TOLVEX_CASE(SurfaceDistance, Middle_0_9_0_9_3_0, 128, 64, kAnisotropic);
TOLVEX_CASE(SurfaceDistance, Middle_1, 128, 64, kWhole);
TOLVEX_CASE(LargestVolume, 0_9, kIsotropic);
TOLVEX_CASE(LargestVolume, 1, kWhole);

}  // namespace

BENCHMARK_MAIN();
