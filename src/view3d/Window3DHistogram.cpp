// Window3D: histogram of the signed distances between the surfaces of each queued pair.
#include "ui/MainUI.h"
#include "view3d/CompareSupport.h"
#include "view3d/volumemeasures/SurfaceHistogram.h"
#include "view3d/volumemeasures/TableFile.h"

struct Window3D::SignedRun {
  Window3D& view;
  PairRun study;
  measure::PairMeasures measures;
  measure::DistanceCounts distances;  ///< of the direction measured last

  SignedRun(Window3D& owner, const std::string& table, const std::vector<measure::SlotPair>& pairs)
      : view(owner), study(owner, table), measures(study, pairs, measure::ShellRule::OtherValue) {}

  void Run(int row, const measure::SlotPair& pair) {
    const auto [first, second] = pair;
    CompareRecord& record = study.Record(row);
    measures.BeginPair(row);
    PrintWord(std::to_string(first) + "<->" + std::to_string(second));
    measure::SetNames(record, study.Name(first), study.Name(second));
    PrintWord("Computing Surface...");
    view.BuildSignedList(first, second);
    const measure::DistanceCounts there = std::move(distances);
    PrintWord("Computing Surface reverse...");
    view.BuildSignedList(second, first);
    Write(row, measures.BothWays(pair, there, distances));
    measures.EndPair();
  }

private:
  void Write(int row, const measure::DistanceCounts& both) {
    PrintWord("Nb point along the surface : " + std::to_string(both.total));
    const measure::HistogramTable table = study.Histogram();
    const bool complete = measure::BuildHistogram(both, measure::kOwnHistogram, table);
    PrintWord("Number of list point: " + std::to_string(table.last));
    PrintWord("Write File #" + std::to_string(row + 1));
    PrintWord("dist_offset: " + std::to_string(table.last));
    if (!complete) { return study.HistogramOverflowed(); }
    const CompareRecord& record = study.Record(row);
    study.AppendRows(measure::HistogramRows(table, table.last, record.name1, record.name2));
  }
};

void Window3D::BuildSignedList(int source, int target) {
  if (signedRun == nullptr) { return; }  // no histogram is being built
  auto reading =
      signedRun->measures.AlongSurface(source, target, measure::Origin::EitherImage, true);
  PrintWord("computing....");
  signedRun->distances = *std::move(reading.counts);
}

void Window3D::ComputeSurfaceHistogram(char* fileName) {
  const RunningCommand running(*ui);
  if (running.Refused()) { return; }
  const auto pairs = TakeQueue(*ui);
  if (!pairs) { return; }
  SignedRun run(*this, tables::WithExtension(fileName), *pairs);
  SignedRun* const outer = signedRun;
  signedRun = &run;
  int row = 0;
  for (const measure::SlotPair& pair : *pairs) { run.Run(row++, pair); }
  run.measures.LeaveArrays();
  signedRun = outer;
  PrintWord("Surface histogramme finished");
}
