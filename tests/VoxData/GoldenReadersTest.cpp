// Every reader on files with known results, well-formed and hostile.
#include "VoxData/GiplIO.h"
#include "VoxData/MetaImage.h"
#include "VoxData/ScriptList.h"
#include "VoxData/VoxData.h"
#include "tests/support/Checksums.h"
#include "tests/support/Golden.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <unistd.h>

namespace {

using nlohmann::json;
namespace fs = std::filesystem;

std::string Hex16(std::uint64_t value) {
  char text[20];
  std::snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(value));
  return text;
}

/// Bytes of 128 and more stand in the known results as one character each.
std::string BytesOf(const json& text) {
  const std::string utf8 = text.get<std::string>();
  std::string bytes;
  for (std::size_t i = 0; i < utf8.size(); ++i) {
    const auto c = static_cast<unsigned char>(utf8[i]);
    if (c < 0x80 || i + 1 >= utf8.size()) {
      bytes += utf8[i];
    } else {
      bytes +=
          static_cast<char>((c & 0x03U) << 6U | (static_cast<unsigned char>(utf8[++i]) & 0x3FU));
    }
  }
  return bytes;
}

/// White space collapsed to single blanks, none at the ends.
std::string Collapsed(const std::string& text) {
  std::string out;
  for (const char c : text) {
    const bool space = c == ' ' || c == '\n' || c == '\t' || c == '\r';
    if (!space) {
      out += c;
    } else if (!out.empty() && out.back() != ' ') {
      out += ' ';
    }
  }
  while (!out.empty() && out.back() == ' ') { out.pop_back(); }
  return out;
}

RawFields FieldsOf(const json& dialog) {
  RawFields fields;
  fields.headerSize = dialog["headerSize"];
  fields.bytes = dialog["bytes"];
  const char* dims[3] = {"xdim", "ydim", "zdim"};
  const char* steps[3] = {"xspacing", "yspacing", "zspacing"};
  for (int axis = 0; axis < 3; ++axis) {
    fields.dims[axis] = dialog[dims[axis]];
    fields.spacing[axis] = dialog[steps[axis]];
  }
  return fields;
}

void ExpectFields(const RawFields& fields, const json& dialog) {
  const RawFields expected = FieldsOf(dialog);
  EXPECT_EQ(fields.headerSize, expected.headerSize);
  EXPECT_EQ(fields.bytes, expected.bytes);
  for (int axis = 0; axis < 3; ++axis) {
    EXPECT_EQ(fields.dims[axis], expected.dims[axis]) << "axis " << axis;
    EXPECT_EQ(static_cast<float>(fields.spacing[axis]), static_cast<float>(expected.spacing[axis]))
        << "axis " << axis;
  }
}

/// Runs in a copy of the folder: some files are opened for writing too.
class GoldenReadersTest : public testing::Test {
protected:
  json all = golden::Json("readers/readers.json");

  static void SetUpTestSuite() {
    before = fs::current_path();
    folder = fs::path(testing::TempDir()) / ("tolvex-readers-" + std::to_string(getpid()));
    fs::remove_all(folder);
    fs::copy(golden::Path("readers"), folder, fs::copy_options::recursive);
    fs::current_path(folder);
  }
  static void TearDownTestSuite() {
    fs::current_path(before);
    fs::remove_all(folder);
  }

  static fs::path before;
  static fs::path folder;
};

fs::path GoldenReadersTest::before;
fs::path GoldenReadersTest::folder;

TEST_F(GoldenReadersTest, GiplHeadersFillTheDialog) {
  for (const json& one : all["gipl"]) {
    const std::string file = one["file"];
    SCOPED_TRACE(file);
    RawFields fields = FieldsOf(all["dialogBefore"]);
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    ipReadGiplHeader(file.c_str(), fields);
    const std::string out = testing::internal::GetCapturedStdout();
    const std::string errors = testing::internal::GetCapturedStderr();
    if (one["expect"] != "exact") { continue; }
    ExpectFields(fields, one["dialog"]);
    EXPECT_EQ(Collapsed(out), Collapsed(BytesOf(one["stdout"])));
    EXPECT_EQ(Collapsed(errors), Collapsed(BytesOf(one["stderr"])));
  }
}

TEST_F(GoldenReadersTest, NoFileNameRunsACommand) {
  RawFields fields;
  ipReadGiplHeader("it's $(touch pwned);touch pwned2.gipl.gz", fields);
  EXPECT_FALSE(fs::exists("pwned"));
  EXPECT_FALSE(fs::exists("pwned2"));
  EXPECT_FALSE(fs::exists("pwned2.gipl.gz"));
}

