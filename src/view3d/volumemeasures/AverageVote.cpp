#include "view3d/volumemeasures/AverageVote.h"

#include "view3d/volumemeasures/VoxelBlocks.h"

#include <algorithm>
#include <cstring>

namespace measure {

namespace {

/// Votes of all repeats on `count` voxels from z on, up to 16.
Bytes VotesAt(const std::vector<const std::uint8_t*>& runs, const LabelTest& test, int z,
              int count) {
  Bytes votes = {};
  for (const std::uint8_t* run : runs) {
    votes -= count == kBlock ? test.Run(run + z) : test.Run(run + z, count);  // -1 for a vote
  }
  return votes;
}

}  // namespace

int VotesNeeded(int repeats) { return std::max(static_cast<int>((repeats + 0.5) * 0.5), 1); }

void AverageRepeats(const std::vector<LabelVolume>& repeats, int label, const EditVolume& average,
                    Progress& progress) {
  const Bytes needed =
      AllBytes(static_cast<std::uint8_t>(VotesNeeded(static_cast<int>(repeats.size()))));
  const Bytes chosen = AllBytes(static_cast<std::uint8_t>(label));
  const LabelTest test(label);
  std::vector<const std::uint8_t*> runs(repeats.size());
  int reported = 0;
  for (int x = 0; x < average.dimX; ++x) {
    for (int y = 0; y < average.dimY; ++y) {
      std::transform(repeats.begin(), repeats.end(), runs.begin(),
                     [&](const LabelVolume& repeat) { return repeat.voxels[x][y]; });
      for (int z = 0; z < average.dimZ; z += kBlock) {
        const int count = std::min(kBlock, average.dimZ - z);
        const Bytes votes = VotesAt(runs, test, z, count);
        const Bytes voted = reinterpret_cast<Bytes>(votes >= needed) & chosen;
        std::memcpy(average.voxels[x][y] + z, &voted, static_cast<std::size_t>(count));
      }
    }
    // As many steps as there are planes along z, spread over the work.
    for (; reported < static_cast<long>(x + 1) * average.dimZ / average.dimX; ++reported) {
      progress.Step();
    }
  }
}

}  // namespace measure
