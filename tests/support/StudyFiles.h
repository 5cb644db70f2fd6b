// Files of studies, good and bad, for tests that load them as a user would.
#pragma once

#include "tests/support/Interface.h"

#include <FL/Fl_Button.H>
#include <FL/Fl_Group.H>

#include <algorithm>
#include <array>
#include <cstdint>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace files {

using Bytes = std::vector<std::uint8_t>;
using Dims = std::array<int, 3>;

constexpr std::size_t kHeader = 256;  // bytes before the voxels

inline std::size_t Count(const Dims& dims) {
  return static_cast<std::size_t>(dims[0]) * static_cast<std::size_t>(dims[1]) *
         static_cast<std::size_t>(dims[2]);
}

inline void Write(const std::string& path, const Bytes& bytes) {
  std::ofstream stream(path, std::ios::binary);
  stream.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
}

inline void WriteText(const std::string& path, const std::string& text) {
  std::ofstream(path, std::ios::binary) << text;
}

inline std::string TextOf(const std::string& path) {
  std::ostringstream text;
  text << std::ifstream(path, std::ios::binary).rdbuf();
  return text.str();
}

/// The header of a GIPL file: sizes, a code of the voxels' type, steps of one unit.
inline Bytes GiplHeader(const Dims& dims, int type = 8) {
  Bytes bytes(kHeader, 0);
  const auto put = [&bytes](std::size_t at, int value) {
    bytes[at] = static_cast<std::uint8_t>(value >> 8);
    bytes[at + 1] = static_cast<std::uint8_t>(value);
  };
  for (std::size_t axis = 0; axis < 3; ++axis) { put(2 * axis, dims[axis]); }
  put(6, 1);
  put(8, type);
  for (std::size_t axis = 0; axis < 3; ++axis) {
    bytes[10 + 4 * axis] = 0x3F;  // 1.0 as a big-endian float
    bytes[11 + 4 * axis] = 0x80;
  }
  return bytes;
}

/// A volume whose first voxels hold `first` and all others `rest`, behind a GIPL header.
inline Bytes Volume(const Dims& dims, const Bytes& first = {}, std::uint8_t rest = 0) {
  const Bytes header = GiplHeader(dims);
  Bytes bytes(kHeader + Count(dims), rest);
  std::copy(header.begin(), header.end(), bytes.begin());
  std::copy_n(first.begin(), std::min(first.size(), Count(dims)), bytes.begin() + kHeader);
  return bytes;
}

}  // namespace files

/// An interface with a folder of its own, into which it writes the studies that it loads.
class StudyFiles : public Interface {
protected:
  std::string folder;

  void SetUp() override {
    Interface::SetUp();
    folder = Scratch() + "/";
  }

  std::string Made(const std::string& name, const files::Bytes& bytes) {
    files::Write(folder + name, bytes);
    return folder + name;
  }

  void LoadGrey(const files::Dims& dims, const std::array<double, 3>& spacing = {1, 1, 1}) {
    LoadGreyByHand(Made("grey.gipl", files::Volume(dims, {1, 2, 3})), dims, 1, files::kHeader,
                   spacing);
  }
  /// A further segmentation that holds label 2 in its first voxels.
  void LoadSeg(const std::string& name, const files::Dims& dims,
               const files::Bytes& first = {2, 2}) {
    LoadSegByHand(Made(name, files::Volume(dims, first)));
  }
  /// A study of `count` segmentations, with Image 1 and Image 2 chosen.
  void LoadStudy(const files::Dims& dims, int count,
                 const std::array<double, 3>& spacing = {1, 1, 1}) {
    LoadGrey(dims, spacing);
    for (int i = 0; i < count; ++i) { LoadSeg("seg" + std::to_string(i) + ".gipl", dims); }
    ASSERT_EQ(Ui().imageCount, count);
    SetLabel(2);
  }

  /// The buttons of the volume measures, those that compare two images first.
  std::vector<Fl_Widget*> VolumeButtons() {
    return {ButtonByLabel(Ui().measuresGroup, "Overlay 3D"),
            Ui().overlayResult3DButton,
            Ui().haussdorf3DButton,
            Ui().surfaceDistanceButton,
            Ui().danielsson3DButton,
            Ui().probabilityButton};
  }
  /// Presses a button and returns the message boxes that it brought.
  static std::vector<std::string> AlertsOf(Fl_Widget* button) {
    alerts.clear();
    Click(button);
    Settle();
    return alerts;
  }
  static std::vector<std::string> AlertsOfMenu(const char* path) {
    alerts.clear();
    Menu(path);
    Settle();
    return alerts;
  }
};
