// What the progress panel shows whenever events are handled.
#pragma once

#include "ui/MainUI.h"

#include <FL/Fl.H>
#include <FL/Fl_Box.H>
#include <FL/Fl_Group.H>
#include <FL/Fl_Output.H>

#include <string>
#include <utility>
#include <vector>

/// Watches for as long as it lives.
class PanelWatch {
public:
  std::vector<std::pair<std::string, int>> states;  ///< text and width of the bar, each once

  explicit PanelWatch(const MainUI& shown) : ui(shown) { Fl::add_check(Look, this); }
  PanelWatch(const PanelWatch&) = delete;
  PanelWatch& operator=(const PanelWatch&) = delete;
  ~PanelWatch() { Fl::remove_check(Look, this); }

private:
  static void Look(void* data) {
    auto& self = *static_cast<PanelWatch*>(data);
    if (self.ui.progressPanel->visible() == 0) { return; }
    std::pair<std::string, int> now = {self.ui.progressText->value(), self.ui.progressBar->w()};
    if (self.states.empty() || self.states.back() != now) { self.states.push_back(std::move(now)); }
  }

  const MainUI& ui;
};