TEST_F(GoldenReadersTest, MetaImageHeadersFillTheDialog) {
  for (const json& one : all["metaImage"]) {
    const std::string file = one["file"];
    SCOPED_TRACE(file + " " + one["note"].get<std::string>());
    RawFields fields = FieldsOf(all["dialogBefore"]);
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const bool filled = FillFieldsFromMetaImage(file.c_str(), fields);
    const std::string out = testing::internal::GetCapturedStdout();
    const std::string errors = testing::internal::GetCapturedStderr();
    if (one["expect"] != "exact") { continue; }
    EXPECT_EQ(filled, one["filled"].get<bool>());
    ExpectFields(fields, one["dialog"]);
    EXPECT_EQ(Collapsed(out), Collapsed(BytesOf(one["stdout"])));
    EXPECT_EQ(Collapsed(errors), Collapsed(BytesOf(one["stderr"])));

    if (errors.find("unzipping") != std::string::npos) { continue; }  // refused before the reader
    MetaImage image;
    testing::internal::CaptureStdout();
    image.Read(file.c_str(), true);
    testing::internal::GetCapturedStdout();
    const char* error = image.Error();
    EXPECT_EQ(Collapsed(error != nullptr ? error : ""), Collapsed(BytesOf(one["errorText"])));
  }
}

template <class Voxel, class At>
std::string ChecksumOf(const VoxData& volume, int rows, At at) {
  Fnv64 sum;
  for (int z = 0; z < volume.dimZ; ++z) {
    for (int y = 0; y < rows; ++y) {
      for (int x = 0; x < volume.dimX; ++x) {
        const Voxel voxel = at(x, y, z);
        for (std::size_t byte = 0; byte < sizeof voxel; ++byte) {
          sum.Add(static_cast<std::uint8_t>(voxel >> (8U * byte)));
        }
      }
    }
  }
  return Hex16(sum.Value());
}

TEST_F(GoldenReadersTest, RawGreyVolumesAreReadFlippedAndScaled) {
  for (const json& one : all["rawGrey"]) {
    SCOPED_TRACE(one["file"].get<std::string>() + " " + one["note"].get<std::string>());
    const auto dims = one["dims"].get<std::array<int, 3>>();
    const auto flips = one["flips"].get<std::array<int, 3>>();
    VoxData volume;
    testing::internal::CaptureStderr();
    const int result = volume.ReadGrey(one["file"].get<std::string>().c_str(), dims[0], dims[1],
                                       dims[2], one["bytes"], one["min"], one["max"], flips[0],
                                       flips[1], flips[2], one["headerSize"]);
    const std::string errors = testing::internal::GetCapturedStderr();
    if (one["expect"] != "exact") { continue; }
    EXPECT_EQ(result, one["result"].get<int>());
    EXPECT_EQ(Collapsed(errors), Collapsed(BytesOf(one["stderr"])));
    if (!one.contains("setVoxels")) { continue; }
    if (one["greyScale"].is_number()) {
      EXPECT_EQ(volume.GetScale(), one["greyScale"].get<double>());
    }
    const int rows = one["setVoxels"].get<int>() / (dims[0] * dims[2]);
    EXPECT_EQ(ChecksumOf<std::uint16_t>(volume, rows,
                                        [&](int x, int y, int z) { return volume.grey[x][y][z]; }),
              one["greyOfSetVoxels"]);
    volume.FreeArrays(0);
  }
}

TEST_F(GoldenReadersTest, RawSegmentationsAreRead) {
  for (const json& one : all["rawSeg"]) {
    SCOPED_TRACE(one["file"].get<std::string>() + " " + one["note"].get<std::string>());
    const auto dims = one["dims"].get<std::array<int, 3>>();
    const auto flips = one["flips"].get<std::array<int, 3>>();
    VoxData volume;
    if (dims[0] > 0) {
      volume.SetupSlot("", dims[0], dims[1], dims[2], 1, 0, 0, flips[0], flips[1], flips[2]);
    }
    testing::internal::CaptureStderr();
    const int result = volume.ReadSeg(one["file"].get<std::string>().c_str(), one["headerSize"]);
    EXPECT_EQ(Collapsed(testing::internal::GetCapturedStderr()), Collapsed(BytesOf(one["stderr"])));
    EXPECT_EQ(result, one["result"].get<int>());
    if (!one.contains("labelCount")) { continue; }
    EXPECT_EQ(volume.GetLabelCount(), one["labelCount"].get<int>());
    std::vector<int> present;
    std::vector<int> defined;
    for (int label = 0; label < 256; ++label) {
      if (volume.labelPresent[label] == 1) { present.push_back(label); }
      if (volume.labels[label].defined != 0) { defined.push_back(label); }
    }
    EXPECT_EQ(present, one["labelPresent"].get<std::vector<int>>());
    EXPECT_EQ(defined, one["defined"].get<std::vector<int>>());
    const int rows = one["setVoxels"].get<int>() / (dims[0] * dims[2]);
    EXPECT_EQ(ChecksumOf<std::uint8_t>(volume, rows,
                                       [&](int x, int y, int z) { return volume.seg[x][y][z]; }),
              one["segOfSetVoxels"]);
  }
}

