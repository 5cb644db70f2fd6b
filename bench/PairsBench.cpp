// The batch over image pairs, its histogram, its lists and the probability map, as ratios to plain
// work in the same run, and how some of them grow with their input.
//
// "ratio" is time by plain time; "growth" is the time of double the input by that of the input;
// "kilobytes" is the most memory that a run held.
#include "VoxData/ScriptList.h"
#include "bench/Ratios.h"
#include "tests/volumemeasures/PlainPairs.h"
#include "tests/volumemeasures/TestPairStudy.h"
#include "ui/Fields.h"
#include "ui/MainUI.h"
#include "view3d/volumemeasures/ProbabilityMap.h"
#include "view3d/volumemeasures/SurfaceHistogram.h"

#include <FL/Fl_Choice.H>
#include <FL/Fl_Output.H>

#include <benchmark/benchmark.h>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <unistd.h>

namespace {

constexpr int kLabel = 2;

/// A body of waves round the middle; its outline depends on `variant`, as one user's repeat does.
std::unique_ptr<TestVolume> Body(int dimX, int dimY, int dimZ, int variant) {
  auto volume = std::make_unique<TestVolume>(dimX, dimY, dimZ);
  for (int x = 0; x < dimX; ++x) {
    for (int y = 0; y < dimY; ++y) {
      for (int z = 0; z < dimZ; ++z) {
        const double dx = (x - dimX * 0.5) / dimX;
        const double dy = (y - dimY * 0.5) / dimY;
        const double dz = (z - dimZ * 0.5) / dimZ;
        const double wave = 0.02 * std::sin(9.0 * std::atan2(dy, dx) + variant) +
                            0.01 * std::sin(31.0 * dz + 2.0 * variant);
        if (std::sqrt(dx * dx + dy * dy + dz * dz) < 0.33 + wave) {
          volume->voxel(x, y, z) = kLabel;
        }
      }
    }
  }
  return volume;
}

struct Study {
  std::vector<std::unique_ptr<TestVolume>> volumes;
  std::vector<TestVolume*> images;

