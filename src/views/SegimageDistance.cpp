// Segimage: distance map and Haussdorf distance of a slice.
#include "VoxData/VoxData.h"
#include "ui/Fields.h"
#include "ui/MainUI.h"
#include "ui/StudyChecks.h"
#include "views/Segimage.h"
#include "views/SegimageMeasures.h"
#include "views/slicemeasures/SliceDistance.h"
#include "views/slicemeasures/SliceFarPoint.h"

#include <FL/Fl.H>
#include <FL/Fl_Group.H>
#include <FL/Fl_Output.H>
#include <FL/Fl_Slider.H>

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace {

using measure::ScanOrder;
using measure::SliceVectors;

/// Moves the bar's hidden value row by row; the panel is not shown.
class RowProgress : public Progress {
public:
  RowProgress(MainUI& owner, int rows) : ui(owner) {
    ui.progressRange->maximum(2 * rows);
    ui.progressRange->value(0);
  }
  /// Whether a row lets the toolkit handle waiting events.
  bool handlesEvents = true;

  void Step() override {
    ++done;
    ui.progressRange->value(done);
    if (handlesEvents) { Fl::check(); }
  }
  void ShowMessage(const char* text) override { ui.progressText->value(text); }

private:
  MainUI& ui;
  int done = 0;
};

/// A block of its own for a member, which anyone may free; null where memory is short.
std::int16_t* NewBlock(const std::vector<std::int16_t>& values) {
  const std::size_t bytes = values.size() * sizeof(std::int16_t);
  auto* block = static_cast<std::int16_t*>(std::malloc(std::max<std::size_t>(bytes, 1)));
  if (block != nullptr && bytes > 0) { std::memcpy(block, values.data(), bytes); }
  return block;
}

void TurnCanvas(Segimage& canvas, int direction) {
  canvas.Register(direction, canvas.mainUI);
  canvas.InitSlice();
}

/// Maps one slice and leaves the canvas turned to it, with the vectors in its members.
///
/// Events are handled meanwhile, so that another command can turn the canvas, move a slider or
/// choose a label: what the map is made of is read before the first of them.
SliceVectors MapSlice(Segimage& canvas, const LabelSlice& slice, int label) {
  TurnCanvas(canvas, slice.direction);
  const measure::SliceSize size = slice::SizeOf(canvas);
  SliceVectors vectors = measure::StartVectors(slice, label, size);
  RowProgress progress(*canvas.mainUI, size.height);
  progress.ShowMessage("Starting forward scan");
  measure::ScanForward(vectors, progress);
  progress.ShowMessage("Starting backward scan");
  progress.handlesEvents = false;
  measure::ScanBackward(vectors, progress);
  canvas.mainUI->HideProgress();
  const bool turned = canvas.direction != slice.direction || canvas.sliceWidth != size.width ||
                      canvas.sliceHeight != size.height;
  if (turned) { TurnCanvas(canvas, slice.direction); }

  std::free(canvas.sliceDistX);
  std::free(canvas.sliceDistY);
  canvas.sliceDistX = NewBlock(vectors.x);
  canvas.sliceDistY = NewBlock(vectors.y);
  return vectors;
}

/// One image's slices of the directions that are on.
std::vector<LabelSlice> SlicesOf(const MainUI& ui, const VoxData& image) {
  std::vector<LabelSlice> slices;
  for (const int direction : slice::DirectionsOn(ui)) {
    slices.push_back(slice::SliceOf(ui, image, direction));
  }
  return slices;
}

/// The map of the last of an image's slices.
SliceVectors MapSlices(Segimage& canvas, const std::vector<LabelSlice>& slices, int label) {
  SliceVectors vectors;
  for (const LabelSlice& slice : slices) { vectors = MapSlice(canvas, slice, label); }
  return vectors;
}

enum class Half { First, Second };

/// ON PURPOSE: the second half runs through the slice XZ row by row, which decides between pixels
/// of equal distance; everything else runs column by column.
ScanOrder OrderFor(Half half, int direction) {
  const bool byRows = half == Half::Second && direction == kSliceXZ;
  return byRows ? ScanOrder::RowsOuter : ScanOrder::ColumnsOuter;
}

/// The largest distance from the pixels of one image to another, painted.
double DirectedHaussdorf(Segimage& canvas, const std::vector<LabelSlice>& mapped,
                         const std::vector<LabelSlice>& scanned, int label, Half half) {
  const SliceVectors map = MapSlices(canvas, mapped, label);
  measure::FarPoint far;
  for (const LabelSlice& slice : scanned) {
    measure::MarkFarPoint(slice, label, map, OrderFor(half, slice.direction), far, canvas.result);
  }
  return far.distance;
}

}  // namespace

void Segimage::SliceDistanceMap(int imageIndex, int mapDirection) {
  if (mapDirection < kSliceYZ || mapDirection > kSliceXY) { return; }
  const RunningCommand running(*mainUI);
  const VoxData* image = ImageAt(*mainUI, imageIndex);
  if (running.Refused() || image == nullptr || !CanShowSlice(*mainUI, mapDirection)) { return; }
  MapSlice(*this, slice::SliceOf(*mainUI, *image, mapDirection), mainUI->currentLabel);
}

void Segimage::DisplayDistanceMap() {
  const RunningCommand running(*mainUI);
  if (running.Refused() || !slice::CanShowSlices(*mainUI)) { return; }
  const VoxData* shown = ImageAt(*mainUI, Truncated(mainUI->imageSlider));
  if (shown == nullptr) { return; }
  WarnIfLabelMissing(*mainUI, *shown, "the image on show");
  greyHidden = 0;
  const SliceVectors vectors = MapSlices(*this, SlicesOf(*mainUI, *shown), mainUI->currentLabel);
  measure::PaintDistances(vectors, result);
  slice::ShowGreyResult(*this);
}

void Segimage::Haussdorf2D() {
  const RunningCommand running(*mainUI);
  if (running.Refused() || !slice::CanShowSlices(*mainUI)) { return; }
  const ChosenPair pair = TakeChosenPair(*mainUI);
  if (!pair.ok) { return; }
  WarnIfLabelMissing(*mainUI, *pair.image1, "Image 1");
  WarnIfLabelMissing(*mainUI, *pair.image2, "Image 2");
  greyHidden = 0;

  // Read before anything handles events.
  const int label = mainUI->currentLabel;
  const std::vector<LabelSlice> slices1 = SlicesOf(*mainUI, *pair.image1);
  const std::vector<LabelSlice> slices2 = SlicesOf(*mainUI, *pair.image2);

  const double aToB = DirectedHaussdorf(*this, slices1, slices2, label, Half::First);
  SetField(mainUI->haussdorfABOutput, "%f", aToB);
  const double bToA = DirectedHaussdorf(*this, slices2, slices1, label, Half::Second);
  SetField(mainUI->haussdorfBAOutput, "%f", bToA);
  SetField(mainUI->haussdorfOutput, "%f",
           std::max(static_cast<float>(aToB), static_cast<float>(bToA)));
  slice::ShowGreyResult(*this);
}
