// Window3D: the distance transform, and the region within a distance of the label.
#include "ui/Fields.h"
#include "ui/MainUI.h"
#include "ui/PanelProgress.h"
#include "ui/StudyChecks.h"
#include "view3d/CommandSupport.h"
#include "view3d/Window3D.h"
#include "view3d/volumemeasures/DistanceRegion.h"
#include "view3d/volumemeasures/DistanceTransform.h"

#include <FL/Fl_Button.H>
#include <FL/Fl_Slider.H>

#include <iostream>

void Window3D::ComputeDanielsson3D(int imageIndex) {
  const VoxData* image = ImageAt(*ui, imageIndex);
  if (!CanMeasureVolume(*ui, image)) { return; }
  PanelProgress progress(*ui);
  RunTransform(imageIndex, ui->currentLabel, progress);
}

void Window3D::RunTransform(int imageIndex, int label, Progress& progress) {
  const VoxData& image = *ui->images[imageIndex];
  transformStarted = 1;
  // The voxel size of slot 0 is used for every image, so that all distances share one unit.
  float spacing[3];
  ui->images[0]->GetSpacing(spacing);
  TakeWorkingSizes(*this, image);
  measure::ComputeDistanceTransform(image.Labels(), label, {spacing[0], spacing[1], spacing[2]},
                                    Field(), progress);
}

void Window3D::DisplayDanielsson3D() {
  const RunningCommand running(*ui);
  if (running.Refused()) { return; }
  const int shown = Truncated(ui->imageSlider);
  VoxData* image = ImageAt(*ui, shown);
  if (!CanMeasureVolume(*ui, image)) { return; }
  WarnIfLabelMissing(*ui, *image, "the image on show");
  const VoxData& first = *ui->images[0];
  VoxData& picture = *ui->displayVolume1;

  StartRun(*ui, 2 * (first.GetDimX() + first.GetDimZ()) - 3,
           "Starting Display of Danielsson 3D...");
  SetupView();
  ClearAllSurfaces();
  if (!NewScalars(*ui, picture)) {
    ui->HideProgress();
    return;
  }
  ui->updateColorButton->deactivate();
  surfaces[0].ClearSurfaces();
  TakeWorkingSizes(*this, *image);
  ComputeDanielsson3D(shown);

  std::cout << "Display Danielsson 3D" << std::endl;
  ui->ShowProgressMessage("Computing display points");
  PanelProgress progress(*ui);
  measure::PaintDistanceRegion(Field(), ui->danielsson3DSlider->value(), picture.Work(), progress);

  picture.AttachWorkScalars();
  displayedSurfaces = 1;
  ShowMessageNow(*ui, "Computing point...");
  ExtractWithOptions(&picture, 1);
  redraw();
  ui->HideProgress();
}
