// The 3D view: surfaces, colours, opacity, crosshairs, mouse and picking.
#include "VoxData/VoxData.h"
#include "tests/support/Golden.h"
#include "tests/support/Interface.h"
#include "view3d/Window3D.h"

#include <FL/Fl_Button.H>
#include <FL/Fl_Check_Button.H>
#include <FL/Fl_Roller.H>
#include <FL/Fl_Slider.H>
#include <FL/Fl_Value_Input.H>
#include <vtkCellArray.h>
#include <vtkDataArray.h>
#include <vtkPoints.h>

#include <cmath>
#include <fstream>

namespace {

using nlohmann::json;

constexpr int kSide = 40;

/// Two balls of label 1: the second stands a little to the right of the first.
class View3DTest : public Interface {
protected:
  void SetUp() override {
    Interface::SetUp();
    const std::string folder = Scratch() + "/";
    std::vector<char> grey(256 + kSide * kSide * kSide, 1);
    Write(folder + "g.raw", grey);
    Write(folder + "a.raw", Ball(14));
    Write(folder + "b.raw", Ball(24));
    LoadGreyByHand(folder + "g.raw", {kSide, kSide, kSide}, 1, 256);
    LoadSegByHand(folder + "a.raw");
    LoadSegByHand(folder + "b.raw");
    SetLabel(1);
    TakeErrors();
  }

  static std::vector<char> Ball(int centreX) {
    std::vector<char> seg(256, 0);
    for (int i = 0; i < kSide * kSide * kSide; ++i) {
      const double away =
          std::hypot(i % kSide - centreX, i / kSide % kSide - 19.5, i / kSide / kSide - 19.5);
      seg.push_back(away < 9.0 ? 1 : 0);
    }
    return seg;
  }
  static void Write(const std::string& path, const std::vector<char>& bytes) {
    std::ofstream(path, std::ios::binary)
        .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  }
  void Overlay() { Click(ButtonByLabel(Ui().measuresGroup, "Overlay 3D")); }
  void OverlayResult() { Click(Ui().overlayResult3DButton); }

