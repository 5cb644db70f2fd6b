// The padded pictures behind the textures: grey values, all labels, one label.
#include "views/SlicePictures.h"

#include "VoxData/VoxData.h"
#include "tests/support/Golden.h"

#include <gtest/gtest.h>

#include <array>
#include <gmock/gmock.h>
#include <random>
#include <vector>

namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::ElementsAreArray;

using Bytes = std::vector<std::uint8_t>;
using Texel = std::array<std::uint8_t, 4>;

constexpr Texel kClear = {0, 0, 0, 0};
constexpr Texel kBlack = {0, 0, 0, 90};
constexpr Texel kRed = {255, 0, 0, 90};
constexpr Texel kGreen = {0, 255, 0, 90};
constexpr std::uint8_t kOpacity = 90;

/// A label table of red, green and blue; 4 and above are not defined.
class SlicePicturesTest : public testing::Test {
protected:
  std::array<LabelEntry, 256> table{};

  void SetUp() override {
    for (std::size_t id = 1; id <= 3; ++id) {
      table[id].rgb[id - 1] = 255;
      table[id].defined = 1;
    }
    table[4].rgb[0] = 11;  // a colour that must not show
  }
  Bytes AllLabels(const Bytes& labels, int width, int height, int padding = 0) const {
    Bytes texels(4 * static_cast<std::size_t>((width + padding) * height), 7);
    slice::FillAllLabels(labels.data(), width, height, padding, table.data(), kOpacity,
                         texels.data());
    return texels;
  }
  static Texel At(const Bytes& texels, std::size_t index) {
    return {texels[4 * index], texels[4 * index + 1], texels[4 * index + 2], texels[4 * index + 3]};
  }
};

TEST_F(SlicePicturesTest, LuminanceLeavesThePaddingAlone) {
  const std::vector<std::uint16_t> grey = {0, 65535, 1000, 40000};
  std::vector<std::uint16_t> texels(6, 5);
  const slice::GreyWindow window(0, 0);
  slice::FillLuminance(grey.data(), 2, 2, 1, window, texels.data());

  EXPECT_THAT(texels, ElementsAre(window.Luminance(0), window.Luminance(65535), 5,
                                  window.Luminance(1000), window.Luminance(40000), 5));
}

TEST_F(SlicePicturesTest, EveryLabelHasItsColourAndTheBackgroundIsClear) {
  const Bytes texels = AllLabels({0, 1, 2, 0}, 2, 2);

  EXPECT_EQ(At(texels, 0), kClear);
  EXPECT_EQ(At(texels, 1), kRed);
  EXPECT_EQ(At(texels, 2), kGreen);
  EXPECT_EQ(At(texels, 3), kClear);
}

TEST_F(SlicePicturesTest, LabelsLeaveThePaddingAlone) {
  const Bytes texels = AllLabels({1, 1}, 1, 2, 1);

  EXPECT_EQ(At(texels, 0), kRed);
  EXPECT_EQ(At(texels, 1), (Texel{7, 7, 7, 7}));
  EXPECT_EQ(At(texels, 2), kRed);
}

TEST_F(SlicePicturesTest, AnUndefinedLabelTakesTheLastColourFoundColumnByColumn) {
  // Columns from the left, rows from the bottom: 1, 9 | 0, 2 | 4, 1.
  const Bytes texels = AllLabels({1, 0, 4, 9, 2, 1}, 3, 2);

  EXPECT_EQ(At(texels, 0), kRed);
  EXPECT_EQ(At(texels, 3), kRed);    // 9, after 1
  EXPECT_EQ(At(texels, 1), kClear);  // 0
  EXPECT_EQ(At(texels, 4), kGreen);
  EXPECT_EQ(At(texels, 2), kGreen);  // 4, after 2
  EXPECT_EQ(At(texels, 5), kRed);
}

TEST_F(SlicePicturesTest, AnUndefinedLabelBeforeAnyColourIsBlack) {
  const Bytes texels = AllLabels({9, 1}, 2, 1);

  EXPECT_EQ(At(texels, 0), kBlack);
  EXPECT_EQ(At(texels, 1), kRed);
}

