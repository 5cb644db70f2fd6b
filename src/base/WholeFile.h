// A file whose new contents are written whole or not at all.
#pragma once

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

/// A regular file that is open for writing. Anything else, a folder or a pipe, is not opened, and
/// nothing can be written to it. A link goes on pointing to its file, which keeps its rights.
class WholeFile {
public:
  explicit WholeFile(std::string path) : name(std::move(path)) {
    struct stat status {};
    isNew = stat(name.c_str(), &status) != 0;
    if (name.empty() || (!isNew && !S_ISREG(status.st_mode))) { return; }
    file = open(name.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NONBLOCK, 0666);
    if (file >= 0) { size = lseek(file, 0, SEEK_END); }
  }
  WholeFile(const WholeFile&) = delete;
  WholeFile& operator=(const WholeFile&) = delete;
  ~WholeFile() {
    if (file >= 0) { close(file); }
  }

  /// Appends `text`. Returns false, with the file as it was, where it cannot be written whole.
  bool Append(const std::string& text) { return IsOpen() && Write(text, size); }
  /// Replaces the contents by `text`; false, with the old contents kept, where that fails.
  bool Replace(const std::string& text) { return IsOpen() && Write(text, 0); }

private:
  bool IsOpen() const { return file >= 0 && size >= 0; }

  /// Writes `text` at `place` and ends the file behind it; false, with the file as it was, where
  /// that fails.
  bool Write(const std::string& text, off_t place) {
    std::string before(
        static_cast<std::size_t>(std::min<off_t>(size - place, static_cast<off_t>(text.size()))),
        '\0');
    if (!ReadAt(before, place)) { return false; }
    const off_t end = place + static_cast<off_t>(text.size());
    if (WriteAt(text, place) && ftruncate(file, end) == 0) { return true; }
    // What was overwritten needs no new room on the disk.
    const bool restored = WriteAt(before, place) && ftruncate(file, size) == 0;
    if (isNew && restored) { unlink(name.c_str()); }
    return false;
  }

  bool ReadAt(std::string& text, off_t place) const {
    std::size_t done = 0;
    while (done < text.size()) {
      const ssize_t count =
          pread(file, &text[done], text.size() - done, place + static_cast<off_t>(done));
      if (count < 0 && errno == EINTR) { continue; }
      if (count <= 0) { return false; }
      done += static_cast<std::size_t>(count);
    }
    return true;
  }

  bool WriteAt(const std::string& text, off_t place) const {
    std::size_t done = 0;
    while (done < text.size()) {
      const ssize_t count =
          pwrite(file, text.data() + done, text.size() - done, place + static_cast<off_t>(done));
      if (count < 0 && errno == EINTR) { continue; }
      if (count <= 0) { return false; }
      done += static_cast<std::size_t>(count);
    }
    return true;
  }

  std::string name;
  bool isNew = false;
  int file = -1;
  off_t size = -1;
};
