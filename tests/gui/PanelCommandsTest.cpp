// The widgets that are no measure buttons: tools, sliders, choices, rollers, menu.
#include "VoxData/VoxData.h"
#include "tests/support/Interface.h"
#include "ui/ColorPreview.h"
#include "ui/FirstSteps.h"
#include "view3d/Window3D.h"
#include "views/Segimage.h"
#include "views/Window2D.h"

#include <FL/Fl_Box.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Choice.H>
#include <FL/Fl_Input.H>
#include <FL/Fl_Menu_Bar.H>
#include <FL/Fl_Output.H>
#include <FL/Fl_Roller.H>
#include <FL/Fl_Round_Button.H>
#include <FL/Fl_Scrollbar.H>
#include <FL/Fl_Slider.H>
#include <FL/Fl_Value_Input.H>

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class PanelCommandsTest : public Interface {
protected:
  void LoadStudy() { LoadGoldenStudy("study_100_general"); }
};

// Tools.

TEST_F(PanelCommandsTest, TheToolButtonsExcludeEachOther) {
  Click(Ui().crosshairToolButton);
  EXPECT_EQ(viewState->GetToolMode(), 3);
  EXPECT_EQ(Ui().crosshairToolButton->value(), 1);
  EXPECT_EQ(Ui().moveToolButton->value(), 0);

  Click(Ui().moveToolButton);
  EXPECT_EQ(viewState->GetToolMode(), 1);
  EXPECT_EQ(Ui().crosshairToolButton->value(), 0);
  EXPECT_EQ(Ui().moveToolButton->value(), 1);
}

TEST_F(PanelCommandsTest, AToolButtonStaysLitWhenItIsPressedAgain) {
  Click(Ui().moveToolButton);

  EXPECT_EQ(Ui().moveToolButton->value(), 1);
  EXPECT_EQ(viewState->GetToolMode(), 1);
}

TEST_F(PanelCommandsTest, TheToolsHaveNoHelp) {
  Click(Ui().crosshairToolButton, 3);

  EXPECT_EQ(viewState->GetToolMode(), 3);
  EXPECT_FALSE(Ui().helpWindow->shown());
}

// Brightness, contrast, opacity.

TEST_F(PanelCommandsTest, TheThreeScrollbarsSetTheViewState) {
  Slide(Ui().contrastScrollbar, 10.9);
  Slide(Ui().brightnessScrollbar, 255);
  Slide(Ui().labelOpacityScrollbar, 0);

  EXPECT_EQ(viewState->GetContrast(), 10);
  EXPECT_EQ(viewState->GetBrightness(), 255);
  EXPECT_EQ(viewState->GetLabelOpacity(), 0);
}

TEST_F(PanelCommandsTest, TheRollersSetTheOpacityOfTheirSurface) {
  Slide(Ui().surface2OpacityRoller, 40);
  EXPECT_EQ(Ui().surfaceOpacity[0], 40.0F);
  EXPECT_EQ(Ui().surfaceOpacity[1], 100.0F);

  Slide(Ui().surface3OpacityRoller, 7);
  EXPECT_EQ(Ui().surfaceOpacity[0], 40.0F);
  EXPECT_EQ(Ui().surfaceOpacity[1], 7.0F);
}

TEST_F(PanelCommandsTest, TheOverlayOpacityRefusesBelowTwoImages) {
  Slide(Ui().overlayOpacitySlider, 77);

  EXPECT_THAT(alerts, ElementsAre("You must load at least 2 segmented images"));
  EXPECT_EQ(viewState->GetLabelOpacity(), 128);
}

TEST_F(PanelCommandsTest, TheOverlayOpacityShowsTheOverlapWithTheMask) {
  LoadStudy();

  Slide(Ui().overlayOpacitySlider, 77);

  EXPECT_EQ(viewState->GetLabelOpacity(), 77);
  EXPECT_STRNE(Ui().union2DOutput->value(), "");
  EXPECT_EQ(Ui().segimage->overlayVisible, 1);
}

TEST_F(PanelCommandsTest, ARightDragOnTheOverlayOpacityRunsItsCallback) {
  LoadStudy();
  Fl_Window* window = Ui().mainWindow;
  const int y = Ui().overlayOpacitySlider->y() + 7;
  const int x = Ui().overlayOpacitySlider->x();

  Drag(window, x + 55, y, x + 100, y, 3);

  EXPECT_GT(Ui().overlayOpacitySlider->value(), 128.0);
  EXPECT_EQ(viewState->GetLabelOpacity(), static_cast<int>(Ui().overlayOpacitySlider->value()));
  EXPECT_FALSE(Ui().helpWindow->shown());
}

