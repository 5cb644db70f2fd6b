#include "VoxData/ScriptList.h"

#include "base/Limits.h"
#include "base/WholeFile.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <limits>
#include <sys/stat.h>

namespace script {

namespace {

constexpr std::size_t kMaxLine = 300;  // characters of a line

bool Holds(const std::string& line, const char* word) {
  return line.find(word) != std::string::npos;
}

/// Opens a list; anything but a regular file, a folder or a pipe, is not opened.
std::ifstream OpenList(const char* path) {
  struct stat status {};
  std::ifstream stream;
  if (stat(path, &status) == 0 && S_ISREG(status.st_mode)) { stream.open(path, std::ios::binary); }
  return stream;
}

std::string NotOpened(const char* path) {
  return std::string("The list file cannot be opened: ") + path;
}

/// The lines of a list, one after another: a file of any size takes the room of one line.
class Lines {
public:
  explicit Lines(std::ifstream& stream) : bytes(*stream.rdbuf()) {}

  /// Takes the next line, the last one with or without a line feed.
  /// Returns: false at the end of the file, and from a line on that is too long.
  bool Next() {
    constexpr int kEnd = std::filebuf::traits_type::eof();
    text.clear();
    ended = false;
    if (!problem.empty()) { return false; }
    ++count;
    for (int byte = bytes.sbumpc(); byte != kEnd; byte = bytes.sbumpc()) {
      ended = byte == '\n';
      if (ended) { return true; }
      text += static_cast<char>(byte);
      if (text.size() > kMaxLine) {
        problem =
            "A line of the list file has more than 300 characters: line " + std::to_string(count);
        return false;
      }
    }
    return !text.empty();
  }

  const std::string& Text() const { return text; }
  bool Ended() const { return ended; }  ///< by a line feed
  const std::string& Problem() const { return problem; }

private:
  std::filebuf& bytes;
  std::string text;
  std::string problem;
  std::size_t count = 0;
  bool ended = false;
};

}  // namespace

int NumberOf(const std::string& text) {
  const long value = std::strtol(text.c_str(), nullptr, 10);
  return static_cast<int>(
      std::clamp<long>(value, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

std::string ReadStudyList(const char* path, StudyList& list) {
  std::ifstream stream = OpenList(path);
  list.opened = stream.is_open();
  if (!list.opened) { return NotOpened(path); }
  Lines lines(stream);
  if (lines.Next()) { list.users = lines.Text(); }
  if (lines.Next()) { list.repeats = lines.Text(); }
  list.userCount = NumberOf(list.users);
  list.slicesPerUser = NumberOf(list.repeats);
  std::size_t segmentations = 0;
  while (lines.Next()) {
    const std::string& line = lines.Text();
    // ON PURPOSE: a line that begins with this digit ends the list.
    if (!line.empty() && line[0] == '2') { break; }
    if (Holds(line, "gipl") || Holds(line, "raw")) { ++list.imageLines; }
    if (list.greyPath.empty()) {
      if (Holds(line, ".gipl")) { list.greyPath = line; }
    } else if (Holds(line, ".gipl") || Holds(line, ".raw")) {
      if (++segmentations <= kMaxImages) { list.segPaths.push_back(line); }
    }
  }
  if (!lines.Problem().empty()) { return lines.Problem(); }
  if (segmentations > kMaxImages) {
    return "The list names " + std::to_string(segmentations) +
           " segmentations; a study holds at most 60 images";
  }
  return {};
}

std::string ReadListTexts(const char* path, ListTexts& texts) {
  std::ifstream stream = OpenList(path);
  if (!stream.is_open()) { return NotOpened(path); }
  Lines lines(stream);
  // A last line without a line feed is dropped.
  const auto next = [&lines] {
    return lines.Next() && lines.Ended();
  };
  texts.hasUsers = next();
  if (texts.hasUsers) { texts.userCount = NumberOf(lines.Text()); }
  texts.hasRepeats = texts.hasUsers && next();
  if (texts.hasRepeats) { texts.slicesPerUser = NumberOf(lines.Text()); }
  texts.hasOriginal = texts.hasRepeats && next();
  if (texts.hasOriginal) { texts.original = lines.Text(); }
  texts.hasSegs = texts.hasOriginal && next();
  if (texts.hasSegs) { texts.segs = lines.Text(); }
  while (texts.hasSegs && texts.segs.size() < kMaxListText && next()) {
    texts.segs += '\n' + lines.Text();
  }
  if (!lines.Problem().empty()) { return lines.Problem(); }
  if (texts.segs.size() >= kMaxListText) {
    return "The segmentations of the list have more than 9,999 characters";
  }
  return {};
}

std::string WriteList(const std::string& path, int users, int repeats, const std::string& original,
                      const std::string& segs) {
  const std::string text =
      std::to_string(users) + '\n' + std::to_string(repeats) + '\n' + original + '\n' + segs + '\n';
  if (WholeFile(path).Replace(text)) { return {}; }
  return "The list file cannot be written: " + path;
}

}  // namespace script