  Study(int count, int dimX, int dimY, int dimZ) {
    for (int i = 0; i < count; ++i) {
      volumes.push_back(Body(dimX, dimY, dimZ, i));
      images.push_back(volumes.back().get());
    }
  }
};

/// 45 pairs of 10 images with "Overlay", "Haussdorf" and "Surface Dist.".
void AllPairsOfTen(benchmark::State& state) {
  const Study study(10, 128, 128, 64);
  const auto pairs = AllPairs(10);
  double plainTime = 0.0;
  double ownTime = 0.0;
  for (auto _ : state) {
    plain::Pairs reference(study.images, kLabel, {});
    plainTime += bench::SecondsOf([&] {
      reference.Compare(pairs, {true, true, true, false, true});
    });
    TestPairStudy run(study.images);
    run.stages = {{true, true, true}, false, true};
    const double time = bench::SecondsOf([&] { run.Compare(pairs); });
    ownTime += time;
    state.SetIterationTime(time);
    if (run.rows != reference.table || run.progress.printed != reference.printed) {
      state.SkipWithError("the tables differ");
    }
  }
  state.counters["ratio"] = ownTime / plainTime;
}
BENCHMARK(AllPairsOfTen)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(1);

/// The most memory that this process held since the last call, in kilobytes.
long TakePeak() {
  std::ifstream status("/proc/self/status");
  std::string word;
  long peak = 0;
  while (status >> word) {
    if (word == "VmHWM:") { status >> peak; }
  }
  std::ofstream("/proc/self/clear_refs") << 5;  // the peak begins again at what is held now
  return peak;
}

/// What a run needs at its peak, on 45 of the pairs of 20 images and on all 190.
void PeakOfPairs(benchmark::State& state) {
  const Study study(20, 96, 96, 48);
  const auto peakOf = [&](std::size_t count) {
    auto pairs = AllPairs(20);
    pairs.resize(count);
    TestPairStudy run(study.images);
    run.stages = {{true, true, true}, false, true};
    TakePeak();
    run.Compare(pairs);
    return static_cast<double>(TakePeak());
  };
  for (auto _ : state) {
    peakOf(1);  // the first run touches pages that later ones find
    state.counters["kilobytes45"] = peakOf(45);
    state.counters["kilobytes190"] = peakOf(190);
  }
}
BENCHMARK(PeakOfPairs)->Unit(benchmark::kMillisecond)->Iterations(1);

/// Signed distances as a surface gives them: few distinct ones, or all distinct.
FloatList Distances(int count, bool distinct) {
  std::mt19937 random(3);
  FloatList list;
  for (int i = 0; i < count; ++i) {
    const auto value = static_cast<float>(random() % (distinct ? 1U << 24U : 4000U));
    list.Append(std::sqrt(value) - 30.0F);
  }
  return list;
}

/// Time of some work on double the input by that on the input, medians of several rounds.
template <class Work>
double Growth(int input, Work work) {
  return bench::MedianRatio([&] { work(2 * input); }, [&] { work(input); }, 9);
}

void Histogram(benchmark::State& state, bool distinct) {
  std::vector<float> values(20000);
  std::vector<std::int32_t> counts(20000);
  std::int32_t last = -1;
  const FloatList lists[2] = {Distances(250000, distinct), Distances(500000, distinct)};
  const auto work = [&](int count) {
    FloatList list = lists[count == 500000 ? 1 : 0];
    const auto distances = measure::CountDistances(list);
    measure::BuildHistogram(distances, measure::kOwnHistogram,
                            {values.data(), counts.data(), last});
    benchmark::DoNotOptimize(
        measure::HistogramRows({values.data(), counts.data(), last}, last, "", ""));
  };
  for (auto _ : state) { work(500000); }
  state.counters["growth"] = Growth(250000, work);
}
BENCHMARK_CAPTURE(Histogram, FewDistinct, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Histogram, AllDistinct, true)->Unit(benchmark::kMillisecond);

/// "All" on 20 images: 190 pairs; the growth is that from 91 pairs of 14 images, by pair.
void AddAllPairs(benchmark::State& state) {
  static MainUI& ui = *new MainUI;
  const auto work = [](int images) {
    ui.compareImage1Choice->clear();
    for (int i = 0; i < images; ++i) {
      AddEntry(ui.compareImage1Choice, ("user_" + std::to_string(i) + "_repeat_0.gipl").c_str());
    }
    for (int again = 0; again < 50; ++again) {
      ui.comparePairCount = 0;
      ui.comparePairsOutput->value("");
      ui.AddAllPairs();
    }
  };
  for (auto _ : state) { work(20); }
  state.counters["growth"] =
      bench::MedianRatio([&] { work(20); }, [&] { work(14); }, 9) * 2.0 * 91.0 / 190.0;
}
BENCHMARK(AddAllPairs)->Unit(benchmark::kMillisecond);

/// Both readers on a list of 60 images, by that of 30.
void ReadList(benchmark::State& state) {
  const std::string folder = std::filesystem::temp_directory_path().string();
  const auto path = [&](int images) {
    return folder + "/bench_pairs." + std::to_string(getpid()) + "." + std::to_string(images) +
           ".tlx";
  };
  for (const int images : {30, 60}) {
    std::string segs;
    for (int i = 1; i < images; ++i) {
      segs += "/home/somebody/studies/hippocampus/user_" + std::to_string(i) + "_repeat_0.gipl\n";
    }
    script::WriteList(path(images), 6, images / 6, "/home/somebody/studies/grey.gipl", segs);
  }
  const auto work = [&](int images) {
    const std::string file = path(images);
    for (int again = 0; again < 200; ++again) {
      script::StudyList list;
      script::ListTexts texts;
      if (!script::ReadStudyList(file.c_str(), list).empty() ||
          !script::ReadListTexts(file.c_str(), texts).empty()) {
        std::abort();
      }
      benchmark::DoNotOptimize(list);
      benchmark::DoNotOptimize(texts);
    }
  };
  for (auto _ : state) { work(60); }
  state.counters["growth"] = Growth(30, work);
  for (const int images : {30, 60}) { std::filesystem::remove(path(images)); }
}
BENCHMARK(ReadList)->Unit(benchmark::kMillisecond);

/// One pass that sums the matches of all volumes.
long SumOfMatches(const std::vector<LabelVolume>& images) {
  long sum = 0;
  for (const LabelVolume& image : images) {
    for (int x = 0; x < image.dimX; ++x) {
      for (int y = 0; y < image.dimY; ++y) {
        const std::uint8_t* run = image.voxels[x][y];
        for (int z = 0; z < image.dimZ; ++z) { sum += run[z] == kLabel ? 1 : 0; }
      }
    }
  }
  return sum;
}

/// 3 users with 4 repeats.
void ProbabilityMap(benchmark::State& state) {
  constexpr int kUsers = 3;
  constexpr int kRepeats = 4;
  const Study study(kUsers * kRepeats, 256, 256, 128);
  std::vector<LabelVolume> images;
  for (const TestVolume* image : study.images) { images.push_back(image->Labels()); }
  TestVolume picture(256, 256, 128);
  Progress silent;
  const auto work = [&] {
    // Scalars as a command gets them: zero pages that were never touched.
    const std::size_t count = images[0].Count();
    const std::unique_ptr<void, decltype(&std::free)> scalars(std::calloc(count, sizeof(float)),
                                                              std::free);
    benchmark::DoNotOptimize(
        measure::PaintProbability(images, kUsers, kRepeats, kLabel,
                                  picture.Work(static_cast<float*>(scalars.get())), silent));
  };
  for (auto _ : state) { work(); }
  state.counters["ratio"] =
      bench::MedianRatio(work, [&] { benchmark::DoNotOptimize(SumOfMatches(images)); });
}
BENCHMARK(ProbabilityMap)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
