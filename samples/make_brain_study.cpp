// Turns a brain template and two atlases on it into a study of GIPL files:
// make_brain_study TEMPLATE ATLAS_1MM ATLAS_2MM FOLDER
#include "GiplFile.h"

#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

namespace {

using Size = std::array<int, 3>;

/// An uncompressed NIfTI volume of one byte a voxel, x fastest.
struct Nifti {
  Size size{};
  std::vector<std::uint8_t> voxels;
};

[[noreturn]] void Fail(const std::string& why) {
  std::cerr << "make_brain_study: " << why << "\n";
  std::exit(1);
}

template <class Number>
Number NumberAt(const std::vector<std::uint8_t>& bytes, std::size_t at) {
  Number number{};
  std::memcpy(&number, bytes.data() + at, sizeof number);  // the files are little-endian
  return number;
}

Nifti ReadNifti(const std::string& path) {
  std::ifstream stream(path, std::ios::binary);
  const std::vector<std::uint8_t> bytes{std::istreambuf_iterator<char>(stream), {}};
  if (bytes.size() < 352 || NumberAt<std::int32_t>(bytes, 0) != 348) {
    Fail(path + " is no NIfTI file");
  }
  if (NumberAt<std::int16_t>(bytes, 70) != 2) { Fail(path + " has no voxels of one byte"); }
  Nifti volume;
  std::size_t count = 1;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    volume.size[axis] = NumberAt<std::int16_t>(bytes, 42 + 2 * axis);
    if (volume.size[axis] < 1) { Fail(path + " has no size"); }
    count *= static_cast<std::size_t>(volume.size[axis]);
  }
  const auto begin = static_cast<std::size_t>(NumberAt<float>(bytes, 108));
  if (bytes.size() < begin + count) { Fail(path + " is too short"); }
  volume.voxels.assign(bytes.begin() + static_cast<std::ptrdiff_t>(begin),
                       bytes.begin() + static_cast<std::ptrdiff_t>(begin + count));
  return volume;
}

/// Regions of one atlas by the id that the study gives them; every other region is 1.
struct Regions {
  std::vector<int> hippocampus, caudate, putamen, thalamus;  // become 2, 3, 4, 5
};

std::array<std::uint8_t, 256> LabelMap(const Regions& regions) {
  std::array<std::uint8_t, 256> map{};
  map.fill(1);
  map[0] = 0;
  std::uint8_t label = 2;
  for (const auto* ids :
       {&regions.hippocampus, &regions.caudate, &regions.putamen, &regions.thalamus}) {
    for (const int id : *ids) { map[static_cast<std::size_t>(id)] = label; }
    ++label;
  }
  return map;
}

std::vector<std::uint8_t> Map(std::vector<std::uint8_t> voxels, const Regions& regions) {
  const auto map = LabelMap(regions);
  for (std::uint8_t& voxel : voxels) { voxel = map[voxel]; }
  return voxels;
}

/// The atlas of 2 mm on the grid of the template. Its world coordinates are x = 90 - 2 i,
/// y = 2 j - 126, z = 2 k - 72, the template's x - 90, y - 125, z - 71, in millimetres.
std::vector<std::uint8_t> Resample(const Nifti& coarse, const Size& size) {
  std::vector<std::uint8_t> voxels;
  voxels.reserve(static_cast<std::size_t>(size[0]) * size[1] * size[2]);
  for (int z = 0; z < size[2]; ++z) {
    for (int y = 0; y < size[1]; ++y) {
      for (int x = 0; x < size[0]; ++x) {
        const int i = (180 - x) / 2;
        const int j = (y + 1) / 2;
        const int k = (z + 1) / 2;
        const bool inside = i < coarse.size[0] && j < coarse.size[1] && k < coarse.size[2];
        const std::size_t at =
            (static_cast<std::size_t>(k) * coarse.size[1] + j) * coarse.size[0] + i;
        voxels.push_back(inside ? coarse.voxels[at] : std::uint8_t{0});
      }
    }
  }
  return voxels;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 5) { Fail("usage: make_brain_study TEMPLATE ATLAS_1MM ATLAS_2MM FOLDER"); }
  const Nifti brain = ReadNifti(argv[1]);
  const Nifti fine = ReadNifti(argv[2]);
  const Nifti coarse = ReadNifti(argv[3]);
  if (fine.size != brain.size) { Fail("the atlas of 1 mm lies on another grid"); }

  const Regions fineRegions{{37, 38}, {71, 72}, {73, 74}, {77, 78}};
  const Regions coarseRegions{{159, 160},
                              {174, 175, 176, 177, 178, 179, 180},
                              {182, 183},
                              {184, 185, 186, 187, 188, 189, 190, 191, 192}};
  const std::filesystem::path folder = std::filesystem::absolute(argv[4]);
  const gipl::Header header{brain.size, gipl::kUnsigned8, {1.0F, 1.0F, 1.0F}};
  const std::string grey = (folder / "brain.gipl").string();
  const std::string first = (folder / "atlas1.gipl").string();
  const std::string second = (folder / "atlas2.gipl").string();
  const std::string list = "2\n1\n" + grey + "\n" + first + "\n" + second + "\n\n";
  const bool written =
      gipl::Write(grey, header, brain.voxels) &&
      gipl::Write(first, header, Map(fine.voxels, fineRegions)) &&
      gipl::Write(second, header, Map(Resample(coarse, brain.size), coarseRegions)) &&
      gipl::WriteText((folder / "brain.tlx").string(), list);
  if (!written) { Fail("cannot write into " + folder.string()); }
  return 0;
}
