// One orthogonal slice view of the grey volume with its labels.
#pragma once

#include <FL/Fl_Gl_Window.H>

#include <cstdint>

class MainUI;
class VoxData;

/// Direction of the view in which the mouse was last released; starts at 0.
extern std::int32_t currentDirection;

class Window2D : public Fl_Gl_Window {
public:
  static constexpr const char* kName = "Window2D";  ///< in messages

  std::int32_t registered = 0;
  std::int32_t axisX = 0;
  std::int32_t axisY = 1;
  std::int32_t initialized = 0;
  MainUI* mainUI = nullptr;
  std::int32_t direction = 2;
  std::int32_t mouseButton = 0;
  std::uint16_t* greySlice = nullptr;  ///< sliceWidth * sliceHeight, (i, j) at j * sliceWidth + i
  std::uint8_t* segSlice = nullptr;
  std::uint8_t* scratch = nullptr;
  std::uint16_t* greyTextureData = nullptr;
  std::uint8_t* segTextureData = nullptr;
  std::uint32_t greyTexture = 0;
  std::uint32_t segTexture = 0;
  std::int32_t currentSlice = -1;
  std::int32_t sliceWidth = 0;
  std::int32_t sliceHeight = 0;
  std::int32_t paddingX = 0;
  std::int32_t paddingY = 0;
  float voxelSizeX = 1.0F;
  float voxelSizeY = 1.0F;
  std::uint8_t contrast = 0;
  std::uint8_t brightness = 0;
  std::uint8_t labelOpacity = 0;
  float viewCentreX = 0.0F;
  float viewCentreY = 0.0F;
  float viewHalfWidth = 1.0F;
  float viewHalfHeight = 1.0F;
  std::int32_t lastMouseX = 0;
  std::int32_t lastMouseY = 0;
  float zoom = 1.0F;       ///< screen pixels per world unit
  bool greyStale = false;  ///< the picture is newer than its texture
  bool segStale = false;

  Window2D(int x, int y, int w, int h, const char* label = nullptr);
  Window2D(const Window2D&) = delete;
  Window2D& operator=(const Window2D&) = delete;
  ~Window2D() override;
  void draw() override;
  int handle(int event) override;
  void hide() override;  ///< the context goes, and the textures with it

  void Register(int newDirection, MainUI* owner);
  void ClearView();
  void InitSlice();
  void ResetView();
  void CreateGreySliceTexture();
  void CreateSegSliceTexture();
  void GetCurrentSlice();  ///< with its cache: touches only what changed
  void RefreshSlice();     ///< without it
  void DrawRefreshed();    ///< draws at once with RefreshSlice in front; safe while not shown

private:
  void TakeSlices(int fixed);
  void Paint();
};
