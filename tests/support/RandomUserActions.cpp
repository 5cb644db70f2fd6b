// RandomUser: the actions.
#include "tests/support/Interface.h"
#include "tests/support/LastActions.h"
#include "tests/support/RandomUser.h"
#include "view3d/Window3D.h"
#include "views/Segimage.h"
#include "views/Window2D.h"

#include <FL/Fl_Button.H>
#include <FL/Fl_Choice.H>
#include <FL/Fl_Input.H>
#include <FL/Fl_Menu_Bar.H>
#include <FL/Fl_Output.H>
#include <FL/Fl_Valuator.H>
#include <FL/Fl_Value_Input.H>

#include <algorithm>
#include <cstring>

namespace {

const std::vector<std::string> kTexts = {"",
                                         "nan",
                                         "-1",
                                         "1e99",
                                         "99999999999",
                                         "%s%n",
                                         "0",
                                         "1",
                                         "2",
                                         "3",
                                         "12",
                                         "0.5",
                                         "256",
                                         "-0.0",
                                         "inf",
                                         "1e-9",
                                         "300",
                                         "65536",
                                         "2147483648",
                                         "1\n2\n3",
                                         "/",
                                         "../x/\\",
                                         "\x80",
                                         "\xff\x01",
                                         "plain_0.gipl",
                                         "plain_grey.gipl",
                                         std::string(400, 'l'),
                                         std::string(12000, '9')};

const char kKeys[] = "abcdefghijklmnopqrstuvwxyzNBR+-=.,0123456789 ";
const int kOtherKeys[] = {FL_Enter,     FL_Escape,  FL_Tab,       FL_Left,  FL_Right,
                          FL_Up,        FL_Down,    FL_Home,      FL_End,   FL_Page_Up,
                          FL_Page_Down, FL_Delete,  FL_BackSpace, FL_F + 1, FL_Insert,
                          FL_Menu,      FL_Shift_L, FL_Control_L};
const int kModifiers[] = {0, 0, 0, 0, FL_SHIFT, FL_CTRL, FL_ALT, FL_CTRL | FL_SHIFT};

template <class Widget>
void Collect(Fl_Group& group, std::vector<Widget*>& found) {
  for (int i = 0; i < group.children(); ++i) {
    Fl_Widget* child = group.child(i);
    if (child->visible() == 0) { continue; }
    if (auto* wanted = dynamic_cast<Widget*>(child)) { found.push_back(wanted); }
    if (auto* inner = dynamic_cast<Fl_Group*>(child)) { Collect(*inner, found); }
  }
}

const char* LabelOf(const Fl_Widget* widget) {
  return widget->label() != nullptr ? widget->label() : "";
}

std::string PlaceOf(const Fl_Widget* widget) {
  Fl_Window* window = widget->top_window();
  return "\"" + std::string(LabelOf(widget)) + "\" at " + std::to_string(widget->x()) + ", " +
         std::to_string(widget->y()) + " of \"" + (window != nullptr ? LabelOf(window) : "") + "\"";
}

}  // namespace

bool RandomUser::MainIsShown() const {
  return !mainWindow->deleted() && mainUI->mainWindow->shown() != 0;
}

std::vector<Fl_Window*> RandomUser::ShownWindows() const {
  std::vector<Fl_Window*> shown;
  const MainUI& ui = *mainUI;
  for (Fl_Window* window : {ui.loadGreyWindow, ui.loadSegWindow, ui.saveSegWindow, ui.compareWindow,
                            ui.resultsWindow, ui.createListWindow, ui.optionsWindow, ui.plotWindow,
                            ui.helpWindow, ui.aboutWindow, ui.firstStepsWindow}) {
    if (window->shown() != 0) { shown.push_back(window); }
  }
  if (MainIsShown()) { shown.push_back(ui.mainWindow); }
  return shown;
}

/// A visible widget of a kind in `window` or, without one, in any that is shown; null without any.
template <class Widget>
Widget* RandomUser::Any(Fl_Group* window) {
  std::vector<Widget*> found;
  if (window != nullptr) {
    Collect(*window, found);
  } else {
    const std::vector<Fl_Window*> shown = ShownWindows();
    if (!shown.empty()) { Collect(*dice.Of(shown), found); }
  }
  return found.empty() ? nullptr : dice.Of(found);
}

