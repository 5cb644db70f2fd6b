// The distinct distances between two surfaces and how often each occurs.
#pragma once

#include "base/Limits.h"
#include "view3d/volumemeasures/FloatList.h"

#include <cstdint>
#include <string>

namespace measure {

/// Borrowed tables of 20,000 entries, and the index of the last one in use, -1 for none.
struct HistogramTable {
  float* values;
  std::int32_t* counts;
  std::int32_t& last;
};

/// Counts the distinct values of a sorted list, ascending.
/// Returns: false where there are more than 20,000; the table then holds the first ones.
bool BuildHistogram(const FloatList& sorted, const HistogramTable& table);

/// The table of the batch.
///
/// ON PURPOSE: it opens with an entry 0.0 that stands for no voxel, leaves out the largest value,
/// clears its first 600 entries only, and adds to the counts that it finds.
bool BuildBatchHistogram(const FloatList& sorted, const HistogramTable& table);

/// Two lines: headings and values 0 to `last`, then names and counts.
std::string HistogramRows(const HistogramTable& table, int last, const std::string& name1,
                          const std::string& name2);

}  // namespace measure
