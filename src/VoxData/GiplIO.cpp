#include "VoxData/GiplIO.h"

#include "VoxData/VoxData.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <memory>
#include <new>
#include <sys/stat.h>

namespace {

struct GiplType {
  int code;
  double bytes;
};

constexpr GiplType kGiplTypes[] = {{1, 1.0},  {7, 1.0},  {8, 1.0},  {15, 2.0}, {16, 2.0},
                                   {31, 4.0}, {32, 4.0}, {64, 4.0}, {65, 8.0}};

struct Unpacker {
  const char* ending;
  std::size_t shortestPath;
  const char* command;
  const char* word;  // written on standard output, or null
};

constexpr Unpacker kUnpackers[] = {{".gz", 4, "gzip -cd ", nullptr},
                                   {".zip", 5, "pkunzip -cd ", "Pkzip"},
                                   {".Z", 3, "uncompress -c ", nullptr}};

struct CloseStream {
  bool isCommand = false;
  void operator()(std::FILE* stream) const { isCommand ? pclose(stream) : std::fclose(stream); }
};
using Stream = std::unique_ptr<std::FILE, CloseStream>;

const Unpacker* UnpackerOf(const std::string& path) {
  for (const Unpacker& unpacker : kUnpackers) {
    const std::size_t length = std::strlen(unpacker.ending);
    if (path.size() >= unpacker.shortestPath && path.size() >= length &&
        path.compare(path.size() - length, length, unpacker.ending) == 0) {
      return &unpacker;
    }
  }
  return nullptr;
}

bool IsNoFile(const char* path) {
  struct stat status {};
  return stat(path, &status) == 0 && !S_ISREG(status.st_mode);
}

Stream OpenGipl(const char* path) {
  const Unpacker* unpacker = UnpackerOf(path);
  // A pipe is no file in any dress: its unpacker would wait for the writer.
  if (unpacker == nullptr || IsNoFile(path)) {
    return {VoxData::OpenFile(path, "rb"), CloseStream{false}};
  }
  if (unpacker->word != nullptr) { std::cout << unpacker->word << std::endl; }
  // What the tool says of a broken file would stand between the reader's own words.
  const std::string name = path[0] == '-' ? std::string("./") + path : path;  // no option
  const std::string command = unpacker->command + QuotedForShell(name) + " 2>/dev/null";
  std::FILE* stream = popen(command.c_str(), "r");
  if (stream == nullptr) {
    std::fprintf(stderr, "Warning: popen of \"%s\" failed:", path);
    std::perror("ds");
  }
  return {stream, CloseStream{true}};
}

std::uint16_t ReadBig16(std::FILE* stream) {
  std::uint8_t bytes[2] = {0, 0};
  static_cast<void>(std::fread(bytes, 1, sizeof bytes, stream));
  return static_cast<std::uint16_t>(bytes[0] << 8U | bytes[1]);
}

/// Four floats at once; the fourth, the step in time, is left as it stands in the file.
void ReadPixelSizes(std::FILE* stream, float* sizes) {
  std::uint8_t bytes[16] = {};
  static_cast<void>(std::fread(bytes, 1, sizeof bytes, stream));
  for (int axis = 0; axis < 3; ++axis) {
    const std::uint8_t* b = bytes + 4 * axis;
    const std::uint32_t bits = static_cast<std::uint32_t>(b[0]) << 24U |
                               static_cast<std::uint32_t>(b[1]) << 16U |
                               static_cast<std::uint32_t>(b[2]) << 8U | b[3];
    std::memcpy(&sizes[axis], &bits, sizeof bits);
  }
  std::memcpy(&sizes[3], bytes + 12, 4);
}

double VoxelBytes(int code) {
  for (const GiplType& type : kGiplTypes) {
    if (type.code == code) { return type.bytes; }
  }
  return 0.0;
}

}  // namespace

std::string QuotedForShell(const std::string& text) {
  std::string quoted = "'";
  for (const char c : text) {
    if (c == '\'') {
      quoted += "'\\''";
    } else {
      quoted += c;
    }
  }
  return quoted + "'";
}

GiplHeader* ipNewGiplHeader() {
  auto* header = new (std::nothrow) GiplHeader{};
  if (header == nullptr) {
    std::fprintf(stderr,
                 "Error: ipNewGiplHeader [%s, line %d]: memory allocation failed:", "GiplIO.cpp",
                 __LINE__);
    std::perror("");
    std::exit(errno);
  }
  std::snprintf(header->information, sizeof header->information, "Generated header");
  header->magic = 0xEFFFE9B0U;
  return header;
}

void ipReadGiplHeader(const char* path, RawFields& fields) {
  const std::unique_ptr<GiplHeader> header(ipNewGiplHeader());
  fields.headerSize = kGiplHeaderBytes;  // even when the file cannot be opened
  const Stream stream = OpenGipl(path);
  if (!stream) { return; }

  for (std::uint16_t& size : header->sizes) { size = ReadBig16(stream.get()); }
  if (header->sizes[2] < 2 || header->sizes[3] > 2) {
    std::cerr << "Not 3D data" << std::endl;
    return;
  }
  for (int axis = 0; axis < 3; ++axis) { fields.dims[axis] = header->sizes[axis]; }

  header->type = ReadBig16(stream.get());
  const double bytes = VoxelBytes(header->type);
  if (bytes == 0.0) { return; }  // new dimensions, old bytes and spacing
  fields.bytes = bytes;

  ReadPixelSizes(stream.get(), header->pixelSizes);
  for (int axis = 0; axis < 3; ++axis) { fields.spacing[axis] = header->pixelSizes[axis]; }
}
