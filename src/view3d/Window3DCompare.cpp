// Window3D: the batch over all queued pairs, and its export.
#include "ui/MainUI.h"
#include "ui/PanelProgress.h"
#include "ui/StudyChecks.h"
#include "view3d/CommandSupport.h"
#include "view3d/CompareSupport.h"
#include "view3d/Window3D.h"
#include "view3d/Window3DWork.h"
#include "view3d/volumemeasures/CompareTable.h"
#include "view3d/volumemeasures/PairComparison.h"
#include "view3d/volumemeasures/Shell.h"
#include "view3d/volumemeasures/SurfaceHistogram.h"
#include "view3d/volumemeasures/TableFile.h"
#include "view3d/volumemeasures/VolumeHaussdorf.h"

#include <FL/Fl_Check_Button.H>
#include <FL/Fl_Output.H>
#include <FL/Fl_Round_Button.H>

#include <cstdio>
#include <iostream>

namespace {

measure::CompareColumns ColumnsOf(const MainUI& ui) {
  return {ui.compareOverlayCheck->value() != 0, ui.compareHaussdorfCheck->value() != 0,
          ui.compareSurfaceDistCheck->value() != 0};
}

/// One line more in a column of the results window.
void AppendLine(Fl_Output* column, float value) {
  char line[64];
  std::snprintf(line, sizeof line, "%f\n", static_cast<double>(value));
  column->value((std::string(column->value()) + line).c_str());
}

}  // namespace

void Window3D::CompareOverlay(int index, const VoxData& first, const VoxData& second) {
  Progress silent;
  measure::SetOverlap(compareRecords[index], measure::CountOverlap(first.Labels(), second.Labels(),
                                                                   ui->currentLabel, silent));
  PrintWord("Overlay result Image #" + std::to_string(index + 1) + " finished");
}

void Window3D::CompareSurfaces(int index, VoxData& first, const VoxData& second, int firstSlot,
                               FloatList& list) {
  PrintWord("Computing Surface...");
  TakeWorkingSizes(*this, *ui->images[0]);
  Progress silent;
  measure::SaveLabels(first.Labels(), savedLabels, silent);
  {
    AlteredLabels altered(*this, first);
    measure::ReduceToShell(savedLabels, ui->currentLabel, measure::ShellRule::ZeroNeighbour,
                           first.EditableLabels(), silent);
    ComputeDanielsson3D(firstSlot);
    PrintWord("step 1");
  }
  list.Clear();
  PrintWord("computing....");
  measure::SetSurface(compareRecords[index],
                      measure::AppendSignedDistances(first.Labels(), second.Labels(),
                                                     ui->currentLabel, Field(), list));
}

void Window3D::CompareHistogram(bool listIsBuilt, int firstSlot, int secondSlot, FloatList& list) {
  if (!listIsBuilt) {
    PrintWord("Computing Surface...");
    TakeWorkingSizes(*this, *ui->images[0]);
    SignedDistances(firstSlot, secondSlot, measure::ShellRule::ZeroNeighbour, list, true);
    PrintWord("Computing Surface reverse...");
    SignedDistances(secondSlot, firstSlot, measure::ShellRule::ZeroNeighbour, list, false);
  }
  list.sorted = false;
  list.Sort();
  PrintWord("Nb point: " + std::to_string(list.Size()));
  const measure::HistogramTable table{histogramValue, histogramCount, histogramLast};
  if (!measure::BuildBatchHistogram(list, table)) {
    std::cerr << "The surface histogram has more than 20,000 distinct distances." << std::endl;
  }
}

