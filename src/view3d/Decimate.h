// Thins out a triangle mesh by removing vertices, within an error bound that grows by rounds.
#pragma once

#include "VoxData/VtkNames.h"

#include <vtkSmartPointer.h>

/// Source: vertex removal after W. J. Schroeder, J. A. Zarge, W. E. Lorensen, Decimation of
///         triangle meshes, SIGGRAPH 1992.
class Decimate {
public:
  /// Share of the triangles to remove, 0 to 1.
  void SetTargetReduction(double share) { targetReduction = share; }
  /// Triangles longer than this many times their height are not made.
  void SetAspectRatio(double ratio) { aspectRatio = ratio; }
  /// Largest distance of a removed vertex from what replaces it, in the first round.
  /// Units: the longest side of the mesh's bounds.
  void SetInitialError(double error) { initialError = error; }
  /// What that distance grows by from round to round.
  void SetErrorIncrement(double increment) { errorIncrement = increment; }
  /// Most rounds over all vertices; fewer where the target is met or nothing more can go.
  void SetMaximumIterations(int rounds) { maximumIterations = rounds; }

  /// The thinned mesh; point data of the points that stay, normals among them, are kept. Borders
  /// and sharp corners stay, and a closed surface stays closed.
  /// Any parameter is safe: what makes no sense removes nothing.
  vtkSmartPointer<vtkPolyData> Run(vtkPolyData* mesh) const;

private:
  double targetReduction = 0.5;
  double aspectRatio = 20.0;
  double initialError = 0.0005;
  double errorIncrement = 0.001;
  int maximumIterations = 30;
};
