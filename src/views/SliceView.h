// What the slice views and the result canvas do alike, where the class of the view does not matter.
#pragma once

#include "VoxData/VoxData.h"
#include "views/SliceGeometry.h"

#include <cstdint>

class MainUI;

namespace slice {

/// The slot at imageSlider, or null.
VoxData* ShownImage(const MainUI& ui);
/// The slot chosen as Image 1, or null.
VoxData* FirstImage(const MainUI& ui);

/// Ends the program: the calling order is broken. Writes the words, the direction between them.
[[noreturn]] void EndForOrder(const char* name, int direction, const char* words);

/// Ends the program where a side of 64 pixels or more is padded by its own length or more.
/// `axis` is x or y, `side` "width" or "height".
void DemandPadding(const char* name, char axis, const char* side, int padding, int size);

/// Says on the error stream that a slice is too large for the memory.
void ReportNoMemory(int width, int height);

/// What the mouse does in a view: 1 navigates, 3 moves the crosshair.
int ToolMode();

/// The cursor's coordinate along the axis that `direction` holds fixed.
int CursorSlice(int direction);

/// Moves the shared cursor along the two axes of a slice, and all views with it. Between the press
/// and the release of the mouse only the lines move; the slices follow at the end.
void PlaceCursor(MainUI& ui, Axes axes, SlicePixel pixel, int event);

/// Builds the texture `name` anew from a padded picture; the context is current.
void BuildGreyTexture(std::uint32_t& name, const std::uint16_t* texels, int width, int height);
void BuildColourTexture(std::uint32_t& name, const std::uint8_t* texels, int width, int height);

/// Paints a texture without blending, and one with it, on a padded slice of width by height pixels.
void PaintGrey(std::uint32_t texture, int width, int height);
void BlendLabels(std::uint32_t texture, int width, int height);

/// Colour of a crosshair, 0.0 to 1.0 each.
struct CursorColour {
  float red, green, blue;
};
constexpr CursorColour kBlue{0.0F, 0.0F, 1.0F};
constexpr CursorColour kGreen{0.0F, 1.0F, 0.0F};
constexpr CursorColour kPurple{0.5F, 0.0F, 0.5F};

/// Two dashed lines through a cursor.
void DrawCursor(const int* cursor, CursorColour colour, Axes axes, int width, int height);

/// N, P and C choose the tool. Returns whether one of them is down.
bool ChooseToolByKey(MainUI& ui);

}  // namespace slice
