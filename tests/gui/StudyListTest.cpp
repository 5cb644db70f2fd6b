// Whole studies from script list files: composed, saved, read back and loaded as a user would.
#include "VoxData/ImageLoader.h"
#include "VoxData/VoxData.h"
#include "tests/support/Interface.h"
#include "tests/support/PanelWatch.h"
#include "tests/support/SmallStudy.h"
#include "ui/ColorPreview.h"
#include "ui/Fields.h"

#include <FL/Fl_Box.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Choice.H>
#include <FL/Fl_Group.H>
#include <FL/Fl_Input.H>
#include <FL/Fl_Output.H>
#include <FL/Fl_Slider.H>
#include <FL/Fl_Value_Input.H>

#include <filesystem>
#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
namespace fs = std::filesystem;

class StudyListTest : public Interface {
protected:
  std::unique_ptr<SmallStudy> files;

  void SetUp() override {
    Interface::SetUp();
    files = std::make_unique<SmallStudy>(Scratch());
  }

  void Answer(const std::string& path) { chooserAnswers.emplace_back(path); }
  void LoadList(const std::string& path) {
    Answer(path);
    Menu("File/Load/Selection File");
    Settle();
  }
  int Entries(const Fl_Choice* choice) { return std::max(choice->size() - 1, 0); }
  int VoxelsOf(int slot) {
    const LabelVolume image = Ui().images[slot]->Labels();
    int count = 0;
    for (int x = 0; x < image.dimX; ++x) {
      for (int y = 0; y < image.dimY; ++y) {
        for (int z = 0; z < image.dimZ; ++z) {
          count += image.Bears(SmallStudy::kLabel, x, y, z) ? 1 : 0;
        }
      }
    }
    return count;
  }
};

TEST_F(StudyListTest, FortySegmentationsAreComposedSavedReadBackAndLoaded) {
  MainUI& ui = Ui();
  const std::vector<std::string> segs = files->Outlines(40);
  Menu("File/Create File");
  Answer(files->Path("grey.gipl"));
  Click(ui.listLoadOrigButton);
  std::string lines;
  for (const std::string& seg : segs) {
    Answer(seg);
    Click(ui.listLoadSegButton);
    lines += seg + "\n";
  }
  EXPECT_EQ(ui.listNbSegInput->value(), 40.0);  // the total, until the user sets both numbers
  ui.listNbUserInput->value(4);
  ui.listNbSegInput->value(10);
  Answer(files->Path("forty"));
  Click(ui.listSaveButton);
  EXPECT_EQ(SmallStudy::Text(files->Path("forty.tlx")),
            "4\n10\n" + files->Path("grey.gipl") + "\n" + lines + "\n");

  Menu("File/Create File");
  EXPECT_STREQ(ui.listOriginalInput->value(), "");
  EXPECT_STREQ(ui.listSegsInput->value(), "");
  Answer(files->Path("forty.tlx"));
  Click(ui.listLoadListButton);
  EXPECT_EQ(ui.listNbUserInput->value(), 4.0);
  EXPECT_EQ(ui.listNbSegInput->value(), 10.0);
  EXPECT_EQ(ui.listOriginalInput->value(), files->Path("grey.gipl"));
  EXPECT_EQ(ui.listSegsInput->value(), lines);
  EXPECT_EQ(ui.imageCount, 0);

  TakeOutput();
  Answer(files->Path("forty.tlx"));
  Click(ButtonByLabel(ui.createListWindow, "Load"));
  Settle();
  EXPECT_FALSE(ui.createListWindow->shown());
  EXPECT_THAT(alerts, IsEmpty());
  ASSERT_EQ(ui.imageCount, 40);
  EXPECT_EQ(ui.userCount, 4);
  EXPECT_EQ(ui.slicesPerUser, 10);
  EXPECT_STREQ(ui.usersOutput->value(), "4");
  EXPECT_STREQ(ui.slicesOutput->value(), "10");
  EXPECT_EQ(ui.overlayIntraSlider->maximum(), 3.0);
  EXPECT_EQ(ui.imageSlider->maximum(), 39.0);
  for (const Fl_Choice* choice :
       {ui.image1Choice, ui.image2Choice, ui.compareImage1Choice, ui.compareImage2Choice,
        ui.plotImage1Choice, ui.plotImage2Choice}) {
    ASSERT_EQ(Entries(choice), 40);
    EXPECT_STREQ(EntryText(choice, 39), "s39.gipl");
  }
  EXPECT_EQ(ui.image1Choice->value(), 0);
  EXPECT_EQ(ui.image2Choice->value(), 1);
  for (int slot = 0; slot < 40; ++slot) { EXPECT_EQ(VoxelsOf(slot), 4 * (1 + slot % 8)) << slot; }
  EXPECT_EQ(ui.plotSlice1Slider->maximum(), 5.0);
  EXPECT_EQ(ui.plotSlice1Slider->value(), 5.0);
  EXPECT_EQ(ui.plotSlice2Slider->maximum(), 5.0);
  EXPECT_STREQ(ui.currentImageOutput->value(), "s39.gipl");
  EXPECT_STREQ(ui.statusOutput->value(), "Loading Successful");
  EXPECT_FALSE(ui.progressPanel->visible());
  const std::string output = TakeOutput();
  EXPECT_EQ(output.rfind("Opening script file...\n", 0), 0U);
  EXPECT_EQ(output.substr(output.rfind('\n', output.size() - 2) + 1),
            "All files are loading successfully !\n");
}

