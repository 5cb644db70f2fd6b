// Segimage: mouse and keys.
#include "views/Segimage.h"
#include "views/SliceViewHandle.h"

int Segimage::handle(int event) {
  // The toolkit maps a child window through these two.
  if (event == FL_SHOW || event == FL_HIDE) { Fl_Gl_Window::handle(event); }
  return slice::HandleEvent(*this, event);
}
