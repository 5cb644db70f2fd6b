// Styles that several dialogs share.
#pragma once

#include "ui/Put.h"

namespace dialogs {

inline void StyleWindow(Fl_Window* window, int colour, Fl_Font labelFont) {
  window->box(FL_UP_BOX);
  window->color(static_cast<Fl_Color>(colour));
  window->labelfont(labelFont);
  window->labelcolor(176);
}

/// A widget with a bold label of size 12.
template <class Widget>
Widget* PutBold(Area area, const char* label) {
  auto* widget = Put<Widget>(area, label);
  widget->labelfont(FL_HELVETICA_BOLD);
  widget->labelsize(12);
  return widget;
}

/// "Load" and "Cancel": round, bold, in the colour of their window.
inline Fl_Button* PutBoldRound(Area area, const char* label, Fl_Callback* callback) {
  Fl_Button* button = PutRound(area, label, callback);
  button->color(48);
  button->labelfont(FL_HELVETICA_BOLD);
  return button;
}

/// "Close": round with an embossed label.
inline Fl_Button* PutClose(Area area) {
  Fl_Button* button = PutRound(area, "Close", HideOwnWindow);
  button->labeltype(FL_EMBOSSED_LABEL);
  return button;
}

}  // namespace dialogs
