#include "ui/Modal.h"

#include <FL/Fl_File_Chooser.H>
#include <FL/fl_ask.H>

namespace {

void AlertOfToolkit(const char* text) { fl_alert("%s", text); }

std::optional<std::string> ChooserOfToolkit(const char* title, const char* pattern,
                                            const char* preset) {
  const char* chosen = fl_file_chooser(title, pattern, preset != nullptr ? preset : "");
  if (chosen == nullptr || *chosen == '\0') { return std::nullopt; }
  return std::string(chosen);  // the chooser's buffer is reused at its next call
}

}  // namespace

namespace modal {

Handlers Toolkit() { return {AlertOfToolkit, ChooserOfToolkit}; }

Handlers& Current() {
  static Handlers handlers = Toolkit();
  return handlers;
}

}  // namespace modal

void Refuse(const char* text) { modal::Current().refuse(text); }

std::optional<std::string> ChooseFile(const char* title, const char* pattern, const char* preset) {
  return modal::Current().chooseFile(title, pattern, preset);
}
