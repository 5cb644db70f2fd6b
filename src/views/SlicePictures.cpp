#include "views/SlicePictures.h"

#include "VoxData/LabelEntry.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>

namespace slice {

namespace {

constexpr int kLabels = 256;
constexpr std::size_t kBytes = 4;  // of a texel

using Texel = std::array<std::uint8_t, kBytes>;

/// First element of a row, in the slice or in its padded picture.
std::size_t RowStart(int row, int width) {
  return static_cast<std::size_t>(row) * static_cast<std::size_t>(width);
}

/// Clear where the table does not define the label, and for label 0.
std::array<Texel, kLabels> ColoursOf(const LabelEntry* table, std::uint8_t opacity) {
  std::array<Texel, kLabels> colours{};
  for (std::size_t id = 1; id < kLabels; ++id) {
    const LabelEntry& entry = table[id];
    if (entry.defined != 0) { colours[id] = {entry.rgb[0], entry.rgb[1], entry.rgb[2], opacity}; }
  }
  return colours;
}

bool AllDefined(const std::uint8_t* labels, std::size_t count, const LabelEntry* table) {
  return std::all_of(labels, labels + count, [table](std::uint8_t label) {
    return label == 0 || table[label].defined != 0;
  });
}

/// What a label that the table does not define looks like depends on the one painted before it.
void FillColumnByColumn(const std::uint8_t* labels, int width, int height, int paddingX,
                        const LabelEntry* table, std::uint8_t opacity, std::uint8_t* texels) {
  const std::array<Texel, kLabels> colours = ColoursOf(table, opacity);
  Texel last = {0, 0, 0, opacity};
  for (int i = 0; i < width; ++i) {
    for (int j = 0; j < height; ++j) {
      const auto column = static_cast<std::size_t>(i);
      const std::uint8_t label = labels[RowStart(j, width) + column];
      if (label != 0 && table[label].defined != 0) { last = colours[label]; }
      const Texel& texel = label == 0 ? colours[0] : last;
      std::memcpy(texels + kBytes * (RowStart(j, width + paddingX) + column), texel.data(), kBytes);
    }
  }
}

}  // namespace

void FillLuminance(const std::uint16_t* grey, int width, int height, int paddingX,
                   const GreyWindow& window, std::uint16_t* texels) {
  for (int j = 0; j < height; ++j) {
    const std::uint16_t* row = grey + RowStart(j, width);
    std::transform(row, row + width, texels + RowStart(j, width + paddingX),
                   [&window](std::uint16_t value) { return window.Luminance(value); });
  }
}

void FillAllLabels(const std::uint8_t* labels, int width, int height, int paddingX,
                   const LabelEntry* table, std::uint8_t opacity, std::uint8_t* texels) {
  if (!AllDefined(labels, RowStart(height, width), table)) {
    FillColumnByColumn(labels, width, height, paddingX, table, opacity, texels);
    return;
  }
  const std::array<Texel, kLabels> colours = ColoursOf(table, opacity);
  for (int j = 0; j < height; ++j) {
    const std::uint8_t* row = labels + RowStart(j, width);
    std::uint8_t* texel = texels + kBytes * RowStart(j, width + paddingX);
    for (int i = 0; i < width; ++i, texel += kBytes) {
      std::memcpy(texel, colours[row[i]].data(), kBytes);
    }
  }
}

void FillOneLabel(const std::uint8_t* labels, int width, int height, int paddingX,
                  const LabelEntry* table, int wanted, std::uint8_t opacity, std::uint8_t* texels) {
  // Only this label is ever looked up: where the table does not define it, none was found before.
  Texel colour = {0, 0, 0, opacity};
  const bool defined = wanted >= 0 && wanted < kLabels && table[wanted].defined != 0;
  if (defined) { std::copy_n(table[wanted].rgb, 3, colour.begin()); }
  const Texel clear{};
  for (int j = 0; j < height; ++j) {
    const std::uint8_t* row = labels + RowStart(j, width);
    std::uint8_t* texel = texels + kBytes * RowStart(j, width + paddingX);
    for (int i = 0; i < width; ++i, texel += kBytes) {
      if (row[i] == 0) {
        std::memcpy(texel, clear.data(), kBytes);
      } else if (row[i] == wanted) {
        std::memcpy(texel, colour.data(), kBytes);
      }
    }
  }
}

}  // namespace slice
