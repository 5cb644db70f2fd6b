#include "ui/Plot.h"

#include "ui/Fields.h"

#include <FL/Fl.H>
#include <FL/fl_draw.H>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

constexpr float kMargin = 12.0F;
constexpr double kFarAway = 30000.0;  // pixels; beyond any widget, within what can be drawn

/// A pixel for every number: what lies far away, or is no number, stays outside the widget.
int Pixel(double value) {
  if (std::isnan(value)) { return static_cast<int>(-kFarAway); }
  return static_cast<int>(std::clamp(value, -kFarAway, kFarAway));
}

/// `distance` in pixels. A range of no length has an infinite scale: its one value, at distance 0,
/// lies at the start of the axis.
float Scaled(float distance, float scale) { return distance == 0.0F ? 0.0F : distance * scale; }

void DrawText(const char* text, int x, int y, int w) {
  fl_draw(text, x, y, w, 11, FL_ALIGN_LEFT, nullptr, 0);
}

int WidthOf(const char* text) { return static_cast<int>(fl_width(text)); }

}  // namespace

Plot::~Plot() { FreeSeries(); }

void Plot::FreeSeries() {
  for (float** array : {&xs, &spare, &curve1, &curve2}) {
    std::free(*array);
    *array = nullptr;
  }
}

void Plot::SetSeries(const float* first, const float* second, int newCount) {
  FreeSeries();
  count = newCount;
  if (count <= 0) {
    redraw();
    return;
  }
  const std::size_t bytes = static_cast<std::size_t>(count) * sizeof(float);
  for (float** array : {&xs, &spare, &curve1, &curve2}) {
    *array = static_cast<float*>(std::calloc(1, bytes));
    if (*array == nullptr) {
      FreeSeries();
      count = 0;
      return;
    }
  }
  std::memcpy(curve1, first, bytes);
  std::memcpy(curve2, second, bytes);
  for (int k = 0; k < count; ++k) { xs[k] = static_cast<float>(k); }
  xMin = 0.0F;
  xMax = static_cast<float>(count - 1.0);
  plotRed = 255;
  plotGreen = 0;
  plotBlue = 0;
  redraw();
}

int Plot::PixelX(float value) const { return Pixel(Scaled(value - xMin, xScale) + xOffset); }
int Plot::PixelY(float value) const { return Pixel(Scaled(value - yMin, yScale) + yOffset); }

void Plot::DrawAxes() const {
  fl_color(90, 90, 90);
  const int axisY = Pixel(yOffset - Scaled(yMin, yScale));
  fl_line(Pixel(xOffset), axisY, PixelX(xMax), axisY);
  const int axisX = Pixel(xOffset - Scaled(xMin, xScale));
  fl_line(axisX, Pixel(yOffset), axisX, PixelY(yMax));

  fl_font(FL_HELVETICA, 10);
  DrawText(title, w() - WidthOf(title) - 1, 1, WidthOf(title));
  fl_font(FL_HELVETICA, 9);
  char text[40];
  std::snprintf(text, sizeof text, "%1.3e", yMax);
  DrawText(text, 1, 1, WidthOf(text));
  std::snprintf(text, sizeof text, "%1.3e", yMin);
  DrawText(text, 1, h() - 12, WidthOf(text));
  DrawText(text, 1, h() - 12, WidthOf(text));
}

void Plot::DrawCurve(const float* curve) const {
  for (int k = 1; k < count; ++k) {
    fl_line(PixelX(xs[k - 1]), PixelY(curve[k - 1]), PixelX(xs[k]), PixelY(curve[k]));
  }
}

void Plot::DrawReadOut() const {
  const int p = selectedSlice;
  fl_color(FL_GREEN);
  const int x = PixelX(xs[p]);
  fl_line(x, Pixel(yOffset), x, PixelY(yMax));
  fl_font(FL_HELVETICA, 10);
  char texts[4][60];
  std::snprintf(texts[0], sizeof texts[0], "%1.3e ", curve2[p]);
  std::snprintf(texts[1], sizeof texts[1], "%1.3e", curve1[p]);
  std::snprintf(texts[2], sizeof texts[2], "Diff: %1.3e", std::fabs(curve1[p] - curve2[p]));
  std::snprintf(texts[3], sizeof texts[3], "Slice: %d", p);
  const Fl_Color colours[4] = {FL_BLUE, FL_RED, FL_GREEN, FL_GREEN};
  const int fifths[4] = {2, 3, 4, 1};
  for (int k = 0; k < 4; ++k) {
    const int width = WidthOf(texts[k]);
    fl_color(colours[k]);
    DrawText(texts[k], fifths[k] * w() / 5 - width / 2 - 1, 1, width);
  }
}

void Plot::draw() {
  fl_push_clip(0, 0, w(), h());
  fl_color(220, 220, 220);
  fl_rectf(0, 0, w(), h());
  xOffset = kMargin;
  xScale = static_cast<float>(w() - 1 - 24.0) / (xMax - xMin);
  yOffset = static_cast<float>(h()) - kMargin;
  yScale = static_cast<float>(25 - h()) / (yMax - yMin);
  DrawAxes();
  if (count > 0 && curve1 != nullptr) {
    fl_color(plotRed, plotGreen, plotBlue);
    DrawCurve(curve1);
    fl_color(plotGreen, plotBlue, plotRed);
    DrawCurve(curve2);
    if (selectedSlice >= 0 && selectedSlice < count) { DrawReadOut(); }
  }
  fl_pop_clip();
}

int Plot::handle(int event) {
  // The toolkit maps a child window through these two.
  if (event == FL_SHOW || event == FL_HIDE) { return Fl_Window::handle(event); }
  if (event != FL_PUSH || Fl::event_button() != FL_LEFT_MOUSE || count < 1) { return 0; }
  const int chosen = Truncated((Fl::event_x() - xOffset) / xScale);
  selectedSlice = std::clamp(chosen, 0, count - 1);
  if (selectCallback != nullptr) { selectCallback(selectedSlice); }
  DrawNow();
  return 1;
}

void Plot::DrawNow() {
  if (shown() == 0 || visible_r() == 0) { return; }
  make_current();
  draw();
}
