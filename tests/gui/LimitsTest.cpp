// Every limit, tried from outside: at the limit it works, beyond it a message says so and nothing
// has changed.
#include "VoxData/ImageLoader.h"
#include "VoxData/VoxData.h"
#include "tests/support/StudyFiles.h"
#include "ui/Fields.h"
#include "view3d/Window3D.h"

#include <FL/Fl_Check_Button.H>
#include <FL/Fl_Choice.H>
#include <FL/Fl_Group.H>
#include <FL/Fl_Input.H>
#include <FL/Fl_Output.H>
#include <FL/Fl_Slider.H>
#include <FL/Fl_Value_Input.H>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gmock/gmock.h>
#include <limits>
#include <memory>
#include <sys/resource.h>
#include <unistd.h>

using testing::Each;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

namespace {

class LimitsTest : public StudyFiles {
protected:
  static auto Says(const char* text) { return ElementsAre(std::string(text)); }

  void SetUsers(int users, int repeats) {
    Ui().userCount = users;
    Ui().slicesPerUser = repeats;
  }
  void ChoosePair(int first, int second) {
    Choose(Ui().image1Choice, first);
    Choose(Ui().image2Choice, second);
  }
  std::vector<std::string> LoadList(const std::string& path) {
    chooserAnswers.emplace_back(path);
    return AlertsOfMenu("File/Load/Selection File");
  }
  std::string List(const std::string& name, const std::string& text) {
    files::WriteText(folder + name, text);
    return folder + name;
  }
  /// Loads a list of a segmentation that one user made twice. Returns the path of it.
  std::string LoadListOfTwo() {
    const std::string grey = Made("listed.gipl", files::Volume({5, 4, 3}));
    const std::string seg = Made("seg.gipl", files::Volume({5, 4, 3}, {2}));
    LoadList(List("list.tlx", "1\n2\n" + grey + "\n" + seg + "\n" + seg + "\n"));
    return seg;
  }
  /// What every field of a volume measure holds.
  std::vector<std::string> VolumeFields() {
    const MainUI& ui = Ui();
    std::vector<std::string> texts;
    for (Fl_Output* field :
         {ui.nbPixelAOutput, ui.overlapRatio3DOutput, ui.haussdorf3DOutput, ui.avgDistOutput,
          ui.sumDistOutput, ui.probaOverlapOutput, ui.intersect3DOutput}) {
      texts.emplace_back(field->value());
    }
    return texts;
  }
};

// Sizes.

TEST_F(LimitsTest, AVolumeOf281VoxelsOnAnyAxisIsRefusedByEveryVolumeMeasure) {
  for (const files::Dims& dims : {files::Dims{281, 2, 3}, {2, 281, 3}, {2, 3, 281}}) {
    SCOPED_TRACE(testing::PrintToString(dims));
    LoadStudy(dims, 2);
    SetUsers(1, 2);
    for (Fl_Widget* button : VolumeButtons()) {
      SCOPED_TRACE(button->label());
      EXPECT_THAT(AlertsOf(button),
                  Says("A volume with more than 280 voxels on an axis cannot be measured"));
    }
    EXPECT_THAT(VolumeFields(), Each(std::string()));
  }
}

TEST_F(LimitsTest, AComparisonOfAllPairsRefusesAVolumeOf281Voxels) {
  LoadStudy({2, 3, 281}, 2);
  Click(Ui().compareAllButton);
  Ui().compareOverlayCheck->value(1);
  chooserAnswers.emplace_back(folder + "pairs");

  EXPECT_THAT(AlertsOf(Ui().compareComputeButton),
              Says("A volume with more than 280 voxels on an axis cannot be measured"));
  EXPECT_FALSE(std::filesystem::exists(folder + "pairs.xls"));
}

TEST_F(LimitsTest, AVolumeOf280VoxelsOnAnyAxisIsMeasured) {
  for (const files::Dims& dims : {files::Dims{280, 2, 3}, {2, 280, 3}, {2, 3, 280}}) {
    SCOPED_TRACE(testing::PrintToString(dims));
    LoadStudy(dims, 2);
    SetUsers(1, 2);
    for (Fl_Widget* button : VolumeButtons()) {
      EXPECT_THAT(AlertsOf(button), IsEmpty()) << button->label();
    }
    EXPECT_STREQ(Ui().intersect3DOutput->value(), "2");
    EXPECT_STREQ(Ui().haussdorf3DOutput->value(), "0.000000");
  }
}

TEST_F(LimitsTest, ImagesOfDifferentSizesAreNotComparedAsVolumes) {
  LoadGrey({6, 5, 4});
  LoadSeg("one.gipl", {6, 5, 4});
  Ui().greyXdimInput->value(7);
  LoadSeg("two.gipl", {7, 5, 4});
  SetUsers(1, 2);
  ChoosePair(0, 1);
  Slide(Ui().imageSlider, 0);

  for (Fl_Widget* button : VolumeButtons()) {
    SCOPED_TRACE(button->label());
    if (button == Ui().danielsson3DButton) { continue; }  // looks at one image alone
    const char* text = button == Ui().probabilityButton
                           ? "The segmentations have different sizes and cannot be compared"
                           : "The two images have different sizes and cannot be compared";
    EXPECT_THAT(AlertsOf(button), Says(text));
  }
  EXPECT_THAT(AlertsOf(Ui().confusionMatrixButton), IsEmpty());  // the chooser was cancelled
  chooserAnswers.emplace_back(folder + "matrix");
  EXPECT_THAT(AlertsOf(Ui().confusionMatrixButton),
              Says("The two images have different sizes and cannot be compared"));
}

TEST_F(LimitsTest, AnImageOfAnotherSizeThanTheFirstIsNotMeasuredAsAVolume) {
  LoadGrey({6, 5, 4});
  LoadSeg("one.gipl", {6, 5, 4});
  Ui().greyXdimInput->value(7);
  LoadSeg("two.gipl", {7, 5, 4});
  ChoosePair(1, 1);
  Slide(Ui().imageSlider, 1);

  for (Fl_Widget* button : {static_cast<Fl_Widget*>(Ui().danielsson3DButton),
                            static_cast<Fl_Widget*>(Ui().haussdorf3DButton)}) {
    EXPECT_THAT(AlertsOf(button),
                Says("The image has another size than the first image and cannot be measured"));
  }
}

TEST_F(LimitsTest, AnEntryWithoutAnImageIsRefused) {
  LoadStudy({6, 5, 4}, 2);
  AddEntry(Ui().image2Choice, "no image");
  ChoosePair(0, 2);

  for (Fl_Widget* button :
       {static_cast<Fl_Widget*>(Ui().overlay2DButton), VolumeButtons()[0], VolumeButtons()[1]}) {
    EXPECT_THAT(AlertsOf(button), Says("The chosen images are not loaded"));
  }
}

TEST_F(LimitsTest, APlotOf301SlicesIsRefusedAndOneOf300IsDrawn) {
  LoadStudy({301, 300, 2}, 2);
  Ui().plotZCheck->value(0);
  Ui().plotXCheck->value(1);
  alerts.clear();
  Ui().PlotWholeRange();
  EXPECT_THAT(alerts, Says("A plot holds at most 300 slices"));

  alerts.clear();
  Ui().plotXCheck->value(0);
  Ui().plotYCheck->value(1);
  Ui().PlotWholeRange();
  EXPECT_THAT(alerts, IsEmpty());
}

TEST_F(LimitsTest, VoxelSizesThatAreNoSizesAreSurvivedByEveryMeasure) {
  const double strange[] = {0.0,
                            -1.0,
                            1e-30,
                            1e30,
                            std::numeric_limits<double>::infinity(),
                            std::numeric_limits<double>::quiet_NaN()};
  for (const double size : strange) {
    SCOPED_TRACE(size);
    LoadStudy({5, 4, 3}, 2, {1.0, size, 1.0});
    SetUsers(1, 2);
    for (Fl_Widget* button : VolumeButtons()) {
      EXPECT_THAT(AlertsOf(button), IsEmpty()) << button->label();
    }
  }
  LoadStudy({5, 4, 3}, 2);
  Click(Ui().overlayResult3DButton);
  EXPECT_STREQ(Ui().intersect3DOutput->value(), "2");
}

TEST_F(LimitsTest, EveryLabelUpTo255IsMeasured) {
  LoadGrey({5, 4, 3});
  LoadSeg("one.gipl", {5, 4, 3}, {255, 254, 255});
  LoadSeg("two.gipl", {5, 4, 3}, {255, 255, 254});
  for (const int label : {254, 255}) {
    SetLabel(label);
    Click(Ui().overlayResult3DButton);
    EXPECT_STREQ(Ui().nbPixelAOutput->value(), "1");
    EXPECT_STREQ(Ui().intersect3DOutput->value(), label == 255 ? "1" : "0");
  }
  for (const int label : {-1, 256, 100000}) {  // no byte bears it
    SetLabel(label);
    for (Fl_Widget* button : VolumeButtons()) { Click(button); }
  }
  EXPECT_STREQ(Ui().nbPixelAOutput->value(), "0");
}

// Users.

TEST_F(LimitsTest, WithoutNumbersOfUsersAProbabilityMapIsRefused) {
  LoadStudy({5, 4, 3}, 2);
  for (const auto& [users, repeats] : {std::pair{0, 2}, {2, 0}, {-1, 2}, {0, 0}}) {
    SetUsers(users, repeats);
    EXPECT_THAT(AlertsOf(Ui().probabilityButton),
                Says("The numbers of users and of segmentations per user are missing: load a "
                     "script list file"));
  }
}

TEST_F(LimitsTest, AProbabilityMapTakesFifteenUsersAndRefusesSixteen) {
  LoadStudy({5, 4, 3}, 16);
  SetUsers(16, 1);
  EXPECT_THAT(AlertsOf(Ui().probabilityButton), Says("At most 15 users can be compared"));
  EXPECT_STREQ(Ui().probaOverlapOutput->value(), "");

  SetUsers(15, 1);
  EXPECT_THAT(AlertsOf(Ui().probabilityButton), IsEmpty());
  EXPECT_STREQ(Ui().probaOverlapOutput->value(), "1.000000");
}

TEST_F(LimitsTest, ASliceProbabilityTakesFiveUsersAndRefusesSix) {
  LoadStudy({5, 4, 3}, 6);
  for (Fl_Widget* button : {Ui().overlayIntraButton, Ui().overlayInterButton}) {
    SetUsers(6, 1);
    EXPECT_THAT(AlertsOf(button), Says("At most 5 users can be compared"));
    SetUsers(5, 1);
    EXPECT_THAT(AlertsOf(button), IsEmpty());
  }
}

TEST_F(LimitsTest, AProbabilityMapOfMoreSegmentationsThanAreLoadedIsRefused) {
  LoadStudy({5, 4, 3}, 2);
  SetUsers(2, 2);
  EXPECT_THAT(AlertsOf(Ui().probabilityButton),
              Says("The study names 4 segmentations, but only 2 are loaded"));
  SetUsers(2, std::numeric_limits<int>::max());
  EXPECT_EQ(AlertsOf(Ui().probabilityButton).size(), 1U);
  SetUsers(1, 1);
  EXPECT_THAT(AlertsOf(Ui().probabilityButton),
              Says("A probability map needs at least two segmentations"));
}

TEST_F(LimitsTest, AUserWhoseSegmentationIsMissingIsNotMeasured) {
  LoadStudy({5, 4, 3}, 2);
  SetUsers(1, 2);
  Ui().images[1]->FreeArrays(1);

  for (Fl_Widget* button :
       {Ui().probabilityButton, Ui().overlayIntraButton, Ui().overlayInterButton}) {
    EXPECT_THAT(AlertsOf(button), Says("Segmentation 2 is not loaded")) << button->label();
  }
}

TEST_F(LimitsTest, NumbersOfUsersThatNoStudyHasAreRefusedWhenTheyAreUsed) {
  const std::string grey = Made("grey.gipl", files::Volume({5, 4, 3}));
  const std::string seg = Made("seg.gipl", files::Volume({5, 4, 3}, {2}));
  for (const char* numbers : {"99999999999999999999\n99999999999999999999\n",
                              "-99999999999\n-99999999999\n", "-7\n-7\n", "x\n\n"}) {
    EXPECT_THAT(LoadList(List("list.tlx", numbers + grey + "\n" + seg + "\n" + seg + "\n")),
                IsEmpty());
    EXPECT_EQ(Ui().imageCount, 2);
    for (Fl_Widget* button :
         {Ui().probabilityButton, Ui().overlayIntraButton, Ui().overlayInterButton}) {
      EXPECT_EQ(AlertsOf(button).size(), 1U) << button->label();
    }
    AlertsOf(Ui().createAverageButton);
    EXPECT_EQ(Ui().imageSlider->maximum(), 1.0) << "an average was made";
  }
}

// Images and averages.

TEST_F(LimitsTest, AveragesWithoutRoomAreRefusedAndThoseThatFitCloseTheStudy) {
  LoadStudy({3, 2, 2}, 58);
  SetUsers(3, 19);
  EXPECT_THAT(AlertsOf(Ui().createAverageButton),
              Says("There is no room for the averages: a study holds at most 60 images"));

  SetUsers(2, 29);
  EXPECT_THAT(AlertsOf(Ui().createAverageButton), IsEmpty());
  EXPECT_EQ(Ui().imageSlider->maximum(), 59.0);
  Menu("File/Load/SegRawFile");
  Ui().segFileNameInput->value((folder + "seg0.gipl").c_str());
  EXPECT_THAT(AlertsOf(Ui().segLoadButton),
              Says("Averages stand behind the loaded images: load all segmentations before you "
                   "create them"));
  EXPECT_EQ(Ui().imageCount, 58);
}

TEST_F(LimitsTest, AStudyFromAListTakesNoFurtherSegmentationByHand) {
  const std::string seg = LoadListOfTwo();
  LoadSegByHand(seg);  // the first one by hand replaces what is on show
  alerts.clear();
  LoadSegByHand(seg);

  EXPECT_THAT(alerts, Says("A study loaded from a list takes further segmentations through its "
                           "list only"));
  EXPECT_EQ(Ui().imageCount, 2);
}

TEST_F(LimitsTest, AStudyFromAListTakesNoGreyImageOfAStudyBefore) {
  LoadStudy({6, 6, 6}, 1);  // by hand, so that its grey image can take further segmentations
  const std::string seg = LoadListOfTwo();
  LoadList(List("bad.tlx", "1\n2\n" + seg + "\n" + std::string(301, 'x') + "\n"));
  alerts.clear();
  LoadSegByHand(seg);

  EXPECT_THAT(alerts, Says("A study loaded from a list takes further segmentations through its "
                           "list only"));
  EXPECT_EQ(Ui().imageCount, 2);
}

TEST_F(LimitsTest, AveragesOfAListCloseTheStudyAlsoForTheFirstSegmentationByHand) {
  const std::string seg = LoadListOfTwo();
  ASSERT_EQ(Ui().loader->firstSeg, 1);
  EXPECT_THAT(AlertsOf(Ui().createAverageButton), IsEmpty());
  alerts.clear();
  LoadSegByHand(seg);

  EXPECT_THAT(alerts, Says("Averages stand behind the loaded images: load all segmentations before "
                           "you create them"));
  EXPECT_EQ(Ui().imageSlider->maximum(), 2.0);
}

TEST_F(LimitsTest, AnEmptySegmentationPathSaysSoAndMakesNoSlot) {
  LoadStudy({5, 4, 3}, 2);
  LoadSegByHand("");

  EXPECT_STREQ(Ui().statusOutput->value(), "You must enter a non-null string");
  EXPECT_EQ(Ui().imageCount, 2);
  EXPECT_EQ(Ui().image1Choice->size(), 3);  // two entries and the end
}

// Pairs.

TEST_F(LimitsTest, TwoHundredPairsAreQueuedAndComparedAndTheRestIsLeftOut) {
  LoadStudy({3, 2, 2}, 16);
  Click(Ui().compareAllButton);
  EXPECT_EQ(Ui().comparePairCount, 120);
  EXPECT_THAT(AlertsOf(Ui().compareAllInvButton),
              Says("The list holds at most 200 pairs: 40 of 120 were left out"));
  EXPECT_THAT(AlertsOf(Ui().compareAddButton),
              Says("The list holds at most 200 pairs: 1 of 1 were left out"));
  EXPECT_EQ(Ui().comparePairCount, 200);

  Ui().compareOverlayCheck->value(1);
  chooserAnswers.emplace_back(folder + "pairs");
  EXPECT_THAT(AlertsOf(Ui().compareComputeButton), IsEmpty());
  const std::string table = files::TextOf(folder + "pairs.xls");
  EXPECT_EQ(std::count(table.begin(), table.end(), '\n'), 201);
}

TEST_F(LimitsTest, AQueueThatIsTooLongIsRefused) {
  LoadStudy({3, 2, 2}, 2);
  Ui().comparePairCount = 201;

  EXPECT_THAT(AlertsOf(Ui().compareSurfaceHistoButton), IsEmpty());  // cancelled
  chooserAnswers.emplace_back(folder + "histo");
  EXPECT_THAT(AlertsOf(Ui().compareSurfaceHistoButton), Says("At most 200 pairs can be compared"));
  EXPECT_FALSE(std::filesystem::exists(folder + "histo.xls"));
}

// Lists and texts.

TEST_F(LimitsTest, AListLineOf300CharactersIsReadAndOneOf301IsRefused) {
  const std::string grey = Made("grey.gipl", files::Volume({5, 4, 3}));
  const std::string seg = Made("seg.gipl", files::Volume({5, 4, 3}, {2}));
  const std::string rest = "1\n1\n" + grey + "\n" + seg + "\n2";
  EXPECT_THAT(LoadList(List("list.tlx", rest + std::string(299, 'x') + "\n")), IsEmpty());
  EXPECT_EQ(Ui().imageCount, 1);

  EXPECT_THAT(LoadList(List("list.tlx", rest + std::string(300, 'x') + "\n")),
              Says("A line of the list file has more than 300 characters: line 5"));
  EXPECT_EQ(Ui().imageCount, 1);  // the study that was there
  Menu("File/Create File");
  chooserAnswers.emplace_back(folder + "list.tlx");
  EXPECT_EQ(AlertsOf(Ui().listLoadListButton).size(), 1U);
  EXPECT_STREQ(Ui().listOriginalInput->value(), "");
}

TEST_F(LimitsTest, AListFileWithMoreTextThanItsFieldHoldsIsRefused) {
  const auto text = [](int last) {
    std::string segs;
    for (int i = 0; i < 49; ++i) { segs += std::string(199, 's') + "\n"; }
    return "1\n2\noriginal.gipl\n" + segs + std::string(static_cast<std::size_t>(last), 's') + "\n";
  };
  Menu("File/Create File");
  chooserAnswers.emplace_back(List("list.tlx", text(199)));
  EXPECT_THAT(AlertsOf(Ui().listLoadListButton), IsEmpty());
  EXPECT_EQ(std::string(Ui().listSegsInput->value()).size(), 9999U);

  chooserAnswers.emplace_back(List("list.tlx", text(200)));
  EXPECT_THAT(AlertsOf(Ui().listLoadListButton),
              Says("The segmentations of the list have more than 9,999 characters"));
  EXPECT_EQ(std::string(Ui().listSegsInput->value()).size(), 9999U);
}

TEST_F(LimitsTest, AFurtherSegmentationThatTheTextOfTheListHasNoRoomForIsRefused) {
  Menu("File/Create File");
  Ui().listOriginalInput->value("o.gipl");
  Ui().listSegsInput->value((std::string(9990, 's') + "\n").c_str());
  chooserAnswers.emplace_back("12345678");

  EXPECT_THAT(AlertsOf(Ui().listLoadSegButton),
              Says("The list of segmentations may have at most 9,999 characters"));
  chooserAnswers.emplace_back("1234567");
  EXPECT_THAT(AlertsOf(Ui().listLoadSegButton), IsEmpty());
  EXPECT_EQ(std::string(Ui().listSegsInput->value()).size(), 9999U);
}

TEST_F(LimitsTest, ASegmentationPathOf300CharactersIsRefused) {
  LoadStudy({5, 4, 3}, 2);
  Menu("File/Load/SegRawFile");
  Ui().segFileNameInput->value((folder + std::string(300, 's') + ".gipl").c_str());

  EXPECT_THAT(AlertsOf(Ui().segLoadButton),
              Says("The name of a file may have at most 299 characters"));
  EXPECT_EQ(Ui().imageCount, 2);
}

TEST_F(LimitsTest, AHistogramPathOf300CharactersIsRefused) {
  Ui().compareSurfaceHistoCheck->value(1);
  chooserAnswers.emplace_back(std::string(296, 'h'));
  alerts.clear();
  Ui().compareSurfaceHistoCheck->do_callback();
  EXPECT_THAT(alerts, Says("The name of a file may have at most 299 characters"));
  EXPECT_STREQ(Ui().window3D->histoFileName, "");

  chooserAnswers.emplace_back(std::string(295, 'h'));
  alerts.clear();
  Ui().compareSurfaceHistoCheck->do_callback();
  EXPECT_THAT(alerts, IsEmpty());
  EXPECT_EQ(std::string(Ui().window3D->histoFileName), std::string(295, 'h') + ".xls");
}

// Commands inside one another.

TEST_F(LimitsTest, AFifthCommandInsideOneAnotherIsRefused) {
  LoadStudy({5, 4, 3}, 2);
  std::vector<std::unique_ptr<RunningCommand>> running;
  for (int i = 0; i < 3; ++i) { running.push_back(std::make_unique<RunningCommand>(Ui())); }
  EXPECT_THAT(AlertsOf(Ui().overlayResult3DButton), IsEmpty());
  running.push_back(std::make_unique<RunningCommand>(Ui()));

  EXPECT_THAT(AlertsOf(Ui().overlayResult3DButton),
              Says("Too many commands are running: wait until one has ended"));
  while (!running.empty()) { running.pop_back(); }
  EXPECT_THAT(AlertsOf(Ui().overlayResult3DButton), IsEmpty());
  EXPECT_STREQ(Ui().intersect3DOutput->value(), "2");
}

TEST_F(LimitsTest, WhatWouldReplaceTheStudyIsRefusedWhileACommandRuns) {
  LoadStudy({5, 4, 3}, 2);
  const RunningCommand running(Ui());
  const char* const kRefusal = "A command is running: wait until it has ended";

  Menu("File/Load/GreyRawFile");
  EXPECT_THAT(AlertsOf(Ui().greyLoadButton), Says(kRefusal));
  Menu("File/Load/SegRawFile");
  EXPECT_THAT(AlertsOf(Ui().segLoadButton), Says(kRefusal));
  EXPECT_THAT(AlertsOfMenu("File/Load/Selection File"), Says(kRefusal));
  EXPECT_THAT(AlertsOf(Ui().createAverageButton), Says(kRefusal));
  EXPECT_THAT(AlertsOf(Ui().compareAllButton), Says(kRefusal));
  EXPECT_EQ(Ui().imageCount, 2);
}

// Memory.

/// No more than so many bytes beyond what the process has now.
class LittleMemory {
public:
  explicit LittleMemory(rlim_t bytes) {
    getrlimit(RLIMIT_AS, &before);
    std::size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    const rlimit little{pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE)) + bytes,
                        before.rlim_max};
    setrlimit(RLIMIT_AS, &little);
  }
  LittleMemory(const LittleMemory&) = delete;
  LittleMemory& operator=(const LittleMemory&) = delete;
  ~LittleMemory() { setrlimit(RLIMIT_AS, &before); }

