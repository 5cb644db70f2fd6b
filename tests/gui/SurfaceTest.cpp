// Surfaces: what an extraction stores and says, and the pixels that are drawn of it.
#include "tests/gui/View3DScene.h"
#include "view3d/Decimate.h"
#include "view3d/SurfaceSet.h"

#include <FL/Fl_Roller.H>
#include <FL/Fl_Value_Input.H>
#include <vtkCellArray.h>
#include <vtkDataArray.h>
#include <vtkMarchingCubes.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>
#include <vtkSmoothPolyDataFilter.h>
#include <vtkStructuredPoints.h>
#include <vtkWeakPointer.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <set>
#include <string>
#include <utility>

namespace {

constexpr int kSide = 24;
constexpr std::array<int, 3> kDims = {kSide, kSide, kSide};

class SurfaceTest : public View3DScene {
protected:
  void SetUp() override {
    View3DScene::SetUp();
    AddImage(kDims);
    View().AllocateVolumes(kSide, kSide, kSide);
    View().SetupView();
    Crosshairs(false);
    TakeErrors();
  }

  VoxData& Volume(int i) { return *Ui().workVolumes[i]; }
  /// A ball in the middle in each work volume: red, green, blue.
  void PaintBalls() {
    for (int i = 0; i < 3; ++i) { Paint(Volume(i), kDims, Ball(11, 11, 11, 6 + i, 64 + 64 * i)); }
  }
  void Extract(int volume, int slot, bool smoothing = false, bool decimation = false) {
    Surfaces().ExtractSurface(&Volume(volume), slot, smoothing, decimation, 0.5F, 20.0F, 0.0005F,
                              0.001F, 30, 20, 0.1F, 0.0F);
  }
  /// The surface of a work volume as marching cubes alone gives it.
  vtkSmartPointer<vtkPolyData> Cubes(int volume) {
    vtkNew<vtkMarchingCubes> cubes;
    cubes->SetInputData(Volume(volume).GetImage());
    cubes->ComputeNormalsOn();
    cubes->SetValue(0, 128.0);
    cubes->Update();
    return cubes->GetOutput();
  }
  static std::set<std::array<double, 3>> Points(vtkPoints* points) {
    std::set<std::array<double, 3>> all;
    for (vtkIdType i = 0; i < points->GetNumberOfPoints(); ++i) {
      std::array<double, 3> p{};
      points->GetPoint(i, p.data());
      all.insert(p);
    }
    return all;
  }
  static vtkIdType Triangles(vtkCellArray* strips) {
    return strips->GetNumberOfConnectivityIds() - 2 * strips->GetNumberOfCells();
  }
  /// Edges of the triangles of the strips that only one triangle uses.
  static int BorderEdges(vtkCellArray* strips) {
    std::map<std::pair<vtkIdType, vtkIdType>, int> uses;
    vtkIdType size = 0;
    const vtkIdType* ids = nullptr;
    for (strips->InitTraversal(); strips->GetNextCell(size, ids) != 0;) {
      for (vtkIdType k = 2; k < size; ++k) {
        ++uses[std::minmax(ids[k], ids[k - 1])];
        ++uses[std::minmax(ids[k - 1], ids[k - 2])];
        ++uses[std::minmax(ids[k - 2], ids[k])];
      }
    }
    return static_cast<int>(
        std::count_if(uses.begin(), uses.end(), [](const auto& use) { return use.second == 1; }));
  }
};

TEST_F(SurfaceTest, ANewSetHoldsNothing) {
  const SurfaceSet set;

  EXPECT_EQ(set.pointCount, 0);
  EXPECT_EQ(set.points1, nullptr);
  EXPECT_EQ(set.normals2, nullptr);
  EXPECT_EQ(set.strips3, nullptr);
  EXPECT_EQ(set.output, nullptr);
  EXPECT_EQ(set.listState, -1);
  EXPECT_EQ(set.drawn, 0);
}

TEST_F(SurfaceTest, AnExtractionFillsItsSlotAlone) {
  PaintBalls();

  Extract(1, 2);

  EXPECT_EQ(Surfaces().strips1, nullptr);
  EXPECT_EQ(Surfaces().strips3, nullptr);
  EXPECT_EQ(Surfaces().pointCount, 0);
  ASSERT_NE(Surfaces().strips2, nullptr);
  EXPECT_EQ(Surfaces().volume2, &Volume(1));
  EXPECT_EQ(Surfaces().normals2->GetNumberOfTuples(), Surfaces().points2->GetNumberOfPoints());
  EXPECT_EQ(Surfaces().output->GetStrips(), Surfaces().strips2);
  EXPECT_EQ(Surfaces().inputImage, Volume(1).GetImage());
}

TEST_F(SurfaceTest, ThePointsOfSlotOneAreCounted) {
  PaintBalls();

  Extract(0, 1);

  EXPECT_GT(Surfaces().pointCount, 100);
  EXPECT_EQ(Surfaces().pointCount, Surfaces().points1->GetNumberOfPoints());
}

TEST_F(SurfaceTest, WithoutSmoothingAndDecimationTheStripsHoldTheMarchingCubes) {
  PaintBalls();
  const auto cubes = Cubes(0);

  Extract(0, 1);

  EXPECT_EQ(Triangles(Surfaces().strips1), cubes->GetNumberOfPolys());
  EXPECT_EQ(Points(Surfaces().points1), Points(cubes->GetPoints()));
}

TEST_F(SurfaceTest, SmoothingMovesThePointsAndKeepsTheTriangles) {
  PaintBalls();
  const auto cubes = Cubes(0);

  Extract(0, 1, true);

  EXPECT_EQ(Triangles(Surfaces().strips1), cubes->GetNumberOfPolys());
  EXPECT_NE(Points(Surfaces().points1), Points(cubes->GetPoints()));
  EXPECT_NE(Surfaces().normals1, nullptr);
}

TEST_F(SurfaceTest, DecimationHalvesTheTrianglesBeforeTheSmoothing) {
  PaintBalls();
  const vtkIdType all = Cubes(0)->GetNumberOfPolys();

  for (const bool smoothing : {false, true}) {
    Extract(0, 1, smoothing, true);

    EXPECT_NEAR(static_cast<double>(Triangles(Surfaces().strips1)), all / 2.0, 2.0);
    EXPECT_EQ(Surfaces().normals1->GetNumberOfTuples(), Surfaces().points1->GetNumberOfPoints());
  }
}

TEST_F(SurfaceTest, TheFiltersRunOneAfterTheOtherWithTheirParameters) {
  PaintBalls();
  // The corners of voxels lie in their planes or far off: only an error of 0 makes a difference.
  const std::array<float, 2> errors[] = {{0.01F, 0.0F}, {0.0F, 0.01F}, {0.0F, 0.0F}};
  for (const int rounds : {1, 2}) {
    for (const auto& [initial, increment] : errors) {
      Decimate decimator;
      decimator.SetTargetReduction(0.9F);
      decimator.SetAspectRatio(9.0F);
      decimator.SetInitialError(initial);
      decimator.SetErrorIncrement(increment);
      decimator.SetMaximumIterations(rounds);
      vtkNew<vtkSmoothPolyDataFilter> smoother;
      smoother->SetInputData(decimator.Run(Cubes(0)));
      smoother->SetNumberOfIterations(7);
      smoother->SetRelaxationFactor(0.23F);
      smoother->FeatureEdgeSmoothingOff();
      smoother->Update();

      Surfaces().ExtractSurface(&Volume(0), 1, true, true, 0.9F, 9.0F, initial, increment, rounds,
                                7, 0.23F, 45.0F);

      EXPECT_EQ(Triangles(Surfaces().strips1), smoother->GetOutput()->GetNumberOfPolys());
      EXPECT_EQ(Points(Surfaces().points1), Points(smoother->GetOutput()->GetPoints()));
    }
  }
}

TEST_F(SurfaceTest, ARedrawRunsNoFilter) {
  PaintBalls();
  Extract(0, 1, true, true);
  View().displayedSurfaces = 1;
  vtkPolyData* const surface = Surfaces().output;
  TakeErrors();

  EXPECT_GT(Painted(PixelsOf(&View())), 0);

  EXPECT_EQ(Surfaces().output, surface);
  EXPECT_EQ(TakeErrors(), "");
}

TEST_F(SurfaceTest, TheNumberOfTrianglesIsSaidAsItWasBeforeDecimation) {
  PaintBalls();
  const std::string count = std::to_string(Cubes(0)->GetNumberOfCells());
  TakeErrors();

  Extract(0, 1);
  EXPECT_EQ(TakeErrors(), "marching cubes...\nNum Tris = " + count + "\n");
  Extract(0, 1, true, true);
  EXPECT_EQ(TakeErrors(), "marching cubes...\ndecimation running...\nNum Tris = " + count + "\n");
}

TEST_F(SurfaceTest, OnPurposeTheFeatureAngleHasNoEffect) {
  PaintBalls();
  std::set<std::array<double, 3>> points[2];
  for (const int i : {0, 1}) {
    Surfaces().ExtractSurface(&Volume(0), 1, true, false, 0.5F, 20, 0, 0, 30, 20, 0.1F, 90.0F * i);
    points[i] = Points(Surfaces().points1);
  }

  EXPECT_EQ(points[0], points[1]);
}

TEST_F(SurfaceTest, ASurfaceIsClosedInsideTheVolumeAndOpenAtItsEdge) {
  Paint(Volume(0), kDims, Ball(11, 11, 11, 6, 64));
  Extract(0, 1);
  EXPECT_EQ(BorderEdges(Surfaces().strips1), 0);

  Paint(Volume(0), kDims, Ball(0, 11, 11, 6, 64));
  Extract(0, 1);

  EXPECT_GT(BorderEdges(Surfaces().strips1), 0);
}

TEST_F(SurfaceTest, AFullVolumeHasNoSurface) {
  Paint(Volume(0), kDims, [](int, int, int) { return 64; });

  Extract(0, 1, true, true);

  EXPECT_EQ(Surfaces().strips1->GetNumberOfCells(), 0);
  EXPECT_EQ(Painted(PixelsOf(&View())), 0);
}

TEST_F(SurfaceTest, AnEmptyVolumeGivesAnEmptySurfaceThatDrawsNothing) {
  Paint(Volume(0), kDims, [](int, int, int) { return 0; });
  View().displayedSurfaces = 1;
  for (const bool smoothing : {false, true}) {
    for (const bool decimation : {false, true}) {
      TakeErrors();
      Extract(0, 1, smoothing, decimation);

      EXPECT_NE(TakeErrors().find("Num Tris = 0\n"), std::string::npos);
      ASSERT_NE(Surfaces().strips1, nullptr);
      EXPECT_EQ(Surfaces().strips1->GetNumberOfCells(), 0);
      EXPECT_EQ(Painted(PixelsOf(&View())), 0);
    }
  }
  EXPECT_EQ(TakeErrors(), "");  // nothing of the filters' own
}

TEST_F(SurfaceTest, ASecondSurfaceOneLeavesSurfaceTwo) {
  PaintBalls();
  Extract(0, 1);
  Extract(1, 2);
  vtkCellArray* const strips = Surfaces().strips2;
  vtkPoints* const points = Surfaces().points2;

  Extract(2, 1);

  EXPECT_EQ(Surfaces().strips2, strips);
  EXPECT_EQ(Surfaces().points2, points);
  EXPECT_EQ(Surfaces().volume1, &Volume(2));
  EXPECT_GT(Triangles(strips), 100);
}

TEST_F(SurfaceTest, AnotherSlotNumberRunsTheFiltersAndStoresNothing) {
  PaintBalls();
  for (const int slot : {0, 4, -1}) {
    TakeErrors();
    Extract(0, slot);

    EXPECT_NE(TakeErrors().find("Num Tris = "), std::string::npos);
    EXPECT_NE(Surfaces().output, nullptr);
    EXPECT_EQ(Surfaces().strips1, nullptr);
    EXPECT_EQ(Surfaces().strips2, nullptr);
    EXPECT_EQ(Surfaces().strips3, nullptr);
    EXPECT_EQ(Surfaces().volume1, nullptr);
  }
}

TEST_F(SurfaceTest, ClearingEmptiesTheSlotsAndKeepsTheVolumes) {
  PaintBalls();
  for (int i = 0; i < 3; ++i) { Extract(i, i + 1); }
  View().displayedSurfaces = 3;
  PixelsOf(&View());
  EXPECT_EQ(Surfaces().listState, 1);

  Surfaces().ClearSurfaces();

  for (const vtkCellArray* strips : {Surfaces().strips1, Surfaces().strips2, Surfaces().strips3}) {
    EXPECT_EQ(strips, nullptr);
  }
  EXPECT_EQ(Surfaces().points2, nullptr);
  EXPECT_EQ(Surfaces().normals3, nullptr);
  EXPECT_EQ(Surfaces().pointCount, 0);
  EXPECT_EQ(Surfaces().output, nullptr);
  EXPECT_EQ(Surfaces().listState, -1);
  EXPECT_EQ(Surfaces().volume2, &Volume(1));
  EXPECT_EQ(Painted(PixelsOf(&View())), 0);
}

TEST_F(SurfaceTest, TheStatesTellWhatWasDrawn) {
  PaintBalls();
  View().displayedSurfaces = 3;
  Extract(0, 1);
  EXPECT_EQ(Surfaces().listState, -1);
  PixelsOf(&View());
  EXPECT_EQ(Surfaces().listState, 1);
  EXPECT_EQ(Surfaces().drawn, 0);

  Extract(1, 2);
  EXPECT_EQ(Surfaces().listState, -1);
  PixelsOf(&View());

  EXPECT_EQ(Surfaces().drawn, 1);
}

TEST_F(SurfaceTest, TheListStateTellsOfSurfaceOneAlone) {
  PaintBalls();
  Extract(1, 2);
  View().displayedSurfaces = 3;

  EXPECT_GT(Painted(PixelsOf(&View())), 0);

  EXPECT_EQ(Surfaces().listState, -1);
  EXPECT_EQ(Surfaces().drawn, 1);
}

TEST_F(SurfaceTest, WhatAReplacedSurfaceHeldIsReleased) {
  PaintBalls();
  Extract(0, 1);
  const vtkWeakPointer<vtkPolyData> first = Surfaces().output;
  Extract(1, 1);
  const vtkWeakPointer<vtkPolyData> second = Surfaces().output;
  EXPECT_EQ(first, nullptr);
  EXPECT_NE(second, nullptr);

  Surfaces().ClearSurfaces();

  EXPECT_EQ(second, nullptr);
}

TEST_F(SurfaceTest, WithoutAVolumeNothingIsExtracted) {
  VoxData empty;

  Surfaces().ExtractSurface(nullptr, 1, true, true, 0.5F, 20, 0, 0, 30, 20, 0.1F, 0);
  EXPECT_EQ(Surfaces().strips1, nullptr);
  Surfaces().ExtractSurface(&empty, 1, true, true, 0.5F, 20, 0, 0, 30, 20, 0.1F, 0);

  EXPECT_EQ(Surfaces().strips1, nullptr);
  EXPECT_EQ(Surfaces().colorTable[64][0], 1.0F);
}

TEST_F(SurfaceTest, NoParameterBreaksAnExtraction) {
  Paint(Volume(0), {8, 8, 8}, Ball(4, 4, 4, 2.5, 64));
  View().displayedSurfaces = 1;
  const float kHuge = std::numeric_limits<float>::max();
  for (const float value : {std::nanf(""), HUGE_VALF, -HUGE_VALF, kHuge, -kHuge, 0.0F, -1.0F}) {
    for (const int count : {std::numeric_limits<int>::max(), -1, 0}) {
      Surfaces().ExtractSurface(&Volume(0), 1, true, true, value, value, value, value, count,
                                count > 0 ? 50 : count, value, value);
      PixelsOf(&View());
    }
  }

  EXPECT_EQ(TakeErrors().find("GL-Error"), std::string::npos);
}

TEST_F(SurfaceTest, TooManySmoothingIterationsAreCutAndSaid) {
  Paint(Volume(0), {5, 5, 5}, Ball(2, 2, 2, 1, 64));
  TakeErrors();

  Surfaces().ExtractSurface(&Volume(0), 1, true, false, 0.5F, 20, 0, 0, 30, 2000000000, 0.1F, 0);

  EXPECT_NE(TakeErrors().find("Smoothing stops after 10000 iterations.\n"), std::string::npos);
}

TEST_F(SurfaceTest, RedGreenAndBlueStandWhereTheTablesSay) {
  const int colours[3] = {64, 128, 192};
  for (int i = 0; i < 3; ++i) {
    View().displayedSurfaces = 1;
    Paint(Volume(0), kDims, Ball(11.5, 11.5, 11.5, 8, colours[i]));
    Extract(0, 1, true);

    const Pixel p = Middle();

    const int channels[3] = {p.red, p.green, p.blue};
    EXPECT_GT(channels[i], 150) << i;
    // The light's white reflection is the same on all channels.
    EXPECT_LT(channels[(i + 1) % 3], 100) << i;
    EXPECT_EQ(channels[(i + 1) % 3], channels[(i + 2) % 3]) << i;
  }
}

TEST_F(SurfaceTest, OnlyTheLitBallIsPainted) {
  Paint(Volume(0), kDims, Ball(11.5, 11.5, 11.5, 8, 128));
  Extract(0, 1);
  View().displayedSurfaces = 1;

  const int painted = Painted(PixelsOf(&View()));

  // A disc of radius 8 in a view of 4 * (24 * 0.7 + 1) units a side.
  const double unitsWide = 4 * (24 * 0.7 + 1);
  const double disc = M_PI * 8 * 8 * (View().w() / unitsWide) * (View().h() / unitsWide);
  EXPECT_NEAR(painted, disc, 0.1 * disc);
  const Pixel corner = PixelOf(&View(), 2, 2);
  EXPECT_EQ(corner.red + corner.green + corner.blue, 0);
}

TEST_F(SurfaceTest, TheArraysGiveThePixelsOfTheStrips) {
  PaintBalls();
  Paint(Volume(0), kDims, [](int x, int y, int z) {
    return Ball(12, 11, 10, 8, 1)(x, y, z) != 0 ? 20 + 9 * x : 0;  // all colours
  });
  View().displayedSurfaces = 3;
  for (const bool smoothing : {false, true}) {
    for (const bool decimation : {false, true}) {
      for (int i = 0; i < 3; ++i) { Extract(i, i + 1, smoothing, decimation); }
      for (const double opacity : {100.0, 37.0, 0.0}) {
        Slide(Ui().surface2OpacityRoller, opacity);
        Slide(Ui().surface3OpacityRoller, 100 - opacity);
        Drag(&View(), 100, 100, 131, 87);
        const auto own = PixelsOf(&View());

        EXPECT_GT(Painted(own), 500);
        EXPECT_EQ(Differences(own, PlainPixels()), 0) << smoothing << decimation << opacity;
      }
    }
  }
}

TEST_F(SurfaceTest, SurfacesTwoAndThreeLetShineThroughWhatIsBehindThem) {
  Paint(Volume(0), kDims, Ball(11.5, 11.5, 11.5, 4, 64));
  Paint(Volume(1), kDims, Ball(11.5, 11.5, 11.5, 8, 128));
  Extract(0, 1);
  Extract(1, 2);
  View().displayedSurfaces = 2;

  const Pixel solid = Middle();
  Slide(Ui().surface2OpacityRoller, 50);
  const Pixel half = Middle();
  Slide(Ui().surface2OpacityRoller, 0);
  Surfaces().drawn = 0;
  const Pixel none = Middle();

  EXPECT_LT(solid.red, 100);
  EXPECT_GT(solid.green, 150);
  EXPECT_NEAR(half.red, (solid.red + none.red) / 2, 12);
  EXPECT_NEAR(half.green, (solid.green + none.green) / 2, 12);
  EXPECT_GT(none.red, 150);
  EXPECT_LT(none.green, 100);
  EXPECT_EQ(Surfaces().drawn, 1);  // also the one that is not seen
}

TEST_F(SurfaceTest, SurfaceOneIsAlwaysOpaque) {
  Paint(Volume(0), kDims, Ball(11.5, 11.5, 11.5, 8, 64));
  Extract(0, 1);
  View().displayedSurfaces = 1;
  const Pixel before = Middle();

  Slide(Ui().surface2OpacityRoller, 0);
  Slide(Ui().surface3OpacityRoller, 0);

  EXPECT_EQ(Middle().red, before.red);
}

TEST_F(SurfaceTest, NothingStaysBlendedBehindTheSurfaces) {
  PaintBalls();
  for (int i = 0; i < 3; ++i) {
    Extract(i, i + 1);
    View().displayedSurfaces = i + 1;

    EXPECT_GT(Painted(PixelsOf(&View())), 0);
    EXPECT_FALSE(glIsEnabled(GL_BLEND)) << i;
  }
}

TEST_F(SurfaceTest, AVoxelWithoutAColourNearbyIsBlack) {
  Paint(Volume(0), kDims, Ball(11.5, 11.5, 11.5, 8, 64));
  Extract(0, 1);
  View().displayedSurfaces = 1;
  for (int x = 0; x < kSide; ++x) {
    for (int y = 0; y < kSide; ++y) {
      for (int z = 0; z < kSide; ++z) { Volume(0).work[x][y][z] = 0; }
    }
  }

  const Pixel p = Middle();

  EXPECT_EQ(p.red, p.green);
  EXPECT_EQ(p.green, p.blue);
}

TEST_F(SurfaceTest, AVolumeThatShrankIsNotReadOutside) {
  PaintBalls();
  Extract(0, 1);
  View().displayedSurfaces = 1;

  Volume(0).SetupWork(3, 2, 1, 1, 0, 0, 0, 0, 0);

  EXPECT_GT(Painted(PixelsOf(&View())), 0);  // black but for the light's reflection
}

}  // namespace
