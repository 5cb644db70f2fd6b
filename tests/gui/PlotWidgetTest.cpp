// The plot widget: where it draws, what it reads out, and that no number leads it astray.
#include "tests/support/Interface.h"
#include "ui/Commands.h"
#include "ui/Plot.h"

#include <FL/fl_draw.H>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <memory>

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

class PlotWidgetTest : public Interface {
protected:
  Plot& View() { return *Ui().plot; }

  void SetUp() override {
    Interface::SetUp();
    Ui().mainWindow->hide();  // without a window manager it would lie over the plot
    Ui().plotWindow->position(0, 0);
    Ui().plotWindow->show();
    Ui().plotWindow->wait_for_expose();
    View().show();
    Settle();
  }

  void SetCurves(const std::vector<float>& first, const std::vector<float>& second, float top) {
    View().SetSeries(first.data(), second.data(), static_cast<int>(first.size()));
    View().yMax = top;
  }

  /// The pixels of the whole plot window as they are drawn now; (0, 0) is the upper left.
  std::vector<Pixel> Screen() {
    Settle();
    Ui().plotWindow->make_current();
    Ui().plotWindow->redraw();
    View().redraw();
    Fl::flush();
    View().make_current();
    const std::unique_ptr<uchar[]> bytes(fl_read_image(nullptr, 0, 0, View().w(), View().h()));
    std::vector<Pixel> pixels;
    for (int i = 0; bytes && i < View().w() * View().h(); ++i) {
      pixels.push_back({bytes[3 * i], bytes[3 * i + 1], bytes[3 * i + 2]});
    }
    return pixels;
  }

  /// What stands on the screen already, without a redraw: the column of pixels at x.
  std::vector<Pixel> ColumnOnScreen(int x) {
    View().make_current();
    const std::unique_ptr<uchar[]> bytes(fl_read_image(nullptr, x, 0, 1, View().h()));
    std::vector<Pixel> pixels;
    for (int i = 0; bytes && i < View().h(); ++i) {
      pixels.push_back({bytes[3 * i], bytes[3 * i + 1], bytes[3 * i + 2]});
    }
    return pixels;
  }

  Pixel At(const std::vector<Pixel>& pixels, int x, int y) {
    return pixels.at(static_cast<std::size_t>(y * View().w() + x));
  }
  static bool Is(const Pixel& pixel, int red, int green, int blue) {
    return pixel.red == red && pixel.green == green && pixel.blue == blue;
  }
  int Count(const std::vector<Pixel>& pixels, int red, int green, int blue) {
    int count = 0;
    for (const Pixel& pixel : pixels) { count += Is(pixel, red, green, blue) ? 1 : 0; }
    return count;
  }
};

TEST_F(PlotWidgetTest, SetSeriesCopiesBothCurvesAndCountsX) {
  std::vector<float> first = {1, 5, 3};
  const std::vector<float> second = {2, 4, 6};
  View().SetSeries(first.data(), second.data(), 3);
  first[0] = 99;

  EXPECT_EQ(View().count, 3);
  EXPECT_EQ(View().curve1[0], 1.0F);
  EXPECT_EQ(View().curve1[2], 3.0F);
  EXPECT_EQ(View().curve2[1], 4.0F);
  for (int k = 0; k < 3; ++k) { EXPECT_EQ(View().xs[k], static_cast<float>(k)); }
  EXPECT_EQ(View().xMin, 0.0F);
  EXPECT_EQ(View().xMax, 2.0F);
  EXPECT_EQ(View().plotRed, 255);
  EXPECT_EQ(View().plotGreen, 0);
  EXPECT_EQ(View().plotBlue, 0);
}

TEST_F(PlotWidgetTest, ARangeThatRunsTheOtherWayLeavesNoCurve) {
  SetCurves({1, 2}, {3, 4}, 4);
  const float none = 0;

  View().SetSeries(&none, &none, -7);

  EXPECT_EQ(View().count, -7);
  EXPECT_EQ(View().xs, nullptr);
  EXPECT_EQ(View().curve1, nullptr);
  EXPECT_EQ(View().curve2, nullptr);
  EXPECT_EQ(Count(Screen(), 255, 0, 0), 0);
}

TEST_F(PlotWidgetTest, DrawSetsTheScales) {
  SetCurves({0, 10, 20, 30, 40}, {0, 0, 0, 0, 0}, 50);
  Screen();

  EXPECT_EQ(View().xOffset, 12.0F);
  EXPECT_EQ(View().xScale, (420 - 1 - 24.0F) / 4.0F);
  EXPECT_EQ(View().yOffset, 298.0F);
  EXPECT_EQ(View().yScale, (25 - 310) / 50.0F);
}

