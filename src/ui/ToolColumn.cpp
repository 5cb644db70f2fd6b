// The left tool column.
#include "ui/Build.h"
#include "ui/ColorLegend.h"
#include "ui/ColorPreview.h"
#include "ui/Commands.h"
#include "ui/MeasureButton.h"
#include "ui/Pictures.h"
#include "ui/Put.h"

#include <FL/Fl_Check_Button.H>
#include <FL/Fl_Choice.H>
#include <FL/Fl_Group.H>
#include <FL/Fl_Roller.H>
#include <FL/Fl_Scrollbar.H>
#include <FL/Fl_Value_Output.H>

namespace {

struct ByteScrollbar {
  Fl_Scrollbar* MainUI::*member;
  Area area;
  const char* label;
  Fl_Callback* callback;
};

struct LegendText {
  Fl_Box* MainUI::*member;
  Area area;
  const char* label;
};

// clang-format off
const ByteScrollbar kScrollbars[] = {
  {&MainUI::contrastScrollbar,     {15, 215, 105, 15}, "Contrast",      OnContrast},
  {&MainUI::brightnessScrollbar,   {15, 250, 105, 15}, "Brightness",    OnBrightness},
  {&MainUI::labelOpacityScrollbar, {15, 180, 105, 15}, "Label opacity", OnLabelOpacity},
};

const LegendText kLegendTexts[] = {
  {&MainUI::legendTextInside,     {50, 720, 85, 25}, "Distance Inside"},
  {&MainUI::legendTextOutside,    {50, 665, 90, 25}, "Distance Outside"},
  {&MainUI::legendTextZero,       {50, 695, 85, 25}, "0"},
  {&MainUI::legendTextMaxOutside, {50, 635, 90, 25}, "Max  Outside"},
  {&MainUI::legendTextMaxInside,  {50, 750, 90, 25}, "Max inside"},
};
// clang-format on

Fl_Button* PutTool(Area area, Fl_Callback* callback) {
  Fl_Button* button = PutRound(area, nullptr, callback);
  button->align(FL_ALIGN_CENTER | FL_ALIGN_INSIDE);
  return button;
}

void PutScrollbar(MainUI& ui, const ByteScrollbar& row) {
  auto* scrollbar = Put<Fl_Scrollbar>(row.area, row.label);
  scrollbar->type(FL_HORIZONTAL);
  scrollbar->labelsize(11);
  scrollbar->align(FL_ALIGN_TOP_LEFT);
  scrollbar->bounds(0, 255);
  scrollbar->callback(row.callback);
  ui.*row.member = scrollbar;
}

Fl_Choice* PutImageChoice(Area area, const char* label) {
  auto* choice = Put<Fl_Choice>(area, label);
  choice->box(FL_ROUND_UP_BOX);
  choice->labeltype(FL_EMBOSSED_LABEL);
  choice->labelfont(FL_TIMES);
  choice->labelsize(12);
  choice->labelcolor(208);
  choice->textsize(10);
  choice->align(FL_ALIGN_TOP);
  return choice;
}

Fl_Choice* PutLabelChoice(Area area, const char* label) {
  auto* choice = Put<Fl_Choice>(area, label);
  choice->box(FL_ROUND_UP_BOX);
  choice->down_box(FL_ROUND_UP_BOX);
  choice->labeltype(FL_EMBOSSED_LABEL);
  choice->labelsize(10);
  choice->labelcolor(4);
  choice->textsize(10);
  choice->align(FL_ALIGN_TOP);
  choice->callback(OnColorLabel);
  return choice;
}

void PutVoxelSizes(MainUI& ui) {
  const char* const labels[3] = {"Voxel size X:", "Voxel size Y:", "Voxel size Z:"};
  for (int axis = 0; axis < 3; ++axis) {
    auto* output = Put<Fl_Value_Output>({75, 115 + 15 * axis, 45, 15}, labels[axis]);
    output->box(FL_DOWN_BOX);
    output->labelsize(11);
    output->textsize(11);
    ui.voxelSizeOutput[axis] = output;
  }
}

Fl_Roller* PutOpacityRoller(Area area, Fl_Callback* callback) {
  auto* roller = Put<Fl_Roller>(area);
  roller->type(FL_HORIZONTAL);
  roller->box(FL_NO_BOX);
  roller->bounds(0, 100);
  roller->step(1);
  roller->value(100);
  roller->callback(callback);
  return roller;
}

void PutLegend(MainUI& ui) {
  for (const LegendText& row : kLegendTexts) {
    auto* text = Put<Fl_Box>(row.area, row.label);
    text->labelsize(9);
    text->align(FL_ALIGN_LEFT | FL_ALIGN_INSIDE);
    ui.*row.member = text;
  }
  ui.currentImageOutput = Put<Fl_Output>({5, 275, 135, 15});
  ui.currentImageOutput->color(49);
  ui.currentImageOutput->labelsize(11);
  ui.currentImageOutput->textsize(10);
  ui.colorPreview = Put<ColorPreview>({100, 315, 15, 15}, "label COlor");
  ui.colorPreview->end();
  ui.colorLegend = Put<ColorLegend>({35, 635, 15, 140});
  ui.colorLegend->end();
  ui.colorLegend->callback(OnColorLegend);
  ui.colorLegend->when(FL_WHEN_RELEASE_ALWAYS);
}

}  // namespace

void BuildToolGroup(MainUI& ui) {
  // Far wider than the column that it holds; a group without a box draws nothing.
  ui.toolGroup = Put<Fl_Group>({0, 40, 720, 765});
  ui.toolGroup->labelsize(11);

  ui.moveToolButton = PutTool({75, 45, 45, 45}, OnMoveTool);
  pictures::Move().label(ui.moveToolButton);
  ui.moveToolButton->value(1);
  ui.crosshairToolButton = PutTool({15, 45, 45, 45}, OnCrosshairTool);
  pictures::Crosshair().label(ui.crosshairToolButton);

  for (const ByteScrollbar& row : kScrollbars) { PutScrollbar(ui, row); }
  // ON PURPOSE: nothing shows or reads this one.
  ui.allSlicesCheck = Put<Fl_Check_Button>({15, 95, 105, 15}, "All Slices");
  ui.allSlicesCheck->hide();
  PutMeasureButton(ui, buttons::kCreateAverage);
  PutMeasureButton(ui, buttons::kConfusionMatrix);
  ui.usersOutput = PutField({95, 340, 25, 20}, "Nb of Users :");
  ui.slicesOutput = PutField({95, 360, 25, 20}, "Nb Slice / User:");
  ui.image1Choice = PutImageChoice({10, 405, 110, 25}, "Image 1");
  ui.image2Choice = PutImageChoice({10, 445, 110, 25}, "Image  2");
  PutMeasureButton(ui, buttons::kCompareData);
  // ON PURPOSE: the one round button without a down box of its own.
  ui.compareDataButton->down_box(FL_NO_BOX);
  PutMeasureButton(ui, buttons::kVisualisation);
  ui.colorLabelChoice = PutLabelChoice({10, 310, 85, 25}, "Color Label");
  PutVoxelSizes(ui);
  ui.surface2OpacityRoller = PutOpacityRoller({25, 585, 85, 10}, OnSurface2Opacity);
  ui.surface3OpacityRoller = PutOpacityRoller({25, 600, 85, 10}, OnSurface3Opacity);
  PutLegend(ui);
  ui.toolGroup->end();
}
