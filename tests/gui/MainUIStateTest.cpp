// The state beside the widgets: title, texts, labels, progress, what a new study clears.
#include "VoxData/VoxData.h"
#include "tests/support/Interface.h"
#include "view3d/Window3D.h"

#include <FL/Fl_Box.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Choice.H>
#include <FL/Fl_Group.H>
#include <FL/Fl_Output.H>
#include <FL/Fl_Scrollbar.H>
#include <FL/Fl_Slider.H>
#include <FL/Fl_Value_Input.H>

#include <gmock/gmock.h>
#include <string>

using testing::EndsWith;
using testing::StartsWith;

namespace {

class MainUIStateTest : public Interface {};

// Title. Its two parts are kept for the whole run, so a test gives both.

TEST_F(MainUIStateTest, OnPurposeTheTitleIsComposedAndNeverShown) {
  Ui().SetTitleParts("grey.gipl", "seg.gipl");
  EXPECT_STREQ(Ui().ComposedTitle(), "grey.gipl - seg.gipl");

  Ui().SetTitleParts(nullptr, "other.gipl");
  EXPECT_STREQ(Ui().ComposedTitle(), "grey.gipl - other.gipl");
  Ui().SetTitleParts("new.gipl", nullptr);
  EXPECT_STREQ(Ui().ComposedTitle(), "new.gipl - other.gipl");
  EXPECT_STREQ(Ui().mainWindow->label(), "Tolvex 1.0");
}

TEST_F(MainUIStateTest, ATitlePartIsCutAt99Characters) {
  const std::string grey(150, 'g');
  const std::string seg(150, 's');

  Ui().SetTitleParts(grey.c_str(), seg.c_str());

  EXPECT_EQ(Ui().ComposedTitle(), std::string(99, 'g') + " - " + std::string(99, 's'));
}

// Cursor and texts.

TEST_F(MainUIStateTest, SyncCursorSlidersMovesSlidersAndTexts) {
  const int sizes[3] = {10, 20, 30};
  for (int axis = 0; axis < 3; ++axis) { Ui().sliceDims[axis] = sizes[axis]; }
  viewState->SetCursor(1, 2, 3);

  Ui().SyncCursorSliders();

  EXPECT_EQ(Ui().cursorSlider[0]->value(), 1);
  EXPECT_EQ(Ui().cursorSlider[1]->value(), 2);
  EXPECT_EQ(Ui().cursorSlider[2]->value(), 3);
  EXPECT_STREQ(Ui().sliceOutput[0]->value(), "2 of 10");
  EXPECT_STREQ(Ui().sliceOutput[1]->value(), "3 of 20");
  EXPECT_STREQ(Ui().sliceOutput[2]->value(), "4 of 30");
}

TEST_F(MainUIStateTest, UpdateSliceTextWritesOneAxis) {
  Ui().sliceDims[1] = 7;
  Ui().cursorSlider[1]->value(2);

  Ui().UpdateSliceText(1);

  EXPECT_STREQ(Ui().sliceOutput[1]->value(), "3 of 7");
  EXPECT_STREQ(Ui().sliceOutput[0]->value(), "");
}

TEST_F(MainUIStateTest, ApplyDefaultsRestoresToolOriginAndSpacing) {
  viewState->SetToolMode(3);
  Ui().moveToolButton->value(0);
  Ui().greyOriginXChoice->value(1);
  Ui().greyOriginYChoice->value(0);
  Ui().greyOriginZChoice->value(0);
  Ui().greyYspacingInput->value(2.5);
  Ui().labelCopyCount = 3;
  Ui().labelCopyColours[0][1] = 9;

  Ui().ApplyDefaults();

  EXPECT_EQ(viewState->GetToolMode(), 1);
  EXPECT_EQ(Ui().moveToolButton->value(), 1);
  EXPECT_EQ(Ui().greyOriginXChoice->value(), 0);
  EXPECT_EQ(Ui().greyOriginYChoice->value(), 1);
  EXPECT_EQ(Ui().greyOriginZChoice->value(), 1);
  EXPECT_EQ(Ui().greyYspacingInput->value(), 1.0);
  EXPECT_EQ(Ui().labelCopyCount, 20);
  EXPECT_EQ(Ui().labelCopyColours[0][1], 0);
}

TEST_F(MainUIStateTest, RefreshLabelsCopiesTheLabelTableOfTheShownImage) {
  LoadGoldenStudy("study_100_general");
  VoxData& image = *Ui().images[Ui().imageCount - 1];

  Ui().RefreshLabels();

  EXPECT_EQ(Ui().labelCopyCount, image.GetLabelCount());
  EXPECT_EQ(Ui().labelCopyIds[0], 0);
  EXPECT_EQ(Ui().labelCopyColours[0][0], 0);
  std::uint8_t rgb[3];
  char name[201];
  int filled = 1;
  for (int id = 1; id < 256 && filled < Ui().labelCopyCount; ++id) {
    if (image.GetLabel(id, rgb, name) != 1) { continue; }
    EXPECT_EQ(Ui().labelCopyIds[filled], id);
    EXPECT_EQ(Ui().labelCopyColours[filled][2], rgb[2]);
    ++filled;
  }
  EXPECT_GT(filled, 1);
  for (int i = filled; i < 256; ++i) { ASSERT_EQ(Ui().labelCopyIds[i], -1); }
}

TEST_F(MainUIStateTest, RefreshLabelsWithoutImagesOnlyClears) {
  Ui().RefreshLabels();

  for (const int id : Ui().labelCopyIds) { ASSERT_EQ(id, -1); }
}

// Progress.

TEST_F(MainUIStateTest, StartProgressShowsAnEmptyBar) {
  Ui().StartProgress(7);

  EXPECT_TRUE(Ui().progressPanel->visible());
  EXPECT_EQ(Ui().progressRange->maximum(), 7.0);
  EXPECT_EQ(Ui().progressBar->w(), 0);
  EXPECT_FALSE(Ui().progressRange->visible());
}

TEST_F(MainUIStateTest, TheBarGrowsByEqualStepsKeptAsAFloat) {
  Ui().StartProgress(7);
  float width = 0.0F;
  for (int step = 0; step < 7; ++step) {
    Ui().StepProgress();
    width = static_cast<float>(width + 290.0 / 7.0);
    EXPECT_EQ(Ui().progressBar->w(), static_cast<int>(width)) << step;
    EXPECT_EQ(Ui().window3D->progressWidth, width);
    EXPECT_EQ(Ui().progressBar->x(), 410);
    EXPECT_EQ(Ui().progressBar->y(), 380);
    EXPECT_EQ(Ui().progressBar->h(), 10);
  }
  EXPECT_EQ(Ui().progressBar->w(), 290);
}

TEST_F(MainUIStateTest, AJobWithoutStepsHasNoWidth) {
  for (const int steps : {0, -3}) {
    Ui().StartProgress(steps);
    Ui().StepProgress();
    EXPECT_EQ(Ui().progressBar->w(), 0);
  }
}

TEST_F(MainUIStateTest, AStepLetsTheToolkitHandleEvents) {
  static bool handled;
  handled = false;
  Fl::add_timeout(0.0, [](void*) { handled = true; });
  Ui().StartProgress(3);

  Ui().StepProgress();

  EXPECT_TRUE(handled);
}

TEST_F(MainUIStateTest, TheMessageStandsInThePanelUntilTheNext) {
  Ui().StartProgress(3);
  Ui().ShowProgressMessage("Computing %d point...");

  EXPECT_STREQ(Ui().progressText->value(), "Computing %d point...");
  Ui().HideProgress();
  EXPECT_FALSE(Ui().progressPanel->visible());
  EXPECT_STREQ(Ui().progressText->value(), "Computing %d point...");
}

// What a new study clears.

TEST_F(MainUIStateTest, ClearResultsEmptiesMenusTablesAndFields) {
  LoadGoldenStudy("study_100_general");
  const Fl_Group& group = *Ui().measuresGroup;
  for (int i = 0; i < group.children(); ++i) {
    if (auto* field = dynamic_cast<Fl_Output*>(group.child(i))) { field->value("1.5"); }
  }

  Ui().ClearResults();

  for (const Fl_Choice* choice :
       {Ui().image1Choice, Ui().image2Choice, Ui().compareImage1Choice, Ui().compareImage2Choice,
        Ui().plotImage1Choice, Ui().plotImage2Choice, Ui().colorLabelChoice}) {
    EXPECT_EQ(choice->value(), -1);
    EXPECT_LE(choice->size(), 1);
  }
  EXPECT_GT(Ui().plotLabel1Choice->size(), 1);
  EXPECT_GT(Ui().plotLabel2Choice->size(), 1);
  for (const int id : Ui().labelList) { ASSERT_EQ(id, 0); }
  int kept = 0;
  for (int i = 0; i < group.children(); ++i) {
    if (const auto* field = dynamic_cast<Fl_Output*>(group.child(i))) {
      kept += *field->value() != '\0' ? 1 : 0;
    }
  }
  EXPECT_EQ(kept, 9);
}

TEST_F(MainUIStateTest, OnPurposeMediansAndQuartilesSurviveANewStudy) {
  Fl_Output* const nine[] = {
      Ui().medianInsideOutput,     Ui().medianOutsideOutput,     Ui().medianOutput,
      Ui().firstQuartInsideOutput, Ui().firstQuartOutsideOutput, Ui().firstQuartOutput,
      Ui().thirdQuartInsideOutput, Ui().thirdQuartOutsideOutput, Ui().thirdQuartOutput};
  for (Fl_Output* field : nine) { field->value("2.25"); }

  Ui().ClearResults();

  for (const Fl_Output* field : nine) { EXPECT_STREQ(field->value(), "2.25"); }
}

TEST_F(MainUIStateTest, TheReferenceStateStaysAtTheFirstVoxel) {
  LoadGoldenStudy("study_100_general");
  Slide(Ui().cursorSlider[0], 5);

  EXPECT_THAT(referenceState->GetCursor(), testing::ElementsAre(0, 0, 0));
}

TEST_F(MainUIStateTest, WhatReplacesTheStudyIsRefusedWhileACommandRuns) {
  EXPECT_FALSE(Ui().RefusedWhileRunning());
  const RunningCommand running(Ui());

  EXPECT_TRUE(Ui().RefusedWhileRunning());

  EXPECT_EQ(alerts.size(), 1U);
}

}  // namespace
