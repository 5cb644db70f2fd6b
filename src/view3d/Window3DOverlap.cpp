// Window3D: overlay of Image 1 and Image 2.
#include "ui/Fields.h"
#include "ui/MainUI.h"
#include "ui/PanelProgress.h"
#include "ui/StudyChecks.h"
#include "view3d/CommandSupport.h"
#include "view3d/Window3D.h"
#include "view3d/volumemeasures/VolumeOverlap.h"

#include <FL/Fl_Button.H>
#include <FL/Fl_Output.H>
#include <FL/Fl_Round_Button.H>
#include <FL/Fl_Window.H>

#include <cstdio>

namespace {

using measure::OverlapDivisor;

constexpr LegendTexts kOverlayLegend = {"Image 1", "", "Img1 + Img2", "", "Image 2"};

/// The ratio's text. Where no divisor is left, the text of the field before it stands in its place.
void WriteOverlap(const MainUI& ui, const measure::VolumeOverlap& overlap) {
  const int apart = overlap.onlyA + overlap.onlyB;
  SetField(ui.nbPixelAOutput, "%d", overlap.onlyA);
  SetField(ui.nbPixelBOutput, "%d", overlap.onlyB);
  SetField(ui.intersect3DOutput, "%d", overlap.common);
  SetField(ui.unionMinusIntersectOutput, "%d", apart);
  char text[40];
  std::snprintf(text, sizeof text, "%d", apart);
  const std::pair<Fl_Round_Button*, OverlapDivisor> tests[] = {
      {ui.overlapUnionAverageRadio, OverlapDivisor::Average},
      {ui.overlapUnionIntersectRadio, OverlapDivisor::Union},
      {ui.overlapUnionARadio, OverlapDivisor::FirstImage}};
  for (const auto& [radio, divisor] : tests) {
    if (radio->value() == 0) { continue; }
    if (const auto ratio = measure::OverlapRatio(overlap, divisor)) {
      std::snprintf(text, sizeof text, "%.6f", *ratio);
    }
  }
  SetField(ui.overlapRatio3DOutput, text);
}

}  // namespace

void Window3D::ComputeOverlayResult3D() {
  const RunningCommand running(*ui);
  if (running.Refused()) { return; }
  const ChosenPair pair = TakeVolumePair(*ui);
  if (!pair.ok) { return; }
  VoxData& picture = *ui->displayVolume1;

  SetupView();
  StartRun(*ui, ui->images[0]->GetDimZ(), "Starting Overlay Result 3D");
  if (!NewScalars(*ui, picture)) {
    ui->HideProgress();
    return;
  }
  PanelProgress progress(*ui);
  const auto overlap =
      measure::PaintOverlap(pair.image1->Labels(), pair.image2->Labels(), ui->currentLabel,
                            picture.Work().WithNewScalars(), progress);
  picture.AttachWorkScalars();
  WriteOverlap(*ui, overlap);

  ui->updateColorButton->deactivate();
  ShowMessageNow(*ui, "Computing point...");
  displayedSurfaces = 1;
  surfaces[0].ClearSurfaces();
  ExtractWithOptions(&picture, 1);
  redraw();
  ShowLegend(*ui, 2, kOverlayLegend);
  ui->HideProgress();
}

void Window3D::ComputeOverlay3D() {
  const RunningCommand running(*ui);
  if (running.Refused()) { return; }
  const ChosenPair pair = TakeVolumePair(*ui);
  if (!pair.ok) { return; }

  SetupView();
  StartRun(*ui, ui->images[0]->GetDimZ(), "Starting Overlay Result 3D");
  for (VoxData* picture : ui->workVolumes) {
    if (!NewScalars(*ui, *picture)) {
      ui->HideProgress();
      return;
    }
  }
  PanelProgress progress(*ui);
  measure::PaintRegions(pair.image1->Labels(), pair.image2->Labels(), ui->currentLabel,
                        ui->displayVolume1->Work().WithNewScalars(),
                        ui->displayVolume2->Work().WithNewScalars(),
                        ui->displayVolume3->Work().WithNewScalars(), progress);
  for (VoxData* picture : ui->workVolumes) { picture->AttachWorkScalars(); }

  ui->updateColorButton->deactivate();
  ShowMessageNow(*ui, "Computing point...");
  displayedSurfaces = 3;
  surfaces[0].ClearSurfaces();
  ExtractWithOptions(ui->displayVolume3, 1);
  ExtractWithOptions(ui->displayVolume1, 2);
  ExtractWithOptions(ui->displayVolume2, 3);
  redraw();
  ShowLegend(*ui, 2, kOverlayLegend);
  ui->HideProgress();
}
