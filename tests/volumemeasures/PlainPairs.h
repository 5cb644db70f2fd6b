// The batch over image pairs and the surface histogram as plain loops: every transform is run for
// every pair, every list is kept and sorted by swaps.
//
// The reference for the tests and for the benchmark's ratios.
#pragma once

#include "tests/support/PlainDistanceTransform.h"
#include "tests/support/TestField.h"
#include "tests/support/TestVolume.h"
#include "tests/volumemeasures/PlainVolumes.h"
#include "view3d/volumemeasures/CompareRecord.h"
#include "view3d/volumemeasures/DistanceTransform.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace plain {

struct Boxes {
  bool overlay = false;
  bool haussdorf = false;
  bool surface = false;
  bool histogram = false;
  bool write = true;
};

/// Labels are 0 to 255; names are the images' numbers.
class Pairs {
public:
  std::string printed;
  std::string table;
  std::string histogramTable;
  std::vector<float> histogramValue = std::vector<float>(20000);
  std::vector<std::int32_t> histogramCount = std::vector<std::int32_t>(20000);
  std::int32_t histogramLast = -1;

  Pairs(std::vector<TestVolume*> volumes, int wanted, const measure::VoxelSize& voxel)
      : images(std::move(volumes)), label(wanted), size(voxel), field(images[0]->Labels()),
        memory(std::calloc(280, sizeof(std::int32_t[280][280])), std::free) {}

  const TestField& Field() const { return field; }
  std::int32_t (*Saved())[280][280] { return static_cast<std::int32_t(*)[280][280]>(memory.get()); }

  void Compare(const std::vector<std::pair<int, int>>& pairs, const Boxes& boxes) {
    Print("nb compare" + std::to_string(pairs.size()));
    for (std::size_t i = 0; i < pairs.size(); ++i) { ComparePair(i, pairs[i], boxes); }
    Print("That's finished !!!!");
  }

  void Histogram(const std::vector<std::pair<int, int>>& pairs) {
    for (std::size_t i = 0; i < pairs.size(); ++i) {
      const auto [first, second] = pairs[i];
      Print(std::to_string(first) + "<->" + std::to_string(second));
      Print("Computing Surface...");
      BuildSignedList(first, second, false, true);
      Print("Computing Surface reverse...");
      BuildSignedList(second, first, false, false);
      SortBySwaps();
      Print("Nb point along the surface : " + std::to_string(list.size()));
      float previous = 445361.0F;
      histogramLast = -1;
      for (const float value : list) {
        if (value == previous) {
          ++histogramCount[At(histogramLast)];
        } else {
          ++histogramLast;
          histogramCount[At(histogramLast)] = 1;
          histogramValue[At(histogramLast)] = value;
          previous = value;
        }
      }
      Print("Number of list point: " + std::to_string(histogramLast));
      Print("Write File #" + std::to_string(i + 1));
      Print("dist_offset: " + std::to_string(histogramLast));
      WriteHistogram(first, second, histogramLast);
    }
    Print("Surface histogramme finished");
  }

private:
  static std::size_t At(int index) { return static_cast<std::size_t>(index); }
  TestVolume& Image(int slot) const { return *images[At(slot)]; }
  void Print(const std::string& line) { printed += line + "\n"; }

  template <class... Values>
  static void Add(std::string& text, const char* format, Values... values) {
    char cells[400];
    std::snprintf(cells, sizeof cells, format, values...);
    text += cells;
  }

  void Transform(int slot) {
    ComputeDistanceTransform(Image(slot).Labels(), label, size, field.View());
    Print("starting forward scan");
    Print("starting backward scan");
  }

  void TransformShell(int slot, bool zeroOnly) {
    Save(Image(slot).Labels(), Saved());
    Shell(Saved(), label, zeroOnly, Image(slot).Editable());
    Transform(slot);
    Restore(Saved(), Image(slot).Editable());
  }

  bool IsSurface(const LabelVolume& b, int x, int y, int z) const {
    return b.Bears(label, x, y, z) &&
           (b.At(x, y, z + 1) == 0 || b.At(x, y, z - 1) == 0 || b.At(x - 1, y, z) == 0 ||
            b.At(x + 1, y, z) == 0 || b.At(x, y - 1, z) == 0 || b.At(x, y + 1, z) == 0);
  }