TEST_F(StudyListTest, OnPurposeTheWidthOfTheBarIsCutAfterEachStepAndFullAtTheEnd) {
  const std::string list = files->List(1, 3, files->Outlines(3));
  std::vector<std::pair<std::string, int>> states;
  {
    const PanelWatch watch(Ui());
    LoadList(list);
    states = watch.states;
  }

  // 9 steps of 290 / 9 pixels: 32, where a width that is not cut would be 64 after the second.
  const auto opening = [&](int i) {
    return "Opening Segmentation Data..... " + files->Path("s" + std::to_string(i) + ".gipl");
  };
  EXPECT_EQ(Ui().progressRange->maximum(), 9.0);
  ASSERT_FALSE(states.empty());
  EXPECT_EQ(states.front().second, 0);
  states.erase(states.begin());
  EXPECT_THAT(states, ElementsAre(std::pair(opening(0), 32),                           //
                                  std::pair(std::string("Allocating memory..."), 96),  //
                                  std::pair(std::string("Allocating Data....."), 96),  //
                                  std::pair(opening(1), 128),                          //
                                  std::pair(std::string("Allocating memory..."), 192),
                                  std::pair(std::string("Allocating Data....."), 192),
                                  std::pair(opening(2), 224),
                                  std::pair(std::string("Allocating memory..."), 288)));
  EXPECT_EQ(Ui().progressBar->w(), 290);
  EXPECT_EQ(Ui().progressBar->h(), 10);
}

TEST_F(StudyListTest, AFolderNamedRawdataCountsInTheStepsOfTheBarAlone) {
  fs::create_directories(files->Path("rawdata"));
  std::vector<std::string> lines = files->Outlines(2);
  lines.insert(lines.begin(), files->Path("rawdata/notes.txt"));

  LoadList(files->List(1, 2, lines));

  EXPECT_EQ(Ui().scriptImageCount, 4);
  EXPECT_EQ(Ui().progressRange->maximum(), 9.0);
  EXPECT_EQ(Ui().imageCount, 2);
  EXPECT_EQ(Ui().progressBar->w(), 290);
}