int RandomUser::AnyButton() {
  const int chance = dice.Below(20);
  if (chance == 0) { return 2; }
  return chance < 3 ? 3 : 1;
}

void RandomUser::ClickInside(Fl_Widget* widget, int button) {
  Fl_Window* window = widget->as_window();
  const int x = dice.Below(widget->w()) + (window != nullptr ? 0 : widget->x());
  const int y = dice.Below(widget->h()) + (window != nullptr ? 0 : widget->y());
  Interface::ClickAt(window != nullptr ? window : widget->window(), x, y, button);
}

void RandomUser::PressAButton() {
  auto* button = Any<Fl_Button>();
  if (button == nullptr) { return; }
  const int mouse = AnyButton();
  last_actions::Note("%d/%d: press %s with %d", number, depth, PlaceOf(button).c_str(), mouse);
  ClickInside(button, mouse);
}

void RandomUser::PressAMeasure() {
  if (!MainIsShown()) { return; }
  const MainUI& ui = *mainUI;
  Fl_Button* const volume[] = {ui.overlayResult3DButton, ui.haussdorf3DButton,
                               ui.surfaceDistanceButton};
  auto* button = dice.OneIn(3)
                     ? volume[dice.Below(3)]
                     : Any<Fl_Button>(dice.OneIn(6) ? mainUI->toolGroup : mainUI->measuresGroup);
  if (button == nullptr) { return; }
  last_actions::Note("%d/%d: measure %s", number, depth, PlaceOf(button).c_str());
  ClickInside(button, 1);
}

void RandomUser::MoveASlider() {
  auto* slider = Any<Fl_Valuator>();
  if (slider == nullptr) { return; }
  Fl_Window* window = slider->window();
  const int mouse = AnyButton();
  const int fromX = slider->x() + dice.Below(slider->w());
  const int fromY = slider->y() + dice.Below(slider->h());
  const bool extreme = dice.OneIn(3);
  const int toX = extreme ? (dice.OneIn(2) ? -5000 : 5000) : slider->x() + dice.Below(slider->w());
  const int toY = extreme ? toX : slider->y() + dice.Below(slider->h());
  last_actions::Note("%d/%d: drag %s from %d, %d to %d, %d with %d", number, depth,
                     PlaceOf(slider).c_str(), fromX, fromY, toX, toY, mouse);
  if (dice.OneIn(6)) {
    Wheel(window, fromX, fromY);
  } else {
    Interface::Drag(window, fromX, fromY, toX, toY, mouse);
  }
}

void RandomUser::Wheel(Fl_Window* window, int x, int y) {
  Fl::e_x = x;
  Fl::e_y = y;
  Fl::e_dy = dice.OneIn(2) ? 1 : -1;
  Fl::handle(FL_MOUSEWHEEL, window);
}

void RandomUser::TypeIntoAField() {
  auto* counter = Any<Fl_Value_Input>();
  auto* text = Any<Fl_Input>();
  Fl_Widget* field = text;
  if (counter != nullptr && (text == nullptr || dice.OneIn(2))) { field = counter; }
  if (field == nullptr) { return; }
  const std::string& typed = dice.Of(kTexts);
  last_actions::Note("%d/%d: type \"%.40s\" into %s", number, depth, typed.c_str(),
                     PlaceOf(field).c_str());
  ClickInside(field, 1);
  if (!dice.OneIn(4)) {
    if (auto* input = dynamic_cast<Fl_Input_*>(Fl::focus())) { input->position(input->size(), 0); }
  }
  Type(typed);
  if (dice.OneIn(2) && field->window() != nullptr) { Key(field->window(), FL_Enter, "\r"); }
}

