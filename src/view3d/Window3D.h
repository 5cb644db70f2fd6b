// The 3D view, and the object on which the measures on volumes are commands.
#pragma once

#include "base/DistanceField.h"
#include "view3d/SurfaceSet.h"
#include "view3d/Trackball.h"
#include "view3d/volumemeasures/CompareRecord.h"

#include <FL/Fl_Gl_Window.H>

#include <cstdint>
#include <memory>

class MainUI;
class Progress;

class Window3D : public Fl_Gl_Window {
public:
  MainUI* ui = nullptr;
  std::int32_t viewNumber = 3;
  std::int32_t needsGlInit = 1;
  std::int32_t viewReady = 0;
  std::int32_t mouseOperation = 0;  ///< 0 none, 1 pan, 2 zoom, 3 rotate
  std::int32_t displayedSurfaces = 0;
  std::int32_t pressedButton = 0;
  float progressWidth = 0.0F;
  float voxelScale[3] = {1.0F, 1.0F, 1.0F};
  std::int32_t* distMask = nullptr;  ///< index (z * dimY + y) * dimX + x, as are the next three
  std::int32_t dimX = 0;
  std::int32_t dimY = 0;
  std::int32_t dimZ = 0;
  std::uint8_t workArraysReady = 0;
  std::uint8_t transformStarted = 0;  ///< set by every run of the transform, read by nothing
  float* distX = nullptr;
  float* distY = nullptr;
  float* distZ = nullptr;
  std::int32_t ctrlAtPress = 0;
  std::uint8_t smoothingOn = 0;
  std::uint8_t decimationOn = 0;
  std::int32_t volumeSize[3] = {0, 0, 0};
  std::uint8_t* colorBytes = nullptr;
  float viewCentre[3] = {0.0F, 0.0F, 0.0F};
  float halfExtent[3] = {0.0F, 0.0F, 0.0F};
  float viewExtent[3] = {0.0F, 0.0F, 0.0F};
  float rotationCentre[3] = {0.0F, 0.0F, 0.0F};
  std::int32_t loopI = 0;
  std::int32_t loopJ = 0;
  std::int32_t loopK = 0;
  std::int32_t loopL = 0;
  Trackball trackball;
  SurfaceSet surfaces[3];  ///< only the first is filled and drawn
  /// Labels of the image that a measure alters meanwhile, [x][y][z]: [280][280][280], zero pages
  /// until they are used.
  std::int32_t (*savedLabels)[280][280] = nullptr;
  float histogramValue[20000] = {};  ///< distinct distances, ascending
  std::int32_t histogramLast = -1;   ///< highest index in use
  std::int32_t histogramCount[20000] = {};
  CompareRecord compareRecords[200];
  std::int32_t averageCount = 0;
  char histoFileName[300] = {};

  Window3D(int x, int y, int w, int h, const char* label = nullptr);
  Window3D(const Window3D&) = delete;
  Window3D& operator=(const Window3D&) = delete;
  ~Window3D() override;
  void draw() override;
  int handle(int event) override;
  void hide() override;

  // View.
  void Register(int number, MainUI* owner);
  void SetupView();
  void SetupGl();
  void ClearAllSurfaces();
  void BuildSurface(VoxData* volume, int slot);
  /// ExtractSurface on the first set with the parameters of the Options window.
  void ExtractWithOptions(VoxData* volume, int slot);
  void CheckGlError();
  int PickVoxel(int x, int y, int* voxel);
  void DrawCrosshairs();

  // Work arrays.
  void AllocateVolumes(int x, int y, int z);
  void FreeVolumes();
  DistanceField Field() const { return {distMask, distX, distY, distZ, dimX, dimY, dimZ}; }

  // Measures.
  void ComputeDanielsson3D(int imageIndex);
  void DisplayDanielsson3D();
  void ComputeOverlayResult3D();
  void ComputeOverlay3D();
  void ComputeHaussdorf3D();
  void ComputeSurfaceDistance();
  void UpdateSurfaceColors(float maxIns, float maxOut);
  void ComputeProbabilityMap();
  void CreateAverage();
  void ComputeConfusionMatrix(char* fileName);
  void ComputeSurfaceHistogram(char* fileName);
  void BuildSignedList(int source, int target);
  void CompareData(char* fileName);
  void ExportCompareTable(char* fileName);

  struct Work;  ///< sizes of the work arrays, and labels that are altered for a while
  std::unique_ptr<Work> workState;

private:
  /// Runs the transform on the surface shell of an image, which is whole again afterwards.
  void TransformShell(int index, int label);
  /// Runs the transform on an image that has been checked.
  void RunTransform(int imageIndex, int label, Progress& progress);
  class PairRun;                   ///< the study of a run over the queued pairs
  struct SignedRun;                ///< the histogram that is being built
  SignedRun* signedRun = nullptr;  ///< null where none is

  void PressMouse();
  void DragMouse();
  void ReleaseMouse();
  void Pick();
  void SetProjection();
  void ApplyView();
  int SphereHeight() const;  ///< the height that turning takes: the width when isotropic
  bool CanDraw() { return shown() != 0 && visible_r() != 0; }
};
