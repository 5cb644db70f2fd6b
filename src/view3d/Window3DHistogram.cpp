// Window3D: histogram of the signed distances between surfaces.
#include "ui/MainUI.h"
#include "ui/PanelProgress.h"
#include "ui/StudyChecks.h"
#include "view3d/CommandSupport.h"
#include "view3d/CompareSupport.h"
#include "view3d/Window3D.h"
#include "view3d/Window3DWork.h"
#include "view3d/volumemeasures/PairComparison.h"
#include "view3d/volumemeasures/Shell.h"
#include "view3d/volumemeasures/SurfaceHistogram.h"
#include "view3d/volumemeasures/TableFile.h"

#include <iostream>

void Window3D::SignedDistances(int source, int target, measure::ShellRule rule, FloatList& list,
                               bool emptyFirst) {
  VoxData& from = *ui->images[source];
  Progress silent;  // only the transform moves the bar, which is not shown
  measure::SaveLabels(from.Labels(), savedLabels, silent);
  {
    AlteredLabels altered(*this, from);
    measure::ReduceToShell(savedLabels, ui->currentLabel, rule, from.EditableLabels(), silent);
    ComputeDanielsson3D(source);
  }
  if (emptyFirst) { list.Clear(); }
  PrintWord("computing....");
  measure::AppendSignedDistances(from.Labels(), ui->images[target]->Labels(), ui->currentLabel,
                                 Field(), list);
}

void Window3D::BuildSignedList(int source, int target) {
  if (signedDistances == nullptr) { return; }  // no histogram is being built
  SignedDistances(source, target, measure::ShellRule::OtherValue, *signedDistances, false);
}

void Window3D::ComputeSurfaceHistogram(char* fileName) {
  const RunningCommand running(*ui);
  if (running.Refused() || !CanCompareQueue(*ui)) { return; }
  const std::string name = tables::WithExtension(fileName);
  FloatList list;
  signedDistances = &list;
  for (int row = 0; row < ui->comparePairCount; ++row) {
    const int first = ui->comparePairs[row][0];
    const int second = ui->comparePairs[row][1];
    PrintWord(std::to_string(first) + "<->" + std::to_string(second));
    NamePair(*this, row);
    PrintWord("Computing Surface...");
    TakeWorkingSizes(*this, *ui->images[0]);
    SignedDistances(first, second, measure::ShellRule::OtherValue, list, true);
    PrintWord("Computing Surface reverse...");
    SignedDistances(second, first, measure::ShellRule::OtherValue, list, false);
    list.sorted = false;
    list.Sort();
    PrintWord("Nb point along the surface : " + std::to_string(list.Size()));
    const measure::HistogramTable table{histogramValue, histogramCount, histogramLast};
    if (!measure::BuildHistogram(list, table)) {
      std::cerr << "The surface histogram has more than 20,000 distinct distances." << std::endl;
    }
    PrintWord("Number of list point: " + std::to_string(histogramLast));
    PrintWord("Write File #" + std::to_string(row + 1));
    PrintWord("dist_offset: " + std::to_string(histogramLast));
    const CompareRecord& record = compareRecords[row];
    if (!tables::Append(name,
                        measure::HistogramRows(table, histogramLast, record.name1, record.name2))) {
      ReportUnwritten(*ui, name);
    }
  }
  signedDistances = nullptr;
  PrintWord("Surface histogramme finished");
}
