// Thinning a mesh: how far, within which bound, and what has to stay as it is.
#include "view3d/Decimate.h"

#include "tests/view3d/Meshes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>

namespace {

using meshes::Corner;
using meshes::Data;

Decimate Wide(double target) {
  Decimate decimate;
  decimate.SetTargetReduction(target);
  decimate.SetAspectRatio(1000);
  decimate.SetInitialError(0.1);
  return decimate;
}

/// A cone over a hexagon of radius 1: its tip, at height 0.1, is the only vertex that can go. It
/// lies 0.0667 above the average plane, and the longest side of the bounds is 2.
Data Cone() {
  std::vector<Corner> points = {{0, 0, 0.1}};
  std::vector<std::array<int, 3>> triangles;
  for (int i = 0; i < 6; ++i) {
    points.push_back({std::cos(i * M_PI / 3), std::sin(i * M_PI / 3), 0});
    triangles.push_back({0, 1 + i, 1 + (i + 1) % 6});
  }
  return meshes::Of(points, triangles);
}

TEST(Decimate, ALargerTargetLeavesFewerTriangles) {
  const Data sphere = meshes::Sphere(40);
  vtkIdType before = sphere->GetNumberOfPolys() + 1;
  for (const double target : {0.0, 0.1, 0.2, 0.3, 0.4, 0.5, 0.6}) {
    Decimate decimate;
    decimate.SetTargetReduction(target);

    const vtkIdType count = decimate.Run(sphere)->GetNumberOfPolys();

    EXPECT_LT(count, before) << target;
    before = count;
  }
}

TEST(Decimate, StopsAtTheTarget) {
  const Data sphere = meshes::Sphere(40);
  const auto all = static_cast<double>(sphere->GetNumberOfPolys());
  for (const double target : {0.1, 0.25, 0.5}) {
    Decimate decimate;
    decimate.SetTargetReduction(target);

    const auto count = static_cast<double>(decimate.Run(sphere)->GetNumberOfPolys());

    EXPECT_LE(count, (1 - target) * all);
    EXPECT_GT(count, (1 - target) * all - 2);  // a vertex takes two triangles with it
  }
}

TEST(Decimate, TheTargetOfOneThinsAsFarAsTheRestAllows) {
  const Data sphere = meshes::Sphere(40);
  Decimate decimate;
  decimate.SetTargetReduction(0.6);
  const vtkIdType most = decimate.Run(sphere)->GetNumberOfPolys();

  decimate.SetTargetReduction(1.0);
  const Data thinned = decimate.Run(sphere);

  EXPECT_LE(thinned->GetNumberOfPolys(), most);
  EXPECT_GT(thinned->GetNumberOfPolys(), 0);
}

TEST(Decimate, NoTargetLeavesTheMeshAsItIs) {
  const Data sphere = meshes::Sphere(20);

  const Data same = Wide(0.0).Run(sphere);

  EXPECT_EQ(meshes::TrianglesOf(same), meshes::TrianglesOf(sphere));
}

TEST(Decimate, TheFirstRoundTakesTheInitialError) {
  const Data cone = Cone();
  Decimate decimate = Wide(1.0);
  decimate.SetMaximumIterations(1);

  decimate.SetInitialError(0.0332);
  EXPECT_EQ(decimate.Run(cone)->GetNumberOfPolys(), 6);
  decimate.SetInitialError(0.0335);
  EXPECT_EQ(decimate.Run(cone)->GetNumberOfPolys(), 4);
}

TEST(Decimate, EachRoundAddsTheIncrement) {
  const Data cone = Cone();
  Decimate decimate = Wide(1.0);
  decimate.SetInitialError(0.0);
  decimate.SetErrorIncrement(0.01);  // 0, 0.01, 0.02, 0.03, 0.04

  decimate.SetMaximumIterations(4);
  EXPECT_EQ(decimate.Run(cone)->GetNumberOfPolys(), 6);
  decimate.SetMaximumIterations(5);
  EXPECT_EQ(decimate.Run(cone)->GetNumberOfPolys(), 4);
}

TEST(Decimate, RoundsThatDoNothingArePassedOver) {
  Decimate decimate = Wide(1.0);
  decimate.SetInitialError(0.0);
  decimate.SetErrorIncrement(1e-10);
  decimate.SetMaximumIterations(std::numeric_limits<int>::max());

  EXPECT_EQ(decimate.Run(Cone())->GetNumberOfPolys(), 4);
  decimate.SetErrorIncrement(1e-12);  // the bound ends at 0.002
  EXPECT_EQ(decimate.Run(Cone())->GetNumberOfPolys(), 6);
}

TEST(Decimate, NoRoundsRemoveNothing) {
  Decimate decimate = Wide(1.0);
  for (const int rounds : {0, -1, std::numeric_limits<int>::min()}) {
    decimate.SetMaximumIterations(rounds);

    EXPECT_EQ(decimate.Run(Cone())->GetNumberOfPolys(), 6);
  }
}

TEST(Decimate, LargerErrorsAndMoreRoundsThinFurther) {
  // A rounder sphere: on the stairs of voxels a vertex lies in a plane or on a sharp edge.
  const Data sphere = meshes::Smoothed(meshes::Sphere(40));
  Decimate decimate;
  decimate.SetTargetReduction(1.0);
  decimate.SetErrorIncrement(0.0);
  decimate.SetInitialError(0.0);
  const vtkIdType flat = decimate.Run(sphere)->GetNumberOfPolys();

  decimate.SetInitialError(0.005);
  const vtkIdType bent = decimate.Run(sphere)->GetNumberOfPolys();
  decimate.SetErrorIncrement(0.005);
  const vtkIdType grown = decimate.Run(sphere)->GetNumberOfPolys();
  decimate.SetMaximumIterations(1);
  const vtkIdType once = decimate.Run(sphere)->GetNumberOfPolys();

  EXPECT_LE(flat, sphere->GetNumberOfPolys());
  EXPECT_LT(bent, flat);
  EXPECT_LT(grown, bent);
  EXPECT_GT(once, grown);
}

TEST(Decimate, WhatIsLeftCannotBeThinnedFurther) {
  // A vertex that has to stay may go when a neighbour is gone: all of them are looked at again.
  for (const Data& mesh : {meshes::Sphere(40), meshes::Box(12), meshes::Plane(12),
                           meshes::Smoothed(meshes::Sphere(40)), meshes::Noise(14)}) {
    for (const double aspect : {3.0, 20.0, 1000.0}) {
      Decimate decimate;
      decimate.SetTargetReduction(1.0);
      decimate.SetAspectRatio(aspect);
      decimate.SetInitialError(0.002);
      decimate.SetErrorIncrement(0.0);
      decimate.SetMaximumIterations(1000);
      const Data thinned = decimate.Run(mesh);
      decimate.SetInitialError(0.002 * meshes::LongestSide(mesh) / meshes::LongestSide(thinned));

      const Data again = decimate.Run(thinned);

      EXPECT_EQ(again->GetNumberOfPolys(), thinned->GetNumberOfPolys()) << aspect;
    }
  }
}

TEST(Decimate, NoTriangleBeyondTheAspectRatioIsMade) {
  const Data sphere = meshes::Sphere(40);
  const auto before = meshes::TrianglesOf(sphere);
  for (const double limit : {2.0, 4.0, 20.0}) {
    Decimate decimate = Wide(0.9);
    decimate.SetAspectRatio(limit);

    const Data thinned = decimate.Run(sphere);

    double worst = 0.0;
    for (const auto& triangle : meshes::TrianglesOf(thinned)) {
      if (before.count(triangle) == 0) { worst = std::max(worst, meshes::Aspect(triangle)); }
    }
    EXPECT_LE(worst, limit * (1 + 1e-6));
    EXPECT_GT(worst, limit / 2);  // the limit is what stops it
  }
}

TEST(Decimate, ASmallerAspectRatioRemovesLess) {
  const Data sphere = meshes::Sphere(40);
  Decimate decimate = Wide(0.9);
  decimate.SetAspectRatio(20);
  const vtkIdType wide = decimate.Run(sphere)->GetNumberOfPolys();
  decimate.SetAspectRatio(2);
  const vtkIdType narrow = decimate.Run(sphere)->GetNumberOfPolys();
  decimate.SetAspectRatio(1);  // no triangle is that round
  const vtkIdType none = decimate.Run(sphere)->GetNumberOfPolys();

  EXPECT_LT(wide, narrow);
  EXPECT_LT(narrow, none);
  EXPECT_EQ(none, sphere->GetNumberOfPolys());
}

TEST(Decimate, AClosedSurfaceStaysClosedAndInOnePiece) {
  for (const Data& mesh : {meshes::Sphere(40), meshes::Box(12), meshes::Noise(14)}) {
    const int pieces = meshes::EulerNumber(mesh);
    ASSERT_TRUE(meshes::Closed(mesh));
    for (const double target : {0.5, 0.9, 1.0}) {
      const Data thinned = Wide(target).Run(mesh);

      EXPECT_LT(thinned->GetNumberOfPolys(), mesh->GetNumberOfPolys());
      EXPECT_TRUE(meshes::Closed(thinned));
      EXPECT_EQ(meshes::EulerNumber(thinned), pieces);
    }
  }
}

TEST(Decimate, EveryPointKeepsItsNormal) {
  const Data sphere = meshes::Sphere(40);
  std::map<Corner, Corner> normals;
  for (vtkIdType i = 0; i < sphere->GetNumberOfPoints(); ++i) {
    normals[meshes::PointOf(sphere, i)] = meshes::NormalOf(sphere, i);
  }

  const Data thinned = Wide(0.5).Run(sphere);

  ASSERT_NE(thinned->GetPointData()->GetNormals(), nullptr);
  ASSERT_EQ(thinned->GetPointData()->GetNormals()->GetNumberOfTuples(),
            thinned->GetNumberOfPoints());
  EXPECT_LT(thinned->GetNumberOfPoints(), sphere->GetNumberOfPoints());
  for (vtkIdType i = 0; i < thinned->GetNumberOfPoints(); ++i) {
    EXPECT_EQ(meshes::NormalOf(thinned, i), normals.at(meshes::PointOf(thinned, i)));
  }
}

TEST(Decimate, TheBorderOfAnOpenSurfaceStays) {
  const Data plane = meshes::Plane(6);

  const Data thinned = Wide(1.0).Run(plane);

  EXPECT_LT(thinned->GetNumberOfPolys(), plane->GetNumberOfPolys());
  for (int i = 0; i <= 6; ++i) {
    for (const Corner& point : {Corner{double(i), 0, 0}, Corner{double(i), 6, 0},
                                Corner{0, double(i), 0}, Corner{6, double(i), 0}}) {
      EXPECT_TRUE(meshes::HasPoint(thinned, point));
    }
  }
}

TEST(Decimate, TheCornersOfABoxStayAndItsEdgesLoseTheirPoints) {
  const Data box = meshes::Box(8);
  Decimate decimate = Wide(1.0);
  decimate.SetInitialError(1e-6);
  decimate.SetErrorIncrement(0.0);

  const Data thinned = decimate.Run(box);

  double bounds[6];
  thinned->GetBounds(bounds);
  for (int corner = 0; corner < 8; ++corner) {
    EXPECT_TRUE(meshes::HasPoint(
        thinned, {double(corner & 1) * 8, double(corner >> 1 & 1) * 8, double(corner >> 2) * 8}));
  }
  EXPECT_LT(thinned->GetNumberOfPolys(), box->GetNumberOfPolys() / 4);
}

TEST(Decimate, ATetrahedronStays) {
  const Data tetrahedron = meshes::Of({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}},
                                      {{0, 2, 1}, {0, 1, 3}, {1, 2, 3}, {0, 3, 2}});
  Decimate decimate = Wide(1.0);
  decimate.SetInitialError(100);

