// Drawing of a slice view, once for Window2D and Segimage. For their own .cpp files only.
#pragma once

#include "views/SliceView.h"

#include <FL/gl.h>
#include <GL/glu.h>

namespace slice {

/// Whether the view has a context: before it is first shown, to ask for one crashes the toolkit.
template <class View>
bool CanDraw(View& view) {
  return view.shown() != 0 && view.visible_r() != 0;
}

/// Builds the textures whose pictures have changed; without a context they wait for the next draw.
template <class View>
void UploadTextures(View& view) {
  if (!CanDraw(view)) { return; }
  view.make_current();
  const int width = view.sliceWidth + view.paddingX;
  const int height = view.sliceHeight + view.paddingY;
  if (view.greyStale) {
    BuildGreyTexture(view.greyTexture, view.greyTextureData, width, height);
    view.greyStale = false;
  }
  if (view.segStale) {
    BuildColourTexture(view.segTexture, view.segTextureData, width, height);
    view.segStale = false;
  }
}

/// Gives the texture names up. All views share their names, so they are deleted while there is a
/// context; without one they have gone with it.
template <class View>
void ForgetTextures(View& view) {
  if (CanDraw(view)) {
    view.make_current();
    glDeleteTextures(1, &view.greyTexture);
    glDeleteTextures(1, &view.segTexture);
  }
  view.greyTexture = 0;
  view.segTexture = 0;
  view.greyStale = view.initialized != 0;
  view.segStale = view.initialized != 0;
}

/// What is drawn before a view has slices.
inline void PaintNothing() { glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT); }

/// Projection and model view of a slice; stores the halves of the visible rectangle.
template <class View>
void BeginPicture(View& view) {
  view.viewHalfWidth = HalfSide(view.w(), view.zoom);
  view.viewHalfHeight = HalfSide(view.h(), view.zoom);
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

/// The slice, its labels over it, and the lines that `drawCursors` adds.
template <class View, class Cursors>
void PaintSlice(View& view, bool withGrey, bool withLabels, Cursors drawCursors) {
  const int width = view.sliceWidth + view.paddingX;
  const int height = view.sliceHeight + view.paddingY;
  UploadTextures(view);
  BeginPicture(view);
  if (withGrey) { PaintGrey(view.greyTexture, width, height); }
  if (withLabels) { BlendLabels(view.segTexture, width, height); }
  glDisable(GL_TEXTURE_2D);
  drawCursors();
  glPopMatrix();
  glEnable(GL_LIGHTING);
  glFlush();
}

/// Draws outside the toolkit's own redraw: takes the context, and brings the picture to the screen.
template <class View, class Paint>
void DrawAtOnce(View& view, Paint paint) {
  if (!CanDraw(view)) { return; }
  view.make_current();
  paint();
  view.swap_buffers();
}

}  // namespace slice
