// MainUI: the progress panel.
#include "ui/Fields.h"
#include "ui/MainUI.h"
#include "view3d/Window3D.h"

#include <FL/Fl.H>
#include <FL/Fl_Box.H>
#include <FL/Fl_Group.H>
#include <FL/Fl_Output.H>
#include <FL/Fl_Slider.H>

namespace {

constexpr double kFullBar = 290.0;  // pixels at the end of a job

void SetBarWidth(const MainUI& ui, int width) {
  Fl_Box& bar = *ui.progressBar;
  bar.resize(bar.x(), bar.y(), width, bar.h());
  bar.redraw();
}

}  // namespace

void MainUI::StartProgress(int steps) {
  progressPanel->show();
  progressRange->maximum(steps);
  progressRange->value(0);
  SetBarWidth(*this, 0);
  window3D->progressWidth = 0.0F;
  progressPanel->redraw();
}

void MainUI::StepProgress() {
  const double steps = progressRange->maximum();
  if (steps > 0) {  // a job of no steps has no width to add
    float& width = window3D->progressWidth;
    width = static_cast<float>(width + kFullBar / steps);
    SetBarWidth(*this, Truncated(width));
    progressTrough->redraw();
  }
  Fl::check();
}

void MainUI::ShowProgressMessage(const char* text) { progressText->value(text); }

void MainUI::HideProgress() { progressPanel->hide(); }