TEST_F(StudyListTest, AListWithoutASegmentationReadsNothing) {
  LoadList(files->List(1, 1, {}));

  EXPECT_EQ(Ui().imageCount, 0);
  EXPECT_EQ(Ui().progressRange->maximum(), 0.0);
  EXPECT_EQ(Entries(Ui().image1Choice), 0);
  EXPECT_FALSE(Ui().progressPanel->visible());
  EXPECT_THAT(alerts, IsEmpty());
}

TEST_F(StudyListTest, AnOriginalThatIsRawLoadsNothing) {
  fs::copy(files->Path("grey.gipl"), files->Path("grey.raw"));
  const std::string list = files->Path("raw.tlx");
  gipl::WriteText(list, "1\n1\n" + files->Path("grey.raw") + "\n" + files->Outline("a.raw", 2, 3) +
                            "\n\n");

  LoadList(list);

  EXPECT_EQ(Ui().imageCount, 0);
  EXPECT_EQ(Entries(Ui().image1Choice), 0);
  EXPECT_THAT(TakeOutput(), HasSubstr("All files are loading successfully !\n"));
}

TEST_F(StudyListTest, ARawSegmentationIsReadBehindItsFirst256Bytes) {
  LoadList(files->List(1, 2, {files->Outline("a.raw", 2, 3), files->Outline("b.gipl", 2, 3)}));

  ASSERT_EQ(Ui().imageCount, 2);
  EXPECT_EQ(VoxelsOf(0), 12);
  EXPECT_EQ(VoxelsOf(1), 12);
}

TEST_F(StudyListTest, SixtySegmentationsAreAStudyAndOneMoreIsRefused) {
  const std::vector<std::string> segs = files->Outlines(61);
  LoadList(files->List(6, 10, {segs.begin(), segs.end() - 1}));
  EXPECT_EQ(Ui().imageCount, 60);
  EXPECT_THAT(alerts, IsEmpty());

  LoadList(files->List(6, 10, segs));

  EXPECT_THAT(alerts, ElementsAre(HasSubstr("names 61 segmentations")));
  EXPECT_EQ(Ui().imageCount, 60);
}

TEST_F(StudyListTest, OnPurposeAListThatCannotBeOpenedLeavesAnEmptyStudyThatWorks) {
  const std::string list = files->List(1, 2, files->Outlines(2));
  LoadList(list);
  ASSERT_EQ(Ui().imageCount, 2);

  for (const std::string& path : {files->Path("missing.tlx"), files->Path("")}) {
    alerts.clear();
    LoadList(path);
    EXPECT_THAT(alerts, ElementsAre("The list file cannot be opened: " + path));
    EXPECT_EQ(Ui().imageCount, 0);
    EXPECT_EQ(Ui().imageSlider->maximum(), -1.0);
    EXPECT_EQ(Entries(Ui().image1Choice), 0);
    EXPECT_FALSE(Ui().progressPanel->visible());
  }
  LoadList(list);
  EXPECT_EQ(Ui().imageCount, 2);
  EXPECT_EQ(VoxelsOf(1), 8);
}

TEST_F(StudyListTest, ACancelledChooserKeepsTheStudy) {
  LoadList(files->List(1, 2, files->Outlines(2)));

  Menu("File/Load/Selection File");

  EXPECT_EQ(Ui().imageCount, 2);
  EXPECT_THAT(alerts, IsEmpty());
}

