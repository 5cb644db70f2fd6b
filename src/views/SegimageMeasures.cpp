#include "views/SegimageMeasures.h"

#include "VoxData/VoxData.h"
#include "ui/Fields.h"
#include "ui/MainUI.h"
#include "ui/StudyChecks.h"
#include "views/Segimage.h"

#include <FL/Fl_Round_Button.H>
#include <FL/Fl_Scrollbar.H>

#include <algorithm>

namespace slice {

std::vector<int> DirectionsOn(const MainUI& ui) {
  std::vector<int> directions;
  if (ui.directionXYButton->value() != 0) { directions.push_back(kSliceXY); }
  if (ui.directionYZButton->value() != 0) { directions.push_back(kSliceYZ); }
  if (ui.directionXZButton->value() != 0) { directions.push_back(kSliceXZ); }
  return directions;
}

int SliderSlice(const MainUI& ui, int axis) {
  return Truncated(static_cast<const Fl_Valuator*>(ui.cursorSlider[axis]));
}

LabelSlice SliceOf(const MainUI& ui, const VoxData& image, int direction) {
  return {image.Labels(), direction, SliderSlice(ui, direction)};
}

bool CanShowSlices(const MainUI& ui) {
  const std::vector<int> directions = DirectionsOn(ui);
  return std::all_of(directions.begin(), directions.end(),
                     [&ui](int direction) { return CanShowSlice(ui, direction); });
}

bool FitsPictures(const Segimage& canvas) {
  return canvas.sliceWidth <= kMaxSliceSide && canvas.sliceHeight <= kMaxSliceSide;
}

measure::SliceSize SizeOf(const Segimage& canvas) {
  return {std::min(canvas.sliceWidth, kMaxSliceSide), std::min(canvas.sliceHeight, kMaxSliceSide)};
}

void ShowGreyResult(Segimage& canvas) {
  canvas.extraTextureOn = 0;
  canvas.overlayInDrawCurrent = 0;
  canvas.CreateGreySliceTexture();
  canvas.redraw();
}

}  // namespace slice
