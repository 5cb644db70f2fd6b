#include "ui/StudyChecks.h"

#include "VoxData/VoxData.h"
#include "ui/Fields.h"
#include "ui/MainUI.h"
#include "ui/Modal.h"
#include "view3d/Window3D.h"
#include "view3d/Window3DWork.h"

#include <FL/Fl_Choice.H>
#include <FL/Fl_Slider.H>

#include <algorithm>
#include <iostream>
#include <string>

namespace {

const char* const kNotLoaded = "The chosen images are not loaded";
const char* const kSizesDiffer = "The two images have different sizes and cannot be compared";

bool HoldsLabel(const LabelVolume& labels, int label) {
  for (int x = 0; x < labels.dimX; ++x) {
    for (int y = 0; y < labels.dimY; ++y) {
      const std::uint8_t* run = labels.voxels[x][y];
      const std::uint8_t* end = run + labels.dimZ;
      if (std::find(run, end, static_cast<std::uint8_t>(label)) != end) { return true; }
    }
  }
  return false;
}

bool FitsWorkArrays(const MainUI& ui, const LabelVolume& labels) {
  const Window3D::Work& work = *ui.window3D->workState;
  return ui.window3D->workArraysReady != 0 && labels.dimX == work.sizeX &&
         labels.dimY == work.sizeY && labels.dimZ == work.sizeZ;
}

}  // namespace

VoxData* ImageAt(const MainUI& ui, int index) {
  if (index < 0 || index >= kMaxImages || ui.images[index] == nullptr) { return nullptr; }
  return ui.images[index]->seg != nullptr ? ui.images[index] : nullptr;
}

ChosenPair FindChosenPair(const MainUI& ui) {
  ChosenPair pair;
  pair.index1 = ChosenIndex(ui.image1Choice);
  pair.index2 = ChosenIndex(ui.image2Choice);
  pair.image1 = ImageAt(ui, pair.index1);
  pair.image2 = ImageAt(ui, pair.index2);
  pair.ok = pair.image1 != nullptr && pair.image2 != nullptr &&
            pair.image1->Labels().SameSize(pair.image2->Labels());
  return pair;
}

ChosenPair TakeChosenPair(const MainUI& ui) {
  const ChosenPair pair = FindChosenPair(ui);
  if (!pair.ok) {
    const bool loaded = pair.image1 != nullptr && pair.image2 != nullptr;
    Refuse(loaded ? kSizesDiffer : kNotLoaded);
  }
  return pair;
}

bool CanMeasureVolume(const MainUI& ui, const VoxData* image) {
  if (image == nullptr) {
    Refuse(kNotLoaded);
    return false;
  }
  const LabelVolume labels = image->Labels();
  if (std::max({labels.dimX, labels.dimY, labels.dimZ}) > kMaxMeasuredSide) {
    Refuse("A volume with more than 280 voxels on an axis cannot be measured");
    return false;
  }
  if (!FitsWorkArrays(ui, labels)) {
    Refuse("The image has another size than the first image and cannot be measured");
    return false;
  }
  return true;
}

ChosenPair TakeVolumePair(const MainUI& ui) {
  ChosenPair pair = TakeChosenPair(ui);
  // The sizes of the run come from the image on the slider: it has to be of the same kind.
  pair.ok = pair.ok && CanMeasureVolume(ui, pair.image1) &&
            CanMeasureVolume(ui, ImageAt(ui, Truncated(ui.imageSlider)));
  return pair;
}

bool FitsCanvas(const MainUI& ui, int direction) {
  const VoxData* shown = ImageAt(ui, Truncated(ui.imageSlider));
  if (shown == nullptr) { return false; }
  const int width = direction == 2 ? shown->dimX : shown->dimZ;
  const int height = direction == 1 ? shown->dimX : shown->dimY;
  return std::max(width, height) <= kMaxSliceSide;
}

bool CanShowSlice(const MainUI& ui, int direction) {
  if (FitsCanvas(ui, direction)) { return true; }
  const bool loaded = ImageAt(ui, Truncated(ui.imageSlider)) != nullptr;
  Refuse(loaded ? "A slice of more than 300 by 300 pixels cannot be measured"
                : "You must load an image");
  return false;
}

void WarnIfLabelMissing(const MainUI& ui, const VoxData& image, const char* role) {
  if (HoldsLabel(image.Labels(), ui.currentLabel)) { return; }
  std::cerr << "Label " << ui.currentLabel << " does not occur in " << role
            << ": what is shown is no measurement." << std::endl;
}

bool CanMeasureUsers(const MainUI& ui, int mostUsers) {
  if (ui.userCount < 1 || ui.slicesPerUser < 1) {
    Refuse("The numbers of users and of segmentations per user are missing: load a script list "
           "file");
    return false;
  }
  if (ui.userCount > mostUsers) {
    Refuse(("At most " + std::to_string(mostUsers) + " users can be compared").c_str());
    return false;
  }
  const auto wanted = static_cast<long long>(ui.userCount) * ui.slicesPerUser;
  if (wanted > std::min(ui.imageCount, kMaxImages)) {
    Refuse(("The study names " + std::to_string(wanted) + " segmentations, but only " +
            std::to_string(ui.imageCount) + " are loaded")
               .c_str());
    return false;
  }
  for (int slot = 0; slot < wanted; ++slot) {
    const VoxData* image = ImageAt(ui, slot);
    if (image == nullptr) {
      Refuse(("Segmentation " + std::to_string(slot + 1) + " is not loaded").c_str());
      return false;
    }
    if (!image->Labels().SameSize(ui.images[0]->Labels())) {
      Refuse("The segmentations have different sizes and cannot be compared");
      return false;
    }
  }
  return true;
}

bool CanMeasureOneUser(const MainUI& ui) {
  if (!CanMeasureUsers(ui, kMaxSliceUsers)) { return false; }
  const int user = Truncated(ui.overlayIntraSlider);
  if (user >= 0 && user < ui.userCount) { return true; }
  Refuse("The study has no such user: move the slider below \"Overlay Intra\"");
  return false;
}
