#include "views/Segimage.h"

#include "VoxData/VoxData.h"
#include "app/Globals.h"
#include "app/ViewState.h"
#include "base/Limits.h"
#include "ui/MainUI.h"
#include "views/SlicePictures.h"
#include "views/SliceView.h"
#include "views/SliceViewBuffers.h"
#include "views/SliceViewDraw.h"
#include "views/SliceViewSteps.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace {

constexpr std::size_t kLeastTexels = 160000;  // the picture's room, where the slice needs less

}  // namespace

Segimage::Segimage(int x, int y, int w, int h, const char* label)
    : Fl_Gl_Window(x, y, w, h, label) {
  std::memset(userCounts, 0, sizeof userCounts);
  std::memset(result, 0, sizeof result);
  std::memset(mark, 0, sizeof mark);
}

Segimage::~Segimage() {
  if (initialized != 0) { slice::FreeBuffers(*this); }
  std::free(spareTextureData);
  std::free(sliceDistX);
  std::free(sliceDistY);
}

void Segimage::Register(int newDirection, MainUI* owner) {
  slice::Register(*this, newDirection, owner);
}

void Segimage::Unregister() { registered = 0; }

void Segimage::InitSlice() {
  slice::DemandRegister(*this);
  if (direction > 2) { slice::TakeAxes(*this, currentDirection); }
  slice::TakeSizes(*this);
  currentSlice = -1;
  slice::MakeBuffers(*this, kLeastTexels);
  std::free(spareTextureData);
  spareTextureData = slice::NewZeros<std::uint8_t>(4 * slice::TexelCount(*this));
  textureWidth = sliceWidth;
  textureHeight = sliceHeight;
  initialized = 1;
  ResetView();
}

void Segimage::ResetView() {
  slice::DemandSlice(*this, " needs a Register() and InitSlice() call prior to ResetView().");
  slice::Fit(*this);
}

void Segimage::CreateGreySliceTexture() {
  slice::DemandSlice(*this,
                     " needs a Register() and InitSlice() call prior to CreateGreySliceTexture().");
  const int width = std::min(textureWidth, kMaxSliceSide);
  const int height = std::min(textureHeight, kMaxSliceSide);
  const auto rowTexels =
      static_cast<std::size_t>(textureWidth) + static_cast<std::size_t>(paddingX);
  for (int j = 0; j < height; ++j) {
    std::uint16_t* row = greyTextureData + rowTexels * static_cast<std::size_t>(j);
    for (int column = 0; column < width; ++column) {
      row[column] = static_cast<std::uint16_t>(result[column][j]);
    }
  }
  greyStale = true;
  slice::UploadTextures(*this);
}

void Segimage::CreateSegSliceTexture() {
  slice::DemandSlice(*this,
                     " needs a Register() and InitSlice() call prior to CreateSegSliceTexture().");
  if (const VoxData* image = slice::FirstImage(*mainUI)) {
    // ON PURPOSE: only the current label is painted, and texels of other labels stay.
    slice::FillOneLabel(segSlice, sliceWidth, sliceHeight, paddingX, image->labels,
                        mainUI->currentLabel, viewState->GetLabelOpacity(), segTextureData);
  }
  segStale = true;
  slice::UploadTextures(*this);
}

void Segimage::GetCurrentSlice() {
  // ON PURPOSE: the words of this check name the other class.
  slice::DemandSlice(*this, " needs a Register() and InitSlice() call prior to GetCurrentSlice().",
                     Window2D::kName);
  const int fixed = slice::EffectiveDirection(*this);
  currentSlice = slice::CursorSlice(fixed);
  contrast = viewState->GetContrast();
  brightness = viewState->GetBrightness();
  labelOpacity = viewState->GetLabelOpacity();
  if (const VoxData* image = slice::FirstImage(*mainUI)) {
    slice::TakeSlices(*this, *image, fixed);
  }
  CreateGreySliceTexture();
  CreateSegSliceTexture();
}
