// The dialogs: kind, place, label, settings, parent and order of every widget.
#include "tests/gui/WidgetTree.h"
#include "ui/ColorLegend.h"
#include "ui/FirstSteps.h"
#include "ui/Plot.h"

namespace {

using tree::Row;

class DialogTablesTest : public Interface {};

// Styles, as differences to a fresh widget.
const char* const kRound = "box=round_up, down=round_down, labelsize=12";
const char* const kRound11 = "box=round_up, down=round_down, labelsize=11";
const char* const kRound14 = "box=round_up, down=round_down";
const char* const kClose = "box=round_up, down=round_down, labeltype=embossed, labelsize=12";
const char* const kFrame = "box=down";
const char* const kAnswer = "box=round_up, down=round_down, color=48, labelfont=1, labelsize=12";
const char* const kBoldInput = "labelfont=1, labelsize=12, textsize=12";
const char* const kTo10000 = "labelfont=1, labelsize=12, textsize=12, maximum=10000";
const char* const kTo500 = "labelfont=1, labelsize=12, textsize=12, maximum=500";
const char* const kSpacing = "labelfont=1, labelsize=12, textsize=12, maximum=10000, value=1";
const char* const kPairChoice =
    "labeltype=embossed, labelsize=10, labelcolor=208, textsize=10, align=1";
const char* const kPlotLabel =
    "labeltype=embossed, labelsize=10, labelcolor=4, textsize=10, align=1";
const char* const kCheck = "selection=232";
const char* const kColumn = "labelsize=12, textsize=12, type=12";
const char* const kHeader = "box=down, labelsize=10";
const char* const kSaveAnswer = "down=down, color=48, labelfont=1";
const char* const kDiamond = "down=diamond_down";
const char* const kRangeSlider = "box=round_down, type=1";

std::string Number(const char* value) {
  return std::string("labelsize=12, textsize=12") +
         (*value != '0' || value[1] != '\0' ? std::string(", value=") + value : "");
}

// clang-format off
const std::vector<Row> kLoadGrey = {
  {1, "Fl_Input",       100, 20,  275, 20, "FileName",       kBoldInput, MEMBER(greyFileNameInput)},
  {1, "Fl_Value_Input", 100, 45,  50,  20, "Size of header", kTo10000,   MEMBER(greyHeaderSizeInput)},
  {1, "Fl_Value_Input", 190, 45,  50,  20, "Xdim",           kTo10000,   MEMBER(greyXdimInput)},
  {1, "Fl_Value_Input", 280, 45,  50,  20, "Ydim",           kTo10000,   MEMBER(greyYdimInput)},
  {1, "Fl_Value_Input", 375, 45,  50,  20, "Zdim",           kTo10000,   MEMBER(greyZdimInput)},
  {1, "Fl_Button",      115, 170, 95,  30, "Load",           kAnswer,    MEMBER(greyLoadButton)},
  {1, "Fl_Button",      230, 170, 95,  30, "Cancel",         kAnswer,    MEMBER(greyCancelButton)},
  {1, "Fl_Value_Input", 100, 70,  40,  20, "# of Bytes:",    kTo500,     MEMBER(greyBytesInput)},
  {1, "Fl_Value_Input", 225, 70,  65,  20, "Min Val",        kTo500,     MEMBER(greyMinValInput)},
  {1, "Fl_Value_Input", 365, 70,  60,  20, "MaxVal",         kTo500,     MEMBER(greyMaxValInput)},
  {1, "Fl_Value_Input", 100, 95,  50,  20, "Xspacing",       kSpacing,   MEMBER(greyXspacingInput)},
  {1, "Fl_Value_Input", 240, 95,  50,  20, "Yspacing",       kSpacing,   MEMBER(greyYspacingInput)},
  {1, "Fl_Value_Input", 375, 95,  50,  20, "Zspacing",       kSpacing,   MEMBER(greyZspacingInput)},
  {1, "Fl_Button",      385, 15,  45,  25, "Select",         "box=round_up, down=round_down, labelfont=1, labelsize=10"},
  {1, "Fl_Choice",      115, 125, 70,  25, "Origin",         "labelfont=1, labelsize=12, textsize=10, value=0", MEMBER(greyOriginXChoice)},
  {1, "Fl_Choice",      225, 125, 70,  25, "",               "labelfont=1, labelsize=10, textsize=10, value=1", MEMBER(greyOriginYChoice)},
  {1, "Fl_Choice",      330, 125, 70,  25, "",               "labelfont=1, labelsize=10, textsize=10, value=1", MEMBER(greyOriginZChoice)},
};

const std::vector<Row> kLoadSeg = {
  {1, "Fl_Input",       70,  20,  205, 20, "FileName",       kBoldInput, MEMBER(segFileNameInput)},
  {1, "Fl_Button",      75,  100, 85,  25, "Load",           kAnswer,    MEMBER(segLoadButton)},
  {1, "Fl_Button",      190, 100, 80,  25, "Cancel",         kAnswer,    MEMBER(segCancelButton)},
  {1, "Fl_Button",      285, 15,  50,  25, "select",         "box=round_up, down=round_down, labelsize=10"},
  {1, "Fl_Value_Input", 180, 55,  65,  20, "Size of header", kTo10000,   MEMBER(segHeaderSizeInput)},
};

const std::vector<Row> kSaveSeg = {
  {1, "Fl_Input",  105, 35,  180, 25, "FileName", "labelfont=1", MEMBER(saveFileNameInput)},
  {1, "Fl_Button", 70,  100, 100, 40, "Okay",     kSaveAnswer,   MEMBER(saveOkayButton)},
  {1, "Fl_Button", 230, 100, 100, 40, "Cancel",   kSaveAnswer,   MEMBER(saveCancelButton)},
  {1, "Fl_Button", 285, 35,  45,  25, "select",   "down=up, labelsize=10"},
};

const std::vector<Row> kCompare = {
  {1, "Fl_Box",          5,   290, 555, 45,  "",               kFrame},
  {1, "Fl_Choice",       15,  305, 195, 25,  "Image1",         kPairChoice, MEMBER(compareImage1Choice)},
  {1, "Fl_Choice",       215, 305, 185, 25,  "Image2",         kPairChoice, MEMBER(compareImage2Choice)},
  {1, "Fl_Button",       500, 305, 55,  25,  "Add",            kRound11,    MEMBER(compareAddButton)},
  {1, "Fl_Output",       5,   5,   425, 275, "",               "labelsize=12, textsize=11, type=12", MEMBER(comparePairsOutput)},
  {1, "Fl_Box",          430, 5,   130, 275, "",               kFrame},
  {1, "Fl_Check_Button", 440, 15,  25,  25,  "Overlay",        kCheck,      MEMBER(compareOverlayCheck)},
  {1, "Fl_Check_Button", 440, 40,  25,  25,  "Haussdorf",      kCheck,      MEMBER(compareHaussdorfCheck)},
  {1, "Fl_Button",       440, 160, 110, 25,  "Compute",        kRound11,    MEMBER(compareComputeButton)},
  {1, "Fl_Button",       440, 220, 110, 25,  "Surface Histo",  kRound11,    MEMBER(compareSurfaceHistoButton)},
  {1, "Fl_Button",       440, 190, 110, 25,  "Export Data",    kRound11,    MEMBER(compareExportButton)},
  {1, "Fl_Check_Button", 440, 65,  25,  25,  "Surface Dist.",  kCheck,      MEMBER(compareSurfaceDistCheck)},
  {1, "Fl_Round_Button", 445, 125, 90,  20,  "Always Write",   "labelsize=12, value=1", MEMBER(compareAlwaysWriteButton)},
  {1, "Fl_Button",       450, 305, 40,  25,  "All",            kRound11,    MEMBER(compareAllButton)},
  {1, "Fl_Button",       410, 305, 40,  25,  "Allinv",         kRound11,    MEMBER(compareAllInvButton)},
  {1, "Fl_Check_Button", 440, 95,  115, 25,  "Surface Histo.", "selection=232, inactive=1", MEMBER(compareSurfaceHistoCheck)},
  {1, "Fl_Button",       440, 250, 110, 25,  "Clear Field",    kRound11},
};

const std::vector<Row> kResults = {
  {1, "Fl_Output", 0,   20, 65, 390, "", kColumn, MEMBER(resultsImage1Column)},
  {1, "Fl_Box",    0,   0,  65, 20,  "Image 1", kHeader},
  {1, "Fl_Output", 65,  20, 65, 390, "", kColumn, MEMBER(resultsImage2Column)},
  {1, "Fl_Box",    65,  0,  65, 20,  "Image 2", kHeader},
  {1, "Fl_Output", 135, 20, 40, 390, "", kColumn, MEMBER(resultsNbPix1Column)},
  {1, "Fl_Box",    135, 0,  40, 20,  "Nb Pix1", kHeader},
  {1, "Fl_Output", 175, 20, 40, 390, "", kColumn, MEMBER(resultsNbPix2Column)},
  {1, "Fl_Box",    175, 0,  40, 20,  "Nb Pix2", kHeader},
  {1, "Fl_Output", 215, 20, 40, 390, "", kColumn, MEMBER(resultsIntersecColumn)},
  {1, "Fl_Box",    215, 0,  40, 20,  "Intersec", kHeader},
  {1, "Fl_Output", 255, 20, 40, 390, "", kColumn, MEMBER(resultsUnionColumn)},
  {1, "Fl_Box",    255, 0,  40, 20,  "Union", kHeader},
  {1, "Fl_Output", 295, 20, 55, 390, "", kColumn, MEMBER(resultsMajorColumn)},
  {1, "Fl_Box",    295, 0,  55, 20,  "Major", kHeader},
  {1, "Fl_Output", 355, 20, 55, 390, "", kColumn, MEMBER(resultsHauss1Column)},
  {1, "Fl_Box",    355, 0,  55, 20,  "Hauss. 1", kHeader},
  {1, "Fl_Output", 410, 20, 55, 390, "", kColumn, MEMBER(resultsHauss2Column)},
  {1, "Fl_Box",    410, 0,  55, 20,  "Hauss. 2", kHeader},
  {1, "Fl_Output", 465, 20, 55, 390, "", kColumn, MEMBER(resultsHaussDistColumn)},
  {1, "Fl_Box",    465, 0,  55, 20,  "Hauss. Dist.", kHeader},
};

const std::vector<Row> kCreateList = {
  {1, "Fl_Box",         0,   315, 625, 30,  "",                kFrame},
  {1, "Fl_Value_Input", 500, 320, 25,  20,  "nb user:",        Number("1"), MEMBER(listNbUserInput)},
  {1, "Fl_Value_Input", 595, 320, 25,  20,  "nb seg/user",     Number("0"), MEMBER(listNbSegInput)},
  {1, "Fl_Button",      310, 320, 70,  20,  "Load",            kRound},
  {1, "Fl_Input",       75,  0,   550, 20,  "Original image:", "labelsize=10, textsize=11", MEMBER(listOriginalInput)},
  {1, "Fl_Input",       0,   20,  625, 295, "",                "labelsize=11, textsize=11, type=4", MEMBER(listSegsInput)},
  {1, "Fl_Button",      5,   320, 75,  20,  "Load Orig.",      kRound, MEMBER(listLoadOrigButton)},
  {1, "Fl_Button",      80,  320, 75,  20,  "Load Seg",        kRound, MEMBER(listLoadSegButton)},
  {1, "Fl_Button",      235, 320, 75,  20,  "Save List",       kRound, MEMBER(listSaveButton)},
  {1, "Fl_Button",      155, 320, 80,  20,  "Load List",       kRound, MEMBER(listLoadListButton)},
  {1, "Fl_Button",      380, 320, 70,  20,  "Close",           kRound, MEMBER(listCloseButton)},
};

const std::vector<Row> kOptions = {
  {1, "Fl_Box",          5,   30,  365, 105, "",                    kFrame},
  {1, "Fl_Check_Button", 5,   145, 110, 25,  "Smothing",            "value=1", MEMBER(smoothingCheck)},
  {1, "Fl_Box",          5,   170, 365, 70,  "",                    kFrame},
  {1, "Fl_Check_Button", 5,   5,   100, 25,  "Decimation",          "",        MEMBER(decimationCheck)},
  {1, "Fl_Value_Input",  125, 40,  75,  25,  "Target Reduction:",   Number("0.5"),    MEMBER(targetReductionInput)},
  {1, "Fl_Value_Input",  290, 40,  75,  25,  "Aspect Ratio:",       Number("20"),     MEMBER(aspectRatioInput)},
  {1, "Fl_Value_Input",  125, 70,  75,  25,  "Error Increment:",    Number("0.001"),  MEMBER(errorIncrementInput)},
  {1, "Fl_Value_Input",  125, 100, 75,  25,  "Maximum Iterations:", Number("30"),     MEMBER(maxIterationsInput)},
  {1, "Fl_Value_Input",  290, 70,  75,  25,  "Initial Error:",      Number("0.0005"), MEMBER(initialErrorInput)},
  {1, "Fl_Value_Input",  125, 180, 75,  25,  "Nb. of Iterations:",  Number("20"),     MEMBER(nbIterationsInput)},
  {1, "Fl_Value_Input",  125, 210, 75,  25,  "Relaxation factor:",  Number("0.1"),    MEMBER(relaxationFactorInput)},
  {1, "Fl_Value_Input",  290, 180, 75,  25,  "Feature Angle:",      Number("0"),      MEMBER(featureAngleInput)},
  {1, "Fl_Check_Button", 5,   245, 200, 25,  "3D Visualisation isotropic", "",        MEMBER(isotropic3DCheck)},
  {1, "Fl_Check_Button", 5,   270, 200, 25,  "Display Crosshairs",  "value=1",        MEMBER(displayCrosshairsCheck)},
  {1, "Fl_Button",       150, 385, 90,  20,  "Close",               kClose},
  {1, "Fl_Group",        5,   320, 365, 50,  "",                    "box=down"},
  {2, "Fl_Round_Button", 10,  345, 120, 20,  "(AUB)/intersect(A,B)", "labelsize=11, type=102", MEMBER(overlapUnionIntersectRadio)},
  {2, "Fl_Round_Button", 150, 345, 60,  20,  "(AUB)/A",             "labelsize=11, type=102", MEMBER(overlapUnionARadio)},
  {2, "Fl_Round_Button", 245, 345, 115, 20,  "(AUB)/average(A,B)",  "labelsize=11, type=102, value=1", MEMBER(overlapUnionAverageRadio)},
  {2, "Fl_Group",        5,   325, 60,  15,  "Overlap",             "align=17"},
  {1, "Fl_Check_Button", 5,   295, 25,  25,  "Compute Median with surface distance (take long time)", "", MEMBER(medianWithSurfaceCheck)},
};

const std::vector<Row> kHelp = {
  {1, "Fl_Group",  0,   0,   310, 40,  "",      "align=17, picture=1"},
  {1, "Fl_Button", 110, 160, 90,  20,  "Close", kClose},
  {1, "Fl_Output", 0,   45,  310, 110, "",      "box=thin_down, color=51, selection=47, labelsize=11, textsize=11, type=12", MEMBER(helpOutput)},
};

const std::vector<Row> kAbout = {
  {1, "Fl_Group",  0,   5,   415, 270, "",      "align=17, picture=1"},
  {1, "Fl_Button", 160, 290, 105, 20,  "Close", kClose},
};

const std::vector<Row> kFirstStepsRows = {
  {1, "Fl_Box",    105, 0,   260, 55,  "",      "picture=1"},
  {1, "Fl_Button", 185, 495, 105, 20,  "Close", kClose},
  {1, "Fl_Output", 0,   55,  460, 430, "",      "color=50, labelsize=11, textsize=11, type=12", MEMBER(firstStepsOutput)},
};

const std::vector<Row> kPlot = {
  {1, "Fl_Box",          0,   0,   560, 320, "",                  "box=up"},
  {1, "Plot",            135, 5,   420, 310, "Image 1",           "box=down", MEMBER(plot)},
  {1, "Fl_Box",          5,   5,   130, 310, "",                  kFrame},
  {1, "Fl_Choice",       10,  65,  120, 25,  "Image 2",           kPairChoice, MEMBER(plotImage2Choice)},
  {1, "Fl_Choice",       10,  25,  120, 25,  "Image1",            kPairChoice, MEMBER(plotImage1Choice)},
  {1, "Fl_Button",       10,  180, 120, 25,  "Plot",              kRound14},
  {1, "Fl_Check_Button", 10,  210, 40,  25,  "X",                 kDiamond, MEMBER(plotXCheck)},
  {1, "Fl_Check_Button", 95,  210, 35,  25,  "Z",                 "down=diamond_down, value=1", MEMBER(plotZCheck)},
  {1, "Fl_Check_Button", 55,  210, 35,  25,  "Y",                 kDiamond, MEMBER(plotYCheck)},
  {1, "Fl_Slider",       15,  240, 110, 15,  "",                  kRangeSlider, MEMBER(plotSlice1Slider)},
  {1, "Fl_Slider",       15,  255, 110, 15,  "",                  kRangeSlider, MEMBER(plotSlice2Slider)},
  {1, "Fl_Choice",       10,  145, 120, 25,  "Color Label Img 2", kPlotLabel, MEMBER(plotLabel2Choice)},
  {1, "Fl_Choice",       10,  105, 120, 25,  "Color Label Img1",  kPlotLabel, MEMBER(plotLabel1Choice)},
  {1, "Fl_Button",       10,  280, 120, 25,  "Close",             kRound14},
};
// clang-format on

struct Dialog {
  Fl_Window* MainUI::*member;
  int w, h;
  const char* title;
  const char* settings;
  const std::vector<Row>* rows;
};

// clang-format off
const Dialog kDialogs[] = {
  {&MainUI::loadGreyWindow,   447, 211, "Load Grey Data",     "box=up, color=48, labelfont=1, labelcolor=176", &kLoadGrey},
  {&MainUI::loadSegWindow,    350, 134, "Load Seg Data",      "box=up, color=48, labelfont=5, labelcolor=176", &kLoadSeg},
  {&MainUI::saveSegWindow,    387, 170, "Save Seg Data",      "box=up, color=45, labelfont=5, labelcolor=176", &kSaveSeg},
  {&MainUI::compareWindow,    565, 339, "Compare Data",       "",       &kCompare},
  {&MainUI::resultsWindow,    523, 413, "Comparison Results", "",       &kResults},
  {&MainUI::createListWindow, 625, 349, "Create List",        "",       &kCreateList},
  {&MainUI::optionsWindow,    376, 408, "Options",            "",       &kOptions},
  {&MainUI::helpWindow,       307, 185, "TOLVEX -Help-",      "box=up", &kHelp},
  {&MainUI::aboutWindow,      414, 313, "About",              "",       &kAbout},
  {&MainUI::firstStepsWindow, 459, 522, "Tolvex Help",        "",       &kFirstStepsRows},
  {&MainUI::plotWindow,       561, 320, "Plot",               "",       &kPlot},
};
// clang-format on

TEST_F(DialogTablesTest, EveryDialogIsATopLevelWindowOfItsSizeThatBelongsToTheInterface) {
  for (const Dialog& dialog : kDialogs) {
    SCOPED_TRACE(dialog.title);
    Fl_Window& window = *(Ui().*dialog.member);
    EXPECT_EQ(window.parent(), nullptr);
    EXPECT_EQ(window.w(), dialog.w);
    EXPECT_EQ(window.h(), dialog.h);
    EXPECT_STREQ(window.label(), dialog.title);
    EXPECT_EQ(window.user_data(), &Ui());
    EXPECT_FALSE(window.modal());
    EXPECT_FALSE(window.shown());
  }
}

TEST_F(DialogTablesTest, EveryDialogLooksAsItsTableSays) {
  for (const Dialog& dialog : kDialogs) {
    SCOPED_TRACE(dialog.title);
    Fl_Window& window = *(Ui().*dialog.member);
    window.show();  // a window is not visible before, and a fresh one is told as it is built
    const std::string is = tree::Differences(window);
    window.hide();
    const std::string wanted(dialog.settings);
    EXPECT_EQ(is, wanted);
  }
}

TEST_F(DialogTablesTest, EveryWidgetOfADialogIsARowOfItsTable) {
  for (const Dialog& dialog : kDialogs) {
    SCOPED_TRACE(dialog.title);
    tree::ExpectTree(Ui(), *(Ui().*dialog.member), *dialog.rows);
  }
}

TEST_F(DialogTablesTest, TheOriginChoicesHaveSmallBlueEntries) {
  const struct {
    Fl_Choice* choice;
    const char* first;
    const char* second;
  } rows[] = {{Ui().greyOriginXChoice, "left", "right"},
              {Ui().greyOriginYChoice, "bottom", "top"},
              {Ui().greyOriginZChoice, "back", "front"}};
  for (const auto& row : rows) {
    ASSERT_EQ(row.choice->size(), 3);
    EXPECT_STREQ(row.choice->menu()[0].text, row.first);
    EXPECT_STREQ(row.choice->menu()[1].text, row.second);
    for (int i = 0; i < 2; ++i) {
      EXPECT_EQ(row.choice->menu()[i].labelsize(), 10);
      EXPECT_EQ(row.choice->menu()[i].labelcolor(), 4U);
    }
  }
}

TEST_F(DialogTablesTest, TheOtherChoicesStartEmpty) {
  for (const Fl_Choice* choice :
       {Ui().image1Choice, Ui().image2Choice, Ui().colorLabelChoice, Ui().compareImage1Choice,
        Ui().compareImage2Choice, Ui().plotImage1Choice, Ui().plotImage2Choice,
        Ui().plotLabel1Choice, Ui().plotLabel2Choice}) {
    EXPECT_EQ(choice->size(), 0);
  }
}

TEST_F(DialogTablesTest, OnPurposeThreeChecksAreNarrowerThanTheirLabels) {
  for (const Fl_Check_Button* check :
       {Ui().compareOverlayCheck, Ui().compareHaussdorfCheck, Ui().compareSurfaceDistCheck}) {
    EXPECT_EQ(check->w(), 25);
  }
}

TEST_F(DialogTablesTest, OnPurposeTheHistogramCheckCannotBeSet) {
  Ui().compareWindow->show();
  Settle();

  Click(Ui().compareSurfaceHistoCheck);

  EXPECT_EQ(Ui().compareSurfaceHistoCheck->value(), 0);
}

TEST_F(DialogTablesTest, OnPurposeTheOverlapLabelsReadAsTheInverseOfTheRatios) {
  EXPECT_STREQ(Ui().overlapUnionIntersectRadio->label(), "(AUB)/intersect(A,B)");
  EXPECT_STREQ(Ui().overlapUnionARadio->label(), "(AUB)/A");
  EXPECT_STREQ(Ui().overlapUnionAverageRadio->label(), "(AUB)/average(A,B)");
}

TEST_F(DialogTablesTest, APlotStartsWithoutCurvesAndReadOut) {
  const Plot& plot = *Ui().plot;
  EXPECT_STREQ(plot.title, "");
  EXPECT_EQ(plot.count, 0);
  EXPECT_EQ(plot.xs, nullptr);
  EXPECT_EQ(plot.curve1, nullptr);
  EXPECT_EQ(plot.curve2, nullptr);
  EXPECT_EQ(plot.style, 1);
  EXPECT_EQ(plot.xMin, 0.0F);
  EXPECT_EQ(plot.xMax, 1.0F);
  EXPECT_EQ(plot.yMin, 0.0F);
  EXPECT_EQ(plot.yMax, 1.0F);
  EXPECT_EQ(plot.selectedSlice, -1);
  EXPECT_EQ(plot.selectCallback, nullptr);
}

TEST_F(DialogTablesTest, ChoosingOneOverlapSwitchesTheOthersOff) {
  Ui().optionsWindow->show();
  Settle();

  Click(Ui().overlapUnionARadio);
  EXPECT_EQ(Ui().overlapUnionARadio->value(), 1);
  EXPECT_EQ(Ui().overlapUnionAverageRadio->value(), 0);
  EXPECT_EQ(Ui().overlapUnionIntersectRadio->value(), 0);

  Click(Ui().overlapUnionIntersectRadio);
  EXPECT_EQ(Ui().overlapUnionARadio->value(), 0);
  EXPECT_EQ(Ui().overlapUnionIntersectRadio->value(), 1);
}

TEST_F(DialogTablesTest, CloseAndCancelHideTheirWindowsAndKeepTheFields) {
  Ui().greyXdimInput->value(123);
  const struct {
    Fl_Window* window;
    const char* button;
  } rows[] = {{Ui().loadGreyWindow, "Cancel"}, {Ui().loadSegWindow, "Cancel"},
              {Ui().saveSegWindow, "Cancel"},  {Ui().createListWindow, "Close"},
              {Ui().optionsWindow, "Close"},   {Ui().helpWindow, "Close"},
              {Ui().aboutWindow, "Close"},     {Ui().firstStepsWindow, "Close"},
              {Ui().plotWindow, "Close"}};
  for (const auto& row : rows) {
    row.window->show();
    Settle();
    Click(ButtonByLabel(row.window, row.button));
    EXPECT_FALSE(row.window->shown()) << row.window->label();
  }
  EXPECT_EQ(Ui().greyXdimInput->value(), 123.0);
  EXPECT_TRUE(Ui().mainWindow->shown());
}

TEST_F(DialogTablesTest, TheTypedNumbersOfTheGreyDialogMayExceedTheirMaximum) {
  Ui().greyMaxValInput->value(4095);

  EXPECT_EQ(Ui().greyMaxValInput->value(), 4095.0);
}

}  // namespace
