#include "view3d/CommandSupport.h"

#include "ui/ColorLegend.h"
#include "ui/Fields.h"
#include "ui/MainUI.h"
#include "ui/Modal.h"
#include "view3d/Window3D.h"

#include <FL/Fl.H>
#include <FL/Fl_Box.H>
#include <FL/Fl_Slider.H>

void StartRun(MainUI& ui, int steps, const char* message) {
  ui.StartProgress(steps);
  if (message != nullptr) { ui.ShowProgressMessage(message); }
}

bool NewScalars(const MainUI& ui, VoxData& volume) {
  volume.NewWorkScalars(ui.images[0]->Labels().Count());
  if (volume.workScalars != nullptr) { return true; }
  Refuse("There is no memory for the picture of this measure");
  return false;
}

void ShowLegend(MainUI& ui, int mode, const LegendTexts& texts) {
  ui.colorLegend->SetMode(mode);
  ui.legendTextMaxOutside->label(texts.maxOutside);
  ui.legendTextOutside->label(texts.outside);
  ui.legendTextZero->label(texts.zero);
  ui.legendTextInside->label(texts.inside);
  ui.legendTextMaxInside->label(texts.maxInside);
  // A changed text is drawn over the old one: the column repaints its ground first.
  ui.mainWindow->redraw();
  ui.colorLegend->redraw();
}

void TakeWorkingSizes(Window3D& view, const VoxData& image) {
  view.dimX = image.GetDimX();
  view.dimY = image.GetDimY();
  view.dimZ = image.GetDimZ();
}

VoxData& SliderImage(const MainUI& ui) { return *ui.images[Truncated(ui.imageSlider)]; }

void ShowMessageNow(MainUI& ui, const char* text) {
  ui.ShowProgressMessage(text);
  Fl::check();
}
