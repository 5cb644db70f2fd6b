// The distance measures while they run: the panel, and what a user does meanwhile.
#include "tests/gui/DistanceStudy.h"
#include "tests/support/StudyFiles.h"
#include "ui/Plot.h"
#include "view3d/Window3D.h"

#include <cstdio>
#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

namespace {

struct Command {
  const char* name;
  Fl_Button* MainUI::*button;
  int steps;  ///< in a volume of 24 x 20 x 18
  std::vector<std::string> messages;
};

const Command kDanielsson = {"Danielsson 3D",
                             &MainUI::danielsson3DButton,
                             2 * (24 + 18) - 3,
                             {"Starting Display of Danielsson 3D...", "Starting forward scan",
                              "Computing display points", "Computing point..."}};
const Command kHaussdorf = {"Haussdorf 3D",
                            &MainUI::haussdorf3DButton,
                            (18 + 24) * 4 - 6,
                            {"Starting Haussdorf 3D", "Starting forward scan",
                             "Computing Haussdorf distance A->B", "Starting forward scan",
                             "Computing Haussdorf distance B->A", "Computing display points"}};
const Command kSurfaceDistance = {"Surface distance",
                                  &MainUI::surfaceDistanceButton,
                                  2 * 18 + 6 * 24 - 5,
                                  {"Start computing surface distance...", "Finding surface...",
                                   "Starting Danielsson 3D...", "Starting forward scan",
                                   "Computing distances along the surface...",
                                   "Computing display points..."}};
const Command kUpdateColor = {
    "Update Color", &MainUI::updateColorButton, 24, {"Updating colors ...", "Computing point..."}};
const Command kCommands[] = {kDanielsson, kHaussdorf, kSurfaceDistance};

class DistanceRunsTest : public DistanceStudy {
protected:
  void SetUp() override {
    DistanceStudy::SetUp();
    LoadBoxes();
    Ui().danielsson3DSlider->value(3);
  }
  void Run(const Command& command) { Click(Ui().*command.button); }

