#include "view3d/Window3D.h"

#include "VoxData/VoxData.h"
#include "app/Globals.h"
#include "app/ViewState.h"
#include "ui/Fields.h"
#include "ui/MainUI.h"
#include "view3d/Window3DWork.h"

#include <FL/Fl_Check_Button.H>
#include <FL/Fl_Slider.H>
#include <FL/Fl_Value_Input.H>
#include <FL/gl.h>
#include <GL/glu.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <limits>

namespace {

// OpenGL takes the box as 32-bit floats: thinner or larger ones have no size in them.
constexpr double kThinnestBox = 1e-6;
constexpr double kLargestBox = 1e30;

}  // namespace

Window3D::Window3D(int x, int y, int w, int h, const char* label)
    : Fl_Gl_Window(x, y, w, h, label), workState(std::make_unique<Work>()) {
  colorBytes = static_cast<std::uint8_t*>(std::malloc(768));
  if (colorBytes == nullptr) {
    std::fprintf(stderr, "Memory Allocation failure in:\n"
                         "   Window3D::Window3D(int,int,int,int, const char *)\n"
                         "Exiting.\n");
    std::exit(-1);
  }
  savedLabels =
      static_cast<std::int32_t(*)[280][280]>(std::calloc(kMaxMeasuredSide, sizeof(*savedLabels)));
}

Window3D::~Window3D() {
  std::free(colorBytes);
  std::free(savedLabels);
  if (workArraysReady != 0) { FreeVolumes(); }
}

void Window3D::hide() {
  needsGlInit = 1;  // the state goes with the context
  Fl_Gl_Window::hide();
}

void Window3D::Register(int number, MainUI* owner) {
  viewNumber = number;
  ui = owner;
}

void Window3D::SetProjection() {
  if (!CanDraw()) { return; }
  make_current();
  double low[3];
  double high[3];
  bool open = true;
  for (int axis = 0; axis < 3; ++axis) {
    const double extent = 2.0 * viewExtent[axis];
    low[axis] = viewCentre[axis] - extent;
    high[axis] = viewCentre[axis] + extent;
    const double farthest = std::max(std::fabs(low[axis]), std::fabs(high[axis]));
    open = open && extent > farthest * kThinnestBox && farthest < kLargestBox;
  }
  glMatrixMode(GL_PROJECTION);
  if (!open) { return; }  // zoomed beyond what a matrix can hold: the picture stays as it is
  glLoadIdentity();
  glOrtho(low[0], high[0], low[1], high[1], low[2], high[2]);
}

void Window3D::SetupView() {
  trackball.Reset();
  std::fill(std::begin(halfExtent), std::end(halfExtent), 0.0F);
  const int shown = ui != nullptr ? Truncated(ui->imageSlider) : -1;
  if (ui != nullptr && ui->imageCount > 0 && shown >= 0 && shown < kMaxImages &&
      ui->images[shown] != nullptr) {
    ui->images[shown]->GetDims(volumeSize);
    ui->images[shown]->GetSpacing(voxelScale);
  }
  for (int axis = 0; axis < 3; ++axis) {
    const double size = static_cast<double>(volumeSize[axis]) * voxelScale[axis];
    viewCentre[axis] = static_cast<float>(size * 0.5);
    halfExtent[axis] = static_cast<float>(size * 0.7 + 1.0);
    viewExtent[axis] = halfExtent[axis];
  }
  // The depth counts voxels and takes no voxel size.
  const int longest = std::max({volumeSize[0], volumeSize[1], volumeSize[2]});
  viewExtent[2] = static_cast<float>(2.0 * longest + 1.0);
  for (int axis = 0; axis < 3; ++axis) {
    // ON PURPOSE: the scale enters twice, so that with a voxel size other than 1 the first
    // rotation, which goes about the cursor, is what brings the centre to the volume.
    rotationCentre[axis] = viewCentre[axis] * voxelScale[axis];
  }
  SetProjection();
  if (CanDraw()) {
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
  }
  viewReady = 1;
}

