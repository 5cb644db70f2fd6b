// The Compare Data window: its list of pairs, its boxes, the tables it writes and exports.
#include "VoxData/VoxData.h"
#include "tests/support/Interface.h"
#include "tests/support/SmallStudy.h"
#include "ui/Fields.h"
#include "view3d/Window3D.h"
#include "view3d/volumemeasures/CompareTable.h"

#include <FL/Fl_Button.H>
#include <FL/Fl_Check_Button.H>
#include <FL/Fl_Choice.H>
#include <FL/Fl_Group.H>
#include <FL/Fl_Input.H>
#include <FL/Fl_Output.H>
#include <FL/Fl_Round_Button.H>

#include <filesystem>
#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
namespace fs = std::filesystem;

const std::string kNames = "Image 1\tImage 2\t";
const std::string kOverlay =
    "Number of Pixel 1\tNumber of Pixel 2\tIntersection\tUnion\tAverage\tOverlay Major\t";
const std::string kHaussdorf = "Haussdorf 1\tHaussdorf 2\tHaussdorf Distance\t";
const std::string kSurface =
    "Distance outside\tNb pixel Outside\tAverage outside\tDistance inside\tNb pixel inside\t"
    "Average inside\tDistance\tNb boundary pixel\tAverage";

/// Outlines of 2 x 2 voxels and 1, 2, 3, ... planes that begin at the same plane.
class PairsTest : public Interface {
protected:
  std::unique_ptr<SmallStudy> files;

  void SetUp() override {
    Interface::SetUp();
    files = std::make_unique<SmallStudy>(Scratch());
  }

  void Load(int segmentations) { LoadFiles(files->Outlines(segmentations)); }
  void LoadFiles(const std::vector<std::string>& segs) {
    Answer(files->List(1, static_cast<int>(segs.size()), segs));
    Menu("File/Load/Selection File");
    Settle();
    ASSERT_EQ(Ui().imageCount, static_cast<int>(segs.size()));
    SetLabel(SmallStudy::kLabel);
    TakeOutput();
    TakeErrors();
    chooserTitles.clear();
  }

  void Answer(const std::string& path) { chooserAnswers.emplace_back(path); }
  void Boxes(bool overlay, bool haussdorf, bool surface) {
    Ui().compareOverlayCheck->value(overlay ? 1 : 0);
    Ui().compareHaussdorfCheck->value(haussdorf ? 1 : 0);
    Ui().compareSurfaceDistCheck->value(surface ? 1 : 0);
  }
  void Add(int first, int second) {
    Ui().compareImage1Choice->value(first);
    Ui().compareImage2Choice->value(second);
    Click(Ui().compareAddButton);
  }
  void Compute(const std::string& name) {
    Answer(files->Path(name));
    Click(Ui().compareComputeButton);
  }
  void Export(const std::string& name) {
    Answer(files->Path(name));
    Click(Ui().compareExportButton);
  }
  std::string Text(const std::string& name) { return SmallStudy::Text(files->Path(name)); }
  std::vector<std::pair<int, int>> Queued() {
    std::vector<std::pair<int, int>> pairs;
    for (int i = 0; i < Ui().comparePairCount; ++i) {
      pairs.emplace_back(Ui().comparePairs[i][0], Ui().comparePairs[i][1]);
    }
    return pairs;
  }
};

// The list.

TEST_F(PairsTest, AllQueuesEveryPairAndAllinvTheSameTurnedRound) {
  Load(3);

  Click(Ui().compareAllButton);
  EXPECT_STREQ(Ui().comparePairsOutput->value(),
               "s0.gipl <-> s1.gipl\ns0.gipl <-> s2.gipl\ns1.gipl <-> s2.gipl\n");
  Click(Ui().compareAllInvButton);

  EXPECT_STREQ(Ui().comparePairsOutput->value(),
               "s0.gipl <-> s1.gipl\ns0.gipl <-> s2.gipl\ns1.gipl <-> s2.gipl\n"
               "s1.gipl <-> s0.gipl\ns2.gipl <-> s0.gipl\ns2.gipl <-> s1.gipl\n");
  EXPECT_THAT(Queued(), ElementsAre(std::pair(0, 1), std::pair(0, 2), std::pair(1, 2),
                                    std::pair(1, 0), std::pair(2, 0), std::pair(2, 1)));
}

