#include "view3d/volumemeasures/ConfusionMatrix.h"

#include <cstdio>

namespace measure {

namespace {

void Append(std::string& text, const char* format, double value) {
  char cell[64];
  std::snprintf(cell, sizeof cell, format, value);
  text += cell;
}

/// Heading and rows of one table; `cell` appends the text of a pair of labels.
template <class Cell>
void AppendTable(std::string& text, const std::uint8_t* first, const std::uint8_t* second,
                 Cell cell) {
  for (int a = 0; a < 256; ++a) {
    if (first[a] == 1) { text += "\t" + std::to_string(a); }
  }
  text += "\n";
  for (int b = 0; b < 256; ++b) {
    if (b != 0 && second[b] != 1) { continue; }
    text += std::to_string(b);
    for (int a = 0; a < 256; ++a) {
      if (a == 0 || first[a] == 1) {
        cell(static_cast<std::size_t>(a), static_cast<std::size_t>(b));
      }
    }
    text += "\n";
  }
}

/// Counts the label pairs of a run, which is mostly long stretches of one pair.
void CountRun(const std::uint8_t* first, const std::uint8_t* second, int length,
              std::vector<std::int32_t>& joint) {
  int begin = 0;
  for (int z = 1; z <= length; ++z) {
    if (z < length && first[z] == first[begin] && second[z] == second[begin]) { continue; }
    joint[static_cast<std::size_t>(first[begin]) * 256 + second[begin]] += z - begin;
    begin = z;
  }
}

}  // namespace

ConfusionCounts CountConfusion(const LabelVolume& first, const LabelVolume& second) {
  ConfusionCounts counts;
  for (int x = 0; x < first.dimX; ++x) {
    for (int y = 0; y < first.dimY; ++y) {
      CountRun(first.voxels[x][y], second.voxels[x][y], first.dimZ, counts.joint);
    }
  }
  for (std::size_t a = 0; a < 256; ++a) {
    for (std::size_t b = 0; b < 256; ++b) {
      counts.first[a] += counts.joint[a * 256 + b];
      counts.second[b] += counts.joint[a * 256 + b];
    }
  }
  return counts;
}

std::string ConfusionText(const ConfusionCounts& counts, const TableImage& first,
                          const TableImage& second) {
  std::string text = second.name + " - " + first.name + "\n";
  AppendTable(text, first.present, second.present, [&](std::size_t a, std::size_t b) {
    text += "\t" + std::to_string(counts.joint[a * 256 + b]);
  });
  text += "\n\n" + first.name + " probaility\n";
  AppendTable(text, first.present, second.present, [&](std::size_t a, std::size_t b) {
    Append(text, "\t%f", static_cast<double>(counts.joint[a * 256 + b]) / counts.first[a]);
  });
  text += "\n\n" + second.name + " probaility\n";
  AppendTable(text, first.present, second.present, [&](std::size_t a, std::size_t b) {
    Append(text, "\t%f", static_cast<double>(counts.joint[a * 256 + b]) / counts.second[b]);
  });
  return text;
}

}  // namespace measure
