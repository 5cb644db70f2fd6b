// How far users agree, through the buttons: fields, pictures, surface, legend, panel.
#include "tests/gui/DistanceStudy.h"
#include "tests/slicemeasures/PlainSlices.h"
#include "ui/ColorLegend.h"
#include "view3d/Window3D.h"
#include "views/Segimage.h"

#include <FL/Fl_Round_Button.H>

#include <cmath>
#include <gmock/gmock.h>
#include <map>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr int kUsers = 2;
constexpr int kRepeats = 2;

/// Two users who outlined a box twice each, not quite alike.
class ProbabilityTest : public DistanceStudy {
protected:
  static constexpr int kSlices[3] = {12, 9, 8};

  void SetUp() override {
    DistanceStudy::SetUp();
    LoadEmpty({24, 20, 18}, kUsers * kRepeats);
    Ui().userCount = kUsers;
    Ui().slicesPerUser = kRepeats;
    Ui().overlayIntraSlider->maximum(kUsers - 1);
    FillBox(0, {5, 4, 3}, {15, 14, 12});
    FillBox(1, {6, 4, 4}, {17, 13, 12});
    FillBox(2, {8, 6, 5}, {19, 16, 14});
    FillBox(3, {8, 7, 3}, {18, 16, 13});
    for (const int axis : {0, 1, 2}) { Slide(Ui().cursorSlider[axis], kSlices[axis]); }
  }

  Fl_Widget* DirectionButton(int direction) {
    return direction == 2   ? Ui().directionXYButton
           : direction == 1 ? Ui().directionXZButton
                            : Ui().directionYZButton;
  }
  /// How many of a user's repeats mark a pixel of the slice on show.
  int Count(int user, int direction, int i, int j) {
    int count = 0;
    for (int repeat = 0; repeat < kRepeats; ++repeat) {
      const LabelVolume labels = Ui().images[user * kRepeats + repeat]->Labels();
      const int byte = plain::Byte(labels, direction, kSlices[direction], i, j);
      count += byte == kLabel ? 1 : 0;
    }
    return count;
  }
  std::string SixDigits(double value) {
    char text[40];
    std::snprintf(text, sizeof text, "%.6f", value);
    return text;
  }
  /// Holds every pixel of the picture, and of the canvas those beside the cursors' lines.
  template <class Grey>
  void ExpectPicture(Grey greyOf) {
    const Segimage& canvas = *Ui().segimage;
    EXPECT_EQ(canvas.overlayVisible, 0);
    for (int i = 0; i < canvas.sliceWidth; ++i) {
      for (int j = 0; j < canvas.sliceHeight; ++j) {
        const int grey = greyOf(i, j);
        ASSERT_EQ(canvas.result[i][j], grey) << i << ", " << j;
        const bool line =
            i == 0 || j == 0 || i == kSlices[canvas.axisX] || j == kSlices[canvas.axisY];
        if (line || i % 4 != 1 || j % 3 != 1) { continue; }
        const double x = (i + 0.5 - canvas.viewCentreX) * canvas.zoom + canvas.w() / 2.0;
        const double y = (j + 0.5 - canvas.viewCentreY) * canvas.zoom + canvas.h() / 2.0;
        const Pixel pixel = PixelOf(Ui().segimage, static_cast<int>(x), static_cast<int>(y));
        EXPECT_NEAR(pixel.red, grey / 257, 1) << i << ", " << j;
        EXPECT_NEAR(pixel.blue, grey / 257, 1) << i << ", " << j;
      }
    }
  }
};

TEST_F(ProbabilityTest, OverlayIntraShowsAndMeasuresTheChosenUserInEveryDirection) {
  for (const int direction : {0, 1, 2}) {
    for (const int user : {0, 1}) {
      Click(DirectionButton(direction));
      Ui().overlayIntraSlider->value(user);
      Ui().union2DOutput->value("");
      Click(Ui().overlayIntraButton);

      const Segimage& canvas = *Ui().segimage;
      double sum = 0.0;
      int marked = 0;
      for (int i = 0; i < canvas.sliceWidth; ++i) {
        for (int j = 0; j < canvas.sliceHeight; ++j) {
          const int count = Count(user, direction, i, j);
          sum += count / 2.0;
          marked += count > 0 ? 1 : 0;
        }
      }
      ASSERT_GT(marked, 0);
      EXPECT_EQ(Ui().probaOverlapIntraOutput->value(), SixDigits(sum / marked));
      EXPECT_STRNE(Ui().union2DOutput->value(), "");  // the overlap of Image 1 and 2 comes along
      ExpectPicture([&](int i, int j) { return 32500 * Count(user, direction, i, j); });
    }
  }
}

TEST_F(ProbabilityTest, OverlayInterShowsAndComparesBothUsersInEveryDirection) {
  for (const int direction : {0, 1, 2}) {
    Click(DirectionButton(direction));
    Ui().union2DOutput->value("");
    Click(Ui().overlayInterButton);

    const Segimage& canvas = *Ui().segimage;
    double differences = 0.0;
    double sums = 0.0;
    for (int i = 0; i < canvas.sliceWidth; ++i) {
      for (int j = 0; j < canvas.sliceHeight; ++j) {
        const int first = Count(0, direction, i, j);
        const int second = Count(1, direction, i, j);
        differences += std::abs(first / 2.0 - second / 2.0);
        sums += (first + second) / 4.0;
      }
    }
    EXPECT_EQ(Ui().probaOverlapInterOutput->value(), SixDigits(1.0 - differences / sums * 0.5));
    EXPECT_STRNE(Ui().union2DOutput->value(), "");
    ExpectPicture([&](int i, int j) {
      return 16250 * (Count(0, direction, i, j) + Count(1, direction, i, j));
    });
  }
}

