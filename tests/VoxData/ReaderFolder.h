// A folder of its own for the files of one test.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>
#include <vector>

class ReaderFolderTest : public testing::Test {
protected:
  std::string folder = testing::TempDir() + "tolvex-reader-" + std::to_string(getpid()) + "/";

  void SetUp() override {
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
  }
  void TearDown() override { std::filesystem::remove_all(folder); }

  std::string File(const std::string& name, const std::string& bytes) const {
    std::ofstream(folder + name, std::ios::binary) << bytes;
    return folder + name;
  }
};
