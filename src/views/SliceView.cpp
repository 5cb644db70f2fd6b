#include "views/SliceView.h"

#include "app/Globals.h"
#include "ui/Fields.h"
#include "ui/MainUI.h"
#include "views/Window2D.h"

#include <FL/Fl.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Choice.H>
#include <FL/Fl_Slider.H>
#include <FL/gl.h>
#include <GL/glu.h>

#include <cctype>
#include <cstdlib>
#include <iostream>

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

}  // namespace

VoxData* ShownImage(const MainUI& ui) {
  return ui.imageCount > 0 ? Slot(ui, Truncated(ui.imageSlider)) : nullptr;
}

VoxData* FirstImage(const MainUI& ui) {
  return ui.imageCount > 0 ? Slot(ui, ChosenIndex(ui.image1Choice)) : nullptr;
}

void EndForOrder(const char* name, int direction, const char* words) {
  std::cerr << name << direction << words << std::endl;
  std::exit(-1);
}

int CursorSlice(int direction) {
  return viewState->GetCursor()[static_cast<std::size_t>(direction)];
}

void PlaceCursor(Axes axes, int i, int j) {
  auto cursor = viewState->GetCursor();
  cursor[static_cast<std::size_t>(axes.x)] = i;
  cursor[static_cast<std::size_t>(axes.y)] = j;
  viewState->SetCursor(cursor[0], cursor[1], cursor[2]);
}

void BuildGreyTexture(std::uint32_t& name, const std::uint16_t* texels, int width, int height) {
  BeginTexture(name);
  gluBuild2DMipmaps(GL_TEXTURE_2D, GL_RGB, width, height, GL_LUMINANCE, GL_UNSIGNED_SHORT, texels);
}

void BuildColourTexture(std::uint32_t& name, const std::uint8_t* texels, int width, int height) {
  BeginTexture(name);
  gluBuild2DMipmaps(GL_TEXTURE_2D, GL_RGBA, width, height, GL_RGBA, GL_UNSIGNED_BYTE, texels);
}

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

void DrawCursor(const int* cursor, Axes axes, int width, int height) {
  const float x = static_cast<float>(cursor[axes.x]) + 0.5F;
  const float y = static_cast<float>(cursor[axes.y]) + 0.5F;
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
  const int key = Fl::event_key() < 128 ? std::tolower(Fl::event_key()) : 0;
  if (key != 'n' && key != 'p' && key != 'c') { return false; }
  ui.moveToolButton->value(key == 'n' ? 1 : 0);
  ui.crosshairToolButton->value(key == 'c' ? 1 : 0);
  ui.moveToolButton->redraw();
  ui.crosshairToolButton->redraw();
  viewState->SetToolMode(key == 'n' ? 1 : key == 'c' ? 3 : 0);
  return true;
}

void ShowMovedCursor(MainUI& ui) {
  ui.SyncCursorSliders();
  ui.RedrawViews();
}

}  // namespace slice
