// Segimage: contour, complexity and interior contour of a slice.
#include "VoxData/VoxData.h"
#include "ui/Fields.h"
#include "ui/MainUI.h"
#include "ui/StudyChecks.h"
#include "views/Segimage.h"
#include "views/SegimageMeasures.h"
#include "views/slicemeasures/SliceContour.h"

#include <FL/Fl_Output.H>
#include <FL/Fl_Round_Button.H>
#include <FL/Fl_Slider.H>

namespace {

measure::ContourPictures PicturesOf(Segimage& canvas) {
  return {canvas.result, canvas.mark, slice::SizeOf(canvas)};
}

/// The contour of the image on show, whatever the chosen images are.
/// Returns: the pixels of the label.
int PaintShownContour(Segimage& canvas, int direction) {
  const MainUI& ui = *canvas.mainUI;
  const VoxData& shown = *ImageAt(ui, Truncated(ui.imageSlider));
  return measure::PaintContour(slice::SliceOf(ui, shown, direction),
                               slice::SliderSlice(ui, kSliceYZ), ui.currentLabel,
                               PicturesOf(canvas));
}

/// Wave, walk and picture; leaves the length in `perimeter`.
void WalkContour(Segimage& canvas, measure::WaveExtent extent) {
  const measure::ContourWalk walk = measure::WalkContour(extent, PicturesOf(canvas));
  canvas.contourStep = 2;  // the number that the wave begins with
  canvas.contourX = walk.pixel.i;
  canvas.contourY = walk.pixel.j;
  canvas.perimeter = walk.perimeter;
}

}  // namespace

void Segimage::Complexity() {
  const RunningCommand running(*mainUI);
  if (running.Refused()) { return; }
  if (mainUI->imageCount < 1) {
    greyHidden = 0;
    return;
  }
  if (!slice::CanShowSlices(*mainUI)) { return; }
  greyHidden = 0;

  int area = 0;
  for (const int wanted : slice::DirectionsOn(*mainUI)) {
    Register(wanted, mainUI);
    InitSlice();
    area += PaintShownContour(*this, wanted);
  }
  WalkContour(*this, measure::WaveExtent::Interior);

  SetField(mainUI->perimeterOutput, "%.4f", perimeter);
  SetField(mainUI->areaOutput, "%d", area);
  SetField(mainUI->ratioOutput, "%.6f", measure::ContourComplexity(perimeter, area));
  slice::ShowGreyResult(*this);
  mainUI->RedrawViews();
}

void Segimage::InteriorContour() {
  const RunningCommand running(*mainUI);
  if (running.Refused()) { return; }
  if (mainUI->imageCount < 1) {
    greyHidden = 0;
    return;
  }
  if (!slice::CanShowSlices(*mainUI)) { return; }
  ChosenPair pair;
  if (mainUI->directionXYButton->value() != 0) {  // the other directions look at one image alone
    pair = TakeChosenPair(*mainUI);
    if (!pair.ok) { return; }
  }
  greyHidden = 0;

  int area = 0;
  for (const int wanted : slice::DirectionsOn(*mainUI)) {
    Register(wanted, mainUI);
    InitSlice();
    // ON PURPOSE: Image 1 and Image 2 are compared along XY alone. Along YZ and XZ this is the
    // contour and the area of the image on show.
    area += wanted == kSliceXY
                ? measure::PaintContourOfFirst(slice::SliceOf(*mainUI, *pair.image1, wanted),
                                               slice::SliceOf(*mainUI, *pair.image2, wanted),
                                               mainUI->currentLabel, PicturesOf(*this))
                : PaintShownContour(*this, wanted);
  }
  WalkContour(*this, measure::WaveExtent::Whole);

  SetField(mainUI->interiorPerimeterOutput, "%.4f", perimeter);
  SetField(mainUI->nonCommonAreaOutput, "%d", area);
  SetField(mainUI->interiorRatioOutput, "%.6f", area / static_cast<double>(perimeter));
  slice::ShowGreyResult(*this);
  mainUI->RedrawViews();
}

void Segimage::ContourWaveStep(int column, int row) {
  measure::StepWave({contourX, contourY}, {column, row}, PicturesOf(*this), perimeter);
}

void Segimage::ContourWalkBack(int column, int row) {
  measure::WalkBack({column, row}, PicturesOf(*this), perimeter);
}
