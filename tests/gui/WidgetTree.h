// Walks a finished window and tells each widget's kind, place and settings in words.
//
// A setting is told where it differs from a fresh widget of the same kind, so that what a table
// does not name has to be as the toolkit leaves it.
#pragma once

#include "tests/support/Interface.h"

#include <FL/Fl_Box.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Check_Button.H>
#include <FL/Fl_Choice.H>
#include <FL/Fl_Gl_Window.H>
#include <FL/Fl_Group.H>
#include <FL/Fl_Input.H>
#include <FL/Fl_Menu_Bar.H>
#include <FL/Fl_Output.H>
#include <FL/Fl_Roller.H>
#include <FL/Fl_Round_Button.H>
#include <FL/Fl_Scrollbar.H>
#include <FL/Fl_Slider.H>
#include <FL/Fl_Value_Input.H>
#include <FL/Fl_Value_Output.H>
#include <FL/Fl_Window.H>

#include <algorithm>
#include <cxxabi.h>
#include <memory>
#include <ostream>
#include <sstream>
#include <string>
#include <tuple>
#include <typeinfo>
#include <vector>

namespace tree {

using Member = Fl_Widget* (*)(MainUI&);

/// One widget as a table has it.
struct Row {
  int depth;  ///< 1: child of the window
  const char* kind;
  int x, y, w, h;
  const char* label;
  std::string settings = "";  ///< what differs from a fresh widget, in the order of Settings()
  Member member = nullptr;    ///< null: no member
};

/// One widget as it was found or is wanted.
struct Found {
  int depth = 0;
  std::string kind;
  int x = 0, y = 0, w = 0, h = 0;
  std::string label;
  std::string settings;

  auto Key() const { return std::tie(depth, kind, x, y, w, h, label, settings); }
  bool operator==(const Found& other) const { return Key() == other.Key(); }
};

inline std::ostream& operator<<(std::ostream& stream, const Found& row) {
  return stream << row.depth << " " << row.kind << " " << row.x << ", " << row.y << ", " << row.w
                << ", " << row.h << " \"" << row.label << "\" [" << row.settings << "]";
}

inline std::string KindOf(const Fl_Widget& widget) {
  int status = 0;
  const std::unique_ptr<char, void (*)(void*)> name(
      abi::__cxa_demangle(typeid(widget).name(), nullptr, nullptr, &status), std::free);
  return name.get();
}

inline std::string BoxName(int box) {
  const std::pair<int, const char*> names[] = {{FL_NO_BOX, "none"},
                                               {FL_FLAT_BOX, "flat"},
                                               {FL_UP_BOX, "up"},
                                               {FL_DOWN_BOX, "down"},
                                               {FL_THIN_DOWN_BOX, "thin_down"},
                                               {FL_BORDER_BOX, "border"},
                                               {FL_ROUND_UP_BOX, "round_up"},
                                               {FL_ROUND_DOWN_BOX, "round_down"},
                                               {FL_DIAMOND_DOWN_BOX, "diamond_down"}};
  for (const auto& [value, name] : names) {
    if (value == box) { return name; }
  }
  return std::to_string(box);
}

template <class Widget>
std::unique_ptr<Fl_Widget> Make(const Fl_Widget& like) {
  return std::make_unique<Widget>(like.x(), like.y(), like.w(), like.h());
}

/// A widget of the same kind as the toolkit makes it; for our own windows the toolkit's window.
inline std::unique_ptr<Fl_Widget> FreshLike(const Fl_Widget& like) {
  using Maker = std::unique_ptr<Fl_Widget> (*)(const Fl_Widget&);
  const std::pair<const char*, Maker> makers[] = {
      {"Fl_Box", Make<Fl_Box>},
      {"Fl_Button", Make<Fl_Button>},
      {"Fl_Check_Button", Make<Fl_Check_Button>},
      {"Fl_Choice", Make<Fl_Choice>},
      {"Fl_Group", Make<Fl_Group>},
      {"Fl_Input", Make<Fl_Input>},
      {"Fl_Menu_Bar", Make<Fl_Menu_Bar>},
      {"Fl_Output", Make<Fl_Output>},
      {"Fl_Roller", Make<Fl_Roller>},
      {"Fl_Round_Button", Make<Fl_Round_Button>},
      {"Fl_Scrollbar", Make<Fl_Scrollbar>},
      {"Fl_Slider", Make<Fl_Slider>},
      {"Fl_Value_Input", Make<Fl_Value_Input>},
      {"Fl_Value_Output", Make<Fl_Value_Output>},
  };
  const std::string kind = KindOf(like);
  Fl_Group::current(nullptr);
  for (const auto& [name, maker] : makers) {
    if (kind == name) { return maker(like); }
  }
  const bool gl = dynamic_cast<const Fl_Gl_Window*>(&like) != nullptr;
  std::unique_ptr<Fl_Widget> window = gl ? Make<Fl_Gl_Window>(like) : Make<Fl_Window>(like);
  Fl_Group::current(nullptr);
  return window;
}

/// Settings as numbers and names.
class SettingList {
public:
  std::vector<std::pair<std::string, std::string>> entries;

