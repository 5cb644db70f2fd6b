// The main window: kind, place, label, settings, parent and order of every widget.
#include "VoxData/ImageLoader.h"
#include "VoxData/VoxData.h"
#include "tests/gui/WidgetTree.h"
#include "ui/ColorLegend.h"
#include "ui/ColorPreview.h"
#include "view3d/Window3D.h"
#include "views/Segimage.h"
#include "views/Window2D.h"

#include <FL/Fl_Pixmap.H>
#include <FL/fl_draw.H>

#include <cstring>

namespace {

using tree::Row;

class WindowTablesTest : public Interface {};

// Styles, as differences to a fresh widget.
const char* const kRound = "box=round_up, down=round_down, labelsize=12";
const char* const kRoundEvery = "box=round_up, down=round_down, labelsize=12, when=6";
const char* const kField = "labelsize=10, textsize=10";
const char* const kFieldEvery = "labelsize=10, textsize=10, when=6";
const char* const kSmallField = "labelsize=9, textsize=10";
const char* const kFrame = "box=down";
const char* const kRaised = "box=up";

const char* const kTool = "box=round_up, down=round_down, labelsize=12, align=16, picture=1";
const char* const kToolOn =
    "box=round_up, down=round_down, labelsize=12, align=16, value=1, picture=1";
const char* const kByteBar = "labelsize=11, align=5, type=1, maximum=255, value=128, linesize=1";
const char* const kImageChoice =
    "box=round_up, labeltype=embossed, labelfont=8, labelsize=12, labelcolor=208, textsize=10, "
    "align=1";
const char* const kLabelChoice =
    "box=round_up, down=round_up, labeltype=embossed, labelsize=10, labelcolor=4, textsize=10, "
    "align=1";
const char* const kVoxelSize = "box=down, labelsize=11, textsize=11";
const char* const kRoller = "box=none, type=1, maximum=100, step=1, value=100";
const char* const kLegendText = "labelsize=9, align=20";
const char* const kSliceBar = "maximum=3, linesize=1";
const char* const kReset = "box=round_up, down=round_down, labelsize=9, labelcolor=216, align=128";
const char* const kSliceText = "textsize=10, inactive=1";

// clang-format off
const std::vector<Row> kMainGroup = {
  {1, "Fl_Group",        0,   40,  720, 765, "",                  "labelsize=11",   MEMBER(toolGroup)},
  {2, "Fl_Button",       75,  45,  45,  45,  "",                  kToolOn,          MEMBER(moveToolButton)},
  {2, "Fl_Button",       15,  45,  45,  45,  "",                  kTool,            MEMBER(crosshairToolButton)},
  {2, "Fl_Scrollbar",    15,  215, 105, 15,  "Contrast",          kByteBar,         MEMBER(contrastScrollbar)},
  {2, "Fl_Scrollbar",    15,  250, 105, 15,  "Brightness",        kByteBar,         MEMBER(brightnessScrollbar)},
  {2, "Fl_Scrollbar",    15,  180, 105, 15,  "Label opacity",     kByteBar,         MEMBER(labelOpacityScrollbar)},
  {2, "Fl_Check_Button", 15,  95,  105, 15,  "All Slices",        "hidden=1",       MEMBER(allSlicesCheck)},
  {2, "Fl_Button",       10,  530, 110, 25,  "Create Average",    kRoundEvery,      MEMBER(createAverageButton)},
  {2, "Fl_Button",       10,  555, 110, 25,  "Confusion Matrix",  kRoundEvery,      MEMBER(confusionMatrixButton)},
  {2, "Fl_Output",       95,  340, 25,  20,  "Nb of Users :",     kField,           MEMBER(usersOutput)},
  {2, "Fl_Output",       95,  360, 25,  20,  "Nb Slice / User:",  kField,           MEMBER(slicesOutput)},
  {2, "Fl_Choice",       10,  405, 110, 25,  "Image 1",           kImageChoice,     MEMBER(image1Choice)},
  {2, "Fl_Choice",       10,  445, 110, 25,  "Image  2",          kImageChoice,     MEMBER(image2Choice)},
  {2, "Fl_Button",       10,  480, 110, 25,  "Compare Data",      "box=round_up, labelsize=12, when=6", MEMBER(compareDataButton)},
  {2, "Fl_Button",       10,  505, 110, 25,  "Visualisation tool", kRoundEvery},
  {2, "Fl_Choice",       10,  310, 85,  25,  "Color Label",       kLabelChoice,     MEMBER(colorLabelChoice)},
  {2, "Fl_Value_Output", 75,  115, 45,  15,  "Voxel size X:",     kVoxelSize,       MEMBER(voxelSizeOutput[0])},
  {2, "Fl_Value_Output", 75,  130, 45,  15,  "Voxel size Y:",     kVoxelSize,       MEMBER(voxelSizeOutput[1])},
  {2, "Fl_Value_Output", 75,  145, 45,  15,  "Voxel size Z:",     kVoxelSize,       MEMBER(voxelSizeOutput[2])},
  {2, "Fl_Roller",       25,  585, 85,  10,  "",                  kRoller,          MEMBER(surface2OpacityRoller)},
  {2, "Fl_Roller",       25,  600, 85,  10,  "",                  kRoller,          MEMBER(surface3OpacityRoller)},
  {2, "Fl_Box",          50,  720, 85,  25,  "Distance Inside",   kLegendText,      MEMBER(legendTextInside)},
  {2, "Fl_Box",          50,  665, 90,  25,  "Distance Outside",  kLegendText,      MEMBER(legendTextOutside)},
  {2, "Fl_Box",          50,  695, 85,  25,  "0",                 kLegendText,      MEMBER(legendTextZero)},
  {2, "Fl_Box",          50,  635, 90,  25,  "Max  Outside",      kLegendText,      MEMBER(legendTextMaxOutside)},
  {2, "Fl_Box",          50,  750, 90,  25,  "Max inside",        kLegendText,      MEMBER(legendTextMaxInside)},
  {2, "Fl_Output",       5,   275, 135, 15,  "",                  "color=49, labelsize=11, textsize=10", MEMBER(currentImageOutput)},
  {2, "ColorPreview",    100, 315, 15,  15,  "label COlor",       "",               MEMBER(colorPreview)},
  {2, "ColorLegend",     35,  635, 15,  140, "",                  "when=6",         MEMBER(colorLegend)},
  {1, "Fl_Menu_Bar",     15,  10,  125, 20,  "",                  "",               MEMBER(menuBar)},
};

const std::vector<Row> kViewsGroup = {
  {1, "Fl_Group",        145, 10,  245, 255, "",           kRaised,      MEMBER(xyGroup)},
  {2, "Window2D",        150, 15,  215, 220, "XY",         "box=border", MEMBER(xyView)},
  {2, "Fl_Scrollbar",    370, 15,  15,  220, "",           kSliceBar,    MEMBER(cursorSlider[2])},
  {2, "Fl_Button",       150, 240, 150, 20,  "reset view", kReset,       MEMBER(xyResetButton)},
  {2, "Fl_Output",       315, 240, 65,  20,  "",           kSliceText,   MEMBER(sliceOutput[2])},
  {1, "Fl_Group",        390, 10,  240, 255, "",           kRaised,      MEMBER(yzGroup)},
  {2, "Window2D",        395, 15,  210, 220, "YZ",         "box=border", MEMBER(yzView)},
  {2, "Fl_Scrollbar",    610, 15,  15,  220, "",           kSliceBar,    MEMBER(cursorSlider[0])},
  {2, "Fl_Button",       395, 240, 165, 20,  "reset view", kReset,       MEMBER(yzResetButton)},
  {2, "Fl_Output",       565, 240, 60,  20,  "",           kSliceText,   MEMBER(sliceOutput[0])},
  {1, "Fl_Group",        630, 10,  250, 255, "",           kRaised,      MEMBER(xzGroup)},
  {2, "Window2D",        635, 15,  220, 220, "XZ",         "box=border", MEMBER(xzView)},
  {2, "Fl_Scrollbar",    860, 15,  15,  220, "",           kSliceBar,    MEMBER(cursorSlider[1])},
  {2, "Fl_Button",       635, 240, 170, 20,  "reset view", kReset,       MEMBER(xzResetButton)},
  {2, "Fl_Output",       815, 240, 60,  20,  "",           kSliceText,   MEMBER(sliceOutput[1])},
  {1, "Fl_Slider",       145, 265, 735, 15,  "",           "type=1, maximum=-1, step=1", MEMBER(imageSlider)},
  {1, "Fl_Round_Button", 240, 280, 25,  25,  "XY",         "selection=108, labelsize=9, value=1", MEMBER(directionXYButton)},
  {1, "Fl_Round_Button", 490, 280, 25,  25,  "YZ",         "selection=68, labelsize=9", MEMBER(directionYZButton)},
  {1, "Fl_Round_Button", 735, 280, 25,  25,  "XZ",         "selection=68, labelsize=9", MEMBER(directionXZButton)},
};

const std::vector<Row> kCentreGroup = {
  {1, "Fl_Box",   140, 315, 250, 240, "",      kRaised},
  {1, "Segimage", 145, 320, 240, 230, "label", "", MEMBER(segimage)},
  {1, "Fl_Box",   140, 560, 250, 240, "label", kRaised},
  {1, "Window3D", 145, 565, 240, 230, "",      "", MEMBER(window3D)},
};

const std::vector<Row> kMeasuresGroup = {
  {1, "Fl_Box",    400, 560, 120, 250, "",                 kFrame},
  {1, "Fl_Button", 405, 565, 110, 25,  "Overlay 3D",       kRound},
  {1, "Fl_Button", 405, 590, 110, 25,  "Overlay Result",   kRound, MEMBER(overlayResult3DButton)},
  {1, "Fl_Button", 405, 615, 110, 25,  "Danielsson 3D",    kRound, MEMBER(danielsson3DButton)},
  {1, "Fl_Slider", 405, 640, 110, 15,  "",                 "box=round_down, type=1, maximum=100, step=1", MEMBER(danielsson3DSlider)},
  {1, "Fl_Button", 405, 655, 110, 25,  "Haussdorf 3D",     kRound, MEMBER(haussdorf3DButton)},
  {1, "Fl_Button", 405, 680, 110, 25,  "Surface distance", kRound, MEMBER(surfaceDistanceButton)},
  {1, "Fl_Button", 405, 705, 110, 25,  "Probability",      kRound, MEMBER(probabilityButton)},
  {1, "Fl_Input",  450, 740, 65,  20,  "MaxIns",           kField, MEMBER(maxInsideInput)},
  {1, "Fl_Input",  450, 760, 65,  20,  "MaxOut",           kField, MEMBER(maxOutsideInput)},
  {1, "Fl_Button", 405, 780, 110, 25,  "Update Color",     "box=round_up, down=round_down, labelsize=12, inactive=1", MEMBER(updateColorButton)},
  {1, "Fl_Box",    400, 315, 120, 240, "",                 kFrame},
  {1, "Fl_Button", 405, 320, 110, 25,  "Overlay 2D",       kRound, MEMBER(overlay2DButton)},
  {1, "Fl_Slider", 405, 345, 110, 15,  "",                 "box=round_down, type=1, maximum=255, step=1, value=128", MEMBER(overlayOpacitySlider)},
  {1, "Fl_Button", 405, 360, 110, 25,  "Overlay Result",   kRound},
  {1, "Fl_Button", 405, 385, 110, 25,  "Complexity",       kRound, MEMBER(complexityButton)},
  {1, "Fl_Button", 405, 410, 110, 25,  "Danielsson 2D",    kRound, MEMBER(danielsson2DButton)},
  {1, "Fl_Button", 405, 435, 110, 25,  "Haussdorf",        kRound, MEMBER(haussdorfButton)},
  {1, "Fl_Button", 405, 460, 110, 25,  "Overlay Intra",    kRound, MEMBER(overlayIntraButton)},
  {1, "Fl_Slider", 405, 485, 110, 15,  "",                 "box=round_down, type=1, step=1", MEMBER(overlayIntraSlider)},
  {1, "Fl_Button", 405, 500, 110, 25,  "Overlay Inter",    kRound, MEMBER(overlayInterButton)},
  {1, "Fl_Button", 405, 525, 110, 25,  "Area/Perimeter",   kRound, MEMBER(areaPerimeterButton)},
  {1, "Fl_Box",    520, 315, 370, 240, "",                 kFrame},
  {1, "Fl_Box",    520, 560, 370, 250, "",                 kFrame},

  {1, "Fl_Output", 570, 320, 65, 20, "Union :",                kFieldEvery, MEMBER(union2DOutput)},
  {1, "Fl_Output", 685, 320, 60, 20, "Intersec. :",            kField,      MEMBER(intersect2DOutput)},
  {1, "Fl_Output", 815, 320, 70, 20, "Overlap Ratio",          kField,      MEMBER(overlapRatioOutput)},
  {1, "Fl_Output", 580, 350, 65, 20, "Perimeter:",             kField,      MEMBER(perimeterOutput)},
  {1, "Fl_Output", 705, 350, 70, 20, "Aera (Pixel)",           kFieldEvery, MEMBER(areaOutput)},
  {1, "Fl_Output", 815, 350, 70, 20, "Ratio :",                kFieldEvery, MEMBER(ratioOutput)},
  {1, "Fl_Output", 560, 395, 70, 20, "A->B:",                  kField,      MEMBER(haussdorfABOutput)},
  {1, "Fl_Output", 665, 395, 70, 20, "B->A",                   kField,      MEMBER(haussdorfBAOutput)},
  {1, "Fl_Output", 805, 395, 80, 20, "Hauss. Dist. :",         kField,      MEMBER(haussdorfOutput)},
  {1, "Fl_Output", 590, 430, 65, 20, "Inter. Perim. :",        kField,      MEMBER(interiorPerimeterOutput)},
  {1, "Fl_Output", 695, 430, 70, 20, "Aera",                   kField,      MEMBER(nonCommonAreaOutput)},
  {1, "Fl_Output", 815, 430, 70, 20, "Ratio :",                kField,      MEMBER(interiorRatioOutput)},
  {1, "Fl_Output", 640, 465, 75, 20, "Proba. Overlap Intra :", kField,      MEMBER(probaOverlapIntraOutput)},
  {1, "Fl_Output", 640, 510, 75, 20, "Proba. Overlap Inter :", kField,      MEMBER(probaOverlapInterOutput)},

  {1, "Fl_Output", 605, 570, 80, 20, "Union-Intersect", kSmallField, MEMBER(unionMinusIntersectOutput)},
  {1, "Fl_Output", 770, 570, 90, 20, "Overlap Ratio:",  kField,      MEMBER(overlapRatio3DOutput)},
  {1, "Fl_Output", 585, 595, 55, 20, "nb pixel A: ",    kField,      MEMBER(nbPixelAOutput)},
  {1, "Fl_Output", 705, 595, 55, 20, "nb pixel B: ",    kField,      MEMBER(nbPixelBOutput)},
  {1, "Fl_Output", 820, 595, 55, 20, "Intersect: ",     kField,      MEMBER(intersect3DOutput)},
  {1, "Fl_Output", 565, 620, 70, 20, "A->B:",           kField,      MEMBER(haussdorf3DABOutput)},
  {1, "Fl_Output", 685, 620, 65, 20, "B->A: :",         kField,      MEMBER(haussdorf3DBAOutput)},
  {1, "Fl_Output", 820, 620, 65, 20, "Hauss. dist. :",  kField,      MEMBER(haussdorf3DOutput)},
  {1, "Fl_Output", 590, 645, 70, 20, "Sum dist. ins.",  kField,      MEMBER(sumDistInsideOutput)},
  {1, "Fl_Output", 705, 645, 60, 20, "Nb Pixel",        kField,      MEMBER(nbPixelInsideOutput)},
  {1, "Fl_Output", 810, 645, 75, 20, "Av. ins.",        kField,      MEMBER(avgInsideOutput)},
  {1, "Fl_Output", 590, 670, 70, 20, "Sum dist. out.",  kField,      MEMBER(sumDistOutsideOutput)},
  {1, "Fl_Output", 705, 670, 60, 20, "Nb Pixel",        kField,      MEMBER(nbPixelOutsideOutput)},
  {1, "Fl_Output", 810, 670, 75, 20, "Av. Out.",        kField,      MEMBER(avgOutsideOutput)},
  {1, "Fl_Output", 590, 695, 70, 20, "Sum dist.",       kField,      MEMBER(sumDistOutput)},
  {1, "Fl_Output", 705, 695, 60, 20, "Nb Pixel",        kField,      MEMBER(nbPixelTotalOutput)},
  {1, "Fl_Output", 810, 695, 75, 20, "Average",         kField,      MEMBER(avgDistOutput)},
  {1, "Fl_Output", 580, 720, 65, 20, "Median Ins",      kField,      MEMBER(medianInsideOutput)},
  {1, "Fl_Output", 710, 720, 60, 20, "Median Out",      kField,      MEMBER(medianOutsideOutput)},
  {1, "Fl_Output", 815, 720, 70, 20, "Median",          kField,      MEMBER(medianOutput)},
  {1, "Fl_Output", 580, 740, 65, 20, "1st quart ins",   kField,      MEMBER(firstQuartInsideOutput)},
  {1, "Fl_Output", 710, 740, 60, 20, "1st quart Out",   kField,      MEMBER(firstQuartOutsideOutput)},
  {1, "Fl_Output", 815, 740, 70, 20, "1st quart",       kField,      MEMBER(firstQuartOutput)},
  {1, "Fl_Output", 580, 760, 65, 20, "3nd quart ins",   kSmallField, MEMBER(thirdQuartInsideOutput)},
  {1, "Fl_Output", 710, 760, 60, 20, "3nd quart Out",   kSmallField, MEMBER(thirdQuartOutsideOutput)},
  {1, "Fl_Output", 815, 760, 70, 20, "3nd quart",       kSmallField, MEMBER(thirdQuartOutput)},
  {1, "Fl_Output", 610, 785, 75, 20, "Proba. Overlap :", kField,     MEMBER(probaOverlapOutput)},
};

const std::vector<Row> kProgressPanel = {
  {1, "Fl_Box",    395, 330, 330, 90, "", "box=round_up", MEMBER(progressBackground)},
  {1, "Fl_Slider", 390, 390, 290, 15, "", "color=136, type=1, step=1, hidden=1", MEMBER(progressRange)},
  {1, "Fl_Output", 415, 355, 295, 15, "", "box=flat, color=50, labelsize=10, textsize=10, align=20", MEMBER(progressText)},
  {1, "Fl_Box",    409, 379, 297, 12, "", "box=down", MEMBER(progressTrough)},
  {1, "Fl_Box",    410, 380, 295, 10, "", "box=flat, color=136", MEMBER(progressBar)},
};

const std::vector<Row> kTopLevel = {
  {1, "Fl_Output", 0,   860, 875, 20,  "", "box=border, color=14", MEMBER(statusOutput)},
  {1, "Fl_Group",  0,   -5,  895, 820, "", "",         MEMBER(mainGroup)},
  {1, "Fl_Group",  140, 0,   745, 305, "", "",         MEMBER(viewsGroup)},
  {1, "Fl_Group",  135, 305, 255, 505, "", "",         MEMBER(centreGroup)},
  {1, "Fl_Group",  395, 310, 500, 505, "", "align=25", MEMBER(measuresGroup)},
  {1, "Fl_Group",  390, 325, 335, 100, "", "align=9, hidden=1", MEMBER(progressPanel)},
};
// clang-format on

TEST_F(WindowTablesTest, TheMainWindowHasItsSizeAndTitle) {
  const Fl_Window& window = *Ui().mainWindow;
  EXPECT_EQ(window.w(), 893);
  EXPECT_EQ(window.h(), 813);
  EXPECT_STREQ(window.label(), "Tolvex 1.0");
  EXPECT_EQ(window.user_data(), &Ui());
}

TEST_F(WindowTablesTest, TheMainWindowHoldsItsGroupsInOrder) {
  const Fl_Window& window = *Ui().mainWindow;
  ASSERT_EQ(window.children(), static_cast<int>(kTopLevel.size()));
  for (int i = 0; i < window.children(); ++i) {
    const Row& row = kTopLevel[static_cast<std::size_t>(i)];
    Fl_Widget& child = *window.child(i);
    EXPECT_EQ(
        (tree::Found{1, tree::KindOf(child), child.x(), child.y(), child.w(), child.h(),
                     child.label() != nullptr ? child.label() : "", tree::Differences(child)}),
        (tree::Found{1, row.kind, row.x, row.y, row.w, row.h, row.label, row.settings}));
    EXPECT_EQ(row.member(Ui()), &child);
  }
}

TEST_F(WindowTablesTest, TheToolColumnAndTheMenuBarStandInTheMainGroup) {
  tree::ExpectTree(Ui(), *Ui().mainGroup, kMainGroup);
}

TEST_F(WindowTablesTest, TheViewsStandInGroupsOfTheirOwn) {
  tree::ExpectTree(Ui(), *Ui().viewsGroup, kViewsGroup);
}

TEST_F(WindowTablesTest, TheTwoCanvasesStandInTheCentre) {
  tree::ExpectTree(Ui(), *Ui().centreGroup, kCentreGroup);
}

TEST_F(WindowTablesTest, TheMeasureButtonsAndFieldsStandInTheirFrames) {
  tree::ExpectChildren(Ui(), *Ui().measuresGroup, kMeasuresGroup);
}

TEST_F(WindowTablesTest, EachFrameOfTheMeasuresLiesUnderItsWidgets) {
  const Fl_Group& group = *Ui().measuresGroup;
  for (int i = 0; i < group.children(); ++i) {
    const Fl_Widget& frame = *group.child(i);
    if (tree::KindOf(frame) != "Fl_Box") { continue; }
    for (int j = 0; j < i; ++j) {
      const Fl_Widget& other = *group.child(j);
      const bool within = other.x() >= frame.x() && other.x() < frame.x() + frame.w() &&
                          other.y() >= frame.y() && other.y() < frame.y() + frame.h();
      EXPECT_FALSE(within) << "a frame hides " << other.label();
    }
  }
}

TEST_F(WindowTablesTest, TheProgressPanelLiesOnTopAndIsHidden) {
  tree::ExpectTree(Ui(), *Ui().progressPanel, kProgressPanel);
  EXPECT_EQ(Ui().mainWindow->child(Ui().mainWindow->children() - 1), Ui().progressPanel);
}

TEST_F(WindowTablesTest, OnlyTheCentreTakesTheGrowthOfTheWindow) {
  EXPECT_EQ(Ui().mainWindow->resizable(), Ui().centreGroup);
  EXPECT_EQ(Ui().mainGroup->resizable(), nullptr);
  EXPECT_EQ(Ui().toolGroup->resizable(), nullptr);

  Ui().mainWindow->size(993, 863);

  EXPECT_EQ(Ui().centreGroup->w(), 355);
  EXPECT_EQ(Ui().centreGroup->h(), 555);
  EXPECT_EQ(Ui().toolGroup->x(), 0);
  EXPECT_EQ(Ui().contrastScrollbar->w(), 105);
  EXPECT_EQ(Ui().measuresGroup->x(), 495);
}

TEST_F(WindowTablesTest, OnPurposeTheStatusLiesBelowTheEdgeOfTheWindowAndTakesText) {
  EXPECT_GT(Ui().statusOutput->y(), Ui().mainWindow->h());

  Ui().statusOutput->value("Loading Successful");
  Settle();

  EXPECT_STREQ(Ui().statusOutput->value(), "Loading Successful");
}

TEST_F(WindowTablesTest, OnPurposeTheFirstDirectionButtonHasAnotherColour) {
  EXPECT_NE(Ui().directionXYButton->selection_color(), Ui().directionYZButton->selection_color());
  EXPECT_EQ(Ui().directionXZButton->selection_color(), Ui().directionYZButton->selection_color());
}

TEST_F(WindowTablesTest, OnPurposeCompareDataHasNoDownBoxOfItsOwn) {
  EXPECT_EQ(Ui().compareDataButton->down_box(), FL_NO_BOX);
  EXPECT_EQ(Ui().createAverageButton->down_box(), FL_ROUND_DOWN_BOX);
}

TEST_F(WindowTablesTest, OnPurposeAllSlicesIsBuiltAndHidden) {
  EXPECT_FALSE(Ui().allSlicesCheck->visible());
}

TEST_F(WindowTablesTest, TheViewsAreBoundToTheirAxes) {
  EXPECT_EQ(Ui().segimage->direction, 0);
  EXPECT_EQ(Ui().segimage->registered, 1);
  EXPECT_EQ(Ui().window3D->viewNumber, 3);
  EXPECT_EQ(Ui().window3D->ui, &Ui());
  EXPECT_EQ(Ui().segimage->mainUI, &Ui());
}

TEST_F(WindowTablesTest, TheStudyStartsEmpty) {
  EXPECT_EQ(Ui().imageCount, 0);
  EXPECT_EQ(Ui().comparePairCount, 0);
  EXPECT_EQ(Ui().currentLabel, 2);
  EXPECT_EQ(Ui().surfaceOpacity[0], 100.0F);
  EXPECT_EQ(Ui().surfaceOpacity[1], 100.0F);
  EXPECT_EQ(Ui().scriptImageCount, 0);
  EXPECT_EQ(Ui().labelCopyCount, 20);
  for (int k = 0; k < 256; ++k) { ASSERT_EQ(Ui().labelList[k], 0); }
  ASSERT_NE(Ui().loader, nullptr);
  EXPECT_EQ(Ui().loader->ui, &Ui());
  for (const VoxData* volume : Ui().workVolumes) { EXPECT_NE(volume, nullptr); }
  EXPECT_EQ(Ui().displayVolume3, Ui().workVolumes[2]);
}

TEST_F(WindowTablesTest, TheFieldsStartEmpty) {
  const Fl_Group& group = *Ui().measuresGroup;
  for (int i = 0; i < group.children(); ++i) {
    if (const auto* field = dynamic_cast<Fl_Output*>(group.child(i))) {
      EXPECT_STREQ(field->value(), "");
    }
  }
  EXPECT_STREQ(Ui().maxInsideInput->value(), "");
  EXPECT_STREQ(Ui().maxOutsideInput->value(), "");
}

TEST_F(WindowTablesTest, StartUpSetsTheViewState) {
  EXPECT_EQ(viewState->GetContrast(), 128);
  EXPECT_EQ(viewState->GetBrightness(), 128);
  EXPECT_EQ(viewState->GetLabelOpacity(), 128);
  EXPECT_EQ(viewState->GetToolMode(), 1);
  EXPECT_EQ(viewState->GetLiveUpdate(), 1);
}

TEST_F(WindowTablesTest, OnlyTheMainWindowAndItsViewsShowAtStart) {
  for (Fl_Window* window = Fl::first_window(); window; window = Fl::next_window(window)) {
    EXPECT_EQ(window->top_window(), Ui().mainWindow) << window->label();
  }
  EXPECT_TRUE(Ui().segimage->shown());
  EXPECT_TRUE(Ui().window3D->shown());
  EXPECT_TRUE(Ui().xyView->shown());
}

// Texts and their places.

int WidthOf(const Fl_Widget& widget) {
  fl_font(widget.labelfont(), widget.labelsize());
  return static_cast<int>(fl_width(widget.label()));
}

void ExpectButtonTextsFit(Fl_Group& group) {
  for (int i = 0; i < group.children(); ++i) {
    Fl_Widget& child = *group.child(i);
    if (auto* inner = dynamic_cast<Fl_Group*>(&child)) { ExpectButtonTextsFit(*inner); }
    if (tree::KindOf(child) == "Fl_Button" && child.label() != nullptr) {
      EXPECT_LE(WidthOf(child), child.w()) << child.label();
    }
  }
}

TEST_F(WindowTablesTest, TheTextsOfAllButtonsFitTheirPlaces) {
  for (Fl_Window* window :
       {Ui().mainWindow, Ui().loadGreyWindow, Ui().loadSegWindow, Ui().saveSegWindow,
        Ui().compareWindow, Ui().createListWindow, Ui().optionsWindow, Ui().helpWindow,
        Ui().aboutWindow, Ui().firstStepsWindow, Ui().plotWindow}) {
    ExpectButtonTextsFit(*window);
  }
}

TEST_F(WindowTablesTest, TheLabelsOfTheResultFieldsDoNotRunIntoTheirNeighbours) {
  constexpr int kOverrun = 4;  // pixels that a label may reach into the frame before it
  const Fl_Group& group = *Ui().measuresGroup;
  for (int i = 0; i < group.children(); ++i) {
    const Fl_Widget& field = *group.child(i);
    if (tree::KindOf(field) != "Fl_Output") { continue; }
    const int left = field.x() - WidthOf(field);
    EXPECT_GE(left, 520 - kOverrun) << field.label();
    for (int j = 0; j < group.children(); ++j) {
      const Fl_Widget& other = *group.child(j);
      if (tree::KindOf(other) != "Fl_Output" || other.x() >= field.x()) { continue; }
      if (other.y() != field.y()) { continue; }
      EXPECT_GE(left, other.x() + other.w() - kOverrun) << field.label();
    }
  }
}

// The menu.

struct Item {
  const char* path;
  bool submenu;
};

TEST_F(WindowTablesTest, TheMenuHasItsItemsInOrder) {
  const Item items[] = {{"File", true},
                        {"File/Load", true},
                        {"File/Load/GreyRawFile", false},
                        {"File/Load/SegRawFile", false},
                        {"File/Load/Selection File", false},
                        {"File/Create File", false},
                        {"File/Options", false},
                        {"File/Refresh", false},
                        {"File/Quit", false},
                        {"Help", true},
                        {"Help/First step...", false},
                        {"Help/About", false}};
  const Fl_Menu_Bar& bar = *Ui().menuBar;
  std::size_t next = 0;
  for (int i = 0; i < bar.size(); ++i) {
    const Fl_Menu_Item& item = bar.menu()[i];
    if (item.text == nullptr) { continue; }
    ASSERT_LT(next, std::size(items));
    char path[200];
    ASSERT_EQ(bar.item_pathname(path, sizeof path, &item), 0);
    EXPECT_STREQ(path, items[next].path);
    EXPECT_EQ(item.submenu() != 0, items[next].submenu) << path;
    EXPECT_EQ(item.callback() != nullptr, !items[next].submenu) << path;
    EXPECT_EQ(item.labelsize(), 14) << path;
    EXPECT_EQ(item.shortcut(), 0) << path;
    EXPECT_EQ(item.user_data(), nullptr) << path;
    EXPECT_TRUE(item.visible()) << path;
    ++next;
  }
  EXPECT_EQ(next, std::size(items));
}

// The stored pictures.

void ExpectPicture(Fl_Widget* widget, int w, int h, const char* header) {
  ASSERT_NE(widget->image(), nullptr);
  EXPECT_EQ(widget->label(), nullptr) << "a picture stands in the place of a text";
  const auto* pixmap = dynamic_cast<Fl_Pixmap*>(widget->image());
  ASSERT_NE(pixmap, nullptr);
  EXPECT_EQ(pixmap->w(), w);
  EXPECT_EQ(pixmap->h(), h);
  ASSERT_EQ(pixmap->count(), h + 2);
  EXPECT_STREQ(pixmap->data()[0], header);
  for (int row = 0; row < h; ++row) {
    ASSERT_EQ(std::strlen(pixmap->data()[2 + row]), static_cast<std::size_t>(w)) << "row " << row;
  }
}

TEST_F(WindowTablesTest, TheToolButtonsCarryTheirPictures) {
  ExpectPicture(Ui().moveToolButton, 23, 23, "23 23 -2 1");
  ExpectPicture(Ui().crosshairToolButton, 26, 26, "26 26 -2 1");
}

TEST_F(WindowTablesTest, TheTextWindowsCarryTheirPictures) {
  ExpectPicture(Ui().helpWindow->child(0), 306, 40, "306 40 -255 1");
  ExpectPicture(Ui().firstStepsWindow->child(0), 306, 40, "306 40 -255 1");
  ExpectPicture(Ui().aboutWindow->child(0), 401, 241, "401 241 -255 1");
}

TEST_F(WindowTablesTest, ASecondInterfaceCanBeMadeBesideTheFirst) {
  MainUI* first = mainUI;

  mainUI = new MainUI;

  EXPECT_NE(mainUI->mainWindow, first->mainWindow);
  EXPECT_EQ(mainUI->mainWindow->user_data(), mainUI);
  EXPECT_FALSE(mainUI->mainWindow->shown());
  tree::ExpectTree(*mainUI, *mainUI->viewsGroup, kViewsGroup);
}

}  // namespace
