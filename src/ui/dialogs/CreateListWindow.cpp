// Create List: composes, saves and reads back a script list file.
#include "VoxData/ImageLoader.h"
#include "VoxData/ScriptList.h"
#include "ui/Build.h"
#include "ui/Fields.h"
#include "ui/Modal.h"
#include "ui/Put.h"

#include <FL/Fl_Input.H>
#include <FL/Fl_Output.H>
#include <FL/Fl_Value_Input.H>

#include <iostream>
#include <string>

namespace {

void OnLoadOriginal(Fl_Widget* widget, void* /*data*/) {
  if (const auto path = ChooseFile("Select a File")) {
    OwnerOf(widget).listOriginalInput->value(path->c_str());
  }
}

void OnLoadSeg(Fl_Widget* widget, void* /*data*/) {
  MainUI& ui = OwnerOf(widget);
  if (*ui.listOriginalInput->value() == '\0') {
    Refuse("You must select an original image before");
    return;
  }
  const auto path = ChooseFile("Select a File");
  if (!path) { return; }
  const std::string text = std::string(ui.listSegsInput->value()) + *path + "\n";
  if (text.size() >= static_cast<std::size_t>(kMaxListText)) {
    Refuse("The list of segmentations may have at most 9,999 characters");
    return;
  }
  ui.listSegsInput->value(text.c_str());
  ui.listNbSegInput->value(ui.listNbSegInput->value() + 1.0);
}

void OnSaveList(Fl_Widget* widget, void* /*data*/) {
  const MainUI& ui = OwnerOf(widget);
  auto path = ChooseFile("Select a File", "*.tlx");
  if (!path) { return; }
  if (path->find(".tlx") == std::string::npos) { *path += ".tlx"; }
  const std::string problem =
      script::WriteList(*path, Truncated(ui.listNbUserInput), Truncated(ui.listNbSegInput),
                        ui.listOriginalInput->value(), ui.listSegsInput->value());
  if (problem.empty()) { return; }
  std::cerr << problem << std::endl;
  ui.statusOutput->value(problem.c_str());
  Refuse(problem.c_str());
}

void OnLoadList(Fl_Widget* widget, void* /*data*/) {
  MainUI& ui = OwnerOf(widget);
  const auto path = ChooseFile("Select a File", "*.tlx");
  if (!path) { return; }
  script::ListTexts texts;
  const std::string problem = script::ReadListTexts(path->c_str(), texts);
  if (!problem.empty()) {
    Refuse(problem.c_str());
    return;
  }
  if (texts.hasUsers) { ui.listNbUserInput->value(texts.userCount); }
  if (texts.hasRepeats) { ui.listNbSegInput->value(texts.slicesPerUser); }
  if (texts.hasOriginal) { ui.listOriginalInput->value(texts.original.c_str()); }
  if (texts.hasSegs) { ui.listSegsInput->value(texts.segs.c_str()); }
}

void OnLoad(Fl_Widget* widget, void* /*data*/) {
  MainUI& ui = OwnerOf(widget);
  ui.createListWindow->hide();
  ui.loader->LoadScript();
}

struct ListButton {
  Fl_Button* MainUI::*member;
  Area area;
  const char* label;
  Fl_Callback* callback;
};

// clang-format off
const ListButton kButtons[] = {
  {&MainUI::listLoadOrigButton, {  5, 320, 75, 20}, "Load Orig.", OnLoadOriginal},
  {&MainUI::listLoadSegButton,  { 80, 320, 75, 20}, "Load Seg",   OnLoadSeg},
  {&MainUI::listSaveButton,     {235, 320, 75, 20}, "Save List",  OnSaveList},
  {&MainUI::listLoadListButton, {155, 320, 80, 20}, "Load List",  OnLoadList},
  {&MainUI::listCloseButton,    {380, 320, 70, 20}, "Close",      HideOwnWindow},
};
// clang-format on

Fl_Value_Input* PutNumber(Area area, const char* label) {
  auto* input = Put<Fl_Value_Input>(area, label);
  input->labelsize(12);
  input->textsize(12);
  return input;
}

}  // namespace

void BuildCreateListWindow(MainUI& ui) {
  ui.createListWindow = BeginWindow(ui, 625, 349, "Create List");
  ui.createListWindow->callback(HideUnlessEscape);  // the menu entry shows it empty again
  PutFrame({0, 315, 625, 30});
  ui.listNbUserInput = PutNumber({500, 320, 25, 20}, "nb user:");
  ui.listNbUserInput->value(1);
  ui.listNbSegInput = PutNumber({595, 320, 25, 20}, "nb seg/user");
  PutRound({310, 320, 70, 20}, "Load", OnLoad);
  ui.listOriginalInput = Put<Fl_Input>({75, 0, 550, 20}, "Original image:");
  ui.listOriginalInput->labelsize(10);
  ui.listOriginalInput->textsize(11);
  ui.listSegsInput = Put<Fl_Input>({0, 20, 625, 295});
  ui.listSegsInput->type(FL_MULTILINE_INPUT);
  ui.listSegsInput->labelsize(11);
  ui.listSegsInput->textsize(11);
  ui.listSegsInput->maximum_size(kMaxListText - 1);
  for (const ListButton& row : kButtons) {
    ui.*row.member = PutRound(row.area, row.label, row.callback);
  }
  ui.createListWindow->end();
}