  struct Counts {
    int red = 0;
    int green = 0;
    int blue = 0;
  };
  Counts Colours() {
    Counts counts;
    for (const Pixel& p : PixelsOf(Ui().window3D)) {
      counts.red += p.red > p.green + 40 && p.red > p.blue + 40 ? 1 : 0;
      counts.green += p.green > p.red + 40 && p.green > p.blue + 40 ? 1 : 0;
      counts.blue += p.blue > p.red + 40 && p.blue > p.green + 40 ? 1 : 0;
    }
    return counts;
  }
  void WithoutCrosshairs() { Ui().displayCrosshairsCheck->value(0); }
};

TEST_F(View3DTest, BeforeAnySurfaceThereIsOnlyTheBackground) {
  for (const Pixel& p : PixelsOf(Ui().window3D)) { ASSERT_EQ(p.red + p.green + p.blue, 0); }
}

TEST_F(View3DTest, TheOverlayShowsRedGreenAndBlueWhereTheTablesSay) {
  WithoutCrosshairs();
  OverlayResult();
  const Counts counts = Colours();

  EXPECT_GT(counts.red, 50);
  EXPECT_GT(counts.green, 50);
  EXPECT_GT(counts.blue, 0);  // the seam between the two
  EXPECT_EQ(Ui().window3D->displayedSurfaces, 1);
}

TEST_F(View3DTest, RedLiesLeftOfGreen) {
  WithoutCrosshairs();
  OverlayResult();
  const auto pixels = PixelsOf(Ui().window3D);
  const int w = Ui().window3D->w();
  double red = 0.0;
  double green = 0.0;
  int reds = 0;
  int greens = 0;
  for (std::size_t i = 0; i < pixels.size(); ++i) {
    if (pixels[i].red > pixels[i].green + 40) {
      red += static_cast<double>(i % static_cast<std::size_t>(w));
      ++reds;
    } else if (pixels[i].green > pixels[i].red + 40 && pixels[i].green > pixels[i].blue) {
      green += static_cast<double>(i % static_cast<std::size_t>(w));
      ++greens;
    }
  }
  EXPECT_LT(red / reds, green / greens);
}

TEST_F(View3DTest, RollersFadeTheSecondAndThirdSurface) {
  WithoutCrosshairs();
  Overlay();
  const Counts solid = Colours();
  EXPECT_GT(solid.red, 50);
  EXPECT_GT(solid.green, 50);
  Slide(Ui().surface2OpacityRoller, 0);
  const Counts withoutRed = Colours();
  EXPECT_EQ(withoutRed.red, 0);
  EXPECT_GT(withoutRed.green, 50);
  Slide(Ui().surface3OpacityRoller, 0);
  EXPECT_EQ(Colours().green, 0);
}

TEST_F(View3DTest, CrosshairsAreBlueAndCanBeSwitchedOff) {
  Ui().currentLabel = 77;  // an empty surface
  OverlayResult();
  EXPECT_GT(Colours().blue, 20);
  WithoutCrosshairs();
  EXPECT_EQ(Colours().blue, 0);
}

TEST_F(View3DTest, ARepaintedVolumeShowsWithoutANewSurface) {
  WithoutCrosshairs();
  OverlayResult();
  VoxData& volume = *Ui().displayVolume1;
  for (int x = 0; x < kSide; ++x) {
    for (int y = 0; y < kSide; ++y) {
      for (int z = 0; z < kSide; ++z) { volume.work[x][y][z] = 128; }
    }
  }
  EXPECT_EQ(Colours().red, 0);
  EXPECT_GT(Colours().green, 100);
}

TEST_F(View3DTest, ALeftDragTurnsAboutTheCursor) {
  OverlayResult();
  viewState->SetCursor(5, 6, 7);
  Drag(Ui().window3D, 100, 100, 150, 120);

  EXPECT_NE(Ui().window3D->trackball.rotation[0], 1.0F);
  EXPECT_EQ(Ui().window3D->rotationCentre[0], 5.0F);
  EXPECT_EQ(Ui().window3D->mouseOperation, 0);
}

TEST_F(View3DTest, AMiddleDragMovesAndARightDragZooms) {
  OverlayResult();
  Window3D& view = *Ui().window3D;
  Drag(&view, 100, 100, 124, 100, 2);
  EXPECT_FLOAT_EQ(view.trackball.pan[0], 24.0F * 2 * view.viewExtent[0] / view.w());
  const float extent = view.viewExtent[0];
  Drag(&view, 100, 100, 100, 60, 3);
  EXPECT_LT(view.viewExtent[0], extent);
  EXPECT_NEAR(view.trackball.zoom, std::pow(1.01, 40), 1e-3);
}

TEST_F(View3DTest, ASecondButtonDuringADragIsIgnored) {
  Window3D& view = *Ui().window3D;
  Press(&view, 100, 100, 1);
  Press(&view, 100, 100, 3);
  EXPECT_EQ(view.mouseOperation, 3);
  Release(&view, 100, 100, 3);
  EXPECT_EQ(view.mouseOperation, 3);
  Release(&view, 100, 100, 1);
  EXPECT_EQ(view.mouseOperation, 0);
}

TEST_F(View3DTest, ANewPictureStartsFromTheDefaultView) {
  OverlayResult();
  Drag(Ui().window3D, 100, 100, 150, 120);
  OverlayResult();
  EXPECT_EQ(Ui().window3D->trackball.rotation[0], 1.0F);
}

TEST_F(View3DTest, APickMovesTheCursorToTheFirstVoxelOnTheRay) {
  Slide(Ui().imageSlider, 0);
  OverlayResult();
  Settle();
  Click(Ui().crosshairToolButton);
  ClickAt(Ui().window3D, Ui().window3D->w() / 2 - 8, Ui().window3D->h() / 2);
  const auto cursor = viewState->GetCursor();
  EXPECT_EQ(Ui().images[0]->seg[cursor[0]][cursor[1]][cursor[2]], 1);
  EXPECT_EQ(TakeErrors().find("No hit"), std::string::npos);
}

TEST_F(View3DTest, AClickOnTheBackgroundMovesNothing) {
  OverlayResult();
  Settle();
  Click(Ui().crosshairToolButton);
  viewState->SetCursor(1, 2, 3);
  TakeErrors();
  ClickAt(Ui().window3D, 2, 2);
  EXPECT_EQ(viewState->GetCursor(), (std::array<int, 3>{1, 2, 3}));
  const std::string errors = TakeErrors();
  EXPECT_TRUE(errors == "No hit found\n" || errors == "RAY WAS INVALID!\n") << errors;
}

TEST_F(View3DTest, InPlainModeEveryEventIsReported) {
  viewState->SetToolMode(0);
  TakeErrors();
  EXPECT_EQ(Ui().window3D->handle(FL_PUSH), 0);
  EXPECT_EQ(TakeErrors(), "Case not handled in  Window3D::handle(int)\n");
}

TEST_F(View3DTest, AnExtractionSaysWhatItDoes) {
  TakeErrors();
  OverlayResult();
  const std::string plain = TakeErrors();
  EXPECT_EQ(plain.rfind("marching cubes...\nNum Tris = ", 0), 0U) << plain;
  Ui().decimationCheck->value(1);
  OverlayResult();
  const std::string thinned = TakeErrors();
  EXPECT_EQ(thinned.rfind("marching cubes...\ndecimation running...\nNum Tris = ", 0), 0U);
  EXPECT_EQ(plain.substr(plain.find("Num")), thinned.substr(thinned.find("Num")));
}

TEST_F(View3DTest, AnotherSlotIsLeftAsItWas) {
  Overlay();
  SurfaceSet& set = Ui().window3D->surfaces[0];
  const vtkCellArray* second = set.strips2;
  Ui().window3D->ExtractWithOptions(Ui().displayVolume3, 1);
  EXPECT_EQ(set.strips2, second);
  EXPECT_NE(set.strips1, nullptr);
}

TEST_F(View3DTest, SmoothingCanBeLeftOut) {
  Ui().smoothingCheck->value(0);
  OverlayResult();
  EXPECT_NE(Ui().window3D->surfaces[0].strips1, nullptr);
  EXPECT_GT(Ui().window3D->surfaces[0].pointCount, 100);
  EXPECT_GT(Colours().red, 20);
}

TEST_F(View3DTest, NoOptionBreaksAnExtraction) {
  for (const double value : {-1.0, 0.0, 1e300, std::nan("")}) {
    Ui().decimationCheck->value(1);
    for (Fl_Value_Input* input :
         {Ui().targetReductionInput, Ui().aspectRatioInput, Ui().initialErrorInput,
          Ui().errorIncrementInput, Ui().maxIterationsInput, Ui().relaxationFactorInput,
          Ui().featureAngleInput}) {
      input->value(value);
    }
    OverlayResult();
    Settle();
  }
}

TEST_F(View3DTest, NoGlErrorIsLeft) {
  Overlay();
  Drag(Ui().window3D, 100, 100, 150, 120);
  PixelsOf(Ui().window3D);
  EXPECT_EQ(TakeErrors().find("GL-Error"), std::string::npos);
}

class EmptyView3DTest : public Interface {};

TEST_F(EmptyView3DTest, EveryMeasureOnVolumesLeavesItsPictureToBeDrawn) {
  LoadGoldenStudy("study_100_general");
  Ui().userCount = 2;
  Ui().slicesPerUser = 1;
  SetLabel(1);
  for (Fl_Button* button :
       {Ui().overlayResult3DButton, Ui().danielsson3DButton, Ui().haussdorf3DButton,
        Ui().surfaceDistanceButton, Ui().probabilityButton}) {
    Settle();
    ASSERT_EQ(Ui().window3D->damage(), 0);

    button->do_callback();

    EXPECT_NE(Ui().window3D->damage(), 0) << button->label();
  }
  EXPECT_TRUE(alerts.empty()) << alerts.front();
}

TEST_F(EmptyView3DTest, AClickInCrosshairModeWithoutAnImageDoesNothing) {
  Click(Ui().crosshairToolButton);
  ClickAt(Ui().window3D, 100, 100);
  EXPECT_EQ(viewState->GetCursor(), (std::array<int, 3>{0, 0, 0}));
}

TEST_F(EmptyView3DTest, TheDefaultViewFitsTheImageAsKnown) {
  const json all = golden::Json("views/views.json");
  for (const json& one : all["setupView"]) {
    Window3D& view = *Ui().window3D;
    VoxData image;
    const auto dims = one["dims"].get<std::array<int, 3>>();
    const auto spacing = one["spacing"].get<std::array<float, 3>>();
    image.dimX = dims[0];
    image.dimY = dims[1];
    image.dimZ = dims[2];
    image.SetSpacing(spacing[0], spacing[1], spacing[2]);
    Ui().images[0] = &image;
    Ui().imageCount = 1;
    view.SetupView();
    Ui().images[0] = nullptr;
    Ui().imageCount = 0;
    for (std::size_t axis = 0; axis < 3; ++axis) {
      EXPECT_FLOAT_EQ(view.viewCentre[axis], one["viewCentre"][axis].get<float>());
      EXPECT_FLOAT_EQ(view.halfExtent[axis], one["halfExtent"][axis].get<float>());
      EXPECT_FLOAT_EQ(view.viewExtent[axis], one["viewExtent"][axis].get<float>());
      EXPECT_FLOAT_EQ(view.rotationCentre[axis], one["rotationCentre"][axis].get<float>());
    }
  }
}

TEST_F(EmptyView3DTest, TheColourTableIsAsKnown) {
  const json table = golden::Json("views/views.json")["colorTable"];
  SurfaceSet set;
  VoxData volume;
  volume.SetupWork(3, 3, 3, 1, 0, 0, 0, 0, 0);
  volume.NewWorkScalars(27);
  volume.AttachWorkScalars();
  set.ExtractSurface(&volume, 1, true, false, 0.5F, 20, 0, 0, 1, 1, 0.1F, 0);
  for (std::size_t i = 0; i < 768; ++i) {
    EXPECT_FLOAT_EQ(set.colorTable[i / 3][i % 3], table[i].get<float>()) << i;
  }
}

}  // namespace