  template <class Value>
  void Add(const char* name, const Value& value) {
    std::ostringstream text;
    text << value;
    entries.emplace_back(name, text.str());
  }
};

inline void AddBoxes(SettingList& list, Fl_Widget& widget) {
  list.Add("box", BoxName(widget.box()));
  if (const auto* button = dynamic_cast<Fl_Button*>(&widget)) {
    list.Add("down", BoxName(button->down_box()));
  } else if (const auto* menu = dynamic_cast<Fl_Menu_*>(&widget)) {
    list.Add("down", BoxName(menu->down_box()));
  }
  list.Add("color", widget.color());
  list.Add("selection", widget.selection_color());
}

inline void AddTexts(SettingList& list, Fl_Widget& widget) {
  list.Add("labeltype", widget.labeltype() == FL_EMBOSSED_LABEL ? "embossed" : "normal");
  list.Add("labelfont", widget.labelfont());
  list.Add("labelsize", widget.labelsize());
  list.Add("labelcolor", widget.labelcolor());
  if (const auto* text = dynamic_cast<Fl_Input_*>(&widget)) {
    list.Add("textsize", text->textsize());
  } else if (const auto* menu = dynamic_cast<Fl_Menu_*>(&widget)) {
    list.Add("textsize", menu->textsize());
  } else if (const auto* input = dynamic_cast<Fl_Value_Input*>(&widget)) {
    list.Add("textsize", input->textsize());
  } else if (const auto* output = dynamic_cast<Fl_Value_Output*>(&widget)) {
    list.Add("textsize", output->textsize());
  }
  list.Add("align", widget.align());
}

inline void AddValues(SettingList& list, Fl_Widget& widget) {
  if (auto* valuator = dynamic_cast<Fl_Valuator*>(&widget)) {
    list.Add("minimum", valuator->minimum());
    list.Add("maximum", valuator->maximum());
    list.Add("step", valuator->step());
    list.Add("value", valuator->value());
  }
  if (auto* scrollbar = dynamic_cast<Fl_Scrollbar*>(&widget)) {
    list.Add("linesize", scrollbar->linesize());
  }
  if (const auto* button = dynamic_cast<Fl_Button*>(&widget)) {
    list.Add("value", int{button->value()});
  }
  if (const auto* choice = dynamic_cast<Fl_Choice*>(&widget)) {
    list.Add("value", choice->value());
  }
}

/// The settings of a widget in a fixed order.
inline std::vector<std::pair<std::string, std::string>> Settings(Fl_Widget& widget) {
  SettingList list;
  AddBoxes(list, widget);
  AddTexts(list, widget);
  // A double buffered window is no setting of a table.
  if (dynamic_cast<Fl_Window*>(&widget) == nullptr) { list.Add("type", int{widget.type()}); }
  list.Add("when", static_cast<int>(widget.when()));
  AddValues(list, widget);
  list.Add("hidden", widget.visible() == 0);
  list.Add("inactive", widget.active() == 0);
  list.Add("picture", widget.image() != nullptr);
  return list.entries;
}

/// "box=down, labelsize=10": the settings that differ from a fresh widget.
inline std::string Differences(Fl_Widget& widget) {
  const std::unique_ptr<Fl_Widget> fresh = FreshLike(widget);
  const auto is = Settings(widget);
  const auto was = Settings(*fresh);
  std::string text;
  for (std::size_t i = 0; i < is.size(); ++i) {
    if (is[i] == was[i]) { continue; }
    text += (text.empty() ? "" : ", ") + is[i].first + "=" + is[i].second;
  }
  return text;
}

inline void Walk(Fl_Group& group, int depth, std::vector<Found>& rows,
                 std::vector<Fl_Widget*>& widgets) {
  for (int i = 0; i < group.children(); ++i) {
    Fl_Widget& child = *group.child(i);
    rows.push_back({depth, KindOf(child), child.x(), child.y(), child.w(), child.h(),
                    child.label() != nullptr ? child.label() : "", Differences(child)});
    widgets.push_back(&child);
    if (auto* inner = dynamic_cast<Fl_Group*>(&child)) { Walk(*inner, depth + 1, rows, widgets); }
  }
}

/// Every widget below `window` is a row of `table`, in its order, and the members point there.
inline void ExpectTree(MainUI& ui, Fl_Group& window, const std::vector<Row>& table) {
  std::vector<Found> found;
  std::vector<Fl_Widget*> widgets;
  Walk(window, 1, found, widgets);

  ASSERT_EQ(found.size(), table.size());
  for (std::size_t i = 0; i < table.size(); ++i) {
    const Row& row = table[i];
    const Found wanted{row.depth, row.kind, row.x, row.y, row.w, row.h, row.label, row.settings};
    EXPECT_EQ(found[i], wanted) << "row " << i;
    if (row.member != nullptr) {
      EXPECT_EQ(row.member(ui), widgets[i]) << "member of row " << i << ": " << wanted;
    }
  }
}

/// The same for the children of a group whose order does not matter.
inline void ExpectChildren(MainUI& ui, Fl_Group& group, const std::vector<Row>& table) {
  std::vector<Found> found;
  std::vector<Fl_Widget*> widgets;
  Walk(group, 1, found, widgets);

  EXPECT_EQ(found.size(), table.size());
  for (const Row& row : table) {
    const Found wanted{row.depth, row.kind, row.x, row.y, row.w, row.h, row.label, row.settings};
    const auto place = std::find(found.begin(), found.end(), wanted);
    if (place == found.end()) {
      const auto near = std::find_if(found.begin(), found.end(), [&](const Found& other) {
        return other.x == row.x && other.y == row.y;
      });
      ADD_FAILURE() << "missing: " << wanted;
      if (near != found.end()) { ADD_FAILURE() << "found instead: " << *near; }
    } else if (row.member != nullptr) {
      EXPECT_EQ(row.member(ui), widgets[static_cast<std::size_t>(place - found.begin())]) << wanted;
    }
  }
}

}  // namespace tree

/// The member of MainUI behind a row.
#define MEMBER(name)                                                                               \
  [](MainUI& owner) -> Fl_Widget* {                                                                \
    return owner.name;                                                                             \
  }
