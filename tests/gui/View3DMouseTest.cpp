// The mouse in the 3D view: turning, moving, zooming and picking.
#include "tests/gui/View3DScene.h"
#include "tests/support/Golden.h"
#include "ui/ColorLegend.h"
#include "views/Segimage.h"
#include "views/Window2D.h"

#include <FL/Fl_Button.H>
#include <FL/Fl_Output.H>
#include <FL/Fl_Scrollbar.H>
#include <GL/glu.h>

#include <cmath>
#include <cstdlib>
#include <string>

namespace {

constexpr std::array<int, 3> kDims = {20, 24, 30};
constexpr std::array<float, 3> kSpacing = {2.0F, 1.0F, 0.5F};

/// A box of label 3 in the middle of an anisotropic image.
class View3DMouseTest : public View3DScene {
protected:
  void SetUp() override {
    View3DScene::SetUp();
    AddImage(kDims, kSpacing, [](int x, int y, int z) {
      return x >= 6 && x <= 13 && y >= 8 && y <= 15 && z >= 10 && z <= 19 ? 3 : 0;
    });
    View().SetupView();
    View().displayedSurfaces = 1;
    Settle();
    TakeErrors();
  }

  static void Control(bool down) {
    const char* const command = down ? "xdotool keydown Control_L" : "xdotool keyup Control_L";
    ASSERT_EQ(std::system(command), 0);
    ASSERT_TRUE(WaitFor([down] { return (Fl::get_key(FL_Control_L) != 0) == down; }));
  }
  void PickTool() { viewState->SetToolMode(3); }

