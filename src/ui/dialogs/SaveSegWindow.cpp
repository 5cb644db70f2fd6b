// Save Seg Data: built for a later command, shown by none. Segmentations are never written.
#include "ui/Build.h"
#include "ui/Modal.h"
#include "ui/Put.h"
#include "ui/dialogs/DialogParts.h"

#include <FL/Fl_Input.H>

#include <cstring>

namespace {

void OnOkay(Fl_Widget* widget, void* /*data*/) {
  MainUI& ui = OwnerOf(widget);
  ui.saveSegWindow->hide();
  const char* name = ui.saveFileNameInput->value();
  if (*name == '\0') { ui.statusOutput->value("No value entered - cannot save"); }
  // ON PURPOSE: it goes on all the same, and nothing is saved.
  const char* slash = std::strrchr(name, '/');
  ui.SetTitleParts(nullptr, slash != nullptr ? slash + 1 : name);
}

void OnSelect(Fl_Widget* widget, void* /*data*/) {
  MainUI& ui = OwnerOf(widget);
  if (const auto path = ChooseFile("Select a File")) { ui.saveFileNameInput->value(path->c_str()); }
}

Fl_Button* PutAnswer(Area area, const char* label, Fl_Callback* callback) {
  auto* button = Put<Fl_Button>(area, label);
  button->down_box(FL_DOWN_BOX);
  button->color(48);
  button->labelfont(FL_HELVETICA_BOLD);
  button->callback(callback);
  return button;
}

}  // namespace

void BuildSaveSegWindow(MainUI& ui) {
  ui.saveSegWindow = BeginWindow(ui, 387, 170, "Save Seg Data");
  dialogs::StyleWindow(ui.saveSegWindow, 45, FL_COURIER_BOLD);

  ui.saveFileNameInput = Put<Fl_Input>({105, 35, 180, 25}, "FileName");
  ui.saveFileNameInput->labelfont(FL_HELVETICA_BOLD);
  ui.saveOkayButton = PutAnswer({70, 100, 100, 40}, "Okay", OnOkay);
  ui.saveCancelButton = PutAnswer({230, 100, 100, 40}, "Cancel", HideOwnWindow);
  auto* select = Put<Fl_Button>({285, 35, 45, 25}, "select");
  select->down_box(FL_UP_BOX);
  select->labelsize(10);
  select->callback(OnSelect);
  ui.saveSegWindow->end();
}
