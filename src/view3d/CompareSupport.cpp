#include "view3d/CompareSupport.h"

#include "VoxData/VoxData.h"
#include "ui/Fields.h"
#include "ui/MainUI.h"
#include "ui/Modal.h"
#include "ui/PanelProgress.h"
#include "ui/StudyChecks.h"
#include "view3d/volumemeasures/TableFile.h"

#include <FL/Fl_Check_Button.H>
#include <FL/Fl_Choice.H>
#include <FL/Fl_Output.H>
#include <FL/Fl_Round_Button.H>

#include <cstdio>
#include <iostream>
#include <set>

namespace {

constexpr std::size_t kColumnText = 199;  // characters of a column of the results window

/// One line more in a column; a full column takes none.
void AppendLine(Fl_Output* column, float value) {
  char line[64];
  std::snprintf(line, sizeof line, "%f\n", static_cast<double>(value));
  const std::string text = std::string(column->value()) + line;
  if (text.size() <= kColumnText) { column->value(text.c_str()); }
}

void WarnOfMissingLabels(const MainUI& ui, const std::vector<measure::SlotPair>& pairs) {
  std::set<int> slots;
  for (const auto& [first, second] : pairs) { slots.insert({first, second}); }
  for (const int slot : slots) {
    WarnIfLabelMissing(ui, *ui.images[slot], EntryText(ui.compareImage1Choice, slot));
  }
}

}  // namespace

std::optional<std::vector<measure::SlotPair>> TakeQueue(const MainUI& ui) {
  std::vector<measure::SlotPair> pairs;
  if (ui.comparePairCount > kMaxComparedPairs) {
    Refuse("At most 200 pairs can be compared");
    return std::nullopt;
  }
  for (int row = 0; row < ui.comparePairCount; ++row) {
    for (const int slot : ui.comparePairs[row]) {
      if (!CanMeasureVolume(ui, ImageAt(ui, slot))) { return std::nullopt; }
    }
    pairs.emplace_back(ui.comparePairs[row][0], ui.comparePairs[row][1]);
  }
  WarnOfMissingLabels(ui, pairs);
  return pairs;
}

void PrintWord(const std::string& line) { std::cout << line << std::endl; }

void Report(const MainUI& ui, const std::string& text) {
  std::cerr << text << std::endl;
  ui.statusOutput->value(text.c_str());
}

void AppendToTable(const MainUI& ui, const std::string& name, const std::string& rows) {
  if (!tables::Append(name, rows)) { Report(ui, "The file cannot be written: " + name); }
}

Window3D::PairRun::PairRun(Window3D& owner, std::string tableName)
    : view(owner), ui(*owner.ui), name(std::move(tableName)),
      progress(std::make_unique<PanelProgress>(ui)) {}

int Window3D::PairRun::Label() const { return ui.currentLabel; }

measure::CompareStages Window3D::PairRun::Stages() const {
  measure::CompareStages stages;
  stages.columns = {ui.compareOverlayCheck->value() != 0, ui.compareHaussdorfCheck->value() != 0,
                    ui.compareSurfaceDistCheck->value() != 0};
  stages.histogram = ui.compareSurfaceHistoCheck->value() != 0;
  stages.write = !name.empty() && ui.compareAlwaysWriteButton->value() != 0;
  return stages;
}

std::string Window3D::PairRun::Name(int slot) const {
  // ON PURPOSE: both names of a pair come from the entries of the chooser "Image1".
  return EntryText(ui.compareImage1Choice, slot);
}

EditVolume Window3D::PairRun::Image(int slot) { return ui.images[slot]->EditableLabels(); }

measure::HistogramTable Window3D::PairRun::Histogram() {
  return {view.histogramValue, view.histogramCount, view.histogramLast};
}

void Window3D::PairRun::Transform(int slot, int label, Progress& shown) {
  view.RunTransform(slot, label, shown);
}

void Window3D::PairRun::BeginAltering(int slot) { altered.emplace(view, *ui.images[slot]); }

void Window3D::PairRun::EndAltering() {
  altered->Restored();
  altered.reset();
}

void Window3D::PairRun::ShowHaussdorf(const CompareRecord& record) {
  AppendLine(ui.resultsHauss1Column, record.haussdorf1);
  AppendLine(ui.resultsHauss2Column, record.haussdorf2);
  AppendLine(ui.resultsHaussDistColumn, record.haussdorfDistance);
  ui.HideProgress();
}

void Window3D::PairRun::AppendRows(const std::string& rows) { AppendToTable(ui, name, rows); }

void Window3D::PairRun::AppendHistogramRows(const std::string& rows) {
  AppendToTable(ui, view.histoFileName, rows);
}

void Window3D::PairRun::HistogramOverflowed() {
  ::Report(ui, "A surface histogram has more than 20,000 distinct distances and is not written");
}
