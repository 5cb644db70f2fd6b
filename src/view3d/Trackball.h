// Turns mouse drags into a rotation, a translation and a zoom factor.
#pragma once

#include <cstdint>

/// Maps a window position to a point on the unit sphere that fills the window.
void ProjectToSphere(int x, int y, int w, int h, float* point);

class Trackball {
public:
  std::uint8_t active = 0;
  float angle = 0.0F;  ///< degrees of the last rotation step
  float axis[3] = {0.0F, 0.0F, 0.0F};
  float lastPoint[3] = {0.0F, 0.0F, 0.0F};
  float rotation[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};  ///< column by column
  float zoom = 1.0F;
  float zoomBase = 1.0F;
  float pan[2] = {0.0F, 0.0F};  ///< world units
  float panBase[2] = {0.0F, 0.0F};

  void Reset();
  void StartRotate(int x, int y, int w, int h);
  void Rotate(int x, int y, int w, int h);
  void EndRotate();
  void StartPan(int x, int y);
  void Pan(int x, int y, int w, int h, float viewWidth, float viewHeight);
  void EndPan();
  void StartZoom(int y);
  float Zoom(int y);
  void EndZoom();
};
