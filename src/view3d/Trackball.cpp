#include "view3d/Trackball.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr float kDegreesPerChord = 90.0F;
constexpr double kLargestZoom = std::numeric_limits<float>::max();

void SetIdentity(float* matrix) {
  for (int i = 0; i < 16; ++i) { matrix[i] = i % 5 == 0 ? 1.0F : 0.0F; }
}

/// The matrix of a rotation by `degrees` about an axis, column by column, as OpenGL defines it.
void SetRotation(float degrees, const float* axis, float* matrix) {
  SetIdentity(matrix);
  const double length =
      std::sqrt(static_cast<double>(axis[0]) * axis[0] + static_cast<double>(axis[1]) * axis[1] +
                static_cast<double>(axis[2]) * axis[2]);
  if (length < 1e-12) { return; }  // no axis, no turn
  const double x = axis[0] / length;
  const double y = axis[1] / length;
  const double z = axis[2] / length;
  const double c = std::cos(degrees * kPi / 180.0);
  const double s = std::sin(degrees * kPi / 180.0);
  const double t = 1.0 - c;
  const double rows[3][3] = {{x * x * t + c, x * y * t - z * s, x * z * t + y * s},
                             {y * x * t + z * s, y * y * t + c, y * z * t - x * s},
                             {z * x * t - y * s, z * y * t + x * s, z * z * t + c}};
  for (int row = 0; row < 3; ++row) {
    for (int column = 0; column < 3; ++column) {
      matrix[4 * column + row] = static_cast<float>(rows[row][column]);
    }
  }
}

/// `first` times `second`, written over `second`.
void MultiplyInto(const float* first, float* second) {
  float product[16];
  for (int column = 0; column < 4; ++column) {
    for (int row = 0; row < 4; ++row) {
      float sum = 0.0F;
      for (int k = 0; k < 4; ++k) { sum += first[4 * k + row] * second[4 * column + k]; }
      product[4 * column + row] = sum;
    }
  }
  std::copy(product, product + 16, second);
}

}  // namespace

void ProjectToSphere(int x, int y, int w, int h, float* point) {
  const double px = (2.0 * x - w) / std::max(w, 1);
  const auto py = static_cast<float>((h - 2.0 * y) / std::max(h, 1));
  const double flat = px * px + static_cast<double>(py) * py;
  const double d = std::min(std::sqrt(flat), 1.0);
  const double pz = std::cos(d * kPi / 2.0);
  const double scale = 1.0 / std::sqrt(pz * pz + flat);
  point[0] = static_cast<float>(px * scale);
  point[1] = static_cast<float>(py * scale);
  point[2] = static_cast<float>(pz * scale);
}

void Trackball::Reset() {
  angle = 0.0F;
  SetIdentity(rotation);
  zoom = 1.0F;
  zoomBase = 1.0F;
  for (int i = 0; i < 2; ++i) {
    pan[i] = 0.0F;
    panBase[i] = 0.0F;
  }
}

void Trackball::StartRotate(int x, int y, int w, int h) {
  active = 1;
  ProjectToSphere(x, y, w, h, lastPoint);
}

void Trackball::Rotate(int x, int y, int w, int h) {
  if (active == 0) { return; }
  float p[3];
  ProjectToSphere(x, y, w, h, p);
  const float* q = lastPoint;
  const float dx = p[0] - q[0];
  const float dy = p[1] - q[1];
  const float dz = p[2] - q[2];
  angle = kDegreesPerChord * std::sqrt(dx * dx + dy * dy + dz * dz);
  axis[0] = q[1] * p[2] - q[2] * p[1];
  axis[1] = q[2] * p[0] - q[0] * p[2];
  axis[2] = q[0] * p[1] - q[1] * p[0];
  std::copy(p, p + 3, lastPoint);
  // The step goes in front of what was turned before: turns are about the axes of the screen.
  float step[16];
  SetRotation(angle, axis, step);
  MultiplyInto(step, rotation);
}

void Trackball::EndRotate() {
  active = 0;
  angle = 0.0F;
}

void Trackball::StartPan(int x, int y) {
  active = 1;
  lastPoint[0] = static_cast<float>(x);
  lastPoint[1] = static_cast<float>(y);
}

void Trackball::Pan(int x, int y, int w, int h, float viewWidth, float viewHeight) {
  if (active == 0) { return; }
  pan[0] = (static_cast<float>(x) - lastPoint[0]) * viewWidth / static_cast<float>(std::max(w, 1)) +
           panBase[0];
  pan[1] = panBase[1] -
           (static_cast<float>(y) - lastPoint[1]) * viewHeight / static_cast<float>(std::max(h, 1));
}

void Trackball::EndPan() {
  active = 0;
  panBase[0] = pan[0];
  panBase[1] = pan[1];
}

void Trackball::StartZoom(int y) {
  active = 1;
  lastPoint[0] = static_cast<float>(y);
}

float Trackball::Zoom(int y) {
  if (active != 0) {
    const double power = std::pow(1.01, -(static_cast<double>(y) - lastPoint[0]));
    zoom = static_cast<float>(std::clamp(power * zoomBase, 0.0, kLargestZoom));
  }
  return zoom;
}

void Trackball::EndZoom() {
  active = 0;
  zoomBase = zoom;
}
