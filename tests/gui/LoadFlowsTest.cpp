// The load flows step by step, by hand and from list files, on files with known results.
#include "VoxData/ImageLoader.h"
#include "VoxData/VoxData.h"
#include "tests/support/Golden.h"
#include "tests/support/Interface.h"
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
#include <fstream>
#include <gmock/gmock.h>
#include <unistd.h>

namespace {

using nlohmann::json;
namespace fs = std::filesystem;

std::vector<std::string> Entries(const Fl_Choice* choice) {
  std::vector<std::string> entries;
  for (int i = 0; i + 1 < choice->size(); ++i) { entries.emplace_back(EntryText(choice, i)); }
  return entries;
}

/// Runs in a copy of the folder, with which all paths are relative.
class LoadFlowsTest : public Interface {
protected:
  json all = golden::Json("readers/readers.json");
  fs::path before = fs::current_path();
  std::string written;

  void SetUp() override {
    Interface::SetUp();
    const fs::path folder = Scratch();
    fs::copy(golden::Path("readers"), folder, fs::copy_options::recursive);
    fs::current_path(folder);
  }
  void TearDown() override {
    fs::current_path(before);
    Interface::TearDown();
  }

  void ExpectStudy(const json& study) {
    const MainUI& ui = Ui();
    EXPECT_EQ(ui.imageCount, study["imageCount"].get<int>());
    EXPECT_EQ(ui.imageSlider->value(), study["imageSlider"].get<double>());
    EXPECT_EQ(ui.imageSlider->maximum(), study["imageSliderMaximum"].get<double>());
    const auto menu = study["imageMenu"].get<std::vector<std::string>>();
    EXPECT_EQ(Entries(ui.image1Choice), menu);
    EXPECT_EQ(Entries(ui.plotImage2Choice), menu);
    ExpectLabels(study["labels"]);
    EXPECT_EQ(ui.statusOutput->value(), study["statusOutput"]);
    EXPECT_EQ(ui.usersOutput->value(), study["usersOutput"]);
    EXPECT_EQ(ui.slicesOutput->value(), study["slicesOutput"]);
    EXPECT_EQ(ui.loader->firstGrey, study["firstGrey"].get<int>());
    EXPECT_EQ(ui.loader->firstSeg, study["firstSeg"].get<int>());
    for (std::size_t slot = 0; slot < study["slots"].size(); ++slot) {
      ExpectSlot(*ui.images[slot], study["slots"][slot]);
    }
  }

  void ExpectLabels(const json& labels) {
    const MainUI& ui = Ui();
    const auto list = labels["labelList"].get<std::vector<int>>();
    for (std::size_t i = 0; i < list.size(); ++i) { EXPECT_EQ(ui.labelList[i], list[i]) << i; }
    EXPECT_EQ(Entries(ui.colorLabelChoice),
              labels["colorLabelChoice"].get<std::vector<std::string>>());
    EXPECT_EQ(Entries(ui.plotLabel1Choice),
              labels["plotLabelChoices"].get<std::vector<std::string>>());
    EXPECT_EQ(ui.currentLabel, labels["currentLabel"].get<int>());
  }

  static void ExpectSlot(const VoxData& slot, const json& expected) {
    EXPECT_EQ((std::array<int, 3>{slot.dimX, slot.dimY, slot.dimZ}),
              (expected["dims"].get<std::array<int, 3>>()));
    EXPECT_EQ(slot.GetLabelCount(), expected["labelCount"].get<int>());
    EXPECT_EQ(slot.GetScale(), expected["greyScale"].get<double>());
    Fnv64 sum;
    for (int z = 0; z < slot.dimZ; ++z) {
      for (int y = 0; y < slot.dimY; ++y) {
        for (int x = 0; x < slot.dimX; ++x) { sum.Add(slot.seg[x][y][z]); }
      }
    }
    char text[20];
    std::snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(sum.Value()));
    EXPECT_EQ(text, expected["seg"]);
  }

  /// The last path of a step is what follows its verb.
  void Do(const std::string& step) {
    if (step == "grey (empty path)") {
      LoadGreyByHand("", {4, 3, 2}, 2, 256);
    } else if (step.rfind("grey ", 0) == 0) {
      LoadGreyGipl(step.substr(5));
    } else {
      LoadSegByHand(step.substr(4));
    }
  }
};

