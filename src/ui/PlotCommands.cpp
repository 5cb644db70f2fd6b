// MainUI: the two curves of the plot window.
#include "VoxData/VoxData.h"
#include "ui/Fields.h"
#include "ui/MainUI.h"
#include "ui/Modal.h"
#include "ui/Plot.h"
#include "ui/StudyChecks.h"
#include "view3d/volumemeasures/VoxelsPerSlice.h"

#include <FL/Fl_Check_Button.H>
#include <FL/Fl_Choice.H>
#include <FL/Fl_Slider.H>
#include <FL/Fl_Window.H>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

constexpr float kFirstTop = 30.0F;  // the top of the plot until the counts are known

/// What the plot counts: slices from `first` on, in two images.
struct Curves {
  int first = 0;
  int counted = 0;  ///< slices that the top of the plot looks at
  int shown = 0;    ///< slices that the curves show; 0 or less for none
  int label1 = 0;
  int label2 = 0;
};

int LabelOf(const MainUI& ui, const Fl_Choice* choice) {
  const int entry = ChosenIndex(choice);
  return entry >= 0 && entry < kMaxLabels ? ui.labelList[entry] : 0;
}

/// The axes whose boxes are set: 0 for x, 1 for y, 2 for z.
std::vector<int> ChosenAxes(const MainUI& ui) {
  const Fl_Check_Button* checks[3] = {ui.plotXCheck, ui.plotYCheck, ui.plotZCheck};
  std::vector<int> axes;
  for (int axis = 0; axis < 3; ++axis) {
    if (checks[axis]->value() != 0) { axes.push_back(axis); }
  }
  return axes;
}

bool FitsPlot(int slices) {
  if (slices <= kMaxPlotSlices) { return true; }
  Refuse("A plot holds at most 300 slices");
  return false;
}

/// The labels of an image as far as the first image reaches: its sizes hold for every curve.
LabelVolume WithinFirst(const MainUI& ui, const VoxData& image) {
  LabelVolume labels = image.Labels();
  if (const VoxData* first = ImageAt(ui, 0)) {
    labels.dimX = std::min(labels.dimX, first->GetDimX());
    labels.dimY = std::min(labels.dimY, first->GetDimY());
    labels.dimZ = std::min(labels.dimZ, first->GetDimZ());
  }
  return labels;
}

/// Counts both curves along an axis and hands them to the plot. Returns the largest count.
int PlotAxis(const MainUI& ui, int axis, const Curves& curves) {
  const VoxData* image1 = ImageAt(ui, ChosenIndex(ui.plotImage1Choice));
  const VoxData* image2 = ImageAt(ui, ChosenIndex(ui.plotImage2Choice));
  if (image1 == nullptr || image2 == nullptr) { return 0; }
  float a[kMaxPlotSlices] = {};
  float b[kMaxPlotSlices] = {};
  measure::CountPerSlice(WithinFirst(ui, *image1), curves.label1, axis, curves.first,
                         curves.counted, a);
  measure::CountPerSlice(WithinFirst(ui, *image2), curves.label2, axis, curves.first,
                         curves.counted, b);
  ui.plot->SetSeries(a, b, curves.shown);
  return static_cast<int>(std::max(*std::max_element(std::begin(a), std::end(a)),
                                   *std::max_element(std::begin(b), std::end(b))));
}

void DrawWithTop(Plot& plot, int top) {
  plot.yMax = static_cast<float>(top);
  plot.DrawNow();
}

}  // namespace

void MainUI::UpdatePlot() {
  plotWindow->show();
  const RunningCommand running(*this);
  if (running.Refused()) { return; }
  const std::vector<int> axes = ChosenAxes(*this);
  const double end = plotSlice2Slider->value();
  Curves curves;
  curves.first = Truncated(plotSlice1Slider);
  // ON PURPOSE: the last slice in part counts for the top of the plot, but has no point.
  curves.counted = std::max(Truncated(std::ceil(end - curves.first)), 0);
  curves.shown = Truncated(end - curves.first);
  curves.label1 = LabelOf(*this, plotLabel1Choice);
  curves.label2 = LabelOf(*this, plotLabel2Choice);
  if (!axes.empty() && !FitsPlot(curves.counted)) { return; }
  plot->yMax = kFirstTop;
  int top = 0;
  for (const int axis : axes) { top = std::max(top, PlotAxis(*this, axis, curves)); }
  DrawWithTop(*plot, top);
}

void MainUI::PlotVoxelsPerSlice() {
  const RunningCommand running(*this);
  if (running.Refused()) { return; }
  const VoxData* first = ImageAt(*this, 0);
  int dims[3] = {0, 0, 0};
  if (first != nullptr) { first->GetDims(dims); }
  const std::vector<int> axes = ChosenAxes(*this);
  for (const int axis : axes) {
    if (!FitsPlot(dims[axis])) { return; }
  }
  plot->yMax = kFirstTop;
  int top = 0;
  for (const int axis : axes) {
    top = std::max(top,
                   PlotAxis(*this, axis, {0, dims[axis], dims[axis], currentLabel, currentLabel}));
  }
  DrawWithTop(*plot, top);
}

void MainUI::PlotWholeRange() { PlotVoxelsPerSlice(); }
