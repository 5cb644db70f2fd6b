// The longer text of the Help menu.
#pragma once

class MainUI;

/// Writes the text anew and shows its window.
void ShowFirstSteps(MainUI& ui);

extern const char kFirstSteps[];
