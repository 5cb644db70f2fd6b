#include "view3d/Decimate.h"

#include "view3d/DecimateMesh.h"

#include <vtkCellArray.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>

#include <algorithm>
#include <cmath>

namespace {

using decimate::Dot;
using decimate::Mesh;
using decimate::Point;
using decimate::Triangle;
using decimate::Vertex;

constexpr double kFeatureCosine = 0.86602540378443865;  // of 30 degrees

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
    if (size != 3) { continue; }
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

/// One attempt to remove a vertex.
class Removal {
public:
  Removal(const Mesh& all, Vertex centre, double error, double smallestShare)
      : mesh(all), vertex(centre), largestError(error), share(smallestShare),
        ring(all.Ring(centre)) {}

  /// The triangles that take the vertex's place; empty where it has to stay.
  std::vector<Triangle> Filling() {
    if (ring.empty() || !TakePlane()) { return {}; }
    const std::vector<std::size_t> edges = FeatureEdges();
    if (edges.empty()) {
      const double away = std::fabs(Dot(At(vertex) - middle, normal));
      if (!(away <= largestError) || !Split(ring)) { return {}; }
      return filling;
    }
    if (edges.size() != 2 || !SplitAlong(edges[0], edges[1])) { return {}; }
    return filling;
  }

private:
  const Point& At(Vertex v) const { return mesh.points[static_cast<std::size_t>(v)]; }

  /// Average plane of the ring's triangles, weighted by their areas.
  bool TakePlane() {
    double weights = 0.0;
    for (std::size_t i = 0; i < ring.size(); ++i) {
      const Triangle t = {vertex, ring[i], ring[(i + 1) % ring.size()]};
      const Point area = mesh.Normal(t);
      const double weight = std::sqrt(Dot(area, area));
      normals.push_back(weight > 0.0 ? area * (1.0 / weight) : area);
      normal = normal + area;
      middle = middle + (At(t[0]) + At(t[1]) + At(t[2])) * (weight / 3.0);
      weights += weight;
    }
    const double length = std::sqrt(Dot(normal, normal));
    if (!(length > 0.0) || !(weights > 0.0)) { return false; }
    normal = normal * (1.0 / length);
    middle = middle * (1.0 / weights);
    return true;
  }

  /// Ring places whose edge to the vertex is sharper than the feature angle.
  std::vector<std::size_t> FeatureEdges() const {
    std::vector<std::size_t> edges;
    for (std::size_t i = 0; i < ring.size(); ++i) {
      const Point& before = normals[(i + ring.size() - 1) % ring.size()];
      if (Dot(before, normals[i]) < kFeatureCosine) { edges.push_back(i); }
    }
    return edges;
  }

  /// A vertex on a sharp edge goes when it lies near the line between the edge's other ends.
  bool SplitAlong(std::size_t first, std::size_t second) {
    const Point a = At(ring[first]);
    const Point line = At(ring[second]) - a;
    const double length = Dot(line, line);
    if (!(length > 0.0)) { return false; }
    const Point off = At(vertex) - a;
    const Point away = off - line * (Dot(off, line) / length);
    if (!(Dot(away, away) <= largestError * largestError)) { return false; }
    return SplitAt(ring, first, second);
  }

  /// Fills a loop by the best split that keeps the aspect ratio, and so on in both halves.
  bool Split(const std::vector<Vertex>& loop) {
    if (loop.size() == 3) {
      filling.push_back({loop[0], loop[1], loop[2]});
      return true;
    }
    double bestShare = -1.0;
    std::size_t bestA = 0;
    std::size_t bestB = 0;
    for (std::size_t a = 0; a < loop.size(); ++a) {
      for (std::size_t b = a + 2; b < loop.size(); ++b) {
        if (a == 0 && b + 1 == loop.size()) { continue; }  // an edge of the loop
        const double found = ShareOf(loop, a, b);
        if (found > bestShare) {
          bestShare = found;
          bestA = a;
          bestB = b;
        }
      }
    }
    return bestShare >= 0.0 && SplitAt(loop, bestA, bestB);
  }

  bool SplitAt(const std::vector<Vertex>& loop, std::size_t a, std::size_t b) {
    if (ShareOf(loop, a, b) < 0.0) { return false; }
    const auto at = [&loop](std::size_t i) {
      return loop.begin() + static_cast<std::ptrdiff_t>(i);
    };
    const std::vector<Vertex> one(at(a), at(b + 1));
    std::vector<Vertex> other(at(b), loop.end());
    other.insert(other.end(), loop.begin(), at(a + 1));
    return Split(one) && Split(other);
  }

  /// Smallest distance of a loop point from the split, over the length of the split; below 0
  /// where the split is not allowed.
  double ShareOf(const std::vector<Vertex>& loop, std::size_t a, std::size_t b) const {
    if (b - a < 2 || (a == 0 && b + 1 == loop.size())) { return -1.0; }
    if (mesh.HaveEdge(loop[a], loop[b])) { return -1.0; }
    const Point start = At(loop[a]);
    const Point line = At(loop[b]) - start;
    const double length = std::sqrt(Dot(line, line));
    const Point side = decimate::Cross(line, normal);
    const double scale = std::sqrt(Dot(side, side));
    if (!(length > 0.0) || !(scale > 0.0)) { return -1.0; }
    double nearest = 1e300;
    for (std::size_t i = 0; i < loop.size(); ++i) {
      if (i == a || i == b) { continue; }
      const double distance = Dot(At(loop[i]) - start, side) / scale;
      const double outward = i > a && i < b ? distance : -distance;
      nearest = std::min(nearest, outward);
    }
    const double found = nearest / length;
    return nearest > 0.0 && found >= share ? found : -1.0;
  }

  const Mesh& mesh;
  Vertex vertex;
  double largestError;
  double share;
  std::vector<Vertex> ring;
  std::vector<Point> normals;
  Point normal;
  Point middle;
  std::vector<Triangle> filling;
};

/// One round over all vertices. Returns whether anything was removed.
bool RemoveRound(Mesh& mesh, double error, double share, double goal) {
  bool removed = false;
  for (std::size_t v = 0; v < mesh.points.size(); ++v) {
    if (static_cast<double>(mesh.count) <= goal) { break; }
    if (mesh.users[v].empty()) { continue; }
    const auto filling = Removal(mesh, static_cast<Vertex>(v), error, share).Filling();
    if (filling.empty()) { continue; }
    mesh.Replace(static_cast<Vertex>(v), filling);
    removed = true;
  }
  return removed;
}

}  // namespace

vtkSmartPointer<vtkPolyData> Decimate::Run(vtkPolyData* source) const {
  Mesh mesh = MeshOf(source);
  const double reduction =
      std::isnan(targetReduction) ? 0.0 : std::clamp(targetReduction, 0.0, 1.0);
  const double goal = (1.0 - reduction) * static_cast<double>(mesh.count);
  const double share = aspectRatio > 0.0 ? 1.0 / aspectRatio : 1e300;
  double bounds[6];
  source->GetBounds(bounds);
  const double side =
      std::max({bounds[1] - bounds[0], bounds[3] - bounds[2], bounds[5] - bounds[4], 0.0});
  for (int round = 0; round < maximumIterations; ++round) {
    if (static_cast<double>(mesh.count) <= goal) { break; }
    const double error = (initialError + round * errorIncrement) * side;
    const bool removed = RemoveRound(mesh, error, share, goal);
    // Nothing went and the bound does not grow: no later round differs.
    if (!removed && !(errorIncrement > 0.0)) { break; }
    if (!removed && error > side) { break; }
  }
  return PolyDataOf(mesh, source);
}
