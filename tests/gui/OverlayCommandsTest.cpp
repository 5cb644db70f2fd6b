// "Overlay Result" and "Overlay 3D": fields, legend, surfaces and the pixels that are drawn of them.
#include "tests/gui/View3DScene.h"
#include "tests/support/PanelWatch.h"
#include "ui/ColorLegend.h"

#include <FL/Fl_Box.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Choice.H>
#include <FL/Fl_Group.H>
#include <FL/Fl_Output.H>
#include <FL/Fl_Roller.H>
#include <FL/Fl_Round_Button.H>
#include <vtkCellArray.h>
#include <vtkDataArray.h>
#include <vtkPoints.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr int kSide = 20;
constexpr std::array<int, 3> kDims = {kSide, kSide, kSide};
constexpr int kLabel = 2;

class OverlayCommandsTest : public View3DScene {
protected:
  void Load(const Voxels& a, const Voxels& b) {
    AddImage(kDims, {1, 1, 1}, a);
    AddImage(kDims, {1, 1, 1}, b);
    for (Fl_Choice* choice : {Ui().image1Choice, Ui().image2Choice}) {
      choice->add("a");
      choice->add("b");
    }
    Ui().image1Choice->value(0);
    Ui().image2Choice->value(1);
    View().AllocateVolumes(kSide, kSide, kSide);
    SetLabel(kLabel);
    Crosshairs(false);
    TakeErrors();
  }
  /// Two balls along x that overlap.
  void LoadBalls() { Load(Ball(7, 10, 10, 5, kLabel), Ball(12, 10, 10, 5, kLabel)); }

  /// Plates across the line of sight, each from one z to another.
  static Voxels Plates(const std::vector<std::array<int, 2>>& depths) {
    return [depths](int x, int y, int z) {
      const bool within = std::min(x, y) >= 4 && std::max(x, y) <= 15;
      return within && std::any_of(depths.begin(), depths.end(),
                                   [z](const auto& d) { return z >= d[0] && z <= d[1]; })
                 ? kLabel
                 : 0;
    };
  }

  void OverlayResult() { Click(Ui().overlayResult3DButton); }
  void Overlay3D() { Click(ButtonByLabel(Ui().measuresGroup, "Overlay 3D")); }

  /// The ratio's text under each of the three settings.
  std::array<std::string, 3> Ratios() {
    Fl_Round_Button* const radios[] = {Ui().overlapUnionAverageRadio,
                                       Ui().overlapUnionIntersectRadio, Ui().overlapUnionARadio};
    std::array<std::string, 3> texts;
    for (std::size_t i = 0; i < 3; ++i) {
      radios[i]->setonly();
      OverlayResult();
      texts[i] = Ui().overlapRatio3DOutput->value();
    }
    return texts;
  }
  static std::string Text(const Fl_Output* output) { return output->value(); }
  using Texts = std::array<std::string, 3>;

  /// Whether red, green or blue leads at a pixel of the view; ' ' for the background.
  static char Lead(const Pixel& p) {
    if (p.red + p.green + p.blue == 0) { return ' '; }
    if (p.red > p.green + 40 && p.red > p.blue + 40) { return 'r'; }
    if (p.green > p.red + 40 && p.green > p.blue + 40) { return 'g'; }
    return p.blue > p.red + 40 && p.blue > p.green + 40 ? 'b' : '?';
  }
  /// The colour where a place of the volume appears in the view that was not turned.
  char LeadAt(double x, double y) {
    const auto at = [this](double place, int axis, int size) {
      const float* centre = View().viewCentre;
      return static_cast<int>(((place - centre[axis]) / (4.0 * View().viewExtent[axis]) + 0.5) *
                              size);
    };
    return Lead(PixelOf(&View(), at(x, 0, View().w()), at(y, 1, View().h())));
  }
};

// Fields.