  const Data same = decimate.Run(tetrahedron);

  EXPECT_EQ(same->GetNumberOfPolys(), 4);
  EXPECT_TRUE(meshes::Closed(same));
}

TEST(Decimate, AMeshWithoutTrianglesStaysEmpty) {
  vtkNew<vtkPolyData> empty;

  const Data same = Wide(0.5).Run(empty);

  EXPECT_EQ(same->GetNumberOfPolys(), 0);
  EXPECT_EQ(same->GetNumberOfPoints(), 0);
}

TEST(Decimate, WhatIsNoSurfaceIsLeftAlone) {
  const std::vector<Corner> points = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {0, -1, 0}};
  // Three triangles on one edge; one triangle twice; one that uses a point twice.
  for (const std::vector<std::array<int, 3>>& triangles :
       {std::vector<std::array<int, 3>>{{0, 1, 2}, {0, 1, 3}, {0, 1, 4}},
        std::vector<std::array<int, 3>>{{0, 1, 2}, {0, 1, 2}, {0, 2, 1}},
        std::vector<std::array<int, 3>>{{0, 0, 1}, {1, 2, 2}, {3, 3, 3}}}) {
    const Data thinned = Wide(1.0).Run(meshes::Of(points, triangles));

    EXPECT_EQ(thinned->GetNumberOfPolys(), 3);
  }
}

