// Small meshes for the tests, and what is asked of a mesh.
#pragma once

#include <vtkCellArray.h>
#include <vtkDataArray.h>
#include <vtkFloatArray.h>
#include <vtkMarchingCubes.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>
#include <vtkSmartPointer.h>
#include <vtkSmoothPolyDataFilter.h>
#include <vtkStructuredPoints.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <map>
#include <set>
#include <utility>
#include <vector>

namespace meshes {

using Data = vtkSmartPointer<vtkPolyData>;
using Corner = std::array<double, 3>;
using Triangle = std::array<Corner, 3>;  ///< the smallest corner first, in the triangle's sense

inline Data Of(const std::vector<Corner>& corners,
               const std::vector<std::array<int, 3>>& triangles) {
  vtkNew<vtkPoints> points;
  for (const Corner& p : corners) { points->InsertNextPoint(p[0], p[1], p[2]); }
  vtkNew<vtkCellArray> cells;
  for (const auto& triangle : triangles) {
    const vtkIdType ids[3] = {triangle[0], triangle[1], triangle[2]};
    cells->InsertNextCell(3, ids);
  }
  auto data = Data::New();
  data->SetPoints(points);
  data->SetPolys(cells);
  return data;
}

/// The surface of the voxels of a cube of `side` for which `inside` holds, with normals.
inline Data SurfaceOf(int side, const std::function<bool(int, int, int)>& inside) {
  vtkNew<vtkStructuredPoints> image;
  image->SetDimensions(side, side, side);
  vtkNew<vtkFloatArray> scalars;
  for (int z = 0; z < side; ++z) {
    for (int y = 0; y < side; ++y) {
      for (int x = 0; x < side; ++x) { scalars->InsertNextValue(inside(x, y, z) ? 255 : 0); }
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

inline Data Sphere(int side) {
  return SurfaceOf(side, [side](int x, int y, int z) {
    const double c = side / 2.0;
    return (x - c) * (x - c) + (y - c) * (y - c) + (z - c) * (z - c) < 0.16 * side * side;
  });
}

inline Data Smoothed(vtkPolyData* data) {
  vtkNew<vtkSmoothPolyDataFilter> smoother;
  smoother->SetInputData(data);
  smoother->SetNumberOfIterations(100);
  smoother->SetRelaxationFactor(0.1);
  smoother->Update();
  return smoother->GetOutput();
}

/// Scattered voxels inside a border: many small pieces, some that touch.
inline Data Noise(int side) {
  unsigned random = 12345;
  return SurfaceOf(side, [side, random](int x, int y, int z) mutable {
    random = random * 1664525U + 1013904223U;
    const auto border = [side](int i) {
      return i == 0 || i == side - 1;
    };
    return !border(x) && !border(y) && !border(z) && random >> 30U == 0;
  });
}

/// A square of `side` by `side` units in z = 0, two triangles a unit.
inline Data Plane(int side) {
  std::vector<Corner> points;
  std::vector<std::array<int, 3>> triangles;
  for (int y = 0; y <= side; ++y) {
    for (int x = 0; x <= side; ++x) {
      points.push_back({double(x), double(y), 0});
      if (x == side || y == side) { continue; }
      const int at = y * (side + 1) + x;
      triangles.push_back({at, at + 1, at + side + 2});
      triangles.push_back({at, at + side + 2, at + side + 1});
    }
  }
  return Of(points, triangles);
}

/// A cube of `side` units with sharp edges, two triangles a unit of its faces.
inline Data Box(int side) {
  std::map<Corner, int> ids;
  std::vector<Corner> points;
  std::vector<std::array<int, 3>> triangles;
  const auto id = [&](const Corner& p) {
    const auto found = ids.emplace(p, static_cast<int>(points.size()));
    if (found.second) { points.push_back(p); }
    return found.first->second;
  };
  for (std::size_t axis = 0; axis < 3; ++axis) {
    for (const bool high : {false, true}) {
      const auto at = [&](int u, int v) {
        Corner p{};
        p[axis] = high ? side : 0;
        p[(axis + 1) % 3] = high ? u : v;
        p[(axis + 2) % 3] = high ? v : u;
        return id(p);
      };
      for (int u = 0; u < side; ++u) {
        for (int v = 0; v < side; ++v) {
          triangles.push_back({at(u, v), at(u + 1, v), at(u + 1, v + 1)});
          triangles.push_back({at(u, v), at(u + 1, v + 1), at(u, v + 1)});
        }
      }
    }
  }
  return Of(points, triangles);
}

inline Corner PointOf(vtkPolyData* data, vtkIdType i) {
  Corner p{};
  data->GetPoint(i, p.data());
  return p;
}

inline Corner NormalOf(vtkPolyData* data, vtkIdType i) {
  Corner n{};
  data->GetPointData()->GetNormals()->GetTuple(i, n.data());
  return n;
}

/// The longest side of the bounds, which errors are shares of.
inline double LongestSide(vtkPolyData* data) {
  double b[6];
  data->GetBounds(b);
  return std::max({b[1] - b[0], b[3] - b[2], b[5] - b[4]});
}

inline bool HasPoint(vtkPolyData* data, const Corner& point) {
  for (vtkIdType i = 0; i < data->GetNumberOfPoints(); ++i) {
    if (PointOf(data, i) == point) { return true; }
  }
  return false;
}

/// The point numbers of every triangle.
inline std::vector<std::array<vtkIdType, 3>> IdsOf(vtkPolyData* data) {
  std::vector<std::array<vtkIdType, 3>> all;
  vtkIdType size = 0;
  const vtkIdType* ids = nullptr;
  vtkCellArray* cells = data->GetPolys();
  for (cells->InitTraversal(); cells->GetNextCell(size, ids) != 0;) {
    if (size == 3) { all.push_back({ids[0], ids[1], ids[2]}); }
  }
  return all;
}

inline std::set<Triangle> TrianglesOf(vtkPolyData* data) {
  std::set<Triangle> all;
  for (const auto& ids : IdsOf(data)) {
    Triangle t = {PointOf(data, ids[0]), PointOf(data, ids[1]), PointOf(data, ids[2])};
    std::rotate(t.begin(), std::min_element(t.begin(), t.end()), t.end());
    all.insert(t);
  }
  return all;
}

/// Longest side over the height on it.
inline double Aspect(const Triangle& t) {
  double longest = 0.0;
  Corner sides[2]{};
  for (std::size_t i = 0; i < 3; ++i) {
    double square = 0.0;
    for (std::size_t axis = 0; axis < 3; ++axis) {
      const double difference = t[(i + 1) % 3][axis] - t[i][axis];
      square += difference * difference;
      if (i < 2) { sides[i][axis] = difference; }
    }
    longest = std::max(longest, square);
  }
  double area = 0.0;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    const std::size_t b = (axis + 1) % 3;
    const std::size_t c = (axis + 2) % 3;
    const double part = sides[0][b] * sides[1][c] - sides[0][c] * sides[1][b];
    area += part * part;
  }
  return longest / std::sqrt(area);
}

/// Whether each edge is used as often in one sense as in the other, so that nothing gapes, and no
/// more often than twice in all by three different points.
inline bool Closed(vtkPolyData* data) {
  std::map<std::pair<vtkIdType, vtkIdType>, int> uses;
  for (const auto& ids : IdsOf(data)) {
    if (ids[0] == ids[1] || ids[1] == ids[2] || ids[2] == ids[0]) { return false; }
    for (std::size_t i = 0; i < 3; ++i) { ++uses[{ids[i], ids[(i + 1) % 3]}]; }
  }
  return std::all_of(uses.begin(), uses.end(), [&uses](const auto& use) {
    const auto back = uses.find({use.first.second, use.first.first});
    return back != uses.end() && back->second == use.second;
  });
}

/// Points minus edges plus triangles: 2 for every closed piece without a handle.
inline int EulerNumber(vtkPolyData* data) {
  std::set<vtkIdType> points;
  std::set<std::pair<vtkIdType, vtkIdType>> edges;
  const auto triangles = IdsOf(data);
  for (const auto& ids : triangles) {
    points.insert(ids.begin(), ids.end());
    for (std::size_t i = 0; i < 3; ++i) { edges.insert(std::minmax({ids[i], ids[(i + 1) % 3]})); }
  }
  return static_cast<int>(points.size()) - static_cast<int>(edges.size()) +
         static_cast<int>(triangles.size());
}

}  // namespace meshes
