// Window2D: mouse and keys.
#include "views/SliceViewHandle.h"
#include "views/Window2D.h"

int Window2D::handle(int event) {
  // The toolkit maps a child window through these two.
  if (event == FL_SHOW || event == FL_HIDE) { Fl_Gl_Window::handle(event); }
  return slice::HandleEvent(*this, event);
}
