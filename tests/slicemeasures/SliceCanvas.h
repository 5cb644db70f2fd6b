// The result canvas without its window: what the commands do with the kernels.
#pragma once

#include "base/LabelSlice.h"
#include "tests/support/GoldenSlices.h"
#include "views/slicemeasures/SliceContour.h"
#include "views/slicemeasures/SliceDistance.h"
#include "views/slicemeasures/SliceFarPoint.h"
#include "views/slicemeasures/SliceOverlap.h"
#include "views/slicemeasures/SliceProbability.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

/// Runs the steps of a golden study. Its volumes all have one size.
class SliceCanvas {
public:
  using Images = std::vector<std::unique_ptr<TestVolume>>;

  /// The images outlive the canvas.
  explicit SliceCanvas(const Images& theImages) : images(theImages) { Turn(2); }

  /// What a load does to the canvas; everything else stays.
  void Load() { Turn(2); }

  const golden::CanvasState& Run(const nlohmann::json& theStep) {
    step = &theStep;
    state.fields.clear();
    const auto command = step->at("command").get<std::string>();
    const bool withOverlap = command == "OverlayResult2D" || command == "Overlay2D" ||
                             command.rfind("Probability", 0) == 0;
    if (withOverlap) { OverlayResult2D(); }
    if (command == "Overlay2D") { Overlay2D(); }
    if (command == "Complexity") { Complexity(); }
    if (command == "InteriorContour") { InteriorContour(); }
    if (command == "DisplayDistanceMap") { DisplayDistanceMap(); }
    if (command == "Haussdorf2D") { Haussdorf2D(); }
    if (command == "ProbabilityIntra") { Probability(true); }
    if (command == "ProbabilityInter") { Probability(false); }
    state.result = &result;
    state.mark = &mark;
    return state;
  }

private:
  int Input(const char* name) const { return step->at(name).get<int>(); }
  int Direction() const { return Input("direction"); }
  int Slider(int axis) const {
    return step->at("cursorSlider").at(static_cast<std::size_t>(axis)).get<int>();
  }
  LabelSlice Slice(int image, int direction) const {
    return {images.at(static_cast<std::size_t>(image))->Labels(), direction, Slider(direction)};
  }
  LabelSlice Slice(const char* image) const { return Slice(Input(image), Direction()); }

  void Turn(int direction) {
    const LabelSlice any{images[0]->Labels(), direction, 0};
    state.width = any.Width();
    state.height = any.Height();
  }
  void Prepare(int direction) {
    if (state.lastDirection == direction) { return; }
    Turn(direction);
    state.lastDirection = direction;
  }
  measure::SliceSize Size() const { return {state.width, state.height}; }
  measure::ContourPictures Pictures() { return {result, mark, Size()}; }

  template <class Value>
  void Write(const char* field, const char* format, Value value) {
    char text[400];
    std::snprintf(text, sizeof text, format, value);
    state.fields[field] = text;
  }

  void OverlayResult2D() {
    Prepare(Direction());
    measure::SliceOverlap overlap;
    measure::CountOverlap(Slice("image1"), Slice("image2"), Input("label"), Size(), overlap,
                          result);
    Write("union2DOutput", "%d", overlap.Union());
    Write("intersect2DOutput", "%d", overlap.common);
    const auto radio = step->at("ratio").get<std::string>();
    const auto divisor = radio == "average"     ? measure::SliceDivisor::Average
                         : radio == "intersect" ? measure::SliceDivisor::Union
                                                : measure::SliceDivisor::FirstImage;
    const auto ratio = measure::OverlapRatio(overlap, divisor);
    if (ratio) {
      Write("overlapRatioOutput", "%.6f", *ratio);
    } else {
      Write("overlapRatioOutput", "%d", overlap.common);
    }
    state.overlayVisible = false;
    state.overlayInDrawCurrent = true;
  }

