// Trackball: what drags become.
#include "view3d/Trackball.h"

#include "tests/support/Golden.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using nlohmann::json;

TEST(TrackballTest, DragsTurnAsKnown) {
  const json all = golden::Json("views/views.json")["trackball"];
  for (const json& one : all) {
    Trackball ball;
    ball.Reset();
    const int w = one["w"];
    const int h = one["h"];
    ball.StartRotate(one["pressX"], one["pressY"], w, h);
    for (const json& drag : one["rotate"]) {
      ball.Rotate(drag["x"], drag["y"], w, h);
      EXPECT_NEAR(ball.angle, drag["angle"].get<float>(), 1e-3);
      for (std::size_t i = 0; i < 16; ++i) {
        EXPECT_NEAR(ball.rotation[i], drag["rotation"][i].get<float>(), 1e-5)
            << i << " " << drag.dump();
      }
    }
  }
}

TEST(TrackballTest, TheMiddleIsTheTopOfTheSphereAndTheRimItsEquator) {
  float point[3];
  ProjectToSphere(100, 50, 200, 100, point);
  EXPECT_NEAR(point[2], 1.0F, 1e-6);
  ProjectToSphere(200, 50, 200, 100, point);
  EXPECT_NEAR(point[0], 1.0F, 1e-6);
  EXPECT_NEAR(point[2], 0.0F, 1e-6);
  ProjectToSphere(5000, -3000, 200, 100, point);  // a drag that left the window
  EXPECT_NEAR(point[2], 0.0F, 1e-6);
}

TEST(TrackballTest, ATurnKeepsLengths) {
  Trackball ball;
  ball.Reset();
  ball.StartRotate(10, 20, 240, 230);
  for (int i = 0; i < 200; ++i) { ball.Rotate(10 + 7 * i % 230, 20 + 13 * i % 210, 240, 230); }
  for (int column = 0; column < 3; ++column) {
    double length = 0.0;
    for (int row = 0; row < 3; ++row) {
      length +=
          static_cast<double>(ball.rotation[4 * column + row]) * ball.rotation[4 * column + row];
    }
    EXPECT_NEAR(length, 1.0, 1e-3);
  }
}

TEST(TrackballTest, NothingTurnsBeforeItStarts) {
  Trackball ball;
  ball.Rotate(1, 2, 3, 4);
  ball.Pan(1, 2, 3, 4, 5, 6);

  EXPECT_EQ(ball.rotation[0], 1.0F);
  EXPECT_EQ(ball.rotation[1], 0.0F);
  EXPECT_EQ(ball.pan[0], 0.0F);
  EXPECT_EQ(ball.Zoom(100), 1.0F);
}

TEST(TrackballTest, PanningFollowsTheMouseAtAnyZoom) {
  Trackball ball;
  ball.StartPan(10, 20);
  ball.Pan(34, 43, 240, 230, 480.0F, 460.0F);
  EXPECT_FLOAT_EQ(ball.pan[0], 48.0F);
  EXPECT_FLOAT_EQ(ball.pan[1], -46.0F);
  ball.EndPan();
  ball.StartPan(0, 0);
  ball.Pan(0, 0, 240, 230, 480.0F, 460.0F);
  EXPECT_FLOAT_EQ(ball.pan[0], 48.0F);
}

TEST(TrackballTest, APixelUpEnlargesByOnePerCent) {
  Trackball ball;
  ball.StartZoom(100);
  EXPECT_FLOAT_EQ(ball.Zoom(99), 1.01F);
  EXPECT_GE(ball.Zoom(1000000), 0.0F);
  ball.Zoom(99);
  ball.EndZoom();
  ball.StartZoom(50);
  EXPECT_FLOAT_EQ(ball.Zoom(50), 1.01F);
}

TEST(TrackballTest, AResetLeavesARunningDragAlone) {
  Trackball ball;
  ball.StartRotate(1, 1, 10, 10);
  ball.Reset();

  EXPECT_EQ(ball.active, 1);
  EXPECT_EQ(ball.zoom, 1.0F);
}

}  // namespace
