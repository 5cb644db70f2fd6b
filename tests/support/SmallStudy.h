// Small volumes in GIPL files and script list files that name them, for tests of whole studies.
#pragma once

#include "GiplFile.h"

#include <array>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

/// A folder with a grey volume and outlines of one body, which differ in their ends along x.
class SmallStudy {
public:
  static constexpr std::array<int, 3> kDims = {12, 6, 5};
  static constexpr int kLabel = 2;

  explicit SmallStudy(std::string where) : folder(std::move(where)) {
    gipl::Header header;
    header.size = kDims;
    header.type = gipl::kSigned16;
    gipl::Write(Path("grey.gipl"), header, std::vector<std::uint8_t>(2 * Count(), 1));
  }

  std::string Path(const std::string& name) const { return folder + "/" + name; }

  /// The path of an outline with `length` planes along x from plane `begin` on, of 2 x 2 voxels.
  std::string Outline(const std::string& name, int begin, int length, int label = kLabel) const {
    std::vector<std::uint8_t> voxels(Count(), 0);
    for (int z = 1; z < 3; ++z) {
      for (int y = 2; y < 4; ++y) {
        for (int x = begin; x < begin + length; ++x) {
          voxels[static_cast<std::size_t>((z * kDims[1] + y) * kDims[0] + x)] =
              static_cast<std::uint8_t>(label);
        }
      }
    }
    gipl::Header header;
    header.size = kDims;
    gipl::Write(Path(name), header, voxels);
    return Path(name);
  }

  /// Paths of `count` outlines named s0.gipl and so on, whose lengths go from 1 to 8 and again.
  std::vector<std::string> Outlines(int count) const {
    std::vector<std::string> paths;
    for (int i = 0; i < count; ++i) {
      paths.push_back(Outline("s" + std::to_string(i) + ".gipl", 2, 1 + i % 8));
    }
    return paths;
  }

  /// The path of a list of the grey volume and `segs`.
  std::string List(int users, int repeats, const std::vector<std::string>& segs) const {
    std::string text =
        std::to_string(users) + "\n" + std::to_string(repeats) + "\n" + Path("grey.gipl") + "\n";
    for (const std::string& seg : segs) { text += seg + "\n"; }
    gipl::WriteText(Path("study.tlx"), text + "\n");
    return Path("study.tlx");
  }

  static std::string Text(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }

private:
  static std::size_t Count() {
    return static_cast<std::size_t>(kDims[0]) * static_cast<std::size_t>(kDims[1]) *
           static_cast<std::size_t>(kDims[2]);
  }

  std::string folder;
};
