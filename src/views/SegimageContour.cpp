// Segimage: complexity and interior contour.
#include "ui/Fields.h"
#include "ui/MainUI.h"
#include "views/Segimage.h"
#include "views/SegimageMeasures.h"
#include "views/slicemeasures/SliceContour.h"

#include <FL/Fl_Output.H>
#include <FL/Fl_Slider.H>

namespace {

// 4 times pi in the digits that the published ratios were made with.
constexpr double kFourPi = 12.56637061432;

const VoxData* ShownOrRefuse(const MainUI& ui) {
  const VoxData* shown = ImageAt(ui, Truncated(ui.imageSlider));
  return shown != nullptr && slice::CanShowSlices(ui) ? shown : nullptr;
}

}  // namespace

void Segimage::MeasureContour(int firstPixel, int shortOfEnd) {
  const measure::Pixel start = measure::FindStart(result, sliceWidth, sliceHeight);
  contourStep = 2;
  measure::NumberContour(
      start, result, sliceWidth, sliceHeight,
      {firstPixel, sliceWidth - shortOfEnd, firstPixel, sliceHeight - shortOfEnd}, mark);
  const measure::Pixel farthest = measure::FindFarthest(mark, sliceWidth, sliceHeight, start);
  contourX = farthest.i;
  contourY = farthest.j;
  perimeter = 0.0F;
  ContourWalkBack(contourX, contourY);
  measure::ShowNumbered(mark, sliceWidth, sliceHeight, result);
}

void Segimage::ShowContour() {
  extraTextureOn = 0;
  overlayInDrawCurrent = 0;
  CreateGreySliceTexture();
  redraw();
  mainUI->RedrawViews();
}

void Segimage::ContourWaveStep(int column, int row) {
  if (column == contourX && row == contourY) { return; }  // the start is left out of the wave
  perimeter += static_cast<float>(measure::WaveStep(column, row, result, mark));
}

void Segimage::ContourWalkBack(int column, int row) {
  perimeter = measure::WalkBack({column, row}, mark, result, perimeter);
}

void Segimage::Complexity() {
  const RunningCommand running(*mainUI);
  if (running.Refused()) { return; }
  greyHidden = 0;
  const VoxData* shown = ShownOrRefuse(*mainUI);
  if (shown == nullptr) { return; }
  int area = 0;
  for (const int wanted : slice::DirectionsOn(*mainUI)) {
    Register(wanted, mainUI);
    InitSlice();
    area += measure::FindContour(slice::SliceOf(*mainUI, *shown, wanted), mainUI->currentLabel,
                                 slice::SliderSlice(*mainUI, 0), sliceWidth, sliceHeight, result);
  }
  MeasureContour(1, 2);

  const double length = perimeter;
  SetField(mainUI->perimeterOutput, "%.4f", length);
  SetField(mainUI->areaOutput, "%d", area);
  SetField(mainUI->ratioOutput, "%.6f", length * length / (area * kFourPi));
  ShowContour();
}

void Segimage::InteriorContour() {
  const RunningCommand running(*mainUI);
  if (running.Refused()) { return; }
  greyHidden = 0;
  const VoxData* shown = ShownOrRefuse(*mainUI);
  if (shown == nullptr) { return; }
  const ChosenPair pair = TakeChosenPair(*mainUI);
  if (!pair.ok) { return; }
  int area = 0;
  for (const int wanted : slice::DirectionsOn(*mainUI)) {
    Register(wanted, mainUI);
    InitSlice();
    // ON PURPOSE: only direction XY compares the two images; the others measure the image on the
    // slider as "Complexity" does.
    area +=
        wanted == kSliceXY
            ? measure::FindContourOfFirst(slice::SliceOf(*mainUI, *pair.image1, wanted),
                                          slice::SliceOf(*mainUI, *pair.image2, wanted),
                                          mainUI->currentLabel, sliceWidth, sliceHeight, mark,
                                          result)
            : measure::FindContour(slice::SliceOf(*mainUI, *shown, wanted), mainUI->currentLabel,
                                   slice::SliderSlice(*mainUI, 0), sliceWidth, sliceHeight, result);
  }
  MeasureContour(0, 1);

  SetField(mainUI->interiorPerimeterOutput, "%.4f", static_cast<double>(perimeter));
  SetField(mainUI->nonCommonAreaOutput, "%d", area);
  SetField(mainUI->interiorRatioOutput, "%.6f", area / static_cast<double>(perimeter));
  ShowContour();
}
