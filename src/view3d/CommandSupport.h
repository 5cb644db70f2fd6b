// What the commands of the volume measures share.
#pragma once

#include "VoxData/VoxData.h"
#include "base/Progress.h"

class MainUI;
class Window3D;

/// The five texts beside the legend, from the top down.
struct LegendTexts {
  const char* maxOutside;
  const char* outside;
  const char* zero;
  const char* inside;
  const char* maxInside;
};

/// Panel shown with `steps` steps and its first message.
void StartRun(MainUI& ui, int steps, const char* message);

/// New scalars for a work volume, sized as slot 0; false, with a message box, without memory.
bool NewScalars(const MainUI& ui, VoxData& volume);

/// Legend mode and texts; redraws the legend.
void ShowLegend(MainUI& ui, int mode, const LegendTexts& texts);

/// Sizes of the working arrays from an image.
void TakeWorkingSizes(Window3D& view, const VoxData& image);

/// The image that imageSlider selects; its slot has been checked before.
VoxData& SliderImage(const MainUI& ui);

/// Message, and one round of the toolkit's events so that it shows.
void ShowMessageNow(MainUI& ui, const char* text);
