// The measure buttons: help on a right click, refusal, and what each of them runs.
#include "tests/support/Golden.h"
#include "tests/support/Interface.h"
#include "ui/Plot.h"
#include "view3d/Window3D.h"
#include "views/Segimage.h"

#include <FL/Fl_Box.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Choice.H>
#include <FL/Fl_Group.H>
#include <FL/Fl_Input.H>
#include <FL/Fl_Output.H>
#include <FL/Fl_Round_Button.H>
#include <FL/Fl_Scrollbar.H>
#include <FL/Fl_Slider.H>

#include <fstream>
#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const char* const kRefusal = "You must load at least 2 segmented images";

/// The button at a place of the main window; some have no member.
Fl_Widget* ButtonAt(Fl_Group* group, int x, int y) {
  for (int i = 0; i < group->children(); ++i) {
    Fl_Widget* child = group->child(i);
    if (child->x() == x && child->y() == y && dynamic_cast<Fl_Button*>(child)) { return child; }
  }
  return nullptr;
}

struct MeasureButton {
  const char* name;
  Fl_Widget* (*find)(MainUI&);
  const char* help;
};

#define BUTTON(member)                                                                             \
  [](MainUI& ui) -> Fl_Widget* {                                                                   \
    return ui.member;                                                                              \
  }
#define BUTTON_AT(group, x, y)                                                                     \
  [](MainUI& ui) {                                                                                 \
    return ButtonAt(ui.group, x, y);                                                               \
  }

// clang-format off
const MeasureButton kButtons[] = {
  {"Overlay 2D", BUTTON(overlay2DButton), "-Display the overlap in 2 Dimensions\n Color image is the selected Image 1\n White image is the selected Image 2\n It displays the slice which value is selected in the three \n top windows\n You can choose the direction with the XY, YZ and XZ buttons. \n"},
  {"upper Overlay Result", BUTTON_AT(measuresGroup, 405, 360), "-Display the overlap of the 2 selected images\n as a gray level image.\n White corresponds to the high probability (1) and black\n to the low probability (0).\n-It computes the overlap for Image 1 and Image 2.\n It displays the slice which value is selected in the three \n top windows.\n You can choose the direction with the XY, YZ and XZ buttons.\n"},
  {"Complexity", BUTTON(complexityButton), "-Display the contour of the image selected with the slider.\n-It computes the complexity of this 2D image.\n The complexity is: Aera/sqr(Perimeter)\n It displays the slice which value is selected in the three \n top windows.\n You can choose the direction with the XY, YZ and XZ buttons.\n"},
  {"Area/Perimeter", BUTTON(areaPerimeterButton), "-Compute the aera of the non-common region of Image 1\n and Image 2. Then, it computes the ratio between this aera \n and the interior contour\n-Display the interior contour of the Image 1 computing with \n the Freeman code.\n"},
  {"Danielsson 2D", BUTTON(danielsson2DButton), "-Display the 2D distance map of the image selected \n with the slider as a gray level image.\n It displays the slice which value is selected in the three \n top windows.\n You can choose the direction with the XY, YZ and XZ buttons. \n"},
  {"Haussdorf", BUTTON(haussdorfButton), "-Compute the Haussdorf distance A->B and B->A and\n the Max(A->B,B->A).\n-Display the Haussdorf distance point of the Image 1.\n This is the maximum distance point from the Image 2 to\n the Image 1.\n The white point represents this distance.\n It displays the slice which value is selected in the three \n top windows.\n You can choose the direction with the XY, YZ and XZ buttons. \n"},
  {"Overlay Intra", BUTTON(overlayIntraButton), "-Compute the probability INTRA user\n The number of user and the number of slice by user arf\n selected during the creation of the script file.\n-Display the probability map INTRA user as gray level image\n White represents high probability (1)\n Black represents low probability (0)\n You can switch between users with the slider below.\n"},
  {"Overlay Inter", BUTTON(overlayInterButton), "-Compute the probability INTER user\n The number of user and the number of slice by user arf\n selected during the creation of the script file.\n-Display the probability map INTER user as gray level image\n White represents high probability (1)\n Black represents low probability (0)\n"},
  {"Danielsson 3D", BUTTON(danielsson3DButton), "Display the 3D danielson (for the selected distance)\nof the Image 1 surface.\nYou can select the distance with the slider below.\n"},
  {"Overlay 3D", BUTTON_AT(measuresGroup, 405, 565), "Diplay the 3D overlay between Image 1 and Image 2.\n-red represents this the 3D surface of the Image 1.\n-green represents this the 3D surface of the Image 2.\n"},
  {"lower Overlay Result", BUTTON(overlayResult3DButton), "Display the 3D overlay between Image 1 and Image 2.\n-red represents this the 3D surface of the Image 1.\n-green represents this the 3D surface of the Image 2.\n-blue represents the common region.\n"},
  {"Haussdorf 3D", BUTTON(haussdorf3DButton), "-Compute the 3D Haussdorf distance (A->B and B->A) and\n compute the max(A->B,B-A).\n-Display the Image 1 surface with the distance from the\n Image 2.\nBlue means Image 1 and Image 2 are very close.\nRed means Image 1 is very far from Image 2\n"},
  {"Surface distance", BUTTON(surfaceDistanceButton), "-Compute the distance between the 2 surfaces\n-Display the surface of the Image 2\nBlue means Image1 is outside of the Image 2\nRed means  Image1 is inside of the Image 2 \n"},
  {"Update Color", BUTTON(updateColorButton), "Update the color display for the Surface distance display\nYou can select the maximum inside and the maximum outside\nwith the input boxes. \n"},
  {"Probability", BUTTON(probabilityButton), "-Compute the probability overlap for the 2 first users\n-Diplay the Image 1.\nEach color represents a probability.\nRed represents the highest probability.\nBlue represents the lowest probability.\n"},
  {"Create Average", BUTTON(createAverageButton), "Create the average between all the segmentations of each user.\nYou have to select the label you want to average.\nOne image for each user is creating and you can see them in the\nthree top windows.\n"},
  {"Confusion Matrix", BUTTON(confusionMatrixButton), "Compute the Confusion matrix for Image 1 and Image 2\nYou must save this table into a file.\nYou can easly read this file whit MS-Excel\n1. Open MS-Excel\n2. Choose File -> Open...\n3. In \"File of Type\" select \"All file\"\n4. Open the confusion matrix file\n5. On the \"Test import Wizard\" click on Finish\nThat's it !\n"},
  {"Compare Data", BUTTON(compareDataButton), "Automatic 3D comparison\nThis is just an automatic procedure to compute:\n-Overlap ratio\n-Surface distance\n-Haussdorf distance\n-Histogram distance\nfor each pairwise combinaison.\n"},
  {"Visualisation tool", BUTTON_AT(toolGroup, 10, 505), "Display the number of pixel of each slice for all the direction\nX, Y and Z.\nYou can see the differences along the slices for 2 images.\n"},
};
// clang-format on

