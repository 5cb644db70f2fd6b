#include "ui/Pictures.h"

#include "ui/Artwork.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace pictures {

namespace {

/// A picture in the toolkit's compressed form: "w h -n 1", n entries of four bytes (character,
/// red, green, blue), then one string for each row.
class Picture {
public:
  Picture(int w, int h, const std::string& palette) : rows(static_cast<std::size_t>(h)) {
    char text[40];
    std::snprintf(text, sizeof text, "%d %d -%d 1", w, h, static_cast<int>(palette.size() / 4));
    header = text;
    colours = palette;
    for (std::string& row : rows) { row.assign(static_cast<std::size_t>(w), palette[0]); }
  }

  char& At(int x, int y) { return rows[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)]; }

  Fl_Pixmap* Finish() {
    lines.push_back(header.c_str());
    lines.push_back(colours.c_str());
    for (const std::string& row : rows) { lines.push_back(row.c_str()); }
    return new Fl_Pixmap(lines.data());  // lives to the end of the process, as its widgets do
  }

private:
  std::string header;
  std::string colours;
  std::vector<std::string> rows;
  std::vector<const char*> lines;
};

std::string Entry(char character, int red, int green, int blue) {
  return {character, static_cast<char>(red), static_cast<char>(green), static_cast<char>(blue)};
}

// Two colours: the button's grey and near black.
std::string TwoColours() { return Entry('.', 192, 192, 192) + Entry('#', 20, 20, 60); }

Fl_Pixmap* MakeMove() {
  constexpr int kSide = 23;
  constexpr int kMiddle = 11;
  static Picture picture(kSide, kSide, TwoColours());
  for (int i = 0; i < kSide; ++i) {
    for (int j = 0; j < kSide; ++j) {
      const int across = std::abs(i - kMiddle);
      const int down = std::abs(j - kMiddle);
      const bool frame = across == kMiddle || down == kMiddle;
      const bool shaft = (across <= 0 && down <= 8) || (down <= 0 && across <= 8);
      const bool head = (down >= 5 && down <= 8 && across <= 8 - down) ||
                        (across >= 5 && across <= 8 && down <= 8 - across);
      if (frame || shaft || head) { picture.At(i, j) = '#'; }
    }
  }
  return picture.Finish();
}

Fl_Pixmap* MakeCrosshair() {
  constexpr int kSide = 26;
  static Picture picture(kSide, kSide, TwoColours());
  for (int i = 0; i < kSide; ++i) {
    if (i % 5 >= 3) { continue; }  // dashes of three pixels, gaps of two
    for (int thick = 12; thick <= 13; ++thick) {
      picture.At(i, thick) = '#';
      picture.At(thick, i) = '#';
    }
  }
  return picture.Finish();
}

constexpr int kReds = 6;
constexpr int kGreens = 7;
constexpr int kBlues = 6;

/// 255 colours: a cube of 252 and three light greys. The characters are all but the one that ends
/// a string, each once; the blank is not the first, which alone would make it transparent.
char CharacterOf(int index) { return static_cast<char>(index + 1); }

std::string CubePalette() {
  std::string palette;
  for (int i = 0; i < kReds * kGreens * kBlues; ++i) {
    const int red = i / (kGreens * kBlues);
    const int green = i / kBlues % kGreens;
    const int blue = i % kBlues;
    palette += Entry(CharacterOf(i), red * 255 / (kReds - 1), green * 255 / (kGreens - 1),
                     blue * 255 / (kBlues - 1));
  }
  for (int i = 252; i < 255; ++i) { palette += Entry(CharacterOf(i), i - 20, i - 20, i - 20); }
  return palette;
}

/// Level of one channel with an ordered pattern of 4 by 4, so that ramps show no bands.
int Level(double value, int levels, int x, int y) {
  constexpr int kOrder[4][4] = {{0, 8, 2, 10}, {12, 4, 14, 6}, {3, 11, 1, 9}, {15, 7, 13, 5}};
  const double step = value * (levels - 1) + (kOrder[y & 3][x & 3] + 0.5) / 16.0;
  return std::min(std::max(static_cast<int>(step), 0), levels - 1);
}

void Paint(Picture& picture, int w, int h, artwork::Colour (*colourAt)(double, double)) {
  for (int y = 0; y < h; ++y) {
    for (int x = 0; x < w; ++x) {
      const artwork::Colour colour = colourAt(x + 0.5, y + 0.5);
      const int index =
          (Level(colour.red, kReds, x, y) * kGreens + Level(colour.green, kGreens, x, y)) * kBlues +
          Level(colour.blue, kBlues, x, y);
      picture.At(x, y) = CharacterOf(index);
    }
  }
}

Fl_Pixmap* MakeBanner() {
  static Picture picture(306, 40, CubePalette());
  Paint(picture, 306, 40, artwork::Banner);
  return picture.Finish();
}

Fl_Pixmap* MakeProduct() {
  static Picture picture(401, 241, CubePalette());
  Paint(picture, 401, 241, artwork::Product);
  return picture.Finish();
}

}  // namespace

Fl_Pixmap& Move() {
  static Fl_Pixmap* const pixmap = MakeMove();
  return *pixmap;
}

Fl_Pixmap& Crosshair() {
  static Fl_Pixmap* const pixmap = MakeCrosshair();
  return *pixmap;
}

Fl_Pixmap& Banner() {
  static Fl_Pixmap* const pixmap = MakeBanner();
  return *pixmap;
}

Fl_Pixmap& Product() {
  static Fl_Pixmap* const pixmap = MakeProduct();
  return *pixmap;
}

}  // namespace pictures