TEST_F(PlotWidgetTest, TheGroundIsLightGreyAndTheAxesAreDark) {
  SetCurves({20, 20, 20}, {10, 10, 10}, 40);
  const auto screen = Screen();

  EXPECT_TRUE(Is(At(screen, 400, 150), 220, 220, 220));
  EXPECT_TRUE(Is(At(screen, 0, 309), 220, 220, 220));
  EXPECT_TRUE(Is(At(screen, 200, 298), 90, 90, 90)) << "the horizontal axis";
  EXPECT_TRUE(Is(At(screen, 407, 298), 90, 90, 90)) << "its end at w - 1 - 12";
  EXPECT_FALSE(Is(At(screen, 408, 298), 90, 90, 90));
  EXPECT_TRUE(Is(At(screen, 12, 200), 90, 90, 90)) << "the vertical axis";
  EXPECT_TRUE(Is(At(screen, 12, 13), 90, 90, 90)) << "its end, 13 pixels below the top";
}

TEST_F(PlotWidgetTest, TheFirstCurveIsRedAndTheSecondBlue) {
  SetCurves({20, 20, 20}, {10, 10, 10}, 40);
  const auto screen = Screen();

  // y = trunc(20 * -285 / 40 + 298) and the same for 10
  EXPECT_TRUE(Is(At(screen, 100, 155), 255, 0, 0));
  EXPECT_TRUE(Is(At(screen, 100, 226), 0, 0, 255));
  EXPECT_TRUE(Is(At(screen, 12, 155), 255, 0, 0)) << "it begins on the axis";
  EXPECT_TRUE(Is(At(screen, 407, 155), 255, 0, 0));
  EXPECT_FALSE(Is(At(screen, 409, 155), 255, 0, 0));
}

TEST_F(PlotWidgetTest, TheEndsOfTheVerticalAxisAreWrittenBesideIt) {
  SetCurves({20, 20, 20}, {10, 10, 10}, 40);
  const auto screen = Screen();
  const auto dark = [&](int fromX, int toX, int fromY, int toY) {
    int count = 0;
    for (int y = fromY; y < toY; ++y) {
      for (int x = fromX; x < toX; ++x) {
        const Pixel pixel = At(screen, x, y);
        EXPECT_TRUE(pixel.red == pixel.green && pixel.green == pixel.blue) << x << ", " << y;
        count += pixel.red < 160 ? 1 : 0;
      }
    }
    return count;
  };

  // Nine characters of size 9: "4.000e+01" above the axis and "0.000e+00" below it.
  EXPECT_GT(dark(1, 46, 1, 12), 40);
  EXPECT_GT(dark(1, 46, 299, 309), 40);
  EXPECT_EQ(dark(60, 400, 1, 12), 0);
  EXPECT_EQ(dark(60, 400, 299, 309), 0);
}

TEST_F(PlotWidgetTest, TheWritingBesideTheAxisFollowsTheTop) {
  SetCurves({20, 20, 20}, {10, 10, 10}, 40);
  const auto forty = Screen();
  View().yMax = 70;
  const auto seventy = Screen();

  const auto differ = [&](int fromY, int toY) {
    for (int y = fromY; y < toY; ++y) {
      for (int x = 1; x < 46; ++x) {
        if (At(forty, x, y).red != At(seventy, x, y).red) { return true; }
      }
    }
    return false;
  };
  EXPECT_TRUE(differ(1, 12));
  EXPECT_FALSE(differ(299, 309));
}

TEST_F(PlotWidgetTest, TheTitleStandsAtTheUpperRight) {
  SetCurves({20, 20, 20}, {10, 10, 10}, 40);
  std::strcpy(View().title, "Voxels");
  const auto screen = Screen();
  int left = View().w();
  int right = 0;
  for (int y = 1; y < 12; ++y) {
    for (int x = 60; x < View().w(); ++x) {
      if (At(screen, x, y).red > 160) { continue; }
      left = std::min(left, x);
      right = std::max(right, x);
    }
  }

  EXPECT_GE(right, View().w() - 5);
  EXPECT_LT(right, View().w());
  EXPECT_NEAR(right - left, 29, 8);
}

TEST_F(PlotWidgetTest, AClickReadsOutThePointBelowIt) {
  SetCurves({0, 10, 20, 30, 40}, {0, 0, 0, 0, 0}, 50);
  Screen();

  Press(&View(), 12 + 99 * 2 + 5, 100);

  EXPECT_EQ(View().selectedSlice, 2);  // 98.75 pixels for a step
  const auto screen = Screen();
  EXPECT_TRUE(Is(At(screen, 209, 100), 0, 255, 0)) << "the green line at X(2)";
}

