#include "view3d/SurfaceSet.h"

#include "VoxData/VoxData.h"
#include "view3d/Decimate.h"
#include "view3d/SurfaceColours.h"
#include "view3d/SurfacePipelines.h"

#include <vtkMarchingCubes.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkPolyData.h>
#include <vtkSmoothPolyDataFilter.h>
#include <vtkStripper.h>
#include <vtkStructuredPoints.h>

#include <algorithm>
#include <iostream>

namespace {

constexpr double kSurfaceLevel = 128.0;  // the middle between the two scalars of a work volume
constexpr int kMostSmoothing = 10000;    // a surface is long at rest by then

using Mesh = vtkSmartPointer<vtkPolyData>;

Mesh MarchCubes(vtkStructuredPoints* image) {
  vtkNew<vtkMarchingCubes> cubes;
  cubes->SetInputData(image);
  std::cerr << "marching cubes..." << std::endl;
  cubes->ComputeNormalsOn();
  cubes->SetValue(0, kSurfaceLevel);
  cubes->Update();
  return cubes->GetOutput();
}

Mesh Smooth(vtkPolyData* mesh, int iterations, float relaxation, float featureAngle) {
  vtkNew<vtkSmoothPolyDataFilter> smoother;
  smoother->SetInputData(mesh);
  smoother->SetNumberOfIterations(iterations);
  smoother->SetRelaxationFactor(relaxation);
  // ON PURPOSE: the angle is set and then not used, since feature edges are not treated apart.
  smoother->SetFeatureAngle(featureAngle);
  smoother->FeatureEdgeSmoothingOff();
  smoother->Update();
  return smoother->GetOutput();
}

/// `iterations`, or as many as a user can be made to wait for.
int Bearable(int iterations) {
  if (iterations > kMostSmoothing) {
    std::cerr << "Smoothing stops after " << kMostSmoothing << " iterations." << std::endl;
  }
  return std::clamp(iterations, 0, kMostSmoothing);
}

}  // namespace

SurfaceSet::SurfaceSet() : pipelines(std::make_unique<Pipelines>()) {}

SurfaceSet::~SurfaceSet() = default;

void SurfaceSet::ClearSurfaces() {
  for (vtkPoints** points : {&points1, &points2, &points3}) { *points = nullptr; }
  for (vtkNormals** normals : {&normals1, &normals2, &normals3}) { *normals = nullptr; }
  for (vtkCellArray** strips : {&strips1, &strips2, &strips3}) { *strips = nullptr; }
  pointCount = 0;
  output = nullptr;
  listState = -1;
  for (Surface& surface : pipelines->slots) { surface = {}; }
  pipelines->last = nullptr;
}

void SurfaceSet::ExtractSurface(VoxData* volume, int slot, bool smoothing, bool decimation,
                                float targetReduction, float aspectRatio, float initialError,
                                float errorIncrement, int maximumIterations,
                                int smoothingIterations, float relaxationFactor,
                                float featureAngle) {
  surface::FillColorTable(colorTable);
  if (slot == 1) { volume1 = volume; }
  if (slot == 2) { volume2 = volume; }
  if (slot == 3) { volume3 = volume; }
  inputImage = volume != nullptr ? volume->GetImage() : nullptr;
  if (inputImage == nullptr) { return; }

  Mesh mesh = MarchCubes(inputImage);
  const vtkIdType triangles = mesh->GetNumberOfCells();
  if (decimation) {
    std::cerr << "decimation running..." << std::endl;
    Decimate decimator;
    decimator.SetTargetReduction(targetReduction);
    decimator.SetAspectRatio(aspectRatio);
    decimator.SetInitialError(initialError);
    decimator.SetErrorIncrement(errorIncrement);
    decimator.SetMaximumIterations(maximumIterations);
    mesh = decimator.Run(mesh);
  }
  if (smoothing && triangles > 0) {  // the smoother refuses a mesh without points
    mesh = Smooth(mesh, Bearable(smoothingIterations), relaxationFactor, featureAngle);
  }
  vtkNew<vtkStripper> stripper;
  stripper->SetInputData(mesh);
  // The number before decimation, also where fewer are drawn.
  std::cerr << "Num Tris = " << triangles << std::endl;
  stripper->Update();
  StoreSurface(slot, stripper->GetOutput());
}

void SurfaceSet::StoreSurface(int slot, vtkPolyData* surface) {
  output = surface;
  pipelines->last = surface;
  listState = -1;
  if (slot < 1 || slot > 3) { return; }
  vtkPoints** const points[3] = {&points1, &points2, &points3};
  vtkNormals** const normals[3] = {&normals1, &normals2, &normals3};
  vtkCellArray** const strips[3] = {&strips1, &strips2, &strips3};
  *strips[slot - 1] = surface->GetStrips();
  *points[slot - 1] = surface->GetPoints();
  *normals[slot - 1] = surface->GetPointData()->GetNormals();
  if (slot == 1) { pointCount = static_cast<std::int32_t>(surface->GetNumberOfPoints()); }
  pipelines->slots[slot - 1] = MakeSurface(surface);
}
