// What the buttons of the dialogs do.
#include "VoxData/VoxData.h"
#include "tests/support/Golden.h"
#include "tests/support/Interface.h"
#include "ui/Plot.h"

#include <FL/Fl_Button.H>
#include <FL/Fl_Check_Button.H>
#include <FL/Fl_Choice.H>
#include <FL/Fl_Input.H>
#include <FL/Fl_Menu_Bar.H>
#include <FL/Fl_Output.H>
#include <FL/Fl_Slider.H>
#include <FL/Fl_Value_Input.H>

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <iterator>
#include <string>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class DialogCommandsTest : public Interface {
protected:
  void Press(Fl_Window* window, const char* label) {
    window->show();
    Settle();
    Fl_Widget* button = ButtonByLabel(window, label);
    ASSERT_NE(button, nullptr) << label;
    Click(button);
    Settle();
  }
  void Answer(const std::string& path) { chooserAnswers.emplace_back(path); }
  static std::string Gipl() { return golden::Path("volumes/study_100_general/grey.gipl"); }
  static std::string Contents(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
  }
};

// Load Grey Data.

TEST_F(DialogCommandsTest, SelectFillsTheGreyDialogFromAGiplHeader) {
  Answer(Gipl());

  Press(Ui().loadGreyWindow, "Select");

  EXPECT_THAT(chooserTitles, ElementsAre("Select a File|"));
  EXPECT_EQ(Ui().greyFileNameInput->value(), Gipl());
  EXPECT_EQ(Ui().greyXdimInput->value(), 26.0);
  EXPECT_EQ(Ui().greyYdimInput->value(), 30.0);
  EXPECT_EQ(Ui().greyZdimInput->value(), 17.0);
  EXPECT_EQ(Ui().greyHeaderSizeInput->value(), 256.0);
  EXPECT_TRUE(Ui().loadGreyWindow->shown());
}

TEST_F(DialogCommandsTest, OnPurposeAPathThatHoldsGiplAnywhereIsTakenForAGiplFile) {
  const std::string folder = Scratch() + "/old.gipl.files";
  std::filesystem::create_directories(folder);
  std::filesystem::copy_file(Gipl(), folder + "/grey.raw");
  Answer(folder + "/grey.raw");

  Press(Ui().loadGreyWindow, "Select");

  EXPECT_EQ(Ui().greyXdimInput->value(), 26.0);
}

TEST_F(DialogCommandsTest, SelectLeavesTheNumbersOfARawFileAlone) {
  Ui().greyXdimInput->value(5);
  Answer("/data/grey.raw");

  Press(Ui().loadGreyWindow, "Select");

  EXPECT_STREQ(Ui().greyFileNameInput->value(), "/data/grey.raw");
  EXPECT_EQ(Ui().greyXdimInput->value(), 5.0);
}

TEST_F(DialogCommandsTest, ACancelledChooserIsNoChoice) {
  Ui().greyFileNameInput->value("grey");
  Ui().segFileNameInput->value("seg");
  Ui().saveFileNameInput->value("save");
  Ui().segHeaderSizeInput->value(3);

  Press(Ui().loadGreyWindow, "Select");
  Press(Ui().loadSegWindow, "select");
  Press(Ui().saveSegWindow, "select");

  EXPECT_EQ(chooserTitles.size(), 3U);
  EXPECT_STREQ(Ui().greyFileNameInput->value(), "grey");
  EXPECT_STREQ(Ui().segFileNameInput->value(), "seg");
  EXPECT_STREQ(Ui().saveFileNameInput->value(), "save");
  EXPECT_EQ(Ui().segHeaderSizeInput->value(), 3.0);
}

TEST_F(DialogCommandsTest, LoadHidesTheDialogBeforeItLoads) {
  Press(Ui().loadGreyWindow, "Load");

  EXPECT_FALSE(Ui().loadGreyWindow->shown());
  EXPECT_STREQ(Ui().statusOutput->value(), "You must enter a non-null string");
}

// Load Seg Data.

