// ImageLoader: the grey flow and the segmentation flow, by hand and from a script list file.
#include "VoxData/ImageLoader.h"
#include "VoxData/VoxData.h"
#include "VoxData/loading/FlowSteps.h"
#include "app/Globals.h"
#include "app/ViewState.h"
#include "ui/Fields.h"
#include "ui/MainUI.h"
#include "view3d/Window3D.h"
#include "views/Segimage.h"
#include "views/Window2D.h"

#include <FL/Fl.H>
#include <FL/Fl_Box.H>
#include <FL/Fl_Choice.H>
#include <FL/Fl_Output.H>
#include <FL/Fl_Scrollbar.H>
#include <FL/Fl_Slider.H>
#include <FL/Fl_Value_Input.H>
#include <FL/Fl_Value_Output.H>
#include <FL/Fl_Window.H>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <memory>

namespace {

constexpr double kFullBar = 290.0;  // pixels of the bar when a job is done

}  // namespace

void ImageLoader::ReadGreyNumbers() {
  const Fl_Value_Input* sizes[3] = {ui->greyXdimInput, ui->greyYdimInput, ui->greyZdimInput};
  const Fl_Value_Input* steps[3] = {ui->greyXspacingInput, ui->greyYspacingInput,
                                    ui->greyZspacingInput};
  const Fl_Choice* origins[3] = {ui->greyOriginXChoice, ui->greyOriginYChoice,
                                 ui->greyOriginZChoice};
  for (int axis = 0; axis < 3; ++axis) {
    dims[axis] = Truncated(sizes[axis]);
    flips[axis] = ChosenIndex(origins[axis]);
    spacing[axis] = static_cast<float>(steps[axis]->value());
    ui->sliceDims[axis] = dims[axis];
  }
  headerSize = Truncated(ui->greyHeaderSizeInput);
}

int ImageLoader::FillNewSlot(VoxData& slot, const char* path, Flow flow) {
  const int bytes = Truncated(ui->greyBytesInput);
  const int minimum = Truncated(ui->greyMinValInput);
  const int maximum = Truncated(ui->greyMaxValInput);
  if (firstGrey != 0) { std::cout << "Attempting to read " << path << std::endl; }
  if (firstGrey == 1) {
    std::snprintf(statusText, sizeof statusText, "Opening  %s", path);
    const int result = slot.ReadGrey(path, dims[0], dims[1], dims[2], bytes, minimum, maximum,
                                     flips[0], flips[1], flips[2], headerSize);
    // A study from a list file has no grey path: further segmentations come through its list.
    // A grey image that is read once more comes with the path that is kept already.
    if (flow == Flow::Manual && path != greyPath) {
      std::snprintf(greyPath, sizeof greyPath, "%s", path);
    }
    firstGrey = 0;
    return result;
  }
  std::snprintf(statusText, sizeof statusText, "Allocating Data.....");
  ui->progressText->value(statusText);
  Fl::check();
  if (flow == Flow::Scripted) { std::cout << "Allocating data..." << std::endl; }
  const int result = slot.SetupSlot(path, dims[0], dims[1], dims[2], bytes, minimum, maximum,
                                    flips[0], flips[1], flips[2]);
  if (result == 1) { ShareGrey(slot); }
  return result;
}

void ImageLoader::ShareGrey(VoxData& slot) const {
  const VoxData& first = *ui->images[0];
  if (first.Labels().SameSize(slot.Labels())) {
    slot.grey = first.grey;
  } else {
    // The shared array has the size of the first image: a slot of another size cannot index it.
    std::cerr << "The new image has another size than the grey image and shows no grey values."
              << std::endl;
  }
}

