// The script list file: one grey volume and all segmentations of a study.
#pragma once

#include <string>
#include <vector>

namespace script {

/// What a load takes from a list file.
struct StudyList {
  bool opened = false;  ///< whether the file could be opened
  std::string users;    ///< first line as it stands
  std::string repeats;  ///< second line as it stands
  int userCount = 0;
  int slicesPerUser = 0;
  std::string greyPath;               ///< first line that holds ".gipl"; empty without one
  std::vector<std::string> segPaths;  ///< later lines that hold ".gipl" or ".raw"
  int imageLines = 0;  ///< lines that hold "gipl" or "raw", which the steps of the bar count
};

/// Reads a list for a load. A line that begins with "2" ends it as the end of the file does; a
/// last line without a line feed counts.
///
/// Returns: an empty text, or why the list is refused: a line of more than 300 characters, more
///          than 60 segmentations, a file that cannot be opened.
std::string ReadStudyList(const char* path, StudyList& list);

/// What the Create List window takes from a list file.
struct ListTexts {
  int userCount = 0;
  int slicesPerUser = 0;
  bool hasUsers = false;  ///< the file ended before the lines whose flags are false
  bool hasRepeats = false;
  bool hasOriginal = false;
  bool hasSegs = false;
  std::string original;
  std::string segs;  ///< the lines behind the original image
};

/// Reads a list back for the window; a last line without a line feed is dropped.
/// Returns: an empty text, or why the list is refused: a line of more than 300 characters, a text
///          of more than 9,999, a file that cannot be opened.
std::string ReadListTexts(const char* path, ListTexts& texts);

/// Writes a list whole or not at all, over what the file held before.
/// Returns: an empty text, or what went wrong.
std::string WriteList(const std::string& path, int users, int repeats, const std::string& original,
                      const std::string& segs);

/// `text` as a whole number like atoi, without its undefined cases.
int NumberOf(const std::string& text);

}  // namespace script
