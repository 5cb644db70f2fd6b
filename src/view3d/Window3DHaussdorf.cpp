// Window3D: Hausdorff distance of Image 1 and Image 2.
#include "ui/Fields.h"
#include "ui/MainUI.h"
#include "ui/PanelProgress.h"
#include "ui/StudyChecks.h"
#include "view3d/CommandSupport.h"
#include "view3d/Window3D.h"
#include "view3d/volumemeasures/VolumeHaussdorf.h"

#include <FL/Fl_Button.H>
#include <FL/Fl_Output.H>

void Window3D::ComputeHaussdorf3D() {
  const RunningCommand running(*ui);
  if (running.Refused()) { return; }
  const ChosenPair pair = TakeVolumePair(*ui);
  if (!pair.ok) { return; }
  WarnIfLabelMissing(*ui, *pair.image1, "Image 1");
  WarnIfLabelMissing(*ui, *pair.image2, "Image 2");
  VoxData& picture = *ui->displayVolume1;
  const int label = ui->currentLabel;  // another one may be chosen while events are handled

  SetupView();
  ClearAllSurfaces();
  TakeWorkingSizes(*this, SliderImage(*ui));
  StartRun(*ui, (dimZ + dimX) * 4 - 6, "Starting Haussdorf 3D");
  if (!NewScalars(*ui, picture)) {
    ui->HideProgress();
    return;
  }
  const LabelVolume a = pair.image1->Labels();
  const LabelVolume b = pair.image2->Labels();
  PanelProgress progress(*ui);
  RunTransform(pair.index1, label, progress);
  // ON PURPOSE: the message stands during the pass whose result is shown under "B->A: :", and
  // that pass leaves out the first and the last plane.
  ui->ShowProgressMessage("Computing Haussdorf distance A->B");
  const float maxBtoA = measure::LargestDistance(b, label, Field(), 1, dimX - 2, progress);
  RunTransform(pair.index2, label, progress);
  ui->ShowProgressMessage("Computing Haussdorf distance B->A");
  const measure::FarVoxel far = measure::FindFarVoxel(a, label, Field(), progress);
  ShowMessageNow(*ui, "Computing display points");
  measure::PaintDistances(a, label, Field(), far, picture.Work().WithNewScalars());
  picture.AttachWorkScalars();

  SetField(ui->haussdorf3DABOutput, "%f", static_cast<double>(far.distance));
  SetField(ui->haussdorf3DBAOutput, "%f", static_cast<double>(maxBtoA));
  SetField(ui->haussdorf3DOutput, "%f",
           static_cast<double>(maxBtoA > far.distance ? maxBtoA : far.distance));

  displayedSurfaces = 2;
  ExtractWithOptions(&picture, 1);
  redraw();
  ui->HideProgress();
  ui->updateColorButton->deactivate();
  ShowLegend(*ui, 0, {"Max Outside", "", "", "", "0"});
}
