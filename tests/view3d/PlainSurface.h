// The plain way to draw a surface: strip by strip, vertex by vertex, one colour look-up for each.
#pragma once

#include "VoxData/VoxData.h"
#include "view3d/SurfaceSet.h"

#include <FL/gl.h>
#include <vtkCellArray.h>
#include <vtkDataArray.h>
#include <vtkPoints.h>

namespace plain {

inline int ColourAt(const VoxData& volume, int x, int y, int z) {
  return volume.Labels().Contains(x, y, z) ? volume.work[x][y][z] : 0;
}

inline int ColourOf(const VoxData& volume, const double* p) {
  const int x = static_cast<int>(p[0] + 0.5);
  const int y = static_cast<int>(p[1] + 0.5);
  const int z = static_cast<int>(p[2] + 0.5);
  int colour = ColourAt(volume, x, y, z);
  if (colour == 0) { colour = ColourAt(volume, x + 1, y, z); }
  if (colour == 0) { colour = ColourAt(volume, x - 1, y, z); }
  if (colour == 0) { colour = ColourAt(volume, x, y + 1, z); }
  if (colour == 0) { colour = ColourAt(volume, x, y - 1, z); }
  if (colour == 0) { colour = ColourAt(volume, x, y, z + 1); }
  if (colour == 0) { colour = ColourAt(volume, x, y, z - 1); }
  return colour;
}

/// Draws one surface in immediate mode into the current context.
inline void DrawSurface(const VoxData& volume, const float (&table)[256][3], vtkPoints* points,
                        vtkDataArray* normals, vtkCellArray* strips, float alpha) {
  glEnable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  vtkIdType size = 0;
  const vtkIdType* ids = nullptr;
  for (strips->InitTraversal(); strips->GetNextCell(size, ids) != 0;) {
    glBegin(GL_TRIANGLE_STRIP);
    for (vtkIdType i = 0; i < size; ++i) {
      const double* p = points->GetPoint(ids[i]);
      const float vertex[3] = {static_cast<float>(p[0]), static_cast<float>(p[1]),
                               static_cast<float>(p[2])};
      const int colour = ColourOf(volume, p);
      const float* rgb = table[colour];
      if (colour != 0) {
        glColor4f(rgb[0], rgb[1], rgb[2], alpha);
      } else {
        glColor4f(0.0F, 0.0F, 0.0F, alpha);
      }
      const double* n = normals->GetTuple3(ids[i]);
      const float normal[3] = {static_cast<float>(n[0]), static_cast<float>(n[1]),
                               static_cast<float>(n[2])};
      glNormal3fv(normal);
      glVertex3fv(vertex);
    }
    glEnd();
  }
  glDisable(GL_BLEND);
}

/// Draws the surfaces that `set` holds, in their order.
inline void DrawSurfaces(const SurfaceSet& set, float alpha1, float alpha2, float alpha3) {
  const auto draw = [&set](VoxData* volume, vtkPoints* points, vtkNormals* normals,
                           vtkCellArray* strips, float alpha) {
    if (strips == nullptr || points == nullptr || normals == nullptr) { return; }
    DrawSurface(*volume, set.colorTable, points, normals, strips, alpha);
  };
  draw(set.volume1, set.points1, set.normals1, set.strips1, alpha1);
  draw(set.volume2, set.points2, set.normals2, set.strips2, alpha2);
  draw(set.volume3, set.points3, set.normals3, set.strips3, alpha3);
}

}  // namespace plain
