// Slices drawn as text, and pictures read back as text.
#pragma once

#include "base/LabelSlice.h"
#include "tests/support/TestVolume.h"
#include "views/slicemeasures/Picture.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

using Rows = std::vector<std::string>;

constexpr int kDirections[] = {kSliceXY, kSliceYZ, kSliceXZ};

/// A volume of three slices along a direction; the middle one is drawn, the others are empty.
///
/// Shape: rows[j][i], a digit is the label, any other character 0.
class Drawing {
public:
  Drawing(const Rows& rows, int direction = kSliceXY)
      : size{static_cast<int>(rows[0].size()), static_cast<int>(rows.size())},
        drawnDirection(direction),
        volume(direction == kSliceXY   ? std::make_unique<TestVolume>(size.width, size.height, 3)
               : direction == kSliceYZ ? std::make_unique<TestVolume>(3, size.height, size.width)
                                       : std::make_unique<TestVolume>(size.height, 3, size.width)) {
    for (int i = 0; i < size.width; ++i) {
      for (int j = 0; j < size.height; ++j) {
        const char c = rows[static_cast<std::size_t>(j)][static_cast<std::size_t>(i)];
        if (c >= '1' && c <= '9') { Voxel(i, j, 1) = static_cast<std::uint8_t>(c - '0'); }
      }
    }
  }

  std::uint8_t& Voxel(int i, int j, int slice) {
    if (drawnDirection == kSliceXY) { return volume->voxel(i, j, slice); }
    return drawnDirection == kSliceYZ ? volume->voxel(slice, j, i) : volume->voxel(j, slice, i);
  }
  LabelVolume Labels() const { return volume->Labels(); }
  LabelSlice Slice(int slice = 1) const { return {volume->Labels(), drawnDirection, slice}; }
  measure::SliceSize Size() const { return size; }

private:
  measure::SliceSize size;
  int drawnDirection;
  std::unique_ptr<TestVolume> volume;
};

/// The two pictures of a canvas, all 0 at first.
struct CanvasPictures {
  measure::Picture result = {};
  measure::Picture mark = {};
};

/// A picture as text: one character a pixel.
inline Rows TextOf(const measure::Picture& picture, measure::SliceSize size,
                   const std::function<char(std::int32_t)>& character) {
  Rows rows;
  for (int j = 0; j < size.height; ++j) {
    std::string row;
    for (int i = 0; i < size.width; ++i) { row += character(picture[i][j]); }
    rows.push_back(row);
  }
  return rows;
}

/// A picture of numbers below 36 as text: '.' for 0, then 1 to 9, then a to z.
inline Rows NumbersOf(const measure::Picture& picture, measure::SliceSize size) {
  return TextOf(picture, size, [](std::int32_t value) {
    if (value == 0) { return '.'; }
    return static_cast<char>(value < 10 ? '0' + value : 'a' + value - 10);
  });
}
