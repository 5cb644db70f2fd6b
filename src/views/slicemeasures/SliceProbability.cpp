#include "views/slicemeasures/SliceProbability.h"

#include <cmath>
#include <cstddef>

namespace measure {

namespace {

template <class Visit>
void ForEachPixel(SliceSize size, Visit visit) {
  for (int i = 0; i < size.width; ++i) {
    for (int j = 0; j < size.height; ++j) { visit(i, j); }
  }
}

}  // namespace

void CountUsers(const RepeatedSlices& study, int label, SliceSize size, UserCounts& counts) {
  ForEachPixel(size, [&](int i, int j) {
    auto slice = study.slices.begin();
    for (int user = 0; user < study.users; ++user) {
      int count = 0;
      for (int repeat = 0; repeat < study.repeats; ++repeat, ++slice) {
        count += slice->Bears(label, i, j) ? 1 : 0;
      }
      counts[i][j][user] = count;
    }
  });
}

double PaintOneUser(const UserCounts& counts, int user, int repeats, SliceSize size,
                    Picture& result) {
  double sum = 0.0;
  int marked = 0;
  ForEachPixel(size, [&](int i, int j) {
    const int count = counts[i][j][user];
    result[i][j] = count * (kFullProbability / repeats);
    sum += static_cast<double>(count) / repeats;
    marked += count != 0 ? 1 : 0;
  });
  return sum / marked;
}

double PaintTwoUsers(const UserCounts& counts, int users, int repeats, SliceSize size,
                     Picture& result) {
  const std::int32_t step = kFullProbability / (repeats * users);
  const double all = repeats;
  double differences = 0.0;
  double sums = 0.0;
  ForEachPixel(size, [&](int i, int j) {
    const int first = counts[i][j][0];
    const int second = counts[i][j][1];
    result[i][j] = step * (first + second);
    differences += std::abs(first / all - second / all);
    sums += (first + second) / (2.0 * all);
  });
  return 1.0 - differences / sums * 0.5;
}

}  // namespace measure
