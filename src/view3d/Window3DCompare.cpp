// Window3D: the batch over all queued pairs, and its export.
#include "ui/MainUI.h"
#include "view3d/CompareSupport.h"
#include "view3d/volumemeasures/TableFile.h"

#include <FL/Fl_Check_Button.H>

void Window3D::CompareData(char* fileName) {
  const RunningCommand running(*ui);
  if (running.Refused()) { return; }
  const auto pairs = TakeQueue(*ui);
  if (!pairs) { return; }
  PairRun run(*this, fileName != nullptr ? tables::WithExtension(fileName) : "");
  measure::ComparePairs(run, *pairs);
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
  const auto replace = [this](const std::string& file, const std::string& text) {
    if (!tables::Replace(file, text)) { Report(*ui, "The file cannot be written: " + file); }
  };
  if (ui->compareSurfaceHistoCheck->value() != 0) { replace(histoFileName, bins); }
  replace(name, table);
  PrintWord("File correctly exported");
}