TEST_F(StudyListTest, ALoadThatBreaksOffKeepsWhatWasLoadedAndTheStudyWorks) {
  std::vector<std::string> segs = files->Outlines(4);
  segs[2] = files->Path("missing.gipl");
  TakeOutput();

  LoadList(files->List(2, 2, segs));

  EXPECT_STREQ(Ui().statusOutput->value(), "Loading failed");
  EXPECT_FALSE(Ui().progressPanel->visible());
  EXPECT_EQ(Ui().imageCount, 3);
  EXPECT_EQ(Entries(Ui().image1Choice), 2);
  EXPECT_EQ(Entries(Ui().colorLabelChoice), 0);
  EXPECT_EQ(Ui().labelList[SmallStudy::kLabel], SmallStudy::kLabel);  // still by presence
  EXPECT_THAT(TakeOutput(), Not(HasSubstr("successfully")));

  SetLabel(SmallStudy::kLabel);
  Choose(Ui().image1Choice, 0);
  Choose(Ui().image2Choice, 1);
  Click(Ui().overlayResult3DButton);
  EXPECT_STREQ(Ui().intersect3DOutput->value(), "4");
  EXPECT_STREQ(Ui().nbPixelBOutput->value(), "4");
  segs[2] = files->Path("s2.gipl");
  LoadList(files->List(2, 2, segs));
  EXPECT_EQ(Ui().imageCount, 4);
  EXPECT_EQ(Entries(Ui().image1Choice), 4);
}

TEST_F(StudyListTest, AGreyFileThatCannotBeReadLoadsNothingAndSaysItOnTheConsole) {
  const std::string list = files->List(1, 2, files->Outlines(2));
  fs::remove(files->Path("grey.gipl"));
  TakeOutput();

  LoadList(list);

  EXPECT_EQ(Ui().imageCount, 0);
  EXPECT_THAT(alerts, IsEmpty());
  EXPECT_FALSE(Ui().progressPanel->visible());
  const std::string output = TakeOutput() + TakeErrors();
  EXPECT_THAT(output, HasSubstr("grey.gipl"));
  EXPECT_THAT(output, Not(HasSubstr("successfully")));
}

TEST_F(StudyListTest, AnEntryOfAListIsCutAtAHundredCharacters) {
  const std::string name = std::string(120, 'n') + ".gipl";

  LoadList(files->List(1, 2, {files->Outline(name, 2, 1), files->Outline("b.gipl", 2, 2)}));

  EXPECT_EQ(EntryText(Ui().image1Choice, 0), name.substr(0, 100));
  EXPECT_EQ(VoxelsOf(0), 4);
}

TEST_F(StudyListTest, OnPurposeASegmentationAfterAListReplacesThatOfTheSlotOnShow) {
  LoadList(files->List(1, 2, files->Outlines(2)));
  ASSERT_EQ(Ui().loader->firstSeg, 1);  // no segmentation was loaded by hand

  LoadSegByHand(files->Outline("other.gipl", 2, 7));

  EXPECT_EQ(Ui().imageCount, 2);
  EXPECT_EQ(VoxelsOf(1), 28);
}

TEST_F(StudyListTest, ALoadedListChoosesTheFirstEntriesAndShowsTheColourOfTheFirstLabel) {
  MainUI& ui = Ui();
  const std::string list = files->List(1, 3, files->Outlines(3));

  LoadList(list);

  EXPECT_EQ(ui.loader->listPath, list);
  for (const Fl_Choice* choice : {ui.image1Choice, ui.compareImage1Choice, ui.plotImage1Choice,
                                  ui.colorLabelChoice, ui.plotLabel1Choice, ui.plotLabel2Choice}) {
    EXPECT_EQ(choice->value(), 0);
  }
  for (const Fl_Choice* choice : {ui.image2Choice, ui.compareImage2Choice, ui.plotImage2Choice}) {
    EXPECT_EQ(choice->value(), 1);
  }
  EXPECT_EQ(ui.currentLabel, SmallStudy::kLabel);
  const auto colour = ui.images[0]->GetLabelColour(SmallStudy::kLabel);
  EXPECT_GT(colour[0] + colour[1] + colour[2], 0.0F);
  EXPECT_EQ(ui.colorPreview->red, static_cast<int>(colour[0] * 255.0F));
  EXPECT_EQ(ui.colorPreview->green, static_cast<int>(colour[1] * 255.0F));
  EXPECT_EQ(ui.colorPreview->blue, static_cast<int>(colour[2] * 255.0F));
}

