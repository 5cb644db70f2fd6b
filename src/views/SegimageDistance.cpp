// Segimage: distance map and Hausdorff distance of a slice.
#include "ui/Fields.h"
#include "ui/MainUI.h"
#include "views/Segimage.h"
#include "views/SegimageMeasures.h"
#include "views/slicemeasures/SliceDistance.h"
#include "views/slicemeasures/SliceFarPoint.h"

#include <FL/Fl.H>
#include <FL/Fl_Output.H>
#include <FL/Fl_Slider.H>

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace {

/// Moves the hidden value of the panel; in the forward scan events are handled as well.
class ScanProgress : public Progress {
public:
  explicit ScanProgress(MainUI& owner) : ui(owner) {}
  void Step() override {
    ui.progressRange->value(ui.progressRange->value() + 1.0);
    if (handlesEvents) { Fl::check(); }
  }
  bool handlesEvents = true;

private:
  MainUI& ui;
};

std::int16_t* NewCopy(const std::vector<std::int16_t>& values) {
  auto* copy = static_cast<std::int16_t*>(
      std::malloc(std::max<std::size_t>(values.size(), 1) * sizeof(std::int16_t)));
  if (copy != nullptr) { std::memcpy(copy, values.data(), values.size() * sizeof(std::int16_t)); }
  return copy;
}

enum class Half { First, Second };

measure::ScanOrder OrderFor(Half half, int direction) {
  // ON PURPOSE: only the second half scans direction XZ with the columns inside.
  return half == Half::Second && direction == kSliceXZ ? measure::ScanOrder::ColumnsInside
                                                       : measure::ScanOrder::RowsInside;
}

}  // namespace

measure::SliceVectors Segimage::MapSlice(int imageIndex, int mapDirection) {
  Register(mapDirection, mainUI);
  InitSlice();
  measure::SliceVectors vectors;
  const VoxData* image = ImageAt(*mainUI, imageIndex);
  if (image == nullptr || sliceWidth > kMaxSliceSide || sliceHeight > kMaxSliceSide) {
    return vectors;
  }
  measure::StartSliceVectors(slice::SliceOf(*mainUI, *image, mapDirection), mainUI->currentLabel,
                             sliceWidth, sliceHeight, vectors);
  mainUI->progressText->value("Starting forward scan");
  mainUI->progressRange->maximum(2 * sliceHeight);
  mainUI->progressRange->value(0);
  // Another command may begin in the forward scan and turn the canvas: the map knows its own size.
  ScanProgress progress(*mainUI);
  measure::ScanForward(vectors, progress);
  mainUI->progressText->value("Starting backward scan");
  progress.handlesEvents = false;
  measure::ScanBackward(vectors, progress);
  mainUI->HideProgress();
  return vectors;
}

void Segimage::KeepMap(const measure::SliceVectors& vectors, int mapDirection) {
  if (direction != mapDirection || sliceWidth != vectors.width || sliceHeight != vectors.height) {
    Register(mapDirection, mainUI);
    InitSlice();
  }
  std::free(sliceDistX);
  std::free(sliceDistY);
  sliceDistX = NewCopy(vectors.x);
  sliceDistY = NewCopy(vectors.y);
}

void Segimage::SliceDistanceMap(int imageIndex, int mapDirection) {
  const RunningCommand running(*mainUI);
  if (running.Refused()) { return; }
  KeepMap(MapSlice(imageIndex, mapDirection), mapDirection);
}

void Segimage::DisplayDistanceMap() {
  const RunningCommand running(*mainUI);
  if (running.Refused()) { return; }
  if (!slice::CanShowSlices(*mainUI)) { return; }
  greyHidden = 0;
  const int shown = Truncated(mainUI->imageSlider);
  for (const int wanted : slice::DirectionsOn(*mainUI)) {
    const measure::SliceVectors vectors = MapSlice(shown, wanted);
    KeepMap(vectors, wanted);
    measure::PaintDistances(vectors, result);
  }
  extraTextureOn = 0;
  overlayInDrawCurrent = 0;
  CreateGreySliceTexture();
  redraw();
}

void Segimage::Haussdorf2D() {
  const RunningCommand running(*mainUI);
  if (running.Refused() || !slice::CanShowSlices(*mainUI)) { return; }
  const ChosenPair pair = TakeChosenPair(*mainUI);
  if (!pair.ok) { return; }
  WarnIfLabelMissing(*mainUI, *pair.image1, "Image 1");
  WarnIfLabelMissing(*mainUI, *pair.image2, "Image 2");
  greyHidden = 0;

  const int label = mainUI->currentLabel;
  const std::vector<int> directions = slice::DirectionsOn(*mainUI);
  const auto directed = [&](int mapped, const VoxData& scanned, Half half) {
    measure::SliceVectors vectors;
    std::vector<LabelSlice> slices;  // as they are now: a slider may move during a scan
    for (const int wanted : directions) {
      slices.push_back(slice::SliceOf(*mainUI, scanned, wanted));
      vectors = MapSlice(mapped, wanted);
      KeepMap(vectors, wanted);
    }
    measure::FarPoint far;
    for (const LabelSlice& scannedSlice : slices) {
      measure::MarkFarPoint(scannedSlice, label, vectors, OrderFor(half, scannedSlice.direction),
                            far, result);
    }
    return far.distance;
  };

  const double aToB = directed(pair.index1, *pair.image2, Half::First);
  SetField(mainUI->haussdorfABOutput, "%f", aToB);
  const double bToA = directed(pair.index2, *pair.image1, Half::Second);
  SetField(mainUI->haussdorfBAOutput, "%f", bToA);
  const auto first = static_cast<float>(aToB);
  const auto second = static_cast<float>(bToA);
  SetField(mainUI->haussdorfOutput, "%f", static_cast<double>(second > first ? second : first));

  extraTextureOn = 0;
  overlayInDrawCurrent = 0;
  CreateGreySliceTexture();
  redraw();
}
