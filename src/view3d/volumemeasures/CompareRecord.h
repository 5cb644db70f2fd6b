// One row of the all-pairs comparison.
#pragma once

#include <cstdint>

struct CompareRecord {
  char name1[50] = {};  ///< longer names are cut
  char name2[50] = {};
  std::int32_t nbPixel1 = 0;    ///< voxels with the label in the first image only
  std::int32_t nbPixel2 = 0;    ///< voxels with the label in the second image only
  std::int32_t unionCount = 0;  ///< nbPixel1 + nbPixel2; the intersection is not in it
  std::int32_t intersection = 0;
  float overlayMajor = 0.0F;  ///< intersection / average
  float haussdorf1 = 0.0F;    ///< largest distance from a voxel of the first image to the second
  float haussdorf2 = 0.0F;    ///< largest distance from a voxel of the second image to the first
  float haussdorfDistance = 0.0F;
  float average = 0.0F;         ///< (nbPixel1 + 2 * intersection + nbPixel2) * 0.5
  std::int32_t nbInside = 0;    ///< surface voxels of the second image inside the first
  std::int32_t nbOutside = 0;   ///< surface voxels of the second image outside the first
  std::int32_t nbBoundary = 0;  ///< nbInside + nbOutside
  float distanceInside = 0.0F;  ///< sum of the distances of the inside voxels
  float distanceOutside = 0.0F;
  float distance = 0.0F;  ///< distanceInside + distanceOutside
  float averageInside = 0.0F;
  float averageOutside = 0.0F;
  float averageAll = 0.0F;
  std::int32_t histogram[26] = {};  ///< never assigned by any measure
};