// Label and direction.

TEST_F(PanelCommandsTest, AChosenLabelBecomesTheCurrentOneWithItsColour) {
  LoadStudy();
  const int entries = Ui().colorLabelChoice->size() - 1;
  ASSERT_GE(entries, 2);

  for (int entry = 0; entry < entries; ++entry) {
    Choose(Ui().colorLabelChoice, entry);

    EXPECT_EQ(Ui().currentLabel, Ui().labelList[entry]);
    const auto colour = Ui().images[0]->GetLabelColour(Ui().currentLabel);
    EXPECT_EQ(Ui().colorPreview->red, static_cast<int>(colour[0] * 255.0));
    EXPECT_EQ(Ui().colorPreview->green, static_cast<int>(colour[1] * 255.0));
    EXPECT_EQ(Ui().colorPreview->blue, static_cast<int>(colour[2] * 255.0));
  }
}

TEST_F(PanelCommandsTest, AnEmptyLabelChoiceTakesTheFirstEntryOfTheTable) {
  Ui().labelList[0] = 9;

  Ui().colorLabelChoice->do_callback();

  EXPECT_EQ(Ui().currentLabel, 9);
}

TEST_F(PanelCommandsTest, TheDirectionButtonsExcludeEachOther) {
  Fl_Round_Button* const buttons[] = {Ui().directionXYButton, Ui().directionYZButton,
                                      Ui().directionXZButton};
  for (Fl_Round_Button* chosen : {buttons[1], buttons[2], buttons[0], buttons[0]}) {
    Click(chosen);
    for (const Fl_Round_Button* button : buttons) {
      EXPECT_EQ(button->value(), button == chosen ? 1 : 0) << button->label();
    }
  }
}

// Cursor and image.

TEST_F(PanelCommandsTest, ASliceSliderMovesItsCoordinateAndWritesItsText) {
  LoadStudy();
  const int sizes[3] = {26, 30, 17};
  for (int axis = 0; axis < 3; ++axis) { Slide(Ui().cursorSlider[axis], 4 + axis); }

  const auto cursor = viewState->GetCursor();
  for (int axis = 0; axis < 3; ++axis) {
    EXPECT_EQ(cursor[static_cast<std::size_t>(axis)], 4 + axis);
    EXPECT_EQ(Ui().sliceOutput[axis]->value(),
              std::to_string(5 + axis) + " of " + std::to_string(sizes[axis]));
  }
}

TEST_F(PanelCommandsTest, ASliceSliderBeforeAnyImageWritesTheCursorAndHarmsNothing) {
  for (int axis = 0; axis < 3; ++axis) { Slide(Ui().cursorSlider[axis], 2); }
  Settle();

  const auto cursor = viewState->GetCursor();
  EXPECT_THAT(cursor, ElementsAre(2, 2, 2));
  EXPECT_STREQ(Ui().sliceOutput[0]->value(), "3 of 0");
  EXPECT_THAT(alerts, IsEmpty());
}

TEST_F(PanelCommandsTest, TheImageSliderNamesTheImageItShows) {
  LoadStudy();

  Slide(Ui().imageSlider, 2);
  EXPECT_STREQ(Ui().currentImageOutput->value(), "seg_u1_r0.gipl");
  Slide(Ui().imageSlider, 0);
  EXPECT_STREQ(Ui().currentImageOutput->value(), "seg_u0_r0.gipl");
}

TEST_F(PanelCommandsTest, TheImageSliderDoesNothingUsefulWithoutImages) {
  for (const double value : {-1.0, 0.0, 5.0, -1e9, 1e300}) { Slide(Ui().imageSlider, value); }
  Drag(Ui().mainWindow, 150, 272, 800, 272);
  Settle();

  EXPECT_STREQ(Ui().currentImageOutput->value(), "");
  EXPECT_THAT(alerts, IsEmpty());
}

