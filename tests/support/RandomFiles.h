// Files, good and bad, that a random user loads and writes, in a folder of their own.
#pragma once

#include <string>
#include <utility>
#include <vector>

/// All paths are relative to the folder, which is the current one for as long as this lives.
class RandomFiles {
public:
  explicit RandomFiles(const std::string& where);
  RandomFiles(const RandomFiles&) = delete;
  RandomFiles& operator=(const RandomFiles&) = delete;
  ~RandomFiles();

  void WriteLists() const;  ///< as they were: the user saves others under their names

  std::vector<std::string> goodLists;    ///< studies that load whole
  std::vector<std::string> goodVolumes;  ///< GIPL files of the sizes of those studies
  std::vector<std::string> badFiles;     ///< of every kind, lists and volumes
  std::vector<std::string> badNames;     ///< under which nothing can be written

private:
  void AddStudies();
  void AddBadFiles();

  std::vector<std::pair<std::string, std::string>> lists;  ///< names and texts
  std::string folder;
  std::string before;
};
