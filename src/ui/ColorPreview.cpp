#include "ui/ColorPreview.h"

#include "base/ColourValues.h"

#include <FL/gl.h>
#include <GL/glu.h>

#include <cmath>

namespace {

constexpr double kPi = 3.14159265358979323846;

}  // namespace

void ColorPreview::SetColor(float newRed, float newGreen, float newBlue) {
  red = LowByte(newRed * 255.0);
  green = LowByte(newGreen * 255.0);
  blue = LowByte(newBlue * 255.0);
  redraw();
}

void ColorPreview::draw() {
  // ON PURPOSE: the projection goes onto the model view matrix; nothing else uses this context.
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();
  glClearColor(0.75F, 0.75F, 0.75F, 0.0F);
  gluOrtho2D(0, w(), 0, h());
  glViewport(0, 0, w(), h());
  glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  glShadeModel(GL_FLAT);
  glColor3ub(red, green, blue);
  const int radius = w() / 2;
  const int middle = h() / 2;
  glBegin(GL_POLYGON);
  for (int degree = 0; degree <= 360; ++degree) {
    const double angle = degree * kPi / 180.0;
    glVertex2d(std::cos(angle) * radius + radius, std::sin(angle) * radius + middle);
  }
  glEnd();
  glFlush();
}
