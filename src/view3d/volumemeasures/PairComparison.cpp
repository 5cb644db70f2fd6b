#include "view3d/volumemeasures/PairComparison.h"

#include <cstdio>

namespace measure {

namespace {

class Comparison {
public:
  Comparison(CompareStudy& owner, const std::vector<SlotPair>& list)
      : study(owner), pairs(list), measures(owner, list, ShellRule::ZeroNeighbour) {}

  void Run() {
    Say("nb compare" + std::to_string(pairs.size()));
    for (row = 0; row < static_cast<int>(pairs.size()); ++row) { ComparePair(); }
    measures.LeaveArrays();
    Say("That's finished !!!!");
  }

private:
  void Say(const std::string& line) { study.Report().Print(line.c_str()); }
  std::string Number() const { return std::to_string(row + 1); }

  void ComparePair() {
    const auto [first, second] = pairs[static_cast<std::size_t>(row)];
    const CompareStages stages = study.Stages();
    measures.BeginPair(row);
    Say(std::to_string(first) + "<->" + std::to_string(second));
    SetNames(study.Record(row), study.Name(first), study.Name(second));
    if (stages.columns.overlay) { Overlay(first, second); }
    if (stages.columns.surface) { Surface(first, second, stages.histogram); }
    if (stages.histogram) { Histogram(first, second, stages.columns.surface); }
    if (stages.columns.haussdorf) { Haussdorf(first, second); }
    if (stages.write) { Write(stages); }
    measures.EndPair();
  }

  void Overlay(int first, int second) {
    Progress silent;
    SetOverlap(study.Record(row),
               CountOverlap(study.Image(first).Labels(), study.Image(second).Labels(),
                            study.Label(), silent));
    Say("Overlay result Image #" + Number() + " finished");
  }

  void Surface(int first, int second, bool withCounts) {
    Say("Computing Surface...");
    SurfaceReading reading = measures.AlongSurface(first, second, Origin::FirstImage, withCounts);
    Say("step 1");
    Say("computing....");
    SetSurface(study.Record(row), reading.sums);
    if (withCounts) { distances = std::move(*reading.counts); }
  }

  /// ON PURPOSE: after the stage of the surface the table holds its one direction alone.
  void Histogram(int first, int second, bool surfaceDone) {
    if (!surfaceDone) {
      Say("Computing Surface...");
      const auto there = measures.AlongSurface(first, second, Origin::EitherImage, true);
      Say("computing....");
      Say("Computing Surface reverse...");
      const auto back = measures.AlongSurface(second, first, Origin::EitherImage, true);
      Say("computing....");
      distances = measures.BothWays({first, second}, *there.counts, *back.counts);
    }
    Say("Nb point: " + std::to_string(distances.total));
    tableComplete = BuildHistogram(distances, kBatchHistogram, study.Histogram());
    if (!tableComplete) { study.HistogramOverflowed(); }
  }

  void Haussdorf(int first, int second) {
    Say("Starting HaussDorf...");
    const float secondToFirst = measures.Farthest(first, second);
    Say("Starting Danielsson 2...");
    const float firstToSecond = measures.Farthest(second, first);
    SetHaussdorf(study.Record(row), firstToSecond, secondToFirst);
    study.ShowHaussdorf(study.Record(row));
  }

  void Write(const CompareStages& stages) {
    Say("Write File #" + Number());
    const CompareRecord& record = study.Record(row);
    if (stages.histogram && tableComplete) {
      const HistogramTable table = study.Histogram();
      // ON PURPOSE: the last entry of the table is not written.
      study.AppendHistogramRows(HistogramRows(table, table.last - 1, record.name1, record.name2));
    }
    const std::string heading = row == 0 ? CompareHeading(stages.columns) : "";
    study.AppendRows(heading + CompareRow(record, stages.columns));
  }

  CompareStudy& study;
  const std::vector<SlotPair>& pairs;
  PairMeasures measures;
  DistanceCounts distances;
  bool tableComplete = true;
  int row = 0;
};

}  // namespace

void ComparePairs(CompareStudy& study, const std::vector<SlotPair>& pairs) {
  Comparison(study, pairs).Run();
}

void SetNames(CompareRecord& record, const std::string& first, const std::string& second) {
  std::snprintf(record.name1, sizeof record.name1, "%s", first.c_str());
  std::snprintf(record.name2, sizeof record.name2, "%s", second.c_str());
}

void SetOverlap(CompareRecord& record, const VolumeOverlap& overlap) {
  record.nbPixel1 = overlap.onlyA;
  record.nbPixel2 = overlap.onlyB;
  record.intersection = overlap.common;
  record.unionCount = overlap.onlyA + overlap.onlyB;
  const double average = (overlap.onlyA + 2.0 * overlap.common + overlap.onlyB) * 0.5;
  record.average = static_cast<float>(average);
  record.overlayMajor = static_cast<float>(overlap.common / average);
}

void SetSurface(CompareRecord& record, const SurfaceDistance& distance) {
  const auto& [inside, outside] = distance;
  const auto average = [](float sum, int count) {
    return static_cast<float>(static_cast<double>(sum) / count);
  };
  record.distanceInside = inside.sum;
  record.nbInside = inside.count;
  record.averageInside = average(inside.sum, inside.count);
  record.distanceOutside = outside.sum;
  record.nbOutside = outside.count;
  record.averageOutside = average(outside.sum, outside.count);
  record.distance = inside.sum + outside.sum;
  record.nbBoundary = inside.count + outside.count;
  record.averageAll = average(record.distance, record.nbBoundary);
}

void SetHaussdorf(CompareRecord& record, float firstToSecond, float secondToFirst) {
  record.haussdorf1 = firstToSecond;
  record.haussdorf2 = secondToFirst;
  record.haussdorfDistance = secondToFirst > firstToSecond ? secondToFirst : firstToSecond;
}

}  // namespace measure
