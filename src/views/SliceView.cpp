#include "views/SliceView.h"

#include "app/Globals.h"
#include "app/ViewState.h"
#include "ui/Fields.h"
#include "ui/MainUI.h"

#include <FL/Fl.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Choice.H>
#include <FL/Fl_Slider.H>
#include <FL/gl.h>
#include <GL/glu.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <iostream>
#include <iterator>

namespace slice {

namespace {

VoxData* Slot(const MainUI& ui, int index) {
  return index >= 0 && index < kMaxImages ? ui.images[index] : nullptr;
}

void BeginTexture(std::uint32_t& name) {
  if (name != 0) { glDeleteTextures(1, &name); }
  glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
  glGenTextures(1, &name);
  glBindTexture(GL_TEXTURE_2D, name);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR);
}

constexpr char kToolKeys[] = {'n', 'p', 'c'};

/// The key of the event if it chooses a tool, else one that is held down: under another alphabet
/// the same keys bear other letters. 0 for none.
char ToolKey() {
  for (const char key : kToolKeys) {
    if (Fl::event_key() == key || Fl::event_key() == std::toupper(key)) { return key; }
  }
  if (Fl::first_window() == nullptr) { return 0; }  // no display to ask
  const auto* held = std::find_if(std::begin(kToolKeys), std::end(kToolKeys),
                                  [](char key) { return Fl::event_key(key) != 0; });
  return held != std::end(kToolKeys) ? *held : char{0};
}

/// One textured rectangle of width by height pixels at the origin.
void DrawQuad(float width, float height) {
  glBegin(GL_QUADS);
  glTexCoord2f(0.0F, 0.0F);
  glVertex3f(0.0F, 0.0F, 0.0F);
  glTexCoord2f(1.0F, 0.0F);
  glVertex3f(width, 0.0F, 0.0F);
  glTexCoord2f(1.0F, 1.0F);
  glVertex3f(width, height, 0.0F);
  glTexCoord2f(0.0F, 1.0F);
  glVertex3f(0.0F, height, 0.0F);
  glEnd();
}

}  // namespace

VoxData* ShownImage(const MainUI& ui) {
  return ui.imageCount > 0 ? Slot(ui, Truncated(ui.imageSlider)) : nullptr;
}

VoxData* FirstImage(const MainUI& ui) {
  return ui.imageCount > 0 ? Slot(ui, ChosenIndex(ui.image1Choice)) : nullptr;
}

void EndForOrder(const char* name, int direction, const char* words) {
  std::cerr << name << ' ' << direction << words << std::endl;
  std::exit(-1);
}

void DemandPadding(const char* name, char axis, const char* side, int padding, int size) {
  // The padding rule cannot break it: the next power of two is less than twice the side.
  if (size < kSmallestSide || padding < size) { return; }
  std::cerr << name << "::InitSlice Error: padding_" << axis << " should not be >= than slice_"
            << side << " - padding_" << axis << ": " << padding << " slice_" << side << ": " << size
            << std::endl;
  std::exit(-1);
}

void ReportNoMemory(int width, int height) {
  std::cerr << "A slice of " << width << " by " << height
            << " pixels does not fit memory and is not shown." << std::endl;
}

int ToolMode() { return viewState->GetToolMode(); }

int CursorSlice(int direction) {
  return direction < 0 || direction > 2 ? -1 : viewState->cursor[direction];
}

void PlaceCursor(MainUI& ui, Axes axes, SlicePixel pixel, int event) {
  auto cursor = viewState->GetCursor();
  cursor[static_cast<std::size_t>(axes.x)] = pixel.i;
  cursor[static_cast<std::size_t>(axes.y)] = pixel.j;
  viewState->SetCursor(cursor[0], cursor[1], cursor[2]);
  if (event == FL_PUSH) { viewState->SetLiveUpdate(0); }
  if (event == FL_RELEASE) { viewState->SetLiveUpdate(1); }
  ui.SyncCursorSliders();
  ui.RedrawViews();
}

void BuildGreyTexture(std::uint32_t& name, const std::uint16_t* texels, int width, int height) {
  BeginTexture(name);
  gluBuild2DMipmaps(GL_TEXTURE_2D, GL_RGB, width, height, GL_LUMINANCE, GL_UNSIGNED_SHORT, texels);
}

void BuildColourTexture(std::uint32_t& name, const std::uint8_t* texels, int width, int height) {
  BeginTexture(name);
  gluBuild2DMipmaps(GL_TEXTURE_2D, GL_RGBA, width, height, GL_RGBA, GL_UNSIGNED_BYTE, texels);
}

void PaintGrey(std::uint32_t texture, int width, int height) {
  glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_DECAL);
  glBindTexture(GL_TEXTURE_2D, texture);
  DrawQuad(static_cast<float>(width), static_cast<float>(height));
}

void BlendLabels(std::uint32_t texture, int width, int height) {
  glColor4f(1.0F, 1.0F, 1.0F, 1.0F);
  glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
  glBindTexture(GL_TEXTURE_2D, texture);
  glEnable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  DrawQuad(static_cast<float>(width), static_cast<float>(height));
  glDisable(GL_BLEND);
}

void DrawCursor(const int* cursor, CursorColour colour, Axes axes, int width, int height) {
  const float x = static_cast<float>(cursor[axes.x]) + 0.5F;
  const float y = static_cast<float>(cursor[axes.y]) + 0.5F;
  glColor3f(colour.red, colour.green, colour.blue);
  glLineWidth(1.0F);
  glEnable(GL_LINE_STIPPLE);
  glLineStipple(2, 0xAAAA);
  glBegin(GL_LINES);
  glVertex2f(0.0F, y);
  glVertex2f(static_cast<float>(width), y);
  glVertex2f(x, 0.0F);
  glVertex2f(x, static_cast<float>(height));
  glEnd();
  glDisable(GL_LINE_STIPPLE);
}

bool ChooseToolByKey(MainUI& ui) {
  const char key = ToolKey();
  if (key == 0) { return false; }
  ui.moveToolButton->value(key == 'n' ? 1 : 0);
  ui.crosshairToolButton->value(key == 'c' ? 1 : 0);
  ui.moveToolButton->redraw();
  ui.crosshairToolButton->redraw();
  viewState->SetToolMode(key == 'n' ? 1 : key == 'c' ? 3 : 0);
  return true;
}

}  // namespace slice
