#include "views/SliceGeometry.h"

#include <algorithm>
#include <cmath>

namespace slice {

namespace {

constexpr int kSmallestTexture = 64;
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
  if (side < kSmallestTexture) { return kSmallestTexture - side; }
  std::int64_t padded = kSmallestTexture;
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

int PixelAt(float position, int size) {
  const float cell = std::floor(position);
  if (!(cell > 0.0F)) { return 0; }
  return cell >= static_cast<float>(size) ? std::max(size - 1, 0) : static_cast<int>(cell);
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
  const PlaneSizes plane(shape, direction);
  std::fill_n(out, static_cast<std::size_t>(width) * static_cast<std::size_t>(height), Voxel{0});
  if (array == nullptr || index < 0 || index >= plane.fixed) { return; }
  const int columns = std::min(width, plane.width);
  const int rows = std::min(height, plane.height);
  for (int j = 0; j < rows; ++j) {
    Voxel* line = out + static_cast<std::size_t>(j) * static_cast<std::size_t>(width);
    if (direction == kSliceYZ) {
      std::copy_n(array[index][j], columns, line);
    } else if (direction == kSliceXZ) {
      std::copy_n(array[j][index], columns, line);
    } else {
      for (int i = 0; i < columns; ++i) { line[i] = array[i][j][index]; }
    }
  }
}

template void Extract<std::uint8_t>(const std::uint8_t* const* const*, const LabelVolume&, int, int,
                                    int, int, std::uint8_t*);
template void Extract<std::uint16_t>(const std::uint16_t* const* const*, const LabelVolume&, int,
                                     int, int, int, std::uint16_t*);

}  // namespace slice
