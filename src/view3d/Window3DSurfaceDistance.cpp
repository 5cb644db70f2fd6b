// Window3D: signed surface distance of Image 2 from Image 1, and its colours.
#include "ui/Fields.h"
#include "ui/MainUI.h"
#include "ui/PanelProgress.h"
#include "ui/StudyChecks.h"
#include "view3d/CommandSupport.h"
#include "view3d/Window3D.h"
#include "view3d/Window3DWork.h"
#include "view3d/volumemeasures/Shell.h"
#include "view3d/volumemeasures/SurfaceDistance.h"

#include <FL/Fl_Button.H>
#include <FL/Fl_Check_Button.H>
#include <FL/Fl_Input.H>
#include <FL/Fl_Output.H>
#include <FL/Fl_Roller.H>
#include <FL/Fl_Slider.H>

#include <iostream>

namespace {

/// Three fields of one list: positions count from 1, and one that does not exist reads as 0.
void WriteQuartiles(FloatList& list, Fl_Output* median, Fl_Output* first, Fl_Output* third) {
  list.Sort();
  const int n = list.Size();
  SetField(median, "%f", static_cast<double>(list.GetValue((n + 1) / 2)));
  SetField(first, "%f", static_cast<double>(list.GetValue((n + 1) / 4)));
  SetField(third, "%f", static_cast<double>(list.GetValue((3 * n + 3) / 4)));
}

void WriteSide(const measure::SurfaceSide& side, Fl_Input* max, Fl_Output* sum, Fl_Output* count,
               Fl_Output* average, const char* averageFormat) {
  SetField(max, "%f", static_cast<double>(side.max));
  SetField(sum, "%f", static_cast<double>(side.sum));
  SetField(count, "%d", side.count);
  SetField(average, averageFormat, static_cast<double>(side.sum) / side.count);
}

void WriteDistances(const MainUI& ui, const measure::SurfaceDistance& distance) {
  const auto& [inside, outside] = distance;
  WriteSide(outside, ui.maxOutsideInput, ui.sumDistOutsideOutput, ui.nbPixelOutsideOutput,
            ui.avgOutsideOutput, "%.6f");
  WriteSide(inside, ui.maxInsideInput, ui.sumDistInsideOutput, ui.nbPixelInsideOutput,
            ui.avgInsideOutput, "%f");
  const float sum = inside.sum + outside.sum;
  const int count = inside.count + outside.count;
  SetField(ui.sumDistOutput, "%f", static_cast<double>(sum));
  SetField(ui.nbPixelTotalOutput, "%d", count);
  SetField(ui.avgDistOutput, "%f", static_cast<double>(sum) / count);
}

}  // namespace

void Window3D::TransformShell(int index, int label) {
  VoxData& image = *ui->images[index];
  PanelProgress progress(*ui);
  // No event is handled until the copy is whole and known: another measure would write over it.
  Progress silent;
  measure::SaveLabels(image.Labels(), savedLabels, silent);
  AlteredLabels altered(*this, image);
  for (int x = 0; x < image.GetDimX(); ++x) { progress.Step(); }
  ui->ShowProgressMessage("Finding surface...");
  measure::ReduceToShell(savedLabels, label, measure::ShellRule::OtherValue, image.EditableLabels(),
                         progress);
  ui->ShowProgressMessage("Starting Danielsson 3D...");
  RunTransform(index, label, progress);
  std::cout << "Display Danielsson 3D" << std::endl;
  measure::RestoreLabels(savedLabels, image.EditableLabels(), progress);
  altered.Restored();
}

void Window3D::ComputeSurfaceDistance() {
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
  if (!NewScalars(*ui, picture)) { return; }
  surfaces[0].ClearSurfaces();
  TakeWorkingSizes(*this, SliderImage(*ui));
  StartRun(*ui, 2 * dimZ + 6 * dimX - 5, "Start computing surface distance...");
  TransformShell(pair.index1, label);

  std::cout << "computing...." << std::endl;
  ui->ShowProgressMessage("Computing distances along the surface...");
  const LabelVolume a = pair.image1->Labels();
  const LabelVolume b = pair.image2->Labels();
  PanelProgress progress(*ui);
  measure::DistanceLists lists;
  const bool wantMedians = ui->medianWithSurfaceCheck->value() != 0;
  const auto distance =
      measure::SumAlongSurface(a, b, label, Field(), wantMedians ? &lists : nullptr, progress);
  ui->ShowProgressMessage("Computing display points...");
  measure::PaintSignedDistance(a, b, label, Field(), distance, picture.Work().WithNewScalars(),
                               progress);

  if (wantMedians) {
    WriteQuartiles(lists.outside, ui->medianOutsideOutput, ui->firstQuartOutsideOutput,
                   ui->thirdQuartOutsideOutput);
    WriteQuartiles(lists.inside, ui->medianInsideOutput, ui->firstQuartInsideOutput,
                   ui->thirdQuartInsideOutput);
    WriteQuartiles(lists.all, ui->medianOutput, ui->firstQuartOutput, ui->thirdQuartOutput);
  }
  // ON PURPOSE: the rollers take the maxima, while the opacities that they stand for stay.
  ui->surface2OpacityRoller->value(distance.inside.max);
  ui->surface3OpacityRoller->value(distance.outside.max);
  WriteDistances(*ui, distance);
  picture.AttachWorkScalars();

  displayedSurfaces = 1;
  std::cout << "Generate" << std::endl;
  ExtractWithOptions(&picture, 1);
  ui->HideProgress();
  redraw();
  ui->updateColorButton->activate();
  ShowLegend(*ui, 0, {"Max Outside", "Distance Outside", "0", "Distance Inside", "Max Inside"});
}

void Window3D::UpdateSurfaceColors(float maxIns, float maxOut) {
  const RunningCommand running(*ui);
  if (running.Refused()) { return; }
  const VoxData* first = ImageAt(*ui, ChosenIndex(ui->image1Choice));
  const VoxData* shown = ImageAt(*ui, Truncated(ui->imageSlider));
  if (!CanMeasureVolume(*ui, first) || !CanMeasureVolume(*ui, shown)) { return; }
  TakeWorkingSizes(*this, *shown);
  StartRun(*ui, dimX, "Updating colors ...");
  PanelProgress progress(*ui);
  measure::RepaintSignedDistance(first->Labels(), ui->currentLabel, Field(), maxIns, maxOut,
                                 ui->displayVolume1->Work(), progress);
  redraw();
  ShowMessageNow(*ui, "Computing point...");
}