TEST_F(PairsTest, AddQueuesThePairOfTheChoosers) {
  Load(3);

  Add(2, 0);
  Add(1, 1);

  EXPECT_STREQ(Ui().comparePairsOutput->value(), "s2.gipl <-> s0.gipl\ns1.gipl <-> s1.gipl\n");
  EXPECT_THAT(Queued(), ElementsAre(std::pair(2, 0), std::pair(1, 1)));
}

TEST_F(PairsTest, ClearFieldEmptiesTheListAndItsText) {
  Load(3);
  Click(Ui().compareAllButton);

  Click(ButtonByLabel(Ui().compareWindow, "Clear Field"));

  EXPECT_EQ(Ui().comparePairCount, 0);
  EXPECT_STREQ(Ui().comparePairsOutput->value(), "");
}

TEST_F(PairsTest, AllOnFewerThanTwoImagesDoesNothing) {
  for (const int images : {0, 1}) {
    if (images == 1) { Load(1); }
    Click(Ui().compareAllButton);
    Click(Ui().compareAllInvButton);
    EXPECT_EQ(Ui().comparePairCount, 0);
    EXPECT_STREQ(Ui().comparePairsOutput->value(), "");
    EXPECT_THAT(alerts, IsEmpty());
  }
}

TEST_F(PairsTest, AddWithEmptyChoosersGivesALineOfEmptyNames) {
  Click(Ui().compareAddButton);

  EXPECT_STREQ(Ui().comparePairsOutput->value(), " <-> \n");
  EXPECT_EQ(Ui().comparePairCount, 1);
  Click(Ui().compareComputeButton);  // its chooser is cancelled
  EXPECT_THAT(alerts, IsEmpty());
  Compute("table");
  EXPECT_THAT(alerts, ElementsAre("The chosen images are not loaded"));
  EXPECT_FALSE(fs::exists(files->Path("table.xls")));
}

TEST_F(PairsTest, TwoHundredPairsAreQueuedAndTheRestIsCounted) {
  Load(21);

  Click(Ui().compareAllButton);
  EXPECT_EQ(Ui().comparePairCount, 200);
  EXPECT_THAT(alerts, ElementsAre("The list holds at most 200 pairs: 10 of 210 were left out"));
  const std::string full = Ui().comparePairsOutput->value();
  EXPECT_EQ(std::count(full.begin(), full.end(), '\n'), 200);
  alerts.clear();
  Add(0, 1);
  EXPECT_THAT(alerts, ElementsAre("The list holds at most 200 pairs: 1 of 1 were left out"));
  alerts.clear();
  Click(Ui().compareAllInvButton);
  EXPECT_THAT(alerts, ElementsAre("The list holds at most 200 pairs: 210 of 210 were left out"));
  EXPECT_EQ(Ui().comparePairCount, 200);
  EXPECT_EQ(Ui().comparePairsOutput->value(), full);
}

TEST_F(PairsTest, TwoHundredPairsAreComputed) {
  Load(21);
  Click(Ui().compareAllInvButton);
  Boxes(true, false, false);

  Compute("table");

  const std::string text = Text("table.xls");
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 201);
  EXPECT_THAT(TakeOutput(), HasSubstr("Write File #200\nThat's finished !!!!\n"));
}

// A run.

