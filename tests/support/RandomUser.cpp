#include "tests/support/RandomUser.h"

#include "VoxData/VoxData.h"
#include "tests/support/Checksums.h"
#include "tests/support/Interface.h"
#include "tests/support/LastActions.h"
#include "tests/support/NumberCheck.h"
#include "ui/Modal.h"

#include <FL/Fl_Button.H>
#include <FL/Fl_Group.H>
#include <FL/Fl_Input_.H>

#include <filesystem>

namespace {

constexpr int kMostInside = 3;       // actions inside one another
constexpr int kMostMeanwhile = 4;    // actions during one outermost one
constexpr int kPumpsPerAction = 16;  // one of so many rounds of events brings an action
constexpr int kActionsPerDraw = 4;   // drawing takes most of the time
constexpr int kMostPopupKeys = 25;
constexpr unsigned kHangSeconds = 30;
#ifdef __SANITIZE_ADDRESS__
constexpr unsigned kSlower = 2;
#else
constexpr unsigned kSlower = 1;
#endif

RandomUser* working = nullptr;

std::string NameOf(const Fl_Widget& button) {
  const std::string label = button.label() != nullptr ? button.label() : "";
  const bool lower = &button == mainUI->overlayResult3DButton;
  return std::string(button.top_window()->label()) + ": " + label + (lower ? " (volumes)" : "");
}

void Nothing(void* /*data*/) {}

}  // namespace

/// Stands before the callback of a button and counts the runs that neither were refused nor
/// cancelled.
struct RandomUser::Counted {
  RandomUser* user;
  std::string name;
  Fl_Callback* callback;
  void* data;
  bool ofThePairs;  ///< does nothing without queued pairs
  bool loads;       ///< replaces the labels of the study
};

RandomUser::RandomUser(unsigned seed, const std::string& folder, std::function<void()> restart)
    : dice(seed), files(folder), startAgain(std::move(restart)) {
  working = this;
  Fl::option(Fl::OPTION_DND_TEXT, false);  // it waits for a mouse that is not there
  Fl::add_check(OnPump, this);
  Attach();
}

RandomUser::~RandomUser() {
  Fl::remove_check(OnPump, this);
  working = nullptr;
}

void RandomUser::Attach() {
  modal::Current() = {OnAlert, OnChooser};
  mainWindow = std::make_unique<Fl_Widget_Tracker>(mainUI->mainWindow);
  counted.clear();
  for (Fl_Window* window :
       {mainUI->mainWindow, mainUI->compareWindow, mainUI->plotWindow, mainUI->createListWindow,
        mainUI->loadGreyWindow, mainUI->loadSegWindow}) {
    CountCommands(*window);
  }
  studyKnown = false;
}

void RandomUser::CountCommands(Fl_Group& group) {
  for (int i = 0; i < group.children(); ++i) {
    Fl_Widget* child = group.child(i);
    if (auto* inner = dynamic_cast<Fl_Group*>(child)) { CountCommands(*inner); }
    if (dynamic_cast<Fl_Button*>(child) == nullptr ||
        child->callback() == Fl_Widget::default_callback) {
      continue;
    }
    const bool ofThePairs = child == mainUI->compareComputeButton ||
                            child == mainUI->compareSurfaceHistoButton ||
                            child == mainUI->compareExportButton;
    const bool loads = child == mainUI->greyLoadButton || child == mainUI->segLoadButton;
    counted.push_back(std::make_unique<Counted>(
        Counted{this, NameOf(*child), child->callback(), child->user_data(), ofThePairs, loads}));
    child->callback(RunCounted, counted.back().get());
  }
}

void RandomUser::RunCounted(Fl_Widget* widget, void* counted) {
  const Counted& one = *static_cast<Counted*>(counted);
  RandomUser& user = *one.user;
  const int refusedBefore = user.refusals;
  const bool help = Fl::event_button() == FL_RIGHT_MOUSE;
  const bool empty = one.ofThePairs && mainUI->comparePairCount == 0;
  if (one.loads) { user.loading = true; }
  last_actions::Note("    runs \"%s\"%s", one.name.c_str(), help ? " for its help" : "");
  // Inside another one an image may be altered for a while; the numbers of the outer one count.
  const Numbers numbers = user.depth == 1 && !help ? NumbersToCome(widget) : Numbers();
  int& runs = user.completed[one.name];
  const int runsBefore = runs;
  one.callback(widget, one.data);
  if (help || empty || user.refusals > refusedBefore) { return; }
  if (runs++ > runsBefore) { return; }  // one inside it may have written last
  for (const auto& [field, text] : numbers) { EXPECT_EQ(field->value(), text) << one.name; }
  if (!numbers.empty()) { ++user.compared; }
}

