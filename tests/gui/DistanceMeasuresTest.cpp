// The distance measures through their buttons: fields, pictures, legend, "Update Color", refusals.
#include "tests/gui/DistanceStudy.h"
#include "ui/ColorLegend.h"
#include "view3d/Window3D.h"

#include <FL/Fl_Roller.H>

#include <gmock/gmock.h>
#include <sstream>

using testing::Each;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

namespace {

class DistanceMeasuresTest : public DistanceStudy {
protected:
  std::vector<std::string> Nine() {
    const MainUI& ui = Ui();
    std::vector<std::string> texts;
    for (const Fl_Output* field :
         {ui.medianOutsideOutput, ui.medianInsideOutput, ui.medianOutput,
          ui.firstQuartOutsideOutput, ui.firstQuartInsideOutput, ui.firstQuartOutput,
          ui.thirdQuartOutsideOutput, ui.thirdQuartInsideOutput, ui.thirdQuartOutput}) {
      texts.emplace_back(field->value());
    }
    return texts;
  }

  void UpdateColours(const char* maxIns, const char* maxOut) {
    Ui().maxInsideInput->value(maxIns);
    Ui().maxOutsideInput->value(maxOut);
    Click(Ui().updateColorButton);
  }

  /// The lines on the error stream that speak of a label.
  static std::string LabelLines() {
    std::istringstream errors(TakeErrors());
    std::string lines;
    for (std::string line; std::getline(errors, line);) {
      if (line.rfind("Label ", 0) == 0) { lines += line + "\n"; }
    }
    return lines;
  }

