// A disc in the colour of the chosen label.
#pragma once

#include <FL/Fl_Gl_Window.H>

class ColorPreview : public Fl_Gl_Window {
public:
  unsigned char red = 0;
  unsigned char green = 0;
  unsigned char blue = 0;

  ColorPreview(int x, int y, int w, int h, const char* label = nullptr)
      : Fl_Gl_Window(x, y, w, h, label) {}
  void draw() override;

  /// Channels 0.0 to 1.0; redraws.
  void SetColor(float newRed, float newGreen, float newBlue);
};
