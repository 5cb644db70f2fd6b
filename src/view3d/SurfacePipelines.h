// What a SurfaceSet keeps of its surfaces: the data that its pointers point into, and the arrays
// that are sent to OpenGL.
#pragma once

#include "view3d/SurfaceSet.h"

#include <vtkPolyData.h>
#include <vtkSmartPointer.h>

#include <vector>

/// One surface, ready to draw.
struct Surface {
  vtkSmartPointer<vtkPolyData> data;  ///< keeps points, normals and strips alive
  std::vector<unsigned> corners;      ///< three point numbers for each triangle of the strips
  std::vector<float> points;          ///< x, y, z of each point, voxel units
  std::vector<float> normals;         ///< the same shape
  std::vector<int> voxels;            ///< x, y, z of the voxel that each point rounds to
  std::vector<float> colours;         ///< red, green, blue, alpha, looked up at each redraw
};

struct SurfaceSet::Pipelines {
  Surface slots[3];
  vtkSmartPointer<vtkPolyData> last;
};

Surface MakeSurface(vtkPolyData* data);