class CommandsTest : public Interface {
protected:
  void LoadStudy() {
    LoadGoldenStudy("study_100_general");
    SetLabel(1);
    Slide(Ui().cursorSlider[2], 8);  // a slice through the middle of the bodies
  }
  std::string Text(const Fl_Output* field) { return field->value(); }
  /// Clicks and waits until everything that was asked for is drawn.
  void Run(Fl_Widget* button, int mouse = 1) {
    Click(button, mouse);
    Settle();
  }
};

// Help.

TEST_F(CommandsTest, ARightClickShowsTheHelpOfEveryMeasureButtonWithoutAnImage) {
  Ui().updateColorButton->activate();
  for (const MeasureButton& row : kButtons) {
    SCOPED_TRACE(row.name);
    Fl_Widget* button = row.find(Ui());
    ASSERT_NE(button, nullptr);
    Ui().helpWindow->hide();

    Click(button, 3);

    EXPECT_EQ(Text(Ui().helpOutput), row.help);
    EXPECT_TRUE(Ui().helpWindow->shown());
    EXPECT_THAT(alerts, IsEmpty());
  }
  EXPECT_FALSE(Ui().compareWindow->shown());
  EXPECT_FALSE(Ui().plotWindow->shown());
  EXPECT_THAT(chooserTitles, IsEmpty());
}

TEST_F(CommandsTest, EveryMeasureButtonHasARowOfItsOwn) {
  for (const MeasureButton& row : kButtons) {
    for (const MeasureButton& other : kButtons) {
      if (&row == &other) { continue; }
      EXPECT_NE(row.find(Ui()), other.find(Ui())) << row.name;
      EXPECT_STRNE(row.help, other.help) << row.name;
    }
  }
}

TEST_F(CommandsTest, AFurtherRightClickChangesTheTextOfTheOpenWindow) {
  Click(Ui().complexityButton, 3);
  Settle();
  Click(Ui().haussdorf3DButton, 3);

  EXPECT_EQ(Text(Ui().helpOutput), kButtons[11].help);
  EXPECT_TRUE(Ui().helpWindow->shown());
}

TEST_F(CommandsTest, TheHelpStaysWhileTheUserGoesOn) {
  LoadStudy();
  Click(Ui().complexityButton, 3);
  const std::string help = Text(Ui().helpOutput);

  Run(ButtonAt(Ui().measuresGroup, 405, 360));

  EXPECT_EQ(Text(Ui().helpOutput), help);
  EXPECT_TRUE(Ui().helpWindow->shown());
}

