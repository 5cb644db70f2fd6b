#include "view3d/volumemeasures/TableFile.h"

#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tables {

namespace {

bool WriteAll(int file, const std::string& text) {
  std::size_t done = 0;
  while (done < text.size()) {
    const ssize_t wrote = write(file, text.data() + done, text.size() - done);
    if (wrote <= 0) { return false; }
    done += static_cast<std::size_t>(wrote);
  }
  return true;
}

/// A file that can be written, or one that is not there yet.
bool IsFile(const std::string& name) {
  struct stat status {};
  return stat(name.c_str(), &status) != 0 || S_ISREG(status.st_mode);
}

}  // namespace

std::string WithExtension(const std::string& name) {
  return name.find(".xls") != std::string::npos ? name : name + ".xls";
}

bool Append(const std::string& name, const std::string& text) {
  if (name.empty() || !IsFile(name)) { return false; }
  const int file = open(name.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
  if (file < 0) { return false; }
  const off_t before = lseek(file, 0, SEEK_END);
  const bool written = WriteAll(file, text);
  // A row that the disk had no room for leaves nothing behind.
  const bool whole = written || ftruncate(file, before) != 0;
  return close(file) == 0 && written && whole;
}

bool Replace(const std::string& name, const std::string& text) {
  if (name.empty() || !IsFile(name)) { return false; }
  const std::string beside = name + ".part";
  const int file = open(beside.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
  if (file < 0) { return false; }
  const bool written = WriteAll(file, text);
  if (close(file) == 0 && written && std::rename(beside.c_str(), name.c_str()) == 0) {
    return true;
  }
  std::remove(beside.c_str());
  return false;
}

}  // namespace tables
