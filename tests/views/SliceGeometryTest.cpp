// Slice geometry and pictures: padding, fit, zoom, window and level, labels.
#include "views/SliceGeometry.h"

#include "VoxData/VoxData.h"
#include "tests/support/Golden.h"
#include "views/SlicePictures.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using nlohmann::json;

json Views() { return golden::Json("views/views.json"); }

std::string Hex16(std::uint64_t value) {
  char text[20];
  std::snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(value));
  return text;
}

TEST(SliceGeometryTest, SidesAreKnownByTheirPadding) {
  const json padding = Views()["paddingOfSides1to300"];
  for (int side = 1; side <= 300; ++side) {
    EXPECT_EQ(slice::PaddingOf(side), padding[static_cast<std::size_t>(side - 1)].get<int>())
        << side;
  }
}

TEST(SliceGeometryTest, APowerOfTwoFromSixtyFourOnNeedsNoPadding) {
  for (const int side : {64, 128, 256, 512}) { EXPECT_EQ(slice::PaddingOf(side), 0); }
}

TEST(SliceGeometryTest, ASmallSideIsPaddedToSixtyFour) {
  EXPECT_EQ(slice::PaddingOf(1), 63);
  EXPECT_EQ(slice::PaddingOf(0), 64);
}

TEST(SliceGeometryTest, GreyValuesMapAsKnown) {
  const json all = Views();
  for (const json& one : all["windowTexels"]) {
    const slice::GreyWindow window(one["contrast"].get<std::uint8_t>(),
                                   one["brightness"].get<std::uint8_t>());
    for (std::size_t i = 0; i < one["grey"].size(); ++i) {
      EXPECT_EQ(window.Luminance(one["grey"][i].get<std::uint16_t>()), one["texel"][i].get<int>())
          << one.dump();
    }
  }
}

TEST(SliceGeometryTest, AFullContrastKnowsBlackAndWhiteAlone) {
  const slice::GreyWindow window(255, 128);

  EXPECT_EQ(window.Luminance(0), 0);
  EXPECT_EQ(window.Luminance(32638), 0);
  EXPECT_EQ(window.Luminance(32640), 65535);
}

TEST(SliceGeometryTest, FullBrightnessWithoutContrastIsMidGreyAndUp) {
  const slice::GreyWindow window(0, 255);

  EXPECT_EQ(window.Luminance(0), 32767);
  EXPECT_EQ(window.Luminance(65534), 65534);
}

TEST(SliceGeometryTest, DragsPanAndZoomAsKnown) {
  const json all = Views();
  for (const json& one : all["mouse"]) {
    const slice::Extent extent{one["sliceWidth"], one["sliceHeight"], one["voxelX"], one["voxelY"]};
    const int w = one["W"];
    const int h = one["H"];
    slice::View view = slice::FitView(extent, w, h);
    EXPECT_EQ(view.zoom, one["fitZoom"].get<float>());
    EXPECT_EQ(view.centreX, one["fitCentreX"].get<float>());
    for (const json& drag : one["drags"]) {
      const int right = drag["toX"].get<int>() - drag["fromX"].get<int>();
      const int down = drag["toY"].get<int>() - drag["fromY"].get<int>();
      if (drag["button"] == 1) {
        view.centreX -= static_cast<float>(right) / view.zoom;
        view.centreY += static_cast<float>(down) / view.zoom;
      } else if (drag["button"] == 3) {
        view.zoom = slice::ZoomAfterDrag(view.zoom, down, extent, w);
      }
      EXPECT_EQ(view.zoom, drag["zoom"].get<float>()) << drag.dump();
      EXPECT_EQ(view.centreX, drag["centreX"].get<float>()) << drag.dump();
      EXPECT_EQ(view.centreY, drag["centreY"].get<float>()) << drag.dump();
    }
  }
}

TEST(SliceGeometryTest, TheZoomStopsAtOneVoxelAndAtOnePixel) {
  const slice::Extent extent{100, 100, 2.0F, 2.0F};

  EXPECT_EQ(slice::ZoomAfterDrag(1.0F, -1000, extent, 220), 110.0F);
  EXPECT_EQ(slice::ZoomAfterDrag(1.0F, 1000, extent, 220), 1.0F / 200.0F);
}

