// Where a slice lies in its picture and on the screen: plain arithmetic, no toolkit.
#pragma once

#include "base/LabelSlice.h"

#include <cstdint>

namespace slice {

/// Volume axes of the picture's width and height: 0 x, 1 y, 2 z.
struct Axes {
  int x = 0;
  int y = 1;
};

/// Direction 2 has x, y; 0 has z, y; 1 has z, x. Any other has the axes of direction 2.
Axes AxesOf(int direction);

constexpr int kSmallestSide = 64;  ///< of a padded picture

/// Pixels that a side is short of its padded side: 64, or the next power of two.
int PaddingOf(int side);

/// The visible rectangle, in world units, and the screen pixels of one world unit.
struct View {
  float centreX = 0.0F;
  float centreY = 0.0F;
  float zoom = 1.0F;
  float halfWidth = 1.0F;
  float halfHeight = 1.0F;
};

/// A slice of voxels of a size, in world units.
struct Extent {
  int width = 0;
  int height = 0;
  float voxelSizeX = 1.0F;
  float voxelSizeY = 1.0F;
};

/// The view in which the whole slice fits a canvas of w by h pixels and is centred.
View FitView(const Extent& slice, int w, int h);

/// Zoom after the mouse moved `pixelsDown`: 5 per cent a pixel, between one voxel as wide as the
/// canvas and the slice as wide as one pixel.
float ZoomAfterDrag(float zoom, int pixelsDown, const Extent& slice, int canvasWidth);

/// Half of what a canvas side of `pixels` shows, in world units.
float HalfSide(int pixels, float zoom);

/// The pixel of a side that a position lies in, kept within 0 to size - 1.
int PixelAt(float position, int size);

/// A pixel of a slice: column i, row j from the bottom.
struct SlicePixel {
  int i = 0;
  int j = 0;
};

/// The pixel under a place of the canvas, x to the right and y down; outside the slice the nearest
/// one of its border.
SlicePixel PixelUnder(const View& view, const Extent& slice, int x, int y);

/// How grey values become luminance, in 32-bit floats: a high contrast is a narrow window, a high
/// brightness a low level.
struct GreyWindow {
  float width;
  float low;
  float high;

  GreyWindow(std::uint8_t contrast, std::uint8_t brightness);
  std::uint16_t Luminance(std::uint16_t value) const;
};

/// Copies slice `index` of `array` into `out`, pixel (i, j) at j * width + i. What lies outside
/// the volume, or outside directions 0 to 2, is 0, so that a view may keep its size while the
/// volume it shows has another.
template <class Voxel>
void Extract(const Voxel* const* const* array, const LabelVolume& shape, int direction, int index,
             int width, int height, Voxel* out);

}  // namespace slice