TEST_F(CommandsTest, ARightClickRunsNothingEvenWithAStudy) {
  LoadStudy();

  for (const MeasureButton& row : kButtons) { Click(row.find(Ui()), 3); }

  EXPECT_EQ(Text(Ui().union2DOutput), "");
  EXPECT_EQ(Text(Ui().haussdorf3DOutput), "");
  EXPECT_FALSE(Ui().plotWindow->shown());
  EXPECT_FALSE(Ui().updateColorButton->active());
}

// Refusals.

TEST_F(CommandsTest, WithoutImagesEveryMeasureButtonButUpdateColorRefuses) {
  for (const MeasureButton& row : kButtons) {
    SCOPED_TRACE(row.name);
    if (std::string(row.name) == "Update Color") { continue; }
    for (const int mouse : {1, 2}) {
      alerts.clear();
      Click(row.find(Ui()), mouse);
      EXPECT_THAT(alerts, ElementsAre(kRefusal));
    }
  }
  EXPECT_FALSE(Ui().helpWindow->shown());
  EXPECT_FALSE(Ui().compareWindow->shown());
  EXPECT_FALSE(Ui().plotWindow->shown());
  EXPECT_THAT(chooserTitles, IsEmpty());
}

TEST_F(CommandsTest, OneImageIsNotEnough) {
  LoadGreyGipl(golden::Path("volumes/study_100_general/grey.gipl"));
  ASSERT_EQ(Ui().imageCount, 1);

  Click(Ui().overlay2DButton);
  Click(Ui().surfaceDistanceButton);

  EXPECT_THAT(alerts, ElementsAre(kRefusal, kRefusal));
}

TEST_F(CommandsTest, UpdateColorIsOffUntilASurfaceDistanceAndDoesNotCountImages) {
  EXPECT_FALSE(Ui().updateColorButton->active());
  Click(Ui().updateColorButton);
  EXPECT_THAT(alerts, IsEmpty());

  Ui().updateColorButton->activate();
  Click(Ui().updateColorButton);

  EXPECT_THAT(alerts, testing::Not(testing::Contains(std::string(kRefusal))));
  EXPECT_FALSE(Ui().progressPanel->visible());
}

// What the buttons run.

TEST_F(CommandsTest, AMiddleClickRunsTheCommandLikeALeftOne) {
  LoadStudy();

  Run(ButtonAt(Ui().measuresGroup, 405, 360), 2);

  EXPECT_NE(Text(Ui().union2DOutput), "");
  EXPECT_THAT(alerts, IsEmpty());
  EXPECT_FALSE(Ui().helpWindow->shown());
}

TEST_F(CommandsTest, TheUpperOverlayResultShowsTheOverlapWithoutTheMask) {
  LoadStudy();

  Run(ButtonAt(Ui().measuresGroup, 405, 360));

  EXPECT_NE(Text(Ui().union2DOutput), "");
  EXPECT_NE(Text(Ui().intersect2DOutput), "");
  EXPECT_NE(Text(Ui().overlapRatioOutput), "");
  EXPECT_EQ(Ui().segimage->overlayVisible, 0);
  EXPECT_EQ(Text(Ui().nbPixelAOutput), "") << "that is the lower one";
}

TEST_F(CommandsTest, OverlayTwoDComputesTheOverlapAndShowsTheMask) {
  LoadStudy();

  Run(Ui().overlay2DButton);

  EXPECT_NE(Text(Ui().union2DOutput), "");
  EXPECT_EQ(Ui().segimage->overlayVisible, 1);
}

TEST_F(CommandsTest, TheOtherSliceMeasuresFillTheirFields) {
  LoadStudy();

  Run(Ui().complexityButton);
  EXPECT_NE(Text(Ui().perimeterOutput), "");
  EXPECT_EQ(Text(Ui().interiorPerimeterOutput), "");
  Run(Ui().areaPerimeterButton);
  EXPECT_NE(Text(Ui().interiorPerimeterOutput), "");
  EXPECT_EQ(Text(Ui().haussdorfOutput), "");
  Run(Ui().haussdorfButton);
  EXPECT_NE(Text(Ui().haussdorfOutput), "");
  Run(Ui().danielsson2DButton);
  EXPECT_EQ(Ui().segimage->greyHidden, 0);
  EXPECT_THAT(alerts, IsEmpty());
}

TEST_F(CommandsTest, TheProbabilitiesComputeTheOverlapFirst) {
  LoadStudy();

  Run(Ui().overlayIntraButton);
  EXPECT_NE(Text(Ui().probaOverlapIntraOutput), "");
  EXPECT_NE(Text(Ui().union2DOutput), "");
  EXPECT_EQ(Text(Ui().probaOverlapInterOutput), "");
  Ui().union2DOutput->value("");
  Run(Ui().overlayInterButton);
  EXPECT_NE(Text(Ui().probaOverlapInterOutput), "");
  EXPECT_NE(Text(Ui().union2DOutput), "");
  EXPECT_THAT(alerts, IsEmpty());
}