TEST_F(PanelCommandsTest, TheSlidersCanBeMovedWhileNoWindowIsShown) {
  LoadStudy();
  Ui().mainWindow->hide();

  Slide(Ui().imageSlider, 1);
  Slide(Ui().cursorSlider[0], 3);
  Slide(Ui().contrastScrollbar, 3);

  EXPECT_STREQ(Ui().currentImageOutput->value(), "seg_u0_r1.gipl");
}

TEST_F(PanelCommandsTest, ResetViewNeedsAnImage) {
  for (Fl_Button* button : {Ui().xyResetButton, Ui().yzResetButton, Ui().xzResetButton}) {
    alerts.clear();
    Click(button);
    EXPECT_THAT(alerts, ElementsAre("You must load an image"));
  }
}

TEST_F(PanelCommandsTest, ResetViewResetsItsOwnViewOnly) {
  LoadStudy();
  const struct {
    Fl_Button* button;
    Window2D* view;
  } rows[] = {{Ui().xyResetButton, Ui().xyView},
              {Ui().yzResetButton, Ui().yzView},
              {Ui().xzResetButton, Ui().xzView}};
  for (const auto& row : rows) {
    row.view->ResetView();
    const float whole = row.view->zoom;
    for (const auto& other : rows) { other.view->zoom = 999.0F; }

    Click(row.button);

    for (const auto& other : rows) {
      EXPECT_EQ(other.view->zoom, other.view == row.view ? whole : 999.0F)
          << row.view->label() << " " << other.view->label();
    }
  }
  EXPECT_THAT(alerts, IsEmpty());
}

// Menu.

TEST_F(PanelCommandsTest, TheMenuShowsTheWindows) {
  const struct {
    const char* path;
    Fl_Window* window;
  } rows[] = {
      {"File/Load/GreyRawFile", Ui().loadGreyWindow}, {"File/Load/SegRawFile", Ui().loadSegWindow},
      {"File/Create File", Ui().createListWindow},    {"File/Options", Ui().optionsWindow},
      {"Help/First step...", Ui().firstStepsWindow},  {"Help/About", Ui().aboutWindow}};
  for (const auto& row : rows) {
    EXPECT_FALSE(row.window->shown()) << row.path;
    Menu(row.path);
    EXPECT_TRUE(row.window->shown()) << row.path;
    EXPECT_TRUE(Ui().mainWindow->shown());
  }
}

TEST_F(PanelCommandsTest, CreateFileEmptiesItsFieldsEachTime) {
  Ui().listOriginalInput->value("/data/grey.gipl");
  Ui().listSegsInput->value("/data/a.gipl\n");
  Ui().listNbUserInput->value(4);
  Ui().listNbSegInput->value(9);

  Menu("File/Create File");

  EXPECT_STREQ(Ui().listOriginalInput->value(), "");
  EXPECT_STREQ(Ui().listSegsInput->value(), "");
  EXPECT_EQ(Ui().listNbUserInput->value(), 1.0);
  EXPECT_EQ(Ui().listNbSegInput->value(), 0.0);
}

TEST_F(PanelCommandsTest, ASelectionFileIsChosenAmongListFiles) {
  Menu("File/Load/Selection File");

  EXPECT_THAT(chooserTitles, ElementsAre("Select a File|*.tlx"));
  EXPECT_EQ(Ui().imageCount, 0);
}

TEST_F(PanelCommandsTest, FirstStepWritesItsTextAnewAtEachOpening) {
  // clang-format off
  const char* const text = "Welcome on TOLVEX version 1.0\n\n1.Load images\nThere are 2 ways to load images with TOLVEX.\n\n*Manual Loading \n -File -> Load -> GreyRawFile\nYou can open .raw and .gipl format\n -For each segmentation file do:\n   File -> Load -> SegRawFile\n\n*Automatic loading\n -File -> Create File\n -Load Original image\n -Load each segmentation\n -Select the number of users and the number of slice by user\n -Save the list\n -Load the script file by clicking on the \"Load\" button\n -Select the script file you have just created.\nBe carreful, the scriptfile accept only the .gipl images!\n\n2.Computing values\n\n You have just to click on the buttons.\nIf you don't know the functionalities of a button you can make a right click on it.\nit display the help for this button\n\n3.Ouput Values\n\n All the values are printed on the screen\nNevertheless, if you use the \"Compare Data\" button you can export all the values into a file.\nYou can also create a file for the confusion matrix and the Histogram surface.\n";
  // clang-format on
  Menu("Help/First step...");
  EXPECT_STREQ(Ui().firstStepsOutput->value(), text);

  Ui().firstStepsOutput->value("scribbled over");
  Menu("Help/First step...");  // while it is open
  EXPECT_STREQ(Ui().firstStepsOutput->value(), text);
  EXPECT_TRUE(Ui().firstStepsWindow->shown());
}

