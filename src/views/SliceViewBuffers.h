// The buffers of a slice view, once for Window2D and Segimage. For their own .cpp files only.
#pragma once

#include "views/SliceView.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>

namespace slice {

template <class Element>
Element* NewZeros(std::size_t count) {
  return static_cast<Element*>(std::calloc(std::max<std::size_t>(count, 1), sizeof(Element)));
}

template <class View>
std::size_t PixelCount(const View& view) {
  return static_cast<std::size_t>(view.sliceWidth) * static_cast<std::size_t>(view.sliceHeight);
}

template <class View>
std::size_t TexelCount(const View& view) {
  return (static_cast<std::size_t>(view.sliceWidth) + static_cast<std::size_t>(view.paddingX)) *
         (static_cast<std::size_t>(view.sliceHeight) + static_cast<std::size_t>(view.paddingY));
}

template <class View>
void FreeBuffers(View& view) {
  std::free(view.greySlice);
  std::free(view.segSlice);
  std::free(view.scratch);
  std::free(view.greyTextureData);
  std::free(view.segTextureData);
}

template <class View>
bool TryBuffers(View& view, std::size_t leastTexels) {
  const std::size_t pixels = PixelCount(view);
  const std::size_t texels = TexelCount(view);
  view.greySlice = NewZeros<std::uint16_t>(pixels);
  view.segSlice = NewZeros<std::uint8_t>(pixels);
  view.scratch = NewZeros<std::uint8_t>(4 * pixels);
  view.greyTextureData = NewZeros<std::uint16_t>(std::max(texels, leastTexels));
  view.segTextureData = NewZeros<std::uint8_t>(4 * texels);
  return view.greySlice != nullptr && view.segSlice != nullptr && view.scratch != nullptr &&
         view.greyTextureData != nullptr && view.segTextureData != nullptr;
}

/// Slices and padded pictures of zeros; a slice that does not fit memory becomes an empty one.
template <class View>
void MakeBuffers(View& view, std::size_t leastTexels = 0) {
  if (view.initialized != 0) { FreeBuffers(view); }
  if (TryBuffers(view, leastTexels)) { return; }
  FreeBuffers(view);
  ReportNoMemory(view.sliceWidth, view.sliceHeight);
  view.sliceWidth = 0;
  view.sliceHeight = 0;
  view.paddingX = PaddingOf(0);
  view.paddingY = PaddingOf(0);
  TryBuffers(view, leastTexels);
}

}  // namespace slice
