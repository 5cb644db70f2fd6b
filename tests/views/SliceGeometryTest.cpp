// Slice geometry: axes, padding, fit, zoom, the pixel under the mouse, window and level, planes.
#include "views/SliceGeometry.h"

#include "VoxData/VoxData.h"
#include "tests/support/Golden.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <gmock/gmock.h>
#include <limits>
#include <vector>

namespace {

using nlohmann::json;
using testing::ElementsAre;

json Views() { return golden::Json("views/views.json"); }

TEST(SliceAxesTest, EachDirectionHasItsWidthAndHeight) {
  EXPECT_EQ(slice::AxesOf(2).x, 0);
  EXPECT_EQ(slice::AxesOf(2).y, 1);
  EXPECT_EQ(slice::AxesOf(0).x, 2);
  EXPECT_EQ(slice::AxesOf(0).y, 1);
  EXPECT_EQ(slice::AxesOf(1).x, 2);
  EXPECT_EQ(slice::AxesOf(1).y, 0);
}

TEST(SliceAxesTest, ADirectionThatFollowsBeginsAsXY) {
  EXPECT_EQ(slice::AxesOf(3).x, 0);
  EXPECT_EQ(slice::AxesOf(3).y, 1);
}

TEST(SlicePaddingTest, ASmallSideIsPaddedToSixtyFour) {
  EXPECT_EQ(slice::PaddingOf(63), 1);
  EXPECT_EQ(slice::PaddingOf(20), 44);
  EXPECT_EQ(slice::PaddingOf(1), 63);
  EXPECT_EQ(slice::PaddingOf(0), 64);
}

TEST(SlicePaddingTest, APowerOfTwoFromSixtyFourOnNeedsNoPadding) {
  for (const int side : {64, 128, 256, 512, 1 << 30}) { EXPECT_EQ(slice::PaddingOf(side), 0); }
}

TEST(SlicePaddingTest, AnyOtherSideIsPaddedToTheNextPowerOfTwo) {
  EXPECT_EQ(slice::PaddingOf(65), 63);
  EXPECT_EQ(slice::PaddingOf(300), 212);
  EXPECT_EQ(slice::PaddingOf(std::numeric_limits<int>::max()), 1);
}

TEST(SlicePaddingTest, ThePaddingOfEverySideIsAsKnown) {
  const json padding = Views()["paddingOfSides1to300"];
  for (int side = 1; side <= 300; ++side) {
    EXPECT_EQ(slice::PaddingOf(side), padding[static_cast<std::size_t>(side - 1)].get<int>())
        << side;
  }
}

// The view.

TEST(SliceViewFitTest, AWideSliceFillsTheWidth) {
  const slice::View view = slice::FitView({100, 20, 2.0F, 1.0F}, 200, 50);

  EXPECT_EQ(view.zoom, 1.0F);
  EXPECT_EQ(view.centreX, 100.0F);
  EXPECT_EQ(view.centreY, 10.0F);
}

TEST(SliceViewFitTest, AHighSliceFillsTheHeight) {
  EXPECT_EQ(slice::FitView({10, 20, 1.0F, 0.5F}, 200, 50).zoom, 5.0F);
}

TEST(SliceViewFitTest, ASliceOfTheSameProportionsGoesByItsHeight) {
  EXPECT_EQ(slice::FitView({20, 10, 1.0F, 1.0F}, 200, 100).zoom, 10.0F);
}

TEST(SliceZoomTest, APixelUpIsFivePerCent) {
  const slice::Extent extent{100, 100, 1.0F, 1.0F};

  EXPECT_FLOAT_EQ(slice::ZoomAfterDrag(2.0F, -1, extent, 220), 2.1F);
  EXPECT_FLOAT_EQ(slice::ZoomAfterDrag(2.1F, 1, extent, 220), 2.0F);
  EXPECT_EQ(slice::ZoomAfterDrag(2.0F, 0, extent, 220), 2.0F);
}

TEST(SliceZoomTest, TheZoomStopsAtOneVoxelAndAtOnePixel) {
  const slice::Extent extent{100, 100, 2.0F, 2.0F};

  EXPECT_EQ(slice::ZoomAfterDrag(1.0F, -1000, extent, 220), 110.0F);
  EXPECT_EQ(slice::ZoomAfterDrag(1.0F, -100000, extent, 220), 110.0F);
  EXPECT_EQ(slice::ZoomAfterDrag(1.0F, 1000, extent, 220), 1.0F / 200.0F);
  EXPECT_EQ(slice::ZoomAfterDrag(1.0F, 100000, extent, 220), 1.0F / 200.0F);
}

TEST(SlicePixelTest, APositionLiesInItsPixelAndStaysOnTheSlice) {
  EXPECT_EQ(slice::PixelAt(0.0F, 10), 0);
  EXPECT_EQ(slice::PixelAt(3.9F, 10), 3);
  EXPECT_EQ(slice::PixelAt(4.0F, 10), 4);
  EXPECT_EQ(slice::PixelAt(-0.5F, 10), 0);
  EXPECT_EQ(slice::PixelAt(-7.5F, 10), 0);
  EXPECT_EQ(slice::PixelAt(10.0F, 10), 9);
}

TEST(SlicePixelTest, NoPositionIsOutOfRange) {
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  EXPECT_EQ(slice::PixelAt(std::nanf(""), 10), 0);
  EXPECT_EQ(slice::PixelAt(kInfinity, 10), 9);
  EXPECT_EQ(slice::PixelAt(-kInfinity, 10), 0);
  EXPECT_EQ(slice::PixelAt(3.0e38F, 10), 9);
  EXPECT_EQ(slice::PixelAt(5.0F, 0), 0);
}

TEST(SlicePixelTest, RowZeroLiesAtTheBottom) {
  // 10 x 10 pixels of 2 x 4 units on 40 x 40 screen pixels: one unit is one screen pixel high.
  const slice::Extent extent{10, 10, 2.0F, 4.0F};
  slice::View view = slice::FitView(extent, 40, 40);
  view.halfWidth = slice::HalfSide(40, view.zoom);
  view.halfHeight = slice::HalfSide(40, view.zoom);

  const slice::SlicePixel lower = slice::PixelUnder(view, extent, 11, 37);
  EXPECT_EQ(lower.i, 0);
  EXPECT_EQ(lower.j, 0);
  const slice::SlicePixel upper = slice::PixelUnder(view, extent, 29, 0);
  EXPECT_EQ(upper.i, 9);
  EXPECT_EQ(upper.j, 9);
  const slice::SlicePixel inside = slice::PixelUnder(view, extent, 20, 21);
  EXPECT_EQ(inside.i, 5);
  EXPECT_EQ(inside.j, 4);
}

TEST(SlicePixelTest, AVoxelWithoutASizeGivesAPixelAllTheSame) {
  const slice::Extent extent{10, 10, 0.0F, 0.0F};
  const slice::View view = slice::FitView(extent, 40, 40);
  const slice::SlicePixel pixel = slice::PixelUnder(view, extent, 20, 20);

  EXPECT_TRUE(pixel.i >= 0 && pixel.i < 10 && pixel.j >= 0 && pixel.j < 10);
}

TEST(SliceMouseTest, DragsPanAndZoomAsKnown) {
  const json cases = Views()["mouse"];
  for (const json& one : cases) {
    const slice::Extent extent{one["sliceWidth"], one["sliceHeight"], one["voxelX"], one["voxelY"]};
    const int w = one["W"];
    const int h = one["H"];
    slice::View view = slice::FitView(extent, w, h);
    EXPECT_EQ(view.zoom, one["fitZoom"].get<float>());
    EXPECT_EQ(view.centreX, one["fitCentreX"].get<float>());
    EXPECT_EQ(view.centreY, one["fitCentreY"].get<float>());
    for (const json& drag : one["drags"]) {
      const int right = drag["toX"].get<int>() - drag["fromX"].get<int>();
      const int down = drag["toY"].get<int>() - drag["fromY"].get<int>();
      if (drag["button"] == 1) {
        view.centreX -= static_cast<float>(right) / view.zoom;
        view.centreY += static_cast<float>(down) / view.zoom;
      } else if (drag["button"] == 3) {
        view.zoom = slice::ZoomAfterDrag(view.zoom, down, extent, w);
      }
      view.halfWidth = slice::HalfSide(w, view.zoom);
      view.halfHeight = slice::HalfSide(h, view.zoom);
      const slice::SlicePixel pixel = slice::PixelUnder(view, extent, drag["toX"], drag["toY"]);
      EXPECT_EQ(view.zoom, drag["zoom"].get<float>()) << drag.dump();
      EXPECT_EQ(view.centreX, drag["centreX"].get<float>()) << drag.dump();
      EXPECT_EQ(view.centreY, drag["centreY"].get<float>()) << drag.dump();
      EXPECT_EQ(pixel.i, drag["pixelI"].get<int>()) << drag.dump();
      EXPECT_EQ(pixel.j, drag["pixelJ"].get<int>()) << drag.dump();
    }
  }
}

// Window and level.

TEST(SliceGreyWindowTest, TheWindowIsCutOffAtBothEnds) {
  // Width 32896, level 52428: from 19532 to 85324.
  const slice::GreyWindow window(127, 51);

  EXPECT_EQ(window.Luminance(19531), 0);
  EXPECT_EQ(window.Luminance(19532), 0);
  EXPECT_EQ(window.Luminance(52428), 32767);
  EXPECT_EQ(window.Luminance(65535), 45823);
}

TEST(SliceGreyWindowTest, AFullContrastKnowsBlackAndWhiteAlone) {
  const slice::GreyWindow window(255, 128);

  EXPECT_EQ(window.Luminance(0), 0);
  EXPECT_EQ(window.Luminance(32638), 0);
  EXPECT_EQ(window.Luminance(32639), 65535);
  EXPECT_EQ(window.Luminance(65535), 65535);
}

TEST(SliceGreyWindowTest, FullContrastAndBrightnessAreWhite) {
  EXPECT_EQ(slice::GreyWindow(255, 255).Luminance(0), 65535);
}

TEST(SliceGreyWindowTest, FullBrightnessWithoutContrastIsMidGreyAndUp) {
  const slice::GreyWindow window(0, 255);

  for (const int value : {0, 1, 2, 1001, 40000, 65533, 65534}) {
    EXPECT_EQ(window.Luminance(static_cast<std::uint16_t>(value)), (value + 65535) / 2) << value;
  }
  EXPECT_EQ(window.Luminance(65535), 65535);
}

TEST(SliceGreyWindowTest, GreyValuesMapAsKnown) {
  const json cases = Views()["windowTexels"];
  for (const json& one : cases) {
    const slice::GreyWindow window(one["contrast"].get<std::uint8_t>(),
                                   one["brightness"].get<std::uint8_t>());
    for (std::size_t i = 0; i < one["grey"].size(); ++i) {
      EXPECT_EQ(window.Luminance(one["grey"][i].get<std::uint16_t>()), one["texel"][i].get<int>())
          << one.dump();
    }
  }
}

// Planes of a volume.

/// A volume of 5 x 40 x 7 voxels, no two of one plane equal.
class SliceExtractTest : public testing::Test {
protected:
  static constexpr std::array<int, 3> kDims = {5, 40, 7};
  VoxData volume;

