#include "view3d/volumemeasures/ProbabilityMap.h"

#include "base/Limits.h"

#include <cmath>

namespace measure {

namespace {

constexpr int kTotalledUsers = 11;

struct Hits {
  int user[kMaxVolumeUsers] = {};

  int Total() const {
    int total = 0;
    for (int u = 0; u < kTotalledUsers; ++u) { total += user[u]; }
    return total;
  }
};

std::uint8_t ColourOf(int total, int images) {
  const int value = 192 - (total * 128 - 128) / (images - 1);
  return static_cast<std::uint8_t>(static_cast<unsigned>(value));
}

}  // namespace

double PaintProbability(const std::vector<LabelVolume>& images, int users, int repeats, int label,
                        const WorkVolume& picture, Progress& progress) {
  const int count = users * repeats;
  float differences = 0.0F;
  float shares = 0.0F;
  for (int x = 0; x < picture.dimX; ++x) {
    for (int y = 0; y < picture.dimY; ++y) {
      for (int z = 0; z < picture.dimZ; ++z) {
        Hits hits;
        std::size_t image = 0;
        for (int u = 0; u < users; ++u) {
          for (int r = 0; r < repeats; ++r) {
            hits.user[u] += images[image++].Bears(label, x, y, z) ? 1 : 0;
          }
        }
        const int total = hits.Total();
        picture.scalars[picture.Index(x, y, z)] = total != 0 ? 255.0F : 0.0F;
        picture.SetColour(x, y, z, total != 0 ? ColourOf(total, count) : std::uint8_t{0});
        const double first = static_cast<double>(hits.user[0]) / repeats;
        const double second = static_cast<double>(hits.user[1]) / repeats;
        differences = static_cast<float>(differences + std::fabs(first - second));
        if (hits.user[0] != 0 || hits.user[1] != 0) {
          shares = static_cast<float>(shares + static_cast<double>(total) / count);
        }
      }
    }
    progress.Step();
  }
  return 1.0 - (static_cast<double>(differences) / shares) * 0.5;
}

}  // namespace measure
