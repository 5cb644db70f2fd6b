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

}  // namespace

ConfusionCounts CountConfusion(const LabelVolume& first, const LabelVolume& second) {
  ConfusionCounts counts;
  for (int x = 0; x < first.dimX; ++x) {
    for (int y = 0; y < first.dimY; ++y) {
      const std::uint8_t* runA = first.voxels[x][y];
      const std::uint8_t* runB = second.voxels[x][y];
      for (int z = 0; z < first.dimZ; ++z) {
        ++counts.joint[static_cast<std::size_t>(runA[z]) * 256 + runB[z]];
        ++counts.first[runA[z]];
        ++counts.second[runB[z]];
      }
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
