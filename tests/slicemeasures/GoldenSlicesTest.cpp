// The slice studies with known results: single commands, and sequences on one canvas.
#include "tests/slicemeasures/SliceCanvas.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>
#include <vector>

namespace {

class GoldenSlicesTest : public testing::TestWithParam<int> {
protected:
  std::string folder = "slice_" + std::to_string(GetParam()) + "/";
  nlohmann::json study = golden::Json(folder + "slice.json");

  SliceCanvas::Images Images(const std::string& kind) {
    const auto dims = study[kind == "cube" ? "cubeDims" : "dims"].get<std::array<int, 3>>();
    SliceCanvas::Images images;
    for (const auto& file : study[kind + "s"]) {
      images.push_back(
          golden::Volume(folder + file.get<std::string>(), dims[0], dims[1], dims[2], 0));
    }
    return images;
  }
};

TEST_P(GoldenSlicesTest, EveryCommandOnAFreshCanvasIsAsKnown) {
  const SliceCanvas::Images images = Images("image");
  for (const auto& step : study["fresh"]) {
    const auto canvas = std::make_unique<SliceCanvas>(images);
    golden::ExpectStep(step, canvas->Run(step));
    if (HasFailure()) { FAIL() << golden::NameOf(step); }
  }
}

TEST_P(GoldenSlicesTest, EverySequenceOnOneCanvasIsAsKnown) {
  for (const auto& sequence : study["sequences"]) {
    const SliceCanvas::Images images = Images(sequence["images"].get<std::string>());
    const auto canvas = std::make_unique<SliceCanvas>(images);
    for (const auto& step : sequence["steps"]) {
      if (step["command"] == "load") {
        canvas->Load();
        continue;
      }
      golden::ExpectStep(step, canvas->Run(step));
      if (HasFailure()) { FAIL() << golden::NameOf(step); }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, GoldenSlicesTest, testing::ValuesIn(golden::kSliceSeeds));

}  // namespace
