// What the three slice views and the result canvas do alike: one piece of code for both classes,
// which have the members of this geometry under the same names.
#pragma once

#include "VoxData/VoxData.h"
#include "app/ViewState.h"
#include "views/SliceGeometry.h"

#include <FL/Fl_Gl_Window.H>

#include <cstdint>

class MainUI;

namespace slice {

/// The slot at imageSlider, or null.
VoxData* ShownImage(const MainUI& ui);
/// The slot chosen as Image 1, or null.
VoxData* FirstImage(const MainUI& ui);

/// Ends the program: the calling order is broken. Writes the words, the direction between them.
[[noreturn]] void EndForOrder(const char* name, int direction, const char* words);

/// The cursor's coordinate along the axis that `direction` holds fixed.
int CursorSlice(int direction);

/// Moves the shared cursor along the two axes of a slice.
void PlaceCursor(Axes axes, int i, int j);

/// Builds the texture `name` anew from a padded picture; the context is current.
void BuildGreyTexture(std::uint32_t& name, const std::uint16_t* texels, int width, int height);
void BuildColourTexture(std::uint32_t& name, const std::uint8_t* texels, int width, int height);

/// One textured rectangle of width by height pixels at the origin.
void DrawQuad(float width, float height);
/// Two dashed lines through a cursor.
void DrawCursor(const int* cursor, Axes axes, int width, int height);

/// N, P and C choose the tool. Returns whether the key was one of them.
bool ChooseToolByKey(MainUI& ui);
/// The cursor sliders and all views after the cursor moved.
void ShowMovedCursor(MainUI& ui);

template <class View>
Extent ExtentOf(const View& view) {
  return {view.sliceWidth, view.sliceHeight, view.voxelSizeX, view.voxelSizeY};
}

template <class View>
void TakeAxes(View& view, int direction) {
  const Axes axes = AxesOf(direction);
  view.axisX = axes.x;
  view.axisY = axes.y;
}

/// Sizes, voxel sizes and padding from the image on show.
template <class View>
void TakeSizes(View& view) {
  const VoxData* image = ShownImage(*view.mainUI);
  int dims[3] = {0, 0, 0};
  float spacing[3] = {1.0F, 1.0F, 1.0F};
  if (image != nullptr) {
    image->GetDims(dims);
    image->GetSpacing(spacing);
  }
  view.sliceWidth = dims[view.axisX];
  view.sliceHeight = dims[view.axisY];
  view.voxelSizeX = spacing[view.axisX];
  view.voxelSizeY = spacing[view.axisY];
  view.paddingX = PaddingOf(view.sliceWidth);
  view.paddingY = PaddingOf(view.sliceHeight);
}

template <class View>
void Fit(View& view) {
  const slice::View fitted = FitView(ExtentOf(view), view.w(), view.h());
  view.viewCentreX = fitted.centreX;
  view.viewCentreY = fitted.centreY;
  view.zoom = fitted.zoom;
}

/// Projection and model view of a slice; stores the halves of the visible rectangle.
template <class View>
void BeginPicture(View& view);

/// Push and drag in navigation mode; other events give 0.
template <class View>
int Navigate(View& view, int event);

/// The cursor at the pixel under the mouse.
template <class View>
void MoveCursorToMouse(const View& view);

}  // namespace slice
