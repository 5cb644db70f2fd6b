// The result canvas: one slice picture with the measures on slices.
#pragma once

#include <FL/Fl_Gl_Window.H>

#include <cstdint>

class MainUI;
class VoxData;

/// Direction last prepared by the overlay and probability measures; starts at 2.
extern std::int32_t lastDirection;

class Segimage : public Fl_Gl_Window {
public:
  static constexpr const char* kName = "Segimage";  ///< in messages

  std::int32_t registered = 0;
  std::int32_t axisX = 0;
  std::int32_t axisY = 1;
  std::int32_t initialized = 0;
  MainUI* mainUI = nullptr;
  std::int32_t direction = 2;  ///< 0 fixes x, 1 fixes y, 2 fixes z
  std::int32_t scanIndex = 0;
  std::int32_t mouseButton = 0;
  std::uint16_t* greySlice = nullptr;  ///< sliceWidth * sliceHeight, (i, j) at j * sliceWidth + i
  std::uint8_t* segSlice = nullptr;    ///< the same shape
  std::int32_t userCounts[300][300][5];
  std::uint8_t* scratch = nullptr;
  std::uint16_t* greyTextureData = nullptr;  ///< padded luminance picture
  std::uint8_t* segTextureData = nullptr;    ///< padded RGBA picture
  std::uint8_t* spareTextureData = nullptr;  ///< allocated beside the last one, never read
  std::uint32_t greyTexture = 0;
  std::uint32_t extraTexture = 0;  ///< never generated
  std::uint32_t segTexture = 0;
  std::uint8_t extraTextureOn = 0;
  std::int32_t contourX = 0;
  std::int32_t contourY = 0;
  std::int32_t currentSlice = -1;
  std::int32_t sliceWidth = 0;
  std::int32_t sliceHeight = 0;
  std::int32_t textureWidth = 0;   ///< equals sliceWidth
  std::int32_t textureHeight = 0;  ///< equals sliceHeight
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
  float perimeter = 0.0F;
  std::int32_t contourStep = 0;
  std::uint8_t greyHidden = 1;
  std::uint8_t overlayInDrawCurrent = 0;
  std::int32_t result[300][300];       ///< the picture; its low 16 bits are shown
  std::int32_t mark[300][300];         ///< wave numbers of the contour
  std::int16_t* sliceDistX = nullptr;  ///< vector of the slice distance map, j * sliceWidth + i
  std::int16_t* sliceDistY = nullptr;
  float zoom = 1.0F;  ///< screen pixels per world unit
  std::uint8_t overlayVisible = 0;
  bool greyStale = false;  ///< the picture is newer than its texture
  bool segStale = false;

  Segimage(int x, int y, int w, int h, const char* label = nullptr);
  Segimage(const Segimage&) = delete;
  Segimage& operator=(const Segimage&) = delete;
  ~Segimage() override;
  void draw() override;
  int handle(int event) override;
  void hide() override;  ///< the context goes, and the textures with it

  // Life cycle and drawing.
  void Register(int newDirection, MainUI* owner);
  void Unregister();
  void InitSlice();
  void ResetView();
  void CreateGreySliceTexture();
  void CreateSegSliceTexture();
  void GetCurrentSlice();
  void DrawCurrentSlice();
  void DrawNow();  ///< draws at once, outside the toolkit's redraw; nothing while not shown

  // Measures.
  bool OverlayResult2D();  ///< false after a refusal, which leaves the canvas as it was
  void Overlay2D();
  void Complexity();
  void InteriorContour();
  void ContourWaveStep(int column, int row);
  void ContourWalkBack(int column, int row);
  void SliceDistanceMap(int imageIndex, int mapDirection);
  void DisplayDistanceMap();
  void Haussdorf2D();
  void ProbabilityIntra();
  void ProbabilityInter();

  /// Register and InitSlice when `wanted` differs from lastDirection.
  void PrepareDirection(int wanted);

private:
  void Paint(bool withGrey, bool withLabels);
  void DrawCursors() const;
};
