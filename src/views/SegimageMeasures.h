// What the commands of the slice measures share.
#pragma once

#include "VoxData/VoxData.h"
#include "base/LabelSlice.h"
#include "ui/Fields.h"
#include "ui/MainUI.h"
#include "ui/StudyChecks.h"

#include <FL/Fl_Round_Button.H>
#include <FL/Fl_Scrollbar.H>

#include <vector>

namespace slice {

/// The directions whose buttons are on, in the order XY, YZ, XZ.
inline std::vector<int> DirectionsOn(const MainUI& ui) {
  std::vector<int> directions;
  if (ui.directionXYButton->value() != 0) { directions.push_back(kSliceXY); }
  if (ui.directionYZButton->value() != 0) { directions.push_back(kSliceYZ); }
  if (ui.directionXZButton->value() != 0) { directions.push_back(kSliceXZ); }
  return directions;
}

/// The value of the slice slider of an axis.
inline int SliderSlice(const MainUI& ui, int axis) {
  return Truncated(static_cast<const Fl_Valuator*>(ui.cursorSlider[axis]));
}

/// The slice of `image` that the slider of the fixed axis shows.
inline LabelSlice SliceOf(const MainUI& ui, const VoxData& image, int direction) {
  return {image.Labels(), direction, SliderSlice(ui, direction)};
}

/// Whether the slices of all directions that are on fit the canvas; says so where they do not.
inline bool CanShowSlices(const MainUI& ui) {
  for (const int direction : DirectionsOn(ui)) {
    if (!CanShowSlice(ui, direction)) { return false; }
  }
  return true;
}

/// Whether Image 1 and Image 2 can be compared on the slices that are on; says nothing.
inline bool IsComparable(const MainUI& ui) {
  const VoxData* image1 = ImageAt(ui, ChosenIndex(ui.image1Choice));
  const VoxData* image2 = ImageAt(ui, ChosenIndex(ui.image2Choice));
  if (image1 == nullptr || image2 == nullptr) { return false; }
  if (!image1->Labels().SameSize(image2->Labels())) { return false; }
  for (const int direction : DirectionsOn(ui)) {
    if (!FitsCanvas(ui, direction)) { return false; }
  }
  return true;
}

}  // namespace slice
