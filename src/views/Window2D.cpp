#include "views/Window2D.h"

#include "VoxData/VoxData.h"
#include "app/Globals.h"
#include "app/ViewState.h"
#include "ui/MainUI.h"
#include "views/SlicePictures.h"
#include "views/SliceView.h"
#include "views/SliceViewSteps.h"

#include <algorithm>
#include <cstdlib>

std::int32_t currentDirection = 0;

namespace {

std::size_t Pixels(int width, int height) {
  return static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
}

template <class Element>
Element* NewZeros(std::size_t count) {
  return static_cast<Element*>(std::calloc(std::max<std::size_t>(count, 1), sizeof(Element)));
}

}  // namespace

Window2D::Window2D(int x, int y, int w, int h, const char* label)
    : Fl_Gl_Window(x, y, w, h, label) {}

Window2D::~Window2D() {
  if (initialized != 0) { FreeBuffers(); }
}

void Window2D::FreeBuffers() {
  std::free(greySlice);
  std::free(segSlice);
  std::free(scratch);
  std::free(greyTextureData);
  std::free(segTextureData);
}

void Window2D::Demand(bool initializedToo, const char* words) const {
  if (registered == 0 || (initializedToo && initialized == 0)) {
    slice::EndForOrder("Window2D ", direction, words);
  }
}

void Window2D::Register(int newDirection, MainUI* owner) {
  direction = newDirection;
  mainUI = owner;
  registered = 1;
  slice::TakeAxes(*this, direction);
}

void Window2D::ClearView() {
  if (initialized != 0) { FreeBuffers(); }
  registered = 0;
  initialized = 0;
  greySlice = nullptr;
  segSlice = nullptr;
  scratch = nullptr;
  greyTextureData = nullptr;
  segTextureData = nullptr;
  ForgetTextures();
  greyStale = false;
  segStale = false;
  currentSlice = -1;
  sliceWidth = 0;
  sliceHeight = 0;
  paddingX = 0;
  paddingY = 0;
  voxelSizeX = 1.0F;
  voxelSizeY = 1.0F;
  viewCentreX = 0.0F;
  viewCentreY = 0.0F;
  viewHalfWidth = 1.0F;
  viewHalfHeight = 1.0F;
  zoom = 1.0F;
}

void Window2D::InitSlice() {
  Demand(false, " needs a Register() call prior to InitSlice().");
  if (direction > 2) { slice::TakeAxes(*this, currentDirection); }
  slice::TakeSizes(*this);
  currentSlice = -1;
  if (initialized != 0) { FreeBuffers(); }
  const std::size_t pixels = Pixels(sliceWidth, sliceHeight);
  const std::size_t texels = Pixels(sliceWidth + paddingX, sliceHeight + paddingY);
  greySlice = NewZeros<std::uint16_t>(pixels);
  segSlice = NewZeros<std::uint8_t>(pixels);
  scratch = NewZeros<std::uint8_t>(pixels * 4);
  greyTextureData = NewZeros<std::uint16_t>(texels);
  segTextureData = NewZeros<std::uint8_t>(texels * 4);
  initialized = 1;
  ResetView();
}

void Window2D::ResetView() {
  Demand(true, " needs a Register() and InitSlice() call prior to ResetView().");
  slice::Fit(*this);
}

int Window2D::EffectiveDirection() const { return direction > 2 ? currentDirection : direction; }

void Window2D::FollowLastView() {
  if (direction <= 2) { return; }
  const slice::Axes before{axisX, axisY};
  slice::TakeAxes(*this, currentDirection);
  if (before.x != axisX || before.y != axisY) { InitSlice(); }
}

void Window2D::CreateGreySliceTexture() {
  Demand(true, " needs a Register() and InitSlice() call prior to CreateGreySliceTexture().");
  slice::FillLuminance(greySlice, sliceWidth, sliceHeight, paddingX,
                       slice::GreyWindow(contrast, brightness), greyTextureData);
  greyStale = true;
  UploadTextures();
}

void Window2D::CreateSegSliceTexture() {
  Demand(true, " needs a Register() and InitSlice() call prior to CreateSegSliceTexture().");
  if (const VoxData* image = slice::ShownImage(*mainUI)) {
    slice::FillAllLabels(segSlice, sliceWidth, sliceHeight, paddingX, image->labels,
                         viewState->GetLabelOpacity(), segTextureData);
  }
  segStale = true;
  UploadTextures();
}

void Window2D::TakeSlices(int wanted) {
  currentSlice = wanted;
  contrast = viewState->GetContrast();
  brightness = viewState->GetBrightness();
  labelOpacity = viewState->GetLabelOpacity();
  const int fixed = EffectiveDirection();
  if (const VoxData* image = slice::ShownImage(*mainUI)) {
    const LabelVolume shape = image->Labels();
    slice::Extract<std::uint16_t>(image->grey, shape, fixed, wanted, sliceWidth, sliceHeight,
                                  greySlice);
    slice::Extract<std::uint8_t>(image->seg, shape, fixed, wanted, sliceWidth, sliceHeight,
                                 segSlice);
  }
  CreateGreySliceTexture();
  CreateSegSliceTexture();
}

void Window2D::GetCurrentSlice() {
  Demand(true, " needs a Register() and InitSlice() call prior to GetCurrentSlice().");
  FollowLastView();
  if (viewState->GetLiveUpdate() == 0) { return; }
  const int wanted = slice::CursorSlice(EffectiveDirection());
  if (wanted != currentSlice) {
    TakeSlices(wanted);
  } else if (contrast != viewState->GetContrast() || brightness != viewState->GetBrightness()) {
    contrast = viewState->GetContrast();
    brightness = viewState->GetBrightness();
    CreateGreySliceTexture();
  } else if (labelOpacity != viewState->GetLabelOpacity()) {
    labelOpacity = viewState->GetLabelOpacity();
    CreateSegSliceTexture();
  }
}

void Window2D::RefreshSlice() {
  Demand(true, " needs a Register() and InitSlice() call prior to GetCurrentSlice().");
  FollowLastView();
  TakeSlices(slice::CursorSlice(EffectiveDirection()));
}
