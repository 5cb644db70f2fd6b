// Load Grey Data.
#include "VoxData/ImageLoader.h"
#include "ui/Build.h"
#include "ui/Modal.h"
#include "ui/Put.h"
#include "ui/dialogs/DialogParts.h"

#include <FL/Fl_Choice.H>
#include <FL/Fl_Input.H>
#include <FL/Fl_Value_Input.H>

#include <string>

namespace {

struct NumberField {
  Fl_Value_Input* MainUI::*member;
  Area area;
  const char* label;
  double maximum;  ///< soft: a typed value above it is taken
};

// clang-format off
const NumberField kSizeFields[] = {
  {&MainUI::greyHeaderSizeInput, {100, 45, 50, 20}, "Size of header", 10000},
  {&MainUI::greyXdimInput,       {190, 45, 50, 20}, "Xdim",           10000},
  {&MainUI::greyYdimInput,       {280, 45, 50, 20}, "Ydim",           10000},
  {&MainUI::greyZdimInput,       {375, 45, 50, 20}, "Zdim",           10000},
};

const NumberField kValueFields[] = {
  {&MainUI::greyBytesInput,      {100, 70, 40, 20}, "# of Bytes:",      500},
  {&MainUI::greyMinValInput,     {225, 70, 65, 20}, "Min Val",          500},
  {&MainUI::greyMaxValInput,     {365, 70, 60, 20}, "MaxVal",           500},
  {&MainUI::greyXspacingInput,   {100, 95, 50, 20}, "Xspacing",       10000},
  {&MainUI::greyYspacingInput,   {240, 95, 50, 20}, "Yspacing",       10000},
  {&MainUI::greyZspacingInput,   {375, 95, 50, 20}, "Zspacing",       10000},
};

const Fl_Menu_Item kLeftRight[] = {
  {"left",   0, nullptr, nullptr, 0, FL_NORMAL_LABEL, FL_HELVETICA, 10, 4},
  {"right",  0, nullptr, nullptr, 0, FL_NORMAL_LABEL, FL_HELVETICA, 10, 4},
  {nullptr,  0, nullptr, nullptr, 0, 0, 0, 0, 0},
};
const Fl_Menu_Item kBottomTop[] = {
  {"bottom", 0, nullptr, nullptr, 0, FL_NORMAL_LABEL, FL_HELVETICA, 10, 4},
  {"top",    0, nullptr, nullptr, 0, FL_NORMAL_LABEL, FL_HELVETICA, 10, 4},
  {nullptr,  0, nullptr, nullptr, 0, 0, 0, 0, 0},
};
const Fl_Menu_Item kBackFront[] = {
  {"back",   0, nullptr, nullptr, 0, FL_NORMAL_LABEL, FL_HELVETICA, 10, 4},
  {"front",  0, nullptr, nullptr, 0, FL_NORMAL_LABEL, FL_HELVETICA, 10, 4},
  {nullptr,  0, nullptr, nullptr, 0, 0, 0, 0, 0},
};
// clang-format on

void OnLoad(Fl_Widget* widget, void* /*data*/) {
  MainUI& ui = OwnerOf(widget);
  ui.loadGreyWindow->hide();
  ui.loader->StartGreyLoad();
}

void OnSelect(Fl_Widget* widget, void* /*data*/) {
  MainUI& ui = OwnerOf(widget);
  const auto path = ChooseFile("Select a File");
  if (!path) { return; }
  ui.greyFileNameInput->value(path->c_str());
  // ON PURPOSE: the text may stand anywhere in the path, in the name of a folder as well.
  if (path->find(".gipl") != std::string::npos) { ipReadGiplHeader(path->c_str()); }
  if (path->find(".mha") != std::string::npos) { FillDialogFromMetaImage(path->c_str()); }
}

void PutNumber(MainUI& ui, const NumberField& row) {
  auto* field = dialogs::PutBold<Fl_Value_Input>(row.area, row.label);
  field->textsize(12);
  field->minimum(0);
  field->maximum(row.maximum);
  ui.*row.member = field;
}

Fl_Choice* PutOrigin(Area area, const char* label, const Fl_Menu_Item* items, int labelSize) {
  auto* choice = dialogs::PutBold<Fl_Choice>(area, label);
  choice->labelsize(labelSize);
  choice->textsize(10);
  choice->menu(items);
  return choice;
}

}  // namespace

void BuildLoadGreyWindow(MainUI& ui) {
  ui.loadGreyWindow = BeginWindow(ui, 447, 211, "Load Grey Data");
  dialogs::StyleWindow(ui.loadGreyWindow, 48, FL_HELVETICA_BOLD);

  ui.greyFileNameInput = dialogs::PutBold<Fl_Input>({100, 20, 275, 20}, "FileName");
  ui.greyFileNameInput->textsize(12);
  for (const NumberField& row : kSizeFields) { PutNumber(ui, row); }
  ui.greyLoadButton = dialogs::PutBoldRound({115, 170, 95, 30}, "Load", OnLoad);
  ui.greyCancelButton = dialogs::PutBoldRound({230, 170, 95, 30}, "Cancel", HideOwnWindow);
  for (const NumberField& row : kValueFields) { PutNumber(ui, row); }
  PutRound({385, 15, 45, 25}, "Select", OnSelect, nullptr, 10)->labelfont(FL_HELVETICA_BOLD);
  ui.greyOriginXChoice = PutOrigin({115, 125, 70, 25}, "Origin", kLeftRight, 12);
  ui.greyOriginYChoice = PutOrigin({225, 125, 70, 25}, nullptr, kBottomTop, 10);
  ui.greyOriginZChoice = PutOrigin({330, 125, 70, 25}, nullptr, kBackFront, 10);
  ui.loadGreyWindow->end();
}
