// Up to three coloured surfaces made from work volumes.
#pragma once

#include "VoxData/VtkNames.h"

#include <cstdint>
#include <memory>

class VoxData;

class SurfaceSet {
public:
  std::int32_t pointCount = 0;  ///< points of the last surface 1
  vtkPoints* points1 = nullptr;
  vtkNormals* normals1 = nullptr;
  vtkCellArray* strips1 = nullptr;  ///< null: there is no surface 1
  vtkPoints* points2 = nullptr;
  vtkNormals* normals2 = nullptr;
  vtkCellArray* strips2 = nullptr;
  vtkPoints* points3 = nullptr;
  vtkNormals* normals3 = nullptr;
  vtkCellArray* strips3 = nullptr;
  vtkPolyData* output = nullptr;
  vtkStructuredPoints* inputImage = nullptr;
  std::int32_t listState = -1;  ///< 1: surface 1 has been drawn
  std::uint8_t drawn = 0;       ///< 1: surface 2 or 3 has been drawn
  VoxData* volume1 = nullptr;   ///< work volume that colours surface 1
  VoxData* volume2 = nullptr;
  VoxData* volume3 = nullptr;
  float colorTable[256][3] = {};  ///< red, green, blue 0.0 to 1.0 by colour value

  SurfaceSet();
  SurfaceSet(const SurfaceSet&) = delete;
  SurfaceSet& operator=(const SurfaceSet&) = delete;
  ~SurfaceSet();

  void ClearSurfaces();
  /// Marching cubes, decimation if wanted, smoothing if wanted, strips; into slot 1, 2 or 3.
  void ExtractSurface(VoxData* volume, int slot, bool smoothing, bool decimation,
                      float targetReduction, float aspectRatio, float initialError,
                      float errorIncrement, int maximumIterations, int smoothingIterations,
                      float relaxationFactor, float featureAngle);
  /// Draws the surfaces there are into the current context, each with its opacity.
  void DrawSurfaces(float alpha1, float alpha2, float alpha3);

private:
  void StoreSurface(int slot, vtkPolyData* surface);

  struct Pipelines;  ///< keeps the filters' outputs alive while they are drawn
  std::unique_ptr<Pipelines> pipelines;
};