// Quit.

TEST_F(PanelCommandsTest, QuitEndsTheRunLoop) {
  Menu("File/Options");
  Settle();

  Menu("File/Quit");

  EXPECT_EQ(Fl::first_window(), nullptr);
  EXPECT_EQ(Fl::run(), 0);
}

TEST_F(PanelCommandsTest, QuitWithALoadedStudyEndsTheRunLoop) {
  LoadStudy();
  Click(Ui().surfaceDistanceButton);
  Settle();

  Menu("File/Quit");
  Fl::check();  // the window is deleted here

  EXPECT_EQ(Fl::run(), 0);
}

TEST_F(PanelCommandsTest, QuitUnderARunningCommandWaitsForItsEnd) {
  {
    const RunningCommand running(Ui());
    Menu("File/Quit");
    Fl::check();

    EXPECT_TRUE(Ui().quitRequested);
    EXPECT_EQ(Fl::first_window(), nullptr);
    Ui().ShowProgressMessage("still there");  // the widgets are still in use
    Ui().StepProgress();
    EXPECT_STREQ(Ui().progressText->value(), "still there");
  }

  EXPECT_EQ(Fl::run(), 0);
}

// Closing.

/// As the toolkit gets it for a window, with the pointer over none: a view without an image keeps
/// every event.
void PressEscape(Fl_Window* window) {
  Fl::belowmouse(nullptr);
  static char text[] = "\033";
  Fl::e_text = text;
  Fl::e_length = 1;
  Fl::e_keysym = FL_Escape;
  Fl::handle(FL_KEYBOARD, window);
}

TEST_F(PanelCommandsTest, EscapeEndsNoProgramAndItsCloseBoxDoes) {
  LoadStudy();

  PressEscape(Ui().mainWindow);
  EXPECT_TRUE(Ui().mainWindow->shown());
  EXPECT_EQ(Ui().imageCount, 4);

  Fl::handle(FL_CLOSE, Ui().mainWindow);
  EXPECT_EQ(Fl::run(), 0);
}

TEST_F(PanelCommandsTest, EscapeUnderARunningCommandEndsNoProgram) {
  LoadStudy();
  const RunningCommand running(Ui());

  PressEscape(Ui().mainWindow);

  EXPECT_TRUE(Ui().mainWindow->shown());
  EXPECT_FALSE(Ui().quitRequested);
}

TEST_F(PanelCommandsTest, EscapeClosesEachDialogThatKeepsItsContent) {
  const MainUI& ui = Ui();
  for (Fl_Window* dialog : {ui.loadGreyWindow, ui.loadSegWindow, ui.compareWindow, ui.optionsWindow,
                            ui.plotWindow, ui.helpWindow, ui.aboutWindow, ui.firstStepsWindow}) {
    dialog->show();
    PressEscape(dialog);
    EXPECT_FALSE(dialog->shown()) << dialog->label();
    EXPECT_TRUE(ui.mainWindow->shown()) << dialog->label();
  }
}

TEST_F(PanelCommandsTest, EscapeLosesNoListThatIsBeingComposed) {
  Menu("File/Create File");
  Ui().listOriginalInput->value("grey.gipl");

  PressEscape(Ui().createListWindow);
  EXPECT_TRUE(Ui().createListWindow->shown());
  EXPECT_STREQ(Ui().listOriginalInput->value(), "grey.gipl");

  Fl::handle(FL_CLOSE, Ui().createListWindow);
  EXPECT_FALSE(Ui().createListWindow->shown());
}

TEST_F(PanelCommandsTest, AClosedMainWindowLeavesTheDialogsWorking) {
  LoadStudy();
  Ui().compareWindow->show();
  Ui().plotWindow->show();
  Ui().mainWindow->hide();
  Settle();

  Click(Ui().compareAllButton);
  Click(ButtonByLabel(Ui().plotWindow, "Plot"));
  Settle();

  EXPECT_EQ(Ui().comparePairCount, 6);
}

}  // namespace
