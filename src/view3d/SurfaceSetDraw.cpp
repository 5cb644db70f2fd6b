// SurfaceSet: drawing, with colours looked up in the work volumes.
#include "VoxData/VoxData.h"
#include "view3d/SurfacePipelines.h"

#include <FL/gl.h>
#include <vtkCellArray.h>
#include <vtkDataArray.h>
#include <vtkPointData.h>
#include <vtkPoints.h>

#include <limits>

namespace {

/// `value` rounded down from its half, or a voxel outside every volume where it is no number.
int VoxelAt(double value) {
  const double rounded = value + 0.5;
  if (!(rounded > -1e9 && rounded < 1e9)) { return std::numeric_limits<int>::min() / 2; }
  return static_cast<int>(rounded);
}

std::uint8_t ColourAt(const VoxData& volume, int x, int y, int z) {
  const bool inside =
      x >= 0 && x < volume.dimX && y >= 0 && y < volume.dimY && z >= 0 && z < volume.dimZ;
  return inside ? volume.work[x][y][z] : std::uint8_t{0};
}

/// Colour value at a voxel, or at its first neighbour that has one: a point of the surface lies
/// between two voxels and may round to the one outside.
std::uint8_t ColourNear(const VoxData& volume, const int* v) {
  constexpr int kLook[7][3] = {{0, 0, 0},  {1, 0, 0}, {-1, 0, 0}, {0, 1, 0},
                               {0, -1, 0}, {0, 0, 1}, {0, 0, -1}};
  for (const auto& step : kLook) {
    const std::uint8_t colour = ColourAt(volume, v[0] + step[0], v[1] + step[1], v[2] + step[2]);
    if (colour != 0) { return colour; }
  }
  return 0;
}

void LookUpColours(const VoxData& volume, const float (&table)[256][3], float alpha,
                   Surface& surface) {
  const std::size_t points = surface.points.size() / 3;
  surface.colours.resize(4 * points);
  for (std::size_t i = 0; i < points; ++i) {
    const std::uint8_t value = ColourNear(volume, &surface.voxels[3 * i]);
    float* rgba = &surface.colours[4 * i];
    for (int channel = 0; channel < 3; ++channel) {
      rgba[channel] = value != 0 ? table[value][channel] : 0.0F;
    }
    rgba[3] = alpha;
  }
}

void DrawTriangles(const Surface& surface) {
  glEnableClientState(GL_VERTEX_ARRAY);
  glEnableClientState(GL_NORMAL_ARRAY);
  glEnableClientState(GL_COLOR_ARRAY);
  glVertexPointer(3, GL_FLOAT, 0, surface.points.data());
  glNormalPointer(GL_FLOAT, 0, surface.normals.data());
  glColorPointer(4, GL_FLOAT, 0, surface.colours.data());
  glDrawElements(GL_TRIANGLES, static_cast<GLsizei>(surface.corners.size()), GL_UNSIGNED_INT,
                 surface.corners.data());
  glDisableClientState(GL_COLOR_ARRAY);
  glDisableClientState(GL_NORMAL_ARRAY);
  glDisableClientState(GL_VERTEX_ARRAY);
}

}  // namespace

Surface MakeSurface(vtkPolyData* data) {
  Surface surface;
  surface.data = data;
  vtkPoints* points = data->GetPoints();
  vtkDataArray* normals = data->GetPointData()->GetNormals();
  if (points == nullptr || normals == nullptr) { return surface; }
  const vtkIdType count = points->GetNumberOfPoints();
  for (vtkIdType i = 0; i < count; ++i) {
    double p[3];
    double n[3];
    points->GetPoint(i, p);
    normals->GetTuple(i, n);
    for (int axis = 0; axis < 3; ++axis) {
      surface.points.push_back(static_cast<float>(p[axis]));
      surface.normals.push_back(static_cast<float>(n[axis]));
      surface.voxels.push_back(VoxelAt(p[axis]));
    }
  }
  vtkIdType size = 0;
  const vtkIdType* ids = nullptr;
  vtkCellArray* strips = data->GetStrips();
  for (strips->InitTraversal(); strips->GetNextCell(size, ids) != 0;) {
    for (vtkIdType k = 2; k < size; ++k) {
      // Every other triangle of a strip turns the other way round.
      const vtkIdType first = k % 2 == 0 ? ids[k - 2] : ids[k - 1];
      const vtkIdType second = k % 2 == 0 ? ids[k - 1] : ids[k - 2];
      for (const vtkIdType id : {first, second, ids[k]}) {
        surface.corners.push_back(static_cast<unsigned>(id));
      }
    }
  }
  return surface;
}

void SurfaceSet::DrawSurfaces(float alpha1, float alpha2, float alpha3) {
  vtkCellArray* const strips[3] = {strips1, strips2, strips3};
  VoxData* const volumes[3] = {volume1, volume2, volume3};
  const float alphas[3] = {alpha1, alpha2, alpha3};
  for (int s = 0; s < 3; ++s) {
    if (strips[s] == nullptr) { continue; }
    if (s == 0) { listState = 1; }
    Surface& surface = pipelines->slots[s];
    if (!surface.corners.empty() && volumes[s] != nullptr && volumes[s]->work != nullptr) {
      glEnable(GL_BLEND);
      glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
      LookUpColours(*volumes[s], colorTable, alphas[s], surface);
      DrawTriangles(surface);
      glDisable(GL_BLEND);
    }
    if (s > 0) { drawn = 1; }
  }
}
