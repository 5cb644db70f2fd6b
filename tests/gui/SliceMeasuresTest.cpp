// The slice measures through their buttons: fields, pictures, refusals, commands inside commands.
#include "VoxData/VoxData.h"
#include "tests/slicemeasures/PlainSlices.h"
#include "tests/support/GoldenSlices.h"
#include "tests/support/Interface.h"
#include "view3d/Window3D.h"
#include "views/Segimage.h"
#include "views/Window2D.h"

#include <FL/Fl_Button.H>
#include <FL/Fl_Choice.H>
#include <FL/Fl_Group.H>
#include <FL/Fl_Output.H>
#include <FL/Fl_Round_Button.H>
#include <FL/Fl_Scrollbar.H>
#include <FL/Fl_Slider.H>
#include <FL/Fl_Value_Input.H>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <fstream>
#include <gmock/gmock.h>
#include <initializer_list>
#include <memory>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Dims = std::array<int, 3>;

struct Pictures {
  measure::Picture result = {};
  measure::Picture mark = {};
};

class SliceMeasuresTest : public Interface {
protected:
  /// A study of empty images, through the dialogs; their voxels are set afterwards.
  void LoadEmpty(const Dims& dims, int images, const Dims& others = {}) {
    const std::string folder = Scratch() + "/";
    const std::string path = folder + "grey.raw";
    const std::size_t voxels =
        static_cast<std::size_t>(dims[0]) * static_cast<std::size_t>(dims[1] * dims[2]);
    const std::string zeros(256 + std::max<std::size_t>(voxels, 100000), '\0');
    std::ofstream(path) << zeros;
    LoadGreyByHand(path, dims, 1, 256);
    for (int image = 0; image < images; ++image) {
      const std::string seg = folder + "seg" + std::to_string(image) + ".raw";
      std::ofstream(seg) << zeros;
      if (image > 0 && others[0] > 0) { Ui().greyXdimInput->value(others[0]); }
      LoadSegByHand(seg);
    }
    ASSERT_EQ(Ui().imageCount, std::max(images, 1));
    Choose(Ui().image1Choice, 0);
    Choose(Ui().image2Choice, std::min(1, images - 1));
    Slide(Ui().imageSlider, 0);
    SetLabel(1);
    alerts.clear();
  }

  void SetVoxel(int image, int x, int y, int z, int label = 1) {
    Ui().images[image]->EditableLabels().Set(x, y, z, static_cast<std::uint8_t>(label));
  }
  void SetVoxels(int image, const std::vector<std::uint8_t>& xFastest) {
    const EditVolume labels = Ui().images[image]->EditableLabels();
    auto byte = xFastest.begin();
    for (int z = 0; z < labels.dimZ; ++z) {
      for (int y = 0; y < labels.dimY; ++y) {
        for (int x = 0; x < labels.dimX; ++x) { labels.Set(x, y, z, *byte++); }
      }
    }
  }
  /// A ball of a label, and what of it does not overlap is another one.
  void SetBall(int image, const std::array<double, 3>& centre, double radius, int label = 1) {
    const EditVolume labels = Ui().images[image]->EditableLabels();
    for (int x = 0; x < labels.dimX; ++x) {
      for (int y = 0; y < labels.dimY; ++y) {
        for (int z = 0; z < labels.dimZ; ++z) {
          const double distance = std::hypot(x - centre[0], y - centre[1], z - centre[2]);
          if (distance <= radius) { SetVoxel(image, x, y, z, label); }
        }
      }
    }
  }

  Fl_Round_Button* DirectionButton(int direction) {
    return direction == 2   ? Ui().directionXYButton
           : direction == 1 ? Ui().directionXZButton
                            : Ui().directionYZButton;
  }
  Fl_Widget* OverlayResultButton() { return Ui().measuresGroup->child(OverlayResultPlace()); }
  int OverlayResultPlace() {
    for (int i = 0; i < Ui().measuresGroup->children(); ++i) {
      const Fl_Widget* child = Ui().measuresGroup->child(i);
      if (child->x() == 405 && child->y() == 360) { return i; }
    }
    return -1;
  }
  Fl_Widget* ButtonOf(const std::string& command) {
    if (command == "OverlayResult2D") { return OverlayResultButton(); }
    if (command == "Overlay2D") { return Ui().overlay2DButton; }
    if (command == "Complexity") { return Ui().complexityButton; }
    if (command == "InteriorContour") { return Ui().areaPerimeterButton; }
    if (command == "DisplayDistanceMap") { return Ui().danielsson2DButton; }
    if (command == "Haussdorf2D") { return Ui().haussdorfButton; }
    return command == "ProbabilityIntra" ? Ui().overlayIntraButton : Ui().overlayInterButton;
  }
  std::vector<std::pair<std::string, Fl_Output*>> Fields() {
    return {{"union2DOutput", Ui().union2DOutput},
            {"intersect2DOutput", Ui().intersect2DOutput},
            {"overlapRatioOutput", Ui().overlapRatioOutput},
            {"perimeterOutput", Ui().perimeterOutput},
            {"areaOutput", Ui().areaOutput},
            {"ratioOutput", Ui().ratioOutput},
            {"interiorPerimeterOutput", Ui().interiorPerimeterOutput},
            {"nonCommonAreaOutput", Ui().nonCommonAreaOutput},
            {"interiorRatioOutput", Ui().interiorRatioOutput},
            {"haussdorfABOutput", Ui().haussdorfABOutput},
            {"haussdorfBAOutput", Ui().haussdorfBAOutput},
            {"haussdorfOutput", Ui().haussdorfOutput},
            {"probaOverlapIntraOutput", Ui().probaOverlapIntraOutput},
            {"probaOverlapInterOutput", Ui().probaOverlapInterOutput}};
  }
  std::string Text(const Fl_Output* field) { return field->value(); }
  static std::string Number(const char* format, double value) {
    char text[400];
    std::snprintf(text, sizeof text, format, value);
    return text;
  }

