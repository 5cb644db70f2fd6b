// Every widget of the program and the study that it works on.
#pragma once

#include "base/Limits.h"

#include <cstdint>
#include <memory>

class ColorLegend;
class ColorPreview;
class Fl_Box;
class Fl_Button;
class Fl_Check_Button;
class Fl_Choice;
class Fl_Group;
class Fl_Input;
class Fl_Menu_Bar;
class Fl_Output;
class Fl_Roller;
class Fl_Round_Button;
class Fl_Scrollbar;
class Fl_Slider;
class Fl_Value_Input;
class Fl_Value_Output;
class Fl_Widget;
class Fl_Window;
class ImageLoader;
class Plot;
class PutAside;
class Segimage;
class VoxData;
class Window2D;
class Window3D;

class MainUI {
public:
  // The study.
  VoxData* images[kMaxImages] = {};  ///< images[0..imageCount-1]; averages follow behind
  std::int32_t imageCount = 0;
  VoxData* workVolumes[3] = {};  ///< scratch volumes of the measures and the 3D view
  VoxData*& displayVolume1 = workVolumes[0];
  VoxData*& displayVolume2 = workVolumes[1];
  VoxData*& displayVolume3 = workVolumes[2];
  ImageLoader* loader = nullptr;
  std::int32_t currentLabel = 2;
  std::int32_t userCount = 0;      ///< set by a script list file only
  std::int32_t slicesPerUser = 0;  ///< set by a script list file only
  std::int32_t comparePairCount = 0;
  std::int32_t comparePairs[kMaxQueuedPairs][2] = {};
  float surfaceOpacity[2] = {100.0F, 100.0F};  ///< percent, of surfaces 2 and 3
  std::int32_t scriptImageCount = 0;
  std::uint8_t labelList[kMaxLabels] = {};
  std::int32_t sliceDims[3] = {0, 0, 0};
  std::int32_t labelCopyCount = 20;
  std::int32_t labelCopyIds[kMaxLabels] = {};
  std::uint8_t labelCopyColours[kMaxLabels][3] = {};

  // Main window.
  Fl_Window* mainWindow = nullptr;
  Fl_Output* statusOutput = nullptr;
  Fl_Group* mainGroup = nullptr;
  Fl_Group* toolGroup = nullptr;
  Fl_Menu_Bar* menuBar = nullptr;
  Fl_Group* viewsGroup = nullptr;
  Fl_Group* centreGroup = nullptr;
  Fl_Group* measuresGroup = nullptr;
  Fl_Group* progressPanel = nullptr;

  // Tool column.
  Fl_Button* moveToolButton = nullptr;
  Fl_Button* crosshairToolButton = nullptr;
  Fl_Scrollbar* contrastScrollbar = nullptr;
  Fl_Scrollbar* brightnessScrollbar = nullptr;
  Fl_Scrollbar* labelOpacityScrollbar = nullptr;
  Fl_Check_Button* allSlicesCheck = nullptr;
  Fl_Button* createAverageButton = nullptr;
  Fl_Button* confusionMatrixButton = nullptr;
  Fl_Output* usersOutput = nullptr;
  Fl_Output* slicesOutput = nullptr;
  Fl_Output*& nbUsersOutput = usersOutput;
  Fl_Output*& nbSlicesPerUserOutput = slicesOutput;
  Fl_Choice* image1Choice = nullptr;
  Fl_Choice* image2Choice = nullptr;
  Fl_Button* compareDataButton = nullptr;
  Fl_Choice* colorLabelChoice = nullptr;
  Fl_Value_Output* voxelSizeOutput[3] = {};
  Fl_Roller* surface2OpacityRoller = nullptr;
  Fl_Roller* surface3OpacityRoller = nullptr;
  Fl_Box* legendTextInside = nullptr;
  Fl_Box* legendTextOutside = nullptr;
  Fl_Box* legendTextZero = nullptr;
  Fl_Box* legendTextMaxOutside = nullptr;
  Fl_Box* legendTextMaxInside = nullptr;
  Fl_Output* currentImageOutput = nullptr;
  ColorPreview* colorPreview = nullptr;
  ColorLegend* colorLegend = nullptr;

