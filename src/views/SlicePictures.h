// The padded pictures behind the textures.
#pragma once

#include "views/SliceGeometry.h"

#include <cstdint>

struct LabelEntry;

namespace slice {

/// Luminance of a grey slice; texel (i, j) at (width + paddingX) * j + i. The padding stays.
void FillLuminance(const std::uint16_t* grey, int width, int height, int paddingX,
                   const GreyWindow& window, std::uint16_t* texels);

/// Every label in its colour with `opacity` as alpha, label 0 clear. A label that the table does
/// not define takes the colour of the last one found, column by column.
void FillAllLabels(const std::uint8_t* labels, int width, int height, int paddingX,
                   const LabelEntry* table, std::uint8_t opacity, std::uint8_t* texels);

/// Label `wanted` in its colour, label 0 clear; texels of other labels are left as they were.
void FillOneLabel(const std::uint8_t* labels, int width, int height, int paddingX,
                  const LabelEntry* table, int wanted, std::uint8_t opacity, std::uint8_t* texels);

}  // namespace slice
