// Surfaces: the time of an extraction with the share of each filter, and redraws per second.
//
// An extraction counts the time of this process alone: it is the same on a busy machine.
//
// The redraws need a display: scripts/with_display build/bench/bench_surface. Their counter "ratio"
// says how many times as fast a redraw is as the same surface strip by strip in immediate mode; aim:
// 15 redraws a second. On a busy machine "redraws_per_core_second" counts the time of this process
// alone, on all its threads.
#include "VoxData/VoxData.h"
#include "app/Globals.h"
#include "app/ViewState.h"
#include "bench/Ratios.h"
#include "tests/view3d/PlainSurface.h"
#include "ui/MainUI.h"
#include "view3d/Decimate.h"
#include "view3d/Window3D.h"

#include <FL/Fl.H>
#include <FL/Fl_Window.H>
#include <FL/gl.h>
#include <vtkMarchingCubes.h>
#include <vtkNew.h>
#include <vtkPolyData.h>
#include <vtkSmoothPolyDataFilter.h>
#include <vtkStripper.h>
#include <vtkStructuredPoints.h>

#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdlib>
#include <memory>
#include <sstream>

namespace {

constexpr int kSideOf200000 = 182;  // its sphere has some 200,000 triangles

/// A sphere that fills most of a cube of `side` voxels, in three colours.
void PaintSphere(VoxData& volume, int side) {
  volume.SetupWork(side, side, side, 1, 0, 0, 0, 0, 0);
  const auto count = static_cast<std::size_t>(side) * side * side;
  volume.NewWorkScalars(count);
  const double centre = side / 2.0;
  const double radius = 0.4 * side;
  for (int x = 0; x < side; ++x) {
    for (int y = 0; y < side; ++y) {
      for (int z = 0; z < side; ++z) {
        const double dx = x - centre;
        const double dy = y - centre;
        const double dz = z - centre;
        const bool inside = dx * dx + dy * dy + dz * dz < radius * radius;
        volume.SetWorkVoxel(x, y, z, static_cast<std::uint8_t>(inside ? 64 + 64 * (x % 3) : 0));
      }
    }
  }
  volume.AttachWorkScalars();
}

double Seconds() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

/// Keeps the words of the extractions off the table of results.
class Quiet {
public:
  Quiet() : before(std::cerr.rdbuf(words.rdbuf())) {}
  Quiet(const Quiet&) = delete;
  Quiet& operator=(const Quiet&) = delete;
  ~Quiet() { std::cerr.rdbuf(before); }

private:
  std::ostringstream words;
  std::streambuf* before;
};

/// The default options, as a whole; the shares are those of the filters run one by one.
void Extraction(benchmark::State& state) {
  VoxData volume;
  PaintSphere(volume, static_cast<int>(state.range(0)));
  const bool decimation = state.range(1) != 0;
  Quiet quiet;
  double share[4] = {0.0, 0.0, 0.0, 0.0};
  double whole = 0.0;
  double triangles = 0.0;
  for (auto _ : state) {
    double times[5] = {bench::CpuSeconds(), 0.0, 0.0, 0.0, 0.0};
    vtkNew<vtkMarchingCubes> cubes;
    cubes->SetInputData(volume.GetImage());
    cubes->ComputeNormalsOn();
    cubes->SetValue(0, 128.0);
    cubes->Update();
    times[1] = bench::CpuSeconds();
    vtkSmartPointer<vtkPolyData> mesh = cubes->GetOutput();
    triangles = static_cast<double>(mesh->GetNumberOfCells());
    if (decimation) { mesh = Decimate().Run(mesh); }
    times[2] = bench::CpuSeconds();
    vtkNew<vtkSmoothPolyDataFilter> smoother;
    smoother->SetInputData(mesh);
    smoother->SetNumberOfIterations(20);
    smoother->SetRelaxationFactor(0.1);
    smoother->FeatureEdgeSmoothingOff();
    smoother->Update();
    times[3] = bench::CpuSeconds();
    vtkNew<vtkStripper> stripper;
    stripper->SetInputData(smoother->GetOutput());
    stripper->Update();
    times[4] = bench::CpuSeconds();
    for (int i = 0; i < 4; ++i) { share[i] += times[i + 1] - times[i]; }

    const double begin = bench::CpuSeconds();
    SurfaceSet surfaces;
    surfaces.ExtractSurface(&volume, 1, true, decimation, 0.5F, 20.0F, 0.0005F, 0.001F, 30, 20,
                            0.1F, 0.0F);
    const double time = bench::CpuSeconds() - begin;
    whole += time;
    state.SetIterationTime(time);
  }
  state.counters["cubes"] = share[0] / whole;
  state.counters["decimation"] = share[1] / whole;
  state.counters["smoothing"] = share[2] / whole;
  state.counters["strips"] = share[3] / whole;
  state.counters["triangles"] = triangles;
}
BENCHMARK(Extraction)
    ->ArgNames({"side", "decimation"})
    ->ArgsProduct({{128, 256}, {0, 1}})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

/// The real view in the real main window, turned a little before each redraw.
void Redraw(benchmark::State& state) {
  if (std::getenv("DISPLAY") == nullptr) {
    state.SkipWithError("no display");
    return;
  }
  Quiet quiet;
  viewState = new ViewState;
  referenceState = new ViewState;
  mainUI = new MainUI;
  Fl::visual(FL_DOUBLE | FL_INDEX);
  mainUI->ShowAll();
  mainUI->mainWindow->wait_for_expose();
  for (int i = 0; i < 5; ++i) { Fl::check(); }
  Window3D& view = *mainUI->window3D;
  PaintSphere(*mainUI->displayVolume1, kSideOf200000);
  for (std::int32_t& size : view.volumeSize) { size = kSideOf200000; }
  view.SetupView();
  view.displayedSurfaces = 1;
  view.ExtractWithOptions(mainUI->displayVolume1, 1);

  int x = 100;
  const auto turn = [&] {
    view.trackball.StartRotate(x, 100, view.w(), view.h());
    x = 100 + (x + 7) % 40;
    view.trackball.Rotate(x, 110, view.w(), view.h());
  };
  double plainTime = 0.0;
  double ownTime = 0.0;
  double ownCoreTime = 0.0;
  for (auto _ : state) {
    turn();
    double begin = Seconds();
    view.make_current();
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    glMultMatrixf(view.trackball.rotation);
    plain::DrawSurfaces(view.surfaces[0], 1.0F, 1.0F, 1.0F);
    glPopMatrix();
    glFinish();
    view.swap_buffers();
    plainTime += Seconds() - begin;

    turn();
    begin = Seconds();
    const double coreBegin = bench::CpuSeconds();
    view.redraw();
    Fl::flush();
    view.make_current();
    glFinish();
    const double time = Seconds() - begin;
    ownTime += time;
    ownCoreTime += bench::CpuSeconds() - coreBegin;
    state.SetIterationTime(time);
  }
  state.counters["redraws_per_second"] =
      benchmark::Counter(1.0, benchmark::Counter::kIsIterationInvariantRate);
  state.counters["redraws_per_core_second"] = static_cast<double>(state.iterations()) / ownCoreTime;
  state.counters["ratio"] = plainTime / ownTime;
  mainUI->mainWindow->hide();
}
BENCHMARK(Redraw)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