  // Views. Arrays of three are indexed by orientation: 0 YZ, 1 XZ, 2 XY.
  Fl_Group* xyGroup = nullptr;
  Fl_Group* yzGroup = nullptr;
  Fl_Group* xzGroup = nullptr;
  Window2D* xyView = nullptr;
  Window2D* yzView = nullptr;
  Window2D* xzView = nullptr;
  Fl_Scrollbar* cursorSlider[3] = {};
  Fl_Button* xyResetButton = nullptr;
  Fl_Button* yzResetButton = nullptr;
  Fl_Button* xzResetButton = nullptr;
  Fl_Output* sliceOutput[3] = {};
  Fl_Output*& xySliceOutput = sliceOutput[2];
  Fl_Output*& yzSliceOutput = sliceOutput[0];
  Fl_Output*& xzSliceOutput = sliceOutput[1];
  Fl_Slider* imageSlider = nullptr;
  Fl_Round_Button* directionXYButton = nullptr;
  Fl_Round_Button* directionYZButton = nullptr;
  Fl_Round_Button* directionXZButton = nullptr;
  Segimage* segimage = nullptr;
  Window3D* window3D = nullptr;

  // Measure buttons.
  Fl_Button* overlayResult3DButton = nullptr;
  Fl_Button* danielsson3DButton = nullptr;
  Fl_Slider* danielsson3DSlider = nullptr;
  Fl_Button* haussdorf3DButton = nullptr;
  Fl_Button* surfaceDistanceButton = nullptr;
  Fl_Button* probabilityButton = nullptr;
  Fl_Input* maxInsideInput = nullptr;
  Fl_Input* maxOutsideInput = nullptr;
  Fl_Button* updateColorButton = nullptr;
  Fl_Button* overlay2DButton = nullptr;
  Fl_Slider* overlayOpacitySlider = nullptr;
  Fl_Button* complexityButton = nullptr;
  Fl_Button* danielsson2DButton = nullptr;
  Fl_Button* haussdorfButton = nullptr;
  Fl_Button* overlayIntraButton = nullptr;
  Fl_Slider* overlayIntraSlider = nullptr;
  Fl_Button* overlayInterButton = nullptr;
  Fl_Button* areaPerimeterButton = nullptr;

  // Results of the slice measures.
  Fl_Output* union2DOutput = nullptr;
  Fl_Output* intersect2DOutput = nullptr;
  Fl_Output* overlapRatioOutput = nullptr;
  Fl_Output* perimeterOutput = nullptr;
  Fl_Output* areaOutput = nullptr;
  Fl_Output* ratioOutput = nullptr;
  Fl_Output* haussdorfABOutput = nullptr;
  Fl_Output* haussdorfBAOutput = nullptr;
  Fl_Output* haussdorfOutput = nullptr;
  Fl_Output* interiorPerimeterOutput = nullptr;
  Fl_Output* nonCommonAreaOutput = nullptr;
  Fl_Output* interiorRatioOutput = nullptr;
  Fl_Output* probaOverlapIntraOutput = nullptr;
  Fl_Output* probaOverlapInterOutput = nullptr;

  // Results of the volume measures.
  Fl_Output* unionMinusIntersectOutput = nullptr;
  Fl_Output* overlapRatio3DOutput = nullptr;
  Fl_Output* nbPixelAOutput = nullptr;
  Fl_Output* nbPixelBOutput = nullptr;
  Fl_Output* intersect3DOutput = nullptr;
  Fl_Output* haussdorf3DABOutput = nullptr;
  Fl_Output* haussdorf3DBAOutput = nullptr;
  Fl_Output* haussdorf3DOutput = nullptr;
  Fl_Output* sumDistInsideOutput = nullptr;
  Fl_Output* nbPixelInsideOutput = nullptr;
  Fl_Output* avgInsideOutput = nullptr;
  Fl_Output* sumDistOutsideOutput = nullptr;
  Fl_Output* nbPixelOutsideOutput = nullptr;
  Fl_Output* avgOutsideOutput = nullptr;
  Fl_Output* sumDistOutput = nullptr;
  Fl_Output* nbPixelTotalOutput = nullptr;
  Fl_Output* avgDistOutput = nullptr;
  Fl_Output* medianInsideOutput = nullptr;
  Fl_Output* medianOutsideOutput = nullptr;
  Fl_Output* medianOutput = nullptr;
  Fl_Output* firstQuartInsideOutput = nullptr;
  Fl_Output* firstQuartOutsideOutput = nullptr;
  Fl_Output* firstQuartOutput = nullptr;
  Fl_Output* thirdQuartInsideOutput = nullptr;
  Fl_Output* thirdQuartOutsideOutput = nullptr;
  Fl_Output* thirdQuartOutput = nullptr;
  Fl_Output* probaOverlapOutput = nullptr;

