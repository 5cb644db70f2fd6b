#include "view3d/volumemeasures/SurfaceHistogram.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace measure {

namespace {

constexpr float kClearedValue = 999999.0F;  // the value of an entry that was cleared
constexpr std::size_t kMostEntries =
    kMaxHistogramValues + 1;  // one more tells that a table is full

/// Adds `count` times `value` behind smaller ones.
void Add(float value, std::int32_t count, std::vector<DistanceCounts::Entry>& entries) {
  if (!entries.empty() && entries.back().value == value) {
    entries.back().count += count;
  } else if (entries.size() < kMostEntries) {
    entries.push_back({value, count});
  }
}

/// Puts entries into a table, one after another.
class TableWriter {
public:
  TableWriter(const HistogramRule& how, const HistogramTable& to) : rule(how), table(to) {
    const int cleared = std::min(rule.clearedEntries, kMaxHistogramValues);
    std::fill_n(table.counts, cleared, 0);
    std::fill_n(table.values, cleared, kClearedValue);
    table.last = -1;
  }

  void Add(float value, std::int32_t count) {
    if (count == 0 || full) { return; }
    if (table.last >= 0 && table.values[table.last] == value) {
      table.counts[table.last] += count;
      return;
    }
    if (table.last + 1 >= kMaxHistogramValues) {
      full = true;
      return;
    }
    ++table.last;
    std::int32_t& found = table.counts[table.last];
    found = rule.addsToFoundCounts ? found + count : count;
    table.values[table.last] = value;
  }

  bool Full() const { return full; }

private:
  const HistogramRule& rule;
  const HistogramTable& table;
  bool full = false;
};

}  // namespace

DistanceCounts CountDistances(FloatList& list) {
  list.sorted = false;
  list.Sort();
  DistanceCounts distances;
  distances.total = list.Size();
  for (int position = 1; position <= distances.total; ++position) {
    const float value = list.GetValue(position);
    Add(value, 1, distances.entries);
    if (value == 0.0F) {
      (std::signbit(value) ? distances.negativeZero : distances.positiveZero) = true;
    }
  }
  return distances;
}

std::optional<DistanceCounts> Merged(const DistanceCounts& first, const DistanceCounts& second) {
  DistanceCounts both;
  both.total = first.total + second.total;
  both.positiveZero = first.positiveZero || second.positiveZero;
  both.negativeZero = first.negativeZero || second.negativeZero;
  if (both.positiveZero && both.negativeZero) { return std::nullopt; }
  auto a = first.entries.begin();
  auto b = second.entries.begin();
  while (a != first.entries.end() || b != second.entries.end()) {
    const bool takeB =
        a == first.entries.end() || (b != second.entries.end() && b->value < a->value);
    const DistanceCounts::Entry& next = takeB ? *b++ : *a++;
    Add(next.value, next.count, both.entries);
  }
  return both;
}

bool BuildHistogram(const DistanceCounts& distances, const HistogramRule& rule,
                    const HistogramTable& table) {
  TableWriter writer(rule, table);
  if (distances.entries.empty()) { return true; }
  if (rule.opensWithZero) { writer.Add(0.0F, 1); }
  for (const DistanceCounts::Entry& entry : distances.entries) {
    const bool isLast = &entry == &distances.entries.back();
    writer.Add(entry.value, entry.count - (isLast && rule.leavesOutLast ? 1 : 0));
  }
  return !writer.Full();
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
