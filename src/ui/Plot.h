// Two curves, the voxels of a label on every slice of two images, with a read-out.
#pragma once

#include <FL/Fl_Window.H>

class Plot : public Fl_Window {
public:
  char title[80] = {};
  int count = 0;            ///< points of each curve
  float* xs = nullptr;      ///< x of each point
  float* spare = nullptr;   ///< allocated with the others and never filled
  float* curve1 = nullptr;  ///< y of each point, first curve
  float* curve2 = nullptr;  ///< y of each point, second curve
  unsigned char plotRed = 255;
  unsigned char plotGreen = 0;
  unsigned char plotBlue = 0;
  int style = 1;
  float xOffset = 0.0F;  ///< from data to pixels, set by draw
  float xScale = 1.0F;
  float yOffset = 0.0F;
  float yScale = 1.0F;
  float xMin = 0.0F;
  float xMax = 1.0F;
  float yMin = 0.0F;
  float yMax = 1.0F;
  int selectedSlice = -1;  ///< point to read out; outside 0 to count - 1 means none
  void (*selectCallback)(int) = nullptr;

  Plot(int x, int y, int w, int h, const char* label = nullptr) : Fl_Window(x, y, w, h, label) {}
  ~Plot() override;
  void draw() override;
  int handle(int event) override;

  /// Replaces both curves by copies of `count` values; x counts from 0.
  void SetSeries(const float* first, const float* second, int newCount);
  void DrawNow();  ///< draws at once; nothing while not shown

private:
  void FreeSeries();
  int PixelX(float value) const;
  int PixelY(float value) const;
  void DrawAxes() const;
  void DrawCurve(const float* curve) const;
  void DrawReadOut() const;
};
