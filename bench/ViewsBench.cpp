// Stepping a slice slider through 256 slices with all three views drawn at each step. Counter
// "steps_per_second"; aim: above 60 with software OpenGL. On a busy machine "steps_per_core_second"
// counts the time of this process alone, on all its threads. Needs a display.
#include "VoxData/ImageLoader.h"
#include "VoxData/VoxData.h"
#include "app/Globals.h"
#include "app/ViewState.h"
#include "bench/Ratios.h"
#include "ui/MainUI.h"

#include <FL/Fl.H>
#include <FL/Fl_Input.H>
#include <FL/Fl_Scrollbar.H>
#include <FL/Fl_Value_Input.H>
#include <FL/Fl_Window.H>

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr int kSide = 256;
constexpr std::size_t kHeader = 256;  // a segmentation always has one
constexpr std::size_t kVoxels = std::size_t{kSide} * kSide * kSide;

/// Grey values that vary, and blocks of four labels that reach every slice.
void Write(const fs::path& path, int bytes) {
  std::vector<char> volume(kHeader + kVoxels * static_cast<std::size_t>(bytes));
  for (std::size_t i = 0; i < volume.size(); ++i) {
    volume[i] = static_cast<char>(bytes == 2 ? i * 7 / 3 : (i / 40 + i / 9000) % 5);
  }
  std::ofstream(path, std::ios::binary)
      .write(volume.data(), static_cast<std::streamsize>(volume.size()));
}

/// Loads a grey volume and a segmentation through the dialogs' own operations.
bool LoadStudy() {
  const fs::path grey = fs::temp_directory_path() / "tolvex-bench-grey.raw";
  const fs::path labels = fs::temp_directory_path() / "tolvex-bench-labels.raw";
  Write(grey, 2);
  Write(labels, 1);
  mainUI->greyFileNameInput->value(grey.c_str());
  for (Fl_Value_Input* size :
       {mainUI->greyXdimInput, mainUI->greyYdimInput, mainUI->greyZdimInput}) {
    size->value(kSide);
  }
  mainUI->greyBytesInput->value(2);
  mainUI->greyHeaderSizeInput->value(kHeader);
  mainUI->loader->StartGreyLoad();
  mainUI->segFileNameInput->value(labels.c_str());
  mainUI->loader->LoadSeg();
  fs::remove(grey);
  fs::remove(labels);
  return mainUI->imageCount == 1;
}

void Step(int axis) {
  Fl_Scrollbar* slider = mainUI->cursorSlider[axis];
  for (int slice = 0; slice < kSide; ++slice) {
    slider->Fl_Valuator::value(slice);
    slider->do_callback();
    Fl::flush();
  }
}

void StepThroughSlices(benchmark::State& state) {
  const auto axis = static_cast<int>(state.range(0));
  Step(axis);  // the first pictures wait for OpenGL to make its programs
  const double before = bench::CpuSeconds();
  for (auto _ : state) { Step(axis); }
  const double steps = static_cast<double>(kSide) * static_cast<double>(state.iterations());
  state.counters["steps_per_second"] = benchmark::Counter(steps, benchmark::Counter::kIsRate);
  state.counters["steps_per_core_second"] = steps / (bench::CpuSeconds() - before);
}
BENCHMARK(StepThroughSlices)
    ->ArgName("axis")
    ->DenseRange(0, 2)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  viewState = new ViewState;
  referenceState = new ViewState;
  mainUI = new MainUI;
  mainUI->ShowAll();
  mainUI->mainWindow->wait_for_expose();
  if (!LoadStudy()) {
    std::cerr << "The volume of the benchmark did not load." << std::endl;
    return EXIT_FAILURE;
  }
  benchmark::RunSpecifiedBenchmarks();
  return EXIT_SUCCESS;
}
