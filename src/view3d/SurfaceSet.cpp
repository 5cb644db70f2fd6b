#include "view3d/SurfaceSet.h"

#include "VoxData/VoxData.h"
#include "view3d/Decimate.h"
#include "view3d/SurfacePipelines.h"

#include <vtkMarchingCubes.h>
#include <vtkNew.h>
#include <vtkObject.h>
#include <vtkPointData.h>
#include <vtkPolyData.h>
#include <vtkSmoothPolyDataFilter.h>
#include <vtkStripper.h>
#include <vtkStructuredPoints.h>

#include <algorithm>
#include <iostream>

namespace {

constexpr double kSurfaceLevel = 128.0;  // the middle between the two scalars of a work volume
constexpr int kMostRounds = 1000;        // more rounds of a filter only keep the user waiting

/// Rises from 0 at 0 to 1 at 64 and falls back to 0 at 128; never below 0.
float Hump(float t) { return std::max(t * t * -0.000244140625F + t * 0.03125F, 0.0F); }

void FillColorTable(float (&table)[256][3]) {
  for (int value = 0; value < 256; ++value) {
    for (int channel = 0; channel < 3; ++channel) {
      table[value][channel] = Hump(static_cast<float>(value - 64 * channel));
    }
  }
}

}  // namespace

SurfaceSet::SurfaceSet() : pipelines(std::make_unique<Pipelines>()) {
  vtkObject::GlobalWarningDisplayOff();  // VTK's words would mix with the program's own lines
}

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
  FillColorTable(colorTable);
  if (slot == 1) { volume1 = volume; }
  if (slot == 2) { volume2 = volume; }
  if (slot == 3) { volume3 = volume; }
  inputImage = volume->GetImage();
  if (inputImage == nullptr) { return; }

  vtkNew<vtkMarchingCubes> cubes;
  cubes->SetInputData(inputImage);
  std::cerr << "marching cubes..." << std::endl;
  cubes->ComputeNormalsOn();
  cubes->SetValue(0, kSurfaceLevel);
  cubes->Update();
  vtkSmartPointer<vtkPolyData> mesh = cubes->GetOutput();
  const vtkIdType triangles = mesh->GetNumberOfCells();
  if (decimation) {
    std::cerr << "decimation running..." << std::endl;
    Decimate decimator;
    decimator.SetTargetReduction(targetReduction);
    decimator.SetAspectRatio(aspectRatio);
    decimator.SetInitialError(initialError);
    decimator.SetErrorIncrement(errorIncrement);
    decimator.SetMaximumIterations(std::clamp(maximumIterations, 0, kMostRounds));
    mesh = decimator.Run(mesh);
  }
  vtkNew<vtkSmoothPolyDataFilter> smoother;
  if (smoothing && triangles > 0) {
    smoother->SetInputData(mesh);
    smoother->SetNumberOfIterations(std::clamp(smoothingIterations, 0, kMostRounds));
    smoother->SetRelaxationFactor(relaxationFactor);
    smoother->SetFeatureAngle(featureAngle);
    smoother->FeatureEdgeSmoothingOff();  // the angle is set and then not used
    smoother->Update();
    mesh = smoother->GetOutput();
  }
  vtkNew<vtkStripper> stripper;
  stripper->SetInputData(mesh);
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