/// Short texts come letter by letter, long ones are pasted.
void RandomUser::Type(const std::string& text) {
  Fl_Widget* field = Fl::focus();
  if (field == nullptr) { return; }
  if (text.size() < 20 && dice.OneIn(2)) {
    Fl_Widget_Tracker there(field);
    for (const char letter : text) {
      if (there.deleted() || field->window() == nullptr) { return; }
      const char one[2] = {letter, '\0'};
      Key(field->window(), static_cast<unsigned char>(letter), one);
    }
    return;
  }
  std::string pasted = text;
  Fl::e_text = pasted.data();
  Fl::e_length = static_cast<int>(pasted.size());
  field->handle(FL_PASTE);
}

void RandomUser::Key(Fl_Window* window, int key, const char* text) {
  static char buffer[8];  // the toolkit writes into it
  std::strncpy(buffer, text, sizeof buffer - 1);
  Fl::e_text = buffer;
  Fl::e_length = static_cast<int>(std::strlen(buffer));
  Fl::e_keysym = key;
  Fl::e_original_keysym = key;
  Fl::handle(FL_KEYBOARD, window);
  Fl::e_text = buffer;
  Fl::handle(FL_KEYUP, window);
}

void RandomUser::OpenAMenu() {
  auto* menu = Any<Fl_Menu_>();
  if (menu == nullptr) { return; }
  last_actions::Note("%d/%d: open %s", number, depth, PlaceOf(menu).c_str());
  ClickInside(menu, AnyButton());
}

void RandomUser::UseAView() {
  if (!MainIsShown()) { return; }
  Fl_Window* const views[] = {mainUI->xyView, mainUI->yzView, mainUI->xzView, mainUI->segimage,
                              mainUI->window3D};
  Fl_Window* view = views[dice.Below(5)];
  const int mouse = 1 + dice.Below(3);
  const int modifiers = kModifiers[dice.Below(8)];
  const int x = dice.Below(view->w());
  const int y = dice.Below(view->h());
  last_actions::Note("%d/%d: use %s at %d, %d with %d, %x", number, depth, PlaceOf(view).c_str(), x,
                     y, mouse, static_cast<unsigned>(modifiers));
  Fl::e_state = modifiers;
  const int kind = dice.Below(8);
  if (kind == 0) {
    Wheel(view, x, y);
  } else if (kind < 4) {
    Interface::ClickAt(view, x, y, mouse);
  } else {
    Interface::Press(view, x, y, mouse);
    for (int moves = dice.Below(4); moves >= 0; --moves) {
      const bool far = dice.OneIn(5);
      Interface::DragTo(view, far ? -4000 : dice.Below(view->w()),
                        far ? 9000 : dice.Below(view->h()), mouse);
    }
    Interface::Release(view, dice.Below(view->w()), dice.Below(view->h()), mouse);
  }
  Fl::e_state = 0;
}

void RandomUser::ClickAnywhere() {
  const std::vector<Fl_Window*> shown = ShownWindows();
  if (shown.empty()) { return; }
  Fl_Window* window = dice.Of(shown);
  const int mouse = AnyButton();
  const int x = dice.Below(window->w());
  const int y = dice.Below(window->h());
  last_actions::Note("%d/%d: click \"%s\" at %d, %d with %d", number, depth, LabelOf(window), x, y,
                     mouse);
  Interface::ClickAt(window, x, y, mouse);
}

void RandomUser::PressAKey() {
  const std::vector<Fl_Window*> shown = ShownWindows();
  if (shown.empty()) { return; }
  Fl_Window* window = dice.Of(shown);
  char text[2] = "";
  int key = 0;
  if (dice.OneIn(2)) {
    key = kOtherKeys[dice.Below(static_cast<int>(std::size(kOtherKeys)))];
  } else {
    text[0] = kKeys[dice.Below(static_cast<int>(std::strlen(kKeys)))];
    key = text[0];
  }
  const int modifiers = kModifiers[dice.Below(8)];
  last_actions::Note("%d/%d: key %x, %x in \"%s\"", number, depth, static_cast<unsigned>(key),
                     static_cast<unsigned>(modifiers), LabelOf(window));
  Fl::e_state = modifiers;
  Key(window, key, text);
  Fl::e_state = 0;
}