  void SetUp() override {
    volume.SetupSlot("", kDims[0], kDims[1], kDims[2], 1, 0, 0, 0, 0, 0);
    volume.AllocateArrays(0);
    for (int x = 0; x < kDims[0]; ++x) {
      for (int y = 0; y < kDims[1]; ++y) {
        for (int z = 0; z < kDims[2]; ++z) {
          volume.grey[x][y][z] = Grey(x, y, z);
          volume.seg[x][y][z] = static_cast<std::uint8_t>(Grey(x, y, z) % 251);
        }
      }
    }
  }
  static std::uint16_t Grey(int x, int y, int z) {
    return static_cast<std::uint16_t>(10000 * x + 200 * y + z + 1);
  }
  std::vector<std::uint16_t> Extract(int direction, int index, int width, int height) const {
    const auto pixels = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    std::vector<std::uint16_t> out(pixels + 1, 77);
    slice::Extract<std::uint16_t>(volume.grey, volume.Labels(), direction, index, width, height,
                                  out.data());
    EXPECT_EQ(out.back(), 77) << "written behind the slice";
    out.pop_back();
    return out;
  }
  static int Size(int axis) { return kDims[static_cast<std::size_t>(axis)]; }
};

TEST_F(SliceExtractTest, EachDirectionHasItsPixels) {
  const std::vector<std::uint16_t> xy = Extract(2, 3, 5, 40);
  const std::vector<std::uint16_t> yz = Extract(0, 4, 7, 40);
  const std::vector<std::uint16_t> xz = Extract(1, 33, 7, 5);

  EXPECT_EQ(xy[36 * 5 + 2], Grey(2, 36, 3));
  EXPECT_EQ(yz[36 * 7 + 6], Grey(4, 36, 6));
  EXPECT_EQ(xz[3 * 7 + 6], Grey(3, 33, 6));
}

TEST_F(SliceExtractTest, ASliceOfTheVolumesSizeIsTheWholePlane) {
  for (int direction = 0; direction < 3; ++direction) {
    const slice::Axes axes = slice::AxesOf(direction);
    const int width = Size(axes.x);
    const int height = Size(axes.y);
    for (int index = 0; index < Size(direction); ++index) {
      std::vector<std::uint16_t> plane(static_cast<std::size_t>(width) *
                                       static_cast<std::size_t>(height));
      ASSERT_EQ(volume.GetGreySlice(direction, index, plane.data()), 1);
      EXPECT_EQ(Extract(direction, index, width, height), plane) << direction << " " << index;
    }
  }
}

TEST_F(SliceExtractTest, ASmallerSliceTakesWhatFits) {
  EXPECT_THAT(Extract(2, 0, 2, 2),
              ElementsAre(Grey(0, 0, 0), Grey(1, 0, 0), Grey(0, 1, 0), Grey(1, 1, 0)));
  EXPECT_THAT(Extract(1, 2, 1, 2), ElementsAre(Grey(0, 2, 0), Grey(1, 2, 0)));
}

TEST_F(SliceExtractTest, OutsideTheVolumeALargerSliceIsZero) {
  for (int direction = 0; direction < 3; ++direction) {
    const slice::Axes axes = slice::AxesOf(direction);
    const std::vector<std::uint16_t> out = Extract(direction, 1, 50, 60);
    for (int j = 0; j < 60; ++j) {
      for (int i = 0; i < 50; ++i) {
        const bool inside = i < Size(axes.x) && j < Size(axes.y);
        ASSERT_EQ(out[static_cast<std::size_t>(j * 50 + i)] != 0, inside) << i << " " << j;
      }
    }
  }
}

TEST_F(SliceExtractTest, ASliceThatDoesNotExistIsZero) {
  const std::vector<std::uint16_t> zeros(6, 0);
  for (int direction = 0; direction < 3; ++direction) {
    EXPECT_EQ(Extract(direction, -1, 2, 3), zeros);
    EXPECT_EQ(Extract(direction, Size(direction), 2, 3), zeros);
    EXPECT_EQ(Extract(direction, std::numeric_limits<int>::max(), 2, 3), zeros);
  }
  EXPECT_EQ(Extract(3, 0, 2, 3), zeros);
  EXPECT_EQ(Extract(-1, 0, 2, 3), zeros);
  EXPECT_TRUE(Extract(2, 0, 0, 0).empty());
}

TEST_F(SliceExtractTest, WithoutAnArrayASliceIsZero) {
  std::vector<std::uint8_t> labels(6, 9);
  slice::Extract<std::uint8_t>(nullptr, volume.Labels(), 2, 0, 2, 3, labels.data());

  EXPECT_EQ(labels, std::vector<std::uint8_t>(6, 0));
}

TEST_F(SliceExtractTest, LabelsComeLikeGreyValues) {
  std::vector<std::uint8_t> labels(2);
  slice::Extract<std::uint8_t>(volume.seg, volume.Labels(), 2, 6, 2, 1, labels.data());

  EXPECT_THAT(labels, ElementsAre(volume.seg[0][0][6], volume.seg[1][0][6]));
}

}  // namespace
