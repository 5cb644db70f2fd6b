#include "ui/Fields.h"

#include <FL/Fl.H>
#include <FL/Fl_Choice.H>
#include <FL/Fl_Input_.H>
#include <FL/Fl_Valuator.H>
#include <FL/fl_draw.H>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>

namespace {

constexpr int kNumberText = 400;  // the longest double under "%f" has 310 digits before the point

// Menu labels as they are named: "&" and "@" are characters of a file name, not commands.
constexpr Fl_Labeltype kLiteralLabel = FL_FREE_LABELTYPE;

void DrawLiteral(const Fl_Label* label, int x, int y, int w, int h, Fl_Align align) {
  const char shortcut = fl_draw_shortcut;
  fl_draw_shortcut = 0;
  fl_font(label->font, label->size);
  fl_color(static_cast<Fl_Color>(label->color));
  fl_draw(label->value, x, y, w, h, align, nullptr, 0);
  fl_draw_shortcut = shortcut;
}

void MeasureLiteral(const Fl_Label* label, int& w, int& h) {
  const char shortcut = fl_draw_shortcut;
  fl_draw_shortcut = 0;
  fl_font(label->font, label->size);
  fl_measure(label->value, w, h, 0);
  fl_draw_shortcut = shortcut;
}

}  // namespace

void SetField(Fl_Input_* field, const char* format, double value) {
  char text[kNumberText];
  std::snprintf(text, sizeof text, format, value);
  field->value(text);
}

void SetField(Fl_Input_* field, const char* format, int value) {
  char text[kNumberText];
  std::snprintf(text, sizeof text, format, value);
  field->value(text);
}

void SetField(Fl_Input_* field, const char* text) { field->value(text); }

int ChosenIndex(const Fl_Choice* choice) {
  const Fl_Menu_Item* chosen = choice->mvalue();
  return chosen != nullptr ? static_cast<int>(chosen - choice->menu()) : 0;
}

const char* EntryText(const Fl_Choice* choice, int index) {
  if (index < 0 || index >= choice->size() - 1) { return ""; }
  const char* text = choice->menu()[index].text;
  return text != nullptr ? text : "";
}

int AddEntry(Fl_Choice* choice, const char* text) {
  static const bool registered = [] {
    Fl::set_labeltype(kLiteralLabel, DrawLiteral, MeasureLiteral);
    return true;
  }();
  static_cast<void>(registered);
  const int count = choice->size() - 1;  // the end mark is no entry
  for (int i = 0; i < count; ++i) {
    if (std::strcmp(EntryText(choice, i), text) == 0) { return i; }
  }
  const int index =
      choice->insert(-1, "x", 0, nullptr);  // insert parses its text, replace does not
  choice->replace(index, text);
  const_cast<Fl_Menu_Item*>(choice->menu())[index].labeltype(kLiteralLabel);
  return index;
}

int Truncated(double value) {
  if (std::isnan(value)) { return 0; }
  if (value >= static_cast<double>(std::numeric_limits<int>::max())) {
    return std::numeric_limits<int>::max();
  }
  if (value <= static_cast<double>(std::numeric_limits<int>::min())) {
    return std::numeric_limits<int>::min();
  }
  return static_cast<int>(value);
}

int Truncated(const Fl_Valuator* valuator) { return Truncated(valuator->value()); }
