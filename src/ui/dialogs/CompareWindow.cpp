// Compare Data: the list of pairs and what is computed for each.
#include "ui/Build.h"
#include "ui/CompareCommands.h"
#include "ui/Put.h"

#include <FL/Fl_Check_Button.H>
#include <FL/Fl_Choice.H>
#include <FL/Fl_Round_Button.H>

namespace {

/// A button that runs one command of the window.
template <void (*Command)(MainUI&)>
void Run(Fl_Widget* widget, void* /*data*/) {
  Command(OwnerOf(widget));
}

void AddPair(MainUI& ui) { ui.AddComparePair(); }
void AddAll(MainUI& ui) { ui.AddAllPairs(); }
void AddAllInverse(MainUI& ui) { ui.AddAllPairsInverse(); }

Fl_Choice* PutImageChoice(Area area, const char* label) {
  auto* choice = Put<Fl_Choice>(area, label);
  choice->labeltype(FL_EMBOSSED_LABEL);
  choice->labelsize(10);
  choice->labelcolor(208);
  choice->textsize(10);
  choice->align(FL_ALIGN_TOP);
  return choice;
}

Fl_Check_Button* PutCheck(Area area, const char* label) {
  auto* check = Put<Fl_Check_Button>(area, label);
  check->selection_color(232);
  return check;
}

Fl_Button* PutCommand(Area area, const char* label, Fl_Callback* callback) {
  return PutRound(area, label, callback, nullptr, 11);
}

}  // namespace

void BuildCompareWindow(MainUI& ui) {
  ui.compareWindow = BeginWindow(ui, 565, 339, "Compare Data");
  PutFrame({5, 290, 555, 45});
  ui.compareImage1Choice = PutImageChoice({15, 305, 195, 25}, "Image1");
  ui.compareImage2Choice = PutImageChoice({215, 305, 185, 25}, "Image2");
  ui.compareAddButton = PutCommand({500, 305, 55, 25}, "Add", Run<AddPair>);
  ui.comparePairsOutput = Put<Fl_Output>({5, 5, 425, 275});
  ui.comparePairsOutput->type(FL_MULTILINE_OUTPUT);
  ui.comparePairsOutput->labelsize(12);
  ui.comparePairsOutput->textsize(11);
  PutFrame({430, 5, 130, 275});
  // ON PURPOSE: three of the check buttons are 25 pixels wide, and their labels run on.
  ui.compareOverlayCheck = PutCheck({440, 15, 25, 25}, "Overlay");
  ui.compareHaussdorfCheck = PutCheck({440, 40, 25, 25}, "Haussdorf");
  ui.compareComputeButton = PutCommand({440, 160, 110, 25}, "Compute", Run<OnCompareCompute>);
  ui.compareSurfaceHistoButton =
      PutCommand({440, 220, 110, 25}, "Surface Histo", Run<OnCompareSurfaceHisto>);
  ui.compareExportButton = PutCommand({440, 190, 110, 25}, "Export Data", Run<OnCompareExport>);
  ui.compareSurfaceDistCheck = PutCheck({440, 65, 25, 25}, "Surface Dist.");
  ui.compareAlwaysWriteButton = Put<Fl_Round_Button>({445, 125, 90, 20}, "Always Write");
  ui.compareAlwaysWriteButton->value(1);
  ui.compareAlwaysWriteButton->labelsize(12);
  ui.compareAllButton = PutCommand({450, 305, 40, 25}, "All", Run<AddAll>);
  ui.compareAllInvButton = PutCommand({410, 305, 40, 25}, "Allinv", Run<AddAllInverse>);
  ui.compareSurfaceHistoCheck = PutCheck({440, 95, 115, 25}, "Surface Histo.");
  ui.compareSurfaceHistoCheck->callback(Run<OnCompareSurfaceHistoCheck>);
  ui.compareSurfaceHistoCheck->deactivate();  // ON PURPOSE: and nothing activates it
  PutCommand({440, 250, 110, 25}, "Clear Field", Run<OnCompareClear>);
  ui.compareWindow->end();
}
