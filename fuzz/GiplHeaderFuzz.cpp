// GIPL headers: the input is the file.
#include "VoxData/GiplIO.h"
#include "fuzz/FuzzInput.h"
#include "fuzz/ScratchFolder.h"

#include <algorithm>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::FuzzInput input(data, size);
  const std::string path = fuzz::Scratch().Write("volume.gipl", input.Rest());
  RawFields fields;
  ipReadGiplHeader(path.c_str(), fields);

  FUZZ_HOLDS(fields.headerSize == kGiplHeaderBytes);
  for (const double dim : fields.dims) { FUZZ_HOLDS(dim >= 0.0 && dim <= 65535.0); }
  // Zero was in the field before and stays where the header is refused.
  FUZZ_HOLDS(fields.dims[2] == 0.0 || fields.dims[2] >= 2.0);
  const double known[] = {0.0, 1.0, 2.0, 4.0, 8.0};
  FUZZ_HOLDS(std::count(std::begin(known), std::end(known), fields.bytes) == 1);

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
