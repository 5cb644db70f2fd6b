// A folder in memory for the files that a fuzz target hands to a reader.
#pragma once

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

namespace fuzz {

class ScratchFolder {
public:
  ScratchFolder() {
    std::error_code none;
    const bool inMemory = std::filesystem::is_directory("/dev/shm", none);
    std::string name =
        (inMemory ? "/dev/shm" : std::filesystem::temp_directory_path().string()) + "/fuzz-XXXXXX";
    if (mkdtemp(name.data()) == nullptr) { std::abort(); }
    path = name + "/";
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;
  ~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
  }

  std::string PathOf(const std::string& name) const { return path + name; }
  std::string Write(const std::string& name, const std::string& bytes) const {
    std::ofstream(PathOf(name), std::ios::binary) << bytes;
    return PathOf(name);
  }

private:
  std::string path;
};

/// The folder of this process. The readers' words are of no use here: both streams are silent.
inline const ScratchFolder& Scratch() {
  static const ScratchFolder folder;
  static const bool silent = [] {
    std::cout.setstate(std::ios::failbit);
    std::cerr.setstate(std::ios::failbit);
    return true;
  }();
  static_cast<void>(silent);
  return folder;
}

}  // namespace fuzz
