// The distinct distances between two surfaces and how often each occurs.
#pragma once

#include "base/Limits.h"
#include "view3d/volumemeasures/FloatList.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace measure {

/// Distinct values, ascending, each with its number. Zeros of both signs are one value, with the
/// sign of the first in the sorted list.
///
/// Shape: at most one more than a table holds; `total` counts what was left out too.
struct DistanceCounts {
  struct Entry {
    float value;
    std::int32_t count;
  };
  std::vector<Entry> entries;
  int total = 0;
  bool positiveZero = false;  ///< whether the list holds one, and a negative one
  bool negativeZero = false;
};

/// Sorts `list` and counts its distinct values.
DistanceCounts CountDistances(FloatList& list);

/// The counts of both lists, as if `second` stood behind `first` in one.
/// Returns: nothing where the lists hold zeros of both signs: which of them comes first in the
/// sorted list is decided by swaps among all values, and needs the lists themselves.
std::optional<DistanceCounts> Merged(const DistanceCounts& first, const DistanceCounts& second);

/// Borrowed tables of 20,000 entries, and the index of the last one in use, -1 for none.
struct HistogramTable {
  float* values;
  std::int32_t* counts;
  std::int32_t& last;
};

/// How a table is built from a sorted list.
struct HistogramRule {
  int clearedEntries;      ///< entries that are set to count 0 and value 999999 before
  bool opensWithZero;      ///< an entry 0.0 that stands for no voxel, ahead of the smallest value
  bool leavesOutLast;      ///< without the last value of the list
  bool addsToFoundCounts;  ///< a new entry adds to the count that it finds
};

/// The table of the button.
constexpr HistogramRule kOwnHistogram = {0, false, false, false};
/// The table of the batch. ON PURPOSE: it counts positions from 0, where lists count them from 1,
/// so that it begins with a position that does not exist and ends before the last; and it clears
/// the first 600 entries only.
constexpr HistogramRule kBatchHistogram = {600, true, true, true};

/// Builds the table. Returns: false where there are more than 20,000 distinct values; the table
/// then holds the first ones.
bool BuildHistogram(const DistanceCounts& distances, const HistogramRule& rule,
                    const HistogramTable& table);

/// Two lines: headings and values 0 to `last`, then names and counts.
std::string HistogramRows(const HistogramTable& table, int last, const std::string& name1,
                          const std::string& name2);

}  // namespace measure