TEST_F(CommandsTest, TheVolumeMeasuresFillTheirFields) {
  LoadStudy();

  Run(Ui().overlayResult3DButton);
  EXPECT_NE(Text(Ui().nbPixelAOutput), "");
  EXPECT_EQ(Text(Ui().haussdorf3DOutput), "");
  Run(Ui().haussdorf3DButton);
  EXPECT_NE(Text(Ui().haussdorf3DOutput), "");
  EXPECT_EQ(Text(Ui().probaOverlapOutput), "");
  Run(Ui().probabilityButton);
  EXPECT_NE(Text(Ui().probaOverlapOutput), "");
  EXPECT_FALSE(Ui().progressPanel->visible());
  EXPECT_THAT(alerts, IsEmpty());
}

TEST_F(CommandsTest, OverlayThreeDDrawsTheTwoSurfaces) {
  LoadStudy();

  Run(ButtonAt(Ui().measuresGroup, 405, 565));

  EXPECT_NE(Ui().window3D->surfaces[0].strips1, nullptr);
  EXPECT_THAT(alerts, IsEmpty());
}

TEST_F(CommandsTest, DanielssonThreeDRunsTheTransform) {
  LoadStudy();
  EXPECT_EQ(Ui().window3D->transformStarted, 0);

  Run(Ui().danielsson3DButton);

  EXPECT_EQ(Ui().window3D->transformStarted, 1);
  EXPECT_FALSE(Ui().progressPanel->visible());
}

TEST_F(CommandsTest, SurfaceDistanceLetsTheColorsBeUpdated) {
  LoadStudy();

  Run(Ui().surfaceDistanceButton);

  EXPECT_NE(Text(Ui().avgDistOutput), "");
  EXPECT_TRUE(Ui().updateColorButton->active());
  Ui().maxInsideInput->value("no number");
  Ui().maxOutsideInput->value("");
  Run(Ui().updateColorButton);
  EXPECT_THAT(alerts, IsEmpty());
  EXPECT_FALSE(Ui().progressPanel->visible());
  for (const char* text : {"nan", "inf", "-1e300", "0", "2.5 mm"}) {
    Ui().maxInsideInput->value(text);
    Ui().maxOutsideInput->value(text);
    Run(Ui().updateColorButton);
    EXPECT_THAT(alerts, IsEmpty()) << text;
  }
}

TEST_F(CommandsTest, CreateAverageMakesAnImageForEachUser) {
  LoadStudy();

  Run(Ui().createAverageButton);

  EXPECT_EQ(Ui().window3D->averageCount, 2);
  EXPECT_NE(Ui().images[4], nullptr);
}

TEST_F(CommandsTest, ConfusionMatrixAsksForAFileAndStopsWithoutOne) {
  LoadStudy();

  Run(Ui().confusionMatrixButton);

  EXPECT_THAT(chooserTitles, ElementsAre("Select a File|"));
  EXPECT_THAT(alerts, IsEmpty());
}

TEST_F(CommandsTest, ConfusionMatrixWritesTheChosenFile) {
  LoadStudy();
  const std::string path = Scratch() + "/matrix.xls";
  chooserAnswers.emplace_back(path);

  Run(Ui().confusionMatrixButton);

  EXPECT_TRUE(std::ifstream(path).good());
}

TEST_F(CommandsTest, CompareDataShowsItsWindow) {
  LoadStudy();

  Run(Ui().compareDataButton);

  EXPECT_TRUE(Ui().compareWindow->shown());
}

TEST_F(CommandsTest, TheVisualisationToolShowsThePlotWithItsCurves) {
  LoadStudy();
  Slide(Ui().plotSlice1Slider, 0);
  Slide(Ui().plotSlice2Slider, 17);
  Ui().plotWindow->hide();

  Run(ButtonAt(Ui().toolGroup, 10, 505));

  EXPECT_TRUE(Ui().plotWindow->shown());
  EXPECT_TRUE(Ui().plot->shown());
  EXPECT_EQ(Ui().plot->count, 17);
}

TEST_F(CommandsTest, CommandsRunWhileTheirWindowIsHidden) {
  LoadStudy();
  Ui().mainWindow->hide();

  for (const MeasureButton& row : kButtons) {
    Fl::e_keysym = FL_Button + 1;
    row.find(Ui())->do_callback();
  }

  EXPECT_THAT(alerts, IsEmpty());
  EXPECT_NE(Text(Ui().avgDistOutput), "");
}

}  // namespace
