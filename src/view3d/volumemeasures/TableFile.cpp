#include "view3d/volumemeasures/TableFile.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tables {

namespace {

/// A regular file that is open for writing; anything else, a folder or a pipe, is not opened.
class OpenFile {
public:
  explicit OpenFile(const std::string& path) : name(path) {
    struct stat status {};
    isNew = stat(name.c_str(), &status) != 0;
    if (name.empty() || (!isNew && !S_ISREG(status.st_mode))) { return; }
    file = open(name.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NONBLOCK, 0666);
    if (file >= 0) { size = lseek(file, 0, SEEK_END); }
  }
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;
  ~OpenFile() {
    if (file >= 0) { close(file); }
  }

  bool IsOpen() const { return file >= 0 && size >= 0; }
  off_t Size() const { return size; }

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

private:
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

  const std::string& name;
  bool isNew = false;
  int file = -1;
  off_t size = -1;
};

}  // namespace

std::string WithExtension(const std::string& name) {
  return name.find(".xls") != std::string::npos ? name : name + ".xls";
}

bool Append(const std::string& name, const std::string& text) {
  OpenFile file(name);
  return file.IsOpen() && file.Write(text, file.Size());
}

bool Replace(const std::string& name, const std::string& text) {
  OpenFile file(name);
  return file.IsOpen() && file.Write(text, 0);
}

}  // namespace tables
