// The numbers of the volume measures, counted anew by plain loops.
#pragma once

#include <string>
#include <utility>
#include <vector>

class Fl_Input_;
class Fl_Widget;

/// Fields and their texts.
using Numbers = std::vector<std::pair<Fl_Input_*, std::string>>;

/// What a press of `button` at this moment has to write: of "Overlay Result", "Haussdorf 3D" and
/// "Surface distance" in a study that they take. Empty for everything else.
Numbers NumbersToCome(const Fl_Widget* button);
