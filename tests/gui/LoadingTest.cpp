// Loading a study by hand: flows, menus, messages, limits.
#include "VoxData/ImageLoader.h"
#include "VoxData/VoxData.h"
#include "tests/support/Golden.h"
#include "tests/support/Interface.h"
#include "ui/ColorPreview.h"
#include "ui/Fields.h"
#include "ui/Modal.h"
#include "view3d/Window3D.h"
#include "views/Segimage.h"
#include "views/Window2D.h"

#include <FL/Fl_Box.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Choice.H>
#include <FL/Fl_Group.H>
#include <FL/Fl_Input.H>
#include <FL/Fl_Menu_Bar.H>
#include <FL/Fl_Output.H>
#include <FL/Fl_Scrollbar.H>
#include <FL/Fl_Slider.H>
#include <FL/Fl_Value_Input.H>
#include <FL/Fl_Value_Output.H>

#include <fstream>
#include <gmock/gmock.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

using testing::ElementsAre;

namespace {

using Bytes = std::vector<std::uint8_t>;

#ifdef __SANITIZE_ADDRESS__
constexpr bool kAddressSanitizer = true;
#else
constexpr bool kAddressSanitizer = false;
#endif

void WriteFile(const std::string& path, const Bytes& bytes) {
  std::ofstream stream(path, std::ios::binary);
  stream.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
}

std::vector<std::string> Entries(const Fl_Choice* choice) {
  std::vector<std::string> entries;
  for (int i = 0; i + 1 < choice->size(); ++i) { entries.emplace_back(EntryText(choice, i)); }
  return entries;
}

class LoadingTest : public Interface {
protected:
  std::string folder;

  void SetUp() override {
    Interface::SetUp();
    folder = Scratch() + "/";
    Bytes grey(256, 0);
    for (int i = 0; i < 4 * 3 * 5; ++i) { grey.push_back(static_cast<std::uint8_t>(10 + i)); }
    WriteFile(folder + "grey.raw", grey);
  }

