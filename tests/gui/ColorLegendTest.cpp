// The colour legend and the colour preview: their colours, and their pixels read back.
#include "ui/ColorLegend.h"

#include "tests/support/Interface.h"
#include "ui/ColorPreview.h"

#include <FL/Fl_Pixmap.H>
#include <FL/fl_draw.H>
#include <FL/gl.h>

#include <memory>

namespace {

class ColorLegendTest : public Interface {
protected:
  ColorLegend& Legend() { return *Ui().colorLegend; }

  /// The pixels of the legend as they are drawn now; (0, 0) is the upper left.
  std::vector<Pixel> Screen() {
    Settle();
    Ui().mainWindow->redraw();
    Legend().redraw();
    Fl::flush();
    Legend().make_current();
    const int w = Legend().w();
    const int h = Legend().h();
    const std::unique_ptr<uchar[]> bytes(fl_read_image(nullptr, 0, 0, w, h));
    std::vector<Pixel> pixels;
    for (int i = 0; bytes && i < w * h; ++i) {
      pixels.push_back({bytes[3 * i], bytes[3 * i + 1], bytes[3 * i + 2]});
    }
    return pixels;
  }
  Pixel Row(const std::vector<Pixel>& pixels, int y) {
    return pixels.at(static_cast<std::size_t>(y * Legend().w() + 7));
  }
  void ExpectColour(int entry, float red, float green, float blue) {
    EXPECT_EQ(Legend().colors[entry][0], red) << entry;
    EXPECT_EQ(Legend().colors[entry][1], green) << entry;
    EXPECT_EQ(Legend().colors[entry][2], blue) << entry;
  }
};

void ExpectPixel(const Pixel& pixel, int red, int green, int blue) {
  EXPECT_EQ(pixel.red, red);
  EXPECT_EQ(pixel.green, green);
  EXPECT_EQ(pixel.blue, blue);
}

TEST_F(ColorLegendTest, TheScaleRunsFromRedOverGreenToBlue) {
  Screen();

  EXPECT_EQ(Legend().mode, 0);
  ExpectColour(0, 0, 0, 0);
  ExpectColour(64, 255, 0, 0);
  ExpectColour(128, 0, 255, 0);
  ExpectColour(192, 0, 0, 255);
  // halfway: f(32) = f(96) = -0.25 + 1
  ExpectColour(32, 191.25F, 0, 0);
  ExpectColour(96, 191.25F, 191.25F, 0);
  ExpectColour(160, 0, 191.25F, 191.25F);
  // f(127) = -3.9377441 + 3.96875
  EXPECT_FLOAT_EQ(Legend().colors[255][2], 255.0F * 0.031005859375F);
}

TEST_F(ColorLegendTest, TheRowsShowTheEntriesFrom64To191) {
  const auto screen = Screen();

  ExpectPixel(Row(screen, 0), 255, 0, 0);
  ExpectPixel(Row(screen, 32), 191, 191, 0);
  ExpectPixel(Row(screen, 64), 0, 255, 0);
  ExpectPixel(Row(screen, 96), 0, 191, 191);
  ExpectPixel(Row(screen, 127), 0, 7, 254);
}

TEST_F(ColorLegendTest, TheRowsBelow128KeepTheBlankStrip) {
  const auto screen = Screen();

  for (int y = 128; y < 140; ++y) {
    const Pixel pixel = Row(screen, y);
    EXPECT_EQ(pixel.red, pixel.green) << y;
    EXPECT_EQ(pixel.green, pixel.blue) << y;
  }
}

TEST_F(ColorLegendTest, ARowReachesFromEdgeToEdge) {
  const auto screen = Screen();

  for (int x = 0; x < Legend().w(); ++x) {
    ExpectPixel(screen.at(static_cast<std::size_t>(64 * Legend().w() + x)), 0, 255, 0);
  }
}

TEST_F(ColorLegendTest, ModeOneHasTwoColours) {
  Legend().SetMode(1);
  const auto screen = Screen();

  ExpectColour(0, 255, 0, 0);
  ExpectColour(127, 255, 0, 0);
  ExpectColour(128, 0, 255, 0);
  ExpectColour(255, 0, 255, 0);
  ExpectPixel(Row(screen, 63), 255, 0, 0);
  ExpectPixel(Row(screen, 64), 0, 255, 0);
}

TEST_F(ColorLegendTest, ModeTwoHasThreeColours) {
  Legend().SetMode(2);
  const auto screen = Screen();

  ExpectColour(0, 255, 0, 0);
  ExpectColour(109, 255, 0, 0);
  ExpectColour(110, 0, 0, 255);
  ExpectColour(149, 0, 0, 255);
  ExpectColour(150, 0, 255, 0);
  ExpectColour(255, 0, 255, 0);
  ExpectPixel(Row(screen, 45), 255, 0, 0);
  ExpectPixel(Row(screen, 46), 0, 0, 255);
  ExpectPixel(Row(screen, 85), 0, 0, 255);
  ExpectPixel(Row(screen, 86), 0, 255, 0);
}

TEST_F(ColorLegendTest, AnotherModeLeavesTheColoursAsTheyWere) {
  Legend().SetMode(2);
  Screen();

  Legend().SetMode(7);
  const auto screen = Screen();

  EXPECT_EQ(Legend().mode, 7);
  ExpectColour(109, 255, 0, 0);
  ExpectPixel(Row(screen, 46), 0, 0, 255);
}

TEST_F(ColorLegendTest, OnPurposeRefreshMovesTheLegendForGood) {
  Menu("File/Refresh");
  Settle();

  EXPECT_EQ(Legend().x(), 20);
  EXPECT_EQ(Legend().y(), 595);
  EXPECT_EQ(Legend().w(), 15);
  EXPECT_EQ(Legend().h(), 200);
  EXPECT_TRUE(Legend().shown());
  Menu("File/Refresh");
  EXPECT_EQ(Legend().y(), 595);
}

TEST_F(ColorLegendTest, OnPurposeAHigherLegendStillPaints128Rows) {
  Menu("File/Refresh");
  const auto screen = Screen();

  ExpectPixel(Row(screen, 0), 255, 0, 0);
  ExpectPixel(Row(screen, 127), 0, 7, 254);
  for (int y = 128; y < 200; ++y) { EXPECT_EQ(Row(screen, y).red, Row(screen, y).blue) << y; }
}

TEST_F(ColorLegendTest, DrawingAtOnceDoesNothingWhileTheWindowIsHidden) {
  Ui().mainWindow->hide();

  Legend().DrawNow();
  Menu("File/Refresh");

  EXPECT_FALSE(Legend().shown());
}

// The preview.

TEST_F(ColorLegendTest, ThePreviewTruncatesItsColour) {
  ColorPreview& preview = *Ui().colorPreview;
  EXPECT_EQ(preview.red, 0);
  EXPECT_EQ(preview.green, 0);
  EXPECT_EQ(preview.blue, 0);

  preview.SetColor(1.0F, 0.5F, 0.25F);

  EXPECT_EQ(preview.red, 255);
  EXPECT_EQ(preview.green, 127);
  EXPECT_EQ(preview.blue, 63);
}

TEST_F(ColorLegendTest, ANewColourAsksForARedraw) {
  Settle();
  ASSERT_EQ(Ui().colorPreview->damage(), 0);

  Ui().colorPreview->SetColor(1.0F, 0.5F, 0.25F);

  EXPECT_NE(Ui().colorPreview->damage(), 0);
}

TEST_F(ColorLegendTest, OnPurposeThePreviewProjectsOnTheModelViewMatrix) {
  ColorPreview& preview = *Ui().colorPreview;
  PixelOf(&preview, 7, 7);
  GLfloat model[16];
  GLfloat projection[16];

  glGetFloatv(GL_MODELVIEW_MATRIX, model);
  glGetFloatv(GL_PROJECTION_MATRIX, projection);

  EXPECT_FLOAT_EQ(model[0], 2.0F / static_cast<float>(preview.w()));
  EXPECT_FLOAT_EQ(model[12], -1.0F);
  EXPECT_FLOAT_EQ(projection[0], 1.0F);
  EXPECT_FLOAT_EQ(projection[12], 0.0F);
}

TEST_F(ColorLegendTest, ThePreviewIsADiscOnGrey) {
  ColorPreview& preview = *Ui().colorPreview;
  preview.SetColor(1.0F, 0.0F, 0.0F);

  ExpectPixel(PixelOf(&preview, 7, 7), 255, 0, 0);
  ExpectPixel(PixelOf(&preview, 2, 7), 255, 0, 0);
  ExpectPixel(PixelOf(&preview, 0, 0), 191, 191, 191);
  ExpectPixel(PixelOf(&preview, 14, 14), 191, 191, 191);
  ExpectPixel(PixelOf(&preview, 14, 0), 191, 191, 191);
}

}  // namespace
