// A study of label volumes whose pairs are compared without a window.
#pragma once

#include "tests/support/RecordingProgress.h"
#include "tests/support/TestField.h"
#include "tests/support/TestVolume.h"
#include "view3d/volumemeasures/DistanceTransform.h"
#include "view3d/volumemeasures/PairComparison.h"

#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

class TestPairStudy : public measure::CompareStudy {
public:
  int label = 2;
  measure::CompareStages stages;
  measure::VoxelSize size;
  std::vector<std::string> names;  ///< the images' numbers, unless set
  RecordingProgress progress;
  std::vector<int> transformed;     ///< the slots of all transforms, in their order
  std::function<void()> meanwhile;  ///< runs in each transform, as a handled event would
  std::string rows;
  std::string histogramRows;
  int overflows = 0;
  std::vector<CompareRecord> shown;
  std::vector<CompareRecord> records = std::vector<CompareRecord>(200);
  std::vector<float> histogramValue = std::vector<float>(20000);
  std::vector<std::int32_t> histogramCount = std::vector<std::int32_t>(20000);
  std::int32_t histogramLast = -1;
  int altered = 0;  ///< images that are altered at the moment

  explicit TestPairStudy(std::vector<TestVolume*> volumes)
      : images(std::move(volumes)), field(images[0]->Labels()),
        memory(std::calloc(280, sizeof(std::int32_t[280][280])), std::free) {
    for (std::size_t slot = 0; slot < images.size(); ++slot) {
      names.push_back(std::to_string(slot));
    }
  }

  void Compare(const std::vector<measure::SlotPair>& pairs) { ComparePairs(*this, pairs); }
  const TestField& Arrays() const { return field; }

  int Label() const override { return label; }
  measure::CompareStages Stages() const override { return stages; }
  std::string Name(int slot) const override { return names[static_cast<std::size_t>(slot)]; }
  EditVolume Image(int slot) override { return images[static_cast<std::size_t>(slot)]->Editable(); }
  DistanceField Field() const override { return field.View(); }
  measure::SavedLabels Saved() override { return static_cast<measure::SavedLabels>(memory.get()); }
  CompareRecord& Record(int row) override { return records[static_cast<std::size_t>(row)]; }
  measure::HistogramTable Histogram() override {
    return {histogramValue.data(), histogramCount.data(), histogramLast};
  }
  Progress& Report() override { return progress; }
  void Transform(int slot, int wanted, Progress& report) override {
    transformed.push_back(slot);
    if (meanwhile) { meanwhile(); }
    measure::ComputeDistanceTransform(Image(slot).Labels(), wanted, size, field.View(), report);
  }
  void BeginAltering(int /*slot*/) override { ++altered; }
  void EndAltering() override { --altered; }
  void ShowHaussdorf(const CompareRecord& record) override { shown.push_back(record); }
  void AppendRows(const std::string& text) override { rows += text; }
  void AppendHistogramRows(const std::string& text) override { histogramRows += text; }
  void HistogramOverflowed() override { ++overflows; }

private:
  std::vector<TestVolume*> images;
  TestField field;
  std::unique_ptr<void, decltype(&std::free)> memory;
};

/// All pairs of some images, as "All" queues them, or turned round.
inline std::vector<measure::SlotPair> AllPairs(int images, bool inverse = false) {
  std::vector<measure::SlotPair> pairs;
  for (int i = 0; i < images; ++i) {
    for (int j = i + 1; j < images; ++j) { pairs.emplace_back(inverse ? j : i, inverse ? i : j); }
  }
  return pairs;
}
