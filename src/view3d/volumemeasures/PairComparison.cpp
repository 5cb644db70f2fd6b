#include "view3d/volumemeasures/PairComparison.h"

#include "view3d/volumemeasures/Shell.h"

#include <cstdio>

namespace measure {

void SetNames(CompareRecord& record, const std::string& first, const std::string& second) {
  std::snprintf(record.name1, sizeof record.name1, "%s", first.c_str());
  std::snprintf(record.name2, sizeof record.name2, "%s", second.c_str());
}

void SetOverlap(CompareRecord& record, const VolumeOverlap& overlap) {
  record.nbPixel1 = overlap.onlyA;
  record.nbPixel2 = overlap.onlyB;
  record.intersection = overlap.common;
  record.unionCount = overlap.onlyA + overlap.onlyB;
  const double average = (overlap.onlyA + 2.0 * overlap.common + overlap.onlyB) * 0.5;
  record.average = static_cast<float>(average);
  record.overlayMajor = static_cast<float>(overlap.common / average);
}

void SetSurface(CompareRecord& record, const SurfaceDistance& distance) {
  const auto& [inside, outside] = distance;
  const auto average = [](float sum, int count) {
    return static_cast<float>(static_cast<double>(sum) / count);
  };
  record.distanceInside = inside.sum;
  record.nbInside = inside.count;
  record.averageInside = average(inside.sum, inside.count);
  record.distanceOutside = outside.sum;
  record.nbOutside = outside.count;
  record.averageOutside = average(outside.sum, outside.count);
  record.distance = inside.sum + outside.sum;
  record.nbBoundary = inside.count + outside.count;
  record.averageAll = average(record.distance, record.nbBoundary);
}

void SetHaussdorf(CompareRecord& record, float firstToSecond, float secondToFirst) {
  record.haussdorf1 = firstToSecond;
  record.haussdorf2 = secondToFirst;
  record.haussdorfDistance = secondToFirst > firstToSecond ? secondToFirst : firstToSecond;
}

SurfaceDistance AppendSignedDistances(const LabelVolume& source, const LabelVolume& target,
                                      int label, const DistanceField& field, FloatList& list) {
  SurfaceDistance distance;
  for (int x = 1; x <= target.dimX - 2; ++x) {
    for (int y = 1; y <= target.dimY - 2; ++y) {
      for (int z = 1; z <= target.dimZ - 2; ++z) {
        if (!target.Bears(label, x, y, z) || !TouchesBackground(target, x, y, z)) { continue; }
        const float d = field.Length(x, y, z);
        const bool inside = source.Bears(label, x, y, z);
        (inside ? distance.inside : distance.outside).Add(d);
        list.sorted = false;
        list.Append(inside ? -d : d);
      }
    }
  }
  return distance;
}

}  // namespace measure
