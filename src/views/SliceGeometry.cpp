#include "views/SliceGeometry.h"

#include <algorithm>
#include <cmath>

namespace slice {

namespace {

constexpr double kPerByte = 1.0 / 255.0;
constexpr double kWhite = 65535.0;

/// Sizes of `shape` along the fixed axis and the two axes of the picture.
struct PlaneSizes {
  int fixed, width, height;

  PlaneSizes(const LabelVolume& shape, int direction) {
    const int sizes[3] = {shape.dimX, shape.dimY, shape.dimZ};
    const Axes axes = AxesOf(direction);
    fixed = sizes[direction];
    width = sizes[axes.x];
    height = sizes[axes.y];
  }
};

}  // namespace

Axes AxesOf(int direction) {
  switch (direction) {
  case kSliceYZ: return {2, 1};
  case kSliceXZ: return {2, 0};
  default: return {0, 1};
  }
}

int PaddingOf(int side) {
  if (side < kSmallestSide) { return kSmallestSide - side; }
  std::int64_t padded = kSmallestSide;
  while (padded < side) { padded *= 2; }
  return static_cast<int>(padded - side);
}

View FitView(const Extent& slice, int w, int h) {
  View view;
  view.centreX = static_cast<float>(slice.voxelSizeX * static_cast<float>(slice.width) * 0.5);
  view.centreY = static_cast<float>(slice.voxelSizeY * static_cast<float>(slice.height) * 0.5);
  const auto canvasWidth = static_cast<float>(w);
  const auto canvasHeight = static_cast<float>(h);
  const float worldWidth = slice.voxelSizeX * static_cast<float>(slice.width);
  const float worldHeight = slice.voxelSizeY * static_cast<float>(slice.height);
  const float scaledWidth =
      canvasHeight / canvasWidth * slice.voxelSizeX * static_cast<float>(slice.width);
  const bool fitsByHeight = scaledWidth <= worldHeight;
  view.zoom = fitsByHeight ? canvasHeight / worldHeight : canvasWidth / worldWidth;
  return view;
}

float ZoomAfterDrag(float zoom, int pixelsDown, const Extent& slice, int canvasWidth) {
  const auto zoomed = static_cast<float>(std::pow(1.05, -pixelsDown) * zoom);
  const auto width = static_cast<float>(canvasWidth);
  const float sliceWidth = static_cast<float>(slice.width) * slice.voxelSizeX;
  if (width / zoomed < slice.voxelSizeX) { return width / slice.voxelSizeX; }
  if (sliceWidth * zoomed < 1.0F) { return 1.0F / sliceWidth; }
  return zoomed;
}

float HalfSide(int pixels, float zoom) { return static_cast<float>(pixels) / (2.0F * zoom); }

int PixelAt(float position, int size) {
  const float cell = std::floor(position);
  if (!(cell > 0.0F)) { return 0; }
  return cell >= static_cast<float>(size) ? std::max(size - 1, 0) : static_cast<int>(cell);
}

SlicePixel PixelUnder(const View& view, const Extent& slice, int x, int y) {
  const float worldX = (view.centreX - view.halfWidth) + static_cast<float>(x) / view.zoom;
  const float worldY = (view.halfHeight + view.centreY) - static_cast<float>(y) / view.zoom;
  return {PixelAt(worldX / slice.voxelSizeX, slice.width),
          PixelAt(worldY / slice.voxelSizeY, slice.height)};
}

GreyWindow::GreyWindow(std::uint8_t contrast, std::uint8_t brightness)
    : width(static_cast<float>((255 - contrast) * kPerByte * kWhite)) {
  const auto level = static_cast<float>((255 - brightness) * kPerByte * kWhite);
  low = level - width;
  high = level + width;
}

std::uint16_t GreyWindow::Luminance(std::uint16_t value) const {
  const auto grey = static_cast<float>(value);
  if (grey < low) { return 0; }
  if (high <= grey) { return 65535; }
  return static_cast<std::uint16_t>(static_cast<int>((grey - low) * 65535.0F / (width + width)));
}

template <class Voxel>
void Extract(const Voxel* const* const* array, const LabelVolume& shape, int direction, int index,
             int width, int height, Voxel* out) {
  const auto row = [&](int j) {
    return out + static_cast<std::size_t>(j) * static_cast<std::size_t>(width);
  };
  std::fill(out, row(height), Voxel{0});
  if (array == nullptr || direction < kSliceYZ || direction > kSliceXY) { return; }
  const PlaneSizes plane(shape, direction);
  if (index < 0 || index >= plane.fixed) { return; }
  const int columns = std::min(width, plane.width);
  const int rows = std::min(height, plane.height);
  if (direction == kSliceXY) {
    // One voxel of each run: in the order of memory, a strip of rows that stay in the cache.
    constexpr int kStrip = 32;
    for (int first = 0; first < rows; first += kStrip) {
      const int end = std::min(first + kStrip, rows);
      for (int i = 0; i < columns; ++i) {
        for (int j = first; j < end; ++j) { row(j)[i] = array[i][j][index]; }
      }
    }
    return;
  }
  for (int j = 0; j < rows; ++j) {
    std::copy_n(direction == kSliceYZ ? array[index][j] : array[j][index], columns, row(j));
  }
}

template void Extract<std::uint8_t>(const std::uint8_t* const* const*, const LabelVolume&, int, int,
                                    int, int, std::uint8_t*);
template void Extract<std::uint16_t>(const std::uint16_t* const* const*, const LabelVolume&, int,
                                     int, int, int, std::uint16_t*);

}  // namespace slice