  /// Along the surface of target; sums go into the record.
  void WalkSurface(int source, int target, CompareRecord& r) {
    const LabelVolume a = Image(source).Labels();
    const LabelVolume b = Image(target).Labels();
    r.distanceInside = r.distanceOutside = 0.0F;
    r.nbInside = r.nbOutside = 0;
    for (int x = 1; x <= b.dimX - 2; ++x) {
      for (int y = 1; y <= b.dimY - 2; ++y) {
        for (int z = 1; z <= b.dimZ - 2; ++z) {
          if (!IsSurface(b, x, y, z)) { continue; }
          const float d = field.View().Length(x, y, z);
          if (a.Bears(label, x, y, z)) {
            r.distanceInside += d;
            ++r.nbInside;
            list.push_back(-d);
          } else {
            r.distanceOutside += d;
            ++r.nbOutside;
            list.push_back(d);
          }
        }
      }
    }
  }

  void BuildSignedList(int source, int target, bool zeroOnly, bool empty) {
    TransformShell(source, zeroOnly);
    if (empty) { list.clear(); }
    Print("computing....");
    CompareRecord unused;
    WalkSurface(source, target, unused);
  }

  void SortBySwaps() {
    for (std::size_t p = 0; p + 1 < list.size(); ++p) {
      std::size_t smallest = p;
      for (std::size_t q = p + 1; q < list.size(); ++q) {
        if (list[q] < list[smallest]) { smallest = q; }
      }
      std::swap(list[p], list[smallest]);
    }
  }

  void ComparePair(std::size_t i, const std::pair<int, int>& pair, const Boxes& boxes) {
    const auto [first, second] = pair;
    Print(std::to_string(first) + "<->" + std::to_string(second));
    if (boxes.overlay) { Overlay(i, first, second); }
    if (boxes.surface) { Surface(first, second); }
    if (boxes.histogram) { Table(first, second, boxes.surface); }
    if (boxes.haussdorf) { Haussdorf(first, second); }
    if (boxes.write) { Write(i, first, second, boxes); }
  }

  void Overlay(std::size_t i, int first, int second) {
    const LabelVolume a = Image(first).Labels();
    const LabelVolume b = Image(second).Labels();
    record.nbPixel1 = record.nbPixel2 = record.intersection = 0;
    for (int z = 0; z < a.dimZ; ++z) {
      for (int x = 0; x < a.dimX; ++x) {
        for (int y = 0; y < a.dimY; ++y) {
          const bool inA = a.Bears(label, x, y, z);
          const bool inB = b.Bears(label, x, y, z);
          if (inA && inB) { ++record.intersection; }
          if (inA && !inB) { ++record.nbPixel1; }
          if (!inA && inB) { ++record.nbPixel2; }
        }
      }
    }
    Print("Overlay result Image #" + std::to_string(i + 1) + " finished");
    record.unionCount = record.nbPixel1 + record.nbPixel2;
    const double average = (record.nbPixel1 + 2.0 * record.intersection + record.nbPixel2) * 0.5;
    record.average = static_cast<float>(average);
    record.overlayMajor = static_cast<float>(record.intersection / average);
  }

  void Surface(int first, int second) {
    Print("Computing Surface...");
    TransformShell(first, true);
    Print("step 1");
    list.clear();
    Print("computing....");
    WalkSurface(first, second, record);
    const auto average = [](float sum, int count) {
      return static_cast<float>(static_cast<double>(sum) / count);
    };
    record.averageInside = average(record.distanceInside, record.nbInside);
    record.averageOutside = average(record.distanceOutside, record.nbOutside);
    record.distance = record.distanceInside + record.distanceOutside;
    record.nbBoundary = record.nbInside + record.nbOutside;
    record.averageAll = average(record.distance, record.nbBoundary);
  }