  /// Where a point in voxel units appears in the view, in the toolkit's pixels.
  std::array<double, 3> Seen(double x, double y, double z) {
    const Trackball& ball = View().trackball;
    const float* centre = View().rotationCentre;
    const double p[3] = {x * kSpacing[0] - centre[0], y * kSpacing[1] - centre[1],
                         z * kSpacing[2] - centre[2]};
    std::array<double, 3> eye{};
    for (std::size_t row = 0; row < 3; ++row) {
      eye[row] = centre[row];
      for (std::size_t k = 0; k < 3; ++k) { eye[row] += ball.rotation[4 * k + row] * p[k]; }
    }
    eye[0] += ball.pan[0];
    eye[1] += ball.pan[1];
    const auto share = [this](double value, int axis) {
      return (value - View().viewCentre[axis]) / (4.0 * View().viewExtent[axis]) + 0.5;
    };
    return {share(eye[0], 0) * View().w(), View().h() - 1 - share(eye[1], 1) * View().h(), eye[2]};
  }
  void ClickVoxel(int x, int y, int z) {
    const auto at = Seen(x, y, z);
    ClickAt(&View(), static_cast<int>(std::lround(at[0])), static_cast<int>(std::lround(at[1])));
  }
  std::array<int, 3> Cursor() { return viewState->GetCursor(); }
};

TEST_F(View3DMouseTest, ALeftDragTurnsThroughTheSphereOfTheWindow) {
  Trackball known;
  known.StartRotate(100, 100, View().w(), View().h());
  known.Rotate(150, 80, View().w(), View().h());
  known.Rotate(170, 90, View().w(), View().h());

  Press(&View(), 100, 100);
  EXPECT_EQ(View().mouseOperation, 3);
  EXPECT_EQ(View().pressedButton, 1);
  DragTo(&View(), 150, 80);
  DragTo(&View(), 170, 90);
  Release(&View(), 170, 90);

  for (int i = 0; i < 16; ++i) { EXPECT_EQ(View().trackball.rotation[i], known.rotation[i]) << i; }
  EXPECT_EQ(View().mouseOperation, 0);
  EXPECT_EQ(View().pressedButton, 0);
  EXPECT_EQ(View().trackball.active, 0);
}

TEST_F(View3DMouseTest, ATurnGoesAboutTheCursorInWorldUnits) {
  viewState->SetCursor(5, 6, 7);

  Press(&View(), 100, 100);

  EXPECT_FLOAT_EQ(View().rotationCentre[0], 10.0F);
  EXPECT_FLOAT_EQ(View().rotationCentre[1], 6.0F);
  EXPECT_FLOAT_EQ(View().rotationCentre[2], 3.5F);
  Release(&View(), 100, 100);
}

TEST_F(View3DMouseTest, WhatIsTurnedAboutStaysInItsPlace) {
  viewState->SetCursor(9, 11, 14);
  Press(&View(), 100, 100);
  const auto before = Seen(9, 11, 14);
  DragTo(&View(), 180, 30);
  Release(&View(), 180, 30);

  const auto after = Seen(9, 11, 14);

  for (std::size_t i = 0; i < 3; ++i) { EXPECT_NEAR(after[i], before[i], 1e-3); }
}

TEST_F(View3DMouseTest, TheIsotropicOptionTurnsOnASquareSphere) {
  Ui().isotropic3DCheck->value(1);
  Trackball known;
  known.StartRotate(30, 100, View().w(), View().w());
  known.Rotate(150, 20, View().w(), View().w());

  Drag(&View(), 30, 100, 150, 20);

  for (int i = 0; i < 16; ++i) { EXPECT_EQ(View().trackball.rotation[i], known.rotation[i]) << i; }
}

TEST_F(View3DMouseTest, ADragThatLeavesTheWindowGoesOn) {
  Press(&View(), 100, 100);
  DragTo(&View(), 900, -700);

  EXPECT_NEAR(View().trackball.lastPoint[2], 0.0F, 1e-6);
  EXPECT_NE(View().trackball.rotation[0], 1.0F);
  EXPECT_EQ(View().mouseOperation, 3);
  Release(&View(), 900, -700);
  EXPECT_EQ(View().mouseOperation, 0);
}

TEST_F(View3DMouseTest, AMiddleDragMovesThePicture) {
  Press(&View(), 100, 100, 2);
  EXPECT_EQ(View().mouseOperation, 1);
  DragTo(&View(), 124, 77, 2);
  Release(&View(), 124, 77, 2);

  EXPECT_FLOAT_EQ(View().trackball.pan[0], 24 * 2 * View().viewExtent[0] / View().w());
  EXPECT_FLOAT_EQ(View().trackball.pan[1], 23 * 2 * View().viewExtent[1] / View().h());
  EXPECT_EQ(View().trackball.panBase[0], View().trackball.pan[0]);
}

TEST_F(View3DMouseTest, MovingTakesTheRealHeightAlsoWhenIsotropic) {
  Ui().isotropic3DCheck->value(1);
  Drag(&View(), 100, 100, 100, 77, 2);

  EXPECT_FLOAT_EQ(View().trackball.pan[1], 23 * 2 * View().viewExtent[1] / View().h());
}

TEST_F(View3DMouseTest, MovingFollowsTheZoom) {
  Drag(&View(), 100, 150, 100, 80, 3);
  Drag(&View(), 100, 100, 124, 100, 2);

  EXPECT_FLOAT_EQ(View().trackball.pan[0],
                  24 * 2 * (View().halfExtent[0] / View().trackball.zoom) / View().w());
}

TEST_F(View3DMouseTest, LeftWithControlMovesAndStillEndsAMoveWithoutIt) {
  Control(true);
  Press(&View(), 100, 100);
  EXPECT_EQ(View().mouseOperation, 1);
  EXPECT_NE(View().ctrlAtPress, 0);
  Control(false);
  DragTo(&View(), 124, 100);
  Release(&View(), 124, 100);

  EXPECT_NE(View().trackball.panBase[0], 0.0F);
  EXPECT_EQ(View().trackball.panBase[0], View().trackball.pan[0]);
  EXPECT_EQ(View().trackball.rotation[0], 1.0F);
}

TEST_F(View3DMouseTest, OnPurposeControlIsReadAtEveryPressAlsoAnIgnoredOne) {
  Press(&View(), 100, 100);
  EXPECT_EQ(View().ctrlAtPress, 0);
  Control(true);
  Press(&View(), 100, 100, 3);
  Control(false);

  EXPECT_NE(View().ctrlAtPress, 0);
  EXPECT_EQ(View().mouseOperation, 3);
  Release(&View(), 100, 100, 3);
  Release(&View(), 100, 100);
  EXPECT_EQ(View().mouseOperation, 0);
}

TEST_F(View3DMouseTest, ARightDragZoomsTwoAxesAndKeepsTheDepth) {
  const float depth = View().viewExtent[2];
  Press(&View(), 100, 100, 3);
  EXPECT_EQ(View().mouseOperation, 2);
  DragTo(&View(), 100, 70, 3);
  Release(&View(), 100, 70, 3);

  const double factor = std::pow(1.01, 30);
  EXPECT_NEAR(View().viewExtent[0], View().halfExtent[0] / factor, 1e-4);
  EXPECT_NEAR(View().viewExtent[1], View().halfExtent[1] / factor, 1e-4);
  EXPECT_EQ(View().viewExtent[2], depth);
  EXPECT_NEAR(View().trackball.zoomBase, factor, 1e-5);
}

TEST_F(View3DMouseTest, AZoomLeavesTheMatrixOfTheProjectionChosen) {
  View().make_current();
  glMatrixMode(GL_MODELVIEW);
  Press(&View(), 100, 100, 3);
  DragTo(&View(), 100, 70, 3);
  GLint mode = 0;

  glGetIntegerv(GL_MATRIX_MODE, &mode);

  EXPECT_EQ(mode, GL_PROJECTION);
  Release(&View(), 100, 70, 3);
}

TEST_F(View3DMouseTest, EveryStepOfADragAsksForARedraw) {
  for (const int button : {1, 2, 3}) {
    Press(&View(), 100, 100, button);
    Settle();
    ASSERT_EQ(View().damage(), 0);
    DragTo(&View(), 110, 90, button);

    EXPECT_NE(View().damage(), 0) << button;
    Release(&View(), 110, 90, button);
  }
}

TEST_F(View3DMouseTest, EndlessZoomingLeavesNoError) {
  for (int i = 0; i < 30; ++i) { Drag(&View(), 100, 100, 100, 900, 3); }
  PixelsOf(&View());
  View().SetupView();
  for (int i = 0; i < 4; ++i) { Drag(&View(), 100, 900, 100, 100, 3); }
  PixelsOf(&View());

  EXPECT_EQ(TakeErrors(), "");
}

TEST_F(View3DMouseTest, ASecondButtonDuringADragIsIgnored) {
  Press(&View(), 100, 100, 1);
  Press(&View(), 50, 60, 3);
  EXPECT_EQ(View().mouseOperation, 3);
  EXPECT_EQ(View().pressedButton, 1);
  Release(&View(), 50, 60, 3);
  EXPECT_EQ(View().mouseOperation, 3);
  DragTo(&View(), 150, 60, 1);
  EXPECT_NE(View().trackball.rotation[0], 1.0F);

  Release(&View(), 150, 60, 1);

  EXPECT_EQ(View().mouseOperation, 0);
  EXPECT_EQ(View().trackball.zoom, 1.0F);
}

TEST_F(View3DMouseTest, AButtonAboveThreeIsRememberedAndDoesNothing) {
  Fl::e_keysym = FL_Button + 4;
  EXPECT_EQ(View().handle(FL_PUSH), 1);
  EXPECT_EQ(View().pressedButton, 4);
  EXPECT_EQ(View().mouseOperation, 0);
  EXPECT_EQ(View().handle(FL_DRAG), 1);

  EXPECT_EQ(View().handle(FL_RELEASE), 1);

  EXPECT_EQ(View().pressedButton, 0);
  EXPECT_EQ(View().trackball.rotation[0], 1.0F);
}

TEST_F(View3DMouseTest, OtherEventsAreNotUsed) {
  for (const int event : {FL_MOVE, FL_ENTER, FL_LEAVE, FL_MOUSEWHEEL, FL_KEYBOARD, FL_FOCUS}) {
    viewState->SetToolMode(1);
    EXPECT_EQ(View().handle(event), 0) << event;
    viewState->SetToolMode(3);
    EXPECT_EQ(View().handle(event), 0) << event;
  }
  EXPECT_EQ(View().handle(FL_DRAG), 0);
  EXPECT_EQ(View().handle(FL_RELEASE), 0);
  EXPECT_EQ(TakeErrors(), "");
}

TEST_F(View3DMouseTest, AnUnknownToolIsReportedAtEveryEvent) {
  viewState->SetToolMode(2);

  EXPECT_EQ(View().handle(FL_PUSH), 0);
  EXPECT_EQ(View().handle(FL_MOVE), 0);

  EXPECT_EQ(TakeErrors(), "Case not handled in  Window3D::handle(int)\n"
                          "Case not handled in  Window3D::handle(int)\n");
  viewState->SetToolMode(1);
}

TEST_F(View3DMouseTest, APickTakesTheVoxelInFront) {
  PickTool();
  ClickVoxel(10, 12, 15);

  EXPECT_EQ(Cursor(), (std::array<int, 3>{10, 12, 19}));  // the eye is above: the largest z
  EXPECT_EQ(TakeErrors(), "");
}

TEST_F(View3DMouseTest, APickMovesTheSlidersAndTheirTexts) {
  Ui().sliceDims[0] = kDims[0];
  Ui().sliceDims[1] = kDims[1];
  Ui().sliceDims[2] = kDims[2];
  PickTool();
  ClickVoxel(7, 14, 15);

  const int expected[3] = {7, 14, 19};
  for (int axis = 0; axis < 3; ++axis) {
    EXPECT_EQ(Ui().cursorSlider[axis]->value(), expected[axis]);
    EXPECT_EQ(std::string(Ui().sliceOutput[axis]->value()),
              std::to_string(expected[axis] + 1) + " of " + std::to_string(kDims[axis]));
  }
}

TEST_F(View3DMouseTest, APickAsksEveryViewForARedraw) {
  PickTool();
  Settle();
  const std::array<Fl_Widget*, 6> views = {Ui().yzView,   Ui().xzView,      Ui().xyView,
                                           Ui().segimage, Ui().colorLegend, &View()};
  for (const Fl_Widget* view : views) { ASSERT_EQ(view->damage(), 0); }

  ClickVoxel(7, 14, 15);

  for (const Fl_Widget* view : views) { EXPECT_NE(view->damage(), 0); }
}

TEST_F(View3DMouseTest, EveryRowAndColumnOfTheBoxPicksTheVoxelThatLiesThere) {
  const auto voxelAt = [this](double share, int axis) {
    const double world = (share - 0.5) * 4.0 * View().viewExtent[axis] + View().viewCentre[axis];
    return world / kSpacing[static_cast<std::size_t>(axis)] + 0.5;
  };
  const auto onBoundary = [](double place) {
    return std::fabs(place - std::round(place)) < 1e-3;
  };
  const auto middle = Seen(10, 12, 15);
  const auto middleX = static_cast<int>(middle[0]);
  const auto middleY = static_cast<int>(middle[1]);
  int voxel[3];
  int rows = 0;
  for (int y = 0; y < View().h(); ++y) {
    const double place = voxelAt((View().h() - y - 1.0) / View().h(), 1);
    if (place < 8 || place >= 16 || onBoundary(place)) { continue; }
    ASSERT_EQ(View().PickVoxel(middleX, y, voxel), 1) << y;
    EXPECT_EQ(voxel[1], static_cast<int>(place)) << y;
    ++rows;
  }
  for (int x = 0; x < View().w(); ++x) {
    const double place = voxelAt(static_cast<double>(x) / View().w(), 0);
    if (place < 6 || place >= 14 || onBoundary(place)) { continue; }
    ASSERT_EQ(View().PickVoxel(x, middleY, voxel), 1) << x;
    EXPECT_EQ(voxel[0], static_cast<int>(place)) << x;
  }

  EXPECT_GT(rows, 20);
}

TEST_F(View3DMouseTest, APickInATurnedMovedAndZoomedViewHitsWhatIsUnderTheMouse) {
  viewState->SetCursor(10, 12, 15);
  Drag(&View(), 120, 120, 170, 70);
  Drag(&View(), 100, 100, 115, 92, 2);
  Drag(&View(), 100, 100, 100, 60, 3);
  PickTool();
  // A corner of the box that faces the eye: the nearest one.
  std::array<int, 3> nearest{};
  double front = -1e9;
  for (int corner = 0; corner < 8; ++corner) {
    const std::array<int, 3> voxel = {corner & 1 ? 13 : 6, corner & 2 ? 15 : 8,
                                      corner & 4 ? 19 : 10};
    const double z = Seen(voxel[0], voxel[1], voxel[2])[2];
    if (z > front) {
      front = z;
      nearest = voxel;
    }
  }

  ClickVoxel(nearest[0], nearest[1], nearest[2]);

  for (std::size_t axis = 0; axis < 3; ++axis) {
    EXPECT_NEAR(Cursor()[axis], nearest[axis], 2) << axis;
  }
  EXPECT_EQ(TakeErrors(), "");
}

TEST_F(View3DMouseTest, OnlyTheLeftButtonPicks) {
  PickTool();
  viewState->SetCursor(1, 2, 3);
  const auto at = Seen(10, 12, 15);
  for (const int button : {2, 3}) {
    Press(&View(), static_cast<int>(at[0]), static_cast<int>(at[1]), button);
    Release(&View(), static_cast<int>(at[0]), static_cast<int>(at[1]), button);
  }

  EXPECT_EQ(Cursor(), (std::array<int, 3>{1, 2, 3}));
  EXPECT_EQ(TakeErrors(), "");
}

TEST_F(View3DMouseTest, AClickBesideTheLabelSaysSoAndMovesNothing) {
  PickTool();
  viewState->SetCursor(1, 2, 3);

  ClickVoxel(2, 3, 15);

  EXPECT_EQ(TakeErrors(), "No hit found\n");
  EXPECT_EQ(Cursor(), (std::array<int, 3>{1, 2, 3}));
}

TEST_F(View3DMouseTest, AClickBesideTheVolumeIsAnInvalidRay) {
  PickTool();
  viewState->SetCursor(1, 2, 3);

  ClickAt(&View(), 2, 2);

  EXPECT_EQ(TakeErrors(), "RAY WAS INVALID!\n");
  EXPECT_EQ(Cursor(), (std::array<int, 3>{1, 2, 3}));
}

TEST_F(View3DMouseTest, AViewWithoutDepthFailsToUnproject) {
  PickTool();
  View().voxelScale[1] = 0.0F;

  ClickAt(&View(), 100, 100);

  EXPECT_EQ(TakeErrors(),
            "gluUnProject #1 FAILED!!!!!\ngluUnProject #2 FAILED!!!!!\nRAY WAS INVALID!\n");
}

TEST_F(View3DMouseTest, APickLooksAtTheImageOfTheSlider) {
  AddImage(kDims, kSpacing, [](int, int, int z) { return z == 4 ? 1 : 0; });
  PickTool();
  Ui().imageSlider->value(1.9);  // truncated

  ClickVoxel(10, 12, 15);

  EXPECT_EQ(Cursor(), (std::array<int, 3>{10, 12, 4}));
}

TEST_F(View3DMouseTest, ASliderWithoutAnImagePicksNothing) {
  PickTool();
  viewState->SetCursor(1, 2, 3);
  for (const double value : {1.0, -1.0, 60.0, 1e300, -1e300}) {
    Ui().imageSlider->value(value);
    ClickAt(&View(), 100, 100);
    View().SetupView();
  }

  EXPECT_EQ(Cursor(), (std::array<int, 3>{1, 2, 3}));
  EXPECT_EQ(TakeErrors(), "");
}

TEST_F(View3DMouseTest, AHiddenViewTakesEveryEvent) {
  Ui().mainWindow->hide();
  Settle();
  int voxel[3] = {1, 2, 3};
  EXPECT_EQ(View().PickVoxel(100, 100, voxel), 0);
  View().SetupView();
  View().SetupGl();
  Fl::e_keysym = FL_Button + 3;
  for (const int event : {FL_PUSH, FL_DRAG, FL_RELEASE}) { EXPECT_EQ(View().handle(event), 1); }

  EXPECT_EQ(voxel[0], 1);
}

}  // namespace