TEST_F(PairsTest, EachBoxBringsItsColumns) {
  Load(2);
  Add(0, 1);
  for (int boxes = 0; boxes < 8; ++boxes) {
    SCOPED_TRACE(boxes);
    const bool overlay = (boxes & 1) != 0;
    const bool haussdorf = (boxes & 2) != 0;
    const bool surface = (boxes & 4) != 0;
    Boxes(overlay, haussdorf, surface);
    const std::string name = "table" + std::to_string(boxes) + ".xls";

    Compute(name);

    EXPECT_EQ(Text(name), kNames + (overlay ? kOverlay : "") + (haussdorf ? kHaussdorf : "") +
                              (surface ? kSurface : "") + "\ns0.gipl\ts1.gipl\t" +
                              (overlay ? "0\t4\t4\t4\t6.000000\t0.666667\t" : "") +
                              (haussdorf ? "0.000000\t1.000000\t1.000000\t" : "") +
                              (surface ? "4.000000\t4\t1.000000\t0.000000\t4\t0.000000\t"
                                         "4.000000\t8\t0.500000"
                                       : "") +
                              "\n");
  }
}

TEST_F(PairsTest, TheConsoleCountsNamesAndWritesWithoutBlanks) {
  Load(3);
  Click(Ui().compareAllButton);
  Boxes(true, false, false);

  Compute("table");

  EXPECT_THAT(chooserTitles, ElementsAre("Select the export file name|"));
  EXPECT_EQ(TakeOutput(), "nb compare3\n"
                          "0<->1\nOverlay result Image #1 finished\nWrite File #1\n"
                          "0<->2\nOverlay result Image #2 finished\nWrite File #2\n"
                          "1<->2\nOverlay result Image #3 finished\nWrite File #3\n"
                          "That's finished !!!!\n");
  EXPECT_FALSE(Ui().progressPanel->visible());
  EXPECT_EQ(TakeErrors(), "");
}

TEST_F(PairsTest, WithoutAlwaysWriteNothingIsAskedAndNoFileIsTouched) {
  Load(2);
  Add(0, 1);
  Boxes(true, true, true);
  Ui().compareAlwaysWriteButton->value(0);

  Click(Ui().compareComputeButton);

  EXPECT_THAT(chooserTitles, IsEmpty());
  const std::string output = TakeOutput();
  EXPECT_THAT(output, HasSubstr("That's finished !!!!\n"));
  EXPECT_THAT(output, Not(HasSubstr("Write File")));
  EXPECT_FALSE(fs::exists(".xls"));
  EXPECT_EQ(Ui().window3D->compareRecords[0].nbPixel2, 4);
}

TEST_F(PairsTest, AlwaysWriteThatIsSetInARunWithoutANameWritesNothing) {
  Load(2);
  Add(0, 1);
  Boxes(false, true, false);
  Ui().compareAlwaysWriteButton->value(0);
  const auto setIt = [](void* data) {
    static_cast<MainUI*>(data)->compareAlwaysWriteButton->value(1);
  };
  Fl::add_check(setIt, &Ui());

  Click(Ui().compareComputeButton);

  Fl::remove_check(setIt, &Ui());
  EXPECT_EQ(Ui().compareAlwaysWriteButton->value(), 1);
  EXPECT_THAT(TakeOutput(), Not(HasSubstr("Write File")));
  EXPECT_EQ(TakeErrors(), "");
}

TEST_F(PairsTest, ACancelledChooserStopsTheRun) {
  Load(2);
  Add(0, 1);
  Boxes(true, false, false);

  for (const char* button : {"Compute", "Export Data", "Surface Histo"}) {
    Click(ButtonByLabel(Ui().compareWindow, button));
  }

  EXPECT_EQ(chooserTitles.size(), 3U);
  EXPECT_EQ(TakeOutput(), "");
}

TEST_F(PairsTest, TwoRunsIntoOneFileGiveTwoHeadings) {
  Load(2);
  Add(0, 1);
  Boxes(true, false, false);

  Compute("table");
  const std::string once = Text("table.xls");
  Compute("table.xls");

  EXPECT_EQ(once.rfind(kNames + kOverlay + "\n", 0), 0U);
  EXPECT_EQ(Text("table.xls"), once + once);
}

TEST_F(PairsTest, WithoutPairsTheConsoleHasTwoLinesAndThereIsNoFile) {
  Load(2);
  Boxes(true, true, true);

  Compute("table");

  EXPECT_EQ(TakeOutput(), "nb compare0\nThat's finished !!!!\n");
  EXPECT_FALSE(fs::exists(files->Path("table.xls")));
}