TEST_F(LoadFlowsTest, EveryStepOfALoadByHandLeavesTheStudyAsKnown) {
  for (const json& flow : all["manualFlows"]) {
    TearDown();
    SetUp();
    written.clear();
    for (const json& step : flow["steps"]) {
      SCOPED_TRACE(flow["note"].get<std::string>() + ": " + step["do"].get<std::string>());
      Do(step["do"]);
      written += TakeOutput();
      ExpectStudy(step["study"]);
      EXPECT_EQ(written, step["study"]["stdout"]);
    }
  }
}

TEST_F(LoadFlowsTest, TheLabelMenusGrowTheirGhosts) {
  // One voxel for each label of the load: 256 fit 16 x 16 x 1.
  for (const json& sequence : all["labelMenus"]) {
    TearDown();
    SetUp();
    const std::vector<char> grey(256 + 16 * 16, 1);
    std::ofstream("g.raw", std::ios::binary).write(grey.data(), 512);
    LoadGreyByHand("g.raw", {16, 16, 1}, 1, 256);
    for (const json& load : sequence) {
      if (load["newStudyFirst"].get<bool>()) { LoadGreyByHand("g.raw", {16, 16, 1}, 1, 256); }
      const auto present = load["labelPresent"].get<std::vector<int>>();
      std::vector<char> seg(512, static_cast<char>(present.back()));
      for (std::size_t i = 0; i < present.size(); ++i) {
        seg[256 + i] = static_cast<char>(present[i]);
      }
      std::ofstream("s.raw", std::ios::binary).write(seg.data(), 512);
      LoadSegByHand("s.raw");
      ExpectLabels(load["menus"]);
      if (HasFailure()) { return; }
    }
  }
}

TEST_F(LoadFlowsTest, ListFilesLoadTheStudiesThatTheyName) {
  for (const json& one : all["scripts"]) {
    TearDown();
    SetUp();
    const std::string file = one["file"];
    SCOPED_TRACE(file);
    chooserAnswers.emplace_back(file);
    Menu("File/Load/Selection File");
    Settle();
    EXPECT_EQ(chooserTitles, std::vector<std::string>{"Select a File|*.tlx"});
    EXPECT_FALSE(Ui().progressPanel->visible());
    if (one.value("expect", "exact") != "exact") { continue; }
    const json& study = one["study"];
    ExpectStudy(study);
    EXPECT_EQ(TakeOutput(), study["stdout"]);
    if (study["imageCount"].get<int>() > 0) {
      EXPECT_EQ(Ui().ComposedTitle(), study["composedTitle"]);
    }
    EXPECT_EQ(Ui().userCount, one["plan"]["userCount"].get<int>());
    EXPECT_EQ(Ui().slicesPerUser, one["plan"]["slicesPerUser"].get<int>());
    EXPECT_EQ(Ui().progressRange->maximum(), one["plan"]["progressMaximum"].get<double>());
  }
}

TEST_F(LoadFlowsTest, AMetaImageWithItsElementsBehindTheHeaderLoadsAsARawFile) {
  for (const int bytes : {1, 2}) {
    std::string file = std::string("NDims = 3\nDimSize = 4 3 2\nElementSize = 0.5 0.25 2\n") +
                       "ElementType = " + (bytes == 1 ? "MET_UCHAR" : "MET_USHORT") +
                       "\nElementByteOrderMSB = True\nElementDataFile = LOCAL\n";
    const std::size_t header = file.size();
    for (char value = 0; value < 24; ++value) { file += std::string(bytes - 1U, '\0') + value; }
    std::ofstream("local.mha", std::ios::binary) << file;
    LoadGreyGipl("local.mha");

    EXPECT_STREQ(Ui().statusOutput->value(), "Loading Successful");
    EXPECT_EQ(Ui().greyHeaderSizeInput->value(), static_cast<double>(header));
    EXPECT_EQ(Ui().greyBytesInput->value(), bytes);
    ASSERT_EQ(Ui().imageCount, 1);
    const VoxData& slot = *Ui().images[0];
    EXPECT_EQ(slot.spacing[1], 0.25F);
    EXPECT_EQ(slot.GetScale(), 65535.0 / 23.0);
    // The default origin mirrors y and z: the last voxel of the file has the largest value.
    EXPECT_EQ(slot.grey[0][2][1], 0);
    EXPECT_EQ(slot.grey[1][2][1], 2849);
    EXPECT_EQ(slot.grey[3][0][0], 65535);
  }
}

