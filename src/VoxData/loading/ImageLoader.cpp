// ImageLoader: what "Load" of the two load dialogs does, and what all flows share.
#include "VoxData/ImageLoader.h"

#include "VoxData/VoxData.h"
#include "VoxData/loading/FlowSteps.h"
#include "app/Globals.h"
#include "app/ViewState.h"
#include "ui/ColorPreview.h"
#include "ui/Fields.h"
#include "ui/MainUI.h"
#include "ui/Modal.h"
#include "view3d/Window3D.h"
#include "views/Segimage.h"
#include "views/Window2D.h"

#include <FL/Fl_Choice.H>
#include <FL/Fl_Input.H>
#include <FL/Fl_Output.H>
#include <FL/Fl_Slider.H>
#include <FL/Fl_Value_Input.H>
#include <FL/Fl_Window.H>

#include <cstring>
#include <iostream>

ImageLoader::ImageLoader(MainUI* owner) : ui(owner) {}

ImageLoader::~ImageLoader() { std::free(listPath); }

namespace {

/// Slots in use: the loaded segmentations and the averages behind them.
int SlotsInUse(const MainUI& ui) {
  const int behindSlider = Truncated(ui.imageSlider->maximum()) + 1;
  return std::min(std::max(ui.imageCount, behindSlider), kMaxImages);
}

bool PathTooLong(const char* path) {
  if (std::strlen(path) < static_cast<std::size_t>(kMaxPathText)) { return false; }
  Refuse("The name of a file may have at most 299 characters");
  return true;
}

/// The last pieces of two files are the same: they share one entry, so that the later image can
/// no longer be chosen by its name.
void WarnOfSharedEntry(const char* entry, const std::string& earlier, const char* path) {
  std::cerr << "The files " << earlier << " and " << path << " share the entry " << entry
            << " of the image menus; the entries behind it no longer match their images."
            << std::endl;
}

}  // namespace

const char* LastComponent(const char* path) {
  const char* slash = std::strrchr(path, '/');
  return slash != nullptr ? slash + 1 : path;
}

bool HoldsImageName(const char* path) {
  return std::strstr(path, ".gipl") != nullptr || std::strstr(path, ".raw") != nullptr;
}

void ImageLoader::ResetStudy() {
  Window3D& view3D = *ui->window3D;
  view3D.averageCount = 0;
  const int slots = SlotsInUse(*ui);
  for (int slot = 0; slot < slots; ++slot) {
    if (ui->images[slot] != nullptr) { ui->images[slot]->FreeArrays(1); }
  }
  ui->imageSlider->value(0);
  ui->imageSlider->maximum(-1);
  if (ui->imageCount > 0) {
    view3D.FreeVolumes();
    ui->images[0]->FreeArrays(0);
  }
  for (VoxData*& image : ui->images) {
    delete image;
    image = nullptr;
  }
  ui->imageCount = 0;
  entryPaths.clear();
  ui->yzView->ClearView();
  ui->xzView->ClearView();
  ui->xyView->ClearView();
  ui->segimage->Unregister();
  ui->ClearResults();
}

void ImageLoader::StartGreyLoad() {
  if (ui->RefusedWhileRunning()) { return; }
  ui->loadGreyWindow->hide();
  const std::string path = ui->greyFileNameInput->value();
  if (PathTooLong(path.c_str())) { return; }
  const RunningCommand running(*ui);
  firstGrey = 1;
  firstSeg = 1;
  progressWidth = 0;
  ui->scriptImageCount = 0;
  ResetStudy();
  LoadGrey(path.c_str());
}

void ImageLoader::LoadSeg() {
  if (ui->RefusedWhileRunning()) { return; }
  ui->loadSegWindow->hide();
  const std::string path = ui->segFileNameInput->value();
  if (!MayLoadSeg(path.c_str())) { return; }
  const RunningCommand running(*ui);
  // A slot that could not be made must not cost the segmentation of the slot before it.
  if (firstSeg == 0 && LoadGrey(greyPath) != 0) { return; }
  ReadSegIntoSlot(path.c_str());
  firstSeg = 0;
  AddToImageMenus(path.c_str());
  RebuildLabelMenus();
  SelectFirstEntries();
}

