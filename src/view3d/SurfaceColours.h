// Colours of a surface: the table by colour value, and the value at a point of the surface.
#pragma once

#include "base/LabelVolume.h"

#include <cstdint>

namespace surface {

/// Red, green and blue from 0.0 to 1.0 for every colour value: 64 is pure red, 128 pure green, 192
/// pure blue, and the values between are mixed.
void FillColorTable(float (&table)[256][3]);

/// The voxel that a coordinate belongs to, `coordinate` + 0.5 truncated; far outside every volume
/// where that is no number or does not fit.
int VoxelAt(double coordinate);

/// The colour value at a voxel or else at the first of its six neighbours that has one, 0 where
/// none has. A point of a surface lies between two voxels and may round to the one outside.
///
/// Shape: `voxel` holds x, y, z and may lie outside the volume, where every value is 0.
std::uint8_t ColourNear(const LabelVolume& work, const int* voxel);

}  // namespace surface
