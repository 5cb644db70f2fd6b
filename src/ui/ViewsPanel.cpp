// The three slice views with their sliders, and the choice of image and direction.
#include "ui/Build.h"
#include "ui/Commands.h"
#include "ui/Put.h"
#include "views/Window2D.h"

#include <FL/Fl_Group.H>
#include <FL/Fl_Round_Button.H>
#include <FL/Fl_Scrollbar.H>
#include <FL/Fl_Slider.H>

namespace {

/// One view in a group of its own: the view, its slice slider, reset button and slice text.
struct ViewPanel {
  int orientation;  ///< 0 YZ, 1 XZ, 2 XY
  const char* label;
  Fl_Group* MainUI::*groupMember;
  Window2D* MainUI::*viewMember;
  Fl_Button* MainUI::*resetMember;
  Area group, view, slider, reset, text;
};

struct DirectionButton {
  Fl_Round_Button* MainUI::*member;
  Area area;
  const char* label;
  int value;
  unsigned selectionColour;
};

// clang-format off
const ViewPanel kViewPanels[] = {
  {2, "XY", &MainUI::xyGroup, &MainUI::xyView, &MainUI::xyResetButton,
   {145, 10, 245, 255}, {150, 15, 215, 220}, {370, 15, 15, 220}, {150, 240, 150, 20}, {315, 240, 65, 20}},
  {0, "YZ", &MainUI::yzGroup, &MainUI::yzView, &MainUI::yzResetButton,
   {390, 10, 240, 255}, {395, 15, 210, 220}, {610, 15, 15, 220}, {395, 240, 165, 20}, {565, 240, 60, 20}},
  {1, "XZ", &MainUI::xzGroup, &MainUI::xzView, &MainUI::xzResetButton,
   {630, 10, 250, 255}, {635, 15, 220, 220}, {860, 15, 15, 220}, {635, 240, 170, 20}, {815, 240, 60, 20}},
};

// ON PURPOSE: the first button has another selection colour than the other two.
const DirectionButton kDirections[] = {
  {&MainUI::directionXYButton, {240, 280, 25, 25}, "XY", 1, 108},
  {&MainUI::directionYZButton, {490, 280, 25, 25}, "YZ", 0, 68},
  {&MainUI::directionXZButton, {735, 280, 25, 25}, "XZ", 0, 68},
};
// clang-format on

void BuildViewPanel(MainUI& ui, const ViewPanel& row) {
  auto* group = Put<Fl_Group>(row.group);
  group->box(FL_UP_BOX);
  ui.*row.groupMember = group;

  auto* view = Put<Window2D>(row.view, row.label);
  view->box(FL_BORDER_BOX);
  view->end();
  ui.*row.viewMember = view;

  auto* slider = Put<Fl_Scrollbar>(row.slider);
  slider->bounds(0, 3);  // until an image sets the range
  slider->callback(OnCursorSlider);
  ui.cursorSlider[row.orientation] = slider;

  Fl_Button* reset = PutRound(row.reset, "reset view", OnResetView, nullptr, 9);
  reset->labelcolor(216);
  reset->align(FL_ALIGN_WRAP);
  ui.*row.resetMember = reset;

  auto* text = Put<Fl_Output>(row.text);
  text->textsize(10);
  text->deactivate();
  ui.sliceOutput[row.orientation] = text;
  group->end();
}

}  // namespace

void BuildViewsGroup(MainUI& ui) {
  ui.viewsGroup = Put<Fl_Group>({140, 0, 745, 305});
  for (const ViewPanel& row : kViewPanels) { BuildViewPanel(ui, row); }

  ui.imageSlider = Put<Fl_Slider>({145, 265, 735, 15});
  ui.imageSlider->type(FL_HORIZONTAL);
  ui.imageSlider->bounds(0, -1);  // until there is an image
  ui.imageSlider->step(1);
  ui.imageSlider->callback(OnImageSlider);

  for (const DirectionButton& row : kDirections) {
    auto* button = Put<Fl_Round_Button>(row.area, row.label);
    button->value(row.value);
    button->selection_color(row.selectionColour);
    button->labelsize(9);
    button->callback(OnDirection);
    ui.*row.member = button;
  }
  ui.viewsGroup->end();
}