TEST_F(PairsTest, OnPurposeAnExtensionInTheMiddleOfANameIsEnough) {
  Load(2);
  Add(0, 1);
  Boxes(true, false, false);

  Compute("old.xls.txt");
  Export("new.xls.txt");
  Answer(files->Path("histo.xls.txt"));
  Click(Ui().compareSurfaceHistoButton);

  for (const char* name : {"old.xls.txt", "new.xls.txt", "histo.xls.txt"}) {
    EXPECT_NE(Text(name), "") << name;
    EXPECT_FALSE(fs::exists(files->Path(std::string(name) + ".xls")));
  }
}

TEST_F(PairsTest, APairOfOneImageIsAPerfectOverlap) {
  Load(2);
  Add(1, 1);
  Boxes(true, true, true);

  Compute("table");

  std::string table = Text("table.xls");
  const std::size_t sign = table.find("-nan");  // not-a-number counts as equal with either sign
  if (sign != std::string::npos) { table.erase(sign, 1); }
  EXPECT_EQ(table,
            kNames + kOverlay + kHaussdorf + kSurface +
                "\ns1.gipl\ts1.gipl\t0\t0\t8\t0\t8.000000\t1.000000\t0.000000\t0.000000\t0.000000"
                "\t0.000000\t0\tnan\t0.000000\t8\t0.000000\t0.000000\t8\t0.000000\n");
}

TEST_F(PairsTest, NamesOfMoreThan49CharactersAreCutInTheTable) {
  const std::string name = std::string(60, 'n') + ".gipl";
  LoadFiles({files->Outline(name, 2, 1), files->Outline("b.gipl", 2, 2)});
  Add(0, 1);
  Boxes(false, false, false);

  Compute("table");

  EXPECT_EQ(Text("table.xls"), kNames + "\n" + name.substr(0, 49) + "\tb.gipl\t\n");
  EXPECT_EQ(Ui().comparePairsOutput->value(), name + " <-> b.gipl\n");
}

TEST_F(PairsTest, TheColumnsOfTheResultsTakeTheHaussdorfDistancesAsFarAsTheyHaveRoom) {
  Load(2);
  for (int i = 0; i < 30; ++i) { Add(0, 1); }
  Boxes(true, true, true);

  Compute("table");

  std::string lines;
  while (lines.size() + 9 < 200) { lines += "1.000000\n"; }
  EXPECT_EQ(Ui().resultsHauss2Column->value(), lines);
  EXPECT_EQ(Ui().resultsHaussDistColumn->value(), lines);
  EXPECT_EQ(std::string(Ui().resultsHauss1Column->value()).substr(0, 9), "0.000000\n");
  EXPECT_FALSE(Ui().resultsWindow->shown());
  EXPECT_FALSE(Ui().progressPanel->visible());
}

TEST_F(PairsTest, AColumnOfTheResultsHolds199CharactersAndNoMore) {
  LoadFiles({files->Outline("a.gipl", 0, 1), files->Outline("b.gipl", 0, 2),
             files->Outline("c.gipl", 0, 11)});
  Boxes(false, true, false);
  const auto columnOf = [&](int ofOne, int ofTen) {
    Click(ButtonByLabel(Ui().compareWindow, "Clear Field"));
    for (int i = 0; i < ofOne; ++i) { Add(0, 1); }
    for (int i = 0; i < ofTen; ++i) { Add(0, 2); }
    Ui().resultsHaussDistColumn->value("");
    Compute("table");
    return std::string(Ui().resultsHaussDistColumn->value());
  };

  EXPECT_EQ(columnOf(1, 19).size(), 199U);
  EXPECT_EQ(columnOf(20, 2).size(), 190U);  // the last line would end the 200th
}

TEST_F(PairsTest, AnImageWithoutTheLabelIsNamedOnTheErrorStream) {
  LoadFiles({files->Outline("a.gipl", 2, 1), files->Outline("other.gipl", 2, 1, 5),
             files->Outline("c.gipl", 2, 2)});
  Click(Ui().compareAllButton);
  Boxes(true, false, false);

  Compute("table");

  const std::string errors = TakeErrors();
  EXPECT_THAT(errors, HasSubstr("Label 2 does not occur in other.gipl"));
  EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), 1);
}