private:
  rlimit before{};
};

TEST_F(LimitsTest, WithoutMemoryAMeasureIsRefusedAndTheStudyStays) {
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "the sanitizer needs more memory than there is";
#endif
  LoadStudy({200, 200, 200}, 2);
  {
    const LittleMemory memory(12U << 20U);  // a picture takes 32 megabytes
    for (Fl_Widget* button : VolumeButtons()) {
      if (button == Ui().probabilityButton) { SetUsers(1, 2); }
      EXPECT_THAT(AlertsOf(button), Says("There is no memory for the picture of this measure"))
          << button->label();
      EXPECT_FALSE(Ui().progressPanel->visible());
    }
    const RunningCommand running(Ui());
    EXPECT_THAT(AlertsOf(Ui().overlayResult3DButton),
                Says("There is no memory for a further command while one is running"));
  }
  EXPECT_THAT(VolumeFields(), Each(std::string()));

  EXPECT_THAT(AlertsOf(Ui().overlayResult3DButton), IsEmpty());
  EXPECT_STREQ(Ui().intersect3DOutput->value(), "2");
}

/// Calls `look` once, when a command that runs alone lets events be handled and Image 1 holds no
/// more than the shell of its label.
class AtShell {
public:
  explicit AtShell(std::function<void()> whatToDo) {
    look = std::move(whatToDo);
    Fl::add_check(Check);
  }
  AtShell(const AtShell&) = delete;
  AtShell& operator=(const AtShell&) = delete;
  ~AtShell() { Fl::remove_check(Check); }

