// Reads the studies with known results in tests/golden.
#pragma once

#include "tests/support/Checksums.h"
#include "tests/support/TestVolume.h"

#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <memory>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <vector>

namespace golden {

inline std::string Path(const std::string& relative) {
  return std::string(TOLVEX_GOLDEN) + "/" + relative;
}

inline nlohmann::json Json(const std::string& relative) {
  std::ifstream stream(Path(relative));
  if (!stream) { throw std::runtime_error("no file " + relative); }
  return nlohmann::json::parse(stream);
}

inline std::vector<std::uint8_t> Bytes(const std::string& relative) {
  std::ifstream stream(Path(relative), std::ios::binary);
  if (!stream) { throw std::runtime_error("no file " + relative); }
  return {std::istreambuf_iterator<char>(stream), {}};
}

/// One byte a voxel, x fastest, behind `header` bytes, exactly as the file holds them (no flips).
inline std::unique_ptr<TestVolume> Volume(const std::string& relative, int x, int y, int z,
                                          std::size_t header) {
  const std::vector<std::uint8_t> bytes = Bytes(relative);
  auto volume = std::make_unique<TestVolume>(x, y, z);
  if (bytes.size() < header + volume->Bytes().size()) {
    throw std::runtime_error("short file " + relative);
  }
  volume->FillFrom(bytes.data() + header);
  return volume;
}

inline std::string Hex8(std::uint32_t value) {
  char text[9];
  std::snprintf(text, sizeof text, "%08x", value);
  return text;
}

}  // namespace golden
