#include "view3d/DecimateMesh.h"

#include <algorithm>

namespace decimate {

namespace {

/// The edge of a triangle that lies opposite to `vertex`, in the triangle's sense.
std::array<Vertex, 2> EdgeOpposite(const Triangle& t, Vertex vertex) {
  if (t[0] == vertex) { return {t[1], t[2]}; }
  if (t[1] == vertex) { return {t[2], t[0]}; }
  return {t[0], t[1]};
}

}  // namespace

std::vector<Vertex> Mesh::Ring(Vertex vertex) const {
  const auto& own = users[static_cast<std::size_t>(vertex)];
  if (own.size() < 3) { return {}; }
  std::vector<std::array<Vertex, 2>> edges;
  for (const int triangle : own) {
    edges.push_back(EdgeOpposite(triangles[static_cast<std::size_t>(triangle)], vertex));
  }
  std::vector<Vertex> ring = {edges[0][0]};
  Vertex next = edges[0][1];
  while (next != ring[0]) {
    ring.push_back(next);
    if (ring.size() > edges.size()) { return {}; }
    const auto found = std::find_if(edges.begin(), edges.end(),
                                    [next](const auto& edge) { return edge[0] == next; });
    if (found == edges.end()) { return {}; }
    next = (*found)[1];
  }
  if (ring.size() != edges.size()) { return {}; }
  std::vector<Vertex> sorted = ring;
  std::sort(sorted.begin(), sorted.end());
  const bool repeats = std::adjacent_find(sorted.begin(), sorted.end()) != sorted.end();
  return repeats ? std::vector<Vertex>{} : ring;
}

bool Mesh::HaveEdge(Vertex a, Vertex b) const {
  const auto& of = users[static_cast<std::size_t>(a)];
  return std::any_of(of.begin(), of.end(), [&](int triangle) {
    const Triangle& t = triangles[static_cast<std::size_t>(triangle)];
    return t[0] == b || t[1] == b || t[2] == b;
  });
}

bool Mesh::HaveTriangle(const Triangle& corners) const {
  const auto& of = users[static_cast<std::size_t>(corners[0])];
  return std::any_of(of.begin(), of.end(), [&](int triangle) {
    return std::is_permutation(corners.begin(), corners.end(),
                               triangles[static_cast<std::size_t>(triangle)].begin());
  });
}

void Mesh::Drop(int triangle) {
  for (const Vertex vertex : triangles[static_cast<std::size_t>(triangle)]) {
    auto& of = users[static_cast<std::size_t>(vertex)];
    of.erase(std::remove(of.begin(), of.end(), triangle), of.end());
  }
  triangles[static_cast<std::size_t>(triangle)] = {-1, -1, -1};
  --count;
}

void Mesh::Replace(Vertex vertex, const std::vector<Triangle>& filling) {
  const std::vector<int> old = users[static_cast<std::size_t>(vertex)];
  for (const int triangle : old) { Drop(triangle); }
  for (std::size_t i = 0; i < filling.size(); ++i) {
    const int place = old[i];  // a ring of n triangles is filled by n - 2
    triangles[static_cast<std::size_t>(place)] = filling[i];
    for (const Vertex corner : filling[i]) {
      users[static_cast<std::size_t>(corner)].push_back(place);
    }
    ++count;
  }
}

}  // namespace decimate