TEST_F(OverlayCommandsTest, IdenticalImagesOverlapByOneUnderEverySetting) {
  Load(Ball(9, 9, 9, 5, kLabel), Ball(9, 9, 9, 5, kLabel));

  EXPECT_EQ(Ratios(), (Texts{"1.000000", "1.000000", "1.000000"}));
  EXPECT_EQ(Text(Ui().nbPixelAOutput), "0");
  EXPECT_EQ(Text(Ui().nbPixelBOutput), "0");
  EXPECT_NE(Text(Ui().intersect3DOutput), "0");
  EXPECT_EQ(Text(Ui().unionMinusIntersectOutput), "0");
}

TEST_F(OverlayCommandsTest, DisjointImagesOverlapByNothingUnderEverySetting) {
  Load(Ball(4, 4, 4, 3, kLabel), Ball(14, 14, 14, 3, kLabel));

  EXPECT_EQ(Ratios(), (Texts{"0.000000", "0.000000", "0.000000"}));
  EXPECT_EQ(Text(Ui().intersect3DOutput), "0");
}

TEST_F(OverlayCommandsTest, OnPurposeWithoutTheLabelTheRatioShowsTheFieldBeforeIt) {
  LoadBalls();
  SetLabel(77);

  EXPECT_EQ(Ratios(), (Texts{"0", "0", "0"}));
  for (const Fl_Output* field : {Ui().nbPixelAOutput, Ui().nbPixelBOutput, Ui().intersect3DOutput,
                                 Ui().unionMinusIntersectOutput}) {
    EXPECT_EQ(Text(field), "0");
  }
}

TEST_F(OverlayCommandsTest, OnPurposeARegionInBAloneHasNoRatioToA) {
  Load([](int, int, int) { return 0; },
       [](int x, int y, int z) { return x < 5 && y < 3 && z < 1 ? kLabel : 0; });

  EXPECT_EQ(Ratios(), (Texts{"0.000000", "0.000000", "15"}));
  EXPECT_EQ(Text(Ui().nbPixelBOutput), "15");
  EXPECT_EQ(Text(Ui().unionMinusIntersectOutput), "15");
}

TEST_F(OverlayCommandsTest, OnPurposeAnOddSumIsTruncatedBeforeTheDivision) {
  // A has 5 voxels, B 4, and 3 are common: the average 4.5 counts as 4.
  Load([](int x, int y, int z) { return x < 5 && y == 0 && z == 0 ? kLabel : 0; },
       [](int x, int y, int z) { return x >= 2 && x < 6 && y == 0 && z == 0 ? kLabel : 0; });

  EXPECT_EQ(Ratios(), (Texts{"0.750000", "0.500000", "0.600000"}));
  EXPECT_EQ(Text(Ui().nbPixelAOutput), "2");
  EXPECT_EQ(Text(Ui().nbPixelBOutput), "1");
  EXPECT_EQ(Text(Ui().intersect3DOutput), "3");
  EXPECT_EQ(Text(Ui().unionMinusIntersectOutput), "3");
}

TEST_F(OverlayCommandsTest, WithoutASettingTheRatioShowsTheFieldBeforeIt) {
  Load([](int x, int, int) { return x < 2 ? kLabel : 0; },
       [](int x, int, int) { return x < 3 ? kLabel : 0; });
  for (Fl_Round_Button* radio :
       {Ui().overlapUnionAverageRadio, Ui().overlapUnionIntersectRadio, Ui().overlapUnionARadio}) {
    radio->value(0);
  }

  OverlayResult();

  EXPECT_EQ(Text(Ui().unionMinusIntersectOutput), "400");
  EXPECT_EQ(Text(Ui().overlapRatio3DOutput), "400");
}

TEST_F(OverlayCommandsTest, TheThreeSurfacesComeWithoutNumbers) {
  LoadBalls();

  Overlay3D();

  for (const Fl_Output* field : {Ui().nbPixelAOutput, Ui().nbPixelBOutput, Ui().intersect3DOutput,
                                 Ui().unionMinusIntersectOutput, Ui().overlapRatio3DOutput}) {
    EXPECT_EQ(Text(field), "");
  }
}

