// Segimage: overlap of Image 1 and Image 2 on a slice.
#include "VoxData/VoxData.h"
#include "ui/Fields.h"
#include "ui/MainUI.h"
#include "ui/StudyChecks.h"
#include "views/Segimage.h"
#include "views/SegimageMeasures.h"
#include "views/slicemeasures/SliceOverlap.h"

#include <FL/Fl_Output.H>
#include <FL/Fl_Round_Button.H>

#include <cstdio>
#include <cstring>
#include <utility>

std::int32_t lastDirection = 2;

namespace {

using measure::SliceDivisor;

/// The ratio's text. Where no divisor is left, the text of the intersection stands in its place.
void WriteRatio(const MainUI& ui, const measure::SliceOverlap& overlap) {
  const std::pair<Fl_Round_Button*, SliceDivisor> tests[] = {
      {ui.overlapUnionAverageRadio, SliceDivisor::Average},
      {ui.overlapUnionIntersectRadio, SliceDivisor::Union},
      {ui.overlapUnionARadio, SliceDivisor::FirstImage}};
  char text[40];
  std::snprintf(text, sizeof text, "%d", overlap.common);
  for (const auto& [radio, divisor] : tests) {
    if (radio->value() == 0) { continue; }
    if (const auto ratio = measure::OverlapRatio(overlap, divisor)) {
      std::snprintf(text, sizeof text, "%.6f", *ratio);
    }
  }
  SetField(ui.overlapRatioOutput, text);
}

}  // namespace

void Segimage::PrepareDirection(int wanted) {
  // ON PURPOSE: the measures on contours and distances and the loads turn the canvas without a
  // word here, so that an overlay can count within the sizes of another direction.
  if (lastDirection == wanted && slice::FitsPictures(*this)) { return; }
  Register(wanted, mainUI);
  InitSlice();
  lastDirection = wanted;
}

bool Segimage::OverlayResult2D() {
  const RunningCommand running(*mainUI);
  if (running.Refused() || !slice::CanShowSlices(*mainUI)) { return false; }
  const ChosenPair pair = TakeChosenPair(*mainUI);
  if (!pair.ok) { return false; }
  overlayVisible = 0;
  greyHidden = 0;

  measure::SliceOverlap overlap;
  for (const int wanted : slice::DirectionsOn(*mainUI)) {
    PrepareDirection(wanted);
    measure::CountOverlap(slice::SliceOf(*mainUI, *pair.image1, wanted),
                          slice::SliceOf(*mainUI, *pair.image2, wanted), mainUI->currentLabel,
                          slice::SizeOf(*this), overlap, result);
  }

  SetField(mainUI->union2DOutput, "%d", overlap.Union());
  SetField(mainUI->intersect2DOutput, "%d", overlap.common);
  WriteRatio(*mainUI, overlap);

  extraTextureOn = 0;
  CreateGreySliceTexture();
  overlayInDrawCurrent = 1;
  DrawCurrentSlice();
  redraw();
  mainUI->RedrawViews();
  return true;
}

void Segimage::Overlay2D() {
  const RunningCommand running(*mainUI);
  const ChosenPair pair = FindChosenPair(*mainUI);
  // What is wrong the overlap before it has said.
  if (running.Refused() || !pair.ok || !slice::FitsPictures(*this)) { return; }
  overlayVisible = 1;
  std::memset(result, 0, sizeof result);
  for (const int wanted : slice::DirectionsOn(*mainUI)) {
    PrepareDirection(wanted);
    measure::PaintMask(slice::SliceOf(*mainUI, *pair.image2, wanted), mainUI->currentLabel,
                       slice::SizeOf(*this), result);
  }
  CreateGreySliceTexture();
  CreateSegSliceTexture();
  DrawCurrentSlice();
  mainUI->RedrawViews();
}
