// The 3D view: OpenGL state, projection, crosshairs, options and the work arrays.
#include "tests/gui/View3DScene.h"
#include "tests/support/Golden.h"

#include <FL/Fl_Value_Input.H>
#include <GL/glu.h>
#include <vtkCellArray.h>
#include <vtkPoints.h>

#include <climits>
#include <cmath>
#include <sstream>
#include <string>
#include <vector>

namespace {

using nlohmann::json;

class View3DStateTest : public View3DScene {
protected:
  void ExpectMatrix(GLenum which, const std::array<double, 16>& expected) {
    View().make_current();
    GLdouble matrix[16];
    glGetDoublev(which, matrix);
    for (std::size_t i = 0; i < 16; ++i) {
      EXPECT_NEAR(matrix[i], expected[i], 1e-5 * std::max(1.0, std::fabs(expected[i]))) << i;
    }
  }
  /// The matrix of left, right, bottom, top, near and far.
  static std::array<double, 16> Ortho(const std::array<double, 6>& b) {
    const auto middle = [&b](std::size_t i) {
      return -(b[i + 1] + b[i]) / (b[i + 1] - b[i]);
    };
    const auto scale = [&b](std::size_t i) {
      return 2.0 / (b[i + 1] - b[i]);
    };
    return {scale(0), 0, 0,         0, 0,         scale(2),  0,         0,
            0,        0, -scale(4), 0, middle(0), middle(2), middle(4), 1};
  }
  /// The ends of the lines that DrawCrosshairs sends, in world units.
  std::vector<std::array<double, 3>> CrosshairEnds() {
    constexpr double kRange = 4096.0;
    View().make_current();
    std::vector<GLfloat> buffer(1000);
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glLoadIdentity();
    glOrtho(-kRange, kRange, -kRange, kRange, -kRange, kRange);
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    glLoadIdentity();
    glFeedbackBuffer(static_cast<GLsizei>(buffer.size()), GL_3D, buffer.data());
    glRenderMode(GL_FEEDBACK);
    View().DrawCrosshairs();
    const int used = glRenderMode(GL_RENDER);
    glPopMatrix();
    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
    glMatrixMode(GL_MODELVIEW);
    GLint port[4];
    glGetIntegerv(GL_VIEWPORT, port);
    std::vector<std::array<double, 3>> ends;
    for (int i = 0; i + 6 < used; i += 7) {
      for (int end = 0; end < 2; ++end) {
        const GLfloat* p = &buffer[static_cast<std::size_t>(i + 1 + 3 * end)];
        ends.push_back({(2.0 * p[0] / port[2] - 1.0) * kRange,
                        (2.0 * p[1] / port[3] - 1.0) * kRange, (1.0 - 2.0 * p[2]) * kRange});
      }
    }
    return ends;
  }
};

TEST_F(View3DStateTest, TheFixedStateIsSetUp) {
  PixelsOf(&View());
  for (const GLenum state :
       {GL_DEPTH_TEST, GL_NORMALIZE, GL_COLOR_MATERIAL, GL_LIGHT0, GL_LIGHTING}) {
    EXPECT_TRUE(glIsEnabled(state)) << state;
  }
  EXPECT_FALSE(glIsEnabled(GL_BLEND));
  EXPECT_FALSE(glIsEnabled(GL_LINE_STIPPLE));

  GLfloat value[4];
  glGetMaterialfv(GL_BACK, GL_SPECULAR, value);
  EXPECT_FLOAT_EQ(value[0], 0.3F);
  glGetFloatv(GL_COLOR_CLEAR_VALUE, value);
  for (const GLfloat channel : value) { EXPECT_EQ(channel, 0.0F); }
  glGetMaterialfv(GL_FRONT, GL_SHININESS, value);
  EXPECT_FLOAT_EQ(value[0], 10.0F);
  glGetLightfv(GL_LIGHT0, GL_POSITION, value);
  EXPECT_FLOAT_EQ(value[2], 1.0F);
  EXPECT_FLOAT_EQ(value[3], 0.0F);
  glGetFloatv(GL_LIGHT_MODEL_TWO_SIDE, value);
  EXPECT_EQ(value[0], 1.0F);
  EXPECT_EQ(View().needsGlInit, 0);
  EXPECT_EQ(View().viewReady, 1);
}

TEST_F(View3DStateTest, BeforeAnySurfaceThereIsOnlyTheBackgroundWithoutCrosshairs) {
  AddImage({10, 10, 10});
  View().SetupView();

  EXPECT_EQ(View().displayedSurfaces, 0);
  EXPECT_EQ(Painted(PixelsOf(&View())), 0);
}

TEST_F(View3DStateTest, TheViewFitsTheImageAsKnown) {
  const json views = golden::Json("views/views.json")["setupView"];
  ASSERT_FALSE(views.empty());
  for (const json& known : views) {
    // Only sizes and spacing count, so the image needs no voxels.
    auto* image = new VoxData;
    const auto dims = known["dims"].get<std::array<int, 3>>();
    const auto spacing = known["spacing"].get<std::array<float, 3>>();
    image->dimX = dims[0];
    image->dimY = dims[1];
    image->dimZ = dims[2];
    image->SetSpacing(spacing[0], spacing[1], spacing[2]);
    Ui().images[0] = image;
    Ui().imageCount = 1;

    View().SetupView();

    for (std::size_t axis = 0; axis < 3; ++axis) {
      EXPECT_FLOAT_EQ(View().viewCentre[axis], known["viewCentre"][axis].get<float>());
      EXPECT_FLOAT_EQ(View().halfExtent[axis], known["halfExtent"][axis].get<float>());
      EXPECT_FLOAT_EQ(View().viewExtent[axis], known["viewExtent"][axis].get<float>());
      EXPECT_FLOAT_EQ(View().rotationCentre[axis], known["rotationCentre"][axis].get<float>());
      EXPECT_EQ(View().volumeSize[axis], dims[axis]);
    }
    ExpectMatrix(GL_PROJECTION_MATRIX, Ortho(known["ortho"].get<std::array<double, 6>>()));
    ExpectMatrix(GL_MODELVIEW_MATRIX, {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1});

    const auto cursor = known["cursor"].get<std::array<int, 3>>();
    viewState->SetCursor(cursor[0], cursor[1], cursor[2]);
    const auto ends = CrosshairEnds();
    ASSERT_EQ(ends.size(), 6U);
    for (std::size_t i = 0; i < 6; ++i) {
      for (std::size_t axis = 0; axis < 3; ++axis) {
        EXPECT_NEAR(ends[i][axis], known["crosshairs"][i / 2][i % 2][axis].get<double>(), 0.02);
      }
    }

    View().trackball.zoomBase = 1.75F;
    Drag(&View(), 100, 100, 100, 100, 3);
    ExpectMatrix(GL_PROJECTION_MATRIX,
                 Ortho(known["orthoAtZoom1_75"].get<std::array<double, 6>>()));
    Ui().images[0] = nullptr;
    Ui().imageCount = 0;
    delete image;
  }
}

TEST_F(View3DStateTest, TheViewFitsTheImageOfTheSlider) {
  AddImage({10, 20, 30});
  AddImage({8, 6, 4}, {1, 3, 0.5F});
  Ui().imageSlider->value(1.9);  // truncated

  View().SetupView();

  EXPECT_EQ(View().volumeSize[0], 8);
  EXPECT_EQ(View().voxelScale[1], 3.0F);
  EXPECT_FLOAT_EQ(View().viewCentre[1], 9.0F);
  EXPECT_FLOAT_EQ(View().viewExtent[2], 17.0F);
}

TEST_F(View3DStateTest, WithoutAnImageTheSizesStayAndTheExtentsFollow) {
  AddImage({10, 20, 30}, {1, 2, 0.5F});
  View().SetupView();
  Ui().imageCount = 0;
  View().halfExtent[0] = -7.0F;

  View().SetupView();

  EXPECT_EQ(View().volumeSize[2], 30);
  EXPECT_FLOAT_EQ(View().halfExtent[0], 8.0F);
  EXPECT_FLOAT_EQ(View().viewExtent[2], 61.0F);
}

TEST_F(View3DStateTest, OnPurposeTheRotationCentreIsScaledTwice) {
  AddImage({10, 20, 30}, {1, 2, 0.5F});

  View().SetupView();

  EXPECT_FLOAT_EQ(View().viewCentre[1], 20.0F);
  EXPECT_FLOAT_EQ(View().rotationCentre[1], 40.0F);
  EXPECT_FLOAT_EQ(View().rotationCentre[2], 3.75F);
}

TEST_F(View3DStateTest, SetupViewResetsTheTrackball) {
  AddImage({10, 10, 10});
  Drag(&View(), 100, 100, 140, 60);
  Drag(&View(), 100, 100, 140, 60, 2);
  Drag(&View(), 100, 100, 140, 60, 3);

  View().SetupView();

  EXPECT_EQ(View().trackball.rotation[0], 1.0F);
  EXPECT_EQ(View().trackball.pan[0], 0.0F);
  EXPECT_EQ(View().trackball.zoomBase, 1.0F);
  EXPECT_EQ(View().viewExtent[0], View().halfExtent[0]);
}

TEST_F(View3DStateTest, TheCrosshairsAreDashedBlueThroughTheCursor) {
  AddImage({20, 20, 20});
  View().SetupView();
  View().displayedSurfaces = 1;
  viewState->SetCursor(10, 10, 10);

  const auto pixels = PixelsOf(&View());

  int blue = 0;
  for (std::size_t i = 0; i < pixels.size(); ++i) {
    const Pixel& p = pixels[i];
    if (p.red + p.green + p.blue == 0) { continue; }
    const auto x = static_cast<int>(i) % View().w();
    const auto y = static_cast<int>(i) / View().w();
    EXPECT_EQ(p.red + p.green, 0);
    EXPECT_EQ(p.blue, 255);
    EXPECT_TRUE(std::abs(x - View().w() / 2) <= 2 || std::abs(y - View().h() / 2) <= 2);
    ++blue;
  }
  // Two lines of half the view each, two pixels wide, every other two pixels left out.
  EXPECT_NEAR(blue, (View().w() + View().h()) / 2, 30);
  int changes = 0;
  const auto row = static_cast<std::size_t>(View().h() / 2) * static_cast<std::size_t>(View().w());
  for (std::size_t x = 1; x < static_cast<std::size_t>(View().w()); ++x) {
    changes += pixels[row + x].blue != pixels[row + x - 1].blue ? 1 : 0;
  }
  // A dash ends or begins at every other pixel of the half that the line covers.
  EXPECT_NEAR(changes, View().w() / 4, 8);
}

TEST_F(View3DStateTest, WhatFollowsTheCrosshairsIsLitAndNotDashed) {
  AddImage({20, 20, 20});
  View().SetupView();
  Paint(*Ui().displayVolume1, {20, 20, 20}, Ball(10, 10, 10, 7, 64));
  View().BuildSurface(Ui().displayVolume1, 1);
  viewState->SetCursor(0, 0, 0);
  const Pixel withLines = Middle();

  EXPECT_TRUE(glIsEnabled(GL_LIGHTING));
  EXPECT_FALSE(glIsEnabled(GL_LINE_STIPPLE));
  Crosshairs(false);
  const Pixel without = Middle();
  EXPECT_EQ(withLines.red, without.red);
  EXPECT_EQ(withLines.green, without.green);
}

TEST_F(View3DStateTest, WithoutTheOptionThereAreNoCrosshairs) {
  AddImage({20, 20, 20});
  View().SetupView();
  View().displayedSurfaces = 1;
  Crosshairs(false);

  EXPECT_EQ(Painted(PixelsOf(&View())), 0);
  EXPECT_TRUE(CrosshairEnds().empty());
}

TEST_F(View3DStateTest, ClearedSurfacesLeaveTheCrosshairs) {
  AddImage({20, 20, 20});
  View().SetupView();
  Paint(*Ui().displayVolume1, {20, 20, 20}, Ball(10, 10, 10, 7, 64));
  View().BuildSurface(Ui().displayVolume1, 1);
  EXPECT_EQ(View().displayedSurfaces, 2);
  EXPECT_GT(Middle().red + Middle().blue, 0);

  View().ClearAllSurfaces();

  EXPECT_EQ(View().viewReady, 0);
  EXPECT_EQ(View().displayedSurfaces, 2);
  for (const Pixel& p : PixelsOf(&View())) { ASSERT_EQ(p.red + p.green, 0); }
  EXPECT_GT(Painted(PixelsOf(&View())), 0);
}

TEST_F(View3DStateTest, OnPurposeTheThirdSetOfSurfacesIsNotCleared) {
  for (SurfaceSet& set : View().surfaces) { set.pointCount = 5; }

  View().ClearAllSurfaces();

  EXPECT_EQ(View().surfaces[0].pointCount, 0);
  EXPECT_EQ(View().surfaces[1].pointCount, 0);
  EXPECT_EQ(View().surfaces[2].pointCount, 5);
}

TEST_F(View3DStateTest, AnAnisotropicSurfaceIsStretchedAndItsCrosshairsAreNot) {
  AddImage({20, 20, 20}, {1, 2, 1});
  View().SetupView();
  Crosshairs(false);
  Paint(*Ui().displayVolume1, {20, 20, 20}, Ball(10, 10, 10, 7, 64));
  View().BuildSurface(Ui().displayVolume1, 1);

  const auto pixels = PixelsOf(&View());

  int columns[2] = {View().w(), 0};
  int rows[2] = {View().h(), 0};
  for (int i = 0; i < View().w() * View().h(); ++i) {
    if (pixels[static_cast<std::size_t>(i)].red == 0) { continue; }
    columns[0] = std::min(columns[0], i % View().w());
    columns[1] = std::max(columns[1], i % View().w());
    rows[0] = std::min(rows[0], i / View().w());
    rows[1] = std::max(rows[1], i / View().w());
  }
  const double width = (columns[1] - columns[0]) * 4.0 * View().viewExtent[0] / View().w();
  const double height = (rows[1] - rows[0]) * 4.0 * View().viewExtent[1] / View().h();
  EXPECT_NEAR(width, 13.0, 1.5);
  EXPECT_NEAR(height, 26.0, 2.5);
}

TEST_F(View3DStateTest, TheIsotropicOptionTakesEffectWhenTheContextIsNoLongerValid) {
  const auto height = [this] {
    View().make_current();
    GLint port[4];
    glGetIntegerv(GL_VIEWPORT, port);
    EXPECT_EQ(port[2], View().w());
    return port[3];
  };
  PixelsOf(&View());
  EXPECT_EQ(height(), View().h());

  Ui().isotropic3DCheck->value(1);
  View().redraw();
  Settle();
  EXPECT_EQ(height(), View().h());
  View().invalidate();
  View().redraw();
  Settle();
  EXPECT_EQ(height(), View().w());

  Ui().isotropic3DCheck->value(0);
  Ui().mainWindow->size(Ui().mainWindow->w() + 40, Ui().mainWindow->h() + 30);
  ASSERT_TRUE(WaitFor([&] {
    PixelsOf(&View());
    return height() == View().h();
  }));
}

TEST_F(View3DStateTest, HidingAndShowingKeepsTheState) {
  AddImage({20, 20, 20});
  View().SetupView();
  Crosshairs(false);
  Paint(*Ui().displayVolume1, {20, 20, 20}, Ball(10, 10, 10, 7, 64));
  View().BuildSurface(Ui().displayVolume1, 1);
  const auto before = PixelsOf(&View());
  for (int i = 0; i < 2; ++i) {
    Ui().mainWindow->hide();
    Settle();
    Ui().mainWindow->show();
    Ui().mainWindow->wait_for_expose();
    ASSERT_TRUE(WaitFor([this] { return View().shown() != 0 && View().visible_r() != 0; }));
    Settle();

    EXPECT_EQ(Differences(PixelsOf(&View()), before), 0);
  }
  EXPECT_EQ(TakeErrors().find("GL-Error"), std::string::npos);
}

TEST_F(View3DStateTest, OpenGlErrorsArePrintedUntilNoneIsLeft) {
  PixelsOf(&View());
  TakeErrors();
  View().make_current();
  glEnable(0xFFFF);

  View().CheckGlError();
  EXPECT_EQ(TakeErrors(), "GL-Error: invalid enumerant\n");
  View().CheckGlError();
  EXPECT_EQ(TakeErrors(), "");
}

TEST_F(View3DStateTest, TheOptionsAreReadAtEachExtraction) {
  Paint(*Ui().displayVolume1, {20, 20, 20}, Ball(10, 10, 10, 7, 64));
  const auto triangles = [this] {
    View().ExtractWithOptions(Ui().displayVolume1, 1);
    vtkCellArray* strips = Surfaces().strips1;
    return strips->GetNumberOfConnectivityIds() - 2 * strips->GetNumberOfCells();
  };
  const auto all = triangles();
  EXPECT_EQ(View().smoothingOn, 1);
  EXPECT_EQ(View().decimationOn, 0);
  EXPECT_EQ(View().displayedSurfaces, 0);

  Ui().smoothingCheck->value(0);
  Ui().decimationCheck->value(1);
  const auto half = triangles();
  EXPECT_EQ(View().smoothingOn, 0);
  EXPECT_EQ(View().decimationOn, 1);
  EXPECT_NEAR(static_cast<double>(half), all / 2.0, 2.0);

  Ui().targetReductionInput->value(0.25);
  EXPECT_NEAR(static_cast<double>(triangles()), all * 0.75, 2.0);
  Ui().maxIterationsInput->value(0.9);  // truncated
  EXPECT_EQ(triangles(), all);
  Ui().maxIterationsInput->value(30);
  Ui().aspectRatioInput->value(1);
  EXPECT_EQ(triangles(), all);
}

TEST_F(View3DStateTest, EveryFieldOfTheOptionsReachesItsFilter) {
  VoxData& volume = *Ui().displayVolume1;
  Paint(volume, {20, 20, 20}, Ball(10, 10, 10, 7, 64));
  Ui().decimationCheck->value(1);
  Ui().targetReductionInput->value(0.9);
  Ui().aspectRatioInput->value(12);
  Ui().maxIterationsInput->value(2);
  Ui().nbIterationsInput->value(4);
  Ui().relaxationFactorInput->value(0.25);
  Ui().featureAngleInput->value(60);
  const auto points = [this] {
    std::vector<std::array<double, 3>> all(
        static_cast<std::size_t>(Surfaces().points1->GetNumberOfPoints()));
    for (std::size_t i = 0; i < all.size(); ++i) {
      Surfaces().points1->GetPoint(static_cast<vtkIdType>(i), all[i].data());
    }
    return all;
  };
  // The corners of voxels lie in their planes or far off: only an error of 0 makes a difference.
  const std::array<float, 2> errors[] = {{0.01F, 0.0F}, {0.0F, 0.01F}, {0.0F, 0.0F}};
  for (const auto& [initial, increment] : errors) {
    Ui().initialErrorInput->value(initial);
    Ui().errorIncrementInput->value(increment);
    View().ExtractWithOptions(&volume, 1);
    const auto own = points();

    Surfaces().ExtractSurface(&volume, 1, true, true, 0.9F, 12.0F, initial, increment, 2, 4, 0.25F,
                              60.0F);

    EXPECT_EQ(own, points()) << initial << ", " << increment;
    EXPECT_GT(own.size(), 100U);
  }
}

TEST_F(View3DStateTest, OptionsThatAreNoNumbersAreSafe) {
  Paint(*Ui().displayVolume1, {8, 8, 8}, Ball(4, 4, 4, 3, 64));
  Ui().decimationCheck->value(1);
  for (const double value : {std::nan(""), HUGE_VAL, -HUGE_VAL, 1e300, -1e300}) {
    for (Fl_Value_Input* input :
         {Ui().targetReductionInput, Ui().aspectRatioInput, Ui().initialErrorInput,
          Ui().errorIncrementInput, Ui().maxIterationsInput, Ui().nbIterationsInput,
          Ui().relaxationFactorInput, Ui().featureAngleInput}) {
      input->value(value);
    }
    View().BuildSurface(Ui().displayVolume1, 1);
    PixelsOf(&View());
  }
  EXPECT_EQ(TakeErrors().find("GL-Error"), std::string::npos);
}

TEST_F(View3DStateTest, TheWorkArraysAreAllocatedOnceAndFreed) {
  View().AllocateVolumes(5, 6, 7);
  ASSERT_EQ(View().workArraysReady, 1);
  float* const first = View().distX;
  ASSERT_NE(first, nullptr);
  View().distMask[5 * 6 * 7 - 1] = 1;
  View().distZ[5 * 6 * 7 - 1] = 1.0F;
  for (const VoxData* volume : Ui().workVolumes) {
    EXPECT_EQ(volume->dimY, 6);
    EXPECT_EQ(volume->spacing[2], 1.0F);
    EXPECT_NE(volume->work, nullptr);
  }

  View().AllocateVolumes(50, 60, 70);
  EXPECT_EQ(View().distX, first);
  EXPECT_EQ(Ui().displayVolume2->dimX, 5);
  View().FreeVolumes();

  EXPECT_EQ(View().workArraysReady, 0);
  EXPECT_EQ(View().distX, nullptr);
  EXPECT_EQ(View().distMask, nullptr);
  EXPECT_NE(Ui().displayVolume1->work, nullptr);  // stays until its next size
  View().FreeVolumes();
}

TEST_F(View3DStateTest, NewWorkArraysClearTheSurfaces) {
  Paint(*Ui().displayVolume1, {8, 8, 8}, Ball(4, 4, 4, 3, 64));
  View().BuildSurface(Ui().displayVolume1, 1);

  View().AllocateVolumes(4, 4, 4);

  EXPECT_EQ(Surfaces().strips1, nullptr);
  PixelsOf(&View());
}

TEST_F(View3DStateTest, WithoutMemoryTheArraysAreNotReadyAndOneLineSaysSo) {
  TakeErrors();
  View().AllocateVolumes(60000, 60000, 60000);

  EXPECT_EQ(View().workArraysReady, 0);
  EXPECT_EQ(View().distX, nullptr);
  // The address sanitizer adds lines of its own.
  std::istringstream errors(TakeErrors());
  std::vector<std::string> ours;
  for (std::string line; std::getline(errors, line);) {
    if (line.rfind("==", 0) != 0) { ours.push_back(line); }
  }
  EXPECT_EQ(ours, std::vector<std::string>{"There is no memory for the volume measures."});

  View().AllocateVolumes(4, 4, 4);
  EXPECT_EQ(View().workArraysReady, 1);
}

TEST_F(View3DStateTest, ImpossibleSizesAreNotReadyEither) {
  for (const int size : {-1, INT_MIN, INT_MAX}) {
    View().AllocateVolumes(size, size, size);
    EXPECT_EQ(View().workArraysReady, 0) << size;
  }
}

}  // namespace
