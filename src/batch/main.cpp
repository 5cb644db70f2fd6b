// tolvex-batch: the comparison of all pairs of a study, without a display.
#include "VoxData/GiplIO.h"
#include "VoxData/ScriptList.h"
#include "VoxData/VoxData.h"
#include "base/Limits.h"
#include "view3d/volumemeasures/DistanceTransform.h"
#include "view3d/volumemeasures/PairComparison.h"
#include "view3d/volumemeasures/TableFile.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

constexpr char kUsage[] =
    "Usage: tolvex-batch [MEASURE...] LIST LABEL TABLE\n"
    "Compares all pairs of images of a study for one label and appends a row for each to a table.\n"
    "  LIST     script list file (.tlx)\n"
    "  LABEL    0 to 255\n"
    "  TABLE    file that a spreadsheet opens; \".xls\" is added where it is missing\n"
    "  MEASURE  --overlay, --haussdorf, --surface-dist; all three when none is named\n"
    "  --help   shows this text\n";

struct Options {
  bool help = false;
  measure::CompareColumns columns;
  std::string list;
  int label = 0;
  std::string table;
};

/// A failure whose text is for the user.
class Failure : public std::runtime_error {
public:
  using std::runtime_error::runtime_error;
};

int LabelOf(const std::string& text) {
  const bool isNumber = !text.empty() && text.size() <= 3 &&
                        text.find_first_not_of("0123456789") == std::string::npos;
  const int label = isNumber ? std::atoi(text.c_str()) : kMaxLabels;
  if (label >= kMaxLabels) { throw Failure("A label is a number from 0 to 255, not " + text); }
  return label;
}

Options OptionsOf(const std::vector<std::string>& arguments) {
  Options options;
  std::vector<std::string> names;
  for (const std::string& argument : arguments) {
    if (argument == "--overlay") {
      options.columns.overlay = true;
    } else if (argument == "--haussdorf") {
      options.columns.haussdorf = true;
    } else if (argument == "--surface-dist") {
      options.columns.surface = true;
    } else if (argument == "--help") {
      options.help = true;
      return options;
    } else if (argument.rfind("--", 0) == 0) {
      throw Failure("Unknown option " + argument + "\n" + kUsage);
    } else {
      names.push_back(argument);
    }
  }
  if (names.size() != 3) { throw Failure(kUsage); }
  const measure::CompareColumns& columns = options.columns;
  if (!columns.overlay && !columns.haussdorf && !columns.surface) {
    options.columns = {true, true, true};
  }
  options.list = names[0];
  options.label = LabelOf(names[1]);
  options.table = tables::WithExtension(names[2]);
  return options;
}

/// The images of a list as a load by the window leaves them, with their entries of the choosers.
struct Images {
  std::vector<std::unique_ptr<VoxData>> slots;
  std::vector<std::string> entries;
};

void AddEntry(const std::string& path, std::vector<std::string>& entries) {
  const std::string name = path.substr(path.rfind('/') + 1).substr(0, kMaxEntryLabel);
  if (std::find(entries.begin(), entries.end(), name) == entries.end()) {
    entries.push_back(name);
    return;
  }
  // Two files of one name share an entry, as in the window.
  std::cerr << "Two files share the name " << name
            << "; the names behind it no longer match their images." << std::endl;
}

Images LoadImages(const std::string& path) {
  script::StudyList list;
  const std::string problem = script::ReadStudyList(path.c_str(), list);
  if (!problem.empty()) { throw Failure(problem); }
  RawFields fields;
  ipReadGiplHeader(list.greyPath.c_str(), fields);  // sizes and spacing; no measure reads the greys
  int dims[3];
  for (int axis = 0; axis < 3; ++axis) {
    dims[axis] = static_cast<int>(std::clamp(fields.dims[axis], 0.0, 65535.0));
    if (dims[axis] < 1) { throw Failure("No sizes could be read from " + list.greyPath); }
    if (dims[axis] > kMaxMeasuredSide) {
      throw Failure("A volume with more than 280 voxels on an axis cannot be measured");
    }
  }
  Images images;
  for (const std::string& file : list.segPaths) {
    auto slot = std::make_unique<VoxData>();
    constexpr int kFlips[3] = {0, 1, 1};  // the origin that the window starts with
    const bool read = slot->SetupSlot(file.c_str(), dims[0], dims[1], dims[2], 2, 0, 0, kFlips[0],
                                      kFlips[1], kFlips[2]) == 1 &&
                      slot->ReadSeg(file.c_str(), static_cast<int>(kGiplHeaderBytes)) == 1;
    if (!read) { throw Failure("The segmentation cannot be read: " + file); }
    slot->SetSpacing(static_cast<float>(fields.spacing[0]), static_cast<float>(fields.spacing[1]),
                     static_cast<float>(fields.spacing[2]));
    images.slots.push_back(std::move(slot));
    AddEntry(file, images.entries);
  }
  if (images.entries.size() < 2) { throw Failure("The list must name at least 2 segmentations"); }
  return images;
}