TEST_F(DialogCommandsTest, SelectOfASegmentationKnowsTheHeaderOfGipl) {
  Answer("/data/seg.raw");
  Press(Ui().loadSegWindow, "select");
  EXPECT_STREQ(Ui().segFileNameInput->value(), "/data/seg.raw");
  EXPECT_EQ(Ui().segHeaderSizeInput->value(), 0.0);

  Answer("/data/seg.gipl");
  Press(Ui().loadSegWindow, "select");
  EXPECT_EQ(Ui().segHeaderSizeInput->value(), 256.0);
}

// Save Seg Data.

TEST_F(DialogCommandsTest, OnPurposeNoMenuEntryAndNoButtonOpensSaveSegData) {
  for (const Fl_Menu_Item* item = Ui().menuBar->menu();
       item != Ui().menuBar->menu() + Ui().menuBar->size(); ++item) {
    if (item->callback() != nullptr &&
        std::string(item->label() != nullptr ? item->label() : "") != "Quit") {
      item->do_callback(Ui().menuBar);
    }
    ASSERT_FALSE(Ui().saveSegWindow->shown()) << item->label();
  }
  std::vector<Fl_Widget*> widgets;
  const auto collect = [&widgets](const auto& self, Fl_Group* group) -> void {
    for (int i = 0; i < group->children(); ++i) {
      Fl_Widget* child = group->child(i);
      if (auto* inner = child->as_group()) { self(self, inner); }
      if (dynamic_cast<Fl_Button*>(child) != nullptr) { widgets.push_back(child); }
    }
  };
  for (Fl_Window* window : {Ui().mainWindow, Ui().loadGreyWindow, Ui().loadSegWindow,
                            Ui().createListWindow, Ui().compareWindow, Ui().plotWindow}) {
    collect(collect, window);
  }
  EXPECT_GT(widgets.size(), 40U);
  for (Fl_Widget* widget : widgets) {
    widget->do_callback();
    ASSERT_FALSE(Ui().saveSegWindow->shown())
        << (widget->label() != nullptr ? widget->label() : "");
  }
}