  /// A button of the measures by its label and the group that it stands in.
  Fl_Widget* VolumeButton(const char* label) {
    for (int i = 0; i < Ui().measuresGroup->children(); ++i) {
      Fl_Widget* child = Ui().measuresGroup->child(i);
      if (child->y() >= 565 && child->label() != nullptr && child->label() == std::string(label)) {
        return child;
      }
    }
    return nullptr;
  }
};

// Numbers.

TEST_F(DistanceMeasuresTest, SurfaceDistanceFillsEveryFieldOfBothSides) {
  LoadBoxes();

  Click(Ui().surfaceDistanceButton);

  const MainUI& ui = Ui();
  EXPECT_STREQ(ui.sumDistInsideOutput->value(), "218.000000");
  EXPECT_STREQ(ui.nbPixelInsideOutput->value(), "218");
  EXPECT_STREQ(ui.avgInsideOutput->value(), "1.000000");
  EXPECT_STREQ(ui.sumDistOutsideOutput->value(), "4.000000");
  EXPECT_STREQ(ui.nbPixelOutsideOutput->value(), "1");
  EXPECT_STREQ(ui.avgOutsideOutput->value(), "4.000000");
  EXPECT_STREQ(ui.sumDistOutput->value(), "222.000000");
  EXPECT_STREQ(ui.nbPixelTotalOutput->value(), "219");
  EXPECT_STREQ(ui.avgDistOutput->value(), "1.013699");
  EXPECT_STREQ(ui.maxInsideInput->value(), "1.000000");
  EXPECT_STREQ(ui.maxOutsideInput->value(), "4.000000");
  EXPECT_THAT(Nine(), Each(std::string()));
}

TEST_F(DistanceMeasuresTest, MediansAndQuartilesAreReadAtTheirPositions) {
  LoadBoxes();
  Ui().medianWithSurfaceCheck->value(1);

  Click(Ui().surfaceDistanceButton);

  // One value outside: its first quartile is at position 0, which does not exist.
  EXPECT_THAT(Nine(), ElementsAre("4.000000", "1.000000", "1.000000", "0.000000", "1.000000",
                                  "1.000000", "4.000000", "1.000000", "1.000000"));
}

TEST_F(DistanceMeasuresTest, OfTwoValuesTheMedianIsTheSmallerOneAndTheThirdQuartileTheLarger) {
  LoadEmpty({24, 20, 18});
  FillBox(0, {4, 8, 8}, {4, 8, 8});
  FillBox(1, {7, 8, 8}, {7, 8, 8});
  FillBox(1, {10, 8, 8}, {10, 8, 8});
  Ui().medianWithSurfaceCheck->value(1);

  Click(Ui().surfaceDistanceButton);

  EXPECT_THAT(Nine(), ElementsAre("3.000000", "0.000000", "3.000000", "0.000000", "0.000000",
                                  "0.000000", "6.000000", "0.000000", "6.000000"));
}

TEST_F(DistanceMeasuresTest, OnPurposeWithoutTheMedianSettingTheNineFieldsKeepTheirText) {
  LoadBoxes();
  Ui().medianWithSurfaceCheck->value(1);
  Click(Ui().surfaceDistanceButton);
  const auto before = Nine();
  FillBox(1, {18, 8, 8}, {18, 8, 8});
  Ui().medianWithSurfaceCheck->value(0);

  Click(Ui().surfaceDistanceButton);

  EXPECT_THAT(Nine(), ElementsAreArray(before));
  EXPECT_STREQ(Ui().maxOutsideInput->value(), "6.000000");
}

TEST_F(DistanceMeasuresTest, IdenticalImagesLieOnEachOther) {
  LoadBoxes();
  Choose(Ui().image2Choice, 0);

  Click(Ui().surfaceDistanceButton);
  Click(Ui().haussdorf3DButton);

  const auto fields = Fields();
  EXPECT_THAT(std::vector<std::string>(fields.begin(), fields.begin() + 6),
              ElementsAre("0.000000", "0.000000", "0.000000", "0.000000", "386", "0.000000"));
  EXPECT_STREQ(Ui().nbPixelOutsideOutput->value(), "0");
  EXPECT_THAT(Ui().avgOutsideOutput->value(), testing::HasSubstr("nan"));
  EXPECT_EQ(Colour(0, 0, 0), 1) << "the mark stays where it starts";
  EXPECT_EQ(Colour(8, 8, 8), 192);
}

TEST_F(DistanceMeasuresTest, HaussdorfShowsBothDirectionsAndTheLargerOne) {
  LoadBoxes();

  Click(Ui().haussdorf3DButton);

  EXPECT_STREQ(Ui().haussdorf3DABOutput->value(), "1.732051");  // a corner of the outer box
  EXPECT_STREQ(Ui().haussdorf3DBAOutput->value(), "4.000000");  // the voxel beside it
  EXPECT_STREQ(Ui().haussdorf3DOutput->value(), "4.000000");
  EXPECT_EQ(Colour(3, 4, 4), 1) << "the mark lies before the first corner";
  EXPECT_EQ(Colour(8, 8, 8), 192);
  EXPECT_EQ(Colour(4, 8, 8), 52) << "192 - 1 * 140 / 1";
}

TEST_F(DistanceMeasuresTest, OnPurposeDistancesAreInVoxelsOfTheFirstSlotWhateverIsMeasured) {
  LoadBoxes({0.5, 1, 2});
  Ui().images[1]->SetSpacing(10.0F, 10.0F, 10.0F);

  Click(Ui().surfaceDistanceButton);
  EXPECT_STREQ(Ui().maxOutsideInput->value(), "2.000000");
  Choose(Ui().image1Choice, 1);
  Choose(Ui().image2Choice, 0);
  Click(Ui().haussdorf3DButton);
  EXPECT_STREQ(Ui().haussdorf3DABOutput->value(), "2.000000");
}

TEST_F(DistanceMeasuresTest, OnPurposeTheRollersTakeTheMaximaAndTheOpacitiesStay) {
  LoadBoxes();

  Click(Ui().surfaceDistanceButton);

  EXPECT_EQ(Ui().surface2OpacityRoller->value(), 1.0);
  EXPECT_EQ(Ui().surface3OpacityRoller->value(), 4.0);
  EXPECT_EQ(Ui().surfaceOpacity[0], 100.0F);
  EXPECT_EQ(Ui().surfaceOpacity[1], 100.0F);
}

// Danielsson 3D.

TEST_F(DistanceMeasuresTest, DanielssonShowsWhatLiesWithinTheSlidersDistanceAndAtIt) {
  LoadEmpty({24, 20, 18});
  FillBox(0, {10, 9, 8}, {10, 9, 8});
  Ui().danielsson3DSlider->value(3);

  Click(Ui().danielsson3DButton);

  EXPECT_EQ(Colour(13, 9, 8), 128) << "at the very distance";
  EXPECT_EQ(Colour(10, 12, 8), 128);
  EXPECT_EQ(Colour(12, 11, 8), 128);
  EXPECT_EQ(Colour(12, 11, 9), 128) << "exactly 3 too";
  EXPECT_EQ(Colour(14, 9, 8), 0);
  EXPECT_EQ(Colour(12, 11, 10), 0);
}

TEST_F(DistanceMeasuresTest, OnPurposeDanielssonTakesTheImageOfTheSliderAndNotImage1) {
  LoadEmpty({24, 20, 18});
  FillBox(0, {4, 4, 4}, {4, 4, 4});
  FillBox(1, {20, 15, 13}, {20, 15, 13});
  Choose(Ui().image1Choice, 0);
  Slide(Ui().imageSlider, 1);

  Click(Ui().danielsson3DButton);

  EXPECT_EQ(Colour(20, 15, 13), 128);
  EXPECT_EQ(Colour(4, 4, 4), 0);
}

TEST_F(DistanceMeasuresTest, OneSliceAlongZHasNothingButTheLabelWithinAnyDistance) {
  LoadEmpty({6, 6, 1});
  FillBox(0, {2, 2, 0}, {2, 2, 0});
  Ui().danielsson3DSlider->value(41);  // 4 * 6 * the root of 3 is 41.57

  Click(Ui().danielsson3DButton);
  EXPECT_EQ(Colour(2, 2, 0), 128);
  EXPECT_EQ(Colour(3, 2, 0), 0);

  Ui().danielsson3DSlider->value(42);
  Click(Ui().danielsson3DButton);
  EXPECT_EQ(Colour(3, 2, 0), 128);
}

TEST_F(DistanceMeasuresTest, VoxelsSoLargeThatTheStartVectorsAreShorterKeepThem) {
  LoadEmpty({6, 6, 6}, 2, {1000, 1000, 1000});
  FillBox(0, {2, 2, 2}, {2, 2, 2});
  Ui().danielsson3DSlider->value(42);

  Click(Ui().danielsson3DButton);

  EXPECT_EQ(Colour(3, 2, 2), 128) << "41.57 from a corner that does not exist";
}

// Legend.

TEST_F(DistanceMeasuresTest, EachCommandWritesItsLegend) {
  LoadBoxes();
  const auto start = Legend();
  Ui().colorLegend->SetMode(2);
  Click(Ui().danielsson3DButton);
  EXPECT_THAT(Legend(), ElementsAreArray(start)) << "Danielsson 3D leaves the legend alone";
  EXPECT_EQ(Ui().colorLegend->mode, 2);

  Click(Ui().haussdorf3DButton);
  EXPECT_THAT(Legend(), ElementsAre("Max Outside", "", "", "", "0"));
  EXPECT_EQ(Ui().colorLegend->mode, 0);

  Click(Ui().overlayResult3DButton);
  Click(Ui().surfaceDistanceButton);
  EXPECT_THAT(Legend(),
              ElementsAre("Max Outside", "Distance Outside", "0", "Distance Inside", "Max Inside"));
  EXPECT_EQ(Ui().colorLegend->mode, 0);
  Click(Ui().updateColorButton);
  EXPECT_EQ(Legend()[1], "Distance Outside");
}

// "Update Color": when it can be pressed.

const char* const kDeactivating[] = {"Overlay 3D", "Overlay Result", "Danielsson 3D",
                                     "Haussdorf 3D", "Probability"};

TEST_F(DistanceMeasuresTest, UpdateColorIsActiveAfterASurfaceDistanceAlone) {
  LoadBoxes();
  Ui().userCount = 2;
  Ui().slicesPerUser = 1;
  EXPECT_FALSE(Ui().updateColorButton->active());
  for (const char* first : kDeactivating) {
    for (const char* second : kDeactivating) {
      SCOPED_TRACE(std::string(first) + ", " + second);
      Click(VolumeButton(first));
      EXPECT_FALSE(Ui().updateColorButton->active());
      Click(Ui().surfaceDistanceButton);
      EXPECT_TRUE(Ui().updateColorButton->active());
      Click(VolumeButton(second));
      EXPECT_FALSE(Ui().updateColorButton->active());
    }
  }
  Click(Ui().surfaceDistanceButton);
  Click(Ui().surfaceDistanceButton);
  EXPECT_TRUE(Ui().updateColorButton->active());
  EXPECT_THAT(alerts, IsEmpty());
}

TEST_F(DistanceMeasuresTest, OtherCommandsLeaveUpdateColorAsItIs) {
  LoadBoxes();
  Ui().userCount = 2;
  Ui().slicesPerUser = 1;
  const std::function<void()> commands[] = {
      [&] { Click(Ui().overlay2DButton); },
      [&] { Click(Ui().complexityButton); },
      [&] { Click(Ui().danielsson2DButton); },
      [&] { Click(Ui().haussdorfButton); },
      [&] { Click(Ui().areaPerimeterButton); },
      [&] { Click(Ui().overlayIntraButton); },
      [&] { Click(Ui().overlayInterButton); },
      [&] { Click(Ui().createAverageButton); },
      [&] { Click(Ui().updateColorButton); },
      [&] { Click(ButtonByLabel(Ui().toolGroup, "Visualisation tool")); },
      [&] {
        Click(Ui().compareAllButton);
        chooserAnswers.emplace_back(Scratch() + "/pairs");
        Click(Ui().compareComputeButton);
      },
      [&] {
        chooserAnswers.emplace_back(Scratch() + "/histogram");
        Click(Ui().compareSurfaceHistoButton);
      },
  };
  for (const auto& command : commands) {
    command();
    EXPECT_FALSE(Ui().updateColorButton->active());
  }
  Click(Ui().surfaceDistanceButton);
  for (const auto& command : commands) {
    command();
    EXPECT_TRUE(Ui().updateColorButton->active());
  }
}

TEST_F(DistanceMeasuresTest, ARefusedCommandLeavesUpdateColorAsItIs) {
  LoadBoxes();
  Click(Ui().surfaceDistanceButton);
  Ui().image1Choice->value(-1);
  Ui().images[0]->dimX += 1;  // as if it were of another size

  for (const char* name : kDeactivating) {
    alerts.clear();
    Click(VolumeButton(name));
    EXPECT_THAT(alerts, testing::SizeIs(1)) << name;
    EXPECT_TRUE(Ui().updateColorButton->active()) << name;
  }
  Ui().images[0]->dimX -= 1;
}

// "Update Color": the colours.

TEST_F(DistanceMeasuresTest, TheFirstColoursRunFromTheFarthestOutsideToTheFarthestInside) {
  LoadBoxes();

  Click(Ui().surfaceDistanceButton);

  EXPECT_EQ(Colour(16, 8, 8), 64);
  EXPECT_EQ(Colour(14, 8, 8), 96);
  EXPECT_EQ(Colour(12, 8, 8), 128);
  EXPECT_EQ(Colour(11, 8, 8), 192);
  EXPECT_EQ(Colour(10, 8, 8), 0) << "OnPurpose: 128 + 2 * 64 wraps round";
  EXPECT_EQ(Colour(20, 8, 8), 0) << "128 - 8 * 16";
}

TEST_F(DistanceMeasuresTest, UpdateColorRescalesToTheMaximaInTheBoxes) {
  LoadBoxes();
  Click(Ui().surfaceDistanceButton);

  UpdateColours("4", "8");

  EXPECT_EQ(Colour(16, 8, 8), 96);
  EXPECT_EQ(Colour(12, 8, 8), 128);
  EXPECT_EQ(Colour(11, 8, 8), 144);
  EXPECT_EQ(Colour(8, 8, 8), 192) << "4 deep";
  EXPECT_EQ(Colour(21, 8, 8), 64) << "beyond 8: saturates";

  UpdateColours("1.000000", "4.000000");  // what the command itself had written

  EXPECT_EQ(Colour(16, 8, 8), 64);
  EXPECT_EQ(Colour(11, 8, 8), 192);
  EXPECT_EQ(Colour(10, 8, 8), 192) << "saturates, where the first colours wrap round";
}

TEST_F(DistanceMeasuresTest, MaximaThatDoNotReadAsNumbersCountAsZero) {
  LoadBoxes();
  Click(Ui().surfaceDistanceButton);
  for (const char* text : {"", "abc", "-", "0", "0.0", ".", "e5"}) {
    SCOPED_TRACE(text);
    UpdateColours("4", "8");
    UpdateColours(text, text);
    EXPECT_EQ(Colour(16, 8, 8), 64) << "every distance above 0 saturates";
    EXPECT_EQ(Colour(11, 8, 8), 192);
    EXPECT_EQ(Colour(12, 8, 8), 192) << "0 of 0 is no number, and not within the limit";
  }
  UpdateColours("4", "junk");
  EXPECT_EQ(Colour(11, 8, 8), 144) << "the other box still counts";
  EXPECT_EQ(Colour(16, 8, 8), 64);
}

TEST_F(DistanceMeasuresTest, MaximaAreReadAsFarAsTheyAreNumbers) {
  LoadBoxes();
  Click(Ui().surfaceDistanceButton);
  const struct {
    const char* text;
    int inside, outside;  ///< colours at 1 inside and 4 outside
  } rows[] = {{" 8", 136, 96},       {"8,5", 136, 96}, {"8 mm", 136, 96}, {"+8", 136, 96},
              {"0x8", 136, 96},      {"8e0", 136, 96}, {"inf", 128, 128}, {"1e400", 128, 128},
              {"1e-400", 192, 64},   {"nan", 192, 64}, {"-8", 120, 160},  {"-0", 0, 0},
              {"1e39junk", 128, 128}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.text);
    UpdateColours(row.text, row.text);
    EXPECT_EQ(Colour(11, 8, 8), row.inside);
    EXPECT_EQ(Colour(16, 8, 8), row.outside);
  }
}