  golden::CanvasState State() {
    const Segimage& canvas = *Ui().segimage;
    golden::CanvasState state;
    for (const auto& [name, field] : Fields()) { state.fields[name] = field->value(); }
    state.width = canvas.sliceWidth;
    state.height = canvas.sliceHeight;
    state.lastDirection = lastDirection;
    state.overlayVisible = canvas.overlayVisible == 1;
    state.overlayInDrawCurrent = canvas.overlayInDrawCurrent == 1;
    state.result = &canvas.result;
    state.mark = &canvas.mark;
    return state;
  }
};

// The studies with known results.

class GoldenSliceMeasuresTest : public SliceMeasuresTest, public testing::WithParamInterface<int> {
protected:
  nlohmann::json study = golden::Json(Folder() + "slice.json");

  static std::string Folder() { return "slice_" + std::to_string(GetParam()) + "/"; }

  void LoadStudy(const std::string& kind) {
    LoadEmpty(study[kind == "cube" ? "cubeDims" : "dims"].get<Dims>(), 6);
    int image = 0;
    for (const auto& file : study[kind + "s"]) {
      SetVoxels(image++, golden::Bytes(Folder() + file.get<std::string>()));
    }
    FreshCanvas();
  }
  /// A canvas as it is right after a load.
  void FreshCanvas() {
    Segimage& canvas = *Ui().segimage;
    std::memset(canvas.result, 0, sizeof canvas.result);
    std::memset(canvas.mark, 0, sizeof canvas.mark);
    std::memset(canvas.userCounts, 0, sizeof canvas.userCounts);
    canvas.overlayVisible = 0;
    canvas.overlayInDrawCurrent = 0;
    lastDirection = 2;
    Load();
  }
  void Load() {
    Ui().segimage->Register(2, &Ui());
    Ui().segimage->InitSlice();
  }
  void Run(const nlohmann::json& step) {
    SetLabel(step["label"].get<int>());
    Choose(Ui().image1Choice, step["image1"].get<int>());
    Choose(Ui().image2Choice, step["image2"].get<int>());
    Ui().imageSlider->value(step["imageSlider"].get<int>());
    for (int axis = 0; axis < 3; ++axis) {
      Slide(Ui().cursorSlider[axis], step["cursorSlider"][static_cast<std::size_t>(axis)]);
    }
    Click(DirectionButton(step["direction"].get<int>()));
    if (step.contains("ratio")) {
      const auto radio = step["ratio"].get<std::string>();
      Ui().overlapUnionAverageRadio->value(radio == "average" ? 1 : 0);
      Ui().overlapUnionIntersectRadio->value(radio == "intersect" ? 1 : 0);
      Ui().overlapUnionARadio->value(radio == "a" ? 1 : 0);
    }
    if (step.contains("userCount")) {
      Ui().userCount = step["userCount"].get<int>();
      Ui().slicesPerUser = step["slicesPerUser"].get<int>();
      Ui().overlayIntraSlider->maximum(Ui().userCount - 1);
      Ui().overlayIntraSlider->value(
          std::min(step["overlayIntraSlider"].get<int>(), Ui().userCount - 1));
    }
    Click(ButtonOf(step["command"].get<std::string>()));
  }
};

TEST_P(GoldenSliceMeasuresTest, EverySequenceOfButtonsIsAsKnown) {
  for (const auto& sequence : study["sequences"]) {
    LoadStudy(sequence["images"].get<std::string>());
    for (const auto& step : sequence["steps"]) {
      if (step["command"] == "load") {
        Load();
        continue;
      }
      Run(step);
      golden::ExpectStep(step, State());
      EXPECT_THAT(alerts, IsEmpty());
      if (HasFailure()) { FAIL() << golden::NameOf(step); }
    }
  }
}

