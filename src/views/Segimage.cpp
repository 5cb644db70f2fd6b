#include "views/Segimage.h"

#include "VoxData/VoxData.h"
#include "app/Globals.h"
#include "app/ViewState.h"
#include "base/Limits.h"
#include "ui/MainUI.h"
#include "views/SlicePictures.h"
#include "views/SliceView.h"
#include "views/SliceViewSteps.h"
#include "views/Window2D.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace {

constexpr std::size_t kGreyTexels = 160000;  // the picture's room, whatever the slice needs less

std::size_t Pixels(int width, int height) {
  return static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
}

template <class Element>
Element* NewZeros(std::size_t count) {
  return static_cast<Element*>(std::calloc(std::max<std::size_t>(count, 1), sizeof(Element)));
}

}  // namespace

Segimage::Segimage(int x, int y, int w, int h, const char* label)
    : Fl_Gl_Window(x, y, w, h, label) {
  std::memset(userCounts, 0, sizeof userCounts);
  std::memset(result, 0, sizeof result);
  std::memset(mark, 0, sizeof mark);
}

Segimage::~Segimage() {
  if (initialized != 0) { FreeBuffers(); }
  std::free(sliceDistX);
  std::free(sliceDistY);
}

void Segimage::AllocateBuffers() {
  const std::size_t pixels = Pixels(sliceWidth, sliceHeight);
  const std::size_t texels = Pixels(sliceWidth + paddingX, sliceHeight + paddingY);
  greySlice = NewZeros<std::uint16_t>(pixels);
  segSlice = NewZeros<std::uint8_t>(pixels);
  scratch = NewZeros<std::uint8_t>(pixels * 4);
  greyTextureData = NewZeros<std::uint16_t>(std::max(kGreyTexels, texels));
  segTextureData = NewZeros<std::uint8_t>(texels * 4);
  spareTextureData = NewZeros<std::uint8_t>(texels * 4);
}

void Segimage::FreeBuffers() {
  std::free(greySlice);
  std::free(segSlice);
  std::free(scratch);
  std::free(greyTextureData);
  std::free(segTextureData);
  std::free(spareTextureData);
}

void Segimage::Demand(bool initializedToo, const char* words) const {
  if (registered == 0 || (initializedToo && initialized == 0)) {
    slice::EndForOrder("Segimage ", direction, words);
  }
}

void Segimage::Register(int newDirection, MainUI* owner) {
  direction = newDirection;
  mainUI = owner;
  registered = 1;
  slice::TakeAxes(*this, direction);
}

void Segimage::Unregister() { registered = 0; }

void Segimage::InitSlice() {
  Demand(false, " needs a Register() call prior to InitSlice().");
  if (direction > 2) { slice::TakeAxes(*this, currentDirection); }
  slice::TakeSizes(*this);
  textureWidth = sliceWidth;
  textureHeight = sliceHeight;
  currentSlice = -1;
  if (initialized != 0) { FreeBuffers(); }
  AllocateBuffers();
  initialized = 1;
  ResetView();
}

void Segimage::ResetView() {
  Demand(true, " needs a Register() and InitSlice() call prior to ResetView().");
  slice::Fit(*this);
}

void Segimage::CreateGreySliceTexture() {
  Demand(true, " needs a Register() and InitSlice() call prior to CreateGreySliceTexture().");
  const int width = std::min(textureWidth, kMaxSliceSide);
  const int height = std::min(textureHeight, kMaxSliceSide);
  for (int column = 0; column < width; ++column) {
    for (int row = 0; row < height; ++row) {
      greyTextureData[Pixels(textureWidth + paddingX, row) + static_cast<std::size_t>(column)] =
          static_cast<std::uint16_t>(static_cast<std::uint32_t>(result[column][row]) & 0xFFFFU);
    }
  }
  greyStale = true;
  UploadTextures();
}

void Segimage::CreateSegSliceTexture() {
  Demand(true, " needs a Register() and InitSlice() call prior to CreateSegSliceTexture().");
  if (const VoxData* image = slice::FirstImage(*mainUI)) {
    slice::FillOneLabel(segSlice, sliceWidth, sliceHeight, paddingX, image->labels,
                        mainUI->currentLabel, viewState->GetLabelOpacity(), segTextureData);
  }
  segStale = true;
  UploadTextures();
}

void Segimage::GetCurrentSlice() {
  // ON PURPOSE: the words of this check name the other class.
  if (registered == 0 || initialized == 0) {
    slice::EndForOrder("Window2D ", direction,
                       " needs a Register() and InitSlice() call prior to GetCurrentSlice().");
  }
  int fixed = direction;
  if (direction > 2) {
    const slice::Axes before{axisX, axisY};
    slice::TakeAxes(*this, currentDirection);
    if (before.x != axisX || before.y != axisY) { InitSlice(); }
    fixed = currentDirection;
  }
  currentSlice = slice::CursorSlice(fixed);
  contrast = viewState->GetContrast();
  brightness = viewState->GetBrightness();
  labelOpacity = viewState->GetLabelOpacity();
  if (const VoxData* image = slice::FirstImage(*mainUI)) {
    const LabelVolume shape = image->Labels();
    slice::Extract<std::uint16_t>(image->grey, shape, fixed, currentSlice, sliceWidth, sliceHeight,
                                  greySlice);
    slice::Extract<std::uint8_t>(image->seg, shape, fixed, currentSlice, sliceWidth, sliceHeight,
                                 segSlice);
  }
  CreateGreySliceTexture();
  CreateSegSliceTexture();
}
