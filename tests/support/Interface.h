// Builds the real MainUI and works it as a user would: presses widgets, types, chooses files.
//
// Shape: one fresh MainUI for each test, shown and drawn. Message boxes and file choosers do not
//        block: `alerts` collects the texts, `chooserAnswers` holds what the choosers return.
#pragma once

#include "app/Globals.h"
#include "app/ViewState.h"
#include "ui/MainUI.h"

#include <FL/Fl.H>
#include <FL/Fl_Gl_Window.H>
#include <FL/Fl_Widget.H>
#include <FL/Fl_Window.H>
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

/// One pixel, 0 to 255 each.
struct Pixel {
  int red = 0;
  int green = 0;
  int blue = 0;
  bool operator==(const Pixel& other) const {
    return red == other.red && green == other.green && blue == other.blue;
  }
};

class Interface : public testing::Test {
public:
  static std::vector<std::string> alerts;                        ///< texts of message boxes
  static std::vector<std::string> chooserTitles;                 ///< title|pattern of choosers
  static std::deque<std::optional<std::string>> chooserAnswers;  ///< next answers; none: cancel

  void SetUp() override;
  void TearDown() override;

  MainUI& Ui() { return *mainUI; }

  /// Handles events until nothing is waiting, so that everything is drawn.
  static void Settle();
  /// Handles events until `done`, at most `seconds`. Returns whether it came.
  static bool WaitFor(const std::function<bool()>& done, double seconds = 10.0);

  // Mouse. Places are relative to the window that gets the event: for a widget its top window,
  // for a view (itself a window) the view.
  static void Click(Fl_Widget* widget, int button = 1);
  static void ClickAt(Fl_Window* window, int x, int y, int button = 1);
  static void Press(Fl_Window* window, int x, int y, int button = 1);
  static void DragTo(Fl_Window* window, int x, int y, int button = 1);
  static void Release(Fl_Window* window, int x, int y, int button = 1);
  static void Drag(Fl_Window* window, int fromX, int fromY, int toX, int toY, int button = 1);
  /// A key that no field eats, as the views get it. Returns whether `view` used it.
  static int Shortcut(Fl_Widget* view, int key);
  /// Runs the callback of a menu entry, "File/Load/GreyRawFile".
  static void Menu(const char* path);
  /// Moves a slider, scrollbar or roller to a value and runs its callback.
  static void Slide(Fl_Widget* valuator, double value);
  /// Chooses an entry of a choice and runs its callback.
  static void Choose(Fl_Widget* choice, int index);
  /// The first button of `window` or its groups with this label; null when there is none.
  static Fl_Widget* ButtonByLabel(Fl_Group* window, const char* label);

  /// A pixel of a view as it is drawn now; (0, 0) is the lower left.
  static Pixel PixelOf(Fl_Gl_Window* view, int x, int y);
  /// All pixels of a view as drawn now, rows from the bottom.
  static std::vector<Pixel> PixelsOf(Fl_Gl_Window* view);

  // Studies.
  /// Fills the Load Grey Data dialog by hand and presses "Load".
  void LoadGreyByHand(const std::string& path, const std::array<int, 3>& dims, int bytes,
                      int headerSize, const std::array<double, 3>& spacing = {1, 1, 1},
                      int minimum = 0, int maximum = 0);
  /// Chooses a GIPL grey file with "Select" and presses "Load".
  void LoadGreyGipl(const std::string& path);
  /// Loads a segmentation through its dialog.
  void LoadSegByHand(const std::string& path);
  /// Loads the golden study "study_100_general" by hand, and sets users and repeats as its list
  /// file would.
  void LoadGoldenStudy(const std::string& name);
  /// Sets the label that the measures work on, without a menu.
  void SetLabel(int label) { Ui().currentLabel = label; }

  /// What was written on standard output since the last call (stdout is captured in a test).
  static std::string TakeOutput();
  static std::string TakeErrors();

  /// A folder of its own for the files of the running test, emptied before it.
  static std::string Scratch();
};