void Window3D::CompareHaussdorf(int index, const VoxData& first, const VoxData& second,
                                int firstSlot, int secondSlot) {
  const int label = ui->currentLabel;
  Progress silent;
  PrintWord("Starting HaussDorf...");
  TakeWorkingSizes(*this, first);
  ComputeDanielsson3D(firstSlot);
  const float h2 = measure::LargestDistance(second.Labels(), label, Field(), 0, dimX - 1, silent);
  PrintWord("Starting Danielsson 2...");
  ComputeDanielsson3D(secondSlot);
  const float h1 = measure::LargestDistance(first.Labels(), label, Field(), 0, dimX - 1, silent);
  CompareRecord& record = compareRecords[index];
  measure::SetHaussdorf(record, h1, h2);
  AppendLine(ui->resultsHauss1Column, record.haussdorf1);
  AppendLine(ui->resultsHauss2Column, record.haussdorf2);
  AppendLine(ui->resultsHaussDistColumn, record.haussdorfDistance);
  ui->HideProgress();
}

void Window3D::WriteCompared(int index, const std::string& name) {
  PrintWord("Write File #" + std::to_string(index + 1));
  const CompareRecord& record = compareRecords[index];
  if (ui->compareSurfaceHistoCheck->value() != 0) {
    const measure::HistogramTable table{histogramValue, histogramCount, histogramLast};
    // ON PURPOSE: the last entry of the table is not written.
    const std::string rows =
        measure::HistogramRows(table, histogramLast - 1, record.name1, record.name2);
    if (!tables::Append(histoFileName, rows)) { ReportUnwritten(*ui, histoFileName); }
  }
  const measure::CompareColumns columns = ColumnsOf(*ui);
  const std::string heading = index == 0 ? measure::CompareHeading(columns) : "";
  if (!tables::Append(name, heading + measure::CompareRow(record, columns))) {
    ReportUnwritten(*ui, name);
  }
}

void Window3D::CompareData(char* fileName) {
  const RunningCommand running(*ui);
  if (running.Refused() || !CanCompareQueue(*ui)) { return; }
  const std::string name = fileName != nullptr ? tables::WithExtension(fileName) : "";
  const bool write = ui->compareAlwaysWriteButton->value() != 0 && fileName != nullptr;
  FloatList list;
  PrintWord("nb compare" + std::to_string(ui->comparePairCount));
  for (int row = 0; row < ui->comparePairCount; ++row) {
    const int firstSlot = ui->comparePairs[row][0];
    const int secondSlot = ui->comparePairs[row][1];
    VoxData& first = *ui->images[firstSlot];
    const VoxData& second = *ui->images[secondSlot];
    const measure::CompareColumns columns = ColumnsOf(*ui);
    PrintWord(std::to_string(firstSlot) + "<->" + std::to_string(secondSlot));
    NamePair(*this, row);
    if (columns.overlay) { CompareOverlay(row, first, second); }
    if (columns.surface) { CompareSurfaces(row, first, second, firstSlot, list); }
    if (ui->compareSurfaceHistoCheck->value() != 0) {
      CompareHistogram(columns.surface, firstSlot, secondSlot, list);
    }
    if (columns.haussdorf) { CompareHaussdorf(row, first, second, firstSlot, secondSlot); }
    if (write) { WriteCompared(row, name); }
  }
  PrintWord("That's finished !!!!");
}

void Window3D::ExportCompareTable(char* fileName) {
  const std::string name = tables::WithExtension(fileName);
  std::string table;
  std::string bins;
  for (int row = 0; row < ui->comparePairCount; ++row) {
    PrintWord("Write File #" + std::to_string(row + 1));
    if (row > 0) { continue; }  // ON PURPOSE: an exported table holds the first pair alone
    table = measure::ExportHeading() + measure::ExportRow(compareRecords[row]);
    bins = measure::BinHeading() + measure::BinRow(compareRecords[row]);
  }
  if (ui->compareSurfaceHistoCheck->value() != 0 && !tables::Replace(histoFileName, bins)) {
    ReportUnwritten(*ui, histoFileName);
  }
  if (!tables::Replace(name, table)) { ReportUnwritten(*ui, name); }
  PrintWord("File correctly exported");
}
