// Reads the slice studies with known results, and holds a canvas against their steps.
#pragma once

#include "tests/support/Golden.h"
#include "views/slicemeasures/Picture.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <map>
#include <string>

namespace golden {

constexpr int kSliceSeeds[] = {21, 22, 23, 24, 25, 32};

/// What a canvas shows after a command.
struct CanvasState {
  std::map<std::string, std::string> fields;  ///< the text of output fields by their names
  int width = 0;
  int height = 0;
  int lastDirection = 0;
  bool overlayVisible = false;
  bool overlayInDrawCurrent = false;
  const measure::Picture* result = nullptr;
  const measure::Picture* mark = nullptr;
};

inline std::string PictureChecksum(const measure::Picture& picture, int width, int height) {
  Fnv64 sum;
  for (int i = 0; i < width; ++i) {
    for (int j = 0; j < height; ++j) {
      const auto value = static_cast<std::uint32_t>(picture[i][j]);
      for (unsigned shift = 0; shift < 32; shift += 8) {
        sum.Add(static_cast<std::uint8_t>(value >> shift & 0xFFU));
      }
    }
  }
  char text[17];
  std::snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(sum.Value()));
  return text;
}

/// Not-a-number may show either sign.
inline std::string WithoutSignOfNan(const std::string& text) {
  return text == "-nan" ? "nan" : text;
}

/// Holds a canvas against a step of "fresh" or of a sequence.
inline void ExpectStep(const nlohmann::json& step, const CanvasState& state) {
  for (const auto& [name, text] : step["fields"].items()) {
    const auto found = state.fields.find(name);
    if (text.is_null() || found == state.fields.end()) {  // a walk that never ends has no number
      EXPECT_TRUE(text.is_null() && step.value("endlessWalk", false)) << name;
      continue;
    }
    EXPECT_EQ(WithoutSignOfNan(found->second), WithoutSignOfNan(text.get<std::string>())) << name;
  }
  ASSERT_EQ(state.width, step["sliceWidth"].get<int>());
  ASSERT_EQ(state.height, step["sliceHeight"].get<int>());
  EXPECT_EQ(state.lastDirection, step["lastDirection"].get<int>());
  EXPECT_EQ(state.overlayVisible, step["overlayVisible"].get<bool>());
  EXPECT_EQ(state.overlayInDrawCurrent, step["overlayInDrawCurrent"].get<bool>());
  EXPECT_EQ(PictureChecksum(*state.result, state.width, state.height),
            step["result"].get<std::string>());
  if (step.contains("mark")) {
    EXPECT_EQ(PictureChecksum(*state.mark, state.width, state.height),
              step["mark"].get<std::string>());
  }
}

/// A short name of a step for failure messages.
inline std::string NameOf(const nlohmann::json& step) {
  nlohmann::json inputs = step;
  for (const char* key : {"fields", "result", "mark", "otherPrecision"}) { inputs.erase(key); }
  return inputs.dump();
}

}  // namespace golden
