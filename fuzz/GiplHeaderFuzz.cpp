// GIPL headers: the input is the file.
#include "VoxData/GiplIO.h"
#include "fuzz/FuzzInput.h"
#include "fuzz/ScratchFolder.h"

#include <cmath>
#include <cstring>

namespace {

/// Two bytes, the most significant one first; zeros behind the end of the file.
unsigned WordAt(const std::uint8_t* data, std::size_t size, std::size_t at) {
  const unsigned high = at < size ? data[at] : 0;
  const unsigned low = at + 1 < size ? data[at + 1] : 0;
  return high << 8U | low;
}

double VoxelBytesOf(unsigned type) {
  switch (type) {
  case 1:
  case 7:
  case 8: return 1.0;
  case 15:
  case 16: return 2.0;
  case 31:
  case 32:
  case 64: return 4.0;
  case 65: return 8.0;
  default: return 0.0;
  }
}

/// Every field is what stands at its place in the file, or the old one where the file is refused.
void CompareWithBytes(const RawFields& fields, const std::uint8_t* data, std::size_t size) {
  const RawFields old;
  const bool isVolume = WordAt(data, size, 4) >= 2 && WordAt(data, size, 6) <= 2;
  const double bytes = VoxelBytesOf(WordAt(data, size, 8));
  const bool isKnown = isVolume && bytes != 0.0;
  FUZZ_HOLDS(fields.bytes == (isKnown ? bytes : old.bytes));
  for (std::size_t axis = 0; axis < 3; ++axis) {
    FUZZ_HOLDS(fields.dims[axis] == (isVolume ? WordAt(data, size, 2 * axis) : old.dims[axis]));
    const std::uint32_t bits =
        WordAt(data, size, 10 + 4 * axis) << 16U | WordAt(data, size, 12 + 4 * axis);
    float spacing = 0.0F;
    std::memcpy(&spacing, &bits, sizeof spacing);
    const double expected = isKnown ? static_cast<double>(spacing) : old.spacing[axis];
    FUZZ_HOLDS(fields.spacing[axis] == expected ||
               (std::isnan(fields.spacing[axis]) && std::isnan(expected)));
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::FuzzInput input(data, size);
  const std::string path = fuzz::Scratch().Write("volume.gipl", input.Rest());
  RawFields fields;
  ipReadGiplHeader(path.c_str(), fields);

  FUZZ_HOLDS(fields.headerSize == kGiplHeaderBytes);
  CompareWithBytes(fields, data, size);

  // A name is one word for the shell, whatever it holds: every quote in it is closed again.
  const std::string name(reinterpret_cast<const char*>(data), size);
  const std::string word = QuotedForShell(name);
  std::string back;
  bool quoted = false;
  for (std::size_t i = 0; i < word.size(); ++i) {
    if (word[i] == '\'') {
      quoted = !quoted;
    } else if (!quoted) {
      FUZZ_HOLDS(word[i] == '\\' && i + 1 < word.size());
      back += word[++i];
    } else {
      back += word[i];
    }
  }
  FUZZ_HOLDS(!quoted && back == name);
  return 0;
}
