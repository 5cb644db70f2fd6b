#include "views/Window2D.h"

#include "VoxData/VoxData.h"
#include "app/Globals.h"
#include "app/ViewState.h"
#include "views/SlicePictures.h"
#include "views/SliceView.h"
#include "views/SliceViewBuffers.h"
#include "views/SliceViewDraw.h"
#include "views/SliceViewSteps.h"

std::int32_t currentDirection = 0;

namespace {

constexpr const char* kBeforeGetCurrentSlice =
    " needs a Register() and InitSlice() call prior to GetCurrentSlice().";

}  // namespace

Window2D::Window2D(int x, int y, int w, int h, const char* label)
    : Fl_Gl_Window(x, y, w, h, label) {}

Window2D::~Window2D() {
  if (initialized != 0) { slice::FreeBuffers(*this); }
}

void Window2D::Register(int newDirection, MainUI* owner) {
  slice::Register(*this, newDirection, owner);
}

void Window2D::ClearView() {
  if (initialized != 0) { slice::FreeBuffers(*this); }
  registered = 0;
  initialized = 0;
  greySlice = nullptr;
  segSlice = nullptr;
  scratch = nullptr;
  greyTextureData = nullptr;
  segTextureData = nullptr;
  slice::ForgetTextures(*this);
  currentSlice = -1;
  sliceWidth = 0;
  sliceHeight = 0;
  paddingX = 0;
  paddingY = 0;
  voxelSizeX = 1.0F;
  voxelSizeY = 1.0F;
  contrast = 0;
  brightness = 0;
  labelOpacity = 0;
  viewCentreX = 0.0F;
  viewCentreY = 0.0F;
  viewHalfWidth = 1.0F;
  viewHalfHeight = 1.0F;
  zoom = 1.0F;
}

void Window2D::InitSlice() {
  slice::DemandRegister(*this);
  if (direction > 2) { slice::TakeAxes(*this, currentDirection); }
  slice::TakeSizes(*this);
  currentSlice = -1;
  slice::MakeBuffers(*this);
  initialized = 1;
  ResetView();
}

void Window2D::ResetView() {
  slice::DemandSlice(*this, " needs a Register() and InitSlice() call prior to ResetView().");
  slice::Fit(*this);
}

void Window2D::CreateGreySliceTexture() {
  slice::DemandSlice(*this,
                     " needs a Register() and InitSlice() call prior to CreateGreySliceTexture().");
  slice::FillLuminance(greySlice, sliceWidth, sliceHeight, paddingX,
                       slice::GreyWindow(contrast, brightness), greyTextureData);
  greyStale = true;
  slice::UploadTextures(*this);
}

void Window2D::CreateSegSliceTexture() {
  slice::DemandSlice(*this,
                     " needs a Register() and InitSlice() call prior to CreateSegSliceTexture().");
  if (const VoxData* image = slice::ShownImage(*mainUI)) {
    slice::FillAllLabels(segSlice, sliceWidth, sliceHeight, paddingX, image->labels,
                         viewState->GetLabelOpacity(), segTextureData);
  }
  segStale = true;
  slice::UploadTextures(*this);
}

void Window2D::GetCurrentSlice() {
  slice::DemandSlice(*this, kBeforeGetCurrentSlice);
  const int fixed = slice::EffectiveDirection(*this);
  if (viewState->GetLiveUpdate() == 0) { return; }
  if (slice::CursorSlice(fixed) != currentSlice) {
    TakeSlices(fixed);
  } else if (contrast != viewState->GetContrast() || brightness != viewState->GetBrightness()) {
    contrast = viewState->GetContrast();
    brightness = viewState->GetBrightness();
    // ON PURPOSE: an opacity that changed as well waits for the next repaint.
    CreateGreySliceTexture();
  } else if (labelOpacity != viewState->GetLabelOpacity()) {
    labelOpacity = viewState->GetLabelOpacity();
    CreateSegSliceTexture();
  }
}

void Window2D::RefreshSlice() {
  slice::DemandSlice(*this, kBeforeGetCurrentSlice);
  TakeSlices(slice::EffectiveDirection(*this));
}

void Window2D::TakeSlices(int fixed) {
  currentSlice = slice::CursorSlice(fixed);
  contrast = viewState->GetContrast();
  brightness = viewState->GetBrightness();
  labelOpacity = viewState->GetLabelOpacity();
  if (const VoxData* image = slice::ShownImage(*mainUI)) {
    slice::TakeSlices(*this, *image, fixed);
  }
  CreateGreySliceTexture();
  CreateSegSliceTexture();
}
