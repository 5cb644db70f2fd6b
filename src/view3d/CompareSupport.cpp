#include "view3d/CompareSupport.h"

#include "VoxData/VoxData.h"
#include "ui/Fields.h"
#include "ui/MainUI.h"
#include "ui/StudyChecks.h"
#include "view3d/Window3D.h"
#include "view3d/volumemeasures/PairComparison.h"

#include <FL/Fl_Choice.H>
#include <FL/Fl_Output.H>

#include <iostream>

bool CanCompareQueue(const MainUI& ui) {
  for (int i = 0; i < ui.comparePairCount; ++i) {
    for (const int slot : ui.comparePairs[i]) {
      if (!CanMeasureVolume(ui, ImageAt(ui, slot))) { return false; }
    }
  }
  return true;
}

void PrintWord(const std::string& line) { std::cout << line << std::endl; }

void ReportUnwritten(const MainUI& ui, const std::string& name) {
  const std::string text = "The file cannot be written: " + name;
  std::cerr << text << std::endl;
  ui.statusOutput->value(text.c_str());
}

void NamePair(Window3D& view, int index) {
  const MainUI& ui = *view.ui;
  const int* pair = ui.comparePairs[index];
  measure::SetNames(view.compareRecords[index], EntryText(ui.compareImage1Choice, pair[0]),
                    EntryText(ui.compareImage1Choice, pair[1]));
}