  void Table(int first, int second, bool surfaceDone) {
    if (!surfaceDone) {
      Print("Computing Surface...");
      BuildSignedList(first, second, true, true);
      Print("Computing Surface reverse...");
      BuildSignedList(second, first, true, false);
    }
    for (std::size_t entry = 0; entry < 600; ++entry) {
      histogramCount[entry] = 0;
      histogramValue[entry] = 999999.0F;
    }
    SortBySwaps();
    Print("Nb point: " + std::to_string(list.size()));
    histogramLast = -1;
    float previous = 445361.0F;
    for (std::size_t position = 0; position < list.size(); ++position) {
      const float value = position == 0 ? 0.0F : list[position - 1];
      if (value == previous) {
        ++histogramCount[At(histogramLast)];
      } else {
        ++histogramLast;
        ++histogramCount[At(histogramLast)];
        histogramValue[At(histogramLast)] = value;
        previous = value;
      }
    }
  }

  float Largest(int slot) const {
    const LabelVolume image = Image(slot).Labels();
    float largest = 0.0F;
    for (int x = 0; x < image.dimX; ++x) {
      for (int y = 0; y < image.dimY; ++y) {
        for (int z = 0; z < image.dimZ; ++z) {
          const float d = field.View().Length(x, y, z);
          if (largest < d && image.Bears(label, x, y, z)) { largest = d; }
        }
      }
    }
    return largest;
  }

  void Haussdorf(int first, int second) {
    Print("Starting HaussDorf...");
    Transform(first);
    record.haussdorf2 = Largest(second);
    Print("Starting Danielsson 2...");
    Transform(second);
    record.haussdorf1 = Largest(first);
    record.haussdorfDistance =
        record.haussdorf2 > record.haussdorf1 ? record.haussdorf2 : record.haussdorf1;
  }

  void WriteHistogram(int first, int second, int last) {
    histogramTable += "Image 1\tImage 2\t";
    for (int k = 0; k <= last; ++k) {
      Add(histogramTable, "%f\t", static_cast<double>(histogramValue[At(k)]));
    }
    Add(histogramTable, "\n%d\t%d\t", first, second);
    for (int k = 0; k <= last; ++k) { Add(histogramTable, "%d\t", histogramCount[At(k)]); }
    histogramTable += "\n";
  }

  void Write(std::size_t i, int first, int second, const Boxes& boxes) {
    const CompareRecord& r = record;
    Print("Write File #" + std::to_string(i + 1));
    if (boxes.histogram) { WriteHistogram(first, second, histogramLast - 1); }
    if (i == 0) { WriteHeading(boxes); }
    Add(table, "%d\t%d\t", first, second);
    if (boxes.overlay) {
      Add(table, "%d\t%d\t%d\t%d\t%f\t%f\t", r.nbPixel1, r.nbPixel2, r.intersection, r.unionCount,
          static_cast<double>(r.average), static_cast<double>(r.overlayMajor));
    }
    if (boxes.haussdorf) {
      Add(table, "%f\t%f\t%f\t", static_cast<double>(r.haussdorf1),
          static_cast<double>(r.haussdorf2), static_cast<double>(r.haussdorfDistance));
    }
    if (boxes.surface) {
      Add(table, "%f\t%d\t%f\t%f\t%d\t%f\t%f\t%d\t%f", static_cast<double>(r.distanceOutside),
          r.nbOutside, static_cast<double>(r.averageOutside), static_cast<double>(r.distanceInside),
          r.nbInside, static_cast<double>(r.averageInside), static_cast<double>(r.distance),
          r.nbBoundary, static_cast<double>(r.averageAll));
    }
    table += "\n";
  }

  void WriteHeading(const Boxes& boxes) {
    table += "Image 1\tImage 2\t";
    if (boxes.overlay) {
      table += "Number of Pixel 1\tNumber of Pixel 2\tIntersection\tUnion\tAverage\t"
               "Overlay Major\t";
    }
    if (boxes.haussdorf) { table += "Haussdorf 1\tHaussdorf 2\tHaussdorf Distance\t"; }
    if (boxes.surface) {
      table += "Distance outside\tNb pixel Outside\tAverage outside\tDistance inside\t"
               "Nb pixel inside\tAverage inside\tDistance\tNb boundary pixel\tAverage";
    }
    table += "\n";
  }

  std::vector<TestVolume*> images;
  int label;
  measure::VoxelSize size;
  TestField field;
  std::unique_ptr<void, decltype(&std::free)> memory;
  CompareRecord record;
  std::vector<float> list;
};

}  // namespace plain