  // Progress panel.
  Fl_Box* progressBackground = nullptr;
  Fl_Slider* progressRange = nullptr;  ///< its maximum holds the number of steps
  Fl_Output* progressText = nullptr;
  Fl_Box* progressTrough = nullptr;
  Fl_Box* progressBar = nullptr;  ///< 290 pixels wide at the end of a job

  // Load Grey Data.
  Fl_Window* loadGreyWindow = nullptr;
  Fl_Input* greyFileNameInput = nullptr;
  Fl_Value_Input* greyHeaderSizeInput = nullptr;
  Fl_Value_Input* greyXdimInput = nullptr;
  Fl_Value_Input* greyYdimInput = nullptr;
  Fl_Value_Input* greyZdimInput = nullptr;
  Fl_Button* greyLoadButton = nullptr;
  Fl_Button* greyCancelButton = nullptr;
  Fl_Value_Input* greyBytesInput = nullptr;
  Fl_Value_Input* greyMinValInput = nullptr;
  Fl_Value_Input* greyMaxValInput = nullptr;
  Fl_Value_Input* greyXspacingInput = nullptr;
  Fl_Value_Input* greyYspacingInput = nullptr;
  Fl_Value_Input* greyZspacingInput = nullptr;
  Fl_Choice* greyOriginXChoice = nullptr;
  Fl_Choice* greyOriginYChoice = nullptr;
  Fl_Choice* greyOriginZChoice = nullptr;

  // Load Seg Data.
  Fl_Window* loadSegWindow = nullptr;
  Fl_Input* segFileNameInput = nullptr;
  Fl_Button* segLoadButton = nullptr;
  Fl_Button* segCancelButton = nullptr;
  Fl_Value_Input* segHeaderSizeInput = nullptr;

  // Save Seg Data.
  Fl_Window* saveSegWindow = nullptr;
  Fl_Input* saveFileNameInput = nullptr;
  Fl_Button* saveOkayButton = nullptr;
  Fl_Button* saveCancelButton = nullptr;

  // Compare Data.
  Fl_Window* compareWindow = nullptr;
  Fl_Choice* compareImage1Choice = nullptr;
  Fl_Choice* compareImage2Choice = nullptr;
  Fl_Button* compareAddButton = nullptr;
  Fl_Output* comparePairsOutput = nullptr;
  Fl_Check_Button* compareOverlayCheck = nullptr;
  Fl_Check_Button* compareHaussdorfCheck = nullptr;
  Fl_Button* compareComputeButton = nullptr;
  Fl_Button* compareSurfaceHistoButton = nullptr;
  Fl_Button* compareExportButton = nullptr;
  Fl_Check_Button* compareSurfaceDistCheck = nullptr;
  Fl_Round_Button* compareAlwaysWriteButton = nullptr;
  Fl_Button* compareAllButton = nullptr;
  Fl_Button* compareAllInvButton = nullptr;
  Fl_Check_Button* compareSurfaceHistoCheck = nullptr;

  // Comparison Results.
  Fl_Window* resultsWindow = nullptr;
  Fl_Output* resultsImage1Column = nullptr;
  Fl_Output* resultsImage2Column = nullptr;
  Fl_Output* resultsNbPix1Column = nullptr;
  Fl_Output* resultsNbPix2Column = nullptr;
  Fl_Output* resultsIntersecColumn = nullptr;
  Fl_Output* resultsUnionColumn = nullptr;
  Fl_Output* resultsMajorColumn = nullptr;
  Fl_Output* resultsHauss1Column = nullptr;
  Fl_Output* resultsHauss2Column = nullptr;
  Fl_Output* resultsHaussDistColumn = nullptr;

  // Create List.
  Fl_Window* createListWindow = nullptr;
  Fl_Value_Input* listNbUserInput = nullptr;
  Fl_Value_Input* listNbSegInput = nullptr;
  Fl_Input* listOriginalInput = nullptr;
  Fl_Input* listSegsInput = nullptr;
  Fl_Button* listLoadOrigButton = nullptr;
  Fl_Button* listLoadSegButton = nullptr;
  Fl_Button* listSaveButton = nullptr;
  Fl_Button* listLoadListButton = nullptr;
  Fl_Button* listCloseButton = nullptr;

