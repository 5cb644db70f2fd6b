// Plot: two curves of voxels per slice.
#include "VoxData/VoxData.h"
#include "ui/Build.h"
#include "ui/Plot.h"
#include "ui/Put.h"

#include <FL/Fl_Check_Button.H>
#include <FL/Fl_Choice.H>
#include <FL/Fl_Slider.H>

namespace {

void OnPlot(Fl_Widget* widget, void* /*data*/) { OwnerOf(widget).PlotWholeRange(); }
void OnRange(Fl_Widget* widget, void* /*data*/) { OwnerOf(widget).UpdatePlot(); }

/// The chosen check button stays alone, and both sliders reach to the end of its axis.
void OnAxis(Fl_Widget* widget, void* /*data*/) {
  MainUI& ui = OwnerOf(widget);
  auto* chosen = static_cast<Fl_Check_Button*>(widget);
  chosen->redraw();
  if (chosen->value() != 0) {
    for (Fl_Check_Button* check : {ui.plotXCheck, ui.plotYCheck, ui.plotZCheck}) {
      if (check != chosen) { check->value(0); }
    }
  }
  if (ui.imageCount < 1) { return; }
  const VoxData& first = *ui.images[0];
  int size = first.GetDimZ();
  if (chosen == ui.plotXCheck) { size = first.GetDimX(); }
  if (chosen == ui.plotYCheck) { size = first.GetDimY(); }
  ui.plotSlice1Slider->maximum(size);
  ui.plotSlice2Slider->maximum(size);
  if (chosen == ui.plotYCheck) {
    // ON PURPOSE: only Y starts over with the whole range; the others keep the sliders' values.
    ui.plotSlice2Slider->value(size);
    ui.plotSlice1Slider->value(0);
  }
  ui.plotSlice1Slider->redraw();
  ui.plotSlice2Slider->redraw();
  ui.UpdatePlot();
  if (chosen == ui.plotZCheck) { ui.plotWindow->show(); }
}

Fl_Choice* PutChoice(Area area, const char* label, int labelColour) {
  auto* choice = Put<Fl_Choice>(area, label);
  choice->labeltype(FL_EMBOSSED_LABEL);
  choice->labelsize(10);
  choice->labelcolor(static_cast<Fl_Color>(labelColour));
  choice->textsize(10);
  choice->align(FL_ALIGN_TOP);
  return choice;
}

Fl_Check_Button* PutAxis(Area area, const char* label, int value) {
  auto* check = Put<Fl_Check_Button>(area, label);
  check->down_box(FL_DIAMOND_DOWN_BOX);
  check->value(value);
  check->callback(OnAxis);
  return check;
}

Fl_Slider* PutRange(Area area) {
  auto* slider = Put<Fl_Slider>(area);
  slider->type(FL_HORIZONTAL);
  slider->box(FL_ROUND_DOWN_BOX);
  slider->callback(OnRange);
  return slider;
}

}  // namespace

void BuildPlotWindow(MainUI& ui) {
  ui.plotWindow = BeginWindow(ui, 561, 320, "Plot");
  PutRaised({0, 0, 560, 320});
  ui.plot = Put<Plot>({135, 5, 420, 310}, "Image 1");
  ui.plot->box(FL_DOWN_BOX);
  ui.plot->end();
  PutFrame({5, 5, 130, 310});
  ui.plotImage2Choice = PutChoice({10, 65, 120, 25}, "Image 2", 208);
  ui.plotImage1Choice = PutChoice({10, 25, 120, 25}, "Image1", 208);
  PutRound({10, 180, 120, 25}, "Plot", OnPlot, nullptr, FL_NORMAL_SIZE);
  ui.plotXCheck = PutAxis({10, 210, 40, 25}, "X", 0);
  ui.plotZCheck = PutAxis({95, 210, 35, 25}, "Z", 1);
  ui.plotYCheck = PutAxis({55, 210, 35, 25}, "Y", 0);
  ui.plotSlice1Slider = PutRange({15, 240, 110, 15});
  ui.plotSlice2Slider = PutRange({15, 255, 110, 15});
  ui.plotLabel2Choice = PutChoice({10, 145, 120, 25}, "Color Label Img 2", 4);
  ui.plotLabel1Choice = PutChoice({10, 105, 120, 25}, "Color Label Img1", 4);
  PutRound({10, 280, 120, 25}, "Close", HideOwnWindow, nullptr, FL_NORMAL_SIZE);
  ui.plotWindow->end();
}
