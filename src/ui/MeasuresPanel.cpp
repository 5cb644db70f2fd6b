// The measure buttons and the fields that they write into.
#include "ui/Build.h"
#include "ui/Commands.h"
#include "ui/CompareCommands.h"
#include "ui/HelpTexts.h"
#include "ui/MeasureButton.h"
#include "ui/Modal.h"
#include "ui/StudyChecks.h"
#include "view3d/Window3D.h"
#include "views/Segimage.h"
#include "views/SegimageMeasures.h"

#include <FL/Fl.H>
#include <FL/Fl_Group.H>
#include <FL/Fl_Input.H>
#include <FL/Fl_Slider.H>

#include <cstdio>

namespace {

// What the buttons run.

/// The canvas as the measure left it, at once, and the window round it.
void ShowCanvas(MainUI& ui) {
  ui.segimage->DrawNow();
  ui.mainWindow->redraw();
}

/// Whether the overlap will not refuse; says so where it would, before anything has changed.
bool CanOverlay(const MainUI& ui) { return TakeChosenPair(ui).ok && slice::CanShowSlices(ui); }

void Overlay2D(MainUI& ui) {
  if (!ui.segimage->OverlayResult2D()) { return; }
  ui.segimage->Overlay2D();
  ui.mainWindow->redraw();
}
void OverlayResult2D(MainUI& ui) {
  ui.segimage->OverlayResult2D();
  ShowCanvas(ui);
}
void Complexity(MainUI& ui) {
  ui.segimage->Complexity();
  ShowCanvas(ui);
}
void AreaPerimeter(MainUI& ui) {
  ui.segimage->InteriorContour();
  ShowCanvas(ui);
}
void Danielsson2D(MainUI& ui) {
  ui.segimage->DisplayDistanceMap();
  ShowCanvas(ui);
}
void Haussdorf2D(MainUI& ui) {
  ui.segimage->Haussdorf2D();
  ShowCanvas(ui);
}
void OverlayIntra(MainUI& ui) {
  if (!CanMeasureOneUser(ui) || !CanOverlay(ui)) { return; }
  ui.segimage->OverlayResult2D();
  ui.segimage->ProbabilityIntra();
  ShowCanvas(ui);
}
void OverlayInter(MainUI& ui) {
  if (!CanMeasureUsers(ui, kMaxSliceUsers) || !CanOverlay(ui)) { return; }
  ui.segimage->OverlayResult2D();
  ui.segimage->ProbabilityInter();
  ShowCanvas(ui);
}
void Overlay3D(MainUI& ui) { ui.window3D->ComputeOverlay3D(); }
void OverlayResult3D(MainUI& ui) { ui.window3D->ComputeOverlayResult3D(); }
void Danielsson3D(MainUI& ui) { ui.window3D->DisplayDanielsson3D(); }
void Haussdorf3D(MainUI& ui) { ui.window3D->ComputeHaussdorf3D(); }
void SurfaceDistance(MainUI& ui) { ui.window3D->ComputeSurfaceDistance(); }
void Probability(MainUI& ui) { ui.window3D->ComputeProbabilityMap(); }
void CreateAverage(MainUI& ui) { ui.window3D->CreateAverage(); }
void ShowCompareWindow(MainUI& ui) { ui.compareWindow->show(); }
void Visualisation(MainUI& ui) { ShowPlot(ui); }

void UpdateColor(MainUI& ui) {
  float maxIns = 0.0F;
  float maxOut = 0.0F;  // what does not read as a number leaves 0
  std::sscanf(ui.maxInsideInput->value(), "%f", &maxIns);
  std::sscanf(ui.maxOutsideInput->value(), "%f", &maxOut);
  ui.window3D->UpdateSurfaceColors(maxIns, maxOut);
  ui.HideProgress();
}

// The tables.

// clang-format off
const MeasureButton kVolumeButtons[] = {
  // member                          x    y    w    h    label            images  action             help
  {nullptr,                         {405, 565, 110, 25}, "Overlay 3D",       2, Overlay3D,       help::kOverlay3D},
  {&MainUI::overlayResult3DButton,  {405, 590, 110, 25}, "Overlay Result",   2, OverlayResult3D, help::kOverlayResult3D},
  {&MainUI::danielsson3DButton,     {405, 615, 110, 25}, "Danielsson 3D",    2, Danielsson3D,    help::kDanielsson3D},
  {&MainUI::haussdorf3DButton,      {405, 655, 110, 25}, "Haussdorf 3D",     2, Haussdorf3D,     help::kHaussdorf3D},
  {&MainUI::surfaceDistanceButton,  {405, 680, 110, 25}, "Surface distance", 2, SurfaceDistance, help::kSurfaceDistance},
  {&MainUI::probabilityButton,      {405, 705, 110, 25}, "Probability",      2, Probability,     help::kProbability},
  {&MainUI::updateColorButton,      {405, 780, 110, 25}, "Update Color",     0, UpdateColor,     help::kUpdateColor},
};

const MeasureButton kSliceButtons[] = {
  {&MainUI::overlay2DButton,        {405, 320, 110, 25}, "Overlay 2D",       2, Overlay2D,       help::kOverlay2D},
  {nullptr,                         {405, 360, 110, 25}, "Overlay Result",   2, OverlayResult2D, help::kOverlayResult2D},
  {&MainUI::complexityButton,       {405, 385, 110, 25}, "Complexity",       2, Complexity,      help::kComplexity},
  {&MainUI::danielsson2DButton,     {405, 410, 110, 25}, "Danielsson 2D",    2, Danielsson2D,    help::kDanielsson2D},
  {&MainUI::haussdorfButton,        {405, 435, 110, 25}, "Haussdorf",        2, Haussdorf2D,     help::kHaussdorf2D},
  {&MainUI::overlayIntraButton,     {405, 460, 110, 25}, "Overlay Intra",    2, OverlayIntra,    help::kOverlayIntra},
  {&MainUI::overlayInterButton,     {405, 500, 110, 25}, "Overlay Inter",    2, OverlayInter,    help::kOverlayInter},
  {&MainUI::areaPerimeterButton,    {405, 525, 110, 25}, "Area/Perimeter",   2, AreaPerimeter,   help::kAreaPerimeter},
};
// clang-format on

/// A text field that a measure writes its result into.
struct ResultField {
  Fl_Output* MainUI::*member;
  Area area;
  const char* label;
  int labelSize = 10;
  bool onEveryRelease = false;
};

// clang-format off
const ResultField kSliceFields[] = {
  {&MainUI::union2DOutput,            {570, 320, 65, 20}, "Union :", 10, true},
  {&MainUI::intersect2DOutput,        {685, 320, 60, 20}, "Intersec. :"},
  {&MainUI::overlapRatioOutput,       {815, 320, 70, 20}, "Overlap Ratio"},
  {&MainUI::perimeterOutput,          {580, 350, 65, 20}, "Perimeter:"},
  {&MainUI::areaOutput,               {705, 350, 70, 20}, "Aera (Pixel)", 10, true},
  {&MainUI::ratioOutput,              {815, 350, 70, 20}, "Ratio :", 10, true},
  {&MainUI::haussdorfABOutput,        {560, 395, 70, 20}, "A->B:"},
  {&MainUI::haussdorfBAOutput,        {665, 395, 70, 20}, "B->A"},
  {&MainUI::haussdorfOutput,          {805, 395, 80, 20}, "Hauss. Dist. :"},
  {&MainUI::interiorPerimeterOutput,  {590, 430, 65, 20}, "Inter. Perim. :"},
  {&MainUI::nonCommonAreaOutput,      {695, 430, 70, 20}, "Aera"},
  {&MainUI::interiorRatioOutput,      {815, 430, 70, 20}, "Ratio :"},
  {&MainUI::probaOverlapIntraOutput,  {640, 465, 75, 20}, "Proba. Overlap Intra :"},
  {&MainUI::probaOverlapInterOutput,  {640, 510, 75, 20}, "Proba. Overlap Inter :"},
};

const ResultField kVolumeFields[] = {
  {&MainUI::unionMinusIntersectOutput, {605, 570, 80, 20}, "Union-Intersect", 9},
  {&MainUI::overlapRatio3DOutput,      {770, 570, 90, 20}, "Overlap Ratio:"},
  {&MainUI::nbPixelAOutput,            {585, 595, 55, 20}, "nb pixel A: "},
  {&MainUI::nbPixelBOutput,            {705, 595, 55, 20}, "nb pixel B: "},
  {&MainUI::intersect3DOutput,         {820, 595, 55, 20}, "Intersect: "},
  {&MainUI::haussdorf3DABOutput,       {565, 620, 70, 20}, "A->B:"},
  {&MainUI::haussdorf3DBAOutput,       {685, 620, 65, 20}, "B->A: :"},
  {&MainUI::haussdorf3DOutput,         {820, 620, 65, 20}, "Hauss. dist. :"},
  {&MainUI::sumDistInsideOutput,       {590, 645, 70, 20}, "Sum dist. ins."},
  {&MainUI::nbPixelInsideOutput,       {705, 645, 60, 20}, "Nb Pixel"},
  {&MainUI::avgInsideOutput,           {810, 645, 75, 20}, "Av. ins."},
  {&MainUI::sumDistOutsideOutput,      {590, 670, 70, 20}, "Sum dist. out."},
  {&MainUI::nbPixelOutsideOutput,      {705, 670, 60, 20}, "Nb Pixel"},
  {&MainUI::avgOutsideOutput,          {810, 670, 75, 20}, "Av. Out."},
  {&MainUI::sumDistOutput,             {590, 695, 70, 20}, "Sum dist."},
  {&MainUI::nbPixelTotalOutput,        {705, 695, 60, 20}, "Nb Pixel"},
  {&MainUI::avgDistOutput,             {810, 695, 75, 20}, "Average"},
  {&MainUI::medianInsideOutput,        {580, 720, 65, 20}, "Median Ins"},
  {&MainUI::medianOutsideOutput,       {710, 720, 60, 20}, "Median Out"},
  {&MainUI::medianOutput,              {815, 720, 70, 20}, "Median"},
  {&MainUI::firstQuartInsideOutput,    {580, 740, 65, 20}, "1st quart ins"},
  {&MainUI::firstQuartOutsideOutput,   {710, 740, 60, 20}, "1st quart Out"},
  {&MainUI::firstQuartOutput,          {815, 740, 70, 20}, "1st quart"},
  {&MainUI::thirdQuartInsideOutput,    {580, 760, 65, 20}, "3nd quart ins", 9},
  {&MainUI::thirdQuartOutsideOutput,   {710, 760, 60, 20}, "3nd quart Out", 9},
  {&MainUI::thirdQuartOutput,          {815, 760, 70, 20}, "3nd quart", 9},
  {&MainUI::probaOverlapOutput,        {610, 785, 75, 20}, "Proba. Overlap :"},
};
// clang-format on

// What reads them.

void BuildField(MainUI& ui, const ResultField& row) {
  Fl_Output* field = PutField(row.area, row.label, row.labelSize);
  if (row.onEveryRelease) { field->when(FL_WHEN_RELEASE_ALWAYS); }
  ui.*row.member = field;
}

Fl_Slider* PutSlider(Area area, double maximum, double start) {
  auto* slider = Put<Fl_Slider>(area);
  slider->type(FL_HORIZONTAL);
  slider->box(FL_ROUND_DOWN_BOX);
  slider->bounds(0, maximum);
  slider->step(1);
  slider->value(start);
  return slider;
}

Fl_Input* PutMaximumInput(Area area, const char* label) {
  auto* input = Put<Fl_Input>(area, label);
  input->labelsize(10);
  input->textsize(10);
  return input;
}

/// The one callback behind every measure button: help, refuse, or run.
void OnMeasureButton(Fl_Widget* widget, void* row) {
  const auto& button = *static_cast<const MeasureButton*>(row);
  MainUI& ui = OwnerOf(widget);
  if (Fl::event_button() == FL_RIGHT_MOUSE) {
    ShowHelp(ui, button.help);
  } else if (ui.imageCount < button.imagesNeeded) {
    Refuse("You must load at least 2 segmented images");
  } else {
    button.run(ui);
  }
}

}  // namespace

