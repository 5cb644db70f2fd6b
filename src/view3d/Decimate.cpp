#include "view3d/Decimate.h"

#include "view3d/DecimateMesh.h"
#include "view3d/DecimateRemoval.h"

#include <vtkCellArray.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace {

using decimate::Mesh;
using decimate::Point;
using decimate::Removal;
using decimate::Triangle;
using decimate::Vertex;

Mesh MeshOf(vtkPolyData* data) {
  Mesh mesh;
  const vtkIdType points = data->GetNumberOfPoints();
  mesh.points.resize(static_cast<std::size_t>(points));
  mesh.users.resize(static_cast<std::size_t>(points));
  for (vtkIdType i = 0; i < points; ++i) {
    double p[3];
    data->GetPoint(i, p);
    mesh.points[static_cast<std::size_t>(i)] = {p[0], p[1], p[2]};
  }
  vtkCellArray* cells = data->GetPolys();
  vtkIdType size = 0;
  const vtkIdType* ids = nullptr;
  for (cells->InitTraversal(); cells->GetNextCell(size, ids) != 0;) {
    if (size != 3) { continue; }  // marching cubes makes no other
    const int triangle = static_cast<int>(mesh.triangles.size());
    mesh.triangles.push_back(
        {static_cast<int>(ids[0]), static_cast<int>(ids[1]), static_cast<int>(ids[2])});
    for (const Vertex v : mesh.triangles.back()) {
      mesh.users[static_cast<std::size_t>(v)].push_back(triangle);
    }
  }
  mesh.count = mesh.triangles.size();
  return mesh;
}

vtkSmartPointer<vtkPolyData> PolyDataOf(const Mesh& mesh, vtkPolyData* source) {
  vtkNew<vtkPoints> points;
  vtkNew<vtkCellArray> cells;
  auto out = vtkSmartPointer<vtkPolyData>::New();
  out->GetPointData()->CopyAllOn();
  out->GetPointData()->CopyAllocate(source->GetPointData());
  std::vector<vtkIdType> newIds(mesh.points.size(), -1);
  for (const Triangle& t : mesh.triangles) {
    if (t[0] < 0) { continue; }
    vtkIdType ids[3];
    for (int corner = 0; corner < 3; ++corner) {
      const auto old = static_cast<std::size_t>(t[static_cast<std::size_t>(corner)]);
      if (newIds[old] < 0) {
        const Point& p = mesh.points[old];
        newIds[old] = points->InsertNextPoint(p.x, p.y, p.z);
        out->GetPointData()->CopyData(source->GetPointData(), static_cast<vtkIdType>(old),
                                      newIds[old]);
      }
      ids[corner] = newIds[old];
    }
    cells->InsertNextCell(3, ids);
  }
  out->SetPoints(points);
  out->SetPolys(cells);
  return out;
}

/// Removes vertices in rounds with a bound that grows, and remembers what each vertex waits for,
/// so that a round only looks at vertices that it can treat in another way than the one before.
class Rounds {
public:
  static constexpr double kNever = std::numeric_limits<double>::infinity();

  Rounds(Mesh& all, double largestAspect, double fewestTriangles)
      : mesh(all), aspect(largestAspect), goal(fewestTriangles),
        needed(all.points.size(), kUnknown) {}

  bool Done() const { return static_cast<double>(mesh.count) <= goal; }

  /// One round over all vertices. Returns the smallest bound at which another round may do more,
  /// or kNever.
  double Run(double bound) {
    for (std::size_t v = 0; v < needed.size() && !Done(); ++v) {
      if (needed[v] <= bound && needed[v] < kNever) { Try(v, bound); }
    }
    return *std::min_element(needed.begin(), needed.end());
  }

private:
  static constexpr double kUnknown = -kNever;

  void Try(std::size_t v, double bound) {
    if (mesh.users[v].empty()) {
      needed[v] = kNever;
      return;
    }
    Removal removal(mesh, static_cast<Vertex>(v), aspect);
    needed[v] = removal.Distance();
    if (!(needed[v] <= bound)) { return; }
    // Edges between vertices that stay are never lost: what cannot be filled now cannot be
    // filled before a neighbour goes.
    needed[v] = kNever;
    const std::vector<Triangle> filling = removal.Filling();
    if (filling.empty()) { return; }
    mesh.Replace(static_cast<Vertex>(v), filling);
    for (const Vertex neighbour : removal.Neighbours()) {
      needed[static_cast<std::size_t>(neighbour)] = kUnknown;
    }
  }

  Mesh& mesh;
  double aspect;
  double goal;
  std::vector<double> needed;  ///< bound from which on a vertex may go
};

double LongestSide(vtkPolyData* data) {
  double bounds[6];
  data->GetBounds(bounds);
  return std::max({bounds[1] - bounds[0], bounds[3] - bounds[2], bounds[5] - bounds[4], 0.0});
}

}  // namespace

vtkSmartPointer<vtkPolyData> Decimate::Run(vtkPolyData* source) const {
  Mesh mesh = MeshOf(source);
  if (mesh.points.empty()) { return PolyDataOf(mesh, source); }
  const double share = targetReduction > 0.0 ? std::min(targetReduction, 1.0) : 0.0;
  const double side = LongestSide(source);
  Rounds rounds(mesh, aspectRatio, (1.0 - share) * static_cast<double>(mesh.count));
  for (double round = 0; round < maximumIterations && !rounds.Done();) {
    const double growth = round > 0 ? round * errorIncrement : 0.0;
    const double bound = (initialError + growth) * side;
    if (std::isnan(bound)) { break; }
    const double next = rounds.Run(bound);
    ++round;
    if (next == Rounds::kNever) { break; }
    if (next <= bound) { continue; }
    if (!(errorIncrement > 0.0)) { break; }
    // Rounds that would not do anything are passed over.
    round = std::max(round, std::floor((next / side - initialError) / errorIncrement) - 1.0);
  }
  return PolyDataOf(mesh, source);
}
