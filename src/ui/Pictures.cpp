#include "ui/Pictures.h"

#include "base/ColourValues.h"
#include "ui/Artwork.h"
#include "ui/Palette.h"

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

constexpr int kColours = 255;

/// The characters are all but the one that ends a string, each once; the blank is not the first,
/// which alone would make it transparent.
char CharacterOf(int index) { return static_cast<char>(index + 1); }

Rgb Rounded(const artwork::Colour& colour) {
  const double channels[3] = {colour.red, colour.green, colour.blue};
  Rgb rgb{};
  for (std::size_t c = 0; c < 3; ++c) {
    rgb[c] = LowByte(std::clamp(channels[c], 0.0, 1.0) * 255.0 + 0.5);
  }
  return rgb;
}

/// A picture of `w` by `h` in the 255 colours that suit it best.
Picture Painted(int w, int h, artwork::Colour (*colourAt)(double, double)) {
  std::vector<Rgb> pixels;
  pixels.reserve(static_cast<std::size_t>(w) * static_cast<std::size_t>(h));
  for (int y = 0; y < h; ++y) {
    for (int x = 0; x < w; ++x) { pixels.push_back(Rounded(colourAt(x + 0.5, y + 0.5))); }
  }
  const Reduced reduced = ReduceColours(pixels, kColours);
  std::string palette;
  for (int i = 0; i < kColours; ++i) {
    const Rgb& entry = reduced.palette[static_cast<std::size_t>(i)];
    palette += Entry(CharacterOf(i), entry[0], entry[1], entry[2]);
  }
  Picture picture(w, h, palette);
  std::size_t next = 0;
  for (int y = 0; y < h; ++y) {
    for (int x = 0; x < w; ++x) { picture.At(x, y) = CharacterOf(reduced.index[next++]); }
  }
  return picture;
}

Fl_Pixmap* MakeBanner() {
  static Picture picture = Painted(306, 40, artwork::Banner);
  return picture.Finish();
}

Fl_Pixmap* MakeProduct() {
  static Picture picture = Painted(401, 241, artwork::Product);
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
