// "Create Average" and "Confusion Matrix" in the window: what they make, show, refuse and write.
#include "VoxData/VoxData.h"
#include "tests/support/Interface.h"
#include "tests/support/PanelWatch.h"
#include "tests/support/SmallStudy.h"
#include "ui/Fields.h"
#include "view3d/Window3D.h"

#include <FL/Fl_Box.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Choice.H>
#include <FL/Fl_Group.H>
#include <FL/Fl_Output.H>
#include <FL/Fl_Scrollbar.H>
#include <FL/Fl_Slider.H>

#include <filesystem>
#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class AveragesTest : public Interface {
protected:
  std::unique_ptr<SmallStudy> files;

  void SetUp() override {
    Interface::SetUp();
    files = std::make_unique<SmallStudy>(Scratch());
  }

  /// Loads outlines whose lengths go from 1 up.
  void Load(int users, int repeats, int segmentations) {
    chooserAnswers.emplace_back(files->List(users, repeats, files->Outlines(segmentations)));
    Menu("File/Load/Selection File");
    Settle();
    ASSERT_EQ(Ui().imageCount, segmentations);
    SetLabel(SmallStudy::kLabel);
    TakeOutput();
  }

  void Average() {
    Click(Ui().createAverageButton);
    Settle();
  }

  std::vector<std::string> EntriesFrom(const Fl_Choice* choice, int first) {
    std::vector<std::string> entries;
    for (int i = first; i + 1 < choice->size(); ++i) { entries.emplace_back(EntryText(choice, i)); }
    return entries;
  }
};

TEST_F(AveragesTest, AnAverageForEachUserJoinsEveryChooserAndTheSlider) {
  Load(2, 3, 6);

  Average();

  EXPECT_THAT(alerts, IsEmpty());
  EXPECT_EQ(Ui().imageSlider->maximum(), 7.0);
  EXPECT_EQ(Ui().imageCount, 6);  // that of the loaded segmentations
  for (const Fl_Choice* choice :
       {Ui().image1Choice, Ui().image2Choice, Ui().compareImage1Choice, Ui().compareImage2Choice,
        Ui().plotImage1Choice, Ui().plotImage2Choice}) {
    EXPECT_THAT(EntriesFrom(choice, 6), ElementsAre("average 0", "average 1"));
  }
  EXPECT_EQ(TakeOutput(), "copy....\ncopy....\n");
}

TEST_F(AveragesTest, OnPurposeTheAverageOfThreeRepeatsIsTheirUnion) {
  Load(2, 3, 6);  // lengths 1 to 3 and 4 to 6
  Average();
  Choose(Ui().image1Choice, 6);
  Choose(Ui().image2Choice, 7);

  Click(Ui().overlayResult3DButton);

  EXPECT_STREQ(Ui().nbPixelAOutput->value(), "0");
  EXPECT_STREQ(Ui().nbPixelBOutput->value(), "12");
  EXPECT_STREQ(Ui().intersect3DOutput->value(), "12");
}

TEST_F(AveragesTest, AnAverageOfFourRepeatsNeedsTwoOfThem) {
  Load(1, 4, 4);  // lengths 1 to 4: two repeats reach the third plane
  Average();
  Choose(Ui().image1Choice, 4);
  Choose(Ui().image2Choice, 3);

  Click(Ui().overlayResult3DButton);

  EXPECT_STREQ(Ui().intersect3DOutput->value(), "12");
  EXPECT_STREQ(Ui().nbPixelBOutput->value(), "4");
}

TEST_F(AveragesTest, EveryMeasureOfTwoImagesTakesAnAverage) {
  Load(2, 3, 6);
  Average();
  Choose(Ui().image1Choice, 6);
  Choose(Ui().image2Choice, 7);
  Slide(Ui().cursorSlider[2], 2);

  Click(Ui().haussdorf3DButton);
  EXPECT_STREQ(Ui().haussdorf3DOutput->value(), "3.000000");
  Click(Ui().surfaceDistanceButton);
  EXPECT_STREQ(Ui().nbPixelTotalOutput->value(), "24");
  EXPECT_STREQ(Ui().sumDistOutsideOutput->value(), "24.000000");  // 4 of 1, 2 and 3 each
  const std::string file = files->Path("matrix.xls");
  chooserAnswers.emplace_back(file);
  Click(Ui().confusionMatrixButton);
  EXPECT_EQ(SmallStudy::Text(file).rfind("average 1 - average 0\n", 0), 0U);
  Click(Ui().compareAllButton);
  EXPECT_EQ(Ui().comparePairCount, 28);
  EXPECT_THAT(alerts, IsEmpty());
}

TEST_F(AveragesTest, ASecondPressGoesOnCountingAndANewStudyBeginsAgain) {
  Load(2, 3, 6);
  Average();
  Average();
  EXPECT_THAT(EntriesFrom(Ui().image1Choice, 6),
              ElementsAre("average 0", "average 1", "average 2", "average 3"));
  EXPECT_EQ(Ui().imageSlider->maximum(), 9.0);

  Load(1, 2, 2);
  EXPECT_EQ(Ui().window3D->averageCount, 0);
  Average();

  EXPECT_THAT(EntriesFrom(Ui().image1Choice, 2), ElementsAre("average 0"));
  EXPECT_EQ(Ui().imageSlider->maximum(), 2.0);
}

