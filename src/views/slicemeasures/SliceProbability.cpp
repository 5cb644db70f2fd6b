#include "views/slicemeasures/SliceProbability.h"

#include <cmath>

namespace measure {

void CountRepeats(const std::vector<LabelSlice>& slices, int users, int repeats, int label,
                  int width, int height, UserCounts& counts) {
  for (int user = 0; user < users; ++user) {
    for (int i = 0; i < width; ++i) {
      for (int j = 0; j < height; ++j) { counts[i][j][user] = 0; }
    }
    for (int repeat = 0; repeat < repeats; ++repeat) {
      const LabelSlice& slice = slices[static_cast<std::size_t>(user * repeats + repeat)];
      for (int i = 0; i < width; ++i) {
        for (int j = 0; j < height; ++j) { counts[i][j][user] += slice.Bears(label, i, j) ? 1 : 0; }
      }
    }
  }
}

double AgreementWithin(const UserCounts& counts, int user, int repeats, int width, int height,
                       Picture& result) {
  const std::int32_t step = kCertain / repeats;
  double sum = 0.0;
  int marked = 0;
  for (int i = 0; i < width; ++i) {
    for (int j = 0; j < height; ++j) {
      const std::int32_t count = counts[i][j][user];
      result[i][j] = count * step;
      sum += static_cast<double>(count) / repeats;
      marked += count != 0 ? 1 : 0;
    }
  }
  return sum / marked;
}

double AgreementBetween(const UserCounts& counts, int users, int repeats, int width, int height,
                        Picture& result) {
  const std::int32_t step = kCertain / (repeats * users);
  double differences = 0.0;
  double shares = 0.0;
  for (int i = 0; i < width; ++i) {
    for (int j = 0; j < height; ++j) {
      const double a = counts[i][j][0];
      const double b = counts[i][j][1];
      result[i][j] = step * (counts[i][j][0] + counts[i][j][1]);
      differences += std::fabs(a / repeats - b / repeats);
      shares += (a + b) / (2 * repeats);
    }
  }
  return 1.0 - (differences / shares) * 0.5;
}

}  // namespace measure