TEST_F(DistanceMeasuresTest, NewColoursShowOnTheSurfaceThatIsDrawn) {
  LoadBoxes();
  Ui().displayCrosshairsCheck->value(0);
  Click(Ui().surfaceDistanceButton);
  const auto colourOf = [this] {
    long red = 0;
    long green = 0;
    long blue = 0;
    for (const Pixel& pixel : PixelsOf(Ui().window3D)) {
      red += pixel.red;
      green += pixel.green;
      blue += pixel.blue;
    }
    return std::array<long, 3>{red, green, blue};
  };
  const auto before = colourOf();
  EXPECT_GT(before[2], before[1]) << "the box lies inside: blue";

  UpdateColours("1000", "1000");

  const auto after = colourOf();
  EXPECT_GT(after[1], after[0]);
  EXPECT_GT(after[1], after[2]) << "all of it is near green now";
}

TEST_F(DistanceMeasuresTest, UpdateColorHidesThePanelAndLeavesTheNumbers) {
  LoadBoxes();
  Click(Ui().surfaceDistanceButton);
  const auto before = Fields();

  Click(Ui().updateColorButton);

  EXPECT_FALSE(Ui().progressPanel->visible());
  EXPECT_THAT(Fields(), ElementsAreArray(before));
  EXPECT_EQ(Ui().progressRange->maximum(), 24.0);
}

