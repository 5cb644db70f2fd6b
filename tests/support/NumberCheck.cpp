#include "tests/support/NumberCheck.h"

#include "VoxData/VoxData.h"
#include "app/Globals.h"
#include "tests/support/PlainDistanceTransform.h"
#include "tests/support/TestField.h"
#include "tests/support/TestVolume.h"
#include "tests/volumemeasures/PlainVolumes.h"
#include "ui/Fields.h"
#include "ui/MainUI.h"
#include "ui/StudyChecks.h"

#include <FL/Fl_Button.H>
#include <FL/Fl_Choice.H>
#include <FL/Fl_Output.H>
#include <FL/Fl_Slider.H>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

struct Pair {
  LabelVolume a, b;
  measure::VoxelSize size;
  int label;
};

template <class Value>
std::string Text(const char* format, Value value) {
  char text[400];
  std::snprintf(text, sizeof text, format, value);
  return text;
}

void Transform(const LabelVolume& image, const Pair& pair, const DistanceField& field) {
  plain::ComputeDistanceTransform(image, pair.label, pair.size, field);
}

Numbers Overlap(const MainUI& ui, const Pair& pair) {
  TestVolume colours(pair.a.dimX, pair.a.dimY, pair.a.dimZ);
  std::vector<float> scalars(pair.a.Count());
  const auto counts =
      plain::OverlayResult(pair.a, pair.b, pair.label, colours.Work(scalars.data()));
  return {{ui.nbPixelAOutput, Text("%d", counts.onlyA)},
          {ui.nbPixelBOutput, Text("%d", counts.onlyB)},
          {ui.intersect3DOutput, Text("%d", counts.common)},
          {ui.unionMinusIntersectOutput, Text("%d", counts.onlyA + counts.onlyB)}};
}

Numbers Haussdorf(const MainUI& ui, const Pair& pair) {
  TestVolume colours(pair.a.dimX, pair.a.dimY, pair.a.dimZ);
  std::vector<float> scalars(pair.a.Count());
  TestField field(pair.a);
  Transform(pair.a, pair, field.View());
  const float there =
      plain::HaussdorfPassB(pair.b, pair.label, field.View(), colours.Work(scalars.data()));
  Transform(pair.b, pair, field.View());
  const float back = plain::HaussdorfPassA(pair.a, pair.label, field.View()).distance;
  return {{ui.haussdorf3DABOutput, Text("%f", static_cast<double>(back))},
          {ui.haussdorf3DBAOutput, Text("%f", static_cast<double>(there))},
          {ui.haussdorf3DOutput, Text("%f", static_cast<double>(std::max(there, back)))}};
}

/// The label on the surface of the region, 0 everywhere else.
void FillShell(const Pair& pair, TestVolume& shell) {
  const auto bears = [&pair](int x, int y, int z) {
    return pair.a.Contains(x, y, z) && pair.a.Bears(pair.label, x, y, z);
  };
  for (int x = 0; x < pair.a.dimX; ++x) {
    for (int y = 0; y < pair.a.dimY; ++y) {
      for (int z = 0; z < pair.a.dimZ; ++z) {
        const bool inner = bears(x - 1, y, z) && bears(x + 1, y, z) && bears(x, y - 1, z) &&
                           bears(x, y + 1, z) && bears(x, y, z - 1) && bears(x, y, z + 1);
        if (bears(x, y, z) && !inner) {
          shell.voxel(x, y, z) = static_cast<std::uint8_t>(pair.label);
        }
      }
    }
  }
}

Numbers SurfaceDistance(const MainUI& ui, const Pair& pair) {
  TestVolume shell(pair.a.dimX, pair.a.dimY, pair.a.dimZ);
  FillShell(pair, shell);
  TestField field(pair.a);
  Transform(shell.Labels(), pair, field.View());
  const auto [inside, outside, all] =
      plain::AlongSurface(pair.a, pair.b, pair.label, field.View(), false);
  return {{ui.sumDistInsideOutput, Text("%f", static_cast<double>(inside.sum))},
          {ui.sumDistOutsideOutput, Text("%f", static_cast<double>(outside.sum))},
          {ui.sumDistOutput, Text("%f", static_cast<double>(inside.sum + outside.sum))},
          {ui.nbPixelInsideOutput, Text("%d", inside.count)},
          {ui.nbPixelOutsideOutput, Text("%d", outside.count)},
          {ui.nbPixelTotalOutput, Text("%d", inside.count + outside.count)},
          {ui.maxInsideInput, Text("%f", static_cast<double>(inside.max))},
          {ui.maxOutsideInput, Text("%f", static_cast<double>(outside.max))}};
}

/// Whether a volume measure takes the chosen pair; says nothing where it does not.
bool IsMeasured(const MainUI& ui, const ChosenPair& pair) {
  const VoxData* shown = ImageAt(ui, Truncated(ui.imageSlider));
  const VoxData* first = ImageAt(ui, 0);
  if (!pair.ok || shown == nullptr || first == nullptr || ui.imageCount < 2) { return false; }
  const LabelVolume labels = pair.image1->Labels();
  return labels.SameSize(first->Labels()) && labels.SameSize(shown->Labels()) &&
         std::max({labels.dimX, labels.dimY, labels.dimZ}) <= kMaxMeasuredSide;
}

}  // namespace

Numbers NumbersToCome(const Fl_Widget* button) {
  const MainUI& ui = *mainUI;
  const ChosenPair chosen = FindChosenPair(ui);
  if (!IsMeasured(ui, chosen)) { return {}; }
  float spacing[3];
  ui.images[0]->GetSpacing(spacing);
  const Pair pair{chosen.image1->Labels(),
                  chosen.image2->Labels(),
                  {spacing[0], spacing[1], spacing[2]},
                  ui.currentLabel};
  if (button == ui.overlayResult3DButton) { return Overlap(ui, pair); }
  if (button == ui.haussdorf3DButton) { return Haussdorf(ui, pair); }
  if (button == ui.surfaceDistanceButton) { return SurfaceDistance(ui, pair); }
  return {};
}
