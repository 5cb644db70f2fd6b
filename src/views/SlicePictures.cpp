#include "views/SlicePictures.h"

#include "VoxData/LabelEntry.h"

#include <cstddef>
#include <cstring>
#include <vector>

namespace slice {

namespace {

std::size_t Texel(int i, int j, int width, int paddingX) {
  return static_cast<std::size_t>(width + paddingX) * static_cast<std::size_t>(j) +
         static_cast<std::size_t>(i);
}

/// Colour of the last label that the table defines, black at first.
class LastColour {
public:
  LastColour(const LabelEntry* labelTable, std::uint8_t opacity)
      : table(labelTable), rgba{0, 0, 0, opacity} {}

  void Write(std::uint8_t label, std::uint8_t* texel) {
    if (table[label].defined != 0) { std::memcpy(rgba, table[label].rgb, 3); }
    std::memcpy(texel, rgba, 4);
  }

private:
  const LabelEntry* table;
  std::uint8_t rgba[4];
};

template <class Paint>
void ForEachPixel(const std::uint8_t* labels, int width, int height, int paddingX,
                  std::uint8_t* texels, Paint paint) {
  for (int i = 0; i < width; ++i) {
    for (int j = 0; j < height; ++j) {
      const std::uint8_t label = labels[static_cast<std::size_t>(width) * j + i];
      std::uint8_t* texel = texels + 4 * Texel(i, j, width, paddingX);
      if (label == 0) {
        std::memset(texel, 0, 4);
      } else {
        paint(label, texel);
      }
    }
  }
}

}  // namespace

void FillLuminance(const std::uint16_t* grey, int width, int height, int paddingX,
                   const GreyWindow& window, std::uint16_t* texels) {
  for (int j = 0; j < height; ++j) {
    for (int i = 0; i < width; ++i) {
      const std::uint16_t value = grey[static_cast<std::size_t>(width) * j + i];
      texels[Texel(i, j, width, paddingX)] = window.Luminance(value);
    }
  }
}

void FillAllLabels(const std::uint8_t* labels, int width, int height, int paddingX,
                   const LabelEntry* table, std::uint8_t opacity, std::uint8_t* texels) {
  LastColour colour(table, opacity);
  ForEachPixel(labels, width, height, paddingX, texels,
               [&colour](std::uint8_t label, std::uint8_t* texel) { colour.Write(label, texel); });
}

void FillOneLabel(const std::uint8_t* labels, int width, int height, int paddingX,
                  const LabelEntry* table, int wanted, std::uint8_t opacity, std::uint8_t* texels) {
  LastColour colour(table, opacity);
  ForEachPixel(labels, width, height, paddingX, texels,
               [&colour, wanted](std::uint8_t label, std::uint8_t* texel) {
                 if (label == wanted) { colour.Write(label, texel); }
               });
}

}  // namespace slice