// Refusals.

TEST_F(DistanceMeasuresTest, MoreThan280VoxelsOnAnAxisAreRefusedBeforeAnythingChanges) {
  for (const Dims& dims : {Dims{281, 3, 3}, Dims{3, 281, 3}, Dims{3, 3, 281}}) {
    LoadEmpty(dims);
    FillBox(0, {1, 1, 1}, {1, 1, 1});
    FillBox(1, {1, 1, 1}, {1, 1, 1});
    const auto legend = Legend();
    for (Fl_Button* button :
         {Ui().danielsson3DButton, Ui().haussdorf3DButton, Ui().surfaceDistanceButton}) {
      alerts.clear();
      Ui().progressText->value("before");
      Click(button);
      EXPECT_THAT(alerts,
                  ElementsAre("A volume with more than 280 voxels on an axis cannot be measured"));
      EXPECT_STREQ(Ui().progressText->value(), "before");
      EXPECT_FALSE(Ui().progressPanel->visible());
    }
    EXPECT_THAT(Fields(), Each(std::string()));
    EXPECT_THAT(Legend(), ElementsAreArray(legend));
    EXPECT_EQ(TakeErrors(), "");
    EXPECT_EQ(TakeOutput(), "");
  }
}

TEST_F(DistanceMeasuresTest, AVolumeOf280VoxelsOnEachAxisInTurnIsMeasured) {
  for (const Dims& dims : {Dims{280, 3, 3}, Dims{3, 280, 3}, Dims{3, 3, 280}}) {
    LoadEmpty(dims);
    FillBox(0, {1, 1, 1}, {1, 1, 1});
    FillBox(1, {dims[0] - 2, dims[1] - 2, dims[2] - 2}, {dims[0] - 2, dims[1] - 2, dims[2] - 2});
    Click(Ui().surfaceDistanceButton);
    EXPECT_THAT(alerts, IsEmpty());
    EXPECT_STREQ(Ui().maxOutsideInput->value(), "277.000000");
  }
}

