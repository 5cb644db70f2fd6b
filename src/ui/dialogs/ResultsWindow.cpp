// Comparison Results: ten columns, filled by the batch, shown by no command.
#include "ui/Build.h"
#include "ui/Put.h"

namespace {

struct Column {
  Fl_Output* MainUI::*member;
  int x, w;
  const char* header;
};

// clang-format off
const Column kColumns[] = {
  {&MainUI::resultsImage1Column,      0, 65, "Image 1"},
  {&MainUI::resultsImage2Column,     65, 65, "Image 2"},
  {&MainUI::resultsNbPix1Column,    135, 40, "Nb Pix1"},
  {&MainUI::resultsNbPix2Column,    175, 40, "Nb Pix2"},
  {&MainUI::resultsIntersecColumn,  215, 40, "Intersec"},
  {&MainUI::resultsUnionColumn,     255, 40, "Union"},
  {&MainUI::resultsMajorColumn,     295, 55, "Major"},
  {&MainUI::resultsHauss1Column,    355, 55, "Hauss. 1"},
  {&MainUI::resultsHauss2Column,    410, 55, "Hauss. 2"},
  {&MainUI::resultsHaussDistColumn, 465, 55, "Hauss. Dist."},
};
// clang-format on

}  // namespace

void BuildResultsWindow(MainUI& ui) {
  ui.resultsWindow = BeginWindow(ui, 523, 413, "Comparison Results");
  for (const Column& column : kColumns) {
    auto* output = Put<Fl_Output>({column.x, 20, column.w, 390});
    output->type(FL_MULTILINE_OUTPUT);
    output->labelsize(12);
    output->textsize(12);
    ui.*column.member = output;
    auto* header = Put<Fl_Box>({column.x, 0, column.w, 20}, column.header);
    header->box(FL_DOWN_BOX);
    header->labelsize(10);
  }
  ui.resultsWindow->end();
}