TEST_F(PairsTest, ATableThatCannotBeWrittenIsToldAndTheRunGoesOn) {
  Load(3);
  Add(0, 1);
  Add(0, 2);
  Boxes(true, false, false);
  fs::create_directories(files->Path("folder.xls"));

  Compute("folder.xls");

  const std::string problem = "The file cannot be written: " + files->Path("folder.xls");
  EXPECT_EQ(TakeErrors(), problem + "\n" + problem + "\n");
  EXPECT_EQ(Ui().statusOutput->value(), problem);
  EXPECT_THAT(TakeOutput(), HasSubstr("Write File #2\nThat's finished !!!!\n"));
  EXPECT_EQ(Ui().window3D->compareRecords[1].nbPixel2, 8);
}

// The export.

TEST_F(PairsTest, OnPurposeAnExportHoldsTheFirstPairAlone) {
  Load(3);
  Click(Ui().compareAllButton);
  Boxes(true, true, true);
  Compute("table");
  const std::string table = Text("table.xls");
  TakeOutput();
  gipl::WriteText(files->Path("export.xls"), "what was there before");

  Export("export");

  const std::size_t headingAndRow = table.find('\n', table.find('\n') + 1) + 1;
  EXPECT_EQ(Text("export.xls"), table.substr(0, headingAndRow));
  EXPECT_EQ(TakeOutput(), "Write File #1\nWrite File #2\nWrite File #3\nFile correctly exported\n");
}

TEST_F(PairsTest, AnExportShowsWhatEachStageFoundLast) {
  Load(3);
  Boxes(true, false, false);
  Add(0, 1);
  Compute("table");
  const std::string heading = kNames + kOverlay + kHaussdorf + kSurface + "\n";
  Export("first");
  EXPECT_EQ(Text("first.xls"),
            heading + "s0.gipl\ts1.gipl\t0\t4\t4\t4\t6.000000\t0.666667\t0.000000\t0.000000\t"
                      "0.000000\t0.000000\t0\t0.000000\t0.000000\t0\t0.000000\t0.000000\t0\t"
                      "0.000000\n");

  Click(ButtonByLabel(Ui().compareWindow, "Clear Field"));
  Add(0, 2);
  Boxes(false, true, false);
  Compute("table");
  Export("second");

  // The overlap is still that of the earlier pair.
  EXPECT_EQ(Text("second.xls"),
            heading + "s0.gipl\ts2.gipl\t0\t4\t4\t4\t6.000000\t0.666667\t0.000000\t2.000000\t"
                      "2.000000\t0.000000\t0\t0.000000\t0.000000\t0\t0.000000\t0.000000\t0\t"
                      "0.000000\n");
}

TEST_F(PairsTest, AnExportWithoutPairsIsAnEmptyFile) {
  Load(2);

  Export("export");

  EXPECT_TRUE(fs::exists(files->Path("export.xls")));
  EXPECT_EQ(Text("export.xls"), "");
  EXPECT_EQ(TakeOutput(), "File correctly exported\n");
}

TEST_F(PairsTest, OnPurposeTheNameOfAnExportGoesIntoTheGreyDialog) {
  Load(2);

  Export("export");

  EXPECT_EQ(Ui().greyFileNameInput->value(), files->Path("export"));
}

TEST_F(PairsTest, AnExportThatCannotBeWrittenIsTold) {
  Load(2);
  Add(0, 1);
  fs::create_directories(files->Path("folder.xls"));

  Export("folder.xls");

  const std::string problem = "The file cannot be written: " + files->Path("folder.xls");
  EXPECT_EQ(TakeErrors(), problem + "\n");
  EXPECT_EQ(Ui().statusOutput->value(), problem);
  EXPECT_EQ(TakeOutput(), "Write File #1\nFile correctly exported\n");
}

// The surface histogram.

