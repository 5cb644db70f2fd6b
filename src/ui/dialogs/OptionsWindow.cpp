// Options: read at the moment of use, there is no apply step.
#include "ui/Build.h"
#include "ui/Put.h"
#include "ui/dialogs/DialogParts.h"

#include <FL/Fl_Check_Button.H>
#include <FL/Fl_Group.H>
#include <FL/Fl_Round_Button.H>
#include <FL/Fl_Value_Input.H>

namespace {

struct CheckOption {
  Fl_Check_Button* MainUI::*member;
  Area area;
  const char* label;
  int value;
};

struct NumberOption {
  Fl_Value_Input* MainUI::*member;
  Area area;
  const char* label;
  double value;
};

struct RadioOption {
  Fl_Round_Button* MainUI::*member;
  Area area;
  const char* label;
  int value;
};

// clang-format off
const CheckOption kSmoothing  = {&MainUI::smoothingCheck,  {5, 145, 110, 25}, "Smothing",   1};
const CheckOption kDecimation = {&MainUI::decimationCheck, {5,   5, 100, 25}, "Decimation", 0};

const NumberOption kNumbers[] = {
  {&MainUI::targetReductionInput,  {125,  40, 75, 25}, "Target Reduction:",   0.5},
  {&MainUI::aspectRatioInput,      {290,  40, 75, 25}, "Aspect Ratio:",       20},
  {&MainUI::errorIncrementInput,   {125,  70, 75, 25}, "Error Increment:",    0.001},
  {&MainUI::maxIterationsInput,    {125, 100, 75, 25}, "Maximum Iterations:", 30},
  {&MainUI::initialErrorInput,     {290,  70, 75, 25}, "Initial Error:",      0.0005},
  {&MainUI::nbIterationsInput,     {125, 180, 75, 25}, "Nb. of Iterations:",  20},
  {&MainUI::relaxationFactorInput, {125, 210, 75, 25}, "Relaxation factor:",  0.1},
  {&MainUI::featureAngleInput,     {290, 180, 75, 25}, "Feature Angle:",      0},
};

const CheckOption kViewChecks[] = {
  {&MainUI::isotropic3DCheck,       {5, 245, 200, 25}, "3D Visualisation isotropic", 0},
  {&MainUI::displayCrosshairsCheck, {5, 270, 200, 25}, "Display Crosshairs",         1},
};

// ON PURPOSE: the labels read as the inverse of the ratios that are computed.
const RadioOption kOverlaps[] = {
  {&MainUI::overlapUnionIntersectRadio, { 10, 345, 120, 20}, "(AUB)/intersect(A,B)", 0},
  {&MainUI::overlapUnionARadio,         {150, 345,  60, 20}, "(AUB)/A",              0},
  {&MainUI::overlapUnionAverageRadio,   {245, 345, 115, 20}, "(AUB)/average(A,B)",   1},
};

const CheckOption kMedian = {&MainUI::medianWithSurfaceCheck, {5, 295, 25, 25},
                             "Compute Median with surface distance (take long time)", 0};
// clang-format on

void PutCheck(MainUI& ui, const CheckOption& row) {
  auto* check = Put<Fl_Check_Button>(row.area, row.label);
  check->value(row.value);
  ui.*row.member = check;
}

void PutNumber(MainUI& ui, const NumberOption& row) {
  auto* input = Put<Fl_Value_Input>(row.area, row.label);
  input->labelsize(12);
  input->textsize(12);
  input->value(row.value);
  ui.*row.member = input;
}

void PutOverlapGroup(MainUI& ui) {
  auto* group = Put<Fl_Group>({5, 320, 365, 50});
  group->box(FL_DOWN_BOX);
  for (const RadioOption& row : kOverlaps) {
    auto* radio = Put<Fl_Round_Button>(row.area, row.label);
    radio->type(FL_RADIO_BUTTON);
    radio->labelsize(11);
    radio->value(row.value);
    ui.*row.member = radio;
  }
  auto* title = Put<Fl_Group>({5, 325, 60, 15}, "Overlap");
  title->align(FL_ALIGN_TOP | FL_ALIGN_INSIDE);
  title->end();
  group->end();
}

}  // namespace

void BuildOptionsWindow(MainUI& ui) {
  ui.optionsWindow = BeginWindow(ui, 376, 408, "Options");
  PutFrame({5, 30, 365, 105});
  PutCheck(ui, kSmoothing);
  PutFrame({5, 170, 365, 70});
  PutCheck(ui, kDecimation);
  for (const NumberOption& row : kNumbers) { PutNumber(ui, row); }
  for (const CheckOption& row : kViewChecks) { PutCheck(ui, row); }
  dialogs::PutClose({150, 385, 90, 20});
  PutOverlapGroup(ui);
  PutCheck(ui, kMedian);
  ui.optionsWindow->end();
}
