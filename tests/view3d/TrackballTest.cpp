// The trackball: the sphere under the mouse, and the arithmetic of turning, moving and zooming.
#include "view3d/Trackball.h"

#include "tests/support/Golden.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>

namespace {

using Vector = std::array<float, 3>;
using Matrix = std::array<double, 16>;

Vector OnSphere(int x, int y, int w, int h) {
  Vector point{};
  ProjectToSphere(x, y, w, h, point.data());
  return point;
}

void ExpectVector(const float* vector, double x, double y, double z, double tolerance = 1e-6) {
  EXPECT_NEAR(vector[0], x, tolerance);
  EXPECT_NEAR(vector[1], y, tolerance);
  EXPECT_NEAR(vector[2], z, tolerance);
}

void ExpectMatrix(const float* matrix, const Matrix& expected, double tolerance = 1e-6) {
  for (std::size_t i = 0; i < 16; ++i) { EXPECT_NEAR(matrix[i], expected[i], tolerance) << i; }
}

constexpr Matrix kIdentity = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

TEST(ProjectToSphere, TheMiddleOfTheWindowIsTheTopOfTheSphere) {
  ExpectVector(OnSphere(100, 50, 200, 100).data(), 0, 0, 1);
}

TEST(ProjectToSphere, TheEdgesOfTheWindowLieOnTheEquator) {
  ExpectVector(OnSphere(200, 50, 200, 100).data(), 1, 0, 0);
  ExpectVector(OnSphere(0, 50, 200, 100).data(), -1, 0, 0);
  ExpectVector(OnSphere(100, 0, 200, 100).data(), 0, 1, 0);
  ExpectVector(OnSphere(100, 100, 200, 100).data(), 0, -1, 0);
}

TEST(ProjectToSphere, HalfWayOutTheHeightIsTheCosineOf45Degrees) {
  // (0.5, 0, 0.70710678) over its length 0.8660254
  ExpectVector(OnSphere(150, 50, 200, 100).data(), 0.57735027, 0, 0.81649658);
}

TEST(ProjectToSphere, PlacesOutsideTheWindowLieOnTheEquator) {
  ExpectVector(OnSphere(1100, 50, 200, 100).data(), 1, 0, 0);
  ExpectVector(OnSphere(300, -50, 200, 100).data(), std::sqrt(0.5), std::sqrt(0.5), 0);
}

TEST(ProjectToSphere, EveryPointLiesOnTheSphere) {
  for (int x = -60; x <= 300; x += 7) {
    for (int y = -60; y <= 300; y += 7) {
      const Vector p = OnSphere(x, y, 240, 230);

      EXPECT_NEAR(p[0] * p[0] + p[1] * p[1] + p[2] * p[2], 1.0, 1e-5) << x << ", " << y;
    }
  }
}

TEST(ProjectToSphere, AWindowWithoutASizeGivesNumbers) {
  for (const int size : {0, -5}) {
    for (const float value : OnSphere(3, 4, size, size)) { EXPECT_TRUE(std::isfinite(value)); }
  }
}

TEST(Trackball, StartsWithoutATurnAMoveOrAZoom) {
  const Trackball ball;

  ExpectMatrix(ball.rotation, kIdentity, 0.0);
  EXPECT_EQ(ball.active, 0);
  EXPECT_EQ(ball.angle, 0.0F);
  EXPECT_EQ(ball.zoom, 1.0F);
  EXPECT_EQ(ball.zoomBase, 1.0F);
  EXPECT_EQ(ball.pan[0], 0.0F);
  EXPECT_EQ(ball.panBase[1], 0.0F);
}

TEST(Trackball, TurnsByNinetyDegreesTimesTheChord) {
  Trackball ball;

  ball.StartRotate(100, 100, 200, 200);
  ball.Rotate(200, 100, 200, 200);

  // From the top to the right edge: the chord is the root of 2, the axis points up.
  EXPECT_NEAR(ball.angle, 127.279221, 1e-4);
  ExpectVector(ball.axis, 0, 1, 0);
  ExpectVector(ball.lastPoint, 1, 0, 0);
  const double c = -0.605699867;  // cosine of 127.279221 degrees
  const double s = 0.795692848;
  ExpectMatrix(ball.rotation, {c, 0, -s, 0, 0, 1, 0, 0, s, 0, c, 0, 0, 0, 0, 1}, 1e-5);
}

TEST(Trackball, ANewStepTurnsAboutTheAxesOfTheScreen) {
  Trackball ball;
  ball.StartRotate(100, 100, 200, 200);
  ball.Rotate(200, 100, 200, 200);  // about y
  ball.EndRotate();
  Trackball second;
  second.StartRotate(100, 100, 200, 200);
  second.Rotate(100, 0, 200, 200);  // about x

  ball.StartRotate(100, 100, 200, 200);
  ball.Rotate(100, 0, 200, 200);

  // x times y: the new turn stands in front of the old one.
  const double c = -0.605699867;
  const double s = 0.795692848;
  ExpectVector(second.axis, -1, 0, 0);
  ExpectMatrix(ball.rotation, {c, -s * s, -s * c, 0, 0, c, -s, 0, s, c * s, c * c, 0, 0, 0, 0, 1},
               1e-5);
}

TEST(Trackball, AMouseThatStandsStillTurnsNothing) {
  Trackball ball;

  ball.StartRotate(30, 60, 200, 200);
  ball.Rotate(30, 60, 200, 200);

  EXPECT_EQ(ball.angle, 0.0F);
  ExpectMatrix(ball.rotation, kIdentity, 0.0);
}

TEST(Trackball, OppositePlacesOfTheEquatorGiveNumbers) {
  Trackball ball;

  ball.StartRotate(0, 100, 200, 200);
  ball.Rotate(200, 100, 200, 200);

  EXPECT_NEAR(ball.angle, 180.0, 1e-3);
  for (const float value : ball.rotation) { EXPECT_TRUE(std::isfinite(value)); }
}

TEST(Trackball, TurnsOnlyBetweenStartAndEnd) {
  Trackball ball;
  ball.Rotate(200, 100, 200, 200);
  ExpectMatrix(ball.rotation, kIdentity, 0.0);
  ball.StartRotate(100, 100, 200, 200);
  EXPECT_EQ(ball.active, 1);

  ball.EndRotate();
  ball.Rotate(200, 100, 200, 200);

  EXPECT_EQ(ball.active, 0);
  EXPECT_EQ(ball.angle, 0.0F);
  ExpectMatrix(ball.rotation, kIdentity, 0.0);
}

TEST(Trackball, StaysARotationOverAThousandSteps) {
  Trackball ball;
  ball.StartRotate(120, 115, 240, 230);

  for (int i = 0; i < 1000; ++i) { ball.Rotate((i * 37) % 240, (i * 53) % 230, 240, 230); }

  for (int column = 0; column < 3; ++column) {
    const float* m = ball.rotation + 4 * column;
    EXPECT_NEAR(m[0] * m[0] + m[1] * m[1] + m[2] * m[2], 1.0, 1e-3);
  }
}

TEST(Trackball, TurnsAsTheKnownDragsDo) {
  const nlohmann::json cases = golden::Json("views/views.json")["trackball"];
  ASSERT_FALSE(cases.empty());
  for (const auto& known : cases) {
    const int w = known["w"];
    const int h = known["h"];
    Trackball ball;
    ball.StartRotate(known["pressX"], known["pressY"], w, h);
    for (const auto& step : known["rotate"]) {
      ball.Rotate(step["x"], step["y"], w, h);

      EXPECT_NEAR(ball.angle, step["angle"].get<double>(), 1e-4);
      const auto axis = step["axis"].get<std::array<double, 3>>();
      ExpectVector(ball.axis, axis[0], axis[1], axis[2], 1e-5);
      ExpectMatrix(ball.rotation, step["rotation"].get<Matrix>(), 1e-5);
    }
  }
}

TEST(Trackball, MovesByTheViewsSizeOverTheWindows) {
  Trackball ball;

  ball.StartPan(10, 20);
  ball.Pan(60, 10, 200, 100, 8.0F, 5.0F);

  EXPECT_FLOAT_EQ(ball.pan[0], 2.0F);  // 50 pixels of 200 in a view of 8
  EXPECT_FLOAT_EQ(ball.pan[1], 0.5F);  // 10 pixels up of 100 in a view of 5
}

TEST(Trackball, AMoveGoesOnWhereTheLastOneEnded) {
  Trackball ball;
  ball.StartPan(0, 0);
  ball.Pan(50, 0, 200, 100, 8.0F, 5.0F);
  ball.Pan(100, 40, 200, 100, 8.0F, 5.0F);
  ball.EndPan();
  EXPECT_EQ(ball.active, 0);
  EXPECT_FLOAT_EQ(ball.panBase[0], 4.0F);
  EXPECT_FLOAT_EQ(ball.panBase[1], -2.0F);

  ball.Pan(0, 0, 200, 100, 8.0F, 5.0F);
  EXPECT_FLOAT_EQ(ball.pan[0], 4.0F);  // no drag is under way
  ball.StartPan(70, 70);
  ball.Pan(95, 70, 200, 100, 8.0F, 5.0F);

  EXPECT_FLOAT_EQ(ball.pan[0], 5.0F);
  EXPECT_FLOAT_EQ(ball.pan[1], -2.0F);
}

TEST(Trackball, NothingMovesOrZoomsBeforeItStarts) {
  Trackball ball;

  ball.Pan(1, 2, 3, 4, 5, 6);

  EXPECT_EQ(ball.pan[0], 0.0F);
  EXPECT_EQ(ball.pan[1], 0.0F);
  EXPECT_EQ(ball.Zoom(100), 1.0F);
}

TEST(Trackball, AMoveInAWindowWithoutASizeGivesNumbers) {
  Trackball ball;

  ball.StartPan(0, 0);
  ball.Pan(5, 5, 0, 0, 8.0F, 5.0F);

  EXPECT_TRUE(std::isfinite(ball.pan[0]));
  EXPECT_TRUE(std::isfinite(ball.pan[1]));
}

TEST(Trackball, APixelUpEnlargesByOnePercent) {
  Trackball ball;

  ball.StartZoom(100);

  EXPECT_FLOAT_EQ(ball.Zoom(99), 1.01F);
  EXPECT_FLOAT_EQ(ball.Zoom(98), 1.0201F);
  EXPECT_FLOAT_EQ(ball.Zoom(101), 1.0F / 1.01F);
  EXPECT_FLOAT_EQ(ball.Zoom(100), 1.0F);
}

TEST(Trackball, AZoomGoesOnWhereTheLastOneEnded) {
  Trackball ball;
  ball.StartZoom(100);
  ball.Zoom(98);
  ball.EndZoom();
  EXPECT_EQ(ball.active, 0);
  EXPECT_FLOAT_EQ(ball.zoomBase, 1.0201F);

  EXPECT_FLOAT_EQ(ball.Zoom(0), 1.0201F);  // no drag is under way
  ball.StartZoom(50);

  EXPECT_FLOAT_EQ(ball.Zoom(49), 1.030301F);
}

TEST(Trackball, AZoomIsFiniteAndNeverNegative) {
  Trackball ball;
  ball.StartZoom(0);

  EXPECT_EQ(ball.Zoom(std::numeric_limits<int>::max()), 0.0F);
  EXPECT_EQ(ball.Zoom(std::numeric_limits<int>::min()), std::numeric_limits<float>::max());
  for (int drag = 0; drag < 100; ++drag) {
    ball.EndZoom();
    ball.StartZoom(0);
    ball.Zoom(-1000);
  }
  EXPECT_TRUE(std::isfinite(ball.zoom));
}

TEST(Trackball, ResetKeepsARunningDrag) {
  Trackball ball;
  ball.StartZoom(100);
  ball.Zoom(90);
  ball.EndZoom();
  ball.StartPan(0, 0);
  ball.Pan(9, 9, 10, 10, 1.0F, 1.0F);
  ball.EndPan();
  ball.StartRotate(100, 100, 200, 200);
  ball.Rotate(120, 80, 200, 200);

  ball.Reset();

  EXPECT_EQ(ball.active, 1);
  EXPECT_EQ(ball.angle, 0.0F);
  ExpectMatrix(ball.rotation, kIdentity, 0.0);
  EXPECT_EQ(ball.zoom, 1.0F);
  EXPECT_EQ(ball.zoomBase, 1.0F);
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(ball.pan[i], 0.0F);
    EXPECT_EQ(ball.panBase[i], 0.0F);
  }
}

}  // namespace