  static bool Done() { return look == nullptr; }

private:
  static void Check(void* /*data*/) {
    if (look == nullptr || mainUI->images[0]->Labels().At(12, 12, 12) != 0) { return; }
    const auto once = std::move(look);
    look = nullptr;
    once();
  }
  static inline std::function<void()> look;
};

TEST_F(LimitsTest, ACommandThatFindsNoMemoryInsideARunSpoilsNeitherTheRunNorTheNextOne) {
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "the sanitizer needs more memory than there is";
#endif
  LoadStudy({200, 200, 200}, 2);
  for (int i = 0; i < 5 * 5 * 5; ++i) {
    for (const int image : {0, 1}) {
      Ui().images[image]->EditableLabels().Set(10 + i / 25, 10 + i / 5 % 5, 10 + i % 5, 2);
    }
  }
  Ui().currentLabel = 2;
  AlertsOf(Ui().overlayResult3DButton);
  AlertsOf(Ui().surfaceDistanceButton);
  const auto expected = VolumeFields();
  ASSERT_STREQ(Ui().intersect3DOutput->value(), "127");
  int refused = 0;
  const AtShell shell([&] {
    // Each piece of what is put aside fails at one of these.
    for (unsigned megabytes = 20; megabytes <= 200; megabytes += 3) {
      const LittleMemory memory(megabytes << 20U);
      refused += static_cast<int>(AlertsOf(Ui().overlayResult3DButton).size());
      ASSERT_EQ(Ui().images[0]->Labels().At(12, 12, 12), 0) << megabytes;
    }
    Ui().intersect3DOutput->value("");
    EXPECT_THAT(AlertsOf(Ui().overlayResult3DButton), IsEmpty());
    EXPECT_STREQ(Ui().intersect3DOutput->value(), "127");
  });

  EXPECT_THAT(AlertsOf(Ui().surfaceDistanceButton), IsEmpty());

  EXPECT_TRUE(AtShell::Done());
  EXPECT_GT(refused, 10);
  EXPECT_THAT(VolumeFields(), ElementsAreArray(expected));
  EXPECT_EQ(Ui().images[0]->Labels().At(12, 12, 12), 2);
}

TEST_F(LimitsTest, WithoutMemoryForAFurtherAverageTheOnesBeforeItStay) {
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "the sanitizer needs more memory than there is";
#endif
  LoadStudy({200, 200, 200}, 2);
  SetUsers(1, 2);
  std::vector<std::string> refusals;
  {
    const LittleMemory memory(12U << 20U);  // an average takes 8 megabytes
    for (int press = 0; press < 20 && refusals.empty(); ++press) {
      refusals = AlertsOf(Ui().createAverageButton);
    }
  }
  EXPECT_THAT(refusals, Says("There is no memory for a further average"));
  EXPECT_FALSE(Ui().progressPanel->visible());
  const int images = Ui().image1Choice->size() - 1;
  EXPECT_LT(images, 22);
  EXPECT_EQ(Ui().imageSlider->maximum(), images - 1);

  EXPECT_THAT(AlertsOf(Ui().createAverageButton), IsEmpty());
  EXPECT_EQ(EntryText(Ui().image1Choice, images), "average " + std::to_string(images - 2));
  ChoosePair(0, images);
  EXPECT_THAT(AlertsOf(Ui().overlayResult3DButton), IsEmpty());
  EXPECT_STREQ(Ui().intersect3DOutput->value(), "2");
}

}  // namespace
