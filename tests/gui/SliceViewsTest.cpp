// The three slice views: what they show, how they follow the cursor, mouse and keys.
#include "VoxData/VoxData.h"
#include "tests/support/Golden.h"
#include "tests/support/Interface.h"
#include "view3d/Window3D.h"
#include "views/Segimage.h"
#include "views/Window2D.h"

#include <FL/Fl_Button.H>
#include <FL/Fl_Check_Button.H>
#include <FL/Fl_Output.H>
#include <FL/Fl_Round_Button.H>
#include <FL/Fl_Scrollbar.H>
#include <FL/Fl_Slider.H>
#include <FL/Fl_Value_Input.H>

#include <algorithm>
#include <cmath>
#include <fstream>

namespace {

constexpr int kX = 20;
constexpr int kY = 30;
constexpr int kZ = 40;

/// Lets a death test capture the error stream, which the fixture holds otherwise.
struct ErrorStreamReleased {
  ErrorStreamReleased() { testing::internal::GetCapturedStderr(); }
  ~ErrorStreamReleased() { testing::internal::CaptureStderr(); }
  ErrorStreamReleased(const ErrorStreamReleased&) = delete;
  ErrorStreamReleased& operator=(const ErrorStreamReleased&) = delete;
};

/// A study of 20 x 30 x 40 voxels: grey rises with x; label 1 fills the half with small x.
class SliceViewsTest : public Interface {
protected:
  std::string folder;

  void SetUp() override {
    Interface::SetUp();
    folder = Scratch() + "/";
    std::vector<char> grey(256, 0);
    std::vector<char> seg(256, 0);
    for (int i = 0; i < kX * kY * kZ; ++i) {
      grey.push_back(static_cast<char>(10 * (i % kX)));
      seg.push_back(i % kX < kX / 2 ? 1 : 0);
    }
    Write(folder + "g.raw", grey);
    Write(folder + "s.raw", seg);
    Write(folder + "t.raw", seg);
    LoadGreyByHand(folder + "g.raw", {kX, kY, kZ}, 1, 256);
    LoadSegByHand(folder + "s.raw");
    LoadSegByHand(folder + "t.raw");
    TakeErrors();
  }

  static void Write(const std::string& path, const std::vector<char>& bytes) {
    std::ofstream(path, std::ios::binary)
        .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  }

