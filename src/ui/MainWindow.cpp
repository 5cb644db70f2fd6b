// The main window: its groups in the order that decides the tree.
#include "ui/Build.h"
#include "ui/Put.h"
#include "view3d/Window3D.h"
#include "views/Segimage.h"

#include <FL/Fl_Group.H>
#include <FL/Fl_Slider.H>

void BuildMainWindow(MainUI& ui) {
  ui.mainWindow = BeginWindow(ui, 893, 813, "Tolvex 1.0");
  ui.mainWindow->callback(HideUnlessEscape);

  // ON PURPOSE: the status lies below the window's edge, so what it says is never seen.
  ui.statusOutput = Put<Fl_Output>({0, 860, 875, 20});
  ui.statusOutput->box(static_cast<Fl_Boxtype>(14));
  ui.statusOutput->color(14);

  ui.mainGroup = Put<Fl_Group>({0, -5, 895, 820});
  BuildToolGroup(ui);
  BuildMenuBar(ui);
  ui.mainGroup->end();

  BuildViewsGroup(ui);
  BuildCentreGroup(ui);
  ui.mainWindow->resizable(ui.centreGroup);
  BuildMeasuresGroup(ui);
  BuildProgressPanel(ui);
  ui.mainWindow->end();
}

void BuildCentreGroup(MainUI& ui) {
  ui.centreGroup = Put<Fl_Group>({135, 305, 255, 505});
  PutRaised({140, 315, 250, 240});
  ui.segimage = Put<Segimage>({145, 320, 240, 230}, "label");
  ui.segimage->end();
  PutRaised({140, 560, 250, 240}, "label");
  ui.window3D = Put<Window3D>({145, 565, 240, 230});
  ui.window3D->end();
  ui.centreGroup->end();
}

void BuildProgressPanel(MainUI& ui) {
  ui.progressPanel = Put<Fl_Group>({390, 325, 335, 100});
  ui.progressPanel->align(9);

  ui.progressBackground = Put<Fl_Box>({395, 330, 330, 90});
  ui.progressBackground->box(FL_ROUND_UP_BOX);

  ui.progressRange = Put<Fl_Slider>({390, 390, 290, 15});
  ui.progressRange->type(FL_HORIZONTAL);
  ui.progressRange->color(136);
  ui.progressRange->step(1);
  ui.progressRange->hide();

  ui.progressText = Put<Fl_Output>({415, 355, 295, 15});
  ui.progressText->box(FL_FLAT_BOX);
  ui.progressText->color(50);
  ui.progressText->labelsize(10);
  ui.progressText->textsize(10);
  ui.progressText->align(FL_ALIGN_LEFT | FL_ALIGN_INSIDE);

  ui.progressTrough = PutFrame({410, 375, 300, 15});

  ui.progressBar = Put<Fl_Box>({410, 380, 295, 10});
  ui.progressBar->box(FL_FLAT_BOX);
  ui.progressBar->color(136);

  ui.progressPanel->end();
  ui.progressPanel->hide();
}