int ImageLoader::RunGreyFlow(const char* path, Flow flow) {
  if (ui->imageCount >= kMaxImages) { return -1; }  // every caller has refused before
  auto slot = std::make_unique<VoxData>();
  ReadGreyNumbers();
  if (*path == '\0') {
    ui->statusOutput->value("You must enter a non-null string");
    return -1;
  }
  if (FillNewSlot(*slot, path, flow) != 1) {
    if (flow == Flow::Manual) { ui->statusOutput->value("Loading failed"); }
    return -1;
  }
  ui->statusOutput->value("Loading Successful");
  for (int axis = 0; axis < 3; ++axis) { ui->voxelSizeOutput[axis]->value(spacing[axis]); }
  slot->SetSpacing(spacing[0], spacing[1], spacing[2]);
  ui->images[ui->imageCount] = slot.release();
  ++ui->imageCount;
  ShowNewSlot(flow);
  return 0;
}

void ImageLoader::ShowNewSlot(Flow flow) {
  if (flow == Flow::Manual) { viewState->SetCursor(0, 0, 0); }
  for (int axis = 0; axis < 3; ++axis) {
    ui->cursorSlider[axis]->Fl_Slider::range(dims[axis] - 1, 0);
    ui->cursorSlider[axis]->Fl_Valuator::value(0.0);
    ui->cursorSlider[axis]->redraw();
    ui->sliceOutput[axis]->activate();
    ui->UpdateSliceText(axis);
  }
  ui->RefreshLabels();
  const VoxData& first = *ui->images[0];
  ui->window3D->AllocateVolumes(first.GetDimX(), first.GetDimY(), first.GetDimZ());
  ui->yzView->Register(0, ui);
  ui->xzView->Register(1, ui);
  ui->xyView->Register(2, ui);
  ui->segimage->Register(2, ui);
  InitViews();
  ui->imageSlider->maximum(ui->imageSlider->maximum() + 1.0);
  ui->imageSlider->redraw();
  ui->RedrawViews();
  ui->mainWindow->redraw();
}

void ImageLoader::InitViews() {
  ui->yzView->InitSlice();
  ui->xzView->InitSlice();
  ui->xyView->InitSlice();
  ui->segimage->InitSlice();
}

int ImageLoader::TargetSlot(Flow flow) {
  Fl_Slider& slider = *ui->imageSlider;
  if (flow == Flow::Scripted) {
    slider.value(slider.maximum());  // the user may have moved it during the load
  } else if (slider.value() != slider.maximum()) {
    // ON PURPOSE: the slot behind the one on show takes the labels, the new slot only when the
    // slider stood right before it.
    slider.value(slider.value() + 1.0);
    WarnOfReplacedLabels();
  }
  return Truncated(slider.value());
}

void ImageLoader::WarnOfReplacedLabels() const {
  if (ui->imageSlider->value() >= ui->imageSlider->maximum()) { return; }
  std::cerr << "The labels of image " << Truncated(ui->imageSlider->value()) + 1
            << " are replaced, since the image slider stood before it; the new image "
            << Truncated(ui->imageSlider->maximum()) + 1 << " stays without labels." << std::endl;
}

int ImageLoader::RunSegFlow(const char* path, Flow flow) {
  const int slot = TargetSlot(flow);
  GrowBar();
  std::cout << "Attempting to read " << path << std::endl;
  if (slot < 0 || slot >= kMaxImages || ui->images[slot] == nullptr ||
      ui->images[slot]->ReadSeg(path, 256) != 1) {
    ui->statusOutput->value("Loading failed");
    return -1;
  }
  for (int label = 0; label < kMaxLabels; ++label) {
    if (ui->images[slot]->labelPresent[label] == 1) {
      ui->labelList[label] = static_cast<std::uint8_t>(label);
    }
  }
  ui->statusOutput->value("Loading Successful");
  ui->RefreshLabels();
  InitViews();
  ui->RedrawViews();
  ui->mainWindow->redraw();
  return 1;
}

void ImageLoader::GrowBar() {
  const double width = kFullBar / ui->progressRange->maximum() + progressWidth;
  if (!std::isfinite(width)) { return; }  // a list of one image has no steps
  progressWidth = Truncated(width);
  Fl_Box& bar = *ui->progressBar;
  bar.resize(bar.x(), bar.y(), progressWidth, bar.h());
  bar.redraw();
}
