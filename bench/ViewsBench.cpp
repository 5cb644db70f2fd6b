// Stepping a slice slider through 256 slices with all three views drawn at each step. Counter
// "steps_per_second"; aim: above 60 with software OpenGL. Needs a display.
#include "VoxData/ImageLoader.h"
#include "VoxData/VoxData.h"
#include "app/Globals.h"
#include "app/ViewState.h"
#include "ui/MainUI.h"

#include <FL/Fl.H>
#include <FL/Fl_Input.H>
#include <FL/Fl_Scrollbar.H>
#include <FL/Fl_Value_Input.H>
#include <FL/Fl_Window.H>

#include <benchmark/benchmark.h>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

namespace {

constexpr int kSide = 256;

void LoadVolume() {
  const std::string path = "/tmp/tolvex-bench-views.raw";
  std::vector<char> bytes(std::size_t{2} * kSide * kSide * kSide);
  for (std::size_t i = 0; i < bytes.size(); ++i) { bytes[i] = static_cast<char>(i * 7 / 3); }
  std::ofstream(path, std::ios::binary)
      .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  mainUI->greyFileNameInput->value(path.c_str());
  for (Fl_Value_Input* size :
       {mainUI->greyXdimInput, mainUI->greyYdimInput, mainUI->greyZdimInput}) {
    size->value(kSide);
  }
  mainUI->greyBytesInput->value(2);
  mainUI->loader->StartGreyLoad();
  mainUI->segFileNameInput->value(path.c_str());
  mainUI->loader->LoadSeg();
  std::remove(path.c_str());
}

void StepThroughSlices(benchmark::State& state) {
  const int axis = static_cast<int>(state.range(0));
  Fl_Scrollbar* slider = mainUI->cursorSlider[axis];
  for (auto _ : state) {
    for (int slice = 0; slice < kSide; ++slice) {
      slider->Fl_Valuator::value(slice);
      slider->do_callback();
      Fl::flush();
    }
  }
  state.counters["steps_per_second"] = benchmark::Counter(
      static_cast<double>(kSide * state.iterations()), benchmark::Counter::kIsRate);
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
  LoadVolume();
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
