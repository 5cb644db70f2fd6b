// Load Seg Data.
#include "VoxData/ImageLoader.h"
#include "ui/Build.h"
#include "ui/Modal.h"
#include "ui/Put.h"
#include "ui/dialogs/DialogParts.h"

#include <FL/Fl_Input.H>
#include <FL/Fl_Value_Input.H>

#include <string>

namespace {

void OnLoad(Fl_Widget* widget, void* /*data*/) {
  MainUI& ui = OwnerOf(widget);
  ui.loadSegWindow->hide();
  ui.loader->LoadSeg();
}

void OnSelect(Fl_Widget* widget, void* /*data*/) {
  MainUI& ui = OwnerOf(widget);
  const auto path = ChooseFile("Select a File");
  if (!path) { return; }
  ui.segFileNameInput->value(path->c_str());
  if (path->find(".gipl") != std::string::npos) { SetSegHeaderSize(); }
}

}  // namespace

void BuildLoadSegWindow(MainUI& ui) {
  ui.loadSegWindow = BeginWindow(ui, 350, 134, "Load Seg Data");
  dialogs::StyleWindow(ui.loadSegWindow, 48, FL_COURIER_BOLD);

  ui.segFileNameInput = dialogs::PutBold<Fl_Input>({70, 20, 205, 20}, "FileName");
  ui.segFileNameInput->textsize(12);
  ui.segLoadButton = dialogs::PutBoldRound({75, 100, 85, 25}, "Load", OnLoad);
  ui.segCancelButton = dialogs::PutBoldRound({190, 100, 80, 25}, "Cancel", HideOwnWindow);
  PutRound({285, 15, 50, 25}, "select", OnSelect, nullptr, 10);
  ui.segHeaderSizeInput = dialogs::PutBold<Fl_Value_Input>({180, 55, 65, 20}, "Size of header");
  ui.segHeaderSizeInput->maximum(10000);
  ui.segHeaderSizeInput->textsize(12);
  ui.loadSegWindow->end();
}
