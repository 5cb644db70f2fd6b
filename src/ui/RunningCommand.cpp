// RunningCommand: commands inside one another.
#include "ui/MainUI.h"
#include "ui/Modal.h"
#include "view3d/PutAside.h"

namespace {

constexpr int kMostInsideOneAnother = 4;

}  // namespace

RunningCommand::RunningCommand(MainUI& owner) : ui(owner) {
  ++ui.runningCommands;
  if (ui.runningCommands == 1) { return; }
  if (ui.runningCommands > kMostInsideOneAnother) {
    refused = true;
    Refuse("Too many commands are running: wait until one has ended");
    return;
  }
  outer = std::make_unique<PutAside>(ui);
  if (!outer->Complete()) {
    refused = true;
    Refuse("There is no memory for a further command while one is running");
  }
}

RunningCommand::~RunningCommand() {
  outer.reset();
  --ui.runningCommands;
  if (ui.runningCommands == 0 && ui.quitRequested) { ui.Quit(); }
}

bool MainUI::RefusedWhileRunning() const {
  if (runningCommands == 0) { return false; }
  Refuse("A command is running: wait until it has ended");
  return true;
}
