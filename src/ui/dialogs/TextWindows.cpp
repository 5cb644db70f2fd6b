// Help, About and First steps: a picture, a text, a button.
#include "ui/Build.h"
#include "ui/Pictures.h"
#include "ui/Put.h"
#include "ui/dialogs/DialogParts.h"

#include <FL/Fl_Group.H>

namespace {

void PutPictureGroup(Area area, Fl_Pixmap& picture) {
  auto* group = Put<Fl_Group>(area);
  picture.label(group);
  group->align(FL_ALIGN_TOP | FL_ALIGN_INSIDE);
  group->end();
}

Fl_Output* PutText(Area area, int colour) {
  auto* text = Put<Fl_Output>(area);
  text->type(FL_MULTILINE_OUTPUT);
  text->color(static_cast<Fl_Color>(colour));
  text->labelsize(11);
  text->textsize(11);
  return text;
}

}  // namespace

void BuildHelpWindow(MainUI& ui) {
  ui.helpWindow = BeginWindow(ui, 307, 185, "TOLVEX -Help-");
  ui.helpWindow->box(FL_UP_BOX);
  PutPictureGroup({0, 0, 310, 40}, pictures::Banner());
  dialogs::PutClose({110, 160, 90, 20});
  ui.helpOutput = PutText({0, 45, 310, 110}, 51);
  ui.helpOutput->box(FL_THIN_DOWN_BOX);
  ui.helpOutput->selection_color(47);
  ui.helpWindow->end();
}

void BuildAboutWindow(MainUI& ui) {
  ui.aboutWindow = BeginWindow(ui, 414, 313, "About");
  PutPictureGroup({0, 5, 415, 270}, pictures::Product());
  dialogs::PutClose({160, 290, 105, 20});
  ui.aboutWindow->end();
}

void BuildFirstStepsWindow(MainUI& ui) {
  ui.firstStepsWindow = BeginWindow(ui, 459, 522, "Tolvex Help");
  pictures::Banner().label(Put<Fl_Box>({105, 0, 260, 55}));
  dialogs::PutClose({185, 495, 105, 20});
  ui.firstStepsOutput = PutText({0, 55, 460, 430}, 50);
  ui.firstStepsWindow->end();
}
