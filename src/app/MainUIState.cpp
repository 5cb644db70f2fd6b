// MainUI: construction, start-up, and the state beside the widgets.
#include "VoxData/ImageLoader.h"
#include "VoxData/VoxData.h"
#include "app/Globals.h"
#include "app/ViewState.h"
#include "ui/Build.h"
#include "ui/ColorLegend.h"
#include "ui/Fields.h"
#include "ui/MainUI.h"
#include "view3d/Window3D.h"
#include "views/Segimage.h"
#include "views/Window2D.h"

#include <FL/Fl.H>
#include <FL/Fl_Box.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Choice.H>
#include <FL/Fl_Group.H>
#include <FL/Fl_Output.H>
#include <FL/Fl_Scrollbar.H>
#include <FL/Fl_Slider.H>
#include <FL/Fl_Value_Input.H>
#include <FL/Fl_Window.H>

#include <cstdio>
#include <cstring>

namespace {

/// The labels were made for a narrow face: with this one they fit their places.
void ChooseFonts() {
  Fl::set_font(FL_HELVETICA, " Liberation Sans");
  Fl::set_font(FL_HELVETICA_BOLD, "BLiberation Sans");
  Fl::set_font(FL_COURIER, " Liberation Mono");
  Fl::set_font(FL_COURIER_BOLD, "BLiberation Mono");
  Fl::set_font(FL_TIMES, " Liberation Serif");
}

// The two parts of the title, and both together.
// ON PURPOSE: they are composed and never shown, the window stays "Tolvex 1.0".
char greyTitle[100] = "KORA - no gray Image loaded";
char segTitle[100] = "no seg Image loaded";
char composedTitle[210] = "";

void CopyTitle(char (&part)[100], const char* name) {
  if (name != nullptr) { std::snprintf(part, sizeof part, "%s", name); }
}

void ScrollLineByLine(MainUI& ui) {
  for (Fl_Scrollbar* scrollbar :
       {ui.contrastScrollbar, ui.brightnessScrollbar, ui.labelOpacityScrollbar, ui.cursorSlider[0],
        ui.cursorSlider[1], ui.cursorSlider[2]}) {
    scrollbar->linesize(1);
  }
  for (Fl_Scrollbar* scrollbar :
       {ui.contrastScrollbar, ui.brightnessScrollbar, ui.labelOpacityScrollbar}) {
    scrollbar->Fl_Valuator::value(128.0);
  }
}

void BuildDialogs(MainUI& ui) {
  BuildLoadSegWindow(ui);
  BuildSaveSegWindow(ui);
  BuildCompareWindow(ui);
  BuildResultsWindow(ui);
  BuildPlotWindow(ui);
  BuildCreateListWindow(ui);
  BuildOptionsWindow(ui);
  BuildHelpWindow(ui);
  BuildAboutWindow(ui);
  BuildFirstStepsWindow(ui);
}

}  // namespace

MainUI::MainUI() {
  ChooseFonts();
  BuildMainWindow(*this);
  ScrollLineByLine(*this);
  for (VoxData*& volume : workVolumes) { volume = new VoxData; }
  loader = new ImageLoader(this);
  progressTrough->resize(progressBar->x() - 1, progressBar->y() - 1, progressBar->w() + 2,
                         progressBar->h() + 2);
  BuildLoadGreyWindow(*this);
  yzView->Register(0, this);
  xzView->Register(1, this);
  xyView->Register(2, this);
  segimage->Register(0, this);
  window3D->Register(3, this);
  toolGroup->resizable(nullptr);
  mainGroup->resizable(nullptr);
  BuildDialogs(*this);
}

void MainUI::ShowAll() {
  viewState->SetContrast(128);
  viewState->SetBrightness(128);
  viewState->SetLabelOpacity(128);
  mainWindow->show();
  yzView->show();
  xzView->show();
  xyView->show();
  segimage->show();
  window3D->show();
  ApplyDefaults();
}

void MainUI::ApplyDefaults() {
  viewState->SetToolMode(1);
  moveToolButton->value(1);
  crosshairToolButton->value(0);
  labelCopyCount = 20;
  std::memset(labelCopyColours[0], 0, sizeof labelCopyColours[0]);
  greyOriginXChoice->value(0);
  greyOriginYChoice->value(1);
  greyOriginZChoice->value(1);
  for (Fl_Value_Input* step : {greyXspacingInput, greyYspacingInput, greyZspacingInput}) {
    step->value(1.0);
  }
}