TEST(Decimate, PointsThatAreNoNumbersAreSafe) {
  const double nan = std::nan("");
  const Data mesh = meshes::Of({{nan, nan, nan}, {1, 0, 0}, {0, 1, 0}, {0, HUGE_VAL, 1}},
                               {{0, 2, 1}, {0, 1, 3}, {1, 2, 3}, {0, 3, 2}});

  EXPECT_EQ(Wide(1.0).Run(mesh)->GetNumberOfPolys(), 4);
}

TEST(Decimate, NoParameterCanBreakIt) {
  const Data sphere = meshes::Sphere(20);
  const double kValues[] = {std::nan(""), HUGE_VAL, -HUGE_VAL, 1e308, -1e308, 0.0,
                            -0.5,         1e-308,   0.5,       1.0,   1e6};
  for (const double target : kValues) {
    for (const double other : kValues) {
      for (int parameter = 0; parameter < 3; ++parameter) {
        Decimate decimate;
        decimate.SetTargetReduction(target);
        if (parameter == 0) { decimate.SetAspectRatio(other); }
        if (parameter == 1) { decimate.SetInitialError(other); }
        if (parameter == 2) { decimate.SetErrorIncrement(other); }
        decimate.SetMaximumIterations(std::numeric_limits<int>::max());

        const Data thinned = decimate.Run(sphere);

        ASSERT_TRUE(meshes::Closed(thinned)) << target << ", " << other;
        ASSERT_LE(thinned->GetNumberOfPolys(), sphere->GetNumberOfPolys());
      }
    }
  }
}

TEST(Decimate, ANegativeBoundRemovesNothing) {
  const Data sphere = meshes::Sphere(20);
  for (const double error : {-0.5, -HUGE_VAL, std::nan("")}) {
    Decimate decimate;
    decimate.SetInitialError(error);
    decimate.SetErrorIncrement(0.0);

    EXPECT_EQ(decimate.Run(sphere)->GetNumberOfPolys(), sphere->GetNumberOfPolys());
  }
}

}  // namespace