void Window3D::SetupGl() {
  SetupView();
  if (!CanDraw()) { return; }
  const float ambient[4] = {0.01F, 0.01F, 0.01F, 1.0F};
  const float diffuse[4] = {0.65F, 0.65F, 0.65F, 1.0F};
  const float specular[4] = {0.3F, 0.3F, 0.3F, 1.0F};
  const float light[4] = {0.0F, 0.0F, 1.0F, 0.0F};  // along the view axis
  glClearColor(0.0F, 0.0F, 0.0F, 0.0F);
  for (const GLenum state :
       {GL_DEPTH_TEST, GL_NORMALIZE, GL_COLOR_MATERIAL, GL_LIGHT0, GL_LIGHTING}) {
    glEnable(state);
  }
  glMaterialfv(GL_FRONT_AND_BACK, GL_AMBIENT, ambient);
  glMaterialfv(GL_FRONT_AND_BACK, GL_DIFFUSE, diffuse);
  glMaterialfv(GL_FRONT_AND_BACK, GL_SPECULAR, specular);
  glMaterialf(GL_FRONT_AND_BACK, GL_SHININESS, 10.0F);
  glLightfv(GL_LIGHT0, GL_POSITION, light);
  glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, 1);
}

void Window3D::ApplyView() {
  glTranslatef(trackball.pan[0], trackball.pan[1], 0.0F);
  glTranslatef(rotationCentre[0], rotationCentre[1], rotationCentre[2]);
  glMultMatrixf(trackball.rotation);
  glTranslatef(-rotationCentre[0], -rotationCentre[1], -rotationCentre[2]);
}

void Window3D::draw() {
  if (valid() == 0) { glViewport(0, 0, w(), SphereHeight()); }
  if (needsGlInit != 0) {
    SetupGl();
    needsGlInit = 0;
  }
  glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  if (displayedSurfaces > 0 && ui != nullptr) {
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    ApplyView();
    DrawCrosshairs();
    glScalef(voxelScale[0], voxelScale[1], voxelScale[2]);
    surfaces[0].DrawSurfaces(1.0F, static_cast<float>(ui->surfaceOpacity[0] * 0.01),
                             static_cast<float>(ui->surfaceOpacity[1] * 0.01));
    glPopMatrix();
  }
  glFlush();
  CheckGlError();
}

void Window3D::CheckGlError() {
  for (GLenum error = glGetError(); error != GL_NO_ERROR; error = glGetError()) {
    std::cerr << "GL-Error: " << gluErrorString(error) << std::endl;
  }
}

void Window3D::DrawCrosshairs() {
  if (ui->displayCrosshairsCheck->value() == 0) { return; }
  const auto cursor = viewState->GetCursor();
  glDisable(GL_LIGHTING);
  glColor3f(0.0F, 0.0F, 1.0F);
  glLineWidth(2.0F);
  glEnable(GL_LINE_STIPPLE);
  glLineStipple(2, 0xAAAA);
  glBegin(GL_LINES);
  for (int axis = 0; axis < 3; ++axis) {
    float first[3];
    for (int j = 0; j < 3; ++j) {
      first[j] = static_cast<float>(cursor[static_cast<std::size_t>(j)]) * voxelScale[j];
    }
    float second[3] = {first[0], first[1], first[2]};
    first[axis] = viewCentre[axis] - halfExtent[axis];
    second[axis] = viewCentre[axis] + halfExtent[axis];
    glVertex3fv(first);
    glVertex3fv(second);
  }
  glEnd();
  glDisable(GL_LINE_STIPPLE);
  glEnable(GL_LIGHTING);
}

void Window3D::ClearAllSurfaces() {
  viewReady = 0;
  surfaces[0].ClearSurfaces();
  surfaces[1].ClearSurfaces();
}

void Window3D::ExtractWithOptions(VoxData* volume, int slot) {
  smoothingOn = ui->smoothingCheck->value() == 1 ? 1 : 0;
  decimationOn = ui->decimationCheck->value() == 1 ? 1 : 0;
  const auto number = [](const Fl_Value_Input* input) {
    constexpr double kLargest = std::numeric_limits<float>::max();
    return static_cast<float>(std::clamp(input->value(), -kLargest, kLargest));
  };
  surfaces[0].ExtractSurface(volume, slot, smoothingOn != 0, decimationOn != 0,
                             number(ui->targetReductionInput), number(ui->aspectRatioInput),
                             number(ui->initialErrorInput), number(ui->errorIncrementInput),
                             Truncated(ui->maxIterationsInput), Truncated(ui->nbIterationsInput),
                             number(ui->relaxationFactorInput), number(ui->featureAngleInput));
}

void Window3D::BuildSurface(VoxData* volume, int slot) {
  displayedSurfaces = 2;
  ExtractWithOptions(volume, slot);
}
