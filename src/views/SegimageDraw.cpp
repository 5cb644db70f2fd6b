// Segimage: textures and drawing.
#include "app/Globals.h"
#include "app/ViewState.h"
#include "views/Segimage.h"
#include "views/SliceView.h"
#include "views/SliceViewSteps.h"

#include <FL/gl.h>

void Segimage::ForgetTextures() {
  if (CanDraw()) {
    make_current();
    glDeleteTextures(1, &greyTexture);
    glDeleteTextures(1, &segTexture);
  }
  greyTexture = 0;
  segTexture = 0;
}

void Segimage::hide() {
  // The context goes with the window, and the texture names with it.
  ForgetTextures();
  greyStale = initialized != 0;
  segStale = initialized != 0;
  Fl_Gl_Window::hide();
}

void Segimage::UploadTextures() {
  if (!CanDraw()) { return; }  // draw() comes back to it
  make_current();
  const int width = sliceWidth + paddingX;
  const int height = sliceHeight + paddingY;
  if (greyStale) { slice::BuildGreyTexture(greyTexture, greyTextureData, width, height); }
  if (segStale) { slice::BuildColourTexture(segTexture, segTextureData, width, height); }
  greyStale = false;
  segStale = false;
}

void Segimage::Paint(bool withGrey, bool withOverlay) {
  const auto width = static_cast<float>(sliceWidth + paddingX);
  const auto height = static_cast<float>(sliceHeight + paddingY);
  slice::BeginPicture(*this);
  if (withGrey) {
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_DECAL);
    glBindTexture(GL_TEXTURE_2D, greyTexture);
    slice::DrawQuad(width, height);
  }
  glColor4f(1.0F, 1.0F, 1.0F, 1.0F);
  glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
  glBindTexture(GL_TEXTURE_2D, segTexture);
  glEnable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  if (withOverlay) { slice::DrawQuad(width, height); }
  glDisable(GL_BLEND);
  glDisable(GL_TEXTURE_2D);

  const slice::Axes axes{axisX, axisY};
  const auto cursor = viewState->GetCursor();
  if (viewState->GetToolMode() == 0) {
    const auto reference = referenceState->GetCursor();
    glColor3f(0.0F, 1.0F, 0.0F);
    slice::DrawCursor(reference.data(), axes, sliceWidth, sliceHeight);
    glColor3f(0.5F, 0.0F, 0.5F);
  } else {
    glColor3f(0.0F, 0.0F, 1.0F);
  }
  slice::DrawCursor(cursor.data(), axes, sliceWidth, sliceHeight);
  glPopMatrix();
  glEnable(GL_LIGHTING);
  glFlush();
}

void Segimage::draw() {
  if (initialized == 0) {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    return;
  }
  UploadTextures();
  Paint(greyHidden == 0, overlayVisible == 1);
}

void Segimage::DrawCurrentSlice() {
  GetCurrentSlice();
  if (!CanDraw()) { return; }
  make_current();
  UploadTextures();
  Paint(true, overlayInDrawCurrent == 1);
  swap_buffers();
}

void Segimage::DrawNow() {
  if (!CanDraw()) { return; }
  make_current();
  draw();
  swap_buffers();
}
