#include "view3d/volumemeasures/SurfaceHistogram.h"

#include <cstdio>

namespace measure {

namespace {

constexpr float kNoValue = 445361.0F;  // what no distance is: the value before the first
constexpr int kClearedEntries = 600;   // entries that a batch clears
constexpr float kClearedValue = 999999.0F;

/// Adds the values at positions `first` to `last` of the list.
/// `found` says what a new entry's count becomes from the one that stood there.
template <class NewCount>
bool CountValues(const FloatList& list, int first, int last, const HistogramTable& table,
                 NewCount newCount) {
  table.last = -1;
  float previous = kNoValue;
  for (int position = first; position <= last; ++position) {
    const float value = list.GetValue(position);
    if (value == previous) {
      ++table.counts[table.last];
      continue;
    }
    if (table.last + 1 >= kMaxHistogramValues) { return false; }
    ++table.last;
    table.counts[table.last] = newCount(table.counts[table.last]);
    table.values[table.last] = value;
    previous = value;
  }
  return true;
}

}  // namespace

bool BuildHistogram(const FloatList& sorted, const HistogramTable& table) {
  return CountValues(sorted, 1, sorted.Size(), table, [](std::int32_t) { return 1; });
}

bool BuildBatchHistogram(const FloatList& sorted, const HistogramTable& table) {
  for (int i = 0; i < kClearedEntries; ++i) {
    table.counts[i] = 0;
    table.values[i] = kClearedValue;
  }
  return CountValues(sorted, 0, sorted.Size() - 1, table,
                     [](std::int32_t found) { return found + 1; });
}

std::string HistogramRows(const HistogramTable& table, int last, const std::string& name1,
                          const std::string& name2) {
  std::string text = "Image 1\tImage 2\t";
  char cell[64];
  for (int i = 0; i <= last; ++i) {
    std::snprintf(cell, sizeof cell, "%f\t", static_cast<double>(table.values[i]));
    text += cell;
  }
  text += "\n" + name1 + "\t" + name2 + "\t";
  for (int i = 0; i <= last; ++i) { text += std::to_string(table.counts[i]) + "\t"; }
  return text + "\n";
}

}  // namespace measure
