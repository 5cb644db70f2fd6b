#include "view3d/volumemeasures/ProbabilityMap.h"

#include "base/Limits.h"
#include "view3d/volumemeasures/SurfaceVoxels.h"
#include "view3d/volumemeasures/VoxelBlocks.h"

#include <algorithm>
#include <cmath>

namespace measure {

namespace {

constexpr int kTotalledUsers = 11;

std::uint8_t ColourOf(int total, int images) {
  if (total == 0) { return 0; }
  const int value = 192 - (total * 128 - 128) / (images - 1);
  return static_cast<std::uint8_t>(static_cast<unsigned>(value));
}

/// How many repeats of the first user, of the second and of all that count mark 16 voxels.
struct Hits {
  Bytes first = {};
  Bytes second = {};
  Bytes total = {};
};

class Painter {
public:
  Painter(const std::vector<LabelVolume>& volumes, int userCount, int repeatCount, int wanted)
      : images(volumes), repeats(repeatCount), test(wanted),
        read(std::min(userCount, kTotalledUsers) * repeatCount),
        runs(static_cast<std::size_t>(read)) {
    const int count = userCount * repeatCount;
    for (int total = 0; total <= count; ++total) {
      colours[total] = ColourOf(total, count);
      shares[total] = static_cast<double>(total) / count;
    }
    for (int hits = 0; hits <= repeats; ++hits) {
      ownShares[hits] = static_cast<double>(hits) / repeats;
    }
  }

  /// Colours the run of voxels along z at x, y, and adds them to both sums.
  void PaintRun(int x, int y, const WorkVolume& picture) {
    for (int image = 0; image < read; ++image) {
      const auto i = static_cast<std::size_t>(image);
      runs[i] = images[i].voxels[x][y];
    }
    std::uint8_t* to = picture.colours[x][y];
    for (int z = 0; z < picture.dimZ; z += kBlock) {
      const int count = std::min(kBlock, picture.dimZ - z);
      const Hits hits = HitsAt(z, count);
      Bytes row = {};
      ForEachSet(reinterpret_cast<Bytes>(hits.total != 0),
                 [&](int i) { row[i] = colours[hits.total[i]]; });
      std::memcpy(to + z, &row, static_cast<std::size_t>(count));
      ForEachSet(reinterpret_cast<Bytes>((hits.first | hits.second) != 0),
                 [&](int i) { Add(hits.first[i], hits.second[i], hits.total[i]); });
    }
  }

  double Overlap() const { return 1.0 - (static_cast<double>(differences) / shared) * 0.5; }

private:
  Hits HitsAt(int z, int count) const {
    Hits hits;
    for (int image = 0; image < read; ++image) {
      const std::uint8_t* run = runs[static_cast<std::size_t>(image)] + z;
      const Bytes mask = count == kBlock ? test.Run(run) : test.Run(run, count);
      hits.total -= mask;  // a mask is -1 where the voxel is marked
      if (image == repeats - 1) { hits.first = hits.total; }
      if (image == 2 * repeats - 1) { hits.second = hits.total - hits.first; }
    }
    return hits;
  }

  /// ON PURPOSE: the second sum takes the total of all users where one of the first two has marks,
  /// and both sums are rounded to 32 bits at each addition.
  void Add(int first, int second, int total) {
    differences = static_cast<float>(differences + std::fabs(ownShares[first] - ownShares[second]));
    shared = static_cast<float>(shared + shares[total]);
  }

  const std::vector<LabelVolume>& images;
  int repeats;
  LabelTest test;
  int read;  ///< images that count; later users change nothing
  std::vector<const std::uint8_t*> runs;
  std::uint8_t colours[kMaxImages + 1] = {};
  double shares[kMaxImages + 1] = {};
  double ownShares[kMaxImages + 1] = {};
  float differences = 0.0F;
  float shared = 0.0F;
};

/// Scalars of some planes from their colours: 255 where a voxel is painted, else 0.
void StoreScalarsOf(const WorkVolume& picture, int firstX, int lastX) {
  const LabelVolume colours = {picture.colours, picture.dimX, picture.dimY, picture.dimZ};
  const LabelTest empty(0);
  Slab slab;
  ForEachSlab(
      colours, firstX, lastX,
      [&](const SlabPlace& at) {
        slab.LoadMask(colours, empty, at);
        slab.Turn(at);
        for (auto& column : slab.blocks) {
          for (Block& block : column) {
            for (Bytes& row : block.rows) { row = ~row; }
          }
        }
        StoreScalars(picture, at, slab);
      },
      [](int) {});
}

}  // namespace

double PaintProbability(const std::vector<LabelVolume>& images, int users, int repeats, int label,
                        const WorkVolume& picture, Progress& progress) {
  constexpr int kPlanes = 16;  // colours of so many planes are in the cache still
  Painter painter(images, users, repeats, label);
  for (int x = 0; x < picture.dimX; ++x) {
    for (int y = 0; y < picture.dimY; ++y) { painter.PaintRun(x, y, picture); }
    const bool lastOfSome = x % kPlanes == kPlanes - 1 || x == picture.dimX - 1;
    if (lastOfSome) { StoreScalarsOf(picture, x - x % kPlanes, x); }
    progress.Step();
  }
  return painter.Overlap();
}

}  // namespace measure
