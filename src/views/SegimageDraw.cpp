// Segimage: drawing.
#include "app/Globals.h"
#include "app/ViewState.h"
#include "views/Segimage.h"
#include "views/SliceView.h"
#include "views/SliceViewDraw.h"

void Segimage::hide() {
  slice::ForgetTextures(*this);
  Fl_Gl_Window::hide();
}

void Segimage::DrawCursors() const {
  const slice::Axes axes{axisX, axisY};
  const auto cursor = viewState->GetCursor();
  const bool plain = viewState->GetToolMode() == 0;
  if (plain) {
    const auto reference = referenceState->GetCursor();
    slice::DrawCursor(reference.data(), slice::kGreen, axes, sliceWidth, sliceHeight);
  }
  slice::DrawCursor(cursor.data(), plain ? slice::kPurple : slice::kBlue, axes, sliceWidth,
                    sliceHeight);
}

void Segimage::Paint(bool withGrey, bool withLabels) {
  slice::PaintSlice(*this, withGrey, withLabels, [this] { DrawCursors(); });
}

void Segimage::draw() {
  if (initialized == 0) { return slice::PaintNothing(); }
  Paint(greyHidden == 0, overlayVisible == 1);
}

void Segimage::DrawCurrentSlice() {
  GetCurrentSlice();
  slice::DrawAtOnce(*this, [this] { Paint(true, overlayInDrawCurrent == 1); });
}

void Segimage::DrawNow() {
  slice::DrawAtOnce(*this, [this] { draw(); });
}
