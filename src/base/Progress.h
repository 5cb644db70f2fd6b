// How a long computation reports to whoever waits for it.
#pragma once

/// Silent by default. The program's own subclass moves the progress panel and lets the toolkit
/// handle waiting events in Step; the tests' subclass writes the calls down.
class Progress {
public:
  Progress() = default;
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  virtual ~Progress() = default;

  virtual void Step() {}                             ///< one step of the bar
  virtual void ShowMessage(const char* /*text*/) {}  ///< the text in the panel
  virtual void Print(const char* /*line*/) {}        ///< one line on standard output
};
