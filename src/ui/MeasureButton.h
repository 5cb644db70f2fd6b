// A measure button is a row: all there is to say about it, down to its help text.
#pragma once

#include "ui/Put.h"

struct MeasureButton {
  Fl_Button* MainUI::*member;  ///< null: no code reaches the button again
  Area area;
  const char* label;
  int imagesNeeded;  ///< below this many images the command is refused
  void (*run)(MainUI&);
  const char* help;
  bool onEveryRelease = false;  ///< the callback comes on every release
};

/// Builds the button of a row. The right mouse button shows its help, any other refuses or runs.
void PutMeasureButton(MainUI& ui, const MeasureButton& row);

namespace buttons {

extern const MeasureButton kCreateAverage;
extern const MeasureButton kConfusionMatrix;
extern const MeasureButton kCompareData;
extern const MeasureButton kVisualisation;

}  // namespace buttons
