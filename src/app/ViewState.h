// The state that all views share: cursor, tool, and how grey values and labels are shown.
#pragma once

#include <array>
#include <cstdint>

class ViewState {
public:
  std::int32_t cursor[3] = {0, 0, 0};  ///< voxel under the crosshair: x, y, z
  std::int32_t toolMode = 1;           ///< 1 navigate, 3 crosshair, 0 plain
  std::int32_t liveUpdate = 1;         ///< 0 while a crosshair drag keeps the old slices
  std::uint8_t brightness = 0;
  std::uint8_t contrast = 0;
  std::uint8_t labelOpacity = 0;

  std::array<int, 3> GetCursor() const { return {cursor[0], cursor[1], cursor[2]}; }
  void SetCursor(int x, int y, int z) {
    cursor[0] = x;
    cursor[1] = y;
    cursor[2] = z;
  }
  int GetToolMode() const { return toolMode; }
  void SetToolMode(int mode) { toolMode = mode; }
  int GetLiveUpdate() const { return liveUpdate; }
  void SetLiveUpdate(int live) { liveUpdate = live; }
  std::uint8_t GetBrightness() const { return brightness; }
  void SetBrightness(int value) { brightness = static_cast<std::uint8_t>(value); }
  std::uint8_t GetContrast() const { return contrast; }
  void SetContrast(int value) { contrast = static_cast<std::uint8_t>(value); }
  std::uint8_t GetLabelOpacity() const { return labelOpacity; }
  void SetLabelOpacity(int value) { labelOpacity = static_cast<std::uint8_t>(value); }
};
