#include "view3d/volumemeasures/VoxelsPerSlice.h"

#include <algorithm>

namespace measure {

void CountPerSlice(const LabelVolume& image, int label, int axis, int first, int count,
                   float* counts) {
  std::fill_n(counts, count, 0.0F);
  for (int x = 0; x < image.dimX; ++x) {
    for (int y = 0; y < image.dimY; ++y) {
      for (int z = 0; z < image.dimZ; ++z) {
        if (!image.Bears(label, x, y, z)) { continue; }
        const int place = (axis == 0 ? x : axis == 1 ? y : z) - first;
        if (place >= 0 && place < count) { counts[place] += 1.0F; }
      }
    }
  }
}

}  // namespace measure