TEST_F(PairsTest, TwoHistogramsIntoOneFileGiveTheLinesOfBothInTurn) {
  Load(2);
  Add(0, 1);
  Answer(files->Path("histo"));
  Click(Ui().compareSurfaceHistoButton);
  const std::string once = Text("histo.xls");
  EXPECT_EQ(TakeOutput(), "0<->1\n"
                          "Computing Surface...\n"
                          "starting forward scan\nstarting backward scan\ncomputing....\n"
                          "Computing Surface reverse...\n"
                          "starting forward scan\nstarting backward scan\ncomputing....\n"
                          "Nb point along the surface : 12\n"
                          "Number of list point: 1\nWrite File #1\ndist_offset: 1\n"
                          "Surface histogramme finished\n");

  Answer(files->Path("histo.xls"));
  Click(Ui().compareSurfaceHistoButton);

  EXPECT_THAT(chooserTitles,
              ElementsAre("Select the export file name|", "Select the export file name|"));
  EXPECT_EQ(once, "Image 1\tImage 2\t-0.000000\t1.000000\t\ns0.gipl\ts1.gipl\t8\t4\t\n");
  EXPECT_EQ(Text("histo.xls"), once + once);
}

TEST_F(PairsTest, AHistogramNamesTheImagesOfALaterExport) {
  Load(2);
  Add(1, 0);
  Answer(files->Path("histo"));
  Click(Ui().compareSurfaceHistoButton);

  Export("export");

  EXPECT_THAT(Text("export.xls"), HasSubstr("\ns1.gipl\ts0.gipl\t0\t0\t0\t"));
}

TEST_F(PairsTest, ASurfaceThatIsEmptyLeavesHeadingsAndNames) {
  LoadFiles({files->Outline("a.gipl", 2, 1), files->Outline("b.gipl", 2, 1)});
  SetLabel(9);
  Add(0, 1);
  Answer(files->Path("histo"));

  Click(Ui().compareSurfaceHistoButton);

  EXPECT_EQ(Text("histo.xls"), "Image 1\tImage 2\t\na.gipl\tb.gipl\t\n");
  EXPECT_THAT(TakeOutput(), HasSubstr("Number of list point: -1\nWrite File #1\n"
                                      "dist_offset: -1\n"));
}

TEST_F(PairsTest, TheBoxBehindTheInterfaceAsksForItsFile) {
  Load(2);
  Fl_Check_Button& box = *Ui().compareSurfaceHistoCheck;
  const auto set = [&](int value) {
    box.value(value);
    box.do_callback();
  };
  const char* name = Ui().window3D->histoFileName;
  EXPECT_FALSE(box.active());

  Answer("/d/histo");
  set(1);
  EXPECT_STREQ(name, "/d/histo.xls");
  set(1);  // cancelled
  EXPECT_STREQ(name, "/d/histo.xls");
  EXPECT_EQ(box.value(), 1);
  Answer("/d/other.xls.txt");
  set(1);
  EXPECT_STREQ(name, "/d/other.xls.txt");
  set(0);
  EXPECT_STREQ(name, "/d/other.xls.txt");
  EXPECT_EQ(chooserTitles.size(), 3U);
  Answer("/" + std::string(400, 'x'));
  set(1);
  EXPECT_EQ(alerts.size(), 1U);
  EXPECT_STREQ(name, "/d/other.xls.txt");
}

TEST_F(PairsTest, TheBinsBehindTheInterfaceAreExportedBesideTheTable) {
  Load(3);
  Click(Ui().compareAllButton);
  Boxes(true, false, false);
  Compute("table");
  TakeOutput();
  Fl_Check_Button& box = *Ui().compareSurfaceHistoCheck;
  box.value(1);
  Answer(files->Path("bins"));
  box.do_callback();

  Export("export");

  std::string zeros;
  for (int i = 0; i < 26; ++i) { zeros += "\t0"; }
  EXPECT_EQ(Text("bins.xls"), measure::BinHeading() + "s0.gipl\ts1.gipl" + zeros + "\n");
  EXPECT_EQ(TakeOutput(), "Write File #1\nWrite File #2\nWrite File #3\nFile correctly exported\n");
}

}  // namespace
