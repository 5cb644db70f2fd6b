// Progress of a kernel, shown in the progress panel.
#pragma once

#include "base/Progress.h"

class MainUI;

/// Step moves the bar and lets the toolkit handle waiting events.
class PanelProgress : public Progress {
public:
  explicit PanelProgress(MainUI& owner) : ui(owner) {}
  void Step() override;
  void ShowMessage(const char* text) override;
  void Print(const char* line) override;  ///< the line and a line end, flushed

private:
  MainUI& ui;
};
