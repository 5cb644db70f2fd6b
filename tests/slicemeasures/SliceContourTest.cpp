// SliceContour: rule, wave and walk drawn by hand, then the edge cases.
#include "views/slicemeasures/SliceContour.h"

#include "tests/slicemeasures/PlainSlices.h"
#include "tests/slicemeasures/SliceDrawing.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <memory>

namespace {

using measure::PicturePixel;
using measure::WaveExtent;

constexpr int kLabel = 2;

char PixelOf(std::int32_t value) {
  switch (value) {
  case 0: return '.';
  case 65000: return '#';
  case 30000: return 'w';
  default: return '?';
  }
}

/// The pictures of a canvas on which a contour is measured.
class Canvas {
public:
  explicit Canvas(measure::SliceSize theSize) : size(theSize) {}

  measure::ContourPictures On() { return {pictures->result, pictures->mark, size}; }
  Rows Contour() const { return TextOf(pictures->result, size, PixelOf); }
  Rows Marks() const { return NumbersOf(pictures->mark, size); }
  measure::Picture& Result() { return pictures->result; }
  measure::Picture& Mark() { return pictures->mark; }
  /// Sets the contour pixels as a drawing shows them.
  void Draw(const Rows& rows) {
    for (int i = 0; i < size.width; ++i) {
      for (int j = 0; j < size.height; ++j) {
        const char c = rows[static_cast<std::size_t>(j)][static_cast<std::size_t>(i)];
        pictures->result[i][j] = c == '#' ? 65000 : 0;
      }
    }
  }

private:
  measure::SliceSize size;
  std::unique_ptr<CanvasPictures> pictures = std::make_unique<CanvasPictures>();
};

class SliceContourTest : public testing::TestWithParam<int> {
protected:
  int area = 0;

