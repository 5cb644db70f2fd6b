#include "ui/ColorLegend.h"

#include "base/ColourValues.h"

#include <FL/fl_draw.H>
#include <FL/gl.h>

#include <algorithm>

namespace {

constexpr int kRows = 128;       // rows that are painted, one entry each
constexpr int kFirstEntry = 64;  // pure red at the top

/// Rises from 0 at 0 to 255 at 64 and falls back to 0 at 128; never below 0.
float Hump(float t) {
  const float value = 255.0F * (t * t * -0.000244140625F + t * 0.03125F);
  return std::max(value, 0.0F);
}

struct Band {
  int first, last;
  float red, green, blue;
};

constexpr Band kTwoColours[] = {{0, 127, 255, 0, 0}, {128, 255, 0, 255, 0}};
constexpr Band kThreeColours[] = {
    {0, 109, 255, 0, 0}, {110, 149, 0, 0, 255}, {150, 255, 0, 255, 0}};

template <std::size_t N>
void FillBands(const Band (&bands)[N], float (&colors)[256][3]) {
  for (const Band& band : bands) {
    for (int i = band.first; i <= band.last; ++i) {
      colors[i][0] = band.red;
      colors[i][1] = band.green;
      colors[i][2] = band.blue;
    }
  }
}

}  // namespace

void ColorLegend::SetMode(int newMode) {
  mode = newMode;
  glClearColor(0, 0, 0, 0);  // of whichever context is current; the legend has none
}

void ColorLegend::draw() {
  if (mode == 0) {
    for (index = 0.0F; index < 256.0F; ++index) {
      float* colour = colors[static_cast<int>(index)];
      colour[0] = Hump(index);
      colour[1] = Hump(index - 64.0F);
      colour[2] = Hump(index - 128.0F);
    }
  } else if (mode == 1) {
    FillBands(kTwoColours, colors);
  } else if (mode == 2) {
    FillBands(kThreeColours, colors);
  }
  // ON PURPOSE: a higher legend keeps a blank strip below the rows.
  for (int y = 0; y < kRows; ++y) {
    const float* colour = colors[kFirstEntry + y];
    fl_color(LowByte(colour[0]), LowByte(colour[1]), LowByte(colour[2]));
    fl_line(0, y, w(), y);
  }
}

void ColorLegend::DrawNow() {
  if (shown() == 0 || visible_r() == 0) { return; }
  make_current();
  draw();
}
