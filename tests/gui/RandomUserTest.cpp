// A user who does anything at any time: nothing crashes, hangs or leaks, and the program still
// measures rightly at the end.
//
// TOLVEX_RANDOM_SEED and TOLVEX_RANDOM_ACTIONS try other sequences.
#include "tests/support/RandomUser.h"

#include "tests/support/Golden.h"
#include "tests/support/Interface.h"
#include "tests/support/LastActions.h"

#include <FL/Fl_Button.H>
#include <FL/Fl_Check_Button.H>
#include <FL/Fl_Choice.H>
#include <FL/Fl_Output.H>
#include <FL/Fl_Round_Button.H>
#include <FL/Fl_Slider.H>
#include <FL/Fl_Value_Input.H>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#define FIELD(member)                                                                              \
  [](const MainUI& ui) -> Fl_Input_* {                                                             \
    return ui.member;                                                                              \
  }

namespace {

using nlohmann::json;

constexpr int kSeed = 1;
constexpr int kActions = 20000;
constexpr int kActionsBetweenMeasures = 4000;

int FromEnvironment(const char* name, int otherwise) {
  const char* text = std::getenv(name);
  return text != nullptr ? std::atoi(text) : otherwise;
}

/// Fields that the measures below write.
const std::pair<const char*, Fl_Input_* (*)(const MainUI&)> kFields[] = {
    {"nbPixelAOutput", FIELD(nbPixelAOutput)},
    {"nbPixelBOutput", FIELD(nbPixelBOutput)},
    {"intersect3DOutput", FIELD(intersect3DOutput)},
    {"unionMinusIntersectOutput", FIELD(unionMinusIntersectOutput)},
    {"overlapRatio3DOutput", FIELD(overlapRatio3DOutput)},
    {"haussdorf3DABOutput", FIELD(haussdorf3DABOutput)},
    {"haussdorf3DBAOutput", FIELD(haussdorf3DBAOutput)},
    {"haussdorf3DOutput", FIELD(haussdorf3DOutput)},
    {"sumDistInsideOutput", FIELD(sumDistInsideOutput)},
    {"nbPixelInsideOutput", FIELD(nbPixelInsideOutput)},
    {"avgInsideOutput", FIELD(avgInsideOutput)},
    {"sumDistOutsideOutput", FIELD(sumDistOutsideOutput)},
    {"nbPixelOutsideOutput", FIELD(nbPixelOutsideOutput)},
    {"sumDistOutput", FIELD(sumDistOutput)},
    {"nbPixelTotalOutput", FIELD(nbPixelTotalOutput)},
    {"avgDistOutput", FIELD(avgDistOutput)},
    {"maxInsideInput", FIELD(maxInsideInput)},
    {"maxOutsideInput", FIELD(maxOutsideInput)},
    {"medianInsideOutput", FIELD(medianInsideOutput)},
    {"medianOutsideOutput", FIELD(medianOutsideOutput)},
    {"medianOutput", FIELD(medianOutput)},
    {"firstQuartOutput", FIELD(firstQuartOutput)},
    {"thirdQuartOutput", FIELD(thirdQuartOutput)},
    {"probaOverlapOutput", FIELD(probaOverlapOutput)},
};

// Every measure, and what else writes numbers: each has to come to its end in the run.
const char* const kCommands[] = {
    "Tolvex 1.0: Overlay 2D",
    "Tolvex 1.0: Overlay Result",
    "Tolvex 1.0: Complexity",
    "Tolvex 1.0: Danielsson 2D",
    "Tolvex 1.0: Haussdorf",
    "Tolvex 1.0: Overlay Intra",
    "Tolvex 1.0: Overlay Inter",
    "Tolvex 1.0: Area/Perimeter",
    "Tolvex 1.0: Overlay 3D",
    "Tolvex 1.0: Overlay Result (volumes)",
    "Tolvex 1.0: Danielsson 3D",
    "Tolvex 1.0: Haussdorf 3D",
    "Tolvex 1.0: Surface distance",
    "Tolvex 1.0: Probability",
    "Tolvex 1.0: Update Color",
    "Tolvex 1.0: Create Average",
    "Tolvex 1.0: Confusion Matrix",
    "Tolvex 1.0: Compare Data",
    "Tolvex 1.0: Visualisation tool",
    "Tolvex 1.0: reset view",
    "Compare Data: Add",
    "Compare Data: All",
    "Compare Data: Allinv",
    "Compare Data: Compute",
    "Compare Data: Surface Histo",
    "Compare Data: Export Data",
    "Compare Data: Clear Field",
    "Plot: Plot",
    "Create List: Load Orig.",
    "Create List: Load Seg",
    "Create List: Save List",
    "Create List: Load List",
    "Create List: Load",
    "Load Grey Data: Load",
    "Load Seg Data: Load",
};

class RandomUserTest : public Interface {
protected:
  const int seed = FromEnvironment("TOLVEX_RANDOM_SEED", kSeed);
  const int actions = FromEnvironment("TOLVEX_RANDOM_ACTIONS", kActions);

