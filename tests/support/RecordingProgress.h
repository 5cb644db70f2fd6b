// Writes down what a kernel reports, in its order.
#pragma once

#include "base/Progress.h"

#include <string>
#include <vector>

class RecordingProgress : public Progress {
public:
  int steps = 0;
  std::vector<std::string> messages;
  std::string printed;  ///< every line with its line end

  void Step() override { ++steps; }
  void ShowMessage(const char* text) override { messages.emplace_back(text); }
  void Print(const char* line) override { printed.append(line).append("\n"); }
};
