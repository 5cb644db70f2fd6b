// Works the whole interface by chance: presses, drags, types, loads, and all of it again while a
// command runs.
#pragma once

#include "tests/support/RandomFiles.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <vector>

class Fl_Group;
class Fl_Input;
class Fl_Widget;
class Fl_Widget_Tracker;
class Fl_Window;

/// Chance that is the same everywhere: the generator is fixed by the language, the rest is here.
class Dice {
public:
  explicit Dice(unsigned seed) : generator(seed) {}
  /// 0 to `count` - 1; 0 where there is nothing to choose from.
  int Below(int count) {
    return count > 0 ? static_cast<int>(generator() % static_cast<unsigned>(count)) : 0;
  }
  bool OneIn(int count) { return Below(count) == 0; }
  template <class Value>
  const Value& Of(const std::vector<Value>& values) {
    return values[static_cast<std::size_t>(Below(static_cast<int>(values.size())))];
  }

private:
  std::mt19937 generator;
};

class RandomUser {
public:
  /// `restart` starts the program anew after an action has ended it.
  RandomUser(unsigned seed, const std::string& folder, std::function<void()> restart);
  RandomUser(const RandomUser&) = delete;
  RandomUser& operator=(const RandomUser&) = delete;
  ~RandomUser();

  void Act();           ///< one action, and others inside it while it handles events
  void CloseDialogs();  ///< all windows but the main one; lets go of keys and buttons
  void ExpectANewStudy() { studyKnown = false; }  ///< others have loaded one

  int ends = 0;                          ///< actions that ended the program
  int inside = 0;                        ///< actions during another one
  int compared = 0;                      ///< measures whose numbers were counted anew
  std::map<std::string, int> completed;  ///< commands that came to their end, by their button

private:
  struct Counted;
  using Action = void (RandomUser::*)();

  // Actions.
  void PressAButton();
  void PressAMeasure();
  void MoveASlider();
  void TypeIntoAField();
  void OpenAMenu();
  void UseAView();
  void ClickAnywhere();
  void PressAKey();
  void LoadAList();
  void LoadByHand();
  void CompareAFewPairs();
  void ComposeAList();
  void ShowAWindow();
  void CloseAWindow();
  void ResizeAWindow();
  void Quit();

  // What they are made of.
  bool MainIsShown() const;
  std::vector<Fl_Window*> ShownWindows() const;
  template <class Widget>
  Widget* Any(Fl_Group* window = nullptr);
  void ClickInside(Fl_Widget* widget, int button);
  void Wheel(Fl_Window* window, int x, int y);
  void Type(const std::string& text);
  void Key(Fl_Window* window, int key, const char* text);
  int AnyButton();
  std::string AnyFile();

  // What the program asks and lets happen.
  static void OnPump(void* user);
  static void OnAlert(const char* text);
  static std::optional<std::string> OnChooser(const char* title, const char* pattern,
                                              const char* preset);
  std::optional<std::string> Answer(const std::string& title, const std::string& pattern);
  void WorkPopup(Fl_Window* popup);

  // The program that runs now.
  void Attach();
  void CountCommands(Fl_Group& group);
  static void RunCounted(Fl_Widget* widget, void* counted);
  void AfterAction();
  void CheckStudy();

  Dice dice;
  RandomFiles files;
  std::function<void()> startAgain;
  std::vector<std::unique_ptr<Counted>> counted;
  std::unique_ptr<Fl_Widget_Tracker> mainWindow;
  std::optional<std::string> nextAnswer;  ///< of the chooser, where the action has chosen it
  int depth = 0;
  int meanwhile = 0;  ///< actions during the outermost one that is under way
  int popupKeys = 0;
  int refusals = 0;  ///< message boxes and cancelled choosers
  int number = 0;    ///< of the outermost action
  std::uint64_t study = 0;
  bool studyKnown = false;  ///< whether `study` is the sum of the labels that are loaded
  bool loading = false;     ///< whether the action under way may replace them
  bool pumpIsOver = false;
};
