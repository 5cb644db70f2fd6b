// Decimate: its five parameters, and what it leaves whole.
#include "view3d/Decimate.h"

#include <gtest/gtest.h>
#include <vtkCellArray.h>
#include <vtkFloatArray.h>
#include <vtkMarchingCubes.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkPolyData.h>
#include <vtkSmoothPolyDataFilter.h>
#include <vtkStructuredPoints.h>

#include <cmath>
#include <limits>
#include <map>

namespace {

/// The surface of a voxel sphere of a radius in a cube of 32.
vtkSmartPointer<vtkPolyData> Sphere(double radius = 12.0) {
  constexpr int kSide = 32;
  vtkNew<vtkStructuredPoints> image;
  image->SetDimensions(kSide, kSide, kSide);
  vtkNew<vtkFloatArray> scalars;
  for (int z = 0; z < kSide; ++z) {
    for (int y = 0; y < kSide; ++y) {
      for (int x = 0; x < kSide; ++x) {
        const double away = std::hypot(x - 15.5, y - 15.5, z - 15.5);
        scalars->InsertNextValue(away < radius ? 255.0F : 0.0F);
      }
    }
  }
  image->GetPointData()->SetScalars(scalars);
  vtkNew<vtkMarchingCubes> cubes;
  cubes->SetInputData(image);
  cubes->ComputeNormalsOn();
  cubes->SetValue(0, 128.0);
  cubes->Update();
  return cubes->GetOutput();
}

/// A rounder sphere: on the stairs of voxels a vertex lies on a plane or on an edge, and no error
/// between them makes a difference.
vtkSmartPointer<vtkPolyData> SmoothSphere() {
  vtkNew<vtkSmoothPolyDataFilter> smoother;
  smoother->SetInputData(Sphere());
  smoother->SetNumberOfIterations(100);
  smoother->SetRelaxationFactor(0.1);
  smoother->Update();
  return smoother->GetOutput();
}

Decimate Defaults() {
  Decimate decimator;
  decimator.SetTargetReduction(0.5);
  decimator.SetAspectRatio(20.0);
  decimator.SetInitialError(0.0005);
  decimator.SetErrorIncrement(0.001);
  decimator.SetMaximumIterations(30);
  return decimator;
}

vtkIdType Triangles(vtkPolyData* mesh) { return mesh->GetNumberOfPolys(); }

TEST(DecimateTest, ALargerTargetGivesFewerTriangles) {
  const auto sphere = Sphere();
  vtkIdType last = Triangles(sphere) + 1;
  for (const double target : {0.0, 0.2, 0.4, 0.6}) {
    Decimate decimator = Defaults();
    decimator.SetTargetReduction(target);
    const vtkIdType left = Triangles(decimator.Run(sphere));
    EXPECT_LT(left, last) << target;
    last = left;
  }
}

TEST(DecimateTest, TheDefaultTargetIsMet) {
  const auto sphere = Sphere();
  const vtkIdType left = Triangles(Defaults().Run(sphere));

  EXPECT_LE(left, Triangles(sphere) / 2 + 2);
  EXPECT_GE(left, Triangles(sphere) / 2 - 2);
}

TEST(DecimateTest, ALargerErrorRemovesMore) {
  const auto sphere = SmoothSphere();
  Decimate strict = Defaults();
  strict.SetTargetReduction(0.9);
  strict.SetInitialError(1e-6);
  strict.SetErrorIncrement(0.0);
  Decimate loose = strict;
  loose.SetInitialError(0.05);

  EXPECT_LT(Triangles(loose.Run(sphere)), Triangles(strict.Run(sphere)));
}

TEST(DecimateTest, MoreRoundsLetTheErrorGrow) {
  const auto sphere = Sphere();
  Decimate few = Defaults();
  few.SetTargetReduction(0.9);
  few.SetMaximumIterations(1);
  Decimate many = few;
  many.SetMaximumIterations(30);

  EXPECT_LT(Triangles(many.Run(sphere)), Triangles(few.Run(sphere)));
  few.SetMaximumIterations(0);
  EXPECT_EQ(Triangles(few.Run(sphere)), Triangles(sphere));
}

TEST(DecimateTest, AStricterAspectRatioLeavesMore) {
  const auto sphere = Sphere();
  Decimate strict = Defaults();
  strict.SetTargetReduction(0.9);
  strict.SetAspectRatio(1.5);
  Decimate loose = strict;
  loose.SetAspectRatio(20.0);

  EXPECT_LT(Triangles(loose.Run(sphere)), Triangles(strict.Run(sphere)));
}

TEST(DecimateTest, TheSurfaceStaysClosedAndKeepsItsNormals) {
  const auto thinned = Defaults().Run(Sphere());
  std::map<std::pair<vtkIdType, vtkIdType>, int> edges;
  vtkIdType size = 0;
  const vtkIdType* ids = nullptr;
  vtkCellArray* cells = thinned->GetPolys();
  for (cells->InitTraversal(); cells->GetNextCell(size, ids) != 0;) {
    ASSERT_EQ(size, 3);
    for (int k = 0; k < 3; ++k) { ++edges[std::minmax(ids[k], ids[(k + 1) % 3])]; }
  }
  for (const auto& [edge, uses] : edges) { EXPECT_EQ(uses, 2); }
  vtkDataArray* normals = thinned->GetPointData()->GetNormals();
  ASSERT_NE(normals, nullptr);
  EXPECT_EQ(normals->GetNumberOfTuples(), thinned->GetNumberOfPoints());
}

TEST(DecimateTest, NoParameterBreaksIt) {
  const auto sphere = Sphere(5.0);
  const double hostile[] = {0.0, -1.0, 1e308, std::nan(""),
                            std::numeric_limits<double>::infinity()};
  for (const double value : hostile) {
    Decimate decimator = Defaults();
    decimator.SetTargetReduction(value);
    EXPECT_LE(Triangles(decimator.Run(sphere)), Triangles(sphere));
    decimator = Defaults();
    decimator.SetAspectRatio(value);
    EXPECT_LE(Triangles(decimator.Run(sphere)), Triangles(sphere));
    decimator = Defaults();
    decimator.SetInitialError(value);
    decimator.SetErrorIncrement(value);
    EXPECT_LE(Triangles(decimator.Run(sphere)), Triangles(sphere));
  }
  Decimate decimator = Defaults();
  decimator.SetMaximumIterations(-5);
  EXPECT_EQ(Triangles(decimator.Run(sphere)), Triangles(sphere));
}

TEST(DecimateTest, AnEmptyMeshStaysEmpty) {
  vtkNew<vtkPolyData> empty;
  EXPECT_EQ(Triangles(Defaults().Run(empty)), 0);
}

}  // namespace