TEST_P(GoldenSliceMeasuresTest, ButtonsOnAFreshCanvasAreAsKnown) {
  LoadStudy("image");
  const auto& steps = study["fresh"];
  for (std::size_t place = 0; place < steps.size(); place += 9) {  // odd to the eight commands
    FreshCanvas();
    Run(steps[place]);
    golden::ExpectStep(steps[place], State());
    if (HasFailure()) { FAIL() << golden::NameOf(steps[place]); }
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, GoldenSliceMeasuresTest, testing::ValuesIn(golden::kSliceSeeds));

// Two balls that overlap, measured in every direction after the sliders moved.

class DrawnSliceMeasuresTest : public SliceMeasuresTest {
protected:
  void SetUp() override {
    SliceMeasuresTest::SetUp();
    LoadEmpty({30, 26, 22}, 2);
    SetBall(0, {14, 12, 10}, 7.3);
    SetBall(1, {16, 13, 11}, 6.4);
    for (const int axis : {0, 1, 2}) { Slide(Ui().cursorSlider[axis], kSlices[axis]); }
  }
  static constexpr int kSlices[3] = {15, 11, 9};

  /// The bytes of an image on the slice on show.
  int Byte(int image, int direction, int i, int j) {
    return plain::Byte(Ui().images[image]->Labels(), direction, kSlices[direction], i, j);
  }
  void ExpectShown(int i, int j, int grey) {
    const Segimage& canvas = *Ui().segimage;
    const double x = (i + 0.5 - canvas.viewCentreX) * canvas.zoom + canvas.w() / 2.0;
    const double y = (j + 0.5 - canvas.viewCentreY) * canvas.zoom + canvas.h() / 2.0;
    const Pixel pixel = PixelOf(Ui().segimage, static_cast<int>(x), static_cast<int>(y));
    for (const int channel : {pixel.red, pixel.green, pixel.blue}) {
      EXPECT_NEAR(channel, grey, 1) << i << ", " << j;
    }
  }
  /// Pixels of the whole picture, but for the columns and rows of the cursors.
  template <class Grey>
  void ExpectPicture(Grey greyOf) {
    const Segimage& canvas = *Ui().segimage;
    for (int i = 1; i < canvas.sliceWidth; i += 5) {
      for (int j = 2; j < canvas.sliceHeight; j += 4) {
        if (i == kSlices[canvas.axisX] || j == kSlices[canvas.axisY]) { continue; }
        ExpectShown(i, j, greyOf(i, j));
      }
    }
  }
};

TEST_F(DrawnSliceMeasuresTest, OverlayResultCountsAndShowsThreeLevelsInEveryDirection) {
  for (const int direction : {0, 1, 2}) {
    Click(DirectionButton(direction));
    Click(OverlayResultButton());
    int counts[4] = {};
    const LabelVolume shape = Ui().images[0]->Labels();
    for (int i = 0; i < plain::WidthOf(shape, direction); ++i) {
      for (int j = 0; j < plain::HeightOf(shape, direction); ++j) {
        ++counts[Byte(0, direction, i, j) + 2 * Byte(1, direction, i, j)];
      }
    }
    ASSERT_GT(counts[3], 0);

    EXPECT_EQ(Text(Ui().union2DOutput), std::to_string(counts[1] + counts[2] + counts[3]));
    EXPECT_EQ(Text(Ui().intersect2DOutput), std::to_string(counts[3]));
    const int average = (counts[1] + counts[2] + 2 * counts[3]) / 2;
    EXPECT_EQ(Text(Ui().overlapRatioOutput),
              Number("%.6f", static_cast<double>(counts[3]) / average));
    ExpectPicture([&](int i, int j) {
      const int levels[] = {0, 15241 / 257, 255};
      return levels[Byte(0, direction, i, j) + Byte(1, direction, i, j)];
    });
  }
}

TEST_F(DrawnSliceMeasuresTest, OverlayTwoDShowsTheSecondImageInWhiteUnderTheFirstInColour) {
  for (const int direction : {0, 1, 2}) {
    Click(DirectionButton(direction));
    Click(Ui().overlay2DButton);
    const auto colour = Ui().images[0]->GetLabelColour(1);
    const double opacity = viewState->GetLabelOpacity() / 255.0;

    const Segimage& canvas = *Ui().segimage;
    for (int i = 1; i < canvas.sliceWidth; i += 3) {
      for (int j = 2; j < canvas.sliceHeight; j += 3) {
        if (i == kSlices[canvas.axisX] || j == kSlices[canvas.axisY]) { continue; }
        const double white = Byte(1, direction, i, j) == 1 ? 255.0 : 0.0;
        const bool coloured = Byte(0, direction, i, j) == 1;
        const double red = coloured ? white * (1 - opacity) + 255 * colour[0] * opacity : white;
        const double x = (i + 0.5 - canvas.viewCentreX) * canvas.zoom + canvas.w() / 2.0;
        const double y = (j + 0.5 - canvas.viewCentreY) * canvas.zoom + canvas.h() / 2.0;
        const Pixel pixel = PixelOf(Ui().segimage, static_cast<int>(x), static_cast<int>(y));
        EXPECT_NEAR(pixel.red, red, 2) << i << ", " << j;
      }
    }
  }
}

TEST_F(DrawnSliceMeasuresTest, OverlayTwoDClearsThePictureBeyondTheSliceToo) {
  Ui().segimage->result[299][299] = 15241;
  Click(OverlayResultButton());
  EXPECT_EQ(Ui().segimage->result[299][299], 15241);

  Click(Ui().overlay2DButton);
  EXPECT_EQ(Ui().segimage->result[299][299], 0);
}

TEST_F(DrawnSliceMeasuresTest, ComplexityMeasuresAndShowsTheContourOfTheImageOnShow) {
  for (const int direction : {0, 1, 2}) {
    Slide(Ui().imageSlider, 1);
    Click(DirectionButton(direction));
    Click(Ui().complexityButton);
    const auto pictures = std::make_unique<Pictures>();
    plain::Contour contour(pictures->result, pictures->mark);
    contour.Complexity(Ui().images[1]->Labels(), direction, kSlices[direction], kSlices[0], 1);
    ASSERT_GT(contour.perimeter, 10.0F);

    EXPECT_EQ(Text(Ui().perimeterOutput), Number("%.4f", contour.perimeter));
    EXPECT_EQ(Text(Ui().areaOutput), std::to_string(contour.area));
    const double length = contour.perimeter;
    EXPECT_EQ(Text(Ui().ratioOutput),
              Number("%.6f", length * length / (contour.area * 12.56637061432)));
    EXPECT_EQ(Ui().segimage->perimeter, contour.perimeter);
    EXPECT_EQ(Ui().segimage->contourX, contour.contourX);
    EXPECT_EQ(Ui().segimage->contourY, contour.contourY);
    EXPECT_EQ(Ui().segimage->contourStep, 2);
    ExpectPicture([&](int i, int j) { return pictures->result[i][j] == 65000 ? 253 : 0; });
  }
}

TEST_F(DrawnSliceMeasuresTest, OnPurposeAreaPerimeterComparesTheTwoImagesAlongXYAlone) {
  const auto pictures = std::make_unique<Pictures>();  // borders keep what other slices left
  for (const int direction : {2, 0, 1}) {
    Click(DirectionButton(direction));
    Click(Ui().areaPerimeterButton);
    plain::Contour contour(pictures->result, pictures->mark);
    contour.InteriorContour(Ui().images[0]->Labels(), Ui().images[0]->Labels(),
                            Ui().images[1]->Labels(), direction, kSlices[direction], kSlices[0], 1);
    ASSERT_GT(contour.perimeter, 10.0F);

    EXPECT_EQ(Text(Ui().interiorPerimeterOutput), Number("%.4f", contour.perimeter));
    EXPECT_EQ(Text(Ui().nonCommonAreaOutput), std::to_string(contour.area));
    EXPECT_EQ(Text(Ui().interiorRatioOutput),
              Number("%.6f", contour.area / static_cast<double>(contour.perimeter)));
    ExpectPicture([&](int i, int j) { return pictures->result[i][j] == 65000 ? 253 : 0; });
  }
}

TEST_F(DrawnSliceMeasuresTest, DanielssonShowsTheDistanceToTheImageOnShow) {
  for (const int direction : {0, 1, 2}) {
    Click(DirectionButton(direction));
    Click(Ui().danielsson2DButton);
    const plain::DistanceMap map(Ui().images[0]->Labels(), direction, kSlices[direction], 1);

    ASSERT_NE(Ui().segimage->sliceDistX, nullptr);
    EXPECT_EQ(std::memcmp(Ui().segimage->sliceDistX, map.x.data(), map.x.size() * 2), 0);
    EXPECT_EQ(std::memcmp(Ui().segimage->sliceDistY, map.y.data(), map.y.size() * 2), 0);
    ExpectPicture([&](int i, int j) {
      const auto p = static_cast<std::size_t>(j * map.w + i);
      return static_cast<int>(std::hypot(map.x[p], map.y[p]) * 900) / 257;
    });
  }
}

TEST_F(SliceMeasuresTest, OnPurposeTheCanvasIsBlackAgainBeyondSeventyThreePixels) {
  LoadEmpty({100, 60, 2}, 2);
  for (int y = 0; y < 60; ++y) { SetVoxel(0, 0, y, 0); }
  Click(DirectionButton(2));
  Click(Ui().danielsson2DButton);

  const Segimage& canvas = *Ui().segimage;
  const auto greyAt = [&](int i) {
    const double x = (i + 0.5 - canvas.viewCentreX) * canvas.zoom + canvas.w() / 2.0;
    return PixelOf(Ui().segimage, static_cast<int>(x), canvas.h() / 2).green;
  };
  EXPECT_NEAR(greyAt(36), 36 * 900 / 257, 1);
  EXPECT_NEAR(greyAt(72), 72 * 900 / 257, 1);  // nearly white
  EXPECT_NEAR(greyAt(73), (73 * 900 - 65536) / 257, 1);
  EXPECT_NEAR(greyAt(99), (99 * 900 - 65536) / 257, 1);
}

TEST_F(SliceMeasuresTest, ASliceOfOneRowKeepsItsStartValues) {
  LoadEmpty({7, 1, 2}, 2);
  SetVoxel(0, 2, 0, 0);
  SetVoxel(1, 2, 0, 0);
  SetVoxel(1, 5, 0, 0);
  Click(DirectionButton(2));
  Click(Ui().haussdorfButton);

  EXPECT_EQ(Text(Ui().haussdorfABOutput), Number("%f", std::hypot(56, 56)));  // no scan: 8 times 7
  EXPECT_EQ(Text(Ui().haussdorfBAOutput), "0.000000");
  EXPECT_EQ(Ui().progressRange->maximum(), 2.0);
  EXPECT_EQ(Ui().progressRange->value(), 0.0);
  EXPECT_STREQ(Ui().progressText->value(), "Starting backward scan");
}

TEST_F(SliceMeasuresTest, OnPurposeHaussdorfMarksACornerThatNoImageHas) {
  LoadEmpty({20, 20, 2}, 2);
  SetVoxel(0, 15, 9, 0);
  SetVoxel(0, 12, 9, 0);
  SetVoxel(1, 5, 9, 0);
  Click(DirectionButton(2));
  Click(Ui().haussdorfButton);

  const measure::Picture& result = Ui().segimage->result;
  EXPECT_EQ(result[0][0], 13500);
  EXPECT_EQ(result[12][9], 13500);  // farthest for a while
  EXPECT_EQ(result[15][9], 65535);
  EXPECT_EQ(result[5][9], 0);  // the picture of the first half is gone
}

TEST_F(SliceMeasuresTest,
       OnPurposeOfEqualDistancesTheFirstRowIsMarkedAlongXZAndElseTheFirstColumn) {
  LoadEmpty({12, 12, 12}, 2);
  for (const int axis : {0, 1, 2}) { Slide(Ui().cursorSlider[axis], 5); }
  // On each slice Image 2 has its middle, and Image 1 the pixels (2, 8) and (8, 2).
  SetVoxel(1, 5, 5, 5);
  for (const int low : {2, 8}) {
    const int high = 10 - low;
    SetVoxel(0, low, high, 5);
    SetVoxel(0, 5, low, high);
    SetVoxel(0, low, 5, high);
  }
  for (const int direction : {0, 1, 2}) {
    Click(DirectionButton(direction));
    Click(Ui().haussdorfButton);

    const measure::Picture& result = Ui().segimage->result;
    const bool byRows = direction == 1;
    EXPECT_EQ(result[2][8], byRows ? 13500 : 65535) << direction;
    EXPECT_EQ(result[8][2], byRows ? 65535 : 13500) << direction;
  }
}

TEST_F(DrawnSliceMeasuresTest, DanielssonMovesTheHiddenBarAndHidesThePanel) {
  Ui().progressPanel->show();
  Click(Ui().danielsson2DButton);

  EXPECT_STREQ(Ui().progressText->value(), "Starting backward scan");
  EXPECT_EQ(Ui().progressRange->maximum(), 2.0 * 26);
  EXPECT_EQ(Ui().progressRange->value(), 2.0 * 25);
  EXPECT_FALSE(Ui().progressPanel->visible());
}

/// Both directed distances by brute force.
double Farthest(const LabelVolume& from, const LabelVolume& to, int direction, int slice) {
  double farthest = 0.0;
  const int w = plain::WidthOf(from, direction);
  const int h = plain::HeightOf(from, direction);
  for (int i = 0; i < w; ++i) {
    for (int j = 0; j < h; ++j) {
      if (plain::Byte(from, direction, slice, i, j) != 1) { continue; }
      double nearest = 1e9;
      for (int k = 0; k < w; ++k) {
        for (int l = 0; l < h; ++l) {
          if (plain::Byte(to, direction, slice, k, l) != 1) { continue; }
          nearest = std::min(nearest, std::hypot(i - k, j - l));
        }
      }
      farthest = std::max(farthest, nearest);
    }
  }
  return farthest;
}

TEST_F(DrawnSliceMeasuresTest, HaussdorfFindsTheFarthestPixelsBothWays) {
  const LabelVolume a = Ui().images[0]->Labels();
  const LabelVolume b = Ui().images[1]->Labels();
  for (const int direction : {0, 1, 2}) {
    Click(DirectionButton(direction));
    Click(Ui().haussdorfButton);
    const double aToB = Farthest(b, a, direction, kSlices[direction]);
    const double bToA = Farthest(a, b, direction, kSlices[direction]);

    EXPECT_EQ(Text(Ui().haussdorfABOutput), Number("%f", aToB));
    EXPECT_EQ(Text(Ui().haussdorfBAOutput), Number("%f", bToA));
    EXPECT_EQ(Text(Ui().haussdorfOutput), Number("%f", static_cast<float>(std::max(aToB, bToA))));
    ExpectPicture([&](int i, int j) {
      const std::int32_t value = Ui().segimage->result[i][j];
      EXPECT_TRUE(value == 65535 || value == (Byte(0, direction, i, j) == 1 ? 13500 : 0));
      return value / 257;
    });
  }
}

TEST_F(DrawnSliceMeasuresTest, OnPurposeTheLargerHaussdorfDistanceIsShownFromThirtyTwoBits) {
  LoadEmpty({40, 40, 3}, 2);
  SetVoxel(0, 1, 1, 0);
  SetVoxel(1, 38, 36, 0);  // sqrt(37² + 35²) = 50.931326 ..., in 32 bits 50.931328
  Click(DirectionButton(2));
  Click(Ui().haussdorfButton);

  const double distance = std::hypot(37, 35);
  EXPECT_EQ(Text(Ui().haussdorfABOutput), Number("%f", distance));
  EXPECT_EQ(Text(Ui().haussdorfOutput), Number("%f", static_cast<float>(distance)));
}

TEST_F(DrawnSliceMeasuresTest, IdenticalImagesHaveNoHaussdorfDistance) {
  Choose(Ui().image2Choice, 0);
  Click(Ui().haussdorfButton);

  for (const Fl_Output* field :
       {Ui().haussdorfABOutput, Ui().haussdorfBAOutput, Ui().haussdorfOutput}) {
    EXPECT_EQ(Text(field), "0.000000");
  }
}

TEST_F(DrawnSliceMeasuresTest, OnPurposeWithoutAnythingToDivideByTheRatioShowsTheIntersection) {
  SetLabel(9);
  for (Fl_Round_Button* radio :
       {Ui().overlapUnionAverageRadio, Ui().overlapUnionIntersectRadio, Ui().overlapUnionARadio}) {
    radio->setonly();
    Click(OverlayResultButton());
    EXPECT_EQ(Text(Ui().union2DOutput), "0");
    EXPECT_EQ(Text(Ui().intersect2DOutput), "0");
    EXPECT_EQ(Text(Ui().overlapRatioOutput), "0");
  }
}

TEST_F(DrawnSliceMeasuresTest, IdenticalImagesGiveOneWithEachRadioButton) {
  Choose(Ui().image2Choice, 0);
  for (Fl_Round_Button* radio :
       {Ui().overlapUnionAverageRadio, Ui().overlapUnionIntersectRadio, Ui().overlapUnionARadio}) {
    radio->setonly();
    Click(OverlayResultButton());
    EXPECT_EQ(Text(Ui().overlapRatioOutput), "1.000000");
    EXPECT_EQ(Text(Ui().union2DOutput), Text(Ui().intersect2DOutput));
  }
}

TEST_F(DrawnSliceMeasuresTest, WithoutTheLabelTheContourFieldsSayThatThereIsNone) {
  SetLabel(9);
  Click(Ui().complexityButton);
  Click(Ui().areaPerimeterButton);

  EXPECT_EQ(Text(Ui().perimeterOutput), "0.0000");
  EXPECT_EQ(Text(Ui().areaOutput), "0");
  EXPECT_THAT(Text(Ui().ratioOutput), testing::HasSubstr("nan"));
  EXPECT_EQ(Text(Ui().interiorPerimeterOutput), "0.0000");
  EXPECT_EQ(Text(Ui().nonCommonAreaOutput), "0");
  EXPECT_THAT(Text(Ui().interiorRatioOutput), testing::HasSubstr("nan"));
}

TEST_F(DrawnSliceMeasuresTest, ADistanceToALabelThatAnImageLacksSaysSoOnTheErrorStream) {
  SetLabel(9);
  TakeErrors();
  Click(Ui().haussdorfButton);

  EXPECT_EQ(TakeErrors(), "Label 9 does not occur in Image 1: what is shown is no measurement.\n"
                          "Label 9 does not occur in Image 2: what is shown is no measurement.\n");
  EXPECT_EQ(Text(Ui().haussdorfABOutput), "0.000000");
}

// Directions.

TEST_F(DrawnSliceMeasuresTest, AnOverlayKeepsTheZoomUntilTheDirectionChanges) {
  Segimage& canvas = *Ui().segimage;
  Click(DirectionButton(2));
  Click(OverlayResultButton());
  canvas.zoom = 3.0F;
  Click(OverlayResultButton());
  EXPECT_EQ(canvas.zoom, 3.0F);

  Click(DirectionButton(0));
  Click(OverlayResultButton());

  EXPECT_NE(canvas.zoom, 3.0F);
  EXPECT_EQ(lastDirection, 0);
  EXPECT_EQ(canvas.sliceWidth, 22);
}

TEST_F(DrawnSliceMeasuresTest, TheOtherMeasuresResetTheZoomEachTime) {
  Click(DirectionButton(2));
  for (Fl_Button* button : {Ui().complexityButton, Ui().areaPerimeterButton,
                            Ui().danielsson2DButton, Ui().haussdorfButton}) {
    Ui().segimage->zoom = 3.0F;
    Click(button);
    EXPECT_NE(Ui().segimage->zoom, 3.0F);
  }
}

TEST_F(DrawnSliceMeasuresTest, OnPurposeAnOverlayAfterAContourCountsInTheSizesOfItsDirection) {
  Click(DirectionButton(2));
  Click(OverlayResultButton());
  const std::string whole = Text(Ui().union2DOutput);
  Click(DirectionButton(0));
  Click(Ui().complexityButton);
  EXPECT_EQ(lastDirection, 2);

  Click(DirectionButton(2));
  Click(OverlayResultButton());  // over 22 x 26 pixels of the 30 x 26

  int common = 0;
  for (int i = 0; i < 22; ++i) {
    for (int j = 0; j < 26; ++j) { common += Byte(0, 2, i, j) * Byte(1, 2, i, j); }
  }
  EXPECT_EQ(Ui().segimage->sliceWidth, 22);
  EXPECT_EQ(Ui().segimage->direction, 0);
  EXPECT_EQ(Text(Ui().intersect2DOutput), std::to_string(common));
  EXPECT_NE(Text(Ui().union2DOutput), whole);
}

TEST_F(DrawnSliceMeasuresTest, OnPurposeALoadDoesNotSetTheDirectionOfTheOverlays) {
  Click(DirectionButton(0));
  Click(OverlayResultButton());
  LoadEmpty({20, 10, 30}, 2);
  SetVoxel(0, 0, 5, 25);  // beyond the width of 20 that the load gave the canvas
  SetVoxel(0, 0, 5, 15);
  Click(OverlayResultButton());

  EXPECT_EQ(lastDirection, 0);
  EXPECT_EQ(Ui().segimage->sliceWidth, 20);
  EXPECT_EQ(Text(Ui().union2DOutput), "1");
}

TEST_F(DrawnSliceMeasuresTest, SeveralDirectionsAtOnceAddUp) {
  Ui().directionXYButton->value(1);
  Ui().directionYZButton->value(1);
  Ui().directionXZButton->value(1);
  for (const char* command : {"OverlayResult2D", "Overlay2D", "Complexity", "InteriorContour",
                              "DisplayDistanceMap", "Haussdorf2D"}) {
    Click(ButtonOf(command));
    EXPECT_EQ(Ui().segimage->direction, 1) << command;
  }
  EXPECT_THAT(alerts, IsEmpty());
}

TEST_F(DrawnSliceMeasuresTest, NoDirectionAtAllIsNoAccident) {
  Ui().directionXYButton->value(0);
  Ui().directionYZButton->value(0);
  Ui().directionXZButton->value(0);
  for (const char* command : {"OverlayResult2D", "Overlay2D", "Complexity", "InteriorContour",
                              "DisplayDistanceMap", "Haussdorf2D"}) {
    Click(ButtonOf(command));
  }
  EXPECT_EQ(Text(Ui().union2DOutput), "0");
  EXPECT_EQ(Text(Ui().haussdorfOutput), "0.000000");
}

TEST_F(DrawnSliceMeasuresTest, TheStepsOfTheContourWorkOnTheCanvas) {
  Segimage& canvas = *Ui().segimage;
  std::memset(canvas.result, 0, sizeof canvas.result);
  std::memset(canvas.mark, 0, sizeof canvas.mark);
  for (int i = 4; i < 9; ++i) { canvas.result[i][5] = 65000; }
  canvas.contourX = 4;
  canvas.contourY = 5;
  canvas.mark[4][5] = 1;
  canvas.mark[5][5] = 2;
  canvas.perimeter = 0.0F;

  canvas.ContourWaveStep(4, 5);  // the start: nothing
  for (int i = 5; i < 9; ++i) { canvas.ContourWaveStep(i, 5); }
  EXPECT_EQ(canvas.mark[8][5], 5);
  EXPECT_EQ(canvas.perimeter, 3.0F);

  canvas.ContourWalkBack(8, 5);
  EXPECT_EQ(canvas.perimeter, 6.0F);
  EXPECT_EQ(canvas.result[8][5], 30000);
  EXPECT_EQ(canvas.result[5][5], 65000);
}

// Refusals.

const std::vector<const char*> kCommands = {"OverlayResult2D",  "Overlay2D",          "Complexity",
                                            "InteriorContour",  "DisplayDistanceMap", "Haussdorf2D",
                                            "ProbabilityIntra", "ProbabilityInter"};

TEST_F(SliceMeasuresTest, ASliceOfMoreThanThreeHundredPixelsIsRefusedOnceAndChangesNothing) {
  LoadEmpty({301, 5, 4}, 2);
  Ui().userCount = 1;
  Ui().slicesPerUser = 2;
  for (const int direction : {2, 1}) {
    Click(DirectionButton(direction));
    for (const char* command : kCommands) {
      SCOPED_TRACE(command);
      alerts.clear();
      Click(ButtonOf(command));
      EXPECT_THAT(alerts, ElementsAre("A slice of more than 300 by 300 pixels cannot be measured"));
      EXPECT_EQ(Ui().segimage->greyHidden, 1);
      EXPECT_EQ(Ui().segimage->direction, 2);
    }
  }
  for (const auto& field : Fields()) { EXPECT_EQ(Text(field.second), "") << field.first; }
}

TEST_F(SliceMeasuresTest, ARefusedOverlayLeavesACanvasThatFitsAsItWas) {
  LoadEmpty({301, 5, 4}, 2);
  SetVoxel(0, 0, 2, 3);
  Click(DirectionButton(0));
  Click(ButtonOf("OverlayResult2D"));
  const auto before = PixelsOf(Ui().segimage);
  Click(DirectionButton(2));

  alerts.clear();
  Click(ButtonOf("Overlay2D"));
  EXPECT_THAT(alerts, ElementsAre("A slice of more than 300 by 300 pixels cannot be measured"));
  alerts.clear();
  Slide(Ui().overlayOpacitySlider, 0.5);
  EXPECT_THAT(alerts, ElementsAre("A slice of more than 300 by 300 pixels cannot be measured"));

  EXPECT_EQ(Ui().segimage->overlayVisible, 0);
  EXPECT_EQ(Ui().segimage->sliceWidth, 4);
  EXPECT_EQ(PixelsOf(Ui().segimage), before);
}

TEST_F(SliceMeasuresTest, TheOtherDirectionsOfALargeVolumeAreMeasured) {
  LoadEmpty({301, 5, 4}, 2);
  Ui().userCount = 1;
  Ui().slicesPerUser = 2;
  SetVoxel(0, 0, 2, 3);
  lastDirection = 0;  // of an earlier study: the canvas has the sizes that the load gave it
  Click(DirectionButton(0));
  for (const char* command : kCommands) { Click(ButtonOf(command)); }

  EXPECT_THAT(alerts, IsEmpty());
  EXPECT_EQ(Text(Ui().union2DOutput), "1");
  EXPECT_EQ(Ui().segimage->sliceWidth, 4);
}

TEST_F(SliceMeasuresTest, ASliceOfThreeHundredPixelsASideIsMeasured) {
  LoadEmpty({300, 300, 2}, 2);
  Ui().userCount = 1;
  Ui().slicesPerUser = 2;
  Click(DirectionButton(2));
  for (const int corner : {0, 299}) {
    SetVoxel(0, corner, corner, 0);
    SetVoxel(1, corner, 299 - corner, 0);
  }
  for (const char* command : kCommands) { Click(ButtonOf(command)); }

  EXPECT_THAT(alerts, IsEmpty());
  EXPECT_EQ(Text(Ui().union2DOutput), "4");
  EXPECT_EQ(Text(Ui().haussdorfABOutput), "299.000000");
}

TEST_F(SliceMeasuresTest, TwoImagesOfDifferentSizeAreNotCompared) {
  LoadEmpty({12, 10, 8}, 2, {14, 10, 8});
  Ui().userCount = 1;
  Ui().slicesPerUser = 2;
  Click(DirectionButton(2));
  for (const char* command : kCommands) {
    SCOPED_TRACE(command);
    alerts.clear();
    Click(ButtonOf(command));
    const bool pair =
        std::string(command) != "Complexity" && std::string(command) != "DisplayDistanceMap";
    EXPECT_EQ(alerts.size(), pair ? 1U : 0U);
  }
  for (const auto& field : Fields()) {
    const bool one = field.second == Ui().perimeterOutput || field.second == Ui().areaOutput ||
                     field.second == Ui().ratioOutput;
    EXPECT_EQ(Text(field.second).empty(), !one) << field.first;
  }
}

TEST_F(SliceMeasuresTest, AnImageSmallerThanTheOneOnShowIsReadAsZeroBeyondItsEnd) {
  LoadEmpty({12, 10, 8}, 3, {14, 10, 8});
  Slide(Ui().imageSlider, 0);
  Choose(Ui().image1Choice, 1);
  Choose(Ui().image2Choice, 2);
  for (const int direction : {0, 1, 2}) {
    Click(DirectionButton(direction));
    for (const char* command : kCommands) {
      if (std::string(command).rfind("Probability", 0) == 0) { continue; }
      Click(ButtonOf(command));
    }
  }
  EXPECT_THAT(alerts, IsEmpty());
}

TEST_F(SliceMeasuresTest, ProbabilitiesSayWhatIsMissingAndChangeNothing) {
  LoadEmpty({12, 10, 8}, 3);
  struct Case {
    int users, repeats;
    const char* says;
  };
  const Case cases[] = {
      {0, 0, "The numbers of users and of segmentations per user are missing"},
      {2, 0, "The numbers of users and of segmentations per user are missing"},
      {0, 2, "The numbers of users and of segmentations per user are missing"},
      {-1, 2, "The numbers of users and of segmentations per user are missing"},
      {2, 2, "The study names 4 segmentations, but only 3 are loaded"},
      {6, 1, "At most 5 users can be compared"},
      {2, 2000000000, "The study names 4000000000 segmentations, but only 3 are loaded"},
  };
  for (const Case& row : cases) {
    for (Fl_Button* button : {Ui().overlayIntraButton, Ui().overlayInterButton}) {
      alerts.clear();
      Ui().userCount = row.users;
      Ui().slicesPerUser = row.repeats;
      Click(button);
      EXPECT_THAT(alerts, ElementsAre(testing::StartsWith(row.says)));
      EXPECT_EQ(Text(Ui().union2DOutput), "");
      EXPECT_EQ(Ui().segimage->greyHidden, 1);
    }
  }
}

TEST_F(SliceMeasuresTest, AUserBeyondTheLastIsRefused) {
  LoadEmpty({12, 10, 8}, 2);
  Ui().userCount = 2;
  Ui().slicesPerUser = 1;
  for (const double user : {-1.0, 2.0, 4.0, 1e9}) {
    alerts.clear();
    Ui().overlayIntraSlider->value(user);
    Click(Ui().overlayIntraButton);
    EXPECT_EQ(alerts.size(), 1U) << user;
    EXPECT_EQ(Text(Ui().probaOverlapIntraOutput), "");
  }
  Ui().overlayIntraSlider->value(1.0);
  Click(Ui().overlayIntraButton);
  EXPECT_NE(Text(Ui().probaOverlapIntraOutput), "");
}

TEST_F(SliceMeasuresTest, TheSliderShowsTheChosenUser) {
  LoadEmpty({12, 10, 8}, 4);
  Ui().userCount = 2;
  Ui().slicesPerUser = 2;
  SetVoxel(0, 3, 4, 0);
  SetVoxel(1, 3, 4, 0);
  SetVoxel(2, 6, 4, 0);
  Click(DirectionButton(2));

  Ui().overlayIntraSlider->value(0);
  Click(Ui().overlayIntraButton);
  EXPECT_EQ(Text(Ui().probaOverlapIntraOutput), "1.000000");
  EXPECT_EQ(Ui().segimage->result[3][4], 65000);
  EXPECT_EQ(Ui().segimage->result[6][4], 0);
  Ui().overlayIntraSlider->value(1.7);  // cut
  Click(Ui().overlayIntraButton);
  EXPECT_EQ(Text(Ui().probaOverlapIntraOutput), "0.500000");
  EXPECT_EQ(Ui().segimage->result[6][4], 32500);
}

// Commands inside commands.

class NestedSliceMeasuresTest : public DrawnSliceMeasuresTest {
protected:
  static NestedSliceMeasuresTest* running;
  std::function<void()> inside;
  int runs = 0;

  void SetUp() override {
    DrawnSliceMeasuresTest::SetUp();
    running = this;
  }
  void TearDown() override {
    Fl::remove_timeout(RunInside);
    running = nullptr;
    DrawnSliceMeasuresTest::TearDown();
  }
  /// Runs `what` from the next pump of events.
  void Arm(std::function<void()> what) {
    inside = std::move(what);
    Fl::add_timeout(0.0, RunInside);
  }
  static void RunInside(void* /*data*/) {
    ++running->runs;
    running->inside();
  }
};

NestedSliceMeasuresTest* NestedSliceMeasuresTest::running = nullptr;

TEST_F(NestedSliceMeasuresTest, ACommandInsideHaussdorfChangesNoNumberOfEither) {
  for (const int direction : {0, 1, 2}) {
    Click(DirectionButton(direction));
    Click(Ui().haussdorfButton);
    const golden::CanvasState alone = State();
    const std::string picture = golden::PictureChecksum(*alone.result, alone.width, alone.height);
    for (const int other : {0, 1, 2}) {
      Click(DirectionButton(other));
      Click(Ui().complexityButton);
      const std::string perimeter = Text(Ui().perimeterOutput);
      Ui().perimeterOutput->value("");
      Ui().haussdorfABOutput->value("");
      Click(DirectionButton(direction));
      Arm([&] {
        Click(DirectionButton(other));
        Click(Ui().complexityButton);
        Click(DirectionButton(direction));
      });

      Ui().segimage->Haussdorf2D();

      EXPECT_EQ(runs, 1);
      runs = 0;
      EXPECT_EQ(Text(Ui().perimeterOutput), perimeter);
      EXPECT_EQ(Text(Ui().haussdorfABOutput), alone.fields.at("haussdorfABOutput"));
      EXPECT_EQ(Text(Ui().haussdorfBAOutput), alone.fields.at("haussdorfBAOutput"));
      EXPECT_EQ(Ui().segimage->direction, direction);
      EXPECT_EQ(golden::PictureChecksum(Ui().segimage->result, alone.width, alone.height), picture);
    }
  }
}

TEST_F(NestedSliceMeasuresTest, WhatTheUserMovesDuringHaussdorfCountsFromTheNextOneOn) {
  Click(DirectionButton(2));
  Click(Ui().haussdorfButton);
  const std::string aToB = Text(Ui().haussdorfABOutput);
  const std::string bToA = Text(Ui().haussdorfBAOutput);
  Arm([&] {
    SetLabel(7);
    Slide(Ui().cursorSlider[2], 0);
    Slide(Ui().imageSlider, 1);
    Choose(Ui().image1Choice, 1);
    Choose(Ui().image2Choice, 0);
    Click(DirectionButton(0));
  });

  Ui().segimage->Haussdorf2D();

  EXPECT_EQ(runs, 1);
  EXPECT_EQ(Text(Ui().haussdorfABOutput), aToB);
  EXPECT_EQ(Text(Ui().haussdorfBAOutput), bToA);
}

TEST_F(NestedSliceMeasuresTest, ADistanceMapInsideADistanceMapLeavesBothRight) {
  Click(DirectionButton(2));
  Arm([&] {
    Click(DirectionButton(0));
    Click(Ui().danielsson2DButton);
    Click(DirectionButton(2));
  });

  Ui().segimage->SliceDistanceMap(1, 2);

  const plain::DistanceMap map(Ui().images[1]->Labels(), 2, kSlices[2], 1);
  EXPECT_EQ(runs, 1);
  EXPECT_EQ(Ui().segimage->sliceWidth, 30);
  EXPECT_EQ(std::memcmp(Ui().segimage->sliceDistX, map.x.data(), map.x.size() * 2), 0);
  EXPECT_EQ(std::memcmp(Ui().segimage->sliceDistY, map.y.data(), map.y.size() * 2), 0);
}

int pumps = 0;
void CountPump(void* /*data*/) { ++pumps; }

TEST_F(NestedSliceMeasuresTest, OnPurposeOnlyTheForwardScanHandlesEvents) {
  pumps = 0;
  Fl::add_check(CountPump);
  Ui().segimage->SliceDistanceMap(1, 2);
  Fl::remove_check(CountPump);

  EXPECT_EQ(pumps, 25);  // the rows of the 26 but the first
  EXPECT_EQ(Ui().progressRange->value(), 50.0);
}

TEST_F(DrawnSliceMeasuresTest, BothContourMeasuresHaveTheViewsDrawnAgain) {
  for (const auto measure : {&Segimage::Complexity, &Segimage::InteriorContour}) {
    Settle();
    ASSERT_EQ(Ui().xyView->damage(), 0);

    (Ui().segimage->*measure)();

    EXPECT_NE(Ui().segimage->damage(), 0);
    for (const Fl_Gl_Window* view : std::initializer_list<const Fl_Gl_Window*>{
             Ui().xyView, Ui().yzView, Ui().xzView, Ui().window3D}) {
      EXPECT_NE(view->damage(), 0);
    }
  }
}

TEST_F(NestedSliceMeasuresTest, ALoadInsideAMapIsRefused) {
  Arm([&] { Click(Ui().greyLoadButton); });

  Ui().segimage->DisplayDistanceMap();

  EXPECT_EQ(runs, 1);
  EXPECT_EQ(alerts.size(), 1U);
  EXPECT_EQ(Ui().imageCount, 2);
}

TEST_F(SliceMeasuresTest, MembersCalledWithoutAStudyDoNothing) {
  Segimage& canvas = *Ui().segimage;
  canvas.Complexity();
  canvas.InteriorContour();
  EXPECT_EQ(canvas.greyHidden, 0);
  EXPECT_THAT(alerts, IsEmpty());
  canvas.SliceDistanceMap(0, 2);
  canvas.SliceDistanceMap(-1, 2);
  canvas.SliceDistanceMap(0, 7);
  canvas.DisplayDistanceMap();
  canvas.Haussdorf2D();
  canvas.OverlayResult2D();
  canvas.Overlay2D();
  canvas.ProbabilityIntra();
  canvas.ProbabilityInter();
  EXPECT_EQ(Text(Ui().perimeterOutput), "");
  EXPECT_EQ(canvas.sliceDistX, nullptr);
}

}  // namespace
