#include "view3d/volumemeasures/CompareTable.h"

#include <cstdio>

namespace measure {

namespace {

template <class... Values>
std::string Format(const char* format, Values... values) {
  char text[1200];
  std::snprintf(text, sizeof text, format, values...);
  return text;
}

double Wide(float value) { return static_cast<double>(value); }

std::string Names(const CompareRecord& record) {
  return Format("%s\t%s\t", record.name1, record.name2);
}

std::string OverlayCells(const CompareRecord& r) {
  return Format("%d\t%d\t%d\t%d\t%f\t%f\t", r.nbPixel1, r.nbPixel2, r.intersection, r.unionCount,
                Wide(r.average), Wide(r.overlayMajor));
}

std::string HaussdorfCells(const CompareRecord& r) {
  return Format("%f\t%f\t%f\t", Wide(r.haussdorf1), Wide(r.haussdorf2), Wide(r.haussdorfDistance));
}

std::string SurfaceCells(const CompareRecord& r) {
  return Format("%f\t%d\t%f\t%f\t%d\t%f\t%f\t%d\t%f", Wide(r.distanceOutside), r.nbOutside,
                Wide(r.averageOutside), Wide(r.distanceInside), r.nbInside, Wide(r.averageInside),
                Wide(r.distance), r.nbBoundary, Wide(r.averageAll));
}

constexpr char kNameHeading[] = "Image 1\tImage 2\t";
constexpr char kOverlayHeading[] =
    "Number of Pixel 1\tNumber of Pixel 2\tIntersection\tUnion\tAverage\tOverlay Major\t";
constexpr char kHaussdorfHeading[] = "Haussdorf 1\tHaussdorf 2\tHaussdorf Distance\t";
constexpr char kSurfaceHeading[] =
    "Distance outside\tNb pixel Outside\tAverage outside\tDistance inside\tNb pixel inside\t"
    "Average inside\tDistance\tNb boundary pixel\tAverage";

}  // namespace

std::string CompareHeading(const CompareColumns& columns) {
  std::string text = kNameHeading;
  if (columns.overlay) { text += kOverlayHeading; }
  if (columns.haussdorf) { text += kHaussdorfHeading; }
  if (columns.surface) { text += kSurfaceHeading; }
  return text + "\n";
}

std::string CompareRow(const CompareRecord& record, const CompareColumns& columns) {
  std::string text = Names(record);
  if (columns.overlay) { text += OverlayCells(record); }
  if (columns.haussdorf) { text += HaussdorfCells(record); }
  if (columns.surface) { text += SurfaceCells(record); }
  return text + "\n";
}

std::string ExportHeading() { return CompareHeading({true, true, true}); }
std::string ExportRow(const CompareRecord& record) {
  return CompareRow(record, {true, true, true});
}

std::string BinHeading() {
  return "Image 1\tImage 2\t-6.0\t-5.5\t-5.0\t-4.5\t-4\t-3.5\t-3.0\t-2.5\t-2.0\t-1.5\t-1\t-0.5\t"
         "-0.0\t0.0\t0.5\t1\t1.5\t2\t2.5\t3.0\t3.5\t4.0\t4.5\t5.0\t5.5\t6.0\n";
}

std::string BinRow(const CompareRecord& record) {
  constexpr int kFields[26] = {0,  1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 24, 12,
                               25, 24, 23, 22, 21, 20, 19, 18, 17, 16, 15, 14, 13};
  std::string text = Names(record);
  for (int column = 0; column < 26; ++column) {
    text += std::to_string(record.histogram[kFields[column]]) + (column < 25 ? "\t" : "\n");
  }
  return text;
}

}  // namespace measure