TEST_F(LoadFlowsTest, AMetaImageThatIsTooShortLeavesTheDialogAsItWas) {
  Menu("File/Load/GreyRawFile");
  Ui().greyXdimInput->value(77);
  std::ofstream("short.mha") << "NDims = 3\nDimSize = 4 3 2\nElementType = MET_UCHAR\n"
                                "ElementByteOrderMSB = False\nElementDataFile = LOCAL\n12345";
  chooserAnswers.emplace_back("short.mha");
  Click(ButtonByLabel(Ui().loadGreyWindow, "Select"));
  EXPECT_STREQ(Ui().greyFileNameInput->value(), "short.mha");
  EXPECT_EQ(Ui().greyXdimInput->value(), 77.0);
  EXPECT_EQ(TakeOutput(), "Error: read 5 but expecting 24\n");
}

TEST_F(LoadFlowsTest, OnPurposeEachLoadChangesTheTitleThatNoWindowShows) {
  for (const auto& [file, title] :
       {std::pair<const char*, const char*>{"study_gaps.tlx", "grey.gipl - gap3.gipl"},
        {"study_full.tlx", "grey.gipl - full.gipl"}}) {
    chooserAnswers.emplace_back(file);
    Menu("File/Load/Selection File");

    EXPECT_STREQ(Ui().ComposedTitle(), title);
    EXPECT_STREQ(Ui().mainWindow->label(), "Tolvex 1.0");
  }
}

TEST_F(LoadFlowsTest, ARawLineRightBehindTheOriginalIsASegmentation) {
  chooserAnswers.emplace_back("study_rawfirst.tlx");
  Menu("File/Load/Selection File");

  EXPECT_GT(Ui().imageCount, 0);
  EXPECT_NE(std::string(EntryText(Ui().image1Choice, 0)).find(".raw"), std::string::npos);
}

TEST_F(LoadFlowsTest, ALastLineWithoutALineFeedCountsInALoad) {
  chooserAnswers.emplace_back("study_cut.tlx");
  Menu("File/Load/Selection File");

  EXPECT_EQ(Ui().imageCount, 2);
}

TEST_F(LoadFlowsTest, ALineWithNeitherWordChangesNothingInTheMenus) {
  chooserAnswers.emplace_back("study_note.tlx");
  Menu("File/Load/Selection File");

  EXPECT_THAT(Entries(Ui().image1Choice), testing::ElementsAre("u1r1.gipl", "u1r2.gipl"));
}

TEST_F(LoadFlowsTest, ALongLineOrTooManyImagesAreRefusedBeforeAnythingChanges) {
  LoadGreyGipl("grey.gipl");
  for (const char* file : {"study_long.tlx", "study_61.tlx"}) {
    alerts.clear();
    chooserAnswers.emplace_back(file);
    Menu("File/Load/Selection File");
    EXPECT_EQ(alerts.size(), 1U) << file;
    EXPECT_EQ(Ui().imageCount, 1) << file;
  }
}

TEST_F(LoadFlowsTest, AfterAListASegmentationByHandReplacesTheLastOneAndAFurtherOneIsRefused) {
  chooserAnswers.emplace_back("study.tlx");
  Menu("File/Load/Selection File");
  const int loaded = Ui().imageCount;
  ASSERT_GT(loaded, 1);
  std::ofstream("sevens.raw", std::ios::binary) << std::string(256 + 24, '\7');
  LoadSegByHand("sevens.raw");
  EXPECT_EQ(Ui().imageCount, loaded);
  EXPECT_TRUE(alerts.empty());
  for (int slot = 0; slot < loaded; ++slot) {
    EXPECT_EQ(Ui().images[slot]->labelPresent[7], slot == loaded - 1 ? 1 : 0) << slot;
  }

  LoadSegByHand("u1r2.gipl");
  EXPECT_EQ(Ui().imageCount, loaded);
  EXPECT_EQ(alerts, std::vector<std::string>{"A study loaded from a list takes further "
                                             "segmentations through its list only"});
}