  // Options.
  Fl_Window* optionsWindow = nullptr;
  Fl_Check_Button* smoothingCheck = nullptr;
  Fl_Check_Button* decimationCheck = nullptr;
  Fl_Value_Input* targetReductionInput = nullptr;
  Fl_Value_Input* aspectRatioInput = nullptr;
  Fl_Value_Input* errorIncrementInput = nullptr;
  Fl_Value_Input* maxIterationsInput = nullptr;
  Fl_Value_Input* initialErrorInput = nullptr;
  Fl_Value_Input* nbIterationsInput = nullptr;
  Fl_Value_Input* relaxationFactorInput = nullptr;
  Fl_Value_Input* featureAngleInput = nullptr;
  Fl_Check_Button* isotropic3DCheck = nullptr;
  Fl_Check_Button* displayCrosshairsCheck = nullptr;
  Fl_Round_Button* overlapUnionIntersectRadio = nullptr;
  Fl_Round_Button* overlapUnionARadio = nullptr;
  Fl_Round_Button* overlapUnionAverageRadio = nullptr;
  Fl_Check_Button* medianWithSurfaceCheck = nullptr;

  // Plot.
  Fl_Window* plotWindow = nullptr;
  Plot* plot = nullptr;
  Fl_Choice* plotImage1Choice = nullptr;
  Fl_Choice* plotImage2Choice = nullptr;
  Fl_Check_Button* plotXCheck = nullptr;
  Fl_Check_Button* plotYCheck = nullptr;
  Fl_Check_Button* plotZCheck = nullptr;
  Fl_Slider* plotSlice1Slider = nullptr;
  Fl_Slider* plotSlice2Slider = nullptr;
  Fl_Choice* plotLabel1Choice = nullptr;
  Fl_Choice* plotLabel2Choice = nullptr;

  // Help, About, First steps.
  Fl_Window* helpWindow = nullptr;
  Fl_Output* helpOutput = nullptr;
  Fl_Window* aboutWindow = nullptr;
  Fl_Window* firstStepsWindow = nullptr;
  Fl_Output* firstStepsOutput = nullptr;

  MainUI();  ///< builds every window, shows none
  MainUI(const MainUI&) = delete;
  MainUI& operator=(const MainUI&) = delete;

  void ShowAll();
  void ApplyDefaults();
  void Quit();  ///< deletes the main window; under a running command, once that has returned
  void RedrawViews();
  void SyncCursorSliders();
  void UpdateSliceText(int axis);
  void RefreshLabels();
  void ClearResults();
  void SetTitleParts(const char* greyName, const char* segName);
  const char* ComposedTitle() const;

  // Progress panel. A null part of a title, a panel that is hidden: both are fine.
  void StartProgress(int steps);  ///< range, bar width 0, panel shown
  void StepProgress();            ///< 290 / steps pixels more; lets the toolkit handle events
  void ShowProgressMessage(const char* text);
  void HideProgress();

  // Plot and batch.
  void UpdatePlot();          ///< both curves between the two sliders
  void PlotWholeRange();      ///< both curves over the whole axis, by currentLabel
  void PlotVoxelsPerSlice();  ///< the button "Plot"
  void AddComparePair();
  void AddAllPairs();
  void AddAllPairsInverse();

  // Running commands. Events are handled while a command runs, so another can begin inside it.
  int runningCommands = 0;     ///< how many are under way, one inside the other
  bool quitRequested = false;  ///< "Quit" came while one was running
  /// True, with a message box, while a command runs: what replaces the study has to wait.
  bool RefusedWhileRunning() const;
};

/// Marks a command as running for as long as it lives; the outermost one carries out a "Quit".
class RunningCommand {
public:
  explicit RunningCommand(MainUI& owner);
  RunningCommand(const RunningCommand&) = delete;
  RunningCommand& operator=(const RunningCommand&) = delete;
  ~RunningCommand();
  bool Refused() const { return refused; }  ///< too many inside one another, or no memory

private:
  MainUI& ui;
  bool refused = false;
  std::unique_ptr<PutAside> outer;  ///< the work of the command that this one interrupts
};