TEST_F(ProbabilityTest, ASliceWithoutTheLabelHasNoProbabilityAndIsBlack) {
  SetLabel(9);
  Click(Ui().overlayIntraButton);
  EXPECT_THAT(Ui().probaOverlapIntraOutput->value(), testing::HasSubstr("nan"));
  ExpectPicture([](int, int) { return 0; });
  Click(Ui().overlayInterButton);
  EXPECT_THAT(Ui().probaOverlapInterOutput->value(), testing::HasSubstr("nan"));
  ExpectPicture([](int, int) { return 0; });
}

TEST_F(ProbabilityTest, ProbabilityColoursEachVoxelByTheImagesThatMarkIt) {
  Click(Ui().probabilityButton);

  std::map<int, int> voxels;
  const int colours[] = {0, 192, 150, 107, 64};
  for (int x = 0; x < 24; ++x) {
    for (int y = 0; y < 20; ++y) {
      for (int z = 0; z < 18; ++z) {
        int total = 0;
        for (int image = 0; image < 4; ++image) {
          total += Ui().images[image]->seg[x][y][z] == kLabel ? 1 : 0;
        }
        ASSERT_EQ(Colour(x, y, z), colours[total]);
        ++voxels[total];
      }
    }
  }
  EXPECT_EQ(voxels.size(), 5U);
  EXPECT_EQ(TakeOutput().substr(0, 14), "Probality Map\n");
  EXPECT_THAT(alerts, IsEmpty());
}

TEST_F(ProbabilityTest, ProbabilityHasALegendFromHighToLowAndNoColoursToUpdate) {
  Click(Ui().surfaceDistanceButton);
  ASSERT_NE(Ui().updateColorButton->active(), 0);

  Click(Ui().probabilityButton);

  EXPECT_THAT(Legend(), ElementsAre("High Probability", "", "", "", "Low Probability"));
  EXPECT_EQ(Ui().colorLegend->mode, 0);
  EXPECT_EQ(Ui().updateColorButton->active(), 0);
}

/// How many pixels of the 3D view are of each of two colours.
std::pair<int, int> RedAndBlue(Fl_Gl_Window* view) {
  int red = 0;
  int blue = 0;
  for (const Pixel& pixel : Interface::PixelsOf(view)) {
    red += pixel.red > pixel.blue + 40 && pixel.red > pixel.green + 40 ? 1 : 0;
    blue += pixel.blue > pixel.red + 40 && pixel.blue > pixel.green + 40 ? 1 : 0;
  }
  return {red, blue};
}

TEST_F(ProbabilityTest, UsersWhoAgreeMakeARedSurfaceAndUsersApartABlueOne) {
  LoadEmpty({24, 20, 18}, 2);
  Ui().slicesPerUser = 1;
  Ui().displayCrosshairsCheck->value(0);
  for (const int image : {0, 1}) { FillBox(image, {5, 5, 5}, {10, 12, 12}); }
  Click(Ui().probabilityButton);
  EXPECT_STREQ(Ui().probaOverlapOutput->value(), "1.000000");
  const auto [red, noBlue] = RedAndBlue(Ui().window3D);
  EXPECT_GT(red, 100);
  EXPECT_EQ(noBlue, 0);

  FillBox(1, {5, 5, 5}, {10, 12, 12}, 0);
  FillBox(1, {13, 5, 5}, {18, 12, 12});
  Click(Ui().probabilityButton);
  EXPECT_STREQ(Ui().probaOverlapOutput->value(), "0.000000");
  const auto [noRed, blue] = RedAndBlue(Ui().window3D);
  EXPECT_EQ(noRed, 0);
  EXPECT_GT(blue, 100);
}

TEST_F(ProbabilityTest, ThePanelTellsBothStepsAndTheBarGrowsWithThePlanes) {
  std::vector<std::string> messages;
  std::vector<int> widths;
  Watch([&](int /*pump*/) {
    EXPECT_TRUE(Ui().progressPanel->visible());
    const std::string text = Ui().progressText->value();
    if (messages.empty() || messages.back() != text) { messages.push_back(text); }
    if (messages.size() == 1) { widths.push_back(Ui().progressBar->w()); }
  });
  Click(Ui().probabilityButton);
  Watch(nullptr);

  EXPECT_THAT(messages, ElementsAre("Starting 3D probabilty map...", "Computing point..."));
  EXPECT_EQ(Ui().progressRange->maximum(), 24);
  ASSERT_GE(widths.size(), 24U);
  float width = 0.0F;
  for (std::size_t plane = widths.size() - 24; plane < widths.size(); ++plane) {
    width = static_cast<float>(width + 290.0 / 24);
    EXPECT_EQ(widths[plane], static_cast<int>(width));
  }
  EXPECT_FALSE(Ui().progressPanel->visible());
}

TEST_F(ProbabilityTest, AnotherCommandDuringTheMapChangesNoNumberOfEither) {
  Click(Ui().probabilityButton);
  const std::string map = Ui().probaOverlapOutput->value();
  Click(Ui().haussdorf3DButton);
  const std::vector<std::string> distances = Fields();
  Ui().probaOverlapOutput->value("");
  Ui().haussdorf3DOutput->value("");
  Watch([&](int pump) {
    if (pump != 7) { return; }
    Click(Ui().haussdorf3DButton);
    Click(Ui().overlayInterButton);
    SetLabel(7);
    Ui().userCount = 1;
  });

  Click(Ui().probabilityButton);
  Watch(nullptr);

  EXPECT_EQ(Ui().probaOverlapOutput->value(), map);
  EXPECT_EQ(Fields(), distances);
  EXPECT_EQ(Colour(12, 9, 8), 64);
  EXPECT_THAT(alerts, IsEmpty());
}

}  // namespace