bool ImageLoader::MayLoadSeg(const char* path) const {
  if (ui->imageCount < 1) {
    Refuse("You must load a grey image before");
    return false;
  }
  if (*path == '\0') {
    ui->statusOutput->value("You must enter a non-null string");
    return false;
  }
  if (PathTooLong(path)) { return false; }
  if (SlotsInUse(*ui) > ui->imageCount) {
    Refuse(
        "Averages stand behind the loaded images: load all segmentations before you create them");
    return false;
  }
  if (firstSeg != 0) { return true; }
  if (ui->imageCount >= kMaxImages) {
    Refuse("A study holds at most 60 images");
    return false;
  }
  if (*greyPath == '\0') {
    Refuse("A study loaded from a list takes further segmentations through its list only");
    return false;
  }
  return true;
}

int ImageLoader::LoadGrey(const char* path) { return RunGreyFlow(path, Flow::Manual); }

int ImageLoader::ReadSegIntoSlot(const char* path) {
  if (!HoldsImageName(path)) { return 0; }
  return RunSegFlow(path, Flow::Manual);
}

void ImageLoader::AddToImageMenus(const char* path) {
  const std::string entry = std::string(LastComponent(path)).substr(0, kMaxEntryLabel);
  const auto [earlier, isNew] = entryPaths.emplace(entry, path);
  if (!isNew) { WarnOfSharedEntry(entry.c_str(), earlier->second, path); }
  for (Fl_Choice* choice : {ui->image1Choice, ui->image2Choice, ui->compareImage1Choice,
                            ui->compareImage2Choice, ui->plotImage1Choice, ui->plotImage2Choice}) {
    AddEntry(choice, entry.c_str());
  }
}

void ImageLoader::RebuildLabelMenus() {
  int entries = 0;
  for (int label = 0; label < kMaxLabels; ++label) {
    // ON PURPOSE: the table is compacted in place while it is read and its tail is not cleared, so
    // labels with gaps leave entries of labels that no image holds at the next load.
    if (ui->labelList[label] == 0) { continue; }
    const std::string text = "Lablel " + std::to_string(label);
    for (Fl_Choice* choice : {ui->colorLabelChoice, ui->plotLabel1Choice, ui->plotLabel2Choice}) {
      AddEntry(choice, text.c_str());
    }
    ui->labelList[entries] = static_cast<std::uint8_t>(label);
    ++entries;
  }
}

void ImageLoader::SelectFirstEntries() {
  for (Fl_Choice* choice : {ui->colorLabelChoice, ui->plotLabel1Choice, ui->plotLabel2Choice,
                            ui->image1Choice, ui->compareImage1Choice, ui->plotImage1Choice}) {
    choice->value(0);
  }
  for (Fl_Choice* choice : {ui->image2Choice, ui->compareImage2Choice, ui->plotImage2Choice}) {
    choice->value(1);
  }
  ui->currentLabel = ui->labelList[0];
  if (ui->imageCount < 1) { return; }
  const auto colour = ui->images[0]->GetLabelColour(ui->currentLabel);
  ui->colorPreview->SetColor(colour[0], colour[1], colour[2]);
  const int dimZ = ui->images[0]->GetDimZ();
  ui->plotSlice1Slider->maximum(dimZ);
  ui->plotSlice1Slider->value(dimZ);
  ui->plotSlice2Slider->maximum(dimZ);
  ui->plotSlice1Slider->redraw();
  ui->plotSlice2Slider->redraw();
}

void SetSegHeaderSize() { GetMainUI()->segHeaderSizeInput->value(256.0); }