TEST_F(PlotWidgetTest, AClickIsAnsweredOnTheScreenAtOnce) {
  SetCurves({0, 10, 20, 30, 40}, {0, 0, 0, 0, 0}, 50);
  Screen();
  EXPECT_EQ(Count(ColumnOnScreen(209), 0, 255, 0), 0);

  Press(&View(), 12 + 99 * 2 + 5, 100);

  EXPECT_GT(Count(ColumnOnScreen(209), 0, 255, 0), 200);
}

TEST_F(PlotWidgetTest, NewCurvesAskForARedraw) {
  Screen();
  ASSERT_EQ(View().damage(), 0);

  SetCurves({1, 2}, {3, 4}, 5);

  EXPECT_NE(View().damage(), 0);
}

TEST_F(PlotWidgetTest, AClickOutsideTheCurveTakesItsNearestEnd) {
  SetCurves({0, 10, 20}, {0, 0, 0}, 50);
  Screen();

  Press(&View(), 3, 100);
  EXPECT_EQ(View().selectedSlice, 0);
  Press(&View(), 419, 100);
  EXPECT_EQ(View().selectedSlice, 2);
}

TEST_F(PlotWidgetTest, TheReadOutNamesThePlaceInTheRangeNotTheSlice) {
  SetCurves({5, 6}, {5, 6}, 10);  // a range that began at slice 40 looks the same
  Screen();

  Press(&View(), 407, 100);

  EXPECT_EQ(View().selectedSlice, 1);
  EXPECT_EQ(View().xs[1], 1.0F);
}

TEST_F(PlotWidgetTest, AReadOutShowsFourTextsInTheirFifths) {
  SetCurves({20, 20, 20}, {10, 10, 10}, 40);
  const auto before = Screen();
  View().selectedSlice = 1;
  const auto after = Screen();

  // Text is drawn with soft edges: its pixels only lean to its colour.
  const auto leans = [&](const std::vector<Pixel>& pixels, int from, int to, int Pixel::*colour) {
    for (int y = 0; y < 12; ++y) {
      for (int x = from; x < to; ++x) {
        const Pixel pixel = At(pixels, x, y);
        int strong = 0;
        for (int Pixel::*other : {&Pixel::red, &Pixel::green, &Pixel::blue}) {
          if (other != colour && pixel.*colour - pixel.*other > 60) { ++strong; }
        }
        if (strong == 2) { return true; }
      }
    }
    return false;
  };
  // w / 5 = 84: "Slice" round 84, second curve round 168, first round 252, difference round 336
  EXPECT_TRUE(leans(after, 60, 110, &Pixel::green));
  EXPECT_FALSE(leans(after, 60, 110, &Pixel::blue));
  EXPECT_TRUE(leans(after, 140, 200, &Pixel::blue));
  EXPECT_FALSE(leans(after, 140, 200, &Pixel::green));
  EXPECT_TRUE(leans(after, 225, 285, &Pixel::red));
  EXPECT_FALSE(leans(after, 225, 285, &Pixel::blue));
  EXPECT_TRUE(leans(after, 295, 380, &Pixel::green));
  EXPECT_FALSE(leans(after, 295, 380, &Pixel::red));
  EXPECT_FALSE(leans(before, 60, 400, &Pixel::green));
}

TEST_F(PlotWidgetTest, AReadOutBeyondAShorterCurveHidesUntilTheNextClick) {
  SetCurves({1, 2, 3, 4}, {1, 2, 3, 4}, 5);
  View().selectedSlice = 3;
  EXPECT_GT(Count(Screen(), 0, 255, 0), 100);

  SetCurves({1, 2}, {1, 2}, 5);

  EXPECT_EQ(View().selectedSlice, 3);
  EXPECT_EQ(Count(Screen(), 0, 255, 0), 0);
}

TEST_F(PlotWidgetTest, OnlyTheLeftButtonDoesSomething) {
  SetCurves({1, 2}, {1, 2}, 5);
  Screen();
  const auto handle = [&](int event, int button) {
    Fl::e_keysym = FL_Button + button;
    Fl::e_x = 100;
    Fl::e_y = 100;
    return View().handle(event);
  };

  EXPECT_EQ(handle(FL_PUSH, 2), 0);
  EXPECT_EQ(handle(FL_PUSH, 3), 0);
  EXPECT_EQ(handle(FL_DRAG, 1), 0);
  EXPECT_EQ(handle(FL_RELEASE, 1), 0);
  EXPECT_EQ(View().selectedSlice, -1);
  EXPECT_EQ(handle(FL_PUSH, 1), 1);
  EXPECT_EQ(View().selectedSlice, 0);
}

