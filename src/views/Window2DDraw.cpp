// Window2D: drawing.
#include "app/Globals.h"
#include "app/ViewState.h"
#include "views/SliceView.h"
#include "views/SliceViewDraw.h"
#include "views/Window2D.h"

void Window2D::hide() {
  slice::ForgetTextures(*this);
  Fl_Gl_Window::hide();
}

void Window2D::Paint() {
  slice::PaintSlice(*this, true, true, [this] {
    const auto cursor = viewState->GetCursor();
    slice::DrawCursor(cursor.data(), slice::kBlue, {axisX, axisY}, sliceWidth, sliceHeight);
  });
}

void Window2D::draw() {
  if (initialized == 0) { return slice::PaintNothing(); }
  GetCurrentSlice();
  Paint();
}

void Window2D::DrawRefreshed() {
  if (initialized != 0) { RefreshSlice(); }
  slice::DrawAtOnce(*this, [this] { initialized == 0 ? slice::PaintNothing() : Paint(); });
}
