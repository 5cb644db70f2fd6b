// What the batch over image pairs and the surface histogram share.
#pragma once

#include "view3d/Window3D.h"
#include "view3d/Window3DWork.h"
#include "view3d/volumemeasures/PairComparison.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

class MainUI;

/// The queued pairs, where every one can be measured; else says why not.
/// Report: a line on the error stream for each image that the label does not occur in.
std::optional<std::vector<measure::SlotPair>> TakeQueue(const MainUI& ui);

/// One word and numbers of the console, without a blank between them.
void PrintWord(const std::string& line);

/// Says something in the status and on the error stream.
void Report(const MainUI& ui, const std::string& text);

/// Appends rows to a table; says so where that fails.
void AppendToTable(const MainUI& ui, const std::string& name, const std::string& rows);

/// The study of a run over the queued pairs: the images, work arrays and boxes of the window.
class Window3D::PairRun : public measure::CompareStudy {
public:
  /// Rows go to `tableName`; it is empty where nothing is to be written.
  PairRun(Window3D& owner, std::string tableName);

  int Label() const override;
  measure::CompareStages Stages() const override;
  std::string Name(int slot) const override;
  EditVolume Image(int slot) override;
  DistanceField Field() const override { return view.Field(); }
  measure::SavedLabels Saved() override { return view.savedLabels; }
  CompareRecord& Record(int row) override { return view.compareRecords[row]; }
  measure::HistogramTable Histogram() override;
  Progress& Report() override { return *progress; }

  void Transform(int slot, int label, Progress& shown) override;
  void BeginAltering(int slot) override;
  void EndAltering() override;
  void ShowHaussdorf(const CompareRecord& record) override;
  void AppendRows(const std::string& rows) override;
  void AppendHistogramRows(const std::string& rows) override;
  void HistogramOverflowed() override;

private:
  Window3D& view;
  MainUI& ui;
  std::string name;
  std::unique_ptr<Progress> progress;
  std::optional<AlteredLabels> altered;
};