  /// A segmentation of 4 x 3 x 5 voxels whose first voxels hold `values`, behind 256 bytes.
  std::string Seg(const std::string& name, const Bytes& values, std::uint8_t rest = 0) {
    Bytes bytes(256, 0);
    bytes.insert(bytes.end(), values.begin(), values.end());
    bytes.resize(256 + 60, rest);
    WriteFile(folder + name, bytes);
    return folder + name;
  }
  void LoadGrey() { LoadGreyByHand(folder + "grey.raw", {4, 3, 5}, 1, 256, {0.5, 1.5, 2.0}); }
  std::string Status() { return Ui().statusOutput->value(); }
};

TEST_F(LoadingTest, AGreyLoadMakesTheFirstSlot) {
  LoadGrey();

  EXPECT_EQ(Ui().imageCount, 1);
  EXPECT_EQ(Ui().imageSlider->maximum(), 0.0);
  EXPECT_EQ(Status(), "Loading Successful");
  EXPECT_EQ(TakeOutput(), "Attempting to read " + folder + "grey.raw\n");
  EXPECT_EQ(Ui().voxelSizeOutput[0]->value(), 0.5);
  EXPECT_EQ(Ui().voxelSizeOutput[1]->value(), 1.5);
  EXPECT_EQ(Ui().voxelSizeOutput[2]->value(), 2.0);
  EXPECT_EQ(Ui().loader->firstGrey, 0);
  EXPECT_EQ(Ui().loader->firstSeg, 1);
  EXPECT_STREQ(Ui().loader->greyPath, (folder + "grey.raw").c_str());
  EXPECT_EQ(Ui().window3D->workArraysReady, 1);
  EXPECT_EQ(Ui().displayVolume2->dimZ, 5);
  EXPECT_EQ(Ui().segimage->direction, 2);
  EXPECT_FALSE(Ui().loadGreyWindow->shown());
}

TEST_F(LoadingTest, AGreyLoadSetsTheSliceSlidersAndTexts) {
  LoadGrey();

  const int sizes[3] = {4, 3, 5};
  for (int axis = 0; axis < 3; ++axis) {
    EXPECT_EQ(Ui().cursorSlider[axis]->minimum(), sizes[axis] - 1);
    EXPECT_EQ(Ui().cursorSlider[axis]->maximum(), 0.0);
    EXPECT_EQ(Ui().cursorSlider[axis]->value(), 0);
    EXPECT_TRUE(Ui().sliceOutput[axis]->active());
    EXPECT_EQ(Ui().sliceOutput[axis]->value(), "1 of " + std::to_string(sizes[axis]));
  }
}

TEST_F(LoadingTest, AGreyLoadThatWorksMovesTheCursorToTheFirstVoxel) {
  viewState->SetCursor(1, 2, 3);
  LoadGreyByHand(folder + "none.raw", {4, 3, 5}, 1, 256);
  EXPECT_THAT(viewState->GetCursor(), ElementsAre(1, 2, 3));

  LoadGrey();

  EXPECT_THAT(viewState->GetCursor(), ElementsAre(0, 0, 0));
}

TEST_F(LoadingTest, AGreyLoadPreparesTheTextThatNamesItsFile) {
  LoadGrey();

  EXPECT_EQ(Ui().loader->statusText, "Opening  " + folder + "grey.raw");
  EXPECT_STREQ(Ui().progressText->value(), "");
}

TEST_F(LoadingTest, AFurtherSlotSaysThatItIsAllocated) {
  LoadGrey();
  LoadSegByHand(Seg("one.raw", {1}));
  EXPECT_STREQ(Ui().progressText->value(), "");

  LoadSegByHand(Seg("two.raw", {1}));

  EXPECT_STREQ(Ui().progressText->value(), "Allocating Data.....");
  EXPECT_FALSE(Ui().progressPanel->visible());
}

TEST_F(LoadingTest, EachSegmentationGrowsTheHiddenBar) {
  LoadGrey();
  Ui().progressRange->maximum(7.0);
  LoadSegByHand(Seg("one.raw", {1}));
  EXPECT_EQ(Ui().progressBar->w(), 41);  // 290 / 7 is 41.4
  LoadSegByHand(Seg("two.mha", {1}));    // is not read
  EXPECT_EQ(Ui().progressBar->w(), 41);
  LoadSegByHand(Seg("three.raw", {1}));

  EXPECT_EQ(Ui().progressBar->w(), 82);
  EXPECT_EQ(Ui().progressBar->y(), 380);
  EXPECT_EQ(Ui().progressBar->h(), 10);
  LoadGrey();
  EXPECT_EQ(Ui().loader->progressWidth, 0);
}

TEST_F(LoadingTest, ALoadCopiesTheLabelTableOfTheImageOnShow) {
  LoadGrey();
  EXPECT_EQ(Ui().labelCopyCount, 7);
  LoadSegByHand(Seg("one.raw", {200, 3}));

  EXPECT_EQ(Ui().labelCopyCount, 8);
  EXPECT_EQ(Ui().labelCopyIds[6], 6);
  EXPECT_EQ(Ui().labelCopyIds[7], 200);
  EXPECT_EQ(Ui().labelCopyIds[8], -1);
}

TEST_F(LoadingTest, ALoadChoosesTheFirstEntriesAgainAndShowsTheColourOfTheFirstLabel) {
  LoadGrey();
  for (const char* name : {"one.raw", "two.raw"}) { LoadSegByHand(Seg(name, {1, 2})); }
  Choose(Ui().colorLabelChoice, 1);
  Choose(Ui().image1Choice, 1);
  Choose(Ui().image2Choice, 0);
  Choose(Ui().plotLabel1Choice, 1);
  Choose(Ui().compareImage1Choice, 1);
  ASSERT_EQ(Ui().currentLabel, 2);
  ASSERT_EQ(Ui().colorPreview->green, 255);
  LoadSegByHand(Seg("three.raw", {1, 2}));

  EXPECT_EQ(Ui().currentLabel, 1);
  EXPECT_EQ(Ui().colorPreview->red, 255);
  EXPECT_EQ(Ui().colorPreview->green, 0);
  EXPECT_EQ(Ui().colorLabelChoice->value(), 0);
  EXPECT_EQ(Ui().plotLabel1Choice->value(), 0);
  EXPECT_EQ(Ui().image1Choice->value(), 0);
  EXPECT_EQ(Ui().image2Choice->value(), 1);
  EXPECT_EQ(Ui().compareImage1Choice->value(), 0);
}

TEST_F(LoadingTest, TheFirstSegmentationGoesToTheSlotOfTheGreyImage) {
  LoadGrey();
  LoadSegByHand(Seg("one.raw", {1, 2}));

  EXPECT_EQ(Ui().imageCount, 1);
  EXPECT_EQ(Ui().imageSlider->value(), 0.0);
  EXPECT_EQ(Ui().images[0]->labelPresent[2], 1);
  EXPECT_THAT(Entries(Ui().image1Choice), ElementsAre("one.raw"));
  EXPECT_EQ(Status(), "Loading Successful");
}

TEST_F(LoadingTest, EveryFurtherSegmentationMakesASlotWithTheSameGreyVoxels) {
  LoadGrey();
  LoadSegByHand(Seg("one.raw", {1}));
  LoadSegByHand(Seg("two.raw", {2}));
  LoadSegByHand(Seg("three.raw", {3}));

  EXPECT_EQ(Ui().imageCount, 3);
  EXPECT_EQ(Ui().imageSlider->value(), 2.0);
  EXPECT_EQ(Ui().imageSlider->maximum(), 2.0);
  EXPECT_EQ(Ui().images[1]->grey, Ui().images[0]->grey);
  EXPECT_EQ(Ui().images[2]->grey, Ui().images[0]->grey);
  EXPECT_EQ(Ui().images[2]->labelPresent[3], 1);
  for (const Fl_Choice* choice :
       {Ui().image1Choice, Ui().image2Choice, Ui().compareImage1Choice, Ui().compareImage2Choice,
        Ui().plotImage1Choice, Ui().plotImage2Choice}) {
    EXPECT_THAT(Entries(choice), ElementsAre("one.raw", "two.raw", "three.raw"));
  }
  EXPECT_EQ(Ui().image1Choice->value(), 0);
  EXPECT_EQ(Ui().image2Choice->value(), 1);
  EXPECT_EQ(Ui().compareImage1Choice->value(), 0);
  EXPECT_EQ(Ui().plotImage2Choice->value(), 1);
}

TEST_F(LoadingTest, ALoadByHandLeavesTheTitleAlone) {
  Ui().SetTitleParts("before", "these");
  LoadGrey();
  LoadSegByHand(Seg("one.raw", {1}));

  EXPECT_STREQ(Ui().ComposedTitle(), "before - these");
  EXPECT_STREQ(Ui().mainWindow->label(), "Tolvex 1.0");
}

TEST_F(LoadingTest, ThePlotSlidersTakeTheDepthOfTheFirstImage) {
  LoadGrey();
  LoadSegByHand(Seg("one.raw", {1}));

  EXPECT_EQ(Ui().plotSlice1Slider->maximum(), 5.0);
  EXPECT_EQ(Ui().plotSlice1Slider->value(), 5.0);
  EXPECT_EQ(Ui().plotSlice2Slider->maximum(), 5.0);
}

// Label menus.

TEST_F(LoadingTest, ContiguousLabelsStayTheSameOverSeveralLoads) {
  LoadGrey();
  for (const char* name : {"one.raw", "two.raw", "three.raw"}) {
    LoadSegByHand(Seg(name, {1, 2}));
    EXPECT_THAT(Entries(Ui().colorLabelChoice), ElementsAre("Lablel 1", "Lablel 2"));
    EXPECT_THAT(Entries(Ui().plotLabel2Choice), ElementsAre("Lablel 1", "Lablel 2"));
    EXPECT_EQ(Ui().labelList[0], 1);
    EXPECT_EQ(Ui().labelList[1], 2);
    EXPECT_EQ(Ui().labelList[2], 2);
    EXPECT_EQ(Ui().currentLabel, 1);
  }
}

TEST_F(LoadingTest, OnPurposeLabelsWithGapsLeaveEntriesThatNoImageHolds) {
  LoadGrey();
  LoadSegByHand(Seg("one.raw", {5, 9}));
  EXPECT_THAT(Entries(Ui().colorLabelChoice), ElementsAre("Lablel 5", "Lablel 9"));
  EXPECT_EQ(Ui().labelList[0], 5);
  EXPECT_EQ(Ui().labelList[1], 9);
  EXPECT_EQ(Ui().labelList[5], 5);
  EXPECT_EQ(Ui().currentLabel, 5);

  LoadSegByHand(Seg("two.raw", {5, 9}));
  EXPECT_THAT(Entries(Ui().colorLabelChoice), ElementsAre("Lablel 5", "Lablel 9", "Lablel 1"));
  EXPECT_EQ(Ui().labelList[0], 1);
  EXPECT_EQ(Ui().labelList[1], 5);
  EXPECT_EQ(Ui().labelList[2], 9);

  LoadSegByHand(Seg("three.raw", {5, 9}));
  EXPECT_EQ(Ui().labelList[0], 1);
  EXPECT_EQ(Ui().labelList[1], 2);
}

TEST_F(LoadingTest, OnPurposeAVolumeWithoutZeroKeepsTheFirstEntryForTheNextLoad) {
  LoadGrey();
  LoadSegByHand(Seg("one.raw", {}, 3));
  EXPECT_EQ(Ui().currentLabel, 3);
  EXPECT_EQ(Ui().labelList[0], 3);

  LoadSegByHand(Seg("two.raw", {}, 3));

  EXPECT_EQ(Ui().labelList[0], 0);  // "Lablel 0", which no volume holds
  EXPECT_EQ(Ui().currentLabel, 0);
}

TEST_F(LoadingTest, AGreyLoadEmptiesTheMenusButThoseOfThePlotLabels) {
  LoadGrey();
  LoadSegByHand(Seg("one.raw", {1, 2}));

  LoadGrey();

  EXPECT_EQ(Ui().imageCount, 1);
  EXPECT_THAT(Entries(Ui().image1Choice), ElementsAre());
  EXPECT_THAT(Entries(Ui().plotImage2Choice), ElementsAre());
  EXPECT_THAT(Entries(Ui().colorLabelChoice), ElementsAre());
  EXPECT_THAT(Entries(Ui().plotLabel1Choice), ElementsAre("Lablel 1", "Lablel 2"));
  for (const std::uint8_t label : Ui().labelList) { EXPECT_EQ(label, 0); }
  EXPECT_EQ(Ui().imageSlider->maximum(), 0.0);
}

TEST_F(LoadingTest, AGreyLoadClearsTheResultsButTheNineMedians) {
  LoadGrey();
  Ui().union2DOutput->value("7");
  Ui().haussdorf3DOutput->value("7");
  Ui().sumDistOutput->value("7");
  Ui().probaOverlapOutput->value("7");
  Ui().medianInsideOutput->value("7");
  Ui().thirdQuartOutput->value("7");

  LoadGrey();

  EXPECT_STREQ(Ui().union2DOutput->value(), "");
  EXPECT_STREQ(Ui().haussdorf3DOutput->value(), "");
  EXPECT_STREQ(Ui().sumDistOutput->value(), "");
  EXPECT_STREQ(Ui().probaOverlapOutput->value(), "");
  EXPECT_STREQ(Ui().medianInsideOutput->value(), "7");
  EXPECT_STREQ(Ui().thirdQuartOutput->value(), "7");
}

// What fails.

TEST_F(LoadingTest, AnEmptyGreyPathSaysSoAfterTheStudyWasReset) {
  LoadGrey();
  LoadGreyByHand("", {4, 3, 5}, 1, 256);

  EXPECT_EQ(Status(), "You must enter a non-null string");
  EXPECT_EQ(Ui().imageCount, 0);
}

TEST_F(LoadingTest, AGreyFileThatCannotBeReadFailsAndLeavesNoStudy) {
  LoadGreyByHand(folder + "none.raw", {4, 3, 5}, 1, 256);

  EXPECT_EQ(Status(), "Loading failed");
  EXPECT_EQ(Ui().imageCount, 0);
  EXPECT_EQ(Ui().loader->firstGrey, 0);
  EXPECT_STREQ(Ui().loader->greyPath, (folder + "none.raw").c_str());
  EXPECT_EQ(TakeErrors(),
            "ERROR: Cannot open file " + folder + "none.raw with permission \"rb\"\nALERTE");
}

TEST_F(LoadingTest, AVoxelOfThreeBytesIsRefused) {
  LoadGreyByHand(folder + "grey.raw", {4, 3, 5}, 3, 256);

  EXPECT_EQ(Status(), "Loading failed");
  EXPECT_NE(TakeErrors().find("unsupported image data type"), std::string::npos);
}

TEST_F(LoadingTest, ACompressedGreyFileIsRefused) {
  LoadGreyByHand(folder + "grey.raw.gz", {4, 3, 5}, 1, 256);

  EXPECT_EQ(Status(), "Loading failed");
  EXPECT_NE(TakeErrors().find("   unzipping of data not supported"), std::string::npos);
}

TEST_F(LoadingTest, DimensionsThatMakeNoVolumeFailAndTheWindowGoesOn) {
  for (const std::array<int, 3>& dims :
       {std::array<int, 3>{0, 3, 5}, {4, -3, 5}, {2000000000, 2000000000, 2000000000}}) {
    LoadGreyByHand(folder + "grey.raw", dims, 1, 256);
    EXPECT_EQ(Status(), "Loading failed");
    EXPECT_EQ(Ui().imageCount, 0);
    EXPECT_FALSE(TakeErrors().empty());
  }
  LoadGrey();
  EXPECT_EQ(Status(), "Loading Successful");
}

TEST_F(LoadingTest, ASegmentationThatCannotBeReadGetsItsEntryAllTheSame) {
  LoadGrey();
  LoadSegByHand(Seg("one.raw", {1}));
  LoadSegByHand(folder + "none.raw");

  EXPECT_EQ(Status(), "Loading failed");
  EXPECT_EQ(Ui().imageCount, 2);
  EXPECT_THAT(Entries(Ui().image1Choice), ElementsAre("one.raw", "none.raw"));
  std::uint8_t voxel = 1;
  EXPECT_EQ(Ui().images[1]->GetSegVoxel(0, 0, 0, voxel), 1);
  EXPECT_EQ(voxel, 0);
}

TEST_F(LoadingTest, ASegmentationOfAnotherNameIsNotReadButGetsSlotAndEntry) {
  LoadGrey();
  LoadSegByHand(Seg("one.raw", {1}));
  LoadSegByHand(Seg("two.mha", {2}));

  EXPECT_EQ(Ui().imageCount, 2);
  EXPECT_EQ(Ui().imageSlider->value(), 0.0);
  EXPECT_EQ(Ui().images[1]->labelPresent[2], 0);
  EXPECT_THAT(Entries(Ui().image2Choice), ElementsAre("one.raw", "two.mha"));
}

TEST_F(LoadingTest, ASegmentationWithoutAGreyImageIsRefused) {
  LoadSegByHand(Seg("one.raw", {1}));

  EXPECT_THAT(alerts, ElementsAre("You must load a grey image before"));
  EXPECT_EQ(Ui().imageCount, 0);
  EXPECT_THAT(Entries(Ui().image1Choice), ElementsAre());
}

TEST_F(LoadingTest, TheSixtyFirstImageIsRefusedBeforeAnythingChanges) {
  LoadGrey();
  for (int i = 0; i < 60; ++i) { LoadSegByHand(Seg("s" + std::to_string(i) + ".raw", {1})); }
  ASSERT_EQ(Ui().imageCount, 60);
  ASSERT_TRUE(alerts.empty());

  LoadSegByHand(Seg("last.raw", {1}));

  EXPECT_THAT(alerts, ElementsAre("A study holds at most 60 images"));
  EXPECT_EQ(Ui().imageCount, 60);
  EXPECT_EQ(Entries(Ui().image1Choice).size(), 60U);
}

TEST_F(LoadingTest, APathOfThreeHundredCharactersIsRefusedBeforeTheStudyIsReset) {
  LoadGrey();
  LoadGreyByHand(std::string(300, 'a') + ".raw", {4, 3, 5}, 1, 256);
  LoadSegByHand(std::string(5000, 'b') + ".raw");

  EXPECT_EQ(alerts.size(), 2U);
  EXPECT_EQ(Ui().imageCount, 1);
}

TEST_F(LoadingTest, ALoadUnderARunningCommandIsRefused) {
  LoadGrey();
  LoadSegByHand(Seg("one.raw", {1}));
  {
    const RunningCommand running(Ui());
    LoadGrey();
    LoadSegByHand(Seg("two.raw", {1}));
  }

  EXPECT_EQ(alerts.size(), 2U);
  EXPECT_EQ(Ui().imageCount, 1);
  LoadSegByHand(Seg("two.raw", {1}));
  EXPECT_EQ(Ui().imageCount, 2);
}

// Names.

TEST_F(LoadingTest, TwoFilesOfOneNameShareAnEntryAndTheErrorStreamSaysSo) {
  LoadGrey();
  LoadSegByHand(Seg("one.raw", {1}));
  ASSERT_EQ(mkdir((folder + "sub").c_str(), 0700), 0);
  TakeErrors();
  LoadSegByHand(Seg("sub/one.raw", {2}));

  EXPECT_EQ(Ui().imageCount, 2);
  EXPECT_THAT(Entries(Ui().image1Choice), ElementsAre("one.raw"));
  const std::string errors = TakeErrors();
  EXPECT_NE(errors.find(folder + "one.raw"), std::string::npos) << errors;
  EXPECT_NE(errors.find(folder + "sub/one.raw"), std::string::npos) << errors;
  EXPECT_NE(errors.find("the entry one.raw"), std::string::npos) << errors;
}

TEST_F(LoadingTest, OnPurposeBehindASharedEntryMenuAndSlotsNoLongerAgree) {
  LoadGrey();
  LoadSegByHand(Seg("one.raw", {1}));
  ASSERT_EQ(mkdir((folder + "sub").c_str(), 0700), 0);
  LoadSegByHand(Seg("sub/one.raw", {2}));
  LoadSegByHand(Seg("three.raw", {3}));

  EXPECT_THAT(Entries(Ui().image1Choice), ElementsAre("one.raw", "three.raw"));
  EXPECT_EQ(Ui().images[1]->labelPresent[2], 1);  // entry 1 names the third file
  EXPECT_EQ(Ui().images[2]->labelPresent[3], 1);  // and no entry leads to its slot
}

TEST_F(LoadingTest, NamesShowExactlyAsTheyAre) {
  const std::vector<std::string> names = {"a&b.raw", "_c_d.raw", "e\\f.raw", "g h.raw",
                                          "i|j.raw", "k\tl.raw", "@m.raw",   "100%n.raw"};
  LoadGrey();
  for (const std::string& name : names) { LoadSegByHand(Seg(name, {1})); }

  EXPECT_EQ(Ui().imageCount, static_cast<int>(names.size()));
  EXPECT_EQ(Entries(Ui().image1Choice), names);
  for (int i = 0; i < static_cast<int>(names.size()); ++i) {
    Slide(Ui().imageSlider, i);
    EXPECT_EQ(Ui().currentImageOutput->value(), names[static_cast<std::size_t>(i)]);
  }
}

TEST_F(LoadingTest, AnEntryHoldsAtMostAHundredCharacters) {
  LoadGrey();
  LoadSegByHand(Seg(std::string(150, 'x') + ".raw", {1}));

  EXPECT_THAT(Entries(Ui().image1Choice), ElementsAre(std::string(100, 'x')));
}

// Dialogs.

TEST_F(LoadingTest, SelectFillsTheGreyDialogFromAGiplHeader) {
  const std::string path = golden::Path("volumes/study_101_anisotropic/grey.gipl");
  const auto study = golden::Json("volumes/study_101_anisotropic/expected.json")["study"];
  Menu("File/Load/GreyRawFile");
  chooserAnswers.emplace_back(path);
  Click(ButtonByLabel(Ui().loadGreyWindow, "Select"));

  EXPECT_EQ(Ui().greyFileNameInput->value(), path);
  EXPECT_EQ(Ui().greyHeaderSizeInput->value(), 256.0);
  EXPECT_EQ(Ui().greyBytesInput->value(), 2.0);
  EXPECT_EQ(Ui().greyXdimInput->value(), study["dims"][0].get<double>());
  EXPECT_EQ(Ui().greyZdimInput->value(), study["dims"][2].get<double>());
  EXPECT_EQ(static_cast<float>(Ui().greyZspacingInput->value()), study["spacing"][2].get<float>());
  EXPECT_THAT(chooserTitles, ElementsAre("Select a File|"));
}

TEST_F(LoadingTest, ACancelledChooserChangesNothing) {
  Menu("File/Load/GreyRawFile");
  Ui().greyFileNameInput->value("kept");
  Click(ButtonByLabel(Ui().loadGreyWindow, "Select"));
  Menu("File/Load/SegRawFile");
  Ui().segFileNameInput->value("kept too");
  Click(ButtonByLabel(Ui().loadSegWindow, "select"));

  EXPECT_STREQ(Ui().greyFileNameInput->value(), "kept");
  EXPECT_STREQ(Ui().segFileNameInput->value(), "kept too");
  EXPECT_EQ(chooserTitles.size(), 2U);
}

TEST_F(LoadingTest, SelectOfASegmentationSetsTheHeaderSizeForGiplNamesAlone) {
  Menu("File/Load/SegRawFile");
  Ui().segHeaderSizeInput->value(7.0);
  chooserAnswers.emplace_back("/some/where/a.raw");
  Click(ButtonByLabel(Ui().loadSegWindow, "select"));
  EXPECT_EQ(Ui().segHeaderSizeInput->value(), 7.0);

  chooserAnswers.emplace_back("/some.gipl/where/a.raw");
  Click(ButtonByLabel(Ui().loadSegWindow, "select"));

  EXPECT_EQ(Ui().segHeaderSizeInput->value(), 256.0);
  EXPECT_STREQ(Ui().segFileNameInput->value(), "/some.gipl/where/a.raw");
}

TEST_F(LoadingTest, OnPurposeTheHeaderFieldOfASegmentationIsNeverUsed) {
  LoadGrey();
  Ui().segHeaderSizeInput->value(0.0);
  LoadSegByHand(Seg("one.raw", {4}));

  EXPECT_EQ(Ui().images[0]->labelPresent[4], 1);
  EXPECT_EQ(Ui().images[0]->GetLabelCount(), 7);
}

TEST_F(LoadingTest, OnPurposeChangedNumbersMakeASlotOfAnotherShape) {
  LoadGrey();
  LoadSegByHand(Seg("one.raw", {1}));
  Ui().greyXdimInput->value(6);
  LoadSegByHand(Seg("two.raw", {1}));

  EXPECT_EQ(Ui().images[1]->dimX, 6);
  EXPECT_EQ(Ui().images[0]->dimX, 4);
  for (int image = 0; image < 2; ++image) {  // the views go on, whatever is shown
    Slide(Ui().imageSlider, image);
    for (int axis = 0; axis < 3; ++axis) { Slide(Ui().cursorSlider[axis], 5); }
    Settle();
  }
  Click(Ui().overlay2DButton);
  Click(Ui().overlayResult3DButton);
  EXPECT_EQ(alerts.size(), 2U);  // two volumes of different size are not compared
}

TEST_F(LoadingTest, OnPurposeTheSlotBehindTheOneOnShowTakesTheNextSegmentation) {
  LoadGrey();
  LoadSegByHand(Seg("one.raw", {1}));
  LoadSegByHand(Seg("two.raw", {2}));
  Slide(Ui().imageSlider, 0);
  TakeErrors();
  LoadSegByHand(Seg("three.raw", {3}));

  EXPECT_EQ(Ui().imageSlider->value(), 1.0);
  EXPECT_EQ(Ui().images[1]->labelPresent[3], 1);
  EXPECT_EQ(Ui().images[2]->labelPresent[3], 0);
  EXPECT_NE(TakeErrors().find("The labels of image 2 are replaced"), std::string::npos);
}

// Memory.

long ResidentPages() {
  std::ifstream stream("/proc/self/statm");
  long size = 0;
  long resident = 0;
  stream >> size >> resident;
  return resident;
}

TEST_F(LoadingTest, TenStudiesInARowDoNotGrowTheProcess) {
  Bytes voxels(256 + 2 * 64 * 64 * 64, 1);
  WriteFile(folder + "big.raw", voxels);
  const auto load = [&] {
    LoadGreyByHand(folder + "big.raw", {64, 64, 64}, 2, 256);
    for (int i = 0; i < 3; ++i) { LoadSegByHand(folder + "big.raw"); }
  };
  load();
  load();
  const long before = ResidentPages();

  for (int i = 0; i < 10; ++i) { load(); }

  // One study of this size holds some 2,000 pages: ten lost ones would show. The address sanitizer
  // keeps freed memory for a while, so that there only the leak check at the end counts.
  if (!kAddressSanitizer) { EXPECT_LT(ResidentPages() - before, 2000); }
}

// The real message box, with no test behind it.

TEST_F(LoadingTest, TheToolkitsOwnMessageBoxShowsTheText) {
  modal::Current() = modal::Toolkit();
  static std::string shownText;
  shownText.clear();
  struct Dismiss {
    static void When(void*) {
      Fl_Window* box = Fl::modal();
      if (box == nullptr) {
        Fl::repeat_timeout(0.02, When);
        return;
      }
      for (int i = 0; i < box->children(); ++i) {
        const char* label = box->child(i)->label();
        if (label != nullptr && std::string(label).size() > 10) { shownText = label; }
      }
      box->hide();
    }
  };
  Fl::add_timeout(0.02, Dismiss::When);
  Click(Ui().overlay2DButton);

  EXPECT_EQ(shownText, "You must load at least 2 segmented images");
}

}  // namespace
