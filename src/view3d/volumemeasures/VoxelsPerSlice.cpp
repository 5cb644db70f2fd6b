#include "view3d/volumemeasures/VoxelsPerSlice.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace measure {

namespace {

// Adding 1 to a 32-bit float ends here: a slice of more voxels counts no further.
constexpr std::int64_t kLargestCount = 1 << 24;

/// First and end of the slices that lie in the volume.
struct Range {
  int first;
  int end;
};

std::int64_t CountRun(const std::uint8_t* run, int length, int label) {
  return std::count_if(run, run + length, [label](std::uint8_t value) { return value == label; });
}

/// Adds the voxels of all slices of `range` along z; here a run along z crosses them all.
void CountAlongZ(const LabelVolume& image, int label, const Range& range, std::int64_t* sums) {
  for (int x = 0; x < image.dimX; ++x) {
    for (int y = 0; y < image.dimY; ++y) {
      const std::uint8_t* run = image.voxels[x][y];
      for (int z = range.first; z < range.end; ++z) { sums[z - range.first] += run[z] == label; }
    }
  }
}

std::int64_t CountSlice(const LabelVolume& image, int label, int axis, int slice) {
  std::int64_t sum = 0;
  const int rows = axis == 0 ? image.dimY : image.dimX;
  for (int row = 0; row < rows; ++row) {
    const std::uint8_t* run = axis == 0 ? image.voxels[slice][row] : image.voxels[row][slice];
    sum += CountRun(run, image.dimZ, label);
  }
  return sum;
}

}  // namespace

void CountPerSlice(const LabelVolume& image, int label, int axis, int first, int count,
                   float* counts) {
  const int sizes[3] = {image.dimX, image.dimY, image.dimZ};
  const std::int64_t last = std::int64_t{first} + count;  // a slider may hold any number
  const Range range = {std::clamp(first, 0, sizes[axis]),
                       static_cast<int>(std::clamp<std::int64_t>(last, 0, sizes[axis]))};
  std::fill_n(counts, count, 0.0F);
  if (range.first >= range.end) { return; }
  std::vector<std::int64_t> sums(static_cast<std::size_t>(range.end - range.first));
  if (axis == 2) {
    CountAlongZ(image, label, range, sums.data());
  } else {
    for (int slice = range.first; slice < range.end; ++slice) {
      sums[static_cast<std::size_t>(slice - range.first)] = CountSlice(image, label, axis, slice);
    }
  }
  float* to = counts + (range.first - first);
  for (const std::int64_t sum : sums) { *to++ = static_cast<float>(std::min(sum, kLargestCount)); }
}

}  // namespace measure
