// The callbacks of the menu.
#include "VoxData/ImageLoader.h"
#include "ui/ColorLegend.h"
#include "ui/Commands.h"
#include "ui/FirstSteps.h"
#include "ui/Put.h"

#include <FL/Fl.H>
#include <FL/Fl_Input.H>
#include <FL/Fl_Value_Input.H>

void OnMenuGreyFile(Fl_Widget* widget, void* /*data*/) { OwnerOf(widget).loadGreyWindow->show(); }
void OnMenuSegFile(Fl_Widget* widget, void* /*data*/) { OwnerOf(widget).loadSegWindow->show(); }
void OnMenuScript(Fl_Widget* widget, void* /*data*/) { OwnerOf(widget).loader->LoadScript(); }

void OnMenuCreateFile(Fl_Widget* widget, void* /*data*/) {
  MainUI& ui = OwnerOf(widget);
  ui.createListWindow->show();
  ui.listOriginalInput->value("");
  ui.listSegsInput->value("");
  ui.listNbUserInput->value(1.0);
  ui.listNbSegInput->value(0.0);
}

void OnMenuOptions(Fl_Widget* widget, void* /*data*/) { OwnerOf(widget).optionsWindow->show(); }

void OnMenuRefresh(Fl_Widget* widget, void* /*data*/) {
  MainUI& ui = OwnerOf(widget);
  // ON PURPOSE: the legend leaves its place beside its texts and stays there.
  ui.colorLegend->resize(20, 595, 15, 200);
  ui.colorLegend->DrawNow();
  if (ui.mainWindow->shown() != 0) { ui.colorLegend->show(); }  // not before its window
  ui.mainWindow->redraw();
  Fl::check();
}

void OnMenuQuit(Fl_Widget* widget, void* /*data*/) { OwnerOf(widget).Quit(); }
void OnMenuFirstSteps(Fl_Widget* widget, void* /*data*/) { ShowFirstSteps(OwnerOf(widget)); }
void OnMenuAbout(Fl_Widget* widget, void* /*data*/) { OwnerOf(widget).aboutWindow->show(); }