  std::vector<std::uint8_t> Colours() {
    std::vector<std::uint8_t> bytes;
    for (int x = 0; x < 24; ++x) {
      for (int y = 0; y < 20; ++y) {
        for (int z = 0; z < 18; ++z) {
          bytes.push_back(static_cast<std::uint8_t>(Colour(x, y, z)));
        }
      }
    }
    return bytes;
  }
};

// The panel.

void ExpectPanel(MainUI& ui, const Command& command, const std::vector<std::string>& messages,
                 const std::vector<int>& widths) {
  SCOPED_TRACE(command.name);
  EXPECT_THAT(messages, ElementsAreArray(command.messages));
  EXPECT_EQ(ui.progressRange->maximum(), command.steps);
  std::vector<int> expected;
  float width = 0.0F;
  for (int step = 0; step < command.steps; ++step) {
    width = static_cast<float>(width + 290.0 / command.steps);
    expected.push_back(static_cast<int>(width));
  }
  EXPECT_THAT(widths, ElementsAreArray(expected));
  EXPECT_NEAR(expected.back(), 290, 1);
  EXPECT_FALSE(ui.progressPanel->visible());
}

TEST_F(DistanceRunsTest, ThePanelShowsEveryMessageAndABarThatGrowsStepByStep) {
  for (const Command& command : {kDanielsson, kHaussdorf, kSurfaceDistance, kUpdateColor}) {
    std::vector<std::string> messages;
    std::vector<int> widths;
    Watch([&](int /*pump*/) {
      EXPECT_TRUE(Ui().progressPanel->visible());
      const std::string text = Ui().progressText->value();
      if (messages.empty() || messages.back() != text) { messages.push_back(text); }
      // A pump that only shows a message leaves the bar as it is.
      if (static_cast<int>(widths.size()) < command.steps) {
        const bool messageOnly = text == "Computing display points" && command.steps == 162;
        if (!messageOnly) { widths.push_back(Ui().progressBar->w()); }
      }
    });
    Run(command);
    Watch(nullptr);
    ExpectPanel(Ui(), command, messages, widths);
  }
}

TEST_F(DistanceRunsTest, TheConsoleTellsTheScans) {
  Run(kSurfaceDistance);
  EXPECT_THAT(TakeOutput(),
              testing::StartsWith("starting forward scan\nstarting backward scan\n"
                                  "Display Danielsson 3D\ncomputing....\nGenerate\n"));
  Run(kDanielsson);
  EXPECT_THAT(TakeOutput(), testing::StartsWith("starting forward scan\nstarting backward scan\n"
                                                "Display Danielsson 3D\n"));
}

// Image 1.

TEST_F(DistanceRunsTest, Image1HoldsItsShellWhileItIsTransformedAndIsWholeAfterwards) {
  const auto before = LabelsOf(0);
  bool shellSeen = false;
  Watch([&](int /*pump*/) {
    if (std::string(Ui().progressText->value()) != "Starting forward scan") { return; }
    const LabelVolume labels = Ui().images[0]->Labels();
    const bool restored = labels.At(5, 5, 5) == kLabel;
    if (restored) { return; }
    shellSeen = true;
    EXPECT_EQ(labels.At(4, 8, 8), kLabel);
    EXPECT_EQ(labels.At(8, 8, 8), 0);
    EXPECT_EQ(labels.At(21, 16, 15), 0) << "other labels are gone for the moment";
  });

  Run(kSurfaceDistance);

  EXPECT_TRUE(shellSeen);
  EXPECT_EQ(LabelsOf(0), before);
}

TEST_F(DistanceRunsTest, Image1IsUnchangedAfterEveryCommandAlsoWhereBothImagesAreTheSame) {
  for (const int second : {0, 1}) {
    Choose(Ui().image2Choice, second);
    const auto first = LabelsOf(0);
    const auto other = LabelsOf(1);
    for (const int label : {0, kLabel, 7, 9}) {
      SetLabel(label);
      for (const Command& command : kCommands) {
        Run(command);
        ASSERT_EQ(LabelsOf(0), first) << command.name << " " << label;
        ASSERT_EQ(LabelsOf(1), other) << command.name << " " << label;
      }
    }
  }
}

// What a user does meanwhile.

TEST_F(DistanceRunsTest, AnotherLabelOrImageChosenDuringARunCountsFromTheNextOneOn) {
  FillBox(1, {2, 2, 2}, {3, 3, 3}, 7);
  for (const Command& command : {kHaussdorf, kSurfaceDistance}) {
    SetLabel(kLabel);
    Run(command);
    const auto fields = Fields();
    const auto colours = Colours();
    for (const int moment : {1, 20, 30, 60, 90, 120}) {
      SCOPED_TRACE(std::string(command.name) + " " + std::to_string(moment));
      SetLabel(kLabel);
      Choose(Ui().image1Choice, 0);
      Choose(Ui().image2Choice, 1);
      Watch([&](int pump) {
        if (pump != moment) { return; }
        SetLabel(7);
        Choose(Ui().image1Choice, 1);
        Choose(Ui().image2Choice, 0);
        Slide(Ui().cursorSlider[1], 3);
      });
      Run(command);
      EXPECT_GE(pumps, moment);
      Watch(nullptr);

      EXPECT_THAT(Fields(), ElementsAreArray(fields));
      EXPECT_EQ(Colours(), colours);
    }
    Choose(Ui().image1Choice, 0);
    Choose(Ui().image2Choice, 1);
  }
}

TEST_F(DistanceRunsTest, ACommandClickedDuringAnotherLeavesTheNumbersOfBothRight) {
  const auto labels = LabelsOf(0);
  for (const Command& outer : kCommands) {
    Run(outer);
    const auto colours = Colours();
    for (const Command& inner : kCommands) {
      Run(inner);
      Run(outer);
      const auto fields = Fields();
      for (const int moment : {1, 12, 25, 40, 70}) {
        SCOPED_TRACE(std::string(outer.name) + ", " + inner.name + " at " + std::to_string(moment));
        Watch([&](int pump) {
          if (pump == moment) { Run(inner); }
        });
        Run(outer);
        EXPECT_GE(pumps, moment);
        Watch(nullptr);

        EXPECT_THAT(Fields(), ElementsAreArray(fields));
        EXPECT_EQ(Colours(), colours);
        EXPECT_EQ(LabelsOf(0), labels);
        EXPECT_FALSE(Ui().progressPanel->visible());
        const bool canUpdate = outer.button == kSurfaceDistance.button;
        EXPECT_EQ(Ui().updateColorButton->active() != 0, canUpdate);
      }
    }
  }
  EXPECT_THAT(alerts, IsEmpty());
}

/// The text of a table file, and nothing left of it.
std::string TakeTable(const std::string& path) {
  std::string text = files::TextOf(path);
  std::remove(path.c_str());
  return text;
}

TEST_F(DistanceRunsTest, AConfusionMatrixDuringARunCountsWholeImagesAndLeavesTheRunItsSizes) {
  const std::string table = Scratch() + "/matrix.xls";
  Ui().greyXdimInput->value(40);  // a third image that is larger: its sizes must not stay
  LoadSegByHand(Scratch() + "/seg1.raw");
  Choose(Ui().image1Choice, 0);
  Choose(Ui().image2Choice, 1);
  SetLabel(kLabel);
  Slide(Ui().imageSlider, 2);
  ASSERT_EQ(Ui().images[2]->GetDimX(), 40);
  const auto writeTable = [&] {
    chooserAnswers.emplace_back(table);
    Click(Ui().confusionMatrixButton);
  };
  writeTable();
  const std::string expected = TakeTable(table);
  ASSERT_FALSE(expected.empty());

  for (const Command& command : kCommands) {
    Slide(Ui().imageSlider, 0);
    Run(command);
    const auto fields = Fields();
    const auto colours = Colours();
    for (const int moment : {1, 12, 25, 40, 70}) {
      SCOPED_TRACE(std::string(command.name) + " at " + std::to_string(moment));
      Slide(Ui().imageSlider, 0);
      Watch([&](int pump) {
        if (pump != moment) { return; }
        Slide(Ui().imageSlider, 2);
        writeTable();
      });
      Run(command);
      EXPECT_GE(pumps, moment);
      Watch(nullptr);

      EXPECT_EQ(TakeTable(table), expected);
      EXPECT_THAT(Fields(), ElementsAreArray(fields));
      EXPECT_EQ(Colours(), colours);
    }
  }
  EXPECT_THAT(alerts, IsEmpty());
}

TEST_F(DistanceRunsTest, APlotDuringARunCountsWholeImages) {
  Ui().plotXCheck->value(0);
  Ui().plotYCheck->value(0);
  Ui().plotZCheck->value(1);
  Ui().PlotWholeRange();
  ASSERT_EQ(Ui().plot->curve1[8], 81.0F);  // a slice of the outer box; 32 of its shell
  bool altered = false;
  Watch([&](int /*pump*/) {
    altered = altered || Ui().images[0]->Labels().At(8, 8, 8) != kLabel;
    Ui().PlotWholeRange();
    ASSERT_EQ(Ui().plot->curve1[8], 81.0F);
  });

  Run(kSurfaceDistance);

  EXPECT_TRUE(altered);
  EXPECT_STREQ(Ui().sumDistInsideOutput->value(), "218.000000");
}

TEST_F(DistanceRunsTest, UpdateColorDoesNotBecomeActiveByASurfaceDistanceInsideAnotherCommand) {
  for (Fl_Button* outer :
       {Ui().overlayResult3DButton, Ui().danielsson3DButton, Ui().haussdorf3DButton}) {
    for (const int moment : {1, 10, 18, 19}) {
      Watch([&](int pump) {
        if (pump == moment) { Run(kSurfaceDistance); }
      });
      Click(outer);
      EXPECT_GE(pumps, moment);
      Watch(nullptr);
      EXPECT_FALSE(Ui().updateColorButton->active()) << outer->label() << " at " << moment;
    }
  }
}

TEST_F(DistanceRunsTest, UpdateColorInsideAFurtherSurfaceDistanceSpoilsNothing) {
  Run(kSurfaceDistance);
  const auto fields = Fields();
  const auto colours = Colours();
  for (const int moment : {1, 30, 60, 100, 140}) {
    Watch([&](int pump) {
      if (pump == moment) { Run(kUpdateColor); }
    });
    Run(kSurfaceDistance);
    Watch(nullptr);
    EXPECT_THAT(Fields(), ElementsAreArray(fields));
    EXPECT_EQ(Colours(), colours);
  }
}

TEST_F(DistanceRunsTest, ALoadDuringARunIsRefusedAndTheRunGoesOn) {
  for (const Command& command : kCommands) {
    alerts.clear();
    Watch([&](int pump) {
      if (pump == 5) { Click(Ui().segLoadButton); }
    });
    Run(command);
    Watch(nullptr);
    EXPECT_THAT(alerts, ElementsAre("A command is running: wait until it has ended"));
    EXPECT_EQ(Ui().imageCount, 2);
  }
  EXPECT_STREQ(Ui().haussdorf3DBAOutput->value(), "4.000000");
}

}  // namespace
