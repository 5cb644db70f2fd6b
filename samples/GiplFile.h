// Writes GIPL files: 256 bytes of header, all numbers big-endian, then voxels with x fastest.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace gipl {

constexpr int kUnsigned8 = 8;
constexpr int kSigned16 = 15;

struct Header {
  std::array<int, 3> size{};
  int type = kUnsigned8;
  std::array<float, 3> spacing{1.0F, 1.0F, 1.0F};
};

/// The 256 bytes before the voxels.
std::vector<std::uint8_t> HeaderBytes(const Header& header);

/// Returns false when the file cannot be written whole.
bool Write(const std::string& path, const Header& header, const std::vector<std::uint8_t>& voxels);
bool WriteText(const std::string& path, const std::string& text);

}  // namespace gipl