  void Overlay2D() {
    std::memset(result, 0, sizeof result);
    measure::PaintMask(Slice("image2"), Input("label"), Size(), result);
    state.overlayVisible = true;
  }

  void WriteContour(measure::WaveExtent extent, int area, bool interior) {
    const measure::ContourWalk walk = measure::WalkContour(extent, Pictures());
    const double ratio = interior ? area / static_cast<double>(walk.perimeter)
                                  : measure::ContourComplexity(walk.perimeter, area);
    Write(interior ? "interiorPerimeterOutput" : "perimeterOutput", "%.4f",
          static_cast<double>(walk.perimeter));
    Write(interior ? "nonCommonAreaOutput" : "areaOutput", "%d", area);
    Write(interior ? "interiorRatioOutput" : "ratioOutput", "%.6f", ratio);
    state.overlayInDrawCurrent = false;
  }

  void Complexity() {
    Turn(Direction());
    const int area =
        measure::PaintContour(Slice("imageSlider"), Slider(0), Input("label"), Pictures());
    WriteContour(measure::WaveExtent::Interior, area, false);
  }

  void InteriorContour() {
    Turn(Direction());
    const int area =
        Direction() == kSliceXY
            ? measure::PaintContourOfFirst(Slice("image1"), Slice("image2"), Input("label"),
                                           Pictures())
            : measure::PaintContour(Slice("imageSlider"), Slider(0), Input("label"), Pictures());
    WriteContour(measure::WaveExtent::Whole, area, true);
  }

  measure::SliceVectors Map(const char* image) {
    Turn(Direction());
    Progress progress;
    auto vectors = measure::StartVectors(Slice(image), Input("label"), Size());
    measure::ScanForward(vectors, progress);
    measure::ScanBackward(vectors, progress);
    state.overlayInDrawCurrent = false;
    return vectors;
  }

  void DisplayDistanceMap() { measure::PaintDistances(Map("imageSlider"), result); }

  double Directed(const char* mapped, const char* scanned, measure::ScanOrder order) {
    measure::FarPoint far;
    measure::MarkFarPoint(Slice(scanned), Input("label"), Map(mapped), order, far, result);
    return far.distance;
  }

  void Haussdorf2D() {
    const double aToB = Directed("image1", "image2", measure::ScanOrder::ColumnsOuter);
    const bool byRows = Direction() == kSliceXZ;
    const double bToA =
        Directed("image2", "image1",
                 byRows ? measure::ScanOrder::RowsOuter : measure::ScanOrder::ColumnsOuter);
    Write("haussdorfABOutput", "%f", aToB);
    Write("haussdorfBAOutput", "%f", bToA);
    Write("haussdorfOutput", "%f",
          static_cast<double>(std::max(static_cast<float>(aToB), static_cast<float>(bToA))));
  }

  void Probability(bool intra) {
    if (!intra) { std::memset(counts, 0, sizeof counts); }
    Prepare(Direction());
    measure::RepeatedSlices study;
    study.users = Input("userCount");
    study.repeats = Input("slicesPerUser");
    for (int slot = 0; slot < study.users * study.repeats; ++slot) {
      study.slices.push_back(Slice(slot, Direction()));
    }
    measure::CountUsers(study, Input("label"), Size(), counts);
    if (intra) {
      Write("probaOverlapIntraOutput", "%.6f",
            measure::PaintOneUser(counts, Input("overlayIntraSlider"), study.repeats, Size(),
                                  result));
    } else {
      Write("probaOverlapInterOutput", "%.6f",
            measure::PaintTwoUsers(counts, study.users, study.repeats, Size(), result));
    }
    state.overlayInDrawCurrent = false;
  }

  const Images& images;
  golden::CanvasState state{{}, 0, 0, 2, false, false, nullptr, nullptr};
  const nlohmann::json* step = nullptr;
  measure::Picture result = {};
  measure::Picture mark = {};
  measure::UserCounts counts = {};
};
