// One attempt of Decimate to remove a vertex.
#pragma once

#include "view3d/DecimateMesh.h"

#include <vector>

namespace decimate {

class Removal {
public:
  /// Looks at the triangles round `centre`. `largestAspect` is the largest ratio of the longest
  /// side of a new triangle to its height over that side.
  Removal(const Mesh& all, Vertex centre, double largestAspect);

  /// How far the vertex lies from what would replace it; infinite where it has to stay: on a
  /// border, on a corner, or where the mesh is no surface.
  double Distance() const { return distance; }
  /// The triangles that take the vertex's place; empty where there are none that may be made.
  std::vector<Triangle> Filling();
  /// The vertices round it, in order.
  const std::vector<Vertex>& Neighbours() const { return ring; }

private:
  const Point& At(Vertex v) const { return mesh.points[static_cast<std::size_t>(v)]; }
  bool TakePlane();
  std::vector<std::size_t> FeatureEdges() const;
  double DistanceToLine(Vertex from, Vertex to) const;
  bool Split(const std::vector<Vertex>& loop);
  bool SplitAt(const std::vector<Vertex>& loop, std::size_t a, std::size_t b);
  double ShareOf(const std::vector<Vertex>& loop, std::size_t a, std::size_t b) const;
  bool MayMake(const Triangle& triangle) const;

  const Mesh& mesh;
  Vertex vertex;
  double aspect;
  double distance;
  std::vector<Vertex> ring;
  std::vector<Point> normals;      ///< of the ring's triangles, of length 1
  Point normal;                    ///< of the average plane
  Point middle;                    ///< a point of it
  std::vector<std::size_t> edges;  ///< ring places of the sharp edges through the vertex
  std::vector<Triangle> filling;
};

}  // namespace decimate
