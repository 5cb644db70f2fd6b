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

namespace {

constexpr char kExportTitle[] = "Select the export file name";

std::string PairLine(const MainUI& ui, int first, int second) {
  return std::string(EntryText(ui.compareImage1Choice, first)) + " <-> " +
         EntryText(ui.compareImage1Choice, second) + "\n";
}

/// Whether `added` pairs more fit the comparison table.
bool HaveRoom(const MainUI& ui, int added) {
  if (ui.comparePairCount + added <= kMaxComparedPairs) { return true; }
  Refuse("The list holds at most 200 pairs");
  return false;
}

void Queue(MainUI& ui, int first, int second, std::string& text) {
  ui.comparePairs[ui.comparePairCount][0] = first;
  ui.comparePairs[ui.comparePairCount][1] = second;
  ++ui.comparePairCount;
  text += PairLine(ui, first, second);
}

void QueueAll(MainUI& ui, bool inverse) {
  const int images = std::max(ui.compareImage1Choice->size() - 1, 0);
  if (images < 2 || ui.RefusedWhileRunning() || !HaveRoom(ui, images * (images - 1) / 2)) {
    return;
  }
  std::string text = ui.comparePairsOutput->value();
  for (int i = 0; i < images; ++i) {
    for (int j = i + 1; j < images; ++j) { Queue(ui, inverse ? j : i, inverse ? i : j, text); }
  }
  ui.comparePairsOutput->value(text.c_str());
}

}  // namespace

void MainUI::AddComparePair() {
  if (RefusedWhileRunning() || !HaveRoom(*this, 1)) { return; }
  const int first = ChosenIndex(compareImage1Choice);
  const int second = ChosenIndex(compareImage2Choice);
  std::string text = comparePairsOutput->value();
  Queue(*this, first, second, text);
  comparePairsOutput->value(text.c_str());
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
