// The stored pictures, made once and kept for the whole run.
#pragma once

#include <FL/Fl_Pixmap.H>

namespace pictures {

Fl_Pixmap& Move();       ///< 23 by 23: a square with a cross of four arrows
Fl_Pixmap& Crosshair();  ///< 26 by 26: a dashed cross
Fl_Pixmap& Banner();     ///< 306 by 40: the product banner
Fl_Pixmap& Product();    ///< 401 by 241: the product picture

}  // namespace pictures
