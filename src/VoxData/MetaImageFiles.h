// The files that a MetaImage names.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

namespace metaimage {

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

/// A file to read, opened as for writing too; null for what is no file, which could block.
File OpenFile(const std::string& name);

/// Bytes of a file; 0 for what is no file.
std::int64_t SizeOf(const std::string& name);

/// The part of a path up to its last "/" or "\", that one included.
std::string DirectoryOf(const std::string& path);

/// The name of slice files: text around one whole-number conversion as printf knows it.
class SlicePattern {
public:
  /// Takes `folder` as it stands and `name` with its "%". Returns false for a name with anything
  /// but exactly one conversion "d", "i", "u", "o", "x" or "X" without a length.
  bool Parse(const std::string& folder, const std::string& name);
  std::string NameOf(int number) const;

private:
  bool ParseConversion(const std::string& name, std::size_t& at);
  std::string Digits(int number) const;

  std::string before;
  std::string behind;
  bool left = false;
  bool zeros = false;
  bool plus = false;
  bool blank = false;
  int width = 0;
  int precision = -1;  ///< least digits, or -1
  char letter = 'd';
};

}  // namespace metaimage
