// Window3D: probability map of all users.
#include "ui/Fields.h"
#include "ui/MainUI.h"
#include "ui/Modal.h"
#include "ui/PanelProgress.h"
#include "ui/StudyChecks.h"
#include "view3d/CommandSupport.h"
#include "view3d/Window3D.h"
#include "view3d/volumemeasures/ProbabilityMap.h"

#include <FL/Fl_Button.H>
#include <FL/Fl_Output.H>
#include <FL/Fl_Slider.H>

#include <iostream>

void Window3D::ComputeProbabilityMap() {
  const RunningCommand running(*ui);
  if (running.Refused() || !CanMeasureUsers(*ui, kMaxVolumeUsers)) { return; }
  const int count = ui->userCount * ui->slicesPerUser;
  if (count < 2) {
    Refuse("A probability map needs at least two segmentations");
    return;
  }
  if (!CanMeasureVolume(*ui, ImageAt(*ui, 0)) ||
      !CanMeasureVolume(*ui, ImageAt(*ui, Truncated(ui->imageSlider)))) {
    return;
  }
  VoxData& picture = *ui->displayVolume1;

  SetupView();
  std::cout << "Probality Map" << std::endl;
  TakeWorkingSizes(*this, SliderImage(*ui));
  StartRun(*ui, dimX, "Starting 3D probabilty map...");
  if (!NewScalars(*ui, picture)) {
    ui->HideProgress();
    return;
  }
  std::vector<LabelVolume> images;
  for (int slot = 0; slot < count; ++slot) { images.push_back(ui->images[slot]->Labels()); }
  PanelProgress progress(*ui);
  const double overlap =
      measure::PaintProbability(images, ui->userCount, ui->slicesPerUser, ui->currentLabel,
                                picture.Work().WithNewScalars(), progress);
  picture.AttachWorkScalars();
  SetField(ui->probaOverlapOutput, "%f", overlap);
  redraw();
  ShowMessageNow(*ui, "Computing point...");
  BuildSurface(&picture, 1);
  redraw();  // the events before it have drawn the view without the new surface
  ui->updateColorButton->deactivate();
  ShowLegend(*ui, 0, {"High Probability", "", "", "", "Low Probability"});
  ui->HideProgress();
}
