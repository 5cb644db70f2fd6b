// The only windows that block: message boxes and the file chooser.
#pragma once

#include <optional>
#include <string>

/// Shows `text` as it stands in the toolkit's message box and returns when it is closed.
void Refuse(const char* text);

/// Lets the user choose a file name; nothing when cancelled. `pattern` and `preset` may be null.
std::optional<std::string> ChooseFile(const char* title, const char* pattern = nullptr,
                                      const char* preset = nullptr);

namespace modal {

/// What stands behind the two functions; a test puts its own here and back.
struct Handlers {
  void (*refuse)(const char* text);
  std::optional<std::string> (*chooseFile)(const char* title, const char* pattern,
                                           const char* preset);
};

Handlers& Current();
Handlers Toolkit();  ///< fl_alert and fl_file_chooser

}  // namespace modal
