// Window2D: mouse and keys.
#include "app/Globals.h"
#include "app/ViewState.h"
#include "ui/MainUI.h"
#include "view3d/Window3D.h"
#include "views/Segimage.h"
#include "views/SliceView.h"
#include "views/SliceViewSteps.h"
#include "views/Window2D.h"

#include <FL/Fl.H>

namespace {

int PlaceCrosshair(const Window2D& view, int event) {
  if (event != FL_PUSH && event != FL_RELEASE && event != FL_DRAG) { return 0; }
  MainUI& ui = *view.mainUI;
  slice::MoveCursorToMouse(view);
  // Between press and release only the lines move; the slices follow at the end.
  if (event == FL_PUSH) { viewState->SetLiveUpdate(0); }
  if (event == FL_RELEASE) { viewState->SetLiveUpdate(1); }
  slice::ShowMovedCursor(ui);
  if (event == FL_PUSH) {
    ui.segimage->redraw();
    ui.window3D->redraw();
  }
  if (event == FL_RELEASE && view.direction >= 0 && view.direction <= 2) {
    currentDirection = view.direction;
  }
  return 1;
}

}  // namespace

int Window2D::handle(int event) {
  // The toolkit maps a child window through these two.
  if (event == FL_SHOW || event == FL_HIDE) { Fl_Gl_Window::handle(event); }
  if (initialized == 0) { return 1; }
  if (event == FL_SHORTCUT && slice::ChooseToolByKey(*mainUI)) { return 0; }
  switch (viewState->GetToolMode()) {
  case 1: return slice::Navigate(*this, event);
  case 3: return PlaceCrosshair(*this, event);
  default: return 0;
  }
}
