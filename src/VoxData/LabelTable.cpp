// VoxData: the label table.
#include "VoxData/VoxData.h"

#include <cstdio>
#include <cstring>

namespace {

constexpr int kFirstRampLabel = 7;
constexpr double kRampStep = 200.0 / 85.0;  // colour steps of one label on a ramp

struct Colour {
  std::uint8_t red, green, blue;
};

constexpr Colour kFixedColours[kFirstRampLabel] = {
    {0, 0, 0}, {255, 0, 0}, {0, 255, 0}, {0, 0, 255}, {255, 255, 0}, {0, 255, 255}, {255, 0, 255}};

std::uint8_t OnRamp(int steps) { return static_cast<std::uint8_t>(steps * kRampStep + 50.0); }

Colour RampColour(int id) {
  if (id <= 84) { return {OnRamp(84 - id), OnRamp(id), 0}; }
  if (id <= 169) { return {0, OnRamp(169 - id), OnRamp(id - 85)}; }
  return {OnRamp(id - 170), 0, OnRamp(255 - id)};
}

bool IsDefined(const LabelEntry* labels, int id) {
  return id >= 0 && id <= 255 && labels[id].defined != 0;
}

}  // namespace

int VoxData::InitLabels() {
  for (int id = 0; id < 256; ++id) {
    LabelEntry& entry = labels[id];
    std::memset(&entry, 0, sizeof entry);
    const Colour colour = id < kFirstRampLabel ? kFixedColours[id] : RampColour(id);
    entry.rgb[0] = colour.red;
    entry.rgb[1] = colour.green;
    entry.rgb[2] = colour.blue;
    if (id == 0) {
      std::snprintf(entry.name, sizeof entry.name, "Clear");
    } else {
      std::snprintf(entry.name, sizeof entry.name, "Label %d", id);
    }
    entry.defined = id < kFirstRampLabel ? 1 : 0;
  }
  labelCount = kFirstRampLabel;
  return 1;
}

std::array<float, 3> VoxData::GetLabelColour(int id) const {
  if (!IsDefined(labels, id)) { return {0.0F, 0.0F, 0.0F}; }
  constexpr double kPerByte = 0.00392156862745098;  // 1 / 255
  const std::uint8_t* rgb = labels[id].rgb;
  return {static_cast<float>(rgb[0] * kPerByte), static_cast<float>(rgb[1] * kPerByte),
          static_cast<float>(rgb[2] * kPerByte)};
}

int VoxData::GetLabel(int id, std::uint8_t* rgbOut, char* nameOut) const {
  if (!IsDefined(labels, id)) { return -1; }
  std::memcpy(rgbOut, labels[id].rgb, sizeof labels[id].rgb);
  std::memcpy(nameOut, labels[id].name, sizeof labels[id].name);
  return 1;
}