  /// The contour of a drawing; the slice beside it is empty.
  Canvas Paint(const Rows& rows, int label = kLabel) {
    const Drawing image(rows, GetParam());
    Canvas canvas(image.Size());
    area = measure::PaintContour(image.Slice(), 1, label, canvas.On());
    return canvas;
  }
};

TEST_P(SliceContourTest, ASquareHasARingOfPixelsThatTouchItsEdges) {
  const Canvas canvas = Paint({".......",  //
                               ".......",  //
                               "..222..",  //
                               "..222..",  //
                               "..222..",  //
                               ".......",  //
                               "......."});

  EXPECT_EQ(area, 9);
  EXPECT_EQ(canvas.Contour(), (Rows{".......",  //
                                    "..###..",  //
                                    ".#...#.",  //
                                    ".#...#.",  //
                                    ".#...#.",  //
                                    "..###..",  //
                                    "......."}));
}

TEST_P(SliceContourTest, TheWaveNumbersTheRingInOneSenseAndTheWalkIsAnOpenPath) {
  Canvas canvas = Paint({".......",  //
                         ".......",  //
                         "..222..",  //
                         "..222..",  //
                         "..222..",  //
                         ".......",  //
                         "......."});

  const measure::ContourWalk walk = measure::WalkContour(WaveExtent::Interior, canvas.On());

  // The start is the first of the first column; its neighbours (2, 1) comes before (1, 3).
  EXPECT_EQ(canvas.Marks(), (Rows{".......",  //
                                  "..234..",  //
                                  ".1...5.",  //
                                  ".c...6.",  //
                                  ".b...7.",  //
                                  "..a98..",  //
                                  "......."}));
  EXPECT_EQ(walk.pixel, (PicturePixel{1, 3}));
  // From 12 back to 2: ten steps, of which the three round the corners are diagonal.
  float length = 0.0F;
  for (const double step :
       {1.0, std::sqrt(2.0), 1.0, 1.0, std::sqrt(2.0), 1.0, 1.0, std::sqrt(2.0), 1.0, 1.0}) {
    length = static_cast<float>(length + step);
  }
  EXPECT_EQ(walk.perimeter, length);
  EXPECT_EQ(canvas.Contour()[1], "..###..");  // the marks of the walk are painted over
}

TEST_P(SliceContourTest, ALabelAtTheBorderLeavesTheContourOpen) {
  Canvas canvas = Paint({".222..",  //
                         ".222..",  //
                         "......",  //
                         "......"});

  EXPECT_EQ(area, 3);                          // the row at the border is no interior
  EXPECT_EQ(canvas.Contour(), (Rows{"......",  //
                                    "....#.",  //
                                    ".###..",  //
                                    "......"}));
  const measure::ContourWalk walk = measure::WalkContour(WaveExtent::Interior, canvas.On());
  EXPECT_EQ(canvas.Marks()[2], ".123..");
  EXPECT_EQ(canvas.Marks()[1], "....4.");
  EXPECT_EQ(walk.perimeter, static_cast<float>(std::sqrt(2.0) + 1.0));
}

TEST_P(SliceContourTest, WithoutTheLabelThereIsNothing) {
  Canvas canvas = Paint({".....", ".33..", ".3...", "....."});

  const measure::ContourWalk walk = measure::WalkContour(WaveExtent::Interior, canvas.On());

  EXPECT_EQ(area, 0);
  EXPECT_EQ(walk.perimeter, 0.0F);
  EXPECT_TRUE(std::isnan(measure::ContourComplexity(walk.perimeter, area)));
  EXPECT_EQ(canvas.Contour(), (Rows{".....", ".....", ".....", "....."}));
  EXPECT_EQ(walk.pixel, (PicturePixel{5, 4}));
}

TEST_P(SliceContourTest, ASliceOfTwoPixelsASideHasNoInterior) {
  for (const Rows& rows : {Rows{"22"}, Rows{"22", "22"}, Rows{"2"}, Rows{"2", "2", "2", "2"}}) {
    Canvas canvas = Paint(rows);

    EXPECT_EQ(area, 0);
    EXPECT_EQ(canvas.Contour(), Rows(rows.size(), std::string(rows[0].size(), '.')));
    EXPECT_EQ(measure::WalkContour(WaveExtent::Interior, canvas.On()).perimeter, 0.0F);
  }
}

TEST_P(SliceContourTest, OfTwoRegionsOnlyTheOneOfTheStartIsNumberedAndBothAreShown) {
  Canvas canvas = Paint({"...........",  //
                         "...........",  //
                         "..2.....2..",  //
                         "...........",  //
                         "..........."});
  const Rows before = canvas.Contour();

  const measure::ContourWalk walk = measure::WalkContour(WaveExtent::Interior, canvas.On());

  EXPECT_EQ(area, 2);
  EXPECT_EQ(canvas.Marks(), (Rows{"...........",  //
                                  "..2........",  //
                                  ".1.3.......",  //
                                  "..4........",  //
                                  "..........."}));
  EXPECT_EQ(walk.perimeter,
            static_cast<float>(static_cast<float>(std::sqrt(2.0)) + std::sqrt(2.0)));
  EXPECT_EQ(canvas.Contour(), before);
}

TEST_P(SliceContourTest, OnPurposeTheRuleReadsRawBytesSoThatAnotherLabelCounts) {
  // The 3 beside the 2: 2 + 0 + 0 + 0 - 24 is no contour. The 9 beside 0: no label near.
  const Canvas canvas = Paint({"........",  //
                               ".......9",  //
                               "..23....",  //
                               "........",  //
                               "........"});

  EXPECT_EQ(canvas.Contour(), (Rows{"........",  //
                                    "..##....",  //
                                    ".#......",  //
                                    "..##....",  //
                                    "........"}));
  // A large label beside a small one makes contour pixels of the small one itself.
  const Canvas large = Paint({".....", "..9..", "..1..", ".....", "....."}, 1);
  EXPECT_EQ(large.Contour(), (Rows{".....", ".#.#.", ".###.", "..#..", "....."}));
}

TEST_P(SliceContourTest, TheBorderOfTheSliceKeepsItsPixels) {
  const Drawing image({".....", ".222.", ".222.", "....."}, GetParam());
  Canvas canvas(image.Size());
  canvas.Result()[0][2] = 65000;
  canvas.Result()[2][3] = 15241;

  measure::PaintContour(image.Slice(), 1, kLabel, canvas.On());

  EXPECT_EQ(canvas.Result()[0][2], 65000);
  EXPECT_EQ(canvas.Result()[2][3], 15241);
  EXPECT_EQ(measure::FirstContourPixel(canvas.On()), (PicturePixel{0, 2}));
}

INSTANTIATE_TEST_SUITE_P(Directions, SliceContourTest, testing::ValuesIn(kDirections));

TEST(SliceContourRuleTest, OnPurposeAlongXZTheLeftNeighbourComesFromTheSliceOfTheOtherSlider) {
  const Rows rows = {".....", ".....", "..2..", ".....", "....."};
  for (const int direction : kDirections) {
    const Drawing image(rows, direction);
    Canvas canvas(image.Size());

    measure::PaintContour(image.Slice(1), 0, kLabel, canvas.On());  // slice 0 is empty

    const std::string middle = direction == kSliceXZ ? ".#..." : ".#.#.";
    EXPECT_EQ(canvas.Contour(), (Rows{".....", "..#..", middle, "..#..", "....."}));
  }
}

TEST(SliceContourRuleTest, OnPurposeAlongXZTheSearchForTheLabelReadsTheRightSlice) {
  Drawing image({"....", "....", "....", "...."}, kSliceXZ);
  image.Voxel(1, 1, 0) = kLabel;  // in the other slice alone
  Canvas canvas(image.Size());

  measure::PaintContour(image.Slice(1), 0, kLabel, canvas.On());

  EXPECT_EQ(canvas.Contour(), (Rows{"....", "....", "....", "...."}));
}

TEST(SliceContourRuleTest, ASliceOfTheOtherSliderOutsideTheVolumeCountsAsZero) {
  const Drawing image({".....", ".....", "..2..", ".....", "....."}, kSliceXZ);
  for (const int otherSlice : {-1, 3, 4000}) {
    Canvas canvas(image.Size());

    measure::PaintContour(image.Slice(1), otherSlice, kLabel, canvas.On());

    EXPECT_EQ(canvas.Contour()[2], ".#...");
  }
}

TEST(SliceContourOfFirstTest, TheContourIsThatOfTheFirstImageAndTheAreaWhereOneOfTheTwoIs) {
  const Drawing a({"......", "......", "..22..", "......", "......"});
  const Drawing b({"......", "......", "..2...", "..22..", "......"});
  Canvas canvas(a.Size());

  const int area = measure::PaintContourOfFirst(a.Slice(), b.Slice(), kLabel, canvas.On());

  EXPECT_EQ(area, 3);
  EXPECT_EQ(canvas.Contour(), (Rows{"......", "..##..", ".#..#.", "..##..", "......"}));
}

TEST(SliceContourOfFirstTest, OtherLabelsThatTouchDoNotCount) {
  const Drawing a({".....", "..9..", "..2..", ".....", "....."});
  Canvas canvas(a.Size());

  measure::PaintContourOfFirst(a.Slice(), a.Slice(), kLabel, canvas.On());

  EXPECT_EQ(canvas.Contour(), (Rows{".....", "..#..", ".#.#.", "..#..", "....."}));
}

TEST(SliceContourOfFirstTest, OnPurposeTheBorderOfTheMarksTakesPartAsItWasLeft) {
  const Drawing a({".....", ".....", ".....", ".....", "....."});
  Canvas canvas(a.Size());
  canvas.Mark()[0][2] = kLabel;  // a number of an earlier wave that equals the label
  canvas.Mark()[4][3] = 7;       // and one that does not

  measure::PaintContourOfFirst(a.Slice(), a.Slice(), kLabel, canvas.On());

  EXPECT_EQ(canvas.Contour(), (Rows{".....", ".....", ".#...", ".....", "....."}));
}

TEST(SliceContourWaveTest, OnlyTheFirstNeighbourOfTheStartIsNumbered) {
  Canvas canvas({5, 5});
  canvas.Draw({".....", ".###.", ".#.#.", ".###.", "....."});

  measure::StartWave({1, 1}, canvas.On());

  EXPECT_EQ(canvas.Marks(), (Rows{".....", ".12..", ".....", ".....", "....."}));
}

TEST(SliceContourWaveTest, TheStartLooksRowByRowForTheNeighbourThatLeads) {
  const PicturePixel neighbours[] = {{1, 1}, {2, 1}, {3, 1}, {1, 2},
                                     {3, 2}, {1, 3}, {2, 3}, {3, 3}};
  Canvas canvas({5, 5});
  canvas.Draw({".....", ".###.", ".###.", ".###.", "....."});
  for (const PicturePixel& first : neighbours) {
    measure::StartWave({2, 2}, canvas.On());

    EXPECT_EQ(canvas.Mark()[first.i][first.j], 2) << first.i << ", " << first.j;
    canvas.Result()[first.i][first.j] = 0;
  }
}

TEST(SliceContourWaveTest, AStepHandsTheNumberOnAndCountsThePixelsReached) {
  Canvas canvas({5, 3});
  canvas.Draw({".#.#.", "..#..", ".#.##"});
  canvas.Mark()[2][1] = 5;
  canvas.Mark()[3][0] = 9;
  float perimeter = 1.5F;

  measure::StepWave({0, 0}, {2, 1}, canvas.On(), perimeter);

  EXPECT_EQ(canvas.Marks(), (Rows{".6.9.", "..5..", ".6.6."}));
  EXPECT_EQ(perimeter, 4.5F);
}

TEST(SliceContourWaveTest, TheStartAndUnmarkedPixelsHandNothingOn) {
  Canvas canvas({3, 1});
  canvas.Draw({"###"});
  canvas.Mark()[1][0] = 1;
  float perimeter = 0.0F;

  measure::StepWave({1, 0}, {1, 0}, canvas.On(), perimeter);
  measure::StepWave({1, 0}, {0, 0}, canvas.On(), perimeter);
  measure::StepWave({1, 0}, {-1, 0}, canvas.On(), perimeter);
  measure::StepWave({1, 0}, {300, 300}, canvas.On(), perimeter);

  EXPECT_EQ(canvas.Marks(), (Rows{".1."}));
  EXPECT_EQ(perimeter, 0.0F);
}

TEST(SliceContourWaveTest, TheInteriorWaveDoesNotGoOnFromTheBorder) {
  for (const WaveExtent extent : {WaveExtent::Interior, WaveExtent::Whole}) {
    Canvas canvas({6, 4});
    canvas.Draw({"..###.", ".#....", "......", "......"});

    measure::StartWave({1, 1}, canvas.On());
    measure::RunWave({1, 1}, extent, canvas.On());

    const std::string border = extent == WaveExtent::Interior ? "..2..." : "..234.";
    EXPECT_EQ(canvas.Marks(), (Rows{border, ".1....", "......", "......"}));
  }
}

/// A path of three legs along i: against the sweep, with it, and against it again.
void DrawLegs(Canvas& canvas) {
  for (int i = 2; i <= 297; ++i) {
    canvas.Result()[i][2] = 65000;
    canvas.Result()[i][6] = 65000;
    canvas.Result()[i][10] = 65000;
  }
  for (int j = 3; j <= 5; ++j) { canvas.Result()[2][j] = 65000; }
  for (int j = 7; j <= 9; ++j) { canvas.Result()[297][j] = 65000; }
}

TEST(SliceContourWaveTest, OnPurposeWhatThreeHundredSweepsDoNotReachStaysUnnumbered) {
  Canvas canvas({300, 14});
  DrawLegs(canvas);
  const PicturePixel start{297, 2};

  measure::StartWave(start, canvas.On());
  measure::RunWave(start, WaveExtent::Interior, canvas.On());

  EXPECT_EQ(canvas.Mark()[296][2], 2);
  EXPECT_EQ(canvas.Mark()[2][2], 296);    // one pixel a sweep
  EXPECT_EQ(canvas.Mark()[297][6], 593);  // all in one sweep; each corner is cut
  // The third leg has what is left of the sweeps: as many as plain sweeps reach, and no more.
  Canvas plainly({300, 14});
  DrawLegs(plainly);
  measure::StartWave(start, plainly.On());
  float perimeter = 0.0F;
  for (int sweep = 0; sweep < 300; ++sweep) {
    for (int i = 1; i <= 298; ++i) {
      for (int j = 1; j <= 12; ++j) { measure::StepWave(start, {i, j}, plainly.On(), perimeter); }
    }
  }
  EXPECT_EQ(std::memcmp(canvas.Mark(), plainly.Mark(), sizeof canvas.Mark()), 0);
  EXPECT_NE(canvas.Mark()[294][10], 0);
  EXPECT_EQ(canvas.Mark()[200][10], 0);
}

TEST(SliceContourWalkTest, TheFirstPixelWithTheHighestNumberIsTheFarthest) {
  Canvas canvas({4, 3});
  canvas.Mark()[2][2] = 6;
  canvas.Mark()[2][1] = 6;
  canvas.Mark()[3][0] = 6;
  canvas.Mark()[1][1] = 5;

  EXPECT_EQ(measure::FarthestPixel({9, 9}, canvas.On()), (PicturePixel{2, 1}));
  EXPECT_EQ(measure::FarthestPixel({9, 9}, Canvas({4, 3}).On()), (PicturePixel{9, 9}));
}

TEST(SliceContourWalkTest, TheWalkTakesDiagonalStepsFirstAndStopsAtTwo) {
  Canvas canvas({6, 3});
  canvas.Mark()[1][1] = 1;
  canvas.Mark()[2][1] = 2;
  canvas.Mark()[3][1] = 3;
  canvas.Mark()[3][0] = 3;
  canvas.Mark()[4][1] = 4;
  float perimeter = 0.0F;

  measure::WalkBack({4, 1}, canvas.On(), perimeter);

  EXPECT_EQ(perimeter, static_cast<float>(static_cast<float>(std::sqrt(2.0)) + std::sqrt(2.0)));
  EXPECT_EQ(canvas.Contour()[1], "....w.");
  EXPECT_EQ(canvas.Contour()[0], "...w..");
}

TEST(SliceContourWalkTest, TheWalkAddsToThePerimeterRoundedAtEachStep) {
  Canvas canvas({300, 3});
  for (int i = 0; i < 300; ++i) { canvas.Mark()[i][i % 2] = i + 2; }
  float perimeter = 5000.0F;
  float expected = 5000.0F;
  for (int step = 0; step < 299; ++step) {
    expected = static_cast<float>(expected + std::sqrt(2.0));
  }

  measure::WalkBack({299, 1}, canvas.On(), perimeter);

  EXPECT_EQ(perimeter, expected);
}

TEST(SliceContourWalkTest, AWalkBetweenPixelsOfEqualNumberStopsBeforeAPixelItHasBeenOn) {
  Canvas canvas({6, 3});
  canvas.Mark()[2][1] = 4;
  canvas.Mark()[3][1] = 4;
  float perimeter = 0.0F;

  measure::WalkBack({2, 1}, canvas.On(), perimeter);  // to (3, 1), whose first choice is (2, 1)

  EXPECT_EQ(perimeter, 1.0F);
}

TEST(SliceContourWalkTest, TwoLabelPixelsWithAThickCornerMakeAWalkThatEnds) {
  for (const int direction : kDirections) {
    const Drawing image({"........", "........", "........", "....2...", "........", "...2....",
                         "........", "........"},
                        direction);
    Canvas canvas(image.Size());
    measure::PaintContour(image.Slice(), 1, kLabel, canvas.On());

    const measure::ContourWalk walk = measure::WalkContour(WaveExtent::Interior, canvas.On());

    EXPECT_EQ(canvas.Marks(), (Rows{"........",  //
                                    "........",  //
                                    "....5...",  //
                                    "...3.4..",  //
                                    "...23...",  //
                                    "..1.3...",  //
                                    "...4....",  //
                                    "........"}));
    // From 5 to the 3 on its left and to the 3 at (4, 4), whose first choice is the 3 before it.
    EXPECT_EQ(walk.pixel, (PicturePixel{4, 2}));
    EXPECT_EQ(walk.perimeter,
              static_cast<float>(static_cast<float>(std::sqrt(2.0)) + std::sqrt(2.0)));
  }
}

TEST(SliceContourWalkTest, FromOutsideThePictureThereIsNoWalk) {
  Canvas canvas({300, 300});
  canvas.Mark()[299][299] = 2;
  float perimeter = 3.0F;

  measure::WalkBack({300, 300}, canvas.On(), perimeter);

  EXPECT_EQ(perimeter, 3.0F);
}

TEST(SliceContourWalkTest, AnEmptySliceOfTheLargestSizeStaysInItsPictures) {
  Canvas canvas({300, 300});

  const measure::ContourWalk walk = measure::WalkContour(WaveExtent::Whole, canvas.On());

  EXPECT_EQ(walk.pixel, (PicturePixel{300, 300}));
  EXPECT_EQ(walk.perimeter, 0.0F);
}

TEST(SliceContourWalkTest, OnPurposeAnEmptySliceLeavesTheStartsNumberBehindItsCorner) {
  Canvas canvas({4, 3});

  measure::WalkContour(WaveExtent::Interior, canvas.On());

  EXPECT_EQ(canvas.Mark()[4][3], 1);
}

TEST(SliceContourWalkTest, TheComplexityIsTheSquareOfThePerimeterToTheAreaTimesFourPi) {
  EXPECT_EQ(measure::ContourComplexity(10.0F, 7), 100.0 / (7 * 12.56637061432));
  EXPECT_EQ(measure::ContourComplexity(10.0F, 0), INFINITY);
}

}  // namespace