class Console : public Progress {
public:
  void Print(const char* line) override { std::cout << line << std::endl; }
};

class BatchStudy : public measure::CompareStudy {
public:
  BatchStudy(const Images& loaded, const Options& chosen)
      : images(loaded), options(chosen), voxels(loaded.slots[0]->Labels().Count()), mask(voxels),
        x(voxels), y(voxels), z(voxels),
        saved(std::calloc(kMaxMeasuredSide, sizeof(*measure::SavedLabels{})), std::free) {
    if (saved == nullptr) { throw std::bad_alloc(); }
  }

  bool AllWritten() const { return written; }

  int Label() const override { return options.label; }
  measure::CompareStages Stages() const override { return {options.columns, false, true}; }
  std::string Name(int slot) const override {
    return images.entries[static_cast<std::size_t>(slot)];
  }
  EditVolume Image(int slot) override { return Slot(slot).EditableLabels(); }
  DistanceField Field() const override { return field; }
  measure::SavedLabels Saved() override { return static_cast<measure::SavedLabels>(saved.get()); }
  CompareRecord& Record(int /*row*/) override { return record; }
  measure::HistogramTable Histogram() override { return {nullptr, nullptr, noHistogram}; }
  Progress& Report() override { return console; }

  void Transform(int slot, int label, Progress& progress) override {
    float spacing[3];
    Slot(0).GetSpacing(spacing);
    const LabelVolume image = Slot(slot).Labels();
    field = {mask.data(), x.data(), y.data(), z.data(), image.dimX, image.dimY, image.dimZ};
    measure::ComputeDistanceTransform(image, label, {spacing[0], spacing[1], spacing[2]}, field,
                                      progress);
  }

  void AppendRows(const std::string& rows) override {
    if (tables::Append(options.table, rows)) { return; }
    std::cerr << "The file cannot be written: " << options.table << std::endl;
    written = false;
  }

private:
  VoxData& Slot(int slot) const { return *images.slots[static_cast<std::size_t>(slot)]; }

  const Images& images;
  const Options& options;
  std::size_t voxels;
  std::vector<std::int32_t> mask;
  std::vector<float> x;
  std::vector<float> y;
  std::vector<float> z;
  std::unique_ptr<void, decltype(&std::free)> saved;  // zero pages until they are used
  DistanceField field;
  CompareRecord record;  // of the pair in hand: no stage is left out in one row and not in another
  std::int32_t noHistogram = -1;
  Console console;
  bool written = true;
};

void WarnOfMissingLabel(const Images& images, int label) {
  for (std::size_t slot = 0; slot < images.entries.size(); ++slot) {
    if (images.slots[slot]->labelPresent[label] == 1) { continue; }
    std::cerr << "Label " << label << " does not occur in " << images.entries[slot]
              << ": what is written of it is no measurement." << std::endl;
  }
}

int Run(const Options& options) {
  if (options.help) {
    std::cout << kUsage;
    return EXIT_SUCCESS;
  }
  const Images images = LoadImages(options.list);
  WarnOfMissingLabel(images, options.label);
  std::vector<measure::SlotPair> pairs;
  const int count = static_cast<int>(images.entries.size());
  for (int i = 0; i < count; ++i) {
    for (int j = i + 1; j < count; ++j) { pairs.emplace_back(i, j); }
  }
  BatchStudy study(images, options);
  measure::ComparePairs(study, pairs);
  return study.AllWritten() ? EXIT_SUCCESS : EXIT_FAILURE;
}

}  // namespace

int main(int count, char** arguments) {
  try {
    return Run(OptionsOf({arguments + 1, arguments + count}));
  } catch (const Failure& failure) {
    std::cerr << failure.what() << std::endl;
  } catch (const std::bad_alloc&) { std::cerr << "There is not enough memory." << std::endl; }
  return EXIT_FAILURE;
}