void RandomUser::Act() {
  struct Weighted {
    int weight;
    Action action;
  };
  static const Weighted kActions[] = {
      {100, &RandomUser::PressAButton},    {140, &RandomUser::PressAMeasure},
      {80, &RandomUser::MoveASlider},      {40, &RandomUser::TypeIntoAField},
      {70, &RandomUser::OpenAMenu},        {80, &RandomUser::UseAView},
      {30, &RandomUser::ClickAnywhere},    {40, &RandomUser::PressAKey},
      {20, &RandomUser::LoadAList},        {8, &RandomUser::LoadByHand},
      {10, &RandomUser::CompareAFewPairs}, {10, &RandomUser::ComposeAList},
      {10, &RandomUser::ShowAWindow},      {10, &RandomUser::CloseAWindow},
      {5, &RandomUser::ResizeAWindow},     {1, &RandomUser::Quit},
  };
  int total = 0;
  for (const Weighted& row : kActions) { total += row.weight; }
  int left = dice.Below(total);
  const Weighted* chosen = kActions;
  while (left >= chosen->weight) { left -= (chosen++)->weight; }

  if (depth == 0) {
    last_actions::Limit(kHangSeconds * kSlower);
    ++number;
    meanwhile = 0;
    loading = false;
  } else {
    ++inside;
    ++meanwhile;
  }
  ++depth;
  (this->*chosen->action)();
  --depth;
  if (depth == 0) {
    AfterAction();
    last_actions::Limit(0);
  }
}

/// Rounds of events come while an action is under way: of the commands, and of open menus.
void RandomUser::OnPump(void* data) {
  RandomUser& user = *static_cast<RandomUser*>(data);
  if (user.pumpIsOver) {
    user.pumpIsOver = false;
    return;
  }
  if (Fl_Window* popup = Fl::grab()) {
    Fl::add_timeout(0.0, Nothing);  // the menu would wait for an event otherwise
    user.WorkPopup(popup);
    return;
  }
  user.popupKeys = 0;
  if (user.depth == 0 || user.depth > kMostInside) { return; }
  if (user.meanwhile >= kMostMeanwhile || !user.dice.OneIn(kPumpsPerAction)) { return; }
  // The toolkit calls no check inside of one, but one that is new: it calls that in this round too.
  Fl::remove_check(OnPump, data);
  Fl::add_check(OnPump, data);
  user.Act();
  user.pumpIsOver = true;
}

void RandomUser::WorkPopup(Fl_Window* popup) {
  static const int kKeys[] = {FL_Down, FL_Down,  FL_Down,  FL_Up,    FL_Right,
                              FL_Left, FL_Enter, FL_Enter, FL_Escape};
  const int key = ++popupKeys > kMostPopupKeys ? FL_Escape : kKeys[dice.Below(9)];
  Key(popup, key, "");
}

void RandomUser::OnAlert(const char* text) {
  last_actions::Note("    refused: %s", text);
  if (working != nullptr) { ++working->refusals; }
}

std::optional<std::string> RandomUser::OnChooser(const char* title, const char* pattern,
                                                 const char* /*preset*/) {
  const std::optional<std::string> answer =
      working != nullptr ? working->Answer(title, pattern != nullptr ? pattern : "") : std::nullopt;
  last_actions::Note("    chooses \"%.100s\"", answer ? answer->c_str() : "(cancel)");
  return answer;
}

std::optional<std::string> RandomUser::Answer(const std::string& title,
                                              const std::string& pattern) {
  if (pattern == "*.tlx") { loading = true; }
  if (nextAnswer) {
    const std::optional<std::string> answer = nextAnswer;
    nextAnswer.reset();
    return answer;
  }
  if (dice.OneIn(6)) {
    ++refusals;
    return std::nullopt;
  }
  if (title != "Select a File" || (pattern.empty() && dice.OneIn(2))) {
    return dice.OneIn(4) ? dice.Of(files.badNames) : "table" + std::to_string(dice.Below(20));
  }
  if (pattern.empty()) { return AnyFile(); }
  return dice.OneIn(3) ? AnyFile() : dice.Of(files.goodLists);
}

std::string RandomUser::AnyFile() {
  return dice.OneIn(3) ? dice.Of(files.badFiles) : dice.Of(files.goodVolumes);
}

void RandomUser::AfterAction() {
  if (number % kActionsPerDraw == 0) { Fl::check(); }
  if (!MainIsShown()) {
    last_actions::Note("%d: the program has ended", number);
    ++ends;
    startAgain();
    Attach();
    return;
  }
  EXPECT_EQ(mainUI->runningCommands, 0);
  EXPECT_EQ(mainUI->progressPanel->visible(), 0);
  CheckStudy();
}

/// What loads no labels changes none, whatever has run inside one another.
void RandomUser::CheckStudy() {
  Fnv64 sum;
  for (int i = 0; i < mainUI->imageCount; ++i) {
    const LabelVolume labels = mainUI->images[i]->Labels();
    for (int x = 0; labels.voxels != nullptr && x < labels.dimX; ++x) {
      for (int y = 0; y < labels.dimY; ++y) {
        sum.Add(labels.voxels[x][y], static_cast<std::size_t>(labels.dimZ));
      }
    }
  }
  if (studyKnown && !loading) { EXPECT_EQ(sum.Value(), study); }
  study = sum.Value();
  studyKnown = true;
}

void RandomUser::CloseDialogs() {
  for (Fl_Window* window : ShownWindows()) {
    if (window != mainUI->mainWindow) { window->hide(); }
  }
  Fl::pushed(nullptr);
  Fl::e_state = 0;
  Interface::Settle();
}
