// Window2D: textures and drawing.
#include "app/Globals.h"
#include "app/ViewState.h"
#include "views/SliceView.h"
#include "views/SliceViewSteps.h"
#include "views/Window2D.h"

#include <FL/gl.h>

void Window2D::ForgetTextures() {
  if (CanDraw()) {
    make_current();
    glDeleteTextures(1, &greyTexture);
    glDeleteTextures(1, &segTexture);
  }
  greyTexture = 0;
  segTexture = 0;
}

void Window2D::hide() {
  // The context goes with the window, and the texture names with it.
  ForgetTextures();
  greyStale = initialized != 0;
  segStale = initialized != 0;
  Fl_Gl_Window::hide();
}

void Window2D::UploadTextures() {
  if (!CanDraw()) { return; }  // draw() comes back to it
  make_current();
  const int width = sliceWidth + paddingX;
  const int height = sliceHeight + paddingY;
  if (greyStale) { slice::BuildGreyTexture(greyTexture, greyTextureData, width, height); }
  if (segStale) { slice::BuildColourTexture(segTexture, segTextureData, width, height); }
  greyStale = false;
  segStale = false;
}

void Window2D::Paint() {
  const auto width = static_cast<float>(sliceWidth + paddingX);
  const auto height = static_cast<float>(sliceHeight + paddingY);
  slice::BeginPicture(*this);

  glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_DECAL);
  glBindTexture(GL_TEXTURE_2D, greyTexture);
  slice::DrawQuad(width, height);

  glColor4f(1.0F, 1.0F, 1.0F, 1.0F);
  glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
  glBindTexture(GL_TEXTURE_2D, segTexture);
  glEnable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  slice::DrawQuad(width, height);
  glDisable(GL_BLEND);
  glDisable(GL_TEXTURE_2D);

  const auto cursor = viewState->GetCursor();
  glColor3f(0.0F, 0.0F, 1.0F);
  slice::DrawCursor(cursor.data(), {axisX, axisY}, sliceWidth, sliceHeight);
  glPopMatrix();
  glEnable(GL_LIGHTING);
  glFlush();
}

void Window2D::draw() {
  if (initialized == 0) {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    return;
  }
  GetCurrentSlice();
  UploadTextures();
  Paint();
}

void Window2D::DrawRefreshed() {
  if (initialized == 0) { return; }
  RefreshSlice();
  if (!CanDraw()) { return; }
  make_current();
  UploadTextures();
  Paint();
  swap_buffers();
}
