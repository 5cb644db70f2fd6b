#include "view3d/volumemeasures/AverageVote.h"

#include <algorithm>
#include <cstring>

namespace measure {

int VotesNeeded(int repeats) { return std::max(static_cast<int>((repeats + 0.5) * 0.5), 1); }

void AverageRepeats(const std::vector<LabelVolume>& repeats, int label, const EditVolume& average,
                    Progress& progress) {
  const int needed = VotesNeeded(static_cast<int>(repeats.size()));
  const auto chosen = static_cast<std::uint8_t>(label);
  for (int x = 0; x < average.dimX; ++x) {
    for (int y = 0; y < average.dimY; ++y) {
      std::uint8_t* votes = average.voxels[x][y];
      std::memset(votes, 0, static_cast<std::size_t>(average.dimZ));
      for (const LabelVolume& repeat : repeats) {
        const std::uint8_t* labels = repeat.voxels[x][y];
        for (int z = 0; z < average.dimZ; ++z) {
          votes[z] = static_cast<std::uint8_t>(votes[z] + (labels[z] == label ? 1 : 0));
        }
      }
      for (int z = 0; z < average.dimZ; ++z) {
        votes[z] = votes[z] >= needed ? chosen : std::uint8_t{0};
      }
    }
  }
  for (int z = 0; z < average.dimZ; ++z) { progress.Step(); }
}

}  // namespace measure
