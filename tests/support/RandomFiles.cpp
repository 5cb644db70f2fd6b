#include "tests/support/RandomFiles.h"

#include "GiplFile.h"
#include "tests/support/Golden.h"

#include <algorithm>
#include <array>
#include <filesystem>

namespace {

namespace fs = std::filesystem;

struct Study {
  const char* name;
  std::array<int, 3> dims;
  std::array<float, 3> spacing;
  int users, repeats;
  std::vector<int> labels;  ///< of bodies beside one another along x
};

const Study kStudies[] = {
    {"plain", {14, 12, 10}, {1, 1, 1}, 2, 2, {2}},
    {"labels", {18, 9, 8}, {0.5F, 0.75F, 2}, 3, 2, {1, 2, 255}},
    {"dot", {1, 1, 1}, {1, 1, 1}, 1, 2, {2}},
    {"flat", {16, 16, 2}, {1, 1, 3}, 2, 1, {2, 3}},
    {"thread", {281, 2, 3}, {1, 1, 1}, 1, 3, {2}},   // one voxel more than a volume measure takes
    {"strip", {301, 3, 2}, {1, 1, 1}, 2, 1, {2}},    // one pixel more than a slice measure takes
    {"crowd", {8, 7, 6}, {1, 1, 1}, 8, 2, {2, 40}},  // more users than a slice measure takes
};

/// One body for each label; further images have them a little larger.
std::vector<std::uint8_t> Bodies(const Study& study, int image) {
  const auto [dimX, dimY, dimZ] = study.dims;
  const int bodies = static_cast<int>(study.labels.size());
  std::vector<std::uint8_t> voxels;
  for (int z = 0; z < dimZ; ++z) {
    for (int y = 0; y < dimY; ++y) {
      for (int x = 0; x < dimX; ++x) {
        const int body = x * bodies / dimX;
        const int inner = x - body * dimX / bodies;
        const int edge = image % 3 == 0 && dimX > 6 ? 2 : 1;
        const bool inside = dimX < 3 || (inner >= edge && inner < dimX / bodies - 1 - image % 2);
        const bool across = dimY < 4 || (y > 1 && y < dimY - 1);
        const bool along = dimZ < 4 || (z > image % 2 && z < dimZ - 1);
        voxels.push_back(
            inside && across && along
                ? static_cast<std::uint8_t>(
                      study.labels[static_cast<std::size_t>(std::min(body, bodies - 1))])
                : std::uint8_t{0});
      }
    }
  }
  return voxels;
}

}  // namespace

RandomFiles::RandomFiles(const std::string& where)
    : folder(where), before(fs::current_path().string()) {
  fs::copy(golden::Path("readers"), folder, fs::copy_options::recursive);
  fs::current_path(folder);
  AddStudies();
  AddBadFiles();
}

RandomFiles::~RandomFiles() { fs::current_path(before); }

void RandomFiles::WriteLists() const {
  for (const auto& [name, text] : lists) { gipl::WriteText(name, text); }
}

void RandomFiles::AddStudies() {
  for (const Study& study : kStudies) {
    const std::string name = study.name;
    gipl::Header header;
    header.size = study.dims;
    header.spacing = study.spacing;
    const std::size_t count = Bodies(study, 0).size();
    std::string list = std::to_string(study.users) + "\n" + std::to_string(study.repeats) + "\n" +
                       name + "_grey.gipl\n";
    header.type = gipl::kSigned16;
    gipl::Write(name + "_grey.gipl", header, std::vector<std::uint8_t>(2 * count, 1));
    header.type = gipl::kUnsigned8;
    goodVolumes.push_back(name + "_grey.gipl");
    for (int image = 0; image < study.users * study.repeats; ++image) {
      const std::string path = name + "_" + std::to_string(image) + ".gipl";
      gipl::Write(path, header, Bodies(study, image));
      list += path + "\n";
      if (image < 2) { goodVolumes.push_back(path); }
    }
    lists.emplace_back(name + ".tlx", list + "\n");
    goodLists.push_back(name + ".tlx");
  }
  WriteLists();
  // The first ones are those on which every command can run: they come up more often.
  for (int i = 0; i < 3; ++i) {
    goodLists.push_back("plain.tlx");
    goodLists.push_back("labels.tlx");
  }
}

void RandomFiles::AddBadFiles() {
  for (const auto& entry : fs::directory_iterator(golden::Path("readers"))) {
    badFiles.push_back(entry.path().filename().string());
  }
  std::sort(badFiles.begin(), badFiles.end());
  fs::create_directory("a folder.gipl");
  fs::create_directory("a folder.tlx");
  gipl::WriteText("half.gipl", golden::Path("readers").substr(0, 3));
  gipl::WriteText("mixed.tlx", "1\n2\nplain_grey.gipl\nplain_0.gipl\nlabels_0.gipl\n\n");
  gipl::WriteText("missing.tlx", "2\n2\nplain_grey.gipl\nplain_0.gipl\nnone.gipl\n\n");
  gipl::WriteText("users.tlx", "99999\n-3\nplain_grey.gipl\nplain_0.gipl\nplain_1.gipl\n\n");
  gipl::WriteText("loop.tlx", "1\n1\nloop.tlx\nloop.tlx\nloop.gipl\n\n");
  for (const char* name :
       {"none.gipl", "none.tlx", "none.raw", "a folder.gipl", "a folder.tlx", "half.gipl",
        "mixed.tlx", "missing.tlx", "users.tlx", "loop.tlx", "/dev/null", "", "%s%n%d", "/"}) {
    badFiles.emplace_back(name);
  }
  badFiles.emplace_back(500, 'n');
  badNames = {"", "no folder/table", "a folder.gipl", "/dev/full", "/", "plain.tlx/table"};
  badNames.emplace_back(295, 'n');
  badNames.emplace_back(500, 'n');
}
