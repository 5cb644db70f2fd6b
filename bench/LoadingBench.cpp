// Loading a volume of 256 x 256 x 256 voxels, against reading its file with one fread and touching
// every voxel once. Counter "ratio": user and system time, median of five pairs; aim: at most 2.
#include "VoxData/VoxData.h"
#include "bench/Ratios.h"

#include <benchmark/benchmark.h>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

constexpr int kSide = 256;
constexpr std::size_t kVoxels = std::size_t{kSide} * kSide * kSide;

/// A file of noise for grey values, or of a ball of label 2; removed at the end.
class VolumeFile {
public:
  VolumeFile(const char* name, bool grey)
      : path((std::filesystem::temp_directory_path() / name).string()) {
    std::vector<char> bytes(256, 0);
    bytes.reserve(256 + (grey ? 2 : 1) * kVoxels);
    unsigned noise = 1;
    for (std::size_t i = 0; i < kVoxels; ++i) {
      noise = noise * 1664525U + 1013904223U;
      if (grey) {
        bytes.push_back(static_cast<char>(noise >> 28U));
        bytes.push_back(static_cast<char>(noise >> 20U));
      } else {
        const int x = static_cast<int>(i % kSide) - 128;
        const int y = static_cast<int>(i / kSide % kSide) - 128;
        const int z = static_cast<int>(i / kSide / kSide) - 128;
        bytes.push_back(x * x + y * y + z * z < 80 * 80 ? 2 : 0);
      }
    }
    std::ofstream(path, std::ios::binary)
        .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  }
  ~VolumeFile() { std::remove(path.c_str()); }
  VolumeFile(const VolumeFile&) = delete;
  VolumeFile& operator=(const VolumeFile&) = delete;

  const std::string path;
};

template <class Voxel>
void ReadAndTouch(const std::string& path) {
  auto* voxels = static_cast<Voxel*>(std::malloc(kVoxels * sizeof(Voxel)));
  std::FILE* stream = std::fopen(path.c_str(), "rb");
  std::fseek(stream, 256, SEEK_SET);
  const std::size_t count = std::fread(voxels, sizeof(Voxel), kVoxels, stream);
  std::fclose(stream);
  unsigned sum = 0;
  for (std::size_t i = 0; i < count; ++i) { sum += voxels[i]; }
  benchmark::DoNotOptimize(sum);
  std::free(voxels);
}

void LoadGrey(benchmark::State& state) {
  const VolumeFile file("tolvex-bench-grey.raw", true);
  for (auto _ : state) {
    state.counters["ratio"] = bench::MedianRatio(
        [&file] {
          VoxData volume;
          volume.ReadGrey(file.path.c_str(), kSide, kSide, kSide, 2, 0, 0, 0, 1, 1, 256);
        },
        [&file] { ReadAndTouch<std::uint16_t>(file.path); });
  }
}
BENCHMARK(LoadGrey)->Iterations(1)->Unit(benchmark::kMillisecond);

void LoadSegmentation(benchmark::State& state) {
  const VolumeFile file("tolvex-bench-seg.raw", false);
  for (auto _ : state) {
    state.counters["ratio"] = bench::MedianRatio(
        [&file] {
          VoxData volume;
          volume.SetupSlot("", kSide, kSide, kSide, 1, 0, 0, 0, 1, 1);
          volume.ReadSeg(file.path.c_str(), 256);
        },
        [&file] { ReadAndTouch<std::uint8_t>(file.path); });
  }
}
BENCHMARK(LoadSegmentation)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
