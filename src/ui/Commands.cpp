#include "ui/Commands.h"

#include "VoxData/VoxData.h"
#include "app/Globals.h"
#include "app/ViewState.h"
#include "ui/ColorLegend.h"
#include "ui/ColorPreview.h"
#include "ui/Fields.h"
#include "ui/Modal.h"
#include "ui/Plot.h"
#include "ui/Put.h"
#include "view3d/Window3D.h"
#include "views/Segimage.h"
#include "views/Window2D.h"

#include <FL/Fl.H>
#include <FL/Fl_Choice.H>
#include <FL/Fl_Roller.H>
#include <FL/Fl_Round_Button.H>
#include <FL/Fl_Scrollbar.H>
#include <FL/Fl_Slider.H>

namespace {

int ValueOf(Fl_Widget* widget) {
  return Truncated(static_cast<const Fl_Valuator*>(static_cast<Fl_Slider*>(widget)));
}

void ChooseTool(Fl_Widget* widget, int mode) {
  MainUI& ui = OwnerOf(widget);
  viewState->SetToolMode(mode);
  ui.crosshairToolButton->value(mode == 3 ? 1 : 0);
  ui.moveToolButton->value(mode == 1 ? 1 : 0);
}

}  // namespace

void ShowHelp(MainUI& ui, const char* text) {
  ui.helpOutput->value(text);
  ui.helpWindow->show();
}

void ShowPlot(MainUI& ui) {
  ui.plotWindow->show();
  ui.plot->show();
  ui.UpdatePlot();
}

void OnMoveTool(Fl_Widget* widget, void* /*data*/) { ChooseTool(widget, 1); }
void OnCrosshairTool(Fl_Widget* widget, void* /*data*/) { ChooseTool(widget, 3); }

void OnContrast(Fl_Widget* widget, void* /*data*/) {
  viewState->SetContrast(ValueOf(widget));
  OwnerOf(widget).RedrawViews();
}

void OnBrightness(Fl_Widget* widget, void* /*data*/) {
  viewState->SetBrightness(ValueOf(widget));
  OwnerOf(widget).RedrawViews();
}

void OnLabelOpacity(Fl_Widget* widget, void* /*data*/) {
  viewState->SetLabelOpacity(ValueOf(widget));
  OwnerOf(widget).RedrawViews();
}

void OnColorLabel(Fl_Widget* widget, void* /*data*/) {
  MainUI& ui = OwnerOf(widget);
  const int entry = ChosenIndex(ui.colorLabelChoice);
  if (entry < 0 || entry >= kMaxLabels) { return; }
  ui.currentLabel = ui.labelList[entry];
  if (ui.imageCount < 1) { return; }
  const auto colour = ui.images[0]->GetLabelColour(ui.currentLabel);
  ui.colorPreview->SetColor(colour[0], colour[1], colour[2]);
}

void OnSurface2Opacity(Fl_Widget* widget, void* /*data*/) {
  MainUI& ui = OwnerOf(widget);
  ui.surfaceOpacity[0] = static_cast<float>(ui.surface2OpacityRoller->value());
  ui.window3D->redraw();
}

void OnSurface3Opacity(Fl_Widget* widget, void* /*data*/) {
  MainUI& ui = OwnerOf(widget);
  ui.surfaceOpacity[1] = static_cast<float>(ui.surface3OpacityRoller->value());
  ui.window3D->redraw();
}

void OnColorLegend(Fl_Widget* widget, void* /*data*/) { widget->redraw(); }

void OnCursorSlider(Fl_Widget* widget, void* /*data*/) {
  MainUI& ui = OwnerOf(widget);
  for (int axis = 0; axis < 3; ++axis) {
    if (ui.cursorSlider[axis] != widget) { continue; }
    auto cursor = viewState->GetCursor();
    cursor[static_cast<std::size_t>(axis)] = ValueOf(widget);
    viewState->SetCursor(cursor[0], cursor[1], cursor[2]);
    ui.UpdateSliceText(axis);
  }
  ui.RedrawViews();
}

void OnImageSlider(Fl_Widget* widget, void* /*data*/) {
  MainUI& ui = OwnerOf(widget);
  for (Window2D* view : {ui.yzView, ui.xzView, ui.xyView}) { view->DrawRefreshed(); }
  if (ui.mainWindow->shown() != 0) { ui.window3D->show(); }  // not before its window
  ui.RedrawViews();
  ui.currentImageOutput->value(EntryText(ui.image1Choice, ValueOf(widget)));
}

void OnResetView(Fl_Widget* widget, void* /*data*/) {
  MainUI& ui = OwnerOf(widget);
  if (ui.imageCount < 1) {
    Refuse("You must load an image");
    return;
  }
  Window2D* view = ui.xyView;
  if (widget == ui.yzResetButton) { view = ui.yzView; }
  if (widget == ui.xzResetButton) { view = ui.xzView; }
  view->ResetView();
  view->redraw();
}

void OnDirection(Fl_Widget* widget, void* /*data*/) {
  MainUI& ui = OwnerOf(widget);
  for (Fl_Round_Button* button :
       {ui.directionXYButton, ui.directionYZButton, ui.directionXZButton}) {
    button->value(button == widget ? 1 : 0);
  }
}

void OnOverlayOpacity(Fl_Widget* widget, void* /*data*/) {
  MainUI& ui = OwnerOf(widget);
  if (ui.imageCount < 2) {
    Refuse("You must load at least 2 segmented images");
    return;
  }
  viewState->SetLabelOpacity(ValueOf(widget));
  if (ui.segimage->OverlayResult2D()) { ui.segimage->Overlay2D(); }
}
