#include "ui/CompareCommands.h"

#include "ui/Fields.h"
#include "ui/MainUI.h"
#include "ui/Modal.h"
#include "view3d/Window3D.h"
#include "view3d/volumemeasures/TableFile.h"

#include <FL/Fl_Check_Button.H>
#include <FL/Fl_Choice.H>
#include <FL/Fl_Input.H>
#include <FL/Fl_Output.H>
#include <FL/Fl_Round_Button.H>

#include <cstdio>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr char kExportTitle[] = "Select the export file name";

std::string PairLine(const MainUI& ui, int first, int second) {
  return std::string(EntryText(ui.compareImage1Choice, first)) + " <-> " +
         EntryText(ui.compareImage1Choice, second) + "\n";
}

/// Queues pairs up to the rows of the comparison table; says how many found no room.
void Queue(MainUI& ui, const std::vector<std::pair<int, int>>& pairs) {
  std::string text = ui.comparePairsOutput->value();
  std::size_t queued = 0;
  for (const auto& [first, second] : pairs) {
    if (ui.comparePairCount >= kMaxComparedPairs) { break; }
    int* pair = ui.comparePairs[ui.comparePairCount++];
    pair[0] = first;
    pair[1] = second;
    text += PairLine(ui, first, second);
    ++queued;
  }
  ui.comparePairsOutput->value(text.c_str());
  if (queued == pairs.size()) { return; }
  Refuse(("The list holds at most 200 pairs: " + std::to_string(pairs.size() - queued) + " of " +
          std::to_string(pairs.size()) + " were left out")
             .c_str());
}

void QueueAll(MainUI& ui, bool inverse) {
  if (ui.RefusedWhileRunning()) { return; }
  const int images = ui.compareImage1Choice->size() - 1;  // the end mark is no entry
  std::vector<std::pair<int, int>> pairs;
  for (int i = 0; i < images; ++i) {
    for (int j = i + 1; j < images; ++j) { pairs.emplace_back(inverse ? j : i, inverse ? i : j); }
  }
  if (!pairs.empty()) { Queue(ui, pairs); }
}

}  // namespace

void MainUI::AddComparePair() {
  if (RefusedWhileRunning()) { return; }
  Queue(*this, {{ChosenIndex(compareImage1Choice), ChosenIndex(compareImage2Choice)}});
}

void MainUI::AddAllPairs() { QueueAll(*this, false); }
void MainUI::AddAllPairsInverse() { QueueAll(*this, true); }

void OnCompareCompute(MainUI& ui) {
  if (ui.RefusedWhileRunning()) { return; }
  if (ui.compareAlwaysWriteButton->value() == 0) {
    ui.window3D->CompareData(nullptr);
    return;
  }
  auto name = ChooseFile(kExportTitle);
  if (name) { ui.window3D->CompareData(name->data()); }
}

void OnCompareExport(MainUI& ui) {
  auto name = ChooseFile(kExportTitle);
  if (!name) { return; }
  // ON PURPOSE: the name also goes into the dialog for grey images.
  ui.greyFileNameInput->value(name->c_str());
  ui.window3D->ExportCompareTable(name->data());
}

void OnCompareSurfaceHisto(MainUI& ui) {
  if (ui.RefusedWhileRunning()) { return; }
  auto name = ChooseFile(kExportTitle);
  if (name) { ui.window3D->ComputeSurfaceHistogram(name->data()); }
}

void OnCompareSurfaceHistoCheck(MainUI& ui) {
  if (ui.compareSurfaceHistoCheck->value() == 0) { return; }
  const auto chosen = ChooseFile(kExportTitle);
  if (!chosen) { return; }  // the box stays set
  const std::string name = tables::WithExtension(*chosen);
  if (name.size() >= sizeof ui.window3D->histoFileName) {
    Refuse("The name of a file may have at most 299 characters");
    return;
  }
  std::snprintf(ui.window3D->histoFileName, sizeof ui.window3D->histoFileName, "%s", name.c_str());
}

void OnCompareClear(MainUI& ui) {
  if (ui.RefusedWhileRunning()) { return; }
  ui.comparePairCount = 0;
  ui.comparePairsOutput->value("");
}

void OnConfusionMatrix(MainUI& ui) {
  auto name = ChooseFile("Select a File");
  if (name) { ui.window3D->ComputeConfusionMatrix(name->data()); }
}