TEST_F(DialogCommandsTest, OkayNamesTheSegmentationInTheTitleAndSavesNothing) {
  const std::string path = Scratch() + "/result.gipl";
  Ui().saveFileNameInput->value(path.c_str());

  Press(Ui().saveSegWindow, "Okay");

  EXPECT_FALSE(Ui().saveSegWindow->shown());
  EXPECT_THAT(std::string(Ui().ComposedTitle()), testing::EndsWith(" - result.gipl"));
  EXPECT_STREQ(Ui().mainWindow->label(), "Tolvex 1.0");
  EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(DialogCommandsTest, OkayTakesANameWithoutASlashWhole) {
  Ui().saveFileNameInput->value("plain");

  Press(Ui().saveSegWindow, "Okay");

  EXPECT_THAT(std::string(Ui().ComposedTitle()), testing::EndsWith(" - plain"));
  EXPECT_STREQ(Ui().statusOutput->value(), "");
}

TEST_F(DialogCommandsTest, OnPurposeOkayWithoutANameSaysSoWhereNobodySeesItAndGoesOn) {
  Press(Ui().saveSegWindow, "Okay");

  EXPECT_STREQ(Ui().statusOutput->value(), "No value entered - cannot save");
  EXPECT_THAT(std::string(Ui().ComposedTitle()), testing::EndsWith(" - "));
  EXPECT_THAT(alerts, IsEmpty());
}

TEST_F(DialogCommandsTest, SelectOfSavePutsThePathIntoItsField) {
  Answer("/data/out_1 & 2.gipl");

  Press(Ui().saveSegWindow, "select");

  EXPECT_STREQ(Ui().saveFileNameInput->value(), "/data/out_1 & 2.gipl");
}

// Create List.

TEST_F(DialogCommandsTest, ASegmentationNeedsAnOriginalFirst) {
  Press(Ui().createListWindow, "Load Seg");

  EXPECT_THAT(alerts, ElementsAre("You must select an original image before"));
  EXPECT_THAT(chooserTitles, IsEmpty());
}

TEST_F(DialogCommandsTest, TheListGrowsByALineForEachSegmentation) {
  Menu("File/Create File");
  Answer("/data/grey.gipl");
  Press(Ui().createListWindow, "Load Orig.");
  for (const char* path : {"/data/a_1.gipl", "/data/b & c.gipl"}) {
    Answer(path);
    Press(Ui().createListWindow, "Load Seg");
  }
  Press(Ui().createListWindow, "Load Seg");    // cancelled
  Press(Ui().createListWindow, "Load Orig.");  // cancelled

  EXPECT_STREQ(Ui().listOriginalInput->value(), "/data/grey.gipl");
  EXPECT_STREQ(Ui().listSegsInput->value(), "/data/a_1.gipl\n/data/b & c.gipl\n");
  EXPECT_EQ(Ui().listNbSegInput->value(), 2.0);
  EXPECT_EQ(Ui().listNbUserInput->value(), 1.0);
}

TEST_F(DialogCommandsTest, SaveListAppendsTheExtensionAndWritesTheFile) {
  const std::string path = Scratch() + "/study";
  Ui().listNbUserInput->value(2);
  Ui().listNbSegInput->value(3);
  Ui().listOriginalInput->value("/data/grey.gipl");
  Ui().listSegsInput->value("/data/a.gipl\n/data/b.gipl\n");
  Answer(path);

  Press(Ui().createListWindow, "Save List");

  EXPECT_THAT(chooserTitles, ElementsAre("Select a File|*.tlx"));
  EXPECT_EQ(Contents(path + ".tlx"), "2\n3\n/data/grey.gipl\n/data/a.gipl\n/data/b.gipl\n\n");
  EXPECT_TRUE(Ui().createListWindow->shown());
}

TEST_F(DialogCommandsTest, SaveListKeepsAPathThatHoldsTheExtensionInItsMiddle) {
  const std::string path = Scratch() + "/study.tlx.old";
  Answer(path);

  Press(Ui().createListWindow, "Save List");

  EXPECT_TRUE(std::filesystem::exists(path));
  EXPECT_FALSE(std::filesystem::exists(path + ".tlx"));
}

TEST_F(DialogCommandsTest, ACancelledSaveWritesNothing) {
  Press(Ui().createListWindow, "Save List");

  EXPECT_THAT(chooserTitles, ElementsAre("Select a File|*.tlx"));
  EXPECT_THAT(alerts, IsEmpty());
}

TEST_F(DialogCommandsTest, ASavedListComesBackAsItWas) {
  const std::string path = Scratch() + "/study.tlx";
  Ui().listNbUserInput->value(2);
  Ui().listNbSegInput->value(1);
  Ui().listOriginalInput->value("/data/grey.gipl");
  Ui().listSegsInput->value("/data/a.gipl\n/data/b.gipl\n");
  Answer(path);
  Press(Ui().createListWindow, "Save List");
  Menu("File/Create File");
  Answer(path);

  Press(Ui().createListWindow, "Load List");

  EXPECT_EQ(Ui().listNbUserInput->value(), 2.0);
  EXPECT_EQ(Ui().listNbSegInput->value(), 1.0);
  EXPECT_STREQ(Ui().listOriginalInput->value(), "/data/grey.gipl");
  EXPECT_THAT(std::string(Ui().listSegsInput->value()),
              testing::StartsWith("/data/a.gipl\n/data/b.gipl\n"));
  EXPECT_EQ(Ui().imageCount, 0);
}

TEST_F(DialogCommandsTest, AListThatWouldBeTooLongIsRefused) {
  Ui().listOriginalInput->value("/data/grey.gipl");
  Ui().listSegsInput->value(std::string(9990, 'x').c_str());
  Answer("/data/one_more_segmentation.gipl");

  Press(Ui().createListWindow, "Load Seg");

  EXPECT_EQ(alerts.size(), 1U);
  EXPECT_EQ(std::string(Ui().listSegsInput->value()).size(), 9990U);
  EXPECT_EQ(Ui().listNbSegInput->value(), 0.0);
}

TEST_F(DialogCommandsTest, LoadOfTheListHidesTheDialogAndAsksForAScript) {
  Press(Ui().createListWindow, "Load");

  EXPECT_FALSE(Ui().createListWindow->shown());
  EXPECT_THAT(chooserTitles, ElementsAre("Select a File|*.tlx"));
}

// Plot.

TEST_F(DialogCommandsTest, TheAxesExcludeEachOther) {
  LoadGoldenStudy("study_100_general");
  Fl_Check_Button* const checks[] = {Ui().plotXCheck, Ui().plotYCheck, Ui().plotZCheck};
  const double sizes[] = {26, 30, 17};
  Ui().plotWindow->show();
  Settle();
  for (int axis = 0; axis < 3; ++axis) {
    Click(checks[axis]);
    for (int other = 0; other < 3; ++other) {
      EXPECT_EQ(checks[other]->value(), other == axis ? 1 : 0);
    }
    EXPECT_EQ(Ui().plotSlice1Slider->maximum(), sizes[axis]);
    EXPECT_EQ(Ui().plotSlice2Slider->maximum(), sizes[axis]);
  }
}

TEST_F(DialogCommandsTest, OnPurposeOnlyYStartsOverWithTheWholeRange) {
  LoadGoldenStudy("study_100_general");
  Ui().plotWindow->show();
  Settle();
  Ui().plotSlice1Slider->value(3);
  Ui().plotSlice2Slider->value(9);

  Click(Ui().plotXCheck);
  EXPECT_EQ(Ui().plotSlice1Slider->value(), 3.0);
  EXPECT_EQ(Ui().plotSlice2Slider->value(), 9.0);
  EXPECT_EQ(Ui().plot->count, 6);
  Click(Ui().plotYCheck);
  EXPECT_EQ(Ui().plotSlice1Slider->value(), 0.0);
  EXPECT_EQ(Ui().plotSlice2Slider->value(), 30.0);
  EXPECT_EQ(Ui().plot->count, 30);
  Click(Ui().plotZCheck);
  EXPECT_EQ(Ui().plotSlice2Slider->value(), 30.0) << "outside the new axis";
}

TEST_F(DialogCommandsTest, AnAxisThatIsSwitchedOffKeepsTheCurves) {
  LoadGoldenStudy("study_100_general");
  Ui().plotWindow->show();
  Settle();
  Click(Ui().plotYCheck);

  Click(Ui().plotYCheck);

  EXPECT_EQ(Ui().plotYCheck->value(), 0);
  EXPECT_EQ(Ui().plot->count, 30);
}

TEST_F(DialogCommandsTest, ThePlotWindowHarmsNothingWithoutImages) {
  Ui().plotWindow->show();
  Settle();
  for (Fl_Check_Button* check : {Ui().plotXCheck, Ui().plotYCheck, Ui().plotZCheck}) {
    Click(check);
  }
  Click(ButtonByLabel(Ui().plotWindow, "Plot"));
  Slide(Ui().plotSlice1Slider, 1);
  Slide(Ui().plotSlice2Slider, 0);
  Settle();

  EXPECT_EQ(Ui().plotZCheck->value(), 1);
  EXPECT_LE(Ui().plot->count, 0);
}

TEST_F(DialogCommandsTest, TheRangeSlidersDrawTheRangeBetweenThem) {
  LoadGoldenStudy("study_100_general");

  Slide(Ui().plotSlice1Slider, 4);
  Slide(Ui().plotSlice2Slider, 11);
  EXPECT_EQ(Ui().plot->count, 7);
  Slide(Ui().plotSlice1Slider, 15);

  EXPECT_EQ(Ui().plot->count, -4);
  EXPECT_EQ(Ui().plot->curve1, nullptr);
}

}  // namespace
