// The vertical colour scale beside the 3D view.
#pragma once

#include <FL/Fl_Window.H>

class ColorLegend : public Fl_Window {
public:
  float colors[256][3] = {};  ///< red, green, blue from 0.0 to 255.0
  int mode = 0;               ///< 0 the scale of the surfaces, 1 two colours, 2 three colours
  float index = 0.0F;

  ColorLegend(int x, int y, int w, int h, const char* label = nullptr)
      : Fl_Window(x, y, w, h, label) {}
  void draw() override;

  void SetMode(int newMode);  ///< the caller redraws
  void DrawNow();             ///< draws at once; nothing while not shown
};
