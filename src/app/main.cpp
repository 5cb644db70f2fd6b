// Starts the program, runs it until its last window closes, and gives its objects back.
#include "app/Globals.h"
#include "app/ViewState.h"
#include "ui/MainUI.h"

#include <FL/Fl.H>

#include <iostream>

int main() {
  std::cout << "TOLVEX version 1.0" << std::endl;
  viewState = new ViewState;
  referenceState = new ViewState;
  mainUI = new MainUI;
  Fl::visual(FL_DOUBLE | FL_INDEX);
  mainUI->ShowAll();
  Fl::run();
  delete mainUI;
  delete viewState;
  return 0;
}
