// Widget values in and out, as the commands need them.
#pragma once

class Fl_Choice;
class Fl_Input_;
class Fl_Valuator;

/// Writes `value` into a text field with a printf format.
void SetField(Fl_Input_* field, const char* format, double value);
void SetField(Fl_Input_* field, const char* format, int value);
void SetField(Fl_Input_* field, const char* text);

/// Place of the chosen item in the menu array; 0 when nothing is chosen.
int ChosenIndex(const Fl_Choice* choice);

/// Text of item `index` of a choice; empty when there is none.
const char* EntryText(const Fl_Choice* choice, int index);

/// Adds `text` as an entry exactly as it is named (no submenus, no escapes); an entry of equal
/// text is kept as the one entry. Returns its index.
int AddEntry(Fl_Choice* choice, const char* text);

/// Value of a slider, scrollbar or number field cut toward zero; defined for every double.
int Truncated(double value);
int Truncated(const Fl_Valuator* valuator);
