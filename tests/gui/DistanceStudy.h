// Small studies for the distance measures, and an eye on the panel while they run.
#pragma once

#include "VoxData/VoxData.h"
#include "tests/support/Interface.h"

#include <FL/Fl_Box.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Check_Button.H>
#include <FL/Fl_Choice.H>
#include <FL/Fl_Group.H>
#include <FL/Fl_Input.H>
#include <FL/Fl_Output.H>
#include <FL/Fl_Scrollbar.H>
#include <FL/Fl_Slider.H>
#include <FL/Fl_Value_Input.H>

#include <algorithm>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

class DistanceStudy : public Interface {
protected:
  using Dims = std::array<int, 3>;
  using Spacing = std::array<double, 3>;

  static constexpr int kLabel = 2;

  void TearDown() override {
    Watch(nullptr);
    Interface::TearDown();
  }

  /// Images without a label, through the dialogs. `second` is another width for the second one.
  void LoadEmpty(const Dims& dims, int images = 2, const Spacing& spacing = {1, 1, 1},
                 int second = 0) {
    const std::string folder = Scratch() + "/";
    const std::size_t voxels = static_cast<std::size_t>(std::max(dims[0], second)) *
                               static_cast<std::size_t>(dims[1]) *
                               static_cast<std::size_t>(dims[2]);
    const std::string zeros(256 + voxels, '\0');
    std::ofstream(folder + "grey.raw") << zeros;
    LoadGreyByHand(folder + "grey.raw", dims, 1, 256, spacing);
    for (int image = 0; image < images; ++image) {
      const std::string name = folder + "seg" + std::to_string(image) + ".raw";
      std::ofstream(name) << zeros;
      if (image > 0 && second > 0) { Ui().greyXdimInput->value(second); }
      LoadSegByHand(name);
    }
    ASSERT_EQ(Ui().imageCount, std::max(images, 1));
    Choose(Ui().image1Choice, 0);
    Choose(Ui().image2Choice, std::min(1, images - 1));
    Slide(Ui().imageSlider, 0);
    SetLabel(kLabel);
    TakeErrors();
    TakeOutput();
    alerts.clear();
  }

  void FillBox(int image, const Dims& low, const Dims& high, int label = kLabel) {
    const EditVolume labels = Ui().images[image]->EditableLabels();
    for (int x = low[0]; x <= high[0]; ++x) {
      for (int y = low[1]; y <= high[1]; ++y) {
        for (int z = low[2]; z <= high[2]; ++z) {
          labels.Set(x, y, z, static_cast<std::uint8_t>(label));
        }
      }
    }
  }

  /// A box in another one, and a voxel 4 beside the outer one. As surface distance: 218 voxels
  /// inside at 1, one outside at 4. Image 1 has a further label that touches nothing.
  void LoadBoxes(const Spacing& spacing = {1, 1, 1}) {
    LoadEmpty({24, 20, 18}, 2, spacing);
    FillBox(0, {4, 4, 4}, {12, 12, 12});
    FillBox(0, {20, 15, 15}, {22, 18, 16}, 7);
    FillBox(1, {5, 5, 5}, {11, 11, 11});
    FillBox(1, {16, 8, 8}, {16, 8, 8});
  }

  /// All labels of an image, z fastest.
  std::vector<std::uint8_t> LabelsOf(int image) {
    const LabelVolume labels = Ui().images[image]->Labels();
    std::vector<std::uint8_t> bytes;
    for (int x = 0; x < labels.dimX; ++x) {
      for (int y = 0; y < labels.dimY; ++y) {
        bytes.insert(bytes.end(), labels.voxels[x][y], labels.voxels[x][y] + labels.dimZ);
      }
    }
    return bytes;
  }

  int Colour(int x, int y, int z) { return Ui().displayVolume1->work[x][y][z]; }

  /// The numbers that the three commands write, and the two maxima.
  std::vector<std::string> Fields() {
    const MainUI& ui = Ui();
    std::vector<std::string> texts;
    for (const Fl_Input_* field : std::initializer_list<const Fl_Input_*>{
             ui.haussdorf3DABOutput, ui.haussdorf3DBAOutput, ui.haussdorf3DOutput,
             ui.sumDistInsideOutput, ui.nbPixelInsideOutput, ui.avgInsideOutput,
             ui.sumDistOutsideOutput, ui.nbPixelOutsideOutput, ui.avgOutsideOutput,
             ui.sumDistOutput, ui.nbPixelTotalOutput, ui.avgDistOutput, ui.maxInsideInput,
             ui.maxOutsideInput}) {
      texts.emplace_back(field->value());
    }
    return texts;
  }

  std::vector<std::string> Legend() {
    const MainUI& ui = Ui();
    return {ui.legendTextMaxOutside->label(), ui.legendTextOutside->label(),
            ui.legendTextZero->label(), ui.legendTextInside->label(),
            ui.legendTextMaxInside->label()};
  }

  /// Calls `look` with the number of the pump, from 1, whenever a running command lets events be
  /// handled, but not inside of what it starts itself. Null: no more.
  static void Watch(std::function<void(int)> look) {
    Fl::remove_check(Look);
    looker = std::move(look);
    pumps = 0;
    if (looker) { Fl::add_check(Look); }
  }

  static inline int pumps = 0;

private:
  static void Look(void* /*data*/) {
    if (mainUI->runningCommands != 1 || looking) { return; }
    looking = true;
    looker(++pumps);
    looking = false;
  }
  static inline std::function<void(int)> looker;
  static inline bool looking = false;
};