TEST_F(AveragesTest, TheBarGrowsByThePlanesOfAllUsersAndTheTextCountsThemFromZero) {
  Load(2, 3, 6);
  const PanelWatch watch(Ui());

  Average();

  EXPECT_EQ(Ui().progressRange->maximum(), 10.0);  // 2 users, 5 planes
  const std::string first = "Create average for user 0...";
  const std::string second = "Create average for user 1...";
  EXPECT_THAT(watch.states,
              ElementsAre(std::pair(first, 0), std::pair(first, 29), std::pair(first, 58),
                          std::pair(first, 87), std::pair(first, 116), std::pair(first, 145),
                          std::pair(second, 145), std::pair(second, 174), std::pair(second, 203),
                          std::pair(second, 232), std::pair(second, 261), std::pair(second, 290)));
  EXPECT_FALSE(Ui().progressPanel->visible());
}

TEST_F(AveragesTest, WithoutUsersThereIsNoAverageAndNoWord) {
  Load(2, 3, 6);
  Ui().userCount = 0;

  Average();

  EXPECT_THAT(alerts, IsEmpty());
  EXPECT_EQ(Ui().imageSlider->maximum(), 5.0);
  EXPECT_EQ(Ui().window3D->averageCount, 0);
  EXPECT_FALSE(Ui().progressPanel->visible());
}

TEST_F(AveragesTest, WithoutRepeatsItSaysWhyNot) {
  Load(2, 3, 6);
  Ui().slicesPerUser = 0;

  Average();

  EXPECT_THAT(alerts, ElementsAre(HasSubstr("segmentations per user are missing")));
  EXPECT_EQ(Ui().imageSlider->maximum(), 5.0);
}

TEST_F(AveragesTest, MoreRepeatsThanLoadedAreRefusedByTheirNumbers) {
  Load(3, 3, 6);

  Average();

  EXPECT_THAT(alerts, ElementsAre("The study names 9 segmentations, but only 6 are loaded"));
  EXPECT_EQ(Ui().imageSlider->maximum(), 5.0);
  EXPECT_EQ(Ui().image1Choice->size() - 1, 6);
}

TEST_F(AveragesTest, AveragesThatFindNoSlotAreRefusedBeforeTheFirstIsMade) {
  Load(2, 29, 58);
  Average();  // slots 58 and 59
  EXPECT_THAT(alerts, IsEmpty());
  EXPECT_EQ(Ui().imageSlider->maximum(), 59.0);

  Average();

  EXPECT_THAT(alerts, ElementsAre(HasSubstr("no room for the averages")));
  EXPECT_EQ(Ui().imageSlider->maximum(), 59.0);
  EXPECT_EQ(Ui().window3D->averageCount, 2);
  EXPECT_EQ(Ui().image1Choice->size() - 1, 60);
}

TEST_F(AveragesTest, AnImageCountBelowTwoIsRefused) {
  Load(1, 1, 1);

  Average();

  EXPECT_THAT(alerts, ElementsAre("You must load at least 2 segmented images"));
}

// The confusion matrix.

TEST_F(AveragesTest, TwoRunsIntoOneFileGiveTwoBlocksWithNothingBetween) {
  Load(1, 2, 2);
  const std::string file = files->Path("matrix");
  chooserAnswers.emplace_back(file);
  Click(Ui().confusionMatrixButton);
  const std::string once = SmallStudy::Text(file + ".xls");
  chooserAnswers.emplace_back(file + ".xls");

  Click(Ui().confusionMatrixButton);

  EXPECT_EQ(once.rfind("s1.gipl - s0.gipl\n\t0\t2\n0\t352\t0\n2\t4\t4\n\n\n", 0), 0U);
  EXPECT_EQ(SmallStudy::Text(file + ".xls"), once + once);
  EXPECT_FALSE(std::filesystem::exists(file + ".xls.xls"));
}

TEST_F(AveragesTest, OnPurposeTheImageOnTheSliderGivesTheSizesOfAMatrix) {
  Load(1, 3, 3);
  const auto matrixFor = [&](int planes) {
    Ui().images[2]->dimX = planes;
    Ui().imageSlider->value(2);
    const std::string file = files->Path("matrix" + std::to_string(planes) + ".xls");
    chooserAnswers.emplace_back(file);
    Ui().confusionMatrixButton->do_callback();
    Ui().images[2]->dimX = SmallStudy::kDims[0];
    const std::string text = SmallStudy::Text(file);
    return text.substr(0, text.find("\n\n"));
  };

  // The two images begin at the third plane; the second one goes a plane further.
  EXPECT_EQ(matrixFor(3), "s1.gipl - s0.gipl\n\t0\t2\n0\t86\t0\n2\t0\t4");
  EXPECT_EQ(matrixFor(100), "s1.gipl - s0.gipl\n\t0\t2\n0\t352\t0\n2\t4\t4");
}

TEST_F(AveragesTest, AMatrixThatCannotBeWrittenIsTold) {
  Load(1, 2, 2);
  const std::string folder = files->Path("folder.xls");
  std::filesystem::create_directories(folder);
  chooserAnswers.emplace_back(folder);

  Click(Ui().confusionMatrixButton);

  EXPECT_EQ(TakeOutput(), "Not able to create the file !\n");
  EXPECT_THAT(TakeErrors(), HasSubstr(folder));
  EXPECT_STREQ(Ui().statusOutput->value(), "Not able to create the file !");
}

}  // namespace