TEST_F(PlotWidgetTest, WithoutAPointAClickDoesNothing) {
  Fl::e_keysym = FL_Button + 1;

  EXPECT_EQ(View().handle(FL_PUSH), 0);
  EXPECT_EQ(View().selectedSlice, -1);
}

int selectedByCallback = -1;

TEST_F(PlotWidgetTest, AClickTellsTheCallbackThePoint) {
  SetCurves({1, 2, 3}, {1, 2, 3}, 5);
  Screen();
  View().selectCallback = [](int slice) {
    selectedByCallback = slice;
  };

  Press(&View(), 407, 50);

  EXPECT_EQ(selectedByCallback, 2);
}

// Numbers without a scale.

TEST_F(PlotWidgetTest, ASinglePointHasAnInfiniteScaleAndLiesOnTheAxis) {
  SetCurves({3}, {2}, 5);
  View().selectedSlice = 0;
  const auto screen = Screen();

  EXPECT_EQ(View().xScale, kInfinity);
  EXPECT_TRUE(Is(At(screen, 12, 100), 0, 255, 0)) << "the read-out on the axis";
  for (int x = 0; x < 12; ++x) { EXPECT_FALSE(Is(At(screen, x, 298), 90, 90, 90)); }
}

TEST_F(PlotWidgetTest, AClickOnASinglePointTakesIt) {
  SetCurves({3}, {2}, 5);
  Screen();

  Press(&View(), 300, 100);

  EXPECT_EQ(View().selectedSlice, 0);
}

TEST_F(PlotWidgetTest, CurvesOfNothingLieOnTheHorizontalAxis) {
  SetCurves({0, 0, 0}, {0, 0, 0}, 0);
  const auto screen = Screen();

  EXPECT_EQ(View().yScale, -kInfinity);
  EXPECT_TRUE(Is(At(screen, 200, 298), 0, 0, 255)) << "the second curve covers the first";
}

TEST_F(PlotWidgetTest, NoNumberLeadsOutOfTheWidget) {
  const float values[] = {kNan, kInfinity, -kInfinity, 3e38F, -3e38F, 0.0F};
  for (const float top : values) {
    for (const float low : values) {
      SetCurves({kNan, kInfinity, -kInfinity, 3e38F}, {1, kNan, 3, -3e38F}, top);
      View().yMin = low;
      View().selectedSlice = 2;
      const auto screen = Screen();

      ASSERT_FALSE(screen.empty());
      EXPECT_TRUE(Is(At(screen, 0, 309), 220, 220, 220));
      Press(&View(), 300, 100);
      EXPECT_GE(View().selectedSlice, 0);
      EXPECT_LT(View().selectedSlice, 4);
    }
  }
}

TEST_F(PlotWidgetTest, WhatLiesAboveTheTopStaysInsideTheWidget) {
  Ui().plotWindow->redraw();
  SetCurves({5000, 5000}, {-5000, -5000}, 30);
  Screen();

  Ui().plotWindow->make_current();
  const std::unique_ptr<uchar[]> bytes(fl_read_image(nullptr, 5, 5, 130, 310));
  ASSERT_NE(bytes, nullptr);
  for (int i = 0; i < 130 * 310; ++i) {
    const bool red = bytes[3 * i] == 255 && bytes[3 * i + 1] == 0 && bytes[3 * i + 2] == 0;
    ASSERT_FALSE(red) << "a red pixel beside the plot";
  }
}

TEST_F(PlotWidgetTest, ALongTitleStaysInsideTheWidget) {
  std::memset(View().title, 'W', sizeof View().title - 1);
  SetCurves({1, 2}, {1, 2}, 5);

  EXPECT_TRUE(Is(At(Screen(), 400, 150), 220, 220, 220));
}

TEST_F(PlotWidgetTest, DrawingAtOnceDoesNothingWhileTheWindowIsHidden) {
  Ui().plotWindow->hide();
  SetCurves({1, 2}, {1, 2}, 5);

  View().DrawNow();

  EXPECT_FALSE(View().shown());
}

TEST_F(PlotWidgetTest, TheWindowCanBeHiddenAndShownAgain) {
  Ui().plotWindow->hide();
  Settle();
  Ui().plotWindow->show();
  Settle();

  EXPECT_TRUE(View().shown());
  EXPECT_TRUE(View().visible_r());
}

}  // namespace