void MainUI::Quit() {
  // The other windows act on the main one, so they go with it; the run loop then ends.
  while (Fl_Window* window = Fl::first_window()) { window->hide(); }
  if (runningCommands > 0) {
    quitRequested = true;  // the widgets are still in use
    return;
  }
  Fl::delete_widget(mainWindow);
}

void MainUI::RedrawViews() {
  yzView->redraw();
  xzView->redraw();
  xyView->redraw();
  segimage->redraw();
  colorLegend->redraw();
  window3D->redraw();
}

void MainUI::SyncCursorSliders() {
  const auto cursor = viewState->GetCursor();
  for (int axis = 0; axis < 3; ++axis) {
    cursorSlider[axis]->Fl_Valuator::value(cursor[static_cast<std::size_t>(axis)]);
    cursorSlider[axis]->redraw();
    UpdateSliceText(axis);
  }
}

void MainUI::UpdateSliceText(int axis) {
  const auto* slider = static_cast<const Fl_Valuator*>(cursorSlider[axis]);
  char text[40];
  std::snprintf(text, sizeof text, "%d of %d", Truncated(slider) + 1, sliceDims[axis]);
  sliceOutput[axis]->value(text);
}

void MainUI::RefreshLabels() {
  for (std::int32_t& id : labelCopyIds) { id = -1; }
  const int shown = Truncated(imageSlider);
  if (shown < 0 || shown >= kMaxImages || images[shown] == nullptr) { return; }
  const VoxData& image = *images[shown];
  labelCopyCount = image.GetLabelCount();
  labelCopyIds[0] = 0;
  std::memset(labelCopyColours[0], 0, sizeof labelCopyColours[0]);
  int filled = 1;
  char name[201];
  for (int id = 1; id < kMaxLabels && filled < labelCopyCount && filled < kMaxLabels; ++id) {
    std::uint8_t rgb[3];
    if (image.GetLabel(id, rgb, name) != 1) { continue; }
    labelCopyIds[filled] = id;
    std::memcpy(labelCopyColours[filled], rgb, sizeof rgb);
    ++filled;
  }
}

void MainUI::ClearResults() {
  for (Fl_Choice* choice : {image1Choice, image2Choice, compareImage1Choice, compareImage2Choice,
                            plotImage1Choice, plotImage2Choice, colorLabelChoice}) {
    choice->clear();
    choice->redraw();
  }
  std::memset(labelList, 0, sizeof labelList);
  window3D->ClearAllSurfaces();
  // ON PURPOSE: the nine medians and quartiles are not among them and keep their numbers.
  for (Fl_Output* output : {union2DOutput,
                            intersect2DOutput,
                            overlapRatioOutput,
                            perimeterOutput,
                            areaOutput,
                            ratioOutput,
                            haussdorfABOutput,
                            haussdorfBAOutput,
                            haussdorfOutput,
                            interiorPerimeterOutput,
                            nonCommonAreaOutput,
                            interiorRatioOutput,
                            probaOverlapIntraOutput,
                            probaOverlapInterOutput,
                            unionMinusIntersectOutput,
                            overlapRatio3DOutput,
                            nbPixelAOutput,
                            nbPixelBOutput,
                            intersect3DOutput,
                            haussdorf3DABOutput,
                            haussdorf3DBAOutput,
                            haussdorf3DOutput,
                            sumDistInsideOutput,
                            nbPixelInsideOutput,
                            avgInsideOutput,
                            sumDistOutsideOutput,
                            nbPixelOutsideOutput,
                            avgOutsideOutput,
                            sumDistOutput,
                            nbPixelTotalOutput,
                            avgDistOutput,
                            probaOverlapOutput}) {
    output->value("");
  }
}

void MainUI::SetTitleParts(const char* greyName, const char* segName) {
  CopyTitle(greyTitle, greyName);
  CopyTitle(segTitle, segName);
  std::snprintf(composedTitle, sizeof composedTitle, "%s - %s", greyTitle, segTitle);
}

const char* MainUI::ComposedTitle() const { return composedTitle; }
