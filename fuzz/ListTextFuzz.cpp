// The texts of the Create List window: read back from a file, saved and read again.
#include "VoxData/ScriptList.h"
#include "base/Limits.h"
#include "fuzz/FuzzInput.h"
#include "fuzz/ScratchFolder.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::FuzzInput input(data, size);
  const std::string path = fuzz::Scratch().Write("list.tlx", input.Rest());

  script::ListTexts texts;
  const std::string problem = script::ReadListTexts(path.c_str(), texts);
  if (!problem.empty() || !texts.hasSegs) { return 0; }
  FUZZ_HOLDS(texts.segs.size() < static_cast<std::size_t>(kMaxListText));

  // What is saved comes back, a line feed longer as the file has one more than the text.
  const std::string saved = fuzz::Scratch().PathOf("saved.tlx");
  FUZZ_HOLDS(
      script::WriteList(saved, texts.userCount, texts.slicesPerUser, texts.original, texts.segs)
          .empty());
  script::ListTexts again;
  FUZZ_HOLDS(script::ReadListTexts(saved.c_str(), again).empty());
  FUZZ_HOLDS(again.userCount == texts.userCount && again.slicesPerUser == texts.slicesPerUser);
  FUZZ_HOLDS(again.original == texts.original && again.segs == texts.segs);
  return 0;
}
