// Mouse and keys of a slice view, once for Window2D and Segimage. For their own .cpp files only.
#pragma once

#include "views/SliceView.h"
#include "views/SliceViewSteps.h"

#include <FL/Fl.H>

namespace slice {

template <class View>
SlicePixel PixelUnderMouse(const View& view) {
  const slice::View visible{view.viewCentreX, view.viewCentreY, view.zoom, view.viewHalfWidth,
                            view.viewHalfHeight};
  return PixelUnder(visible, ExtentOf(view), Fl::event_x(), Fl::event_y());
}

/// The left button moves the slice with the mouse, the right one zooms.
template <class View>
void Drag(View& view) {
  const int x = Fl::event_x();
  const int y = Fl::event_y();
  if (view.mouseButton == FL_LEFT_MOUSE) {
    view.viewCentreX -= static_cast<float>(x - view.lastMouseX) / view.zoom;
    view.viewCentreY += static_cast<float>(y - view.lastMouseY) / view.zoom;
    view.lastMouseX = x;
    view.lastMouseY = y;
    view.redraw();
  } else if (view.mouseButton == FL_RIGHT_MOUSE) {
    view.zoom = ZoomAfterDrag(view.zoom, y - view.lastMouseY, ExtentOf(view), view.w());
    view.lastMouseY = y;
    view.redraw();
  }
}

template <class View>
int Navigate(View& view, int event) {
  if (event != FL_PUSH && event != FL_DRAG) { return 0; }
  if (event == FL_DRAG) {
    Drag(view);
    return 1;
  }
  view.mouseButton = Fl::event_button();
  if (view.mouseButton == FL_LEFT_MOUSE) { view.lastMouseX = Fl::event_x(); }
  if (view.mouseButton == FL_LEFT_MOUSE || view.mouseButton == FL_RIGHT_MOUSE) {
    view.lastMouseY = Fl::event_y();
  }
  return 1;
}

template <class View>
int MoveCrosshair(View& view, int event) {
  if (event != FL_PUSH && event != FL_DRAG && event != FL_RELEASE) { return 0; }
  PlaceCursor(*view.mainUI, {view.axisX, view.axisY}, PixelUnderMouse(view), event);
  const bool ofOneAxis = view.direction >= 0 && view.direction <= 2;
  if (event == FL_RELEASE && ofOneAxis) { currentDirection = view.direction; }
  return 1;
}

/// An event of a view, with the result that the toolkit gets.
template <class View>
int HandleEvent(View& view, int event) {
  if (view.initialized == 0) { return 1; }
  // The key goes on to the other widgets.
  if (event == FL_SHORTCUT && ChooseToolByKey(*view.mainUI)) { return 0; }
  switch (ToolMode()) {
  case 1: return Navigate(view, event);
  case 3: return MoveCrosshair(view, event);
  default: return 0;
  }
}

}  // namespace slice
