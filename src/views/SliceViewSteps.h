// The steps of a slice view, once for Window2D and Segimage: templates over the two classes, which
// have the members of a view under the same names. For their own .cpp files only.
#pragma once

#include "views/SliceView.h"
#include "views/Window2D.h"

namespace slice {

constexpr const char* kNeedsRegister = " needs a Register() call prior to InitSlice().";

template <class View>
void DemandRegister(const View& view) {
  if (view.registered == 0) { EndForOrder(View::kName, view.direction, kNeedsRegister); }
}

template <class View>
void DemandSlice(const View& view, const char* words, const char* name = View::kName) {
  if (view.registered == 0 || view.initialized == 0) { EndForOrder(name, view.direction, words); }
}

template <class View>
void TakeAxes(View& view, int direction) {
  const Axes axes = AxesOf(direction);
  view.axisX = axes.x;
  view.axisY = axes.y;
}

template <class View>
void Register(View& view, int direction, MainUI* owner) {
  view.direction = direction;
  view.mainUI = owner;
  view.registered = 1;
  TakeAxes(view, direction);
}

template <class View>
Extent ExtentOf(const View& view) {
  return {view.sliceWidth, view.sliceHeight, view.voxelSizeX, view.voxelSizeY};
}

/// Sizes, voxel sizes and padding from the image on show.
template <class View>
void TakeSizes(View& view) {
  int dims[3] = {0, 0, 0};
  float spacing[3] = {1.0F, 1.0F, 1.0F};
  if (const VoxData* image = ShownImage(*view.mainUI)) {
    image->GetDims(dims);
    image->GetSpacing(spacing);
  }
  view.sliceWidth = dims[view.axisX];
  view.sliceHeight = dims[view.axisY];
  view.voxelSizeX = spacing[view.axisX];
  view.voxelSizeY = spacing[view.axisY];
  view.paddingX = PaddingOf(view.sliceWidth);
  view.paddingY = PaddingOf(view.sliceHeight);
  DemandPadding(View::kName, 'x', "width", view.paddingX, view.sliceWidth);
  DemandPadding(View::kName, 'y', "height", view.paddingY, view.sliceHeight);
}

template <class View>
void Fit(View& view) {
  const slice::View fitted = FitView(ExtentOf(view), view.w(), view.h());
  view.viewCentreX = fitted.centreX;
  view.viewCentreY = fitted.centreY;
  view.zoom = fitted.zoom;
}

/// The direction on show. A view that follows the one touched last is made anew with its axes.
template <class View>
int EffectiveDirection(View& view) {
  if (view.direction <= 2) { return view.direction; }
  const Axes before{view.axisX, view.axisY};
  TakeAxes(view, currentDirection);
  if (before.x != view.axisX || before.y != view.axisY) { view.InitSlice(); }
  return currentDirection;
}

template <class View>
void TakeSlices(View& view, const VoxData& image, int direction) {
  const LabelVolume shape = image.Labels();
  Extract<std::uint16_t>(image.grey, shape, direction, view.currentSlice, view.sliceWidth,
                         view.sliceHeight, view.greySlice);
  Extract<std::uint8_t>(image.seg, shape, direction, view.currentSlice, view.sliceWidth,
                        view.sliceHeight, view.segSlice);
}

}  // namespace slice
