// The flows that turn files into the image slots of a study.
#pragma once

#include <cstdint>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

class MainUI;
class VoxData;

class ImageLoader {
public:
  MainUI* ui = nullptr;
  std::uint8_t firstGrey = 1;      ///< 1: the next grey flow reads the file; 0: it makes a slot
  std::uint8_t firstSeg = 1;       ///< 1: the next segmentation goes into the slot that exists
  std::int32_t progressWidth = 0;  ///< present width of progressBar, pixels
  char greyPath[300] = {};         ///< grey file of the study, for making further slots
  std::int32_t index = 0;
  std::FILE* listStream = nullptr;   ///< script list file, second pass
  std::FILE* countStream = nullptr;  ///< script list file, first pass
  char* listPath = nullptr;
  char statusText[300] = {};
  std::int32_t segHeaderSize = 256;
  std::int32_t dims[3] = {0, 0, 0};
  std::int32_t flips[3] = {0, 0, 0};
  float spacing[3] = {1.0F, 1.0F, 1.0F};
  std::int32_t headerSize = 0;

  explicit ImageLoader(MainUI* owner);
  ImageLoader(const ImageLoader&) = delete;
  ImageLoader& operator=(const ImageLoader&) = delete;
  ~ImageLoader();

  void StartGreyLoad();                    ///< "Load" of Load Grey Data
  int LoadGrey(const char* path);          ///< the grey flow
  void LoadSeg();                          ///< "Load" of Load Seg Data
  int ReadSegIntoSlot(const char* path);   ///< into the slot at imageSlider
  int LoadGreyScripted(const char* path);  ///< the grey flow of a script list file
  int LoadSegScripted(const char* path);   ///< the segmentation flow of a script list file
  int LoadScript();                        ///< chooses a script list file and loads its study

  void ResetStudy();         ///< back to the state without images
  void RebuildLabelMenus();  ///< the label menus from labelList, which becomes the menu table

private:
  enum class Flow { Manual, Scripted };

  bool MayLoadSeg(const char* path) const;
  void ReadGreyNumbers();
  int FillNewSlot(VoxData& slot, const char* path, Flow flow);
  void ShareGrey(VoxData& slot) const;
  int RunGreyFlow(const char* path, Flow flow);  ///< 0, or -1
  void ShowNewSlot(Flow flow);
  void InitViews();
  int TargetSlot(Flow flow);
  void WarnOfReplacedLabels() const;
  int RunSegFlow(const char* path, Flow flow);  ///< 1, or -1
  void GrowBar();
  void AddToImageMenus(const char* path);
  void SelectFirstEntries();
  int LoadListedImages(const std::string& grey, const std::vector<std::string>& segs);
  void FinishScript(const std::vector<std::string>& segs);

  std::map<std::string, std::string> entryPaths;  ///< the file behind each entry of the image menus
};

/// Fills the Load Grey Data dialog from the header of a GIPL file.
void ipReadGiplHeader(const char* path);
/// 256 into the header field of the Load Seg Data dialog, the size of a GIPL header.
void SetSegHeaderSize();
/// Fills the Load Grey Data dialog from a MetaImage header.
void FillDialogFromMetaImage(const char* path);
