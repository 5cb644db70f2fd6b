// MetaImage: the elements behind the header, in a file of their own, or in one file a slice.
#include "VoxData/MetaImage.h"
#include "VoxData/MetaImageFiles.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {

std::int64_t MemoryOfTheMachine() {
  return std::int64_t{sysconf(_SC_PHYS_PAGES)} * std::int64_t{sysconf(_SC_PAGESIZE)};
}

/// Reads on and drops it. Returns how many of `count` elements of `bytes` each were there.
std::int64_t CountElements(std::FILE* file, std::int64_t count, int bytes) {
  char chunk[4096];
  if (bytes < 1) { return 0; }
  const std::int64_t wanted = count * bytes;
  std::int64_t read = 0;
  while (read < wanted) {
    const auto most = std::min<std::int64_t>(wanted - read, sizeof chunk);
    const std::size_t got = std::fread(chunk, 1, static_cast<std::size_t>(most), file);
    read += static_cast<std::int64_t>(got);
    if (static_cast<std::int64_t>(got) < most) { break; }
  }
  return read / bytes;
}

}  // namespace

void* MI_Alloc(int type, std::int64_t count) {
  const std::int64_t bytes = std::max<std::int64_t>(MET_Bytes(type), 0);
  void* array = nullptr;
  if (count >= 0 && (bytes == 0 || count <= MemoryOfTheMachine() / bytes)) {
    array = std::calloc(static_cast<std::size_t>(std::max<std::int64_t>(count * bytes, 1)), 1);
  }
  if (array == nullptr) {
    std::cout << "ERROR: MI_Alloc(" << MET_TypeText(type) << ", " << count << ") returned NULL"
              << std::endl;
  }
  return array;
}

std::int64_t MetaImage::ElementsIn(std::int64_t bytes) const {
  return elementBytes > 0 ? std::max<std::int64_t>(bytes - headerSize, 0) / elementBytes : 0;
}

bool MetaImage::Allocate(std::int64_t held) {
  allocated = std::min<std::int64_t>(held, quantity);
  data = MI_Alloc(elementType, allocated);
  dataAllocated = data != nullptr ? 1 : 0;
  if (data != nullptr) { return true; }
  allocated = 0;
  const std::string text = "Error: Cannot allocate memory for image data";
  return Fail(text, text);
}

bool MetaImage::ReadElements() {
  const std::string name = elementDataFile;
  bool read = false;
  if (name == "LOCAL") {
    read = ReadLocal();
  } else {
    const std::string folder = metaimage::DirectoryOf(name).empty() ? headerDir : "";
    const bool isPattern = name.find('%') != std::string::npos;
    read = isPattern ? ReadSlices(folder, name) : ReadDataFile(folder + name);
  }
  if (read) { FixByteOrder(); }
  return read;
}

bool MetaImage::ReadLocal() {
  struct stat status {};
  const bool known = fstat(fileno(stream), &status) == 0;
  const std::int64_t behind = known ? status.st_size - std::ftell(stream) : 0;
  if (!Allocate(ElementsIn(behind))) { return false; }
  ReadData(0, quantity, stream);
  return true;
}

bool MetaImage::ReadDataFile(const std::string& name) {
  return Allocate(ElementsIn(metaimage::SizeOf(name))) && ReadOneFile(name, 0, quantity);
}

bool MetaImage::ReadSlices(const std::string& folder, const std::string& name) {
  metaimage::SlicePattern pattern;
  if (nDims < 1 || !pattern.Parse(folder, name)) {
    const std::string text = "Error: the element data file needs one whole number: " + name;
    return Fail(text, text);
  }
  const int start = metaimage::OpenFile(pattern.NameOf(0)) ? 0 : 1;
  const std::int64_t each = std::int64_t{dimSize[0]} * dimSize[1];
  // Slices beyond the volume, which has fewer elements when it is flat, are not read.
  const std::int64_t fitting = each > 0 ? quantity / each : dimSize[nDims - 1];
  const int slices = static_cast<int>(std::min<std::int64_t>(dimSize[nDims - 1], fitting));
  std::int64_t held = 0;
  for (int i = 0; each > 0 && i < slices && held == each * i; ++i) {
    held += std::min(each, ElementsIn(metaimage::SizeOf(pattern.NameOf(start + i))));
  }
  if (!Allocate(held)) { return false; }
  for (int i = 0; i < slices; ++i) {
    if (!ReadOneFile(pattern.NameOf(start + i), each * i, each)) { return false; }
  }
  return true;
}

bool MetaImage::ReadOneFile(const std::string& name, std::int64_t first, std::int64_t count) {
  const metaimage::File file = metaimage::OpenFile(name);
  if (!file) {
    return Fail("Error: Cannot open element data file: _" + name + "_",
                "Error: cannot open element data file: " + name);
  }
  // ON PURPOSE: a short file leaves its words and goes on.
  ReadData(first, count, file.get());
  return true;
}

void MetaImage::ReadData(std::int64_t first, std::int64_t count, std::FILE* file) {
  if (headerSize > 0) {
    const std::int64_t skipped = CountElements(file, headerSize, 1);
    if (skipped < headerSize) {
      const std::string read = "Error: read header " + std::to_string(skipped);
      Fail(read + " but expecting " + std::to_string(headerSize),
           read + " but expected " + std::to_string(headerSize));
      return;
    }
  }
  // What an earlier short file left no room for is counted all the same, for the words.
  const auto room = std::clamp<std::int64_t>(allocated - first, 0, count);
  std::int64_t got = 0;
  if (elementBytes > 0 && room > 0) {
    char* into = static_cast<char*>(data) + first * elementBytes;
    got = static_cast<std::int64_t>(std::fread(into, static_cast<std::size_t>(elementBytes),
                                               static_cast<std::size_t>(room), file));
  }
  if (got == room) { got += CountElements(file, count - room, elementBytes); }
  if (got == count) { return; }
  const std::string read = "Error: read " + std::to_string(got);
  Fail(read + " but expecting " + std::to_string(count),
       read + " but expected " + std::to_string(count));
}

void MetaImage::FixByteOrder() {
  if (elementMsb == 0) { return; }
  auto* bytes = static_cast<std::uint8_t*>(data);
  if (elementBytes == 2 || elementBytes == 4) {
    // ON PURPOSE: of four bytes the two halves stay in place.
    const std::int64_t total = allocated * elementBytes;
    for (std::int64_t i = 0; i + 1 < total; i += 2) { std::swap(bytes[i], bytes[i + 1]); }
  }
  elementMsb = 0;
}
