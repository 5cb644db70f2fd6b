// The three objects that live as long as the program.
#pragma once

class MainUI;
class ViewState;

extern ViewState* viewState;       ///< what every view reads and writes
extern ViewState* referenceState;  ///< stays as constructed, cursor 0, 0, 0
extern MainUI* mainUI;

inline MainUI* GetMainUI() { return mainUI; }