TEST(SliceGeometryTest, PositionsStayOnTheSlice) {
  EXPECT_EQ(slice::PixelAt(-7.5F, 10), 0);
  EXPECT_EQ(slice::PixelAt(3.9F, 10), 3);
  EXPECT_EQ(slice::PixelAt(10.0F, 10), 9);
  EXPECT_EQ(slice::PixelAt(std::nanf(""), 10), 0);
  EXPECT_EQ(slice::PixelAt(std::numeric_limits<float>::infinity(), 10), 9);
}

/// The volume of the known textures.
class SliceTextureTest : public testing::Test {
protected:
  json textures = Views()["textures"];
  VoxData volume;

  void SetUp() override {
    const auto dims = textures["dims"].get<std::array<int, 3>>();
    const auto grey = golden::Bytes("views/" + textures["grey"].get<std::string>());
    const auto labels = golden::Bytes("views/" + textures["labels"].get<std::string>());
    volume.SetupSlot("", dims[0], dims[1], dims[2], 1, 0, 0, 0, 0, 0);
    volume.AllocateArrays(0);
    std::size_t at = 0;
    for (int z = 0; z < dims[2]; ++z) {
      for (int y = 0; y < dims[1]; ++y) {
        for (int x = 0; x < dims[0]; ++x, ++at) {
          volume.seg[x][y][z] = labels[at];
          volume.labels[labels[at]].defined = 1;
          volume.grey[x][y][z] = static_cast<std::uint16_t>(grey[2 * at] << 8U | grey[2 * at + 1]);
        }
      }
    }
  }
};

TEST_F(SliceTextureTest, PaddedPicturesAreAsKnown) {
  for (const json& one : textures["cases"]) {
    SCOPED_TRACE(one.dump());
    const int direction = one["direction"];
    const int width = one["sliceWidth"];
    const int height = one["sliceHeight"];
    const int padding = slice::PaddingOf(width);
    EXPECT_EQ(padding, one["paddingX"].get<int>());
    const auto pixels = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    const auto texels = static_cast<std::size_t>(width + padding) *
                        static_cast<std::size_t>(height + slice::PaddingOf(height));
    std::vector<std::uint16_t> grey(pixels);
    std::vector<std::uint8_t> labels(pixels);
    slice::Extract<std::uint16_t>(volume.grey, volume.Labels(), direction, one["slice"], width,
                                  height, grey.data());
    slice::Extract<std::uint8_t>(volume.seg, volume.Labels(), direction, one["slice"], width,
                                 height, labels.data());
    std::vector<std::uint16_t> luminance(texels);
    slice::FillLuminance(grey.data(), width, height, padding,
                         slice::GreyWindow(one["contrast"], one["brightness"]), luminance.data());
    std::vector<std::uint8_t> all(4 * texels);
    slice::FillAllLabels(labels.data(), width, height, padding, volume.labels, one["labelOpacity"],
                         all.data());
    std::vector<std::uint8_t> single(4 * texels);
    slice::FillOneLabel(labels.data(), width, height, padding, volume.labels, one["currentLabel"],
                        one["labelOpacity"], single.data());

    Fnv64 ofGrey;
    ofGrey.Add(luminance.data(), 2 * texels);
    Fnv64 ofAll;
    ofAll.Add(all.data(), all.size());
    Fnv64 ofOne;
    ofOne.Add(single.data(), single.size());
    EXPECT_EQ(Hex16(ofGrey.Value()), one["windowGrey16"]);
    EXPECT_EQ(Hex16(ofAll.Value()), one["windowLabelsRGBA"]);
    EXPECT_EQ(Hex16(ofOne.Value()), one["canvasLabelsRGBA"]);
  }
}

TEST_F(SliceTextureTest, WhatLiesOutsideTheVolumeIsZero) {
  std::vector<std::uint8_t> labels(50 * 80, 9);
  for (int direction = 0; direction < 3; ++direction) {
    slice::Extract<std::uint8_t>(volume.seg, volume.Labels(), direction, 5000, 50, 80,
                                 labels.data());
    for (const std::uint8_t label : labels) { ASSERT_EQ(label, 0); }
  }
  slice::Extract<std::uint8_t>(volume.seg, volume.Labels(), 2, 3, 50, 80, labels.data());
  EXPECT_EQ(labels[49], 0);
  EXPECT_EQ(labels[79 * 50], 0);
  slice::Extract<std::uint8_t>(nullptr, volume.Labels(), 2, 3, 50, 80, labels.data());
  EXPECT_EQ(labels[0], 0);
}

}  // namespace
