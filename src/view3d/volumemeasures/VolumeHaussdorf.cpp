#include "view3d/volumemeasures/VolumeHaussdorf.h"

#include "base/ColourValues.h"
#include "view3d/volumemeasures/DistanceRows.h"
#include "view3d/volumemeasures/VoxelBlocks.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace measure {

namespace {

constexpr std::uint8_t kMark = 1;
constexpr double kColourRange = 140.0;

VoxelIndex MarkBeside(const LabelVolume& image, int label, const VoxelIndex& voxel) {
  constexpr int kLook[4][2] = {{-1, 0}, {1, 0}, {0, -1}, {0, 1}};
  const auto& [x, y, z] = voxel;
  for (const auto& step : kLook) {
    const int nx = x + step[0];
    const int ny = y + step[1];
    if (!image.Contains(nx, ny, z) || !image.Bears(label, nx, ny, z)) { return {nx, ny, z}; }
  }
  return voxel;
}

int DivisorOf(float distance) { return distance == 0.0F ? 1 : static_cast<int>(distance); }

float RootOf(double square) { return static_cast<float>(std::sqrt(square)); }

/// Visits the rows of 16 voxels along x that hold the label, with their mask; label voxels are
/// few, and the distance is asked for there alone.
template <class Visit>
void ForEachLabelRow(const LabelVolume& image, int label, int firstX, int lastX, Visit visit,
                     Progress& progress) {
  const LabelTest test(label);
  Slab mask;
  const auto search = [&](const SlabPlace& at) {
    mask.LoadMask(image, test, at);
    for (int i = 0; i < at.BlocksX(); ++i) {
      const int count = std::min(at.countX - i * kBlock, kBlock);
      for (int k = 0; k < at.BlocksZ(); ++k) {
        Block& block = mask.blocks[i][k];
        if (block.Empty()) { continue; }
        block.Turn();
        const int rows = std::min(at.countZ - k * kBlock, kBlock);
        for (int row = 0; row < rows; ++row) {
          if (!Any(block.rows[row])) { continue; }
          visit(VoxelIndex{at.x + i * kBlock, at.y, at.z + k * kBlock + row}, count,
                block.rows[row]);
        }
      }
    }
  };
  ForEachSlab(image, firstX, lastX, search, [&](int planes) {
    for (int step = 0; step < planes; ++step) { progress.Step(); }
  });
}

bool Before(const VoxelIndex& a, const VoxelIndex& b) {
  return std::tie(a.x, a.y, a.z) < std::tie(b.x, b.y, b.z);
}

}  // namespace

float LargestDistance(const LabelVolume& image, int label, const DistanceField& field, int firstX,
                      int lastX, Progress& progress) {
  double largest = 0.0;
  const auto look = [&](const VoxelIndex& row, int count, Bytes mask) {
    const double square = LargestSquare(field, field.Index(row.x, row.y, row.z), count, mask);
    largest = std::max(largest, square);
  };
  ForEachLabelRow(image, label, firstX, lastX, look, progress);
  return RootOf(largest);
}

FarVoxel FindFarVoxel(const LabelVolume& image, int label, const DistanceField& field,
                      Progress& progress) {
  float largest = 0.0F;
  VoxelIndex voxel;
  const auto look = [&](const VoxelIndex& row, int count, Bytes mask) {
    const std::size_t first = field.Index(row.x, row.y, row.z);
    const float distance = RootOf(LargestSquare(field, first, count, mask));
    if (distance == 0.0F || distance < largest) { return; }
    VoxelIndex found = row;
    for (int i = 0; mask[i] == 0 || field.Length(first + static_cast<std::size_t>(i)) != distance;
         ++i) {
      ++found.x;
    }
    // Rows do not come in the order that counts among equal distances: by x, then y, then z.
    if (largest < distance || Before(found, voxel)) { voxel = found; }
    largest = distance;
  };
  ForEachLabelRow(image, label, 0, image.dimX - 1, look, progress);
  if (largest == 0.0F) { return {}; }
  return {largest, MarkBeside(image, label, voxel)};
}

void PaintDistances(const LabelVolume& image, int label, const DistanceField& field,
                    const FarVoxel& far, const WorkVolume& picture) {
  DistanceShades shades;
  shades.base = kBlue;
  shades.range = kColourRange;
  for (SideShade& side : shades.sides) {
    side.divisor = DivisorOf(far.distance);
    side.sign = -1.0;
  }
  const LabelTest test(label);
  Slab slab;
  const auto paint = [&](const SlabPlace& at) {
    slab.LoadMask(image, test, at);
    slab.Turn(at);
    StoreScalars(picture, at, slab);
    ShadeSlab(field, at, shades, slab);
    StoreColours(picture, at, slab);
  };
  ForEachSlab(image, 0, image.dimX - 1, paint, [](int) {});
  const VoxelIndex& mark = far.mark;
  if (image.Contains(mark.x, mark.y, mark.z)) { picture.Set(mark.x, mark.y, mark.z, kMark); }
}

}  // namespace measure
