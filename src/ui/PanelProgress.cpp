#include "ui/PanelProgress.h"

#include "ui/MainUI.h"

#include <iostream>

void PanelProgress::Step() { ui.StepProgress(); }
void PanelProgress::ShowMessage(const char* text) { ui.ShowProgressMessage(text); }
void PanelProgress::Print(const char* line) { std::cout << line << std::endl; }