TEST_F(DistanceMeasuresTest, ImagesOfTwoSizesAreRefusedBeforeAnythingChanges) {
  LoadEmpty({12, 10, 8}, 2, {1, 1, 1}, 14);
  ASSERT_EQ(Ui().images[1]->dimX, 14);
  const auto before = LabelsOf(0);
  for (Fl_Button* button : {Ui().haussdorf3DButton, Ui().surfaceDistanceButton}) {
    alerts.clear();
    Click(button);
    EXPECT_THAT(alerts, ElementsAre("The two images have different sizes and cannot be compared"));
  }
  // Two of one size, but not that of the first slot.
  Choose(Ui().image1Choice, 1);
  Slide(Ui().imageSlider, 1);
  for (Fl_Button* button :
       {Ui().danielsson3DButton, Ui().haussdorf3DButton, Ui().surfaceDistanceButton}) {
    alerts.clear();
    Click(button);
    EXPECT_THAT(alerts, ElementsAre("The image has another size than the first image and cannot "
                                    "be measured"));
  }
  EXPECT_THAT(Fields(), Each(std::string()));
  EXPECT_EQ(LabelsOf(0), before);
  EXPECT_FALSE(Ui().updateColorButton->active());
}

TEST_F(DistanceMeasuresTest, AnImageOnTheSliderOfAnotherSizeIsRefused) {
  LoadEmpty({12, 10, 8}, 2, {1, 1, 1}, 14);
  Choose(Ui().image2Choice, 0);
  Slide(Ui().imageSlider, 1);

  Click(Ui().surfaceDistanceButton);

  EXPECT_THAT(alerts, testing::SizeIs(1));
  EXPECT_THAT(Fields(), Each(std::string()));
}

