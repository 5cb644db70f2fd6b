// Definitions of SliceView.h's templates, for the two classes that use them.
#pragma once

#include "views/SliceView.h"

#include <FL/Fl.H>
#include <FL/gl.h>
#include <GL/glu.h>

namespace slice {

template <class View>
void BeginPicture(View& view) {
  view.viewHalfWidth = static_cast<float>(view.w()) / (2.0F * view.zoom);
  view.viewHalfHeight = static_cast<float>(view.h()) / (2.0F * view.zoom);
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  gluOrtho2D(view.viewCentreX - view.viewHalfWidth, view.viewCentreX + view.viewHalfWidth,
             view.viewCentreY - view.viewHalfHeight, view.viewCentreY + view.viewHalfHeight);
  glViewport(0, 0, view.w(), view.h());
  glMatrixMode(GL_MODELVIEW);
  glPushMatrix();
  glLoadIdentity();
  glScalef(view.voxelSizeX, view.voxelSizeY, 1.0F);
  glClearColor(0.0F, 0.0F, 0.0F, 1.0F);
  glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  glDisable(GL_LIGHTING);
  glEnable(GL_TEXTURE_2D);
}

template <class View>
int Drag(View& view) {
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
  return 1;
}

template <class View>
int Navigate(View& view, int event) {
  if (event == FL_DRAG) { return Drag(view); }
  if (event != FL_PUSH) { return 0; }
  view.mouseButton = Fl::event_button();
  if (view.mouseButton == FL_LEFT_MOUSE) { view.lastMouseX = Fl::event_x(); }
  if (view.mouseButton == FL_LEFT_MOUSE || view.mouseButton == FL_RIGHT_MOUSE) {
    view.lastMouseY = Fl::event_y();
  }
  return 1;
}

template <class View>
void MoveCursorToMouse(const View& view) {
  const auto x = static_cast<float>(Fl::event_x());
  const auto y = static_cast<float>(Fl::event_y());
  const float px = ((view.viewCentreX - view.viewHalfWidth) + x / view.zoom) / view.voxelSizeX;
  const float py = ((view.viewHalfHeight + view.viewCentreY) - y / view.zoom) / view.voxelSizeY;
  PlaceCursor({view.axisX, view.axisY}, PixelAt(px, view.sliceWidth),
              PixelAt(py, view.sliceHeight));
}

}  // namespace slice
