// The mesh that Decimate works on: triangles and, for each vertex, the triangles that use it.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

namespace decimate {

using Vertex = int;
using Triangle = std::array<Vertex, 3>;

struct Point {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
};

inline Point operator+(const Point& a, const Point& b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
inline Point operator-(const Point& a, const Point& b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
inline Point operator*(const Point& a, double s) { return {a.x * s, a.y * s, a.z * s}; }
inline double Dot(const Point& a, const Point& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
inline Point Cross(const Point& a, const Point& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

class Mesh {
public:
  std::vector<Point> points;
  std::vector<Triangle> triangles;      ///< {-1, -1, -1} where one was removed
  std::vector<std::vector<int>> users;  ///< triangles of each vertex
  std::size_t count = 0;                ///< triangles that are left

  /// The vertices round `vertex` in order, as its triangles turn; empty where they do not form
  /// one closed ring.
  std::vector<Vertex> Ring(Vertex vertex) const;
  /// Area-weighted normal of a triangle.
  Point Normal(const Triangle& t) const {
    return Cross(points[static_cast<std::size_t>(t[1])] - points[static_cast<std::size_t>(t[0])],
                 points[static_cast<std::size_t>(t[2])] - points[static_cast<std::size_t>(t[0])]);
  }
  bool HaveEdge(Vertex a, Vertex b) const;
  /// Whether three vertices are those of a triangle, in any order.
  bool HaveTriangle(const Triangle& corners) const;
  /// Puts `filling` in the place of the triangles round `vertex`.
  void Replace(Vertex vertex, const std::vector<Triangle>& filling);

private:
  void Drop(int triangle);
};

}  // namespace decimate
