// VoxData: the picking ray through the labels.
#include "VoxData/VoxData.h"

#include <cmath>

namespace {

constexpr int kMaxEntrySteps = 10000;   // steps of one voxel length until the ray is inside
constexpr double kNoBoundary = 9999.0;  // movement to the boundary of an axis the ray runs along

struct Ray {
  double x, y, z;     // position; voxel i covers i up to i + 1
  double dx, dy, dz;  // direction of length 1
};

bool Inside(const Ray& ray, const LabelVolume& volume) {
  return 0 <= ray.x && ray.x < volume.dimX && 0 <= ray.y && ray.y < volume.dimY && 0 <= ray.z &&
         ray.z < volume.dimZ;
}

double ToBoundary(double position, double direction) {
  return std::trunc((direction >= 0 ? 1.0 : -1.0) + position) - position;
}

/// Moves the ray to the next voxel boundary.
///
/// ON PURPOSE: the distances along y and z are compared as the x movement that goes with them. A
/// ray without an x movement sees no difference between them and steps along y.
void StepToBoundary(Ray& ray) {
  const double ax = ray.dx == 0 ? kNoBoundary : ToBoundary(ray.x, ray.dx);
  const double by = ToBoundary(ray.y, ray.dy);
  const double ty = by / ray.dy;
  const double ay = ray.dy == 0 ? kNoBoundary : ty * ray.dx;
  const double bz = ToBoundary(ray.z, ray.dz);
  const double tz = bz / ray.dz;
  const double az = ray.dz == 0 ? kNoBoundary : tz * ray.dx;
  if (std::fabs(ax) <= std::fabs(ay) && std::fabs(az) >= std::fabs(ax)) {
    const double t = ax / ray.dx;
    ray.x += ax;
    ray.y += t * ray.dy;
    ray.z += t * ray.dz;
  } else if (std::fabs(ay) <= std::fabs(ax) && std::fabs(ay) <= std::fabs(az)) {
    ray.x += ay;
    ray.y += by;
    ray.z += ty * ray.dz;
  } else {
    ray.x += az;
    ray.y += tz * ray.dy;
    ray.z += bz;
  }
}

/// Walks to the volume; false where the ray starts too far away or misses it.
bool Enter(Ray& ray, const LabelVolume& volume) {
  int steps = 0;
  while (!Inside(ray, volume) && steps < kMaxEntrySteps) {
    ray.x += ray.dx;
    ray.y += ray.dy;
    ray.z += ray.dz;
    ++steps;
  }
  return steps < kMaxEntrySteps - 1;
}

}  // namespace

int VoxData::CastRay(double ox, double oy, double oz, double dx, double dy, double dz,
                     int* voxel) const {
  const double length = std::sqrt(dx * dx + dy * dy + dz * dz);
  if (length == 0.0 || seg == nullptr) { return -1; }
  Ray ray{ox + 0.5, oy + 0.5, oz + 0.5, dx / length, dy / length, dz / length};
  const LabelVolume volume = Labels();
  if (!Enter(ray, volume)) { return -1; }
  while (Inside(ray, volume)) {
    const int x = static_cast<int>(ray.x);
    const int y = static_cast<int>(ray.y);
    const int z = static_cast<int>(ray.z);
    if (volume.At(x, y, z) != 0) {
      voxel[0] = x;
      voxel[1] = y;
      voxel[2] = z;
      return 1;
    }
    StepToBoundary(ray);
  }
  return 0;
}
