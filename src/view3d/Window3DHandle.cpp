// Window3D: turning, moving, zooming and picking.
#include "VoxData/VoxData.h"
#include "app/Globals.h"
#include "app/ViewState.h"
#include "ui/Fields.h"
#include "ui/MainUI.h"
#include "ui/StudyChecks.h"
#include "view3d/Window3D.h"

#include <FL/Fl.H>
#include <FL/Fl_Check_Button.H>
#include <FL/Fl_Slider.H>
#include <FL/gl.h>
#include <GL/glu.h>

#include <iostream>

namespace {

enum Operation { kNothing = 0, kPan = 1, kZoom = 2, kRotate = 3 };

}  // namespace

int Window3D::SphereHeight() const {
  return ui != nullptr && ui->isotropic3DCheck->value() != 0 ? w() : h();
}

void Window3D::PressMouse() {
  if (mouseOperation != kNothing) { return; }  // a second button during a drag
  const int button = Fl::event_button();
  const int x = Fl::event_x();
  const int y = Fl::event_y();
  if (button == 1 && ctrlAtPress == 0) {
    mouseOperation = kRotate;
    trackball.StartRotate(x, y, w(), SphereHeight());
    const auto cursor = viewState->GetCursor();
    for (int axis = 0; axis < 3; ++axis) {
      rotationCentre[axis] =
          static_cast<float>(cursor[static_cast<std::size_t>(axis)]) * voxelScale[axis];
    }
  } else if (button == 1 || button == 2) {
    mouseOperation = kPan;
    trackball.StartPan(x, y);
  } else if (button == 3) {
    mouseOperation = kZoom;
    trackball.StartZoom(y);
  }
  pressedButton = button;
}

void Window3D::DragMouse() {
  const int x = Fl::event_x();
  const int y = Fl::event_y();
  switch (mouseOperation) {
  case kRotate: trackball.Rotate(x, y, w(), SphereHeight()); break;
  case kZoom: {
    const float factor = trackball.Zoom(y);
    viewExtent[0] = halfExtent[0] / factor;
    viewExtent[1] = halfExtent[1] / factor;
    SetProjection();
    break;
  }
  case kPan: trackball.Pan(x, y, w(), h(), 2 * viewExtent[0], 2 * viewExtent[1]); break;
  default: return;
  }
  redraw();
}

void Window3D::ReleaseMouse() {
  const int button = Fl::event_button();
  if (button != pressedButton) { return; }
  if (button == 2 || (button == 1 && ctrlAtPress != 0)) {
    trackball.EndPan();
  } else if (button == 1) {
    trackball.EndRotate();
  } else if (button == 3) {
    trackball.EndZoom();
  }
  mouseOperation = kNothing;
  pressedButton = 0;
}

int Window3D::PickVoxel(int x, int y, int* voxel) {
  if (ui == nullptr || !CanDraw()) { return 0; }
  const VoxData* image = ImageAt(*ui, Truncated(ui->imageSlider));
  if (image == nullptr) { return 0; }  // without an image there is nothing to pick
  make_current();
  glMatrixMode(GL_MODELVIEW);
  glPushMatrix();
  ApplyView();
  glScalef(voxelScale[0], voxelScale[1], voxelScale[2]);
  GLint viewport[4];
  GLdouble model[16];
  GLdouble projection[16];
  glGetIntegerv(GL_VIEWPORT, viewport);
  glGetDoublev(GL_MODELVIEW_MATRIX, model);
  glGetDoublev(GL_PROJECTION_MATRIX, projection);
  glPopMatrix();

  const double fromBottom = viewport[3] - y - 1;
  GLdouble near[3] = {0.0, 0.0, 0.0};
  GLdouble far[3] = {0.0, 0.0, 0.0};
  if (gluUnProject(x, fromBottom, 0.0, model, projection, viewport, &near[0], &near[1], &near[2]) !=
      GL_TRUE) {
    std::cerr << "gluUnProject #1 FAILED!!!!!" << std::endl;
  }
  if (gluUnProject(x, fromBottom, 1.0, model, projection, viewport, &far[0], &far[1], &far[2]) !=
      GL_TRUE) {
    std::cerr << "gluUnProject #2 FAILED!!!!!" << std::endl;
  }
  const int hit = image->CastRay(near[0], near[1], near[2], far[0] - near[0], far[1] - near[1],
                                 far[2] - near[2], voxel);
  if (hit == 1) { return 1; }
  std::cerr << (hit == -1 ? "RAY WAS INVALID!" : "No hit found") << std::endl;
  return 0;
}

void Window3D::Pick() {
  int voxel[3];
  if (Fl::event_button() != FL_LEFT_MOUSE) { return; }
  if (PickVoxel(Fl::event_x(), Fl::event_y(), voxel) != 1) { return; }
  viewState->SetCursor(voxel[0], voxel[1], voxel[2]);
  ui->SyncCursorSliders();
  ui->RedrawViews();
}

int Window3D::handle(int event) {
  // The toolkit maps a child window through these two.
  if (event == FL_SHOW || event == FL_HIDE) { Fl_Gl_Window::handle(event); }
  switch (viewState->GetToolMode()) {
  case 1:
    if (event == FL_PUSH) {
      // ON PURPOSE: every press counts, also that of a second button, which is ignored otherwise.
      ctrlAtPress = Fl::get_key(FL_Control_L) != 0 ? 1 : 0;
      PressMouse();
    } else if (event == FL_RELEASE) {
      ReleaseMouse();
    } else if (event == FL_DRAG) {
      DragMouse();
    } else {
      return 0;
    }
    return 1;
  case 3:
    if (event != FL_PUSH) { return 0; }
    Pick();
    return 1;
  default: std::cerr << "Case not handled in  Window3D::handle(int)" << std::endl; return 0;
  }
}
