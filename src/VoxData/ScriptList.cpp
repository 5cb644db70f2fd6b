#include "VoxData/ScriptList.h"

#include "base/Limits.h"
#include "base/WholeFile.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <limits>
#include <sys/stat.h>

namespace script {

namespace {

constexpr std::size_t kMaxLine = 300;  // characters of a line

bool Holds(const std::string& line, const char* word) {
  return line.find(word) != std::string::npos;
}

struct Line {
  std::string text;
  bool ended = false;  // by a line feed
};

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

/// All lines of a file; nothing follows the last line feed but an end.
std::string ReadLines(std::ifstream& stream, std::vector<Line>& lines) {
  Line line;
  for (std::istreambuf_iterator<char> at(stream), end; at != end; ++at) {
    if (*at == '\n') {
      line.ended = true;
      lines.push_back(line);
      line = {};
      continue;
    }
    line.text += *at;
    if (line.text.size() > kMaxLine) {
      return "A line of the list file has more than 300 characters: line " +
             std::to_string(lines.size() + 1);
    }
  }
  if (!line.text.empty()) { lines.push_back(line); }
  return {};
}

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
  std::vector<Line> lines;
  const std::string problem = ReadLines(stream, lines);
  if (!problem.empty()) { return problem; }
  if (!lines.empty()) { list.users = lines[0].text; }
  if (lines.size() > 1) { list.repeats = lines[1].text; }
  list.userCount = NumberOf(list.users);
  list.slicesPerUser = NumberOf(list.repeats);
  for (std::size_t i = 2; i < lines.size(); ++i) {
    const std::string& line = lines[i].text;
    // ON PURPOSE: a line that begins with this digit ends the list.
    if (!line.empty() && line[0] == '2') { break; }
    if (Holds(line, "gipl") || Holds(line, "raw")) { ++list.imageLines; }
    if (list.greyPath.empty()) {
      if (Holds(line, ".gipl")) { list.greyPath = line; }
    } else if (Holds(line, ".gipl") || Holds(line, ".raw")) {
      list.segPaths.push_back(line);
    }
  }
  if (list.segPaths.size() > static_cast<std::size_t>(kMaxImages)) {
    return "The list names " + std::to_string(list.segPaths.size()) +
           " segmentations; a study holds at most 60 images";
  }
  return {};
}

std::string ReadListTexts(const char* path, ListTexts& texts) {
  std::ifstream stream = OpenList(path);
  if (!stream.is_open()) { return NotOpened(path); }
  std::vector<Line> lines;
  const std::string problem = ReadLines(stream, lines);
  if (!problem.empty()) { return problem; }
  if (!lines.empty() && !lines.back().ended) { lines.pop_back(); }
  texts.hasUsers = !lines.empty();
  texts.hasRepeats = lines.size() > 1;
  texts.hasOriginal = lines.size() > 2;
  texts.hasSegs = lines.size() > 3;
  if (texts.hasUsers) { texts.userCount = NumberOf(lines[0].text); }
  if (texts.hasRepeats) { texts.slicesPerUser = NumberOf(lines[1].text); }
  if (texts.hasOriginal) { texts.original = lines[2].text; }
  for (std::size_t i = 3; i < lines.size(); ++i) {
    if (i > 3) { texts.segs += '\n'; }
    texts.segs += lines[i].text;
  }
  if (texts.segs.size() >= static_cast<std::size_t>(kMaxListText)) {
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
