// Placing widgets: areas, the styles of the tables, and the one way to make a widget.
#pragma once

#include "ui/MainUI.h"

#include <FL/Fl.H>
#include <FL/Fl_Box.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Output.H>
#include <FL/Fl_Window.H>

/// Pixels inside the root window.
struct Area {
  int x, y, w, h;
};

template <class Widget>
Widget* Put(Area area, const char* label = nullptr) {
  return new Widget(area.x, area.y, area.w, area.h, label);
}

/// A button of round style; `labelSize` 12 unless its table says otherwise.
inline Fl_Button* PutRound(Area area, const char* label, Fl_Callback* callback,
                           void* data = nullptr, int labelSize = 12) {
  auto* button = Put<Fl_Button>(area, label);
  button->box(FL_ROUND_UP_BOX);
  button->down_box(FL_ROUND_DOWN_BOX);
  button->labelsize(labelSize);
  button->callback(callback, data);
  return button;
}

/// An output of field style.
inline Fl_Output* PutField(Area area, const char* label, int labelSize = 10) {
  auto* field = Put<Fl_Output>(area, label);
  field->labelsize(labelSize);
  field->textsize(10);
  return field;
}

inline Fl_Box* PutFrame(Area area) {
  auto* frame = Put<Fl_Box>(area);
  frame->box(FL_DOWN_BOX);
  return frame;
}

inline Fl_Box* PutRaised(Area area, const char* label = nullptr) {
  auto* box = Put<Fl_Box>(area, label);
  box->box(FL_UP_BOX);
  return box;
}

/// A window of its own that belongs to `ui`.
inline Fl_Window* BeginWindow(MainUI& ui, int w, int h, const char* title) {
  auto* window = new Fl_Window(w, h, title);
  window->user_data(&ui);
  return window;
}

/// The interface that a widget belongs to.
inline MainUI& OwnerOf(Fl_Widget* widget) {
  return *static_cast<MainUI*>(widget->top_window()->user_data());
}

/// The close box of a window whose content would be lost: Escape, which the toolkit takes for it
/// and which is pressed by mistake, closes nothing.
inline void HideUnlessEscape(Fl_Widget* window, void* /*data*/) {
  const bool escape = Fl::event() == FL_SHORTCUT && Fl::event_key() == FL_Escape;
  if (!escape) { window->hide(); }
}

/// Hides the window of a "Close" or "Cancel" button.
inline void HideOwnWindow(Fl_Widget* widget, void* /*data*/) { widget->top_window()->hide(); }
