#include "GiplFile.h"

#include <cstring>
#include <fstream>

namespace gipl {

namespace {

void PutBig(std::vector<std::uint8_t>& bytes, std::size_t at, std::uint32_t value,
            std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    bytes[at + i] = static_cast<std::uint8_t>(value >> (8U * (count - 1 - i)));
  }
}

void WriteBytes(std::ofstream& stream, const void* bytes, std::size_t count) {
  stream.write(static_cast<const char*>(bytes), static_cast<std::streamsize>(count));
}

}  // namespace

std::vector<std::uint8_t> HeaderBytes(const Header& header) {
  std::vector<std::uint8_t> bytes(256, 0);
  for (std::size_t axis = 0; axis < 3; ++axis) {
    PutBig(bytes, 2 * axis, static_cast<std::uint32_t>(header.size[axis]), 2);
    std::uint32_t bits = 0;
    std::memcpy(&bits, &header.spacing[axis], sizeof bits);
    PutBig(bytes, 10 + 4 * axis, bits, 4);
  }
  PutBig(bytes, 6, 1, 2);
  PutBig(bytes, 8, static_cast<std::uint32_t>(header.type), 2);
  PutBig(bytes, 252, 0xEFFFE9B0U, 4);
  return bytes;
}

bool Write(const std::string& path, const Header& header, const std::vector<std::uint8_t>& voxels) {
  std::ofstream stream(path, std::ios::binary);
  const std::vector<std::uint8_t> head = HeaderBytes(header);
  WriteBytes(stream, head.data(), head.size());
  WriteBytes(stream, voxels.data(), voxels.size());
  return static_cast<bool>(stream.flush());
}

bool WriteText(const std::string& path, const std::string& text) {
  std::ofstream stream(path, std::ios::binary);
  WriteBytes(stream, text.data(), text.size());
  return static_cast<bool>(stream.flush());
}

}  // namespace gipl
