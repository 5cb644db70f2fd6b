// RandomUser: the actions on studies and windows.
#include "tests/support/Interface.h"
#include "tests/support/LastActions.h"
#include "tests/support/RandomUser.h"

#include <FL/Fl_Button.H>
#include <FL/Fl_Check_Button.H>
#include <FL/Fl_Round_Button.H>

void RandomUser::LoadAList() {
  if (!MainIsShown()) { return; }
  files.WriteLists();
  nextAnswer = dice.OneIn(5) ? dice.Of(files.badFiles) : dice.Of(files.goodLists);
  last_actions::Note("%d/%d: load the list \"%.60s\"", number, depth, nextAnswer->c_str());
  Interface::Menu("File/Load/Selection File");
  nextAnswer.reset();
}

void RandomUser::LoadByHand() {
  if (!MainIsShown()) { return; }
  const bool grey = dice.OneIn(3);
  last_actions::Note("%d/%d: load %s by hand", number, depth, grey ? "grey" : "labels");
  Interface::Menu(grey ? "File/Load/GreyRawFile" : "File/Load/SegRawFile");
  Fl_Window* dialog = grey ? mainUI->loadGreyWindow : mainUI->loadSegWindow;
  nextAnswer = AnyFile();
  Interface::Click(Interface::ButtonByLabel(dialog, grey ? "Select" : "select"));
  nextAnswer.reset();
  Interface::Click(grey ? mainUI->greyLoadButton : mainUI->segLoadButton);
}

/// The list of pairs outlives its study, and is refused then: it is made anew.
void RandomUser::CompareAFewPairs() {
  if (!MainIsShown() || mainUI->imageCount < 2) { return; }
  const MainUI& ui = *mainUI;
  Fl_Button* const stages[] = {ui.compareOverlayCheck, ui.compareHaussdorfCheck,
                               ui.compareSurfaceDistCheck, ui.compareAlwaysWriteButton};
  Fl_Button* const commands[] = {ui.compareComputeButton, ui.compareComputeButton,
                                 ui.compareSurfaceHistoButton, ui.compareExportButton};
  Fl_Button* command = commands[dice.Below(4)];
  last_actions::Note("%d/%d: compare a few pairs by %s", number, depth, command->label());
  ui.compareWindow->show();
  Interface::Click(Interface::ButtonByLabel(ui.compareWindow, "Clear Field"));
  Interface::Click(dice.OneIn(4) ? ui.compareAllButton : ui.compareAddButton);
  Interface::Click(stages[dice.Below(4)]);
  Interface::Click(command);
}

void RandomUser::ComposeAList() {
  if (!MainIsShown()) { return; }
  const MainUI& ui = *mainUI;
  if (ui.createListWindow->shown() == 0 || dice.OneIn(4)) { Interface::Menu("File/Create File"); }
  Fl_Button* const buttons[] = {ui.listLoadOrigButton, ui.listLoadSegButton, ui.listLoadSegButton,
                                ui.listSaveButton, ui.listLoadListButton};
  Fl_Button* button = buttons[dice.Below(5)];
  last_actions::Note("%d/%d: compose a list by %s", number, depth, button->label());
  Interface::Click(button);
}

/// Also those that no command shows.
void RandomUser::ShowAWindow() {
  const MainUI& ui = *mainUI;
  Fl_Window* const windows[] = {ui.loadGreyWindow,   ui.loadSegWindow, ui.saveSegWindow,
                                ui.compareWindow,    ui.compareWindow, ui.resultsWindow,
                                ui.createListWindow, ui.optionsWindow, ui.plotWindow};
  Fl_Window* window = windows[dice.Below(static_cast<int>(std::size(windows)))];
  if (ShownWindows().empty()) { return; }
  last_actions::Note("%d/%d: show \"%s\"", number, depth, window->label());
  window->show();
}

void RandomUser::CloseAWindow() {
  const std::vector<Fl_Window*> shown = ShownWindows();
  if (shown.empty()) { return; }
  Fl_Window* window = dice.Of(shown);
  if (window == mainUI->mainWindow && !dice.OneIn(20)) { return; }
  last_actions::Note("%d/%d: close \"%s\"", number, depth, window->label());
  Fl::handle(FL_CLOSE, window);
}

void RandomUser::ResizeAWindow() {
  const std::vector<Fl_Window*> shown = ShownWindows();
  if (shown.empty()) { return; }
  Fl_Window* window = dice.Of(shown);
  const int w = 1 + dice.Below(1200);
  const int h = 1 + dice.Below(1000);
  last_actions::Note("%d/%d: size %d, %d of \"%s\"", number, depth, w, h, window->label());
  const int oldW = window->w();
  const int oldH = window->h();
  window->size(w, h);
  if (depth == 1) { Fl::check(); }
  window->size(oldW, oldH);
}

void RandomUser::Quit() {
  if (!MainIsShown()) { return; }
  if (!dice.OneIn(3)) { return; }
  last_actions::Note("%d/%d: quit", number, depth);
  Interface::Menu("File/Quit");
}
