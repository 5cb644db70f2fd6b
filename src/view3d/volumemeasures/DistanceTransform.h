// The vector distance transform of one label in a volume.
#pragma once

#include "base/DistanceField.h"
#include "base/LabelVolume.h"
#include "base/Progress.h"

#include <vector>

namespace measure {

/// Voxel size along x, y, z.
struct VoxelSize {
  float x = 1.0F;
  float y = 1.0F;
  float z = 1.0F;
};

/// The machine instructions that a transform may use. All give the same bits.
enum class InstructionSet { Plain, Sse2, Avx2, Avx512 };

/// Those that this build and this processor have, from the slowest to the fastest.
std::vector<InstructionSet> SupportedInstructionSets();

/// Fills `field` with the vector from every voxel to its nearest voxel of `label`.
///
/// Shape:  field has the sizes of image. Its arrays hold intermediate values until the end.
/// Units:  those of `size`.
/// Report: dimX + 2 * (dimZ - 1) steps; prints "starting forward scan" and "starting backward
///         scan"; shows "Starting forward scan".
/// Errors: none; a label that is absent leaves finite vectors without a meaning.
/// Source: sequential vector propagation after P.-E. Danielsson, Euclidean distance mapping,
///         Computer Graphics and Image Processing 14 (1980), with five neighbours between planes.
void ComputeDistanceTransform(const LabelVolume& image, int label, const VoxelSize& size,
                              const DistanceField& field, Progress& progress);

/// The same with an instruction set of the caller's choice, which has to be a supported one.
void ComputeDistanceTransformOn(InstructionSet set, const LabelVolume& image, int label,
                                const VoxelSize& size, const DistanceField& field,
                                Progress& progress);

}  // namespace measure
