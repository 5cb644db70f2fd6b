#include "view3d/DecimateRemoval.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace decimate {

namespace {

constexpr double kFeatureCosine = 0.86602540378443865;  // of 30 degrees
constexpr double kInfinite = std::numeric_limits<double>::infinity();
// Filling a ring takes the cube of its length, and longer ones are rare.
constexpr std::size_t kMostNeighbours = 40;

double Length(const Point& p) { return std::sqrt(Dot(p, p)); }

}  // namespace

Removal::Removal(const Mesh& all, Vertex centre, double largestAspect)
    : mesh(all), vertex(centre), aspect(largestAspect), distance(kInfinite),
      ring(all.Ring(centre)) {
  if (ring.empty() || ring.size() > kMostNeighbours || !TakePlane()) { return; }
  edges = FeatureEdges();
  if (edges.empty()) {
    distance = std::fabs(Dot(At(vertex) - middle, normal));
  } else if (edges.size() == 2) {
    distance = DistanceToLine(ring[edges[0]], ring[edges[1]]);
  }
  if (std::isnan(distance)) { distance = kInfinite; }
}

std::vector<Triangle> Removal::Filling() {
  filling.clear();
  if (std::isinf(distance)) { return {}; }
  const bool filled = edges.empty() ? Split(ring) : SplitAt(ring, edges[0], edges[1]);
  return filled ? filling : std::vector<Triangle>{};
}

/// Average plane of the ring's triangles, weighted by their areas.
bool Removal::TakePlane() {
  double weights = 0.0;
  for (std::size_t i = 0; i < ring.size(); ++i) {
    const Triangle t = {vertex, ring[i], ring[(i + 1) % ring.size()]};
    const Point area = mesh.Normal(t);
    const double weight = Length(area);
    normals.push_back(weight > 0.0 ? area * (1.0 / weight) : area);
    normal = normal + area;
    middle = middle + (At(t[0]) + At(t[1]) + At(t[2])) * (weight / 3.0);
    weights += weight;
  }
  const double length = Length(normal);
  if (!(length > 0.0) || !(weights > 0.0)) { return false; }
  normal = normal * (1.0 / length);
  middle = middle * (1.0 / weights);
  return true;
}

std::vector<std::size_t> Removal::FeatureEdges() const {
  std::vector<std::size_t> sharp;
  for (std::size_t i = 0; i < ring.size(); ++i) {
    const Point& before = normals[(i + ring.size() - 1) % ring.size()];
    if (Dot(before, normals[i]) < kFeatureCosine) { sharp.push_back(i); }
  }
  return sharp;
}

double Removal::DistanceToLine(Vertex from, Vertex to) const {
  const Point line = At(to) - At(from);
  const double square = Dot(line, line);
  if (!(square > 0.0)) { return kInfinite; }
  const Point off = At(vertex) - At(from);
  return Length(off - line * (Dot(off, line) / square));
}

/// Fills a loop by its best split, and so on in both halves.
bool Removal::Split(const std::vector<Vertex>& loop) {
  if (loop.size() == 3) {
    filling.push_back({loop[0], loop[1], loop[2]});
    return MayMake(filling.back());
  }
  double bestShare = -1.0;
  std::size_t bestA = 0;
  std::size_t bestB = 0;
  for (std::size_t a = 0; a < loop.size(); ++a) {
    for (std::size_t b = a + 2; b < loop.size(); ++b) {
      const double share = ShareOf(loop, a, b);
      if (share > bestShare) {
        bestShare = share;
        bestA = a;
        bestB = b;
      }
    }
  }
  return bestShare >= 0.0 && SplitAt(loop, bestA, bestB);
}

bool Removal::SplitAt(const std::vector<Vertex>& loop, std::size_t a, std::size_t b) {
  if (ShareOf(loop, a, b) < 0.0) { return false; }
  const auto at = [&loop](std::size_t i) {
    return loop.begin() + static_cast<std::ptrdiff_t>(i);
  };
  const std::vector<Vertex> one(at(a), at(b + 1));
  std::vector<Vertex> other(at(b), loop.end());
  other.insert(other.end(), loop.begin(), at(a + 1));
  return Split(one) && Split(other);
}

/// Smallest distance of a loop point from the split, over the length of the split; below 0 where
/// a split is not allowed: an edge of the loop or of the mesh, a point on the wrong side of the
/// plane through the split that stands on the average plane, or triangles too flat.
double Removal::ShareOf(const std::vector<Vertex>& loop, std::size_t a, std::size_t b) const {
  if (b - a < 2 || (a == 0 && b + 1 == loop.size())) { return -1.0; }
  if (mesh.HaveEdge(loop[a], loop[b])) { return -1.0; }
  const Point start = At(loop[a]);
  const Point line = At(loop[b]) - start;
  const double length = Length(line);
  const Point side = Cross(line, normal);
  const double scale = Length(side);
  if (!(length > 0.0) || !(scale > 0.0)) { return -1.0; }
  double nearest = kInfinite;
  for (std::size_t i = 0; i < loop.size(); ++i) {
    if (i == a || i == b) { continue; }
    const double off = Dot(At(loop[i]) - start, side) / scale;
    nearest = std::min(nearest, i > a && i < b ? off : -off);
  }
  return nearest > 0.0 && nearest * aspect >= length ? nearest / length : -1.0;
}

bool Removal::MayMake(const Triangle& triangle) const {
  // A ring of three may lie on a triangle that is there already, as in a tetrahedron.
  if (ring.size() == 3 && mesh.HaveTriangle(triangle)) { return false; }
  double longest = 0.0;
  for (std::size_t i = 0; i < 3; ++i) {
    const Point edge = At(triangle[(i + 1) % 3]) - At(triangle[i]);
    longest = std::max(longest, Dot(edge, edge));
  }
  const double twiceArea = Length(mesh.Normal(triangle));
  return twiceArea > 0.0 && longest <= aspect * twiceArea;
}

}  // namespace decimate
