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

namespace {

constexpr float kFirstTop = 30.0F;  // the top of the plot until the counts are known

/// Slices of one axis and the labels that are counted in the two images.
struct Curves {
  int axis;
  int first;
  int count;
  int label1;
  int label2;
};

int LabelOf(const MainUI& ui, const Fl_Choice* choice) {
  const int entry = ChosenIndex(choice);
  return entry >= 0 && entry < kMaxLabels ? ui.labelList[entry] : 0;
}

/// Counts both curves, hands them to the plot and raises `top` to their largest count.
void Draw(const MainUI& ui, const Curves& curves, int& top) {
  const VoxData* image1 = ImageAt(ui, ChosenIndex(ui.plotImage1Choice));
  const VoxData* image2 = ImageAt(ui, ChosenIndex(ui.plotImage2Choice));
  if (image1 == nullptr || image2 == nullptr) { return; }
  if (curves.count > kMaxPlotSlices) {
    Refuse("A plot holds at most 300 slices");
    return;
  }
  float a[kMaxPlotSlices] = {};
  float b[kMaxPlotSlices] = {};
  const int count = std::max(curves.count, 0);
  measure::CountPerSlice(image1->Labels(), curves.label1, curves.axis, curves.first, count, a);
  measure::CountPerSlice(image2->Labels(), curves.label2, curves.axis, curves.first, count, b);
  for (int i = 0; i < count; ++i) {
    top = std::max({top, static_cast<int>(a[i]), static_cast<int>(b[i])});
  }
  ui.plot->SetSeries(a, b, curves.count);
}

}  // namespace

void MainUI::UpdatePlot() {
  plotWindow->show();
  plot->yMax = kFirstTop;
  int top = 0;
  const int first = Truncated(plotSlice1Slider);
  const int end = Truncated(plotSlice2Slider);
  const Fl_Check_Button* checks[3] = {plotXCheck, plotYCheck, plotZCheck};
  for (int axis = 0; axis < 3; ++axis) {
    if (checks[axis]->value() == 0) { continue; }
    Draw(*this,
         {axis, first, end - first, LabelOf(*this, plotLabel1Choice),
          LabelOf(*this, plotLabel2Choice)},
         top);
  }
  plot->yMax = static_cast<float>(top);
  plot->DrawNow();
}

void MainUI::PlotVoxelsPerSlice() {
  plot->yMax = kFirstTop;
  int top = 0;
  const VoxData* image = ImageAt(*this, 0);
  int dims[3] = {0, 0, 0};
  if (image != nullptr) { image->GetDims(dims); }
  const Fl_Check_Button* checks[3] = {plotXCheck, plotYCheck, plotZCheck};
  for (int axis = 0; axis < 3; ++axis) {
    if (checks[axis]->value() == 0) { continue; }
    Draw(*this, {axis, 0, dims[axis], currentLabel, currentLabel}, top);
  }
  plot->yMax = static_cast<float>(top);
  plot->DrawNow();
}

void MainUI::PlotWholeRange() { PlotVoxelsPerSlice(); }