// A label that is missing.

TEST_F(DistanceMeasuresTest, AMissingLabelIsToldOnTheErrorStreamByImage) {
  LoadBoxes();
  SetLabel(7);  // in Image 1 alone
  const std::string told = "Label 7 does not occur in Image 2: what is shown is no measurement.\n";
  for (Fl_Button* button : {Ui().haussdorf3DButton, Ui().surfaceDistanceButton}) {
    Click(button);
    EXPECT_EQ(LabelLines(), told);
  }
  Slide(Ui().imageSlider, 1);
  Click(Ui().danielsson3DButton);
  EXPECT_EQ(LabelLines(),
            "Label 7 does not occur in the image on show: what is shown is no measurement.\n");

  SetLabel(9);  // in neither
  Click(Ui().surfaceDistanceButton);
  EXPECT_EQ(LabelLines(), "Label 9 does not occur in Image 1: what is shown is no measurement.\n"
                          "Label 9 does not occur in Image 2: what is shown is no measurement.\n");
  SetLabel(kLabel);
  Click(Ui().surfaceDistanceButton);
  EXPECT_EQ(LabelLines(), "");
}

TEST_F(DistanceMeasuresTest, ALabelMissingInImage1LeavesItsFieldsAtZeroAndTheMarkInTheCorner) {
  LoadBoxes();
  Choose(Ui().image1Choice, 1);
  Choose(Ui().image2Choice, 0);
  SetLabel(7);

  Click(Ui().haussdorf3DButton);

  EXPECT_STREQ(Ui().haussdorf3DABOutput->value(), "0.000000");
  EXPECT_GT(std::stod(Ui().haussdorf3DBAOutput->value()), 24.0) << "a number without a meaning";
  EXPECT_EQ(Colour(0, 0, 0), 1);
}

}  // namespace