// What stands around the picture.

TEST_F(OverlayCommandsTest, BothCommandsNameTheImagesBesideThreeColours) {
  LoadBalls();
  for (const bool three : {false, true}) {
    Ui().colorLegend->SetMode(0);
    Ui().updateColorButton->activate();
    for (Fl_Box* text : {Ui().legendTextMaxOutside, Ui().legendTextOutside, Ui().legendTextZero,
                         Ui().legendTextInside, Ui().legendTextMaxInside}) {
      text->label("before");
    }

    three ? Overlay3D() : OverlayResult();

    EXPECT_EQ(Ui().colorLegend->mode, 2);
    EXPECT_STREQ(Ui().legendTextMaxOutside->label(), "Image 1");
    EXPECT_STREQ(Ui().legendTextOutside->label(), "");
    EXPECT_STREQ(Ui().legendTextZero->label(), "Img1 + Img2");
    EXPECT_STREQ(Ui().legendTextInside->label(), "");
    EXPECT_STREQ(Ui().legendTextMaxInside->label(), "Image 2");
    EXPECT_FALSE(Ui().updateColorButton->active());
    EXPECT_FALSE(Ui().progressPanel->visible());
    EXPECT_EQ(View().displayedSurfaces, three ? 3 : 1);
    EXPECT_NE(View().damage(), 0);
    EXPECT_NE(Ui().colorLegend->damage(), 0);
    EXPECT_TRUE((Ui().mainWindow->damage() & FL_DAMAGE_ALL) != 0);
  }
}

TEST_F(OverlayCommandsTest, BothCommandsFillTheBarPlaneByPlaneThenCompute) {
  LoadBalls();
  for (const bool three : {false, true}) {
    const PanelWatch watch(Ui());

    three ? Overlay3D() : OverlayResult();

    std::vector<std::pair<std::string, int>> expected;
    float width = 0.0F;
    for (int z = 0; z < kSide; ++z) {
      width = static_cast<float>(width + 290.0 / kSide);
      expected.emplace_back("Starting Overlay Result 3D", static_cast<int>(width));
    }
    expected.emplace_back("Computing point...", expected.back().second);
    // Before the first plane the bar is still empty.
    ASSERT_GE(watch.states.size(), expected.size());
    const auto first = watch.states.end() - static_cast<std::ptrdiff_t>(expected.size());
    EXPECT_EQ((std::vector<std::pair<std::string, int>>(first, watch.states.end())), expected);
    for (auto state = watch.states.begin(); state != first; ++state) {
      EXPECT_EQ(*state, (std::pair<std::string, int>("Starting Overlay Result 3D", 0)));
    }
  }
}

TEST_F(OverlayCommandsTest, TheTwoCheckBoxesAreRemembered) {
  LoadBalls();
  Ui().smoothingCheck->value(0);
  Ui().decimationCheck->value(1);

  OverlayResult();

  EXPECT_EQ(View().smoothingOn, 0);
  EXPECT_EQ(View().decimationOn, 1);
}

TEST_F(OverlayCommandsTest, OneSurfaceReplacesThree) {
  LoadBalls();
  Overlay3D();

  OverlayResult();

  EXPECT_NE(Surfaces().strips1, nullptr);
  EXPECT_EQ(Surfaces().strips2, nullptr);
  EXPECT_EQ(Surfaces().strips3, nullptr);
  EXPECT_EQ(Surfaces().volume1, Ui().displayVolume1);
}

TEST_F(OverlayCommandsTest, TheCommonRegionIsSurfaceOneThenImageOneThenImageTwo) {
  LoadBalls();

  Overlay3D();

  EXPECT_EQ(Surfaces().volume1, Ui().displayVolume3);
  EXPECT_EQ(Surfaces().volume2, Ui().displayVolume1);
  EXPECT_EQ(Surfaces().volume3, Ui().displayVolume2);
  double common[6];
  double first[6];
  double second[6];
  Surfaces().points1->GetBounds(common);
  Surfaces().points2->GetBounds(first);
  Surfaces().points3->GetBounds(second);
  EXPECT_LT(first[0], common[0]);
  EXPECT_LT(common[1], second[1]);
  EXPECT_LT(common[1] - common[0], first[1] - first[0]);
}

