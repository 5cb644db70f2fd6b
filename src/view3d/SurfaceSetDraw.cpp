// SurfaceSet: drawing, with colours looked up in the work volumes.
#include "VoxData/VoxData.h"
#include "view3d/SurfaceColours.h"
#include "view3d/SurfacePipelines.h"

#include <FL/gl.h>
#include <vtkCellArray.h>
#include <vtkDataArray.h>
#include <vtkPointData.h>
#include <vtkPoints.h>

#include <algorithm>

namespace {

/// The colours of all points. A measure may repaint its volume at any time, so they hold for one
/// redraw only.
void LookUpColours(const LabelVolume& work, const float (&table)[256][3], float alpha,
                   Surface& surface) {
  constexpr float kBlack[3] = {0.0F, 0.0F, 0.0F};
  const std::size_t points = surface.voxels.size() / 3;
  surface.colours.resize(4 * points);
  for (std::size_t i = 0; i < points; ++i) {
    const std::uint8_t value = surface::ColourNear(work, &surface.voxels[3 * i]);
    const float* rgb = value != 0 ? table[value] : kBlack;
    float* rgba = &surface.colours[4 * i];
    std::copy(rgb, rgb + 3, rgba);
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

void CopyPoints(vtkPoints& points, vtkDataArray& normals, Surface& surface) {
  const auto count = static_cast<std::size_t>(points.GetNumberOfPoints());
  surface.points.resize(3 * count);
  surface.normals.resize(3 * count);
  surface.voxels.resize(3 * count);
  for (std::size_t i = 0; i < count; ++i) {
    double p[3];
    double n[3];
    points.GetPoint(static_cast<vtkIdType>(i), p);
    normals.GetTuple(static_cast<vtkIdType>(i), n);
    for (std::size_t axis = 0; axis < 3; ++axis) {
      surface.points[3 * i + axis] = static_cast<float>(p[axis]);
      surface.normals[3 * i + axis] = static_cast<float>(n[axis]);
      surface.voxels[3 * i + axis] = surface::VoxelAt(p[axis]);
    }
  }
}

/// The triangles of the strips. Every other one of a strip turns the other way round.
void CopyTriangles(vtkCellArray& strips, std::vector<unsigned>& corners) {
  const vtkIdType ids = strips.GetNumberOfConnectivityIds() - 2 * strips.GetNumberOfCells();
  corners.reserve(3 * static_cast<std::size_t>(std::max<vtkIdType>(ids, 0)));
  vtkIdType size = 0;
  const vtkIdType* strip = nullptr;
  for (strips.InitTraversal(); strips.GetNextCell(size, strip) != 0;) {
    for (vtkIdType k = 2; k < size; ++k) {
      const vtkIdType odd = k % 2;
      for (const vtkIdType id : {strip[k - 2 + odd], strip[k - 1 - odd], strip[k]}) {
        corners.push_back(static_cast<unsigned>(id));
      }
    }
  }
}

}  // namespace

Surface MakeSurface(vtkPolyData* data) {
  Surface surface;
  surface.data = data;
  vtkPoints* points = data->GetPoints();
  vtkDataArray* normals = data->GetPointData()->GetNormals();
  if (points == nullptr || normals == nullptr) { return surface; }  // nothing to draw
  CopyPoints(*points, *normals, surface);
  CopyTriangles(*data->GetStrips(), surface.corners);
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
      const VoxData& volume = *volumes[s];
      LookUpColours({volume.work, volume.dimX, volume.dimY, volume.dimZ}, colorTable, alphas[s],
                    surface);
      glEnable(GL_BLEND);
      glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
      DrawTriangles(surface);
      glDisable(GL_BLEND);
    }
    if (s > 0) { drawn = 1; }
  }
}