TEST_F(LoadFlowsTest, AListMovesTheCursorToTheFirstVoxelAlsoWhereItsLoadFails) {
  for (const char* file : {"study_nogrey.tlx", "study.tlx"}) {
    viewState->SetCursor(1, 2, 1);
    chooserAnswers.emplace_back(file);
    Menu("File/Load/Selection File");

    EXPECT_THAT(viewState->GetCursor(), testing::ElementsAre(0, 0, 0)) << file;
  }
  EXPECT_EQ(Ui().loader->segHeaderSize, 256);
  EXPECT_STREQ(Ui().loader->statusText, "Opening Segmentation Data..... u2r2.raw");
}

TEST_F(LoadFlowsTest, TheBarIsFullWhenAListIsLoaded) {
  chooserAnswers.emplace_back("study.tlx");
  Menu("File/Load/Selection File");

  EXPECT_EQ(Ui().progressBar->w(), 290);
  EXPECT_EQ(Ui().progressBar->h(), 10);
  EXPECT_STREQ(Ui().currentImageOutput->value(), "u2r2.raw");
  EXPECT_STREQ(Ui().progressText->value(), "Allocating memory...");
}

// The Create List window.

TEST_F(LoadFlowsTest, AListIsComposedSavedAndReadBack) {
  Menu("File/Create File");
  chooserAnswers.emplace_back("grey.gipl");
  Click(Ui().listLoadOrigButton);
  for (const char* seg : {"u1r1.gipl", "u1r2.gipl"}) {
    chooserAnswers.emplace_back(seg);
    Click(Ui().listLoadSegButton);
  }
  EXPECT_EQ(Ui().listNbSegInput->value(), 2.0);
  EXPECT_STREQ(Ui().listSegsInput->value(), "u1r1.gipl\nu1r2.gipl\n");
  chooserAnswers.emplace_back("made");
  Click(Ui().listSaveButton);

  std::ifstream stream("made.tlx");
  const std::string text((std::istreambuf_iterator<char>(stream)), {});
  EXPECT_EQ(text, "1\n2\ngrey.gipl\nu1r1.gipl\nu1r2.gipl\n\n");

  Menu("File/Create File");
  EXPECT_STREQ(Ui().listSegsInput->value(), "");
  EXPECT_EQ(Ui().listNbUserInput->value(), 1.0);
  chooserAnswers.emplace_back("made.tlx");
  Click(Ui().listLoadListButton);
  EXPECT_EQ(Ui().listNbSegInput->value(), 2.0);
  EXPECT_STREQ(Ui().listOriginalInput->value(), "grey.gipl");

  chooserAnswers.emplace_back("made.tlx");
  Click(ButtonByLabel(Ui().createListWindow, "Load"));
  EXPECT_EQ(Ui().imageCount, 2);
  EXPECT_FALSE(Ui().createListWindow->shown());
}

TEST_F(LoadFlowsTest, ASegmentationNeedsAnOriginalFirst) {
  Menu("File/Create File");
  Click(Ui().listLoadSegButton);

  EXPECT_EQ(alerts, std::vector<std::string>{"You must select an original image before"});
}

TEST_F(LoadFlowsTest, SaveListKeepsANameThatHoldsTheExtensionInItsMiddle) {
  Menu("File/Create File");
  chooserAnswers.emplace_back("a.tlx.txt");
  Click(Ui().listSaveButton);

  EXPECT_TRUE(fs::exists("a.tlx.txt"));
}

TEST_F(LoadFlowsTest, AListTextIsNeverLongerThanItsField) {
  Menu("File/Create File");
  Ui().listOriginalInput->value("o.gipl");
  for (int i = 0; i < 60; ++i) {
    chooserAnswers.emplace_back(std::string(250, 'x'));
    Click(Ui().listLoadSegButton);
  }

  EXPECT_FALSE(alerts.empty());
  EXPECT_LT(std::string(Ui().listSegsInput->value()).size(), 10000U);
}

TEST_F(LoadFlowsTest, ALeftOverCountIsNoCrash) {
  chooserAnswers.emplace_back("study.tlx");
  Menu("File/Load/Selection File");
  Ui().userCount = 50;
  for (const char* button : {"Overlay Intra", "Overlay Inter", "Probability"}) {
    alerts.clear();
    Click(ButtonByLabel(Ui().measuresGroup, button));
    EXPECT_EQ(alerts.size(), 1U) << button;
  }
}

}  // namespace
