// How often label a of one image meets label b of another.
#pragma once

#include "base/LabelVolume.h"

#include <cstdint>
#include <string>
#include <vector>

namespace measure {

struct ConfusionCounts {
  std::vector<std::int32_t> joint = std::vector<std::int32_t>(256 * 256);  ///< a * 256 + b
  std::vector<std::int32_t> first = std::vector<std::int32_t>(256);
  std::vector<std::int32_t> second = std::vector<std::int32_t>(256);
};

ConfusionCounts CountConfusion(const LabelVolume& first, const LabelVolume& second);

/// What a table says of one image: its name, and 1 for each label that it holds.
struct TableImage {
  std::string name;
  const std::uint8_t* present;
};

/// The three tables as text, tab-separated: counts, then shares of the first image's labels, then
/// shares of the second's. Rows are labels of the second image, columns of the first.
///
/// ON PURPOSE: label 0 is always in the body, in the heading only where the first image holds it.
std::string ConfusionText(const ConfusionCounts& counts, const TableImage& first,
                          const TableImage& second);

}  // namespace measure