TEST_F(GoldenReadersTest, ListsComeBackIntoTheDialog) {
  for (const json& one : all["listDialog"]) {
    if (one.value("expect", "exact") != "exact" || !one.contains("list")) { continue; }
    const std::string file = one["file"];
    SCOPED_TRACE(file);
    script::ListTexts texts;
    const std::string problem = script::ReadListTexts(file.c_str(), texts);
    if (!problem.empty()) { continue; }  // a limit: its own test says which
    if (texts.hasUsers) { EXPECT_EQ(texts.userCount, one["nbUser"].get<int>()); }
    if (texts.hasRepeats) { EXPECT_EQ(texts.slicesPerUser, one["nbSeg"].get<int>()); }
    if (texts.hasOriginal) { EXPECT_EQ(texts.original, one["original"]); }
    if (texts.hasSegs) { EXPECT_EQ(texts.segs, one["list"]); }
  }
}

TEST_F(GoldenReadersTest, ListsArePlannedForALoad) {
  for (const json& one : all["scripts"]) {
    if (one.value("expect", "exact") != "exact" || !one.contains("plan")) { continue; }
    SCOPED_TRACE(one["file"].get<std::string>());
    script::StudyList list;
    const std::string problem = script::ReadStudyList(one["file"].get<std::string>().c_str(), list);
    if (!problem.empty()) { continue; }
    const json& plan = one["plan"];
    EXPECT_EQ(list.users, plan["usersOutput"]);
    EXPECT_EQ(list.userCount, plan["userCount"].get<int>());
    EXPECT_EQ(list.slicesPerUser, plan["slicesPerUser"].get<int>());
    EXPECT_EQ(list.imageLines, plan["scriptImageCount"].get<int>());
    std::vector<std::string> segs;
    for (const json& line : plan["lines"]) {
      if (line.value("readsSegmentation", false)) { segs.push_back(line["line"]); }
    }
    EXPECT_EQ(list.segPaths, segs);
  }
}

TEST(GoldenViewsTest, RaysHitTheSameVoxels) {
  const json rays = golden::Json("views/views.json")["rays"];
  const auto dims = rays["dims"].get<std::array<int, 3>>();
  const auto bytes = golden::Bytes("views/" + rays["labels"].get<std::string>());
  VoxData volume;
  ASSERT_EQ(volume.SetupSlot("", dims[0], dims[1], dims[2], 1, 0, 0, 0, 0, 0), 1);
  std::size_t at = 0;
  for (int z = 0; z < dims[2]; ++z) {
    for (int y = 0; y < dims[1]; ++y) {
      for (int x = 0; x < dims[0]; ++x) { volume.seg[x][y][z] = bytes[at++]; }
    }
  }
  for (const json& one : rays["cases"]) {
    const auto o = one["origin"].get<std::array<double, 3>>();
    const auto d = one["direction"].get<std::array<double, 3>>();
    std::array<int, 3> voxel = {-1, -1, -1};
    const int result = volume.CastRay(o[0], o[1], o[2], d[0], d[1], d[2], voxel.data());
    EXPECT_EQ(result, one["result"].get<int>()) << one.dump();
    if (result == 1) { EXPECT_EQ(voxel, (one["voxel"].get<std::array<int, 3>>())) << one.dump(); }
  }
}

TEST(GoldenViewsTest, TheLabelTableHasItsColours) {
  const json table = golden::Json("views/views.json")["labelTable"];
  const VoxData volume;
  for (std::size_t id = 0; id < 256; ++id) {
    const LabelEntry& entry = volume.labels[id];
    EXPECT_EQ((std::array<int, 3>{entry.rgb[0], entry.rgb[1], entry.rgb[2]}),
              (table[id]["rgb"].get<std::array<int, 3>>()))
        << id;
    EXPECT_EQ(entry.name, table[id]["name"]);
    EXPECT_EQ(entry.defined, table[id]["defined"].get<int>());
  }
}

}  // namespace