  void SetUp() override {
    last_actions::Watch(("Seed " + std::to_string(seed) + ", the last actions:").c_str());
    Interface::SetUp();
  }
  void TearDown() override {
    if (HasFailure()) { last_actions::Write(); }
    Interface::TearDown();
  }

  /// Nobody reads what is printed, and it would fill the disk.
  static void DropOutput() {
    TakeOutput();
    TakeErrors();
  }

  /// Loads a study with known results into the interface as it was left, and measures it.
  void ExpectKnownNumbers() {
    const char* const name = "study_100_general";
    Ui().segHeaderSizeInput->value(256);
    LoadGoldenStudy(name);
    const json operations =
        golden::Json("volumes/" + std::string(name) + "/expected.json")["operations"];
    Measure(operations["ComputeOverlayResult3D"], Ui().overlayResult3DButton);
    Measure(operations["ComputeHaussdorf3D"], Ui().haussdorf3DButton);
    Measure(operations["ComputeSurfaceDistance"], Ui().surfaceDistanceButton);
    Measure(operations["ComputeProbabilityMap"], Ui().probabilityButton);
  }

  void Measure(const json& cases, Fl_Widget* button) {
    int compared = 0;
    for (const json& one : cases) {
      const json& inputs = one["inputs"];
      SCOPED_TRACE(button->label() + inputs.dump());
      SetInputs(inputs);
      Click(button);
      for (const auto& [name, field] : kFields) {
        if (!one["fields"].contains(name)) { continue; }
        EXPECT_EQ(field(Ui())->value(), one["fields"][name].get<std::string>()) << name;
        ++compared;
      }
    }
    EXPECT_GT(compared, 0) << button->label();
  }

  void SetInputs(const json& inputs) {
    const MainUI& ui = Ui();
    SetLabel(inputs["currentLabel"].get<int>());
    ui.image1Choice->value(inputs.value("image1Choice", 0));
    ui.image2Choice->value(inputs.value("image2Choice", 1));
    ui.imageSlider->value(0);
    ui.medianWithSurfaceCheck->value(inputs.value("medianWithSurfaceCheck", false) ? 1 : 0);
    const std::string radio = inputs.value("radio", "overlapUnionAverageRadio");
    ui.overlapUnionAverageRadio->value(radio == "overlapUnionAverageRadio" ? 1 : 0);
    ui.overlapUnionIntersectRadio->value(radio == "overlapUnionIntersectRadio" ? 1 : 0);
    ui.overlapUnionARadio->value(radio == "overlapUnionARadio" ? 1 : 0);
  }

  /// Whether one of the tables that were written holds `text`.
  static bool IsInATable(const std::string& text) {
    for (const auto& entry : std::filesystem::directory_iterator(".")) {
      if (entry.path().extension() != ".xls" || !entry.is_regular_file()) { continue; }
      std::ifstream stream(entry.path());
      const std::string table((std::istreambuf_iterator<char>(stream)), {});
      if (table.find(text) != std::string::npos) { return true; }
    }
    return false;
  }
};

TEST_F(RandomUserTest, AfterTwentyThousandActionsTheNumbersAreStillRight) {
  RandomUser user(static_cast<unsigned>(seed), Scratch(), [this] {
    Interface::TearDown();
    Interface::SetUp();
  });
  for (int i = 1; i <= actions && !HasFailure(); ++i) {
    user.Act();
    if (i % 100 == 0) { DropOutput(); }
    if (i % kActionsBetweenMeasures == 0 || i == actions) {
      user.CloseDialogs();
      ExpectKnownNumbers();
      user.ExpectANewStudy();
    }
  }
  RecordProperty("ends", user.ends);
  RecordProperty("inside", user.inside);
  RecordProperty("compared", user.compared);
  RecordProperty("sequence", golden::Hex8(last_actions::Checksum()));
  EXPECT_GT(user.ends, 0);
  EXPECT_GT(user.inside, actions / 10);
  EXPECT_GT(user.compared, actions / 200);
  for (const char* command : kCommands) { EXPECT_GT(user.completed[command], 0) << command; }
  EXPECT_TRUE(IsInATable("Number of Pixel 1")) << "a comparison of all pairs";
  EXPECT_TRUE(IsInATable("probaility")) << "a confusion matrix";
}

}  // namespace