TEST_F(SlicePicturesTest, AllLabelsAreThoseOfThePlainRule) {
  std::mt19937 random(11);
  for (int round = 0; round < 200; ++round) {
    const int width = 1 + static_cast<int>(random() % 9);
    const int height = 1 + static_cast<int>(random() % 9);
    Bytes labels(static_cast<std::size_t>(width * height));
    const unsigned largest = round % 2 == 0 ? 3 : 6;  // without and with undefined ones
    for (std::uint8_t& label : labels) {
      label = static_cast<std::uint8_t>(random() % (largest + 1));
    }

    const Bytes texels = AllLabels(labels, width, height);

    Texel last = kBlack;
    for (int i = 0; i < width; ++i) {
      for (int j = 0; j < height; ++j) {
        const auto pixel = static_cast<std::size_t>(j * width + i);
        const std::uint8_t* rgb = table[labels[pixel]].rgb;
        if (table[labels[pixel]].defined == 1) { last = {rgb[0], rgb[1], rgb[2], kOpacity}; }
        ASSERT_EQ(At(texels, pixel), labels[pixel] == 0 ? kClear : last);
      }
    }
  }
}

TEST_F(SlicePicturesTest, OnPurposeOneLabelLeavesTheTexelsOfOthersAsTheyWere) {
  const Bytes labels = {0, 1, 2, 3};
  Bytes texels(16, 7);
  slice::FillOneLabel(labels.data(), 2, 2, 0, table.data(), 2, kOpacity, texels.data());

  EXPECT_EQ(At(texels, 0), kClear);
  EXPECT_EQ(At(texels, 1), (Texel{7, 7, 7, 7}));
  EXPECT_EQ(At(texels, 2), kGreen);
  EXPECT_EQ(At(texels, 3), (Texel{7, 7, 7, 7}));
}

TEST_F(SlicePicturesTest, OneLabelWithoutAColourIsBlack) {
  const Bytes labels = {4, 1};
  Bytes texels(8, 7);
  slice::FillOneLabel(labels.data(), 2, 1, 0, table.data(), 4, kOpacity, texels.data());

  EXPECT_EQ(At(texels, 0), kBlack);
}

TEST_F(SlicePicturesTest, ALabelThatNoByteHoldsPaintsNothing) {
  const Bytes labels = {44, 255};
  for (const int wanted : {-1, 300, 256 + 44}) {
    Bytes texels(8, 7);
    slice::FillOneLabel(labels.data(), 2, 1, 0, table.data(), wanted, kOpacity, texels.data());
    EXPECT_THAT(texels, ElementsAreArray(Bytes(8, 7))) << wanted;
  }
}

/// The volume of the known textures.
class GoldenTexturesTest : public testing::Test {
protected:
  json textures = golden::Json("views/views.json")["textures"];
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
  static std::string Sum(const void* bytes, std::size_t count) {
    Fnv64 sum;
    sum.Add(bytes, count);
    char text[20];
    std::snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(sum.Value()));
    return text;
  }
};

TEST_F(GoldenTexturesTest, PaddedPicturesAreAsKnown) {
  for (const json& one : textures["cases"]) {
    SCOPED_TRACE(one.dump());
    const int direction = one["direction"];
    const int width = one["sliceWidth"];
    const int height = one["sliceHeight"];
    const int padding = slice::PaddingOf(width);
    EXPECT_EQ(padding, one["paddingX"].get<int>());
    EXPECT_EQ(slice::PaddingOf(height), one["paddingY"].get<int>());
    const auto pixels = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    const auto texels = static_cast<std::size_t>(width + padding) *
                        static_cast<std::size_t>(height + slice::PaddingOf(height));
    std::vector<std::uint16_t> grey(pixels);
    Bytes labels(pixels);
    slice::Extract<std::uint16_t>(volume.grey, volume.Labels(), direction, one["slice"], width,
                                  height, grey.data());
    slice::Extract<std::uint8_t>(volume.seg, volume.Labels(), direction, one["slice"], width,
                                 height, labels.data());

    std::vector<std::uint16_t> luminance(texels);
    slice::FillLuminance(grey.data(), width, height, padding,
                         slice::GreyWindow(one["contrast"], one["brightness"]), luminance.data());
    Bytes all(4 * texels);
    slice::FillAllLabels(labels.data(), width, height, padding, volume.labels, one["labelOpacity"],
                         all.data());
    Bytes single(4 * texels);
    slice::FillOneLabel(labels.data(), width, height, padding, volume.labels, one["currentLabel"],
                        one["labelOpacity"], single.data());

    EXPECT_EQ(Sum(luminance.data(), 2 * texels), one["windowGrey16"]);
    EXPECT_EQ(Sum(all.data(), all.size()), one["windowLabelsRGBA"]);
    EXPECT_EQ(Sum(single.data(), single.size()), one["canvasLabelsRGBA"]);
  }
}

}  // namespace
