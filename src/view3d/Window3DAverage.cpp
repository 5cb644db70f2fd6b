// Window3D: one average image for each user.
#include "ui/Fields.h"
#include "ui/MainUI.h"
#include "ui/Modal.h"
#include "ui/PanelProgress.h"
#include "ui/StudyChecks.h"
#include "view3d/CommandSupport.h"
#include "view3d/Window3D.h"
#include "view3d/volumemeasures/AverageVote.h"

#include <FL/Fl.H>
#include <FL/Fl_Choice.H>
#include <FL/Fl_Slider.H>
#include <FL/Fl_Window.H>

#include <algorithm>
#include <cstdio>
#include <memory>

namespace {

void AddToChoosers(const MainUI& ui, const char* name) {
  for (Fl_Choice* choice : {ui.image1Choice, ui.image2Choice, ui.compareImage1Choice,
                            ui.compareImage2Choice, ui.plotImage1Choice, ui.plotImage2Choice}) {
    AddEntry(choice, name);
  }
}

bool CanCreateAverages(const MainUI& ui) {
  if (ui.RefusedWhileRunning()) { return false; }
  if (ui.userCount < 1) { return true; }  // nothing to make, nothing to say
  if (!CanMeasureUsers(ui, kMaxImages)) { return false; }
  if (Truncated(ui.imageSlider->maximum()) + ui.userCount >= kMaxImages) {
    Refuse("There is no room for the averages: a study holds at most 60 images");
    return false;
  }
  return true;
}

/// A further slot with a copy of the first image. Returns: null, and says so, without memory.
VoxData* AddSlot(MainUI& ui) {
  auto copy = std::make_unique<VoxData>(*ui.images[0]);
  if (copy->seg == nullptr) {
    Refuse("There is no memory for a further average");
    return nullptr;
  }
  ui.imageSlider->maximum(ui.imageSlider->maximum() + 1.0);
  return ui.images[Truncated(ui.imageSlider->maximum())] = copy.release();
}

}  // namespace

void Window3D::CreateAverage() {
  if (!CanCreateAverages(*ui)) { return; }
  const RunningCommand running(*ui);
  const VoxData* shown = ImageAt(*ui, Truncated(ui->imageSlider));
  if (shown == nullptr) { return; }
  TakeWorkingSizes(*this, *shown);
  StartRun(*ui, std::max(ui->userCount, 0) * dimZ, nullptr);
  PanelProgress progress(*ui);
  for (int user = 0; user < ui->userCount; ++user) {
    char text[60];
    std::snprintf(text, sizeof text, "Create average for user %d...", user);
    ShowMessageNow(*ui, text);

    VoxData* average = AddSlot(*ui);
    if (average == nullptr) { break; }
    std::vector<LabelVolume> repeats;
    for (int r = 0; r < ui->slicesPerUser; ++r) {
      repeats.push_back(ui->images[user * ui->slicesPerUser + r]->Labels());
    }
    measure::AverageRepeats(repeats, ui->currentLabel, average->EditableLabels(), progress);
    ui->RedrawViews();
    ui->mainWindow->redraw();
    std::snprintf(text, sizeof text, "average %d", averageCount);
    ++averageCount;
    AddToChoosers(*ui, text);
  }
  ui->HideProgress();
}