// Pixels.

TEST_F(OverlayCommandsTest, OverlayResultIsRedWhereAIsGreenWhereBIsAndBlueWhereBothAre) {
  // Bars along x: A from 2 to 12, B from 8 to 18.
  const auto bar = [](int from, int to) {
    return [from, to](int x, int y, int z) {
      return x >= from && x <= to && y >= 7 && y <= 13 && z >= 7 && z <= 13 ? kLabel : 0;
    };
  };
  Load(bar(2, 12), bar(8, 18));

  OverlayResult();

  EXPECT_EQ(LeadAt(5, 10), 'r');
  EXPECT_EQ(LeadAt(10, 10), 'b');
  EXPECT_EQ(LeadAt(15, 10), 'g');
  EXPECT_EQ(LeadAt(10, 3), ' ');
  EXPECT_EQ(LeadAt(10, 17), ' ');
}

TEST_F(OverlayCommandsTest, TheRollersUncoverWhatLiesBehind) {
  // From the eye down: B alone, A alone, both.
  Load(Plates({{11, 13}, {5, 9}}), Plates({{15, 17}, {5, 9}}));
  Overlay3D();
  EXPECT_EQ(Lead(Middle()), 'g');

  Slide(Ui().surface3OpacityRoller, 0);
  EXPECT_EQ(Lead(Middle()), 'r');
  Slide(Ui().surface2OpacityRoller, 0);
  EXPECT_EQ(Lead(Middle()), 'b');
}

TEST_F(OverlayCommandsTest, OnPurposeAnUnseenSurfaceStillHidesWhatIsDrawnAfterIt) {
  // From the eye down: A alone, B alone. A is drawn first: there is no sorting by depth.
  Load(Plates({{15, 17}}), Plates({{5, 9}}));
  Overlay3D();
  EXPECT_EQ(Lead(Middle()), 'r');

  Slide(Ui().surface2OpacityRoller, 0);

  EXPECT_EQ(Lead(Middle()), ' ');
  EXPECT_NE(Surfaces().strips3, nullptr);
}

TEST_F(OverlayCommandsTest, ATranslucentSurfaceMixesWithWhatIsBehindIt) {
  Load(Ball(9.5, 9.5, 9.5, 5, kLabel), Ball(9.5, 9.5, 9.5, 8, kLabel));
  Overlay3D();
  const Pixel solid = Middle();
  Slide(Ui().surface3OpacityRoller, 0);
  const Pixel behind = Middle();

  for (const double percent : {25.0, 50.0, 75.0}) {
    Slide(Ui().surface3OpacityRoller, percent);
    const Pixel mixed = Middle();

    const double share = percent / 100;
    EXPECT_NEAR(mixed.red, share * solid.red + (1 - share) * behind.red, 3) << percent;
    EXPECT_NEAR(mixed.green, share * solid.green + (1 - share) * behind.green, 3) << percent;
    EXPECT_NEAR(mixed.blue, share * solid.blue + (1 - share) * behind.blue, 3) << percent;
  }
}

TEST_F(OverlayCommandsTest, TurnedByHalfACircleTheOtherSideShows) {
  Load(Plates({{13, 17}}), Plates({{2, 6}}));
  OverlayResult();
  EXPECT_EQ(Lead(Middle()), 'r');
  viewState->SetCursor(10, 10, 10);
  Press(&View(), 100, 100);
  Release(&View(), 100, 100);

  View().trackball.rotation[0] = -1.0F;
  View().trackball.rotation[10] = -1.0F;

  EXPECT_EQ(Lead(Middle()), 'g');
}

}  // namespace
