// ImageLoader: a whole study from a script list file.
#include "VoxData/ImageLoader.h"
#include "VoxData/ScriptList.h"
#include "VoxData/VoxData.h"
#include "VoxData/loading/FlowSteps.h"
#include "app/Globals.h"
#include "app/ViewState.h"
#include "ui/MainUI.h"
#include "ui/Modal.h"

#include <FL/Fl.H>
#include <FL/Fl_Box.H>
#include <FL/Fl_Choice.H>
#include <FL/Fl_Group.H>
#include <FL/Fl_Output.H>
#include <FL/Fl_Slider.H>

#include <cstdlib>
#include <cstring>
#include <iostream>

int ImageLoader::LoadGreyScripted(const char* path) {
  if (std::strstr(path, ".gipl") != nullptr) { ipReadGiplHeader(path); }
  viewState->SetCursor(0, 0, 0);
  if (RunGreyFlow(path, Flow::Scripted) != 0) { return -1; }
  GrowBar();
  ui->progressText->value("Allocate Memory...");
  ui->SetTitleParts(LastComponent(path), nullptr);
  return 0;
}

int ImageLoader::LoadSegScripted(const char* path) {
  if (!HoldsImageName(path)) { return 0; }
  segHeaderSize = 256;
  std::snprintf(statusText, sizeof statusText, "Opening Segmentation Data..... %s", path);
  ui->progressText->value(statusText);
  Fl::check();
  if (RunSegFlow(path, Flow::Scripted) != 1) { return -1; }
  GrowBar();
  ui->progressText->value("Allocating memory...");
  Fl::check();
  ui->SetTitleParts(nullptr, LastComponent(path));
  return 0;
}

int ImageLoader::LoadScript() {
  if (ui->RefusedWhileRunning()) { return -1; }
  firstGrey = 1;
  progressWidth = 0;
  ui->scriptImageCount = 0;
  const auto chosen = ChooseFile("Select a File", "*.tlx");
  if (!chosen) { return -1; }
  std::free(listPath);
  listPath = strdup(chosen->c_str());

  script::StudyList list;
  const std::string problem = script::ReadStudyList(listPath, list);
  if (!problem.empty()) {
    // ON PURPOSE: a file that cannot be opened leaves an empty study; a list that is refused for
    // what it says leaves the study that was there.
    if (!list.opened) { ResetStudy(); }
    Refuse(problem.c_str());
    return -1;
  }
  const RunningCommand running(*ui);
  ResetStudy();
  greyPath[0] = '\0';  // that of a study before, which no slot of this one shares
  ui->userCount = list.userCount;
  ui->slicesPerUser = list.slicesPerUser;
  ui->usersOutput->value(list.users.c_str());
  ui->scriptImageCount = list.imageLines;
  ui->StartProgress(3 * ui->scriptImageCount - 3);
  Fl::check();
  std::cout << "Opening script file..." << std::endl;
  ui->slicesOutput->value(list.repeats.c_str());
  ui->overlayIntraSlider->maximum(ui->userCount - 1.0);
  const int result = LoadListedImages(list.greyPath, list.segPaths);
  if (result == 0) { FinishScript(list.segPaths); }
  ui->HideProgress();
  Fl::check();
  if (result == 0) { std::cout << "All files are loading successfully !" << std::endl; }
  return result;
}

int ImageLoader::LoadListedImages(const std::string& grey, const std::vector<std::string>& segs) {
  for (const std::string& seg : segs) {
    // The grey volume is read at the first segmentation; later ones only add slots.
    if (LoadGreyScripted(grey.c_str()) != 0 || LoadSegScripted(seg.c_str()) != 0) { return -1; }
    AddToImageMenus(seg.c_str());
  }
  return 0;
}

void ImageLoader::FinishScript(const std::vector<std::string>& segs) {
  RebuildLabelMenus();
  Fl_Box& bar = *ui->progressBar;
  bar.resize(bar.x(), bar.y(), 290, 10);
  bar.redraw();
  ui->currentLabel = ui->labelList[0];
  if (segs.empty()) { return; }  // no image: nothing to choose among
  SelectFirstEntries();
  const std::string entry =
      std::string(LastComponent(segs.back().c_str())).substr(0, kMaxEntryLabel);
  ui->currentImageOutput->value(entry.c_str());
}
