// The volume studies with known results: label volumes as they stand in memory, cases, checksums.
#pragma once

#include "tests/support/Golden.h"
#include "view3d/volumemeasures/DistanceTransform.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace golden {

/// The folders of all volume studies, sorted.
inline std::vector<std::string> StudyNames() {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(Path("volumes"))) {
    names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

/// CRC-32 of one byte a voxel, x fastest, then y, then z.
inline std::string VoxelChecksum(const LabelVolume& volume) {
  Crc32 sum;
  for (int z = 0; z < volume.dimZ; ++z) {
    for (int y = 0; y < volume.dimY; ++y) {
      for (int x = 0; x < volume.dimX; ++x) { sum.Add(volume.At(x, y, z)); }
    }
  }
  return Hex8(sum.Value());
}

/// CRC-32 of the scalars of a work volume as bytes 0 and 255.
inline std::string ScalarChecksum(const WorkVolume& picture) {
  Crc32 sum;
  const std::size_t count = LabelVolume{nullptr, picture.dimX, picture.dimY, picture.dimZ}.Count();
  for (std::size_t i = 0; i < count; ++i) {
    sum.Add(picture.scalars[i] != 0.0F ? std::uint8_t{255} : std::uint8_t{0});
  }
  return Hex8(sum.Value());
}

/// CRC-32 of vector components as little-endian floats, negative zeros made positive.
inline std::string VectorChecksum(const float* components, std::size_t count) {
  Crc32 sum;
  for (std::size_t i = 0; i < count; ++i) {
    const float component = components[i] + 0.0F;
    sum.Add(&component, sizeof component);
  }
  return Hex8(sum.Value());
}

/// Holds a painted work volume against "displayVolume1" (2, 3) of a case.
inline void ExpectPicture(const nlohmann::json& expected, const WorkVolume& picture) {
  const LabelVolume colours{picture.colours, picture.dimX, picture.dimY, picture.dimZ};
  if (!expected["work"].value("undefined", false)) {
    EXPECT_EQ(VoxelChecksum(colours), expected["work"]["crc32"].get<std::string>());
  }
  if (!expected["scalars"].value("undefined", false)) {
    EXPECT_EQ(ScalarChecksum(picture), expected["scalars"]["crc32"].get<std::string>());
  }
}

/// One study: its description, its cases, and its images after a load, each held to its checksum.
class GoldenStudy {
public:
  explicit GoldenStudy(const std::string& folder)
      : name(folder), all(golden::Json("volumes/" + folder + "/expected.json")) {
    for (std::size_t i = 0; i < Study()["segRawFiles"].size(); ++i) { LoadImage(i); }
  }

  const std::string name;
  const nlohmann::json& Study() const { return all["study"]; }
  /// The cases of an operation; empty when the study has none.
  nlohmann::json Cases(const char* operation) const {
    return all["operations"].value(operation, nlohmann::json::array());
  }
  std::array<int, 3> Dims() const { return Study()["dims"].get<std::array<int, 3>>(); }
  /// The voxel size of slot 0, which every measure uses.
  measure::VoxelSize Size() const {
    const auto spacing = Study()["spacing"].get<std::array<double, 3>>();
    return {static_cast<float>(spacing[0]), static_cast<float>(spacing[1]),
            static_cast<float>(spacing[2])};
  }
  int ImageCount() const { return static_cast<int>(images.size()); }
  TestVolume& Image(int slot) const { return *images.at(static_cast<std::size_t>(slot)); }
  LabelVolume Labels(int slot) const { return Image(slot).Labels(); }
  /// A volume of the study's size, all 0, for pictures.
  std::unique_ptr<TestVolume> Blank() const {
    const auto [x, y, z] = Dims();
    return std::make_unique<TestVolume>(x, y, z);
  }

private:
  static constexpr std::size_t kHeader = 256;  // zero bytes in front of the voxels

  bool Flipped(const char* axis) const { return Study()["origin"][axis].get<int>() != 0; }

  void LoadImage(std::size_t i) {
    const auto [dimX, dimY, dimZ] = Dims();
    const auto file =
        golden::Volume("volumes/" + name + "/" + Study()["segRawFiles"][i].get<std::string>(), dimX,
                       dimY, dimZ, kHeader);
    const bool flipX = Flipped("greyOriginXChoice");
    const bool flipY = Flipped("greyOriginYChoice");
    const bool flipZ = Flipped("greyOriginZChoice");
    auto image = Blank();
    for (int x = 0; x < dimX; ++x) {
      for (int y = 0; y < dimY; ++y) {
        for (int z = 0; z < dimZ; ++z) {
          image->voxel(x, y, z) = file->voxel(flipX ? dimX - 1 - x : x, flipY ? dimY - 1 - y : y,
                                              flipZ ? dimZ - 1 - z : z);
        }
      }
    }
    if (VoxelChecksum(image->Labels()) != Study()["images"][i]["memoryCrc32"].get<std::string>()) {
      throw std::runtime_error(name + ": image " + std::to_string(i) + " is not as it should be");
    }
    images.push_back(std::move(image));
  }

  nlohmann::json all;
  std::vector<std::unique_ptr<TestVolume>> images;
};

/// Runs check(study, one) for every case of an operation in every study, and counts the cases.
template <class Check>
int ForEachCase(const char* operation, Check check) {
  int cases = 0;
  for (const std::string& name : StudyNames()) {
    const GoldenStudy study(name);
    for (const nlohmann::json& one : study.Cases(operation)) {
      SCOPED_TRACE(name + " " + operation + " " +
                   one.value("inputs", nlohmann::json::object()).dump());
      check(study, one);
      ++cases;
    }
  }
  return cases;
}

}  // namespace golden