TEST_F(StudyListTest, ACancelledLoadListLeavesTheFieldsOfTheWindow) {
  Menu("File/Create File");
  Ui().listOriginalInput->value("/d/grey.gipl");
  Ui().listSegsInput->value("/d/a.gipl\n");
  Ui().listNbUserInput->value(5);

  Click(Ui().listLoadListButton);

  EXPECT_STREQ(Ui().listOriginalInput->value(), "/d/grey.gipl");
  EXPECT_STREQ(Ui().listSegsInput->value(), "/d/a.gipl\n");
  EXPECT_EQ(Ui().listNbUserInput->value(), 5.0);
  EXPECT_THAT(alerts, IsEmpty());
}

TEST_F(StudyListTest, AGreyImageLoadedByHandKeepsTheNumbersOfTheList) {
  LoadList(files->List(3, 2, files->Outlines(6)));

  LoadGreyGipl(files->Path("grey.gipl"));

  EXPECT_EQ(Ui().imageCount, 1);
  EXPECT_EQ(Ui().userCount, 3);
  EXPECT_EQ(Ui().slicesPerUser, 2);
  EXPECT_EQ(Ui().overlayIntraSlider->maximum(), 2.0);
}

TEST_F(StudyListTest, AListOfFewerPathsThanItsNumbersSayIsLoaded) {
  LoadList(files->List(3, 4, files->Outlines(2)));

  EXPECT_THAT(alerts, IsEmpty());
  EXPECT_EQ(Ui().imageCount, 2);
  EXPECT_STREQ(Ui().statusOutput->value(), "Loading Successful");
  EXPECT_EQ(Ui().userCount, 3);
  EXPECT_EQ(Ui().slicesPerUser, 4);
}

TEST_F(StudyListTest, AFurtherSegmentationAfterAListIsRefused) {
  LoadList(files->List(1, 2, files->Outlines(2)));
  Ui().loader->firstSeg = 0;

  LoadSegByHand(files->Outline("other.gipl", 2, 7));

  EXPECT_THAT(alerts, ElementsAre(HasSubstr("through its list only")));
  EXPECT_EQ(Ui().imageCount, 2);
  EXPECT_EQ(VoxelsOf(1), 8);
}

TEST_F(StudyListTest, AListThatIsNotWrittenIsToldAndLosesNothing) {
  fs::create_directories(files->Path("folder.tlx"));
  Menu("File/Create File");
  Ui().listOriginalInput->value("/d/grey.gipl");
  Answer(files->Path("folder.tlx"));

  Click(Ui().listSaveButton);

  const std::string problem = "The list file cannot be written: " + files->Path("folder.tlx");
  EXPECT_THAT(alerts, ElementsAre(problem));
  EXPECT_EQ(Ui().statusOutput->value(), problem);
  EXPECT_EQ(TakeErrors(), problem + "\n");
  EXPECT_STREQ(Ui().listOriginalInput->value(), "/d/grey.gipl");
}

TEST_F(StudyListTest, AListThatDoesNotFitTheWindowLeavesItsFieldsAlone) {
  Menu("File/Create File");
  Ui().listSegsInput->value("kept");
  std::string text;
  while (text.size() < 10000) { text += "/" + std::string(90, 'x') + ".gipl\n"; }
  const std::string tooLong = "1\n1\n/o.gipl\n" + text + "\n";
  const std::string longLine = "1\n1\n/o.gipl\n" + std::string(301, 'x') + "\n\n";
  for (const std::string& list : {tooLong, longLine}) {
    alerts.clear();
    gipl::WriteText(files->Path("long.tlx"), list);
    Answer(files->Path("long.tlx"));
    Click(Ui().listLoadListButton);
    EXPECT_EQ(alerts.size(), 1U);
    EXPECT_STREQ(Ui().listSegsInput->value(), "kept");
    EXPECT_STREQ(Ui().listOriginalInput->value(), "");
  }
}

}  // namespace