namespace buttons {

// clang-format off
const MeasureButton kCreateAverage =
  {&MainUI::createAverageButton,   {10, 530, 110, 25}, "Create Average",     2, CreateAverage,     help::kCreateAverage,   true};
const MeasureButton kConfusionMatrix =
  {&MainUI::confusionMatrixButton, {10, 555, 110, 25}, "Confusion Matrix",   2, OnConfusionMatrix, help::kConfusionMatrix, true};
const MeasureButton kCompareData =
  {&MainUI::compareDataButton,     {10, 480, 110, 25}, "Compare Data",       2, ShowCompareWindow, help::kCompareData,     true};
const MeasureButton kVisualisation =
  {nullptr,                        {10, 505, 110, 25}, "Visualisation tool", 2, Visualisation,     help::kVisualisation,   true};
// clang-format on

}  // namespace buttons

void PutMeasureButton(MainUI& ui, const MeasureButton& row) {
  Fl_Button* button = PutRound(row.area, row.label, OnMeasureButton,
                               const_cast<MeasureButton*>(&row));  // only read back as const
  if (row.onEveryRelease) { button->when(FL_WHEN_RELEASE_ALWAYS); }
  if (row.member != nullptr) { ui.*row.member = button; }
}

void BuildMeasuresGroup(MainUI& ui) {
  ui.measuresGroup = Put<Fl_Group>({395, 310, 500, 505});
  ui.measuresGroup->align(25);

  PutFrame({400, 560, 120, 250});
  for (const MeasureButton& row : kVolumeButtons) { PutMeasureButton(ui, row); }
  ui.updateColorButton->deactivate();  // "Surface distance" activates it
  ui.danielsson3DSlider = PutSlider({405, 640, 110, 15}, 100, 0);
  ui.maxInsideInput = PutMaximumInput({450, 740, 65, 20}, "MaxIns");
  ui.maxOutsideInput = PutMaximumInput({450, 760, 65, 20}, "MaxOut");

  PutFrame({400, 315, 120, 240});
  for (const MeasureButton& row : kSliceButtons) { PutMeasureButton(ui, row); }
  ui.overlayOpacitySlider = PutSlider({405, 345, 110, 15}, 255, 128);
  ui.overlayOpacitySlider->callback(OnOverlayOpacity);
  ui.overlayIntraSlider = PutSlider({405, 485, 110, 15}, 1, 0);

  PutFrame({520, 315, 370, 240});
  for (const ResultField& row : kSliceFields) { BuildField(ui, row); }
  PutFrame({520, 560, 370, 250});
  for (const ResultField& row : kVolumeFields) { BuildField(ui, row); }
  ui.measuresGroup->end();
}