  /// The pixel in the middle of slice pixel (i, j) of a view.
  Pixel At(Window2D* view, double i, double j) {
    const double x =
        ((i + 0.5) * view->voxelSizeX - view->viewCentreX) * view->zoom + view->w() / 2.0;
    const double y =
        ((j + 0.5) * view->voxelSizeY - view->viewCentreY) * view->zoom + view->h() / 2.0;
    return PixelOf(view, static_cast<int>(x), static_cast<int>(y));
  }
  void CrosshairTool() { Click(Ui().crosshairToolButton); }
};

TEST_F(SliceViewsTest, TheLabelIsBlendedOverTheGreyValues) {
  const Pixel labelled = At(Ui().xyView, 3, 20);
  const Pixel plain = At(Ui().xyView, 17, 20);

  EXPECT_GT(labelled.red, labelled.green + 50);
  EXPECT_EQ(plain.red, plain.green);
  EXPECT_EQ(plain.green, plain.blue);
  EXPECT_GT(plain.red, 100);
}

TEST_F(SliceViewsTest, WithoutOpacityTheGreyValuesShowAlone) {
  Slide(Ui().labelOpacityScrollbar, 0);
  const Pixel dark = At(Ui().xyView, 3, 20);
  const Pixel light = At(Ui().xyView, 17, 20);

  EXPECT_EQ(dark.red, dark.green);
  EXPECT_LT(dark.red, light.red);
}

TEST_F(SliceViewsTest, ContrastAndBrightnessChangeThePicture) {
  Slide(Ui().labelOpacityScrollbar, 0);
  Slide(Ui().contrastScrollbar, 255);
  EXPECT_EQ(At(Ui().xyView, 3, 20).red, 0);
  EXPECT_EQ(At(Ui().xyView, 17, 20).red, 255);
  Slide(Ui().brightnessScrollbar, 255);
  EXPECT_EQ(At(Ui().xyView, 3, 20).red, 255);
}

TEST_F(SliceViewsTest, EveryDirectionShowsItsPlane) {
  Slide(Ui().cursorSlider[0], 2);  // inside the label
  EXPECT_GT(At(Ui().yzView, 20, 15).red, At(Ui().yzView, 20, 15).green + 40);
  Slide(Ui().cursorSlider[0], 18);
  EXPECT_EQ(At(Ui().yzView, 20, 15).red, At(Ui().yzView, 20, 15).green);
  // XZ: z along the width, x along the height.
  EXPECT_GT(At(Ui().xzView, 20, 2).red, At(Ui().xzView, 20, 2).green + 40);
  EXPECT_EQ(At(Ui().xzView, 20, 18).red, At(Ui().xzView, 20, 18).green);
}

TEST_F(SliceViewsTest, ASliderMovesTheCursorAndItsText) {
  for (int axis = 0; axis < 3; ++axis) {
    const int size[3] = {kX, kY, kZ};
    Slide(Ui().cursorSlider[axis], size[axis] - 1);
    EXPECT_EQ(viewState->GetCursor()[static_cast<std::size_t>(axis)], size[axis] - 1);
    const std::string last = std::to_string(size[axis]);
    EXPECT_EQ(Ui().sliceOutput[axis]->value(), last + " of " + last);
  }
}

TEST_F(SliceViewsTest, AClickInCrosshairModeMovesEveryView) {
  CrosshairTool();
  // A little right of and above the middle, which lies between two pixels.
  ClickAt(Ui().xyView, Ui().xyView->w() / 2 + 3, Ui().xyView->h() / 2 - 3);

  EXPECT_EQ(viewState->GetCursor()[0], kX / 2);
  EXPECT_EQ(viewState->GetCursor()[1], kY / 2);
  EXPECT_EQ(Ui().cursorSlider[0]->value(), kX / 2);
  EXPECT_STREQ(Ui().sliceOutput[1]->value(), "16 of 30");
  Settle();
  EXPECT_EQ(Ui().yzView->currentSlice, kX / 2);
  EXPECT_EQ(currentDirection, 2);
}

TEST_F(SliceViewsTest, AClickOutsideTheSliceTakesTheNearestBorderPixel) {
  CrosshairTool();
  ClickAt(Ui().xyView, 0, 0);
  EXPECT_EQ(viewState->GetCursor()[0], 0);
  EXPECT_EQ(viewState->GetCursor()[1], kY - 1);
  ClickAt(Ui().xyView, Ui().xyView->w() - 1, Ui().xyView->h() - 1);
  EXPECT_EQ(viewState->GetCursor()[0], kX - 1);
  EXPECT_EQ(viewState->GetCursor()[1], 0);
}

TEST_F(SliceViewsTest, WhileTheCrosshairIsDraggedTheSlicesStay) {
  CrosshairTool();
  Settle();
  const int shown = Ui().yzView->currentSlice;
  Press(Ui().xyView, 100, 100);
  DragTo(Ui().xyView, 130, 100);
  Settle();
  EXPECT_EQ(viewState->GetLiveUpdate(), 0);
  EXPECT_EQ(Ui().yzView->currentSlice, shown);
  Release(Ui().xyView, 130, 100);
  Settle();
  EXPECT_EQ(viewState->GetLiveUpdate(), 1);
  EXPECT_EQ(Ui().yzView->currentSlice, viewState->GetCursor()[0]);
}

TEST_F(SliceViewsTest, TheCrosshairIsBlue) {
  Slide(Ui().labelOpacityScrollbar, 0);
  CrosshairTool();
  ClickAt(Ui().xyView, Ui().xyView->w() / 2, Ui().xyView->h() / 2);
  int blue = 0;
  for (const Pixel& pixel : PixelsOf(Ui().xyView)) {
    blue += pixel.blue > 200 && pixel.red < 40 && pixel.green < 40 ? 1 : 0;
  }
  EXPECT_GT(blue, 60);
}

TEST_F(SliceViewsTest, DraggingMovesAndZooms) {
  const float centre = Ui().xyView->viewCentreX;
  Drag(Ui().xyView, 100, 100, 120, 100);
  EXPECT_FLOAT_EQ(Ui().xyView->viewCentreX, centre - 20.0F / Ui().xyView->zoom);
  const float zoom = Ui().xyView->zoom;
  Drag(Ui().xyView, 100, 100, 100, 90, 3);
  EXPECT_NEAR(Ui().xyView->zoom, zoom * std::pow(1.05, 10), 1e-3);
  Drag(Ui().xyView, 100, 100, 100, -2000, 3);
  EXPECT_FLOAT_EQ(Ui().xyView->zoom, Ui().xyView->w() / Ui().xyView->voxelSizeX);
  Click(Ui().xyResetButton);
  EXPECT_FLOAT_EQ(Ui().xyView->zoom, zoom);
  EXPECT_FLOAT_EQ(Ui().xyView->viewCentreX, centre);
}

TEST_F(SliceViewsTest, KeysChooseTheToolAndGoOn) {
  for (const auto& [key, mode] : {std::pair<int, int>{'c', 3}, {'p', 0}, {'n', 1}, {'C', 3}}) {
    EXPECT_EQ(Shortcut(Ui().yzView, key), 0);
    EXPECT_EQ(viewState->GetToolMode(), mode);
    EXPECT_EQ(Ui().crosshairToolButton->value(), mode == 3 ? 1 : 0);
    EXPECT_EQ(Ui().moveToolButton->value(), mode == 1 ? 1 : 0);
  }
  EXPECT_EQ(Shortcut(Ui().yzView, 'x'), 0);
  EXPECT_EQ(viewState->GetToolMode(), 3);
}

TEST_F(SliceViewsTest, OnlyWhatChangedIsMadeAgain) {
  Settle();
  const auto texture = Ui().xyView->greyTexture;
  Ui().xyView->redraw();
  Settle();
  EXPECT_EQ(Ui().xyView->greyTexture, texture);
  Slide(Ui().labelOpacityScrollbar, 7);
  Settle();
  EXPECT_EQ(Ui().xyView->labelOpacity, 7);
}

TEST_F(SliceViewsTest, OnPurposeAnOpacityThatChangedWithTheContrastWaitsForTheNextRepaint) {
  Settle();
  Window2D* view = Ui().xyView;
  viewState->SetContrast(200);
  viewState->SetLabelOpacity(9);
  view->GetCurrentSlice();
  EXPECT_EQ(view->contrast, 200);
  EXPECT_EQ(view->labelOpacity, 128);

  view->GetCurrentSlice();

  EXPECT_EQ(view->labelOpacity, 9);
}

TEST_F(SliceViewsTest, TheImageSliderTakesTheSlicesAlsoWhileTheyStay) {
  viewState->SetLiveUpdate(0);
  viewState->SetCursor(7, 8, 9);
  Ui().RedrawViews();
  Settle();
  EXPECT_EQ(Ui().xyView->currentSlice, 0);
  Slide(Ui().imageSlider, 0);

  EXPECT_EQ(Ui().xyView->currentSlice, 9);
  EXPECT_EQ(Ui().yzView->currentSlice, 7);
  EXPECT_EQ(Ui().xzView->currentSlice, 8);
}

TEST_F(SliceViewsTest, InPlainModeTheMouseDoesNothing) {
  Shortcut(Ui().xyView, 'p');
  const auto cursor = viewState->GetCursor();
  const float centre = Ui().xyView->viewCentreX;
  for (Fl_Gl_Window* view :
       {static_cast<Fl_Gl_Window*>(Ui().xyView), static_cast<Fl_Gl_Window*>(Ui().segimage)}) {
    Drag(view, 100, 100, 150, 150);
    Drag(view, 100, 100, 150, 150, 3);
    EXPECT_EQ(view->handle(FL_PUSH), 0);
  }

  EXPECT_EQ(viewState->GetCursor(), cursor);
  EXPECT_EQ(Ui().xyView->viewCentreX, centre);
}

TEST_F(SliceViewsTest, ASmallSideIsPaddedToSixtyFour) {
  EXPECT_EQ(Ui().xyView->paddingX, 64 - kX);
  EXPECT_EQ(Ui().xyView->paddingY, 64 - kY);
}

TEST_F(SliceViewsTest, HidingAndShowingKeepsThePicture) {
  const Pixel before = At(Ui().xyView, 3, 20);
  Ui().mainWindow->hide();
  Settle();
  Ui().ShowAll();
  Ui().mainWindow->wait_for_expose();
  Settle();
  const Pixel after = At(Ui().xyView, 3, 20);
  EXPECT_EQ(before.red, after.red);
  EXPECT_EQ(before.green, after.green);
}

TEST_F(SliceViewsTest, OnPurposeAnImageOfAnotherSizeIsShownInTheSizesOfTheLastLoad) {
  Ui().greyXdimInput->value(6);
  LoadSegByHand(folder + "s.raw");
  ASSERT_EQ(Ui().xyView->sliceWidth, 6);

  for (const int image : {0, 2, 1}) {
    Slide(Ui().imageSlider, image);
    Settle();
    EXPECT_EQ(Ui().xyView->sliceWidth, 6);
    EXPECT_EQ(Ui().xyView->sliceHeight, kY);
    EXPECT_EQ(Ui().xzView->sliceHeight, 6);
  }
}

TEST_F(SliceViewsTest, ABrokenCallingOrderEndsTheProgram) {
  Window2D* view = Ui().xyView;
  view->ClearView();
  const ErrorStreamReleased released;
  EXPECT_EXIT(view->InitSlice(), testing::ExitedWithCode(255),
              "Window2D 2 needs a Register\\(\\) call prior to InitSlice\\(\\)\\.");
  EXPECT_EXIT(view->ResetView(), testing::ExitedWithCode(255),
              "needs a Register\\(\\) and InitSlice\\(\\) call prior to ResetView");
  EXPECT_EXIT(view->GetCurrentSlice(), testing::ExitedWithCode(255), "GetCurrentSlice");
  EXPECT_EXIT(view->CreateGreySliceTexture(), testing::ExitedWithCode(255),
              "CreateGreySliceTexture");
  EXPECT_EXIT(view->CreateSegSliceTexture(), testing::ExitedWithCode(255), "CreateSegSliceTexture");
}

// The result canvas.

TEST_F(SliceViewsTest, TheCanvasIsBlackUntilAMeasureHasRun) {
  Slide(Ui().cursorSlider[0], 5);
  for (const Pixel& pixel : PixelsOf(Ui().segimage)) {
    ASSERT_TRUE(pixel.red < 60 && pixel.green < 60);  // only the blue cursor
  }
  SetLabel(1);
  Click(ButtonByLabel(Ui().measuresGroup, "Overlay Result"));
  int white = 0;
  Click(Ui().overlay2DButton);
  Click(ButtonByLabel(Ui().measuresGroup, "Complexity"));
  Ui().segimage->OverlayResult2D();
  for (const Pixel& pixel : PixelsOf(Ui().segimage)) { white += pixel.green > 250 ? 1 : 0; }
  EXPECT_GT(white, 1000);  // both images have label 1: half of the slice
}

TEST_F(SliceViewsTest, TheCanvasShowsImageOneOverImageTwo) {
  SetLabel(1);
  Click(Ui().overlay2DButton);
  int blended = 0;
  for (const Pixel& pixel : PixelsOf(Ui().segimage)) {
    blended += pixel.red > 250 && pixel.green > 100 && pixel.green < 150 ? 1 : 0;
  }
  EXPECT_GT(blended, 1000);  // red at half opacity over white
}

TEST_F(SliceViewsTest, AValueOfSixtyFiveThousandFiveHundredThirtySixPaintsBlack) {
  Segimage& canvas = *Ui().segimage;
  canvas.result[3][4] = 65536;
  canvas.result[3][5] = 65535;
  canvas.CreateGreySliceTexture();
  const int row = canvas.textureWidth + canvas.paddingX;
  EXPECT_EQ(canvas.greyTextureData[row * 4 + 3], 0);
  EXPECT_EQ(canvas.greyTextureData[row * 5 + 3], 65535);
}

/// The pixels of a view where `is` holds, and how far each lies from the lines through the middle
/// of slice pixel (i, j).
struct CrossPixels {
  int count = 0;
  double farthest = 0.0;
};

template <class Is>
CrossPixels CrossOf(Segimage* canvas, double i, double j, Is is) {
  const double x = ((i + 0.5) * canvas->voxelSizeX - canvas->viewCentreX) * canvas->zoom;
  const double y = ((j + 0.5) * canvas->voxelSizeY - canvas->viewCentreY) * canvas->zoom;
  const std::vector<Pixel> pixels = Interface::PixelsOf(canvas);
  CrossPixels cross;
  for (std::size_t at = 0; at < pixels.size(); ++at) {
    if (!is(pixels[at])) { continue; }
    const double column = static_cast<int>(at) % canvas->w() + 0.5 - canvas->w() / 2.0;
    const double row = static_cast<int>(at) / canvas->w() + 0.5 - canvas->h() / 2.0;
    cross.farthest = std::max(cross.farthest, std::min(std::fabs(column - x), std::fabs(row - y)));
    ++cross.count;
  }
  return cross;
}

TEST_F(SliceViewsTest, InPlainModeTheCanvasKeepsAGreenCrossAtTheFirstVoxelForTheWholeRun) {
  const auto isGreen = [](const Pixel& pixel) {
    return pixel.green > 200 && pixel.red < 60;
  };
  const auto isPurple = [](const Pixel& pixel) {
    return pixel.red > 100 && pixel.blue > 100 && pixel.green < 60;
  };
  Segimage* canvas = Ui().segimage;
  EXPECT_EQ(CrossOf(canvas, 0, 0, isGreen).count, 0);  // navigating: only the cursor, in blue
  Shortcut(canvas, 'p');

  for (const int place : {4, 13}) {
    for (Fl_Scrollbar* slider : Ui().cursorSlider) { Slide(slider, place); }
    const CrossPixels green = CrossOf(canvas, 0, 0, isGreen);
    EXPECT_GT(green.count, 60);
    EXPECT_LE(green.farthest, 1.0);
    const CrossPixels purple = CrossOf(canvas, place, place, isPurple);
    EXPECT_GT(purple.count, 60);
    EXPECT_LE(purple.farthest, 1.0);
  }
}

TEST_F(SliceViewsTest, AClickOnTheCanvasMovesEveryView) {
  CrosshairTool();
  Segimage* canvas = Ui().segimage;
  Press(canvas, canvas->w() / 2 + 3, canvas->h() / 2 - 3);
  EXPECT_EQ(viewState->GetLiveUpdate(), 0);
  DragTo(canvas, 0, 0);
  EXPECT_EQ(viewState->GetCursor()[0], 0);
  EXPECT_EQ(viewState->GetCursor()[1], kY - 1);
  currentDirection = 1;
  Release(canvas, canvas->w() / 2 + 3, canvas->h() / 2 - 3);

  EXPECT_EQ(viewState->GetLiveUpdate(), 1);
  EXPECT_EQ(viewState->GetCursor()[0], kX / 2);
  EXPECT_EQ(viewState->GetCursor()[1], kY / 2);
  EXPECT_STREQ(Ui().sliceOutput[0]->value(), "11 of 20");
  EXPECT_EQ(currentDirection, 2);
  Settle();
  EXPECT_EQ(Ui().xzView->currentSlice, kY / 2);
}

TEST_F(SliceViewsTest, TheCanvasMovesAndZoomsLikeAView) {
  Segimage* canvas = Ui().segimage;
  const float centre = canvas->viewCentreY;
  const float whole = canvas->zoom;
  Drag(canvas, 100, 100, 100, 120);
  EXPECT_FLOAT_EQ(canvas->viewCentreY, centre + 20.0F / whole);
  Drag(canvas, 100, 100, 100, 110, 3);
  EXPECT_NEAR(canvas->zoom, whole / std::pow(1.05, 10), 1e-3);
  Drag(canvas, 100, 100, 100, 2000, 3);
  EXPECT_FLOAT_EQ(canvas->zoom, 1.0F / (kX * canvas->voxelSizeX));
  Drag(canvas, 100, 100, 150, 150, 2);  // the middle button takes the events and does nothing
  EXPECT_FLOAT_EQ(canvas->zoom, 1.0F / (kX * canvas->voxelSizeX));
}

TEST_F(SliceViewsTest, TheCanvasHasRoomForItsFixedPicture) {
  EXPECT_NE(Ui().segimage->greyTextureData, nullptr);
  Ui().segimage->greyTextureData[159999] = 1;
}

TEST_F(SliceViewsTest, AnotherDirectionResetsTheCanvasAndTheSameOneKeepsIt) {
  SetLabel(1);
  Click(Ui().overlay2DButton);
  Ui().segimage->zoom = 99.0F;
  Click(Ui().overlay2DButton);
  EXPECT_EQ(Ui().segimage->zoom, 99.0F);
  Click(Ui().directionYZButton);
  Click(Ui().overlay2DButton);
  EXPECT_NE(Ui().segimage->zoom, 99.0F);
  EXPECT_EQ(lastDirection, 0);
}

TEST_F(SliceViewsTest, OnPurposeOneGuardOfTheCanvasNamesTheOtherClass) {
  Segimage* canvas = Ui().segimage;
  canvas->Unregister();
  const ErrorStreamReleased released;
  EXPECT_EXIT(canvas->InitSlice(), testing::ExitedWithCode(255),
              "Segimage 2 needs a Register\\(\\) call prior to InitSlice");
  EXPECT_EXIT(canvas->GetCurrentSlice(), testing::ExitedWithCode(255),
              "Window2D 2 needs a Register\\(\\) and InitSlice\\(\\) call prior to "
              "GetCurrentSlice");
}

class EmptyViewsTest : public Interface {};

TEST_F(EmptyViewsTest, WithoutAnImageResetSaysSo) {
  for (Fl_Button* button : {Ui().xyResetButton, Ui().yzResetButton, Ui().xzResetButton}) {
    alerts.clear();
    Click(button);
    EXPECT_EQ(alerts, std::vector<std::string>{"You must load an image"});
  }
}

TEST_F(EmptyViewsTest, WithoutAnImageEventsAreTakenAndNothingIsDrawn) {
  for (Fl_Gl_Window* view :
       {static_cast<Fl_Gl_Window*>(Ui().xyView), static_cast<Fl_Gl_Window*>(Ui().segimage)}) {
    EXPECT_EQ(Shortcut(view, 'c'), 1);
    for (const Pixel& pixel : PixelsOf(view)) { ASSERT_EQ(pixel.red + pixel.green, 0); }
  }
  Slide(Ui().cursorSlider[2], 3);
  EXPECT_EQ(viewState->GetCursor()[2], 3);
  Slide(Ui().imageSlider, 0);
}

}  // namespace
