#include "view3d/volumemeasures/FloatList.h"

#include <algorithm>
#include <cmath>
#include <queue>
#include <utility>

namespace {

/// Ascending; not-a-number comes last, so that the order is one.
bool Less(float a, float b) {
  if (std::isnan(a) || std::isnan(b)) { return !std::isnan(a) && std::isnan(b); }
  return a < b;
}

bool HasBothZeros(const std::vector<float>& values) {
  bool seen[2] = {false, false};
  for (const float value : values) {
    if (value == 0.0F) { seen[std::signbit(value) ? 1 : 0] = true; }
  }
  return seen[0] && seen[1];
}

/// Brings the negative values to the front as a sort does that swaps the first smallest value to
/// its place, again and again. Returns their number.
std::size_t SwapNegativesToFront(std::vector<float>& values) {
  using Entry = std::pair<float, std::size_t>;
  std::priority_queue<Entry, std::vector<Entry>, std::greater<>> smallest;
  std::size_t count = 0;
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (values[i] < 0.0F) {
      smallest.emplace(values[i], i);
      ++count;
    }
  }
  for (std::size_t place = 0; place < count; ++place) {
    // An entry is stale when its value has been swapped away.
    while (smallest.top().second < place || values[smallest.top().second] != smallest.top().first) {
      smallest.pop();
    }
    const std::size_t from = smallest.top().second;
    smallest.pop();
    std::swap(values[place], values[from]);
    if (values[from] < 0.0F) { smallest.emplace(values[from], from); }
  }
  return count;
}

}  // namespace

void FloatList::Append(float value) { values.push_back(value); }

float FloatList::GetValue(int position) const {
  if (position < 1 || position > Size()) { return 0.0F; }
  return values[static_cast<std::size_t>(position - 1)];
}

void FloatList::SetValue(int position, float value) {
  sorted = false;
  if (position < 1 || position > Size()) { return; }
  values[static_cast<std::size_t>(position - 1)] = value;
}

int FloatList::IndexOfMinimum(int position) const {
  if (position < 1 || position > Size()) { return position; }
  const auto from = values.begin() + (position - 1);
  return static_cast<int>(std::min_element(from, values.end()) - values.begin()) + 1;
}

void FloatList::Sort() {
  if (sorted) { return; }
  sorted = true;
  if (!HasBothZeros(values)) {
    std::sort(values.begin(), values.end(), Less);
    return;
  }
  // The sign of a zero shows in a table. The sort is one by swaps of the first smallest value,
  // which carry zeros about while the negative values go to the front and keep their order then.
  const auto rest = values.begin() + static_cast<std::ptrdiff_t>(SwapNegativesToFront(values));
  const auto positive =
      std::stable_partition(rest, values.end(), [](float value) { return value == 0.0F; });
  std::sort(positive, values.end(), Less);
}

void FloatList::Clear() {
  values.clear();
  sorted = false;
}
