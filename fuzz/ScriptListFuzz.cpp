// Script list files read for a load: the input is the file.
#include "VoxData/ScriptList.h"
#include "base/Limits.h"
#include "fuzz/FuzzInput.h"
#include "fuzz/ScratchFolder.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::FuzzInput input(data, size);
  const std::string path = fuzz::Scratch().Write("study.tlx", input.Rest());

  script::StudyList list;
  const std::string problem = script::ReadStudyList(path.c_str(), list);
  if (!problem.empty()) { return 0; }
  FUZZ_HOLDS(list.segPaths.size() <= static_cast<std::size_t>(kMaxImages));
  FUZZ_HOLDS(list.segPaths.empty() || !list.greyPath.empty());
  FUZZ_HOLDS(list.userCount == script::NumberOf(list.users));
  for (const std::string& seg : list.segPaths) {
    FUZZ_HOLDS(!seg.empty() && seg.size() <= 300 && seg[0] != '2');
    FUZZ_HOLDS(seg.find('\n') == std::string::npos);
  }
  FUZZ_HOLDS(list.imageLines >= static_cast<int>(list.segPaths.size()));
  return 0;
}
