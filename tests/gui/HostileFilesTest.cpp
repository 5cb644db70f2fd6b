// Paths and files that nobody would mean: nothing hangs, crashes, runs a command or costs what was
// there before, and the user is told.
#include "VoxData/ImageLoader.h"
#include "VoxData/VoxData.h"
#include "tests/support/StudyFiles.h"
#include "ui/Fields.h"
#include "view3d/Window3D.h"

#include <FL/Fl_Check_Button.H>
#include <FL/Fl_Choice.H>
#include <FL/Fl_Input.H>
#include <FL/Fl_Output.H>
#include <FL/Fl_Round_Button.H>
#include <FL/Fl_Scrollbar.H>
#include <FL/Fl_Slider.H>
#include <FL/Fl_Value_Input.H>

#include <algorithm>
#include <cmath>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <sstream>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

namespace fs = std::filesystem;

constexpr unsigned kHangSeconds = 240;  // a test that hangs ends its program
constexpr files::Dims kDims{5, 4, 3};

// Names that a shell, a format, a menu or a list could take for something else.
const char* const kNames[] = {"$(touch pwned)",
                              "`touch pwned`",
                              "a;touch pwned;b",
                              "a|touch pwned",
                              "a && touch pwned &",
                              "a' ; touch pwned ; '",
                              "\" ; touch pwned ; \"",
                              "a\ntouch pwned\n",
                              "-rf",
                              "--help",
                              "%s%n%d%5000d",
                              "a&b@c_d\\e",
                              "tab\there",
                              " blank ",
                              "*?[a-z]{1,2}~",
                              "> pwned",
                              "\xff\xfe not a character"};

class HostileFilesTest : public StudyFiles {
protected:
  fs::path before = fs::current_path();

  void SetUp() override {
    StudyFiles::SetUp();
    alarm(kHangSeconds);
    fs::current_path(folder);
  }
  void TearDown() override {
    alarm(0);
    fs::current_path(before);
    StudyFiles::TearDown();
  }

  /// The path of something that is there under `name` but is no file that can be read or written.
  std::vector<std::string> NoFiles(const std::string& ending) {
    const auto path = [&](const char* name) {
      return folder + name + ending;
    };
    fs::remove_all(path("folder"));
    fs::create_directory(path("folder"));
    for (const char* name : {"pipe", "endless", "full", "nowhere", "circle", "memory"}) {
      fs::remove(path(name));
    }
    EXPECT_EQ(mkfifo(path("pipe").c_str(), 0600), 0);
    fs::create_symlink("/dev/zero", path("endless"));
    fs::create_symlink("/dev/full", path("full"));
    fs::create_symlink("/proc/no such folder/file", path("nowhere"));
    fs::create_symlink(path("circle"), path("circle"));
    files::WriteText(folder + "plain", "a file");
    return {path("folder"),
            path("pipe"),
            path("endless"),
            path("full"),
            path("nowhere"),
            path("circle"),
            path("plain/inside"),
            path("/no such/f"),
            "/proc/self/no" + ending,
            Endless(ending),
            Endless("/x" + ending, '/'),
            std::string(ending),
            ""};
  }
  /// A path of 5,000 characters.
  static std::string Endless(const std::string& ending, char fill = 'n') {
    return "/long/" + std::string(5000 - 6 - ending.size(), fill) + ending;
  }

  void SelectGrey(const std::string& path) {
    Menu("File/Load/GreyRawFile");
    chooserAnswers.emplace_back(path);
    Click(ButtonByLabel(Ui().loadGreyWindow, "Select"));
  }
  void LoadSelectedGrey() {
    Click(Ui().greyLoadButton);
    Settle();
  }
  std::vector<std::string> LoadList(const std::string& path) {
    chooserAnswers.emplace_back(path);
    return AlertsOfMenu("File/Load/Selection File");
  }
  void ExpectNothingRan() {
    EXPECT_FALSE(fs::exists(folder + "pwned"));
    EXPECT_FALSE(fs::exists("pwned"));
  }
  /// The program still loads and measures.
  void ExpectInOrder() {
    LoadStudy(kDims, 2);
    Click(Ui().overlayResult3DButton);
    EXPECT_STREQ(Ui().intersect3DOutput->value(), "2");
  }

  // Every command that writes a file, with the name that it is given.
  struct Export {
    const char* name;
    void (HostileFilesTest::*run)(const std::string& path);
    const char* ending;
    bool appends;  ///< keeps what the file holds already
  };
  void ExportPairs(const std::string& path) {
    chooserAnswers.emplace_back(path);
    Click(Ui().compareComputeButton);
  }
  void ExportTable(const std::string& path) {
    chooserAnswers.emplace_back(path);
    Click(Ui().compareExportButton);
  }
  void ExportHistogram(const std::string& path) {
    chooserAnswers.emplace_back(path);
    Click(Ui().compareSurfaceHistoButton);
  }
  void ExportBins(const std::string& path) {
    Ui().compareSurfaceHistoCheck->value(1);
    chooserAnswers.emplace_back(path);
    Ui().compareSurfaceHistoCheck->do_callback();
    chooserAnswers.emplace_back(folder + "other.xls");
    Click(Ui().compareComputeButton);
    Ui().compareSurfaceHistoCheck->value(0);
  }
  void ExportMatrix(const std::string& path) {
    chooserAnswers.emplace_back(path);
    Click(Ui().confusionMatrixButton);
  }
  void ExportList(const std::string& path) {
    Menu("File/Create File");
    Ui().listOriginalInput->value("grey.gipl");
    Ui().listSegsInput->value("seg.gipl\n");
    chooserAnswers.emplace_back(path);
    Click(Ui().listSaveButton);
  }
  static constexpr Export kExports[] = {
      {"Compute", &HostileFilesTest::ExportPairs, ".xls", true},
      {"Export Data", &HostileFilesTest::ExportTable, ".xls", false},
      {"Surface Histo", &HostileFilesTest::ExportHistogram, ".xls", true},
      {"Surface Histo. check", &HostileFilesTest::ExportBins, ".xls", true},
      {"Confusion Matrix", &HostileFilesTest::ExportMatrix, ".xls", true},
      {"Save List", &HostileFilesTest::ExportList, ".tlx", false},
  };

  void LoadPairs() {
    LoadStudy(kDims, 2);
    Click(Ui().compareAllButton);
    Ui().compareOverlayCheck->value(1);
  }
  /// What the user is told: message boxes and the status.
  std::string Told() {
    std::string told = Ui().statusOutput->value();
    for (const std::string& alert : alerts) { told += "\n" + alert; }
    return told;
  }
  void RunExport(const Export& one, const std::string& path) {
    alerts.clear();
    Ui().statusOutput->value("");
    (this->*one.run)(path);
    Settle();
  }
};

constexpr HostileFilesTest::Export HostileFilesTest::kExports[];

// Reading.

TEST_F(HostileFilesTest, NothingThatIsNoFileFillsTheDialogOrHangs) {
  for (const char* ending : {".gipl", ".gipl.gz", ".gipl.Z", ".gipl.zip", ".mha"}) {
    for (const std::string& path : NoFiles(ending)) {
      SCOPED_TRACE(path.substr(0, 80));
      SelectGrey(path);
      EXPECT_EQ(Ui().greyXdimInput->value(), 0.0);
    }
  }
  ExpectInOrder();
}

TEST_F(HostileFilesTest, NothingThatIsNoFileIsLoadedAsAGreyVolume) {
  for (const std::string& path : NoFiles(".raw")) {
    SCOPED_TRACE(path.substr(0, 80));
    alerts.clear();
    LoadGreyByHand(path, kDims, 1, 256);
    EXPECT_EQ(Ui().imageCount, 0);
    EXPECT_THAT(Told(), testing::AnyOf(HasSubstr("Loading failed"), HasSubstr("non-null"),
                                       HasSubstr("at most 299 characters")));
  }
  ExpectInOrder();
}

TEST_F(HostileFilesTest, NothingThatIsNoFileIsLoadedAsASegmentation) {
  LoadStudy(kDims, 1);
  for (const std::string& path : NoFiles(".raw")) {
    SCOPED_TRACE(path.substr(0, 80));
    alerts.clear();
    LoadSegByHand(path);
    EXPECT_THAT(Told(), testing::AnyOf(HasSubstr("Loading failed"), HasSubstr("non-null"),
                                       HasSubstr("at most 299 characters")));
  }
  EXPECT_EQ(Ui().images[0]->labelPresent[2], 1);  // the labels of the first are whole
  ExpectInOrder();
}

TEST_F(HostileFilesTest, NothingThatIsNoFileIsReadAsAList) {
  for (const std::string& path : NoFiles(".tlx")) {
    SCOPED_TRACE(path.substr(0, 80));
    LoadStudy(kDims, 2);
    const auto told = testing::ElementsAre("The list file cannot be opened: " + path);
    EXPECT_THAT(LoadList(path), told);
    EXPECT_EQ(Ui().imageCount, 0);  // the load had begun with an empty study
    Menu("File/Create File");
    chooserAnswers.emplace_back(path);
    EXPECT_THAT(AlertsOf(Ui().listLoadListButton), told);
  }
}

TEST_F(HostileFilesTest, AListOfWhatIsNoFileEndsItsLoad) {
  const std::string grey = Made("grey.gipl", files::Volume(kDims));
  const std::string seg = Made("seg.gipl", files::Volume(kDims, {2}));
  for (const std::string& path : NoFiles(".gipl")) {
    if (path.size() > 300 || path.empty()) { continue; }  // no line of a list
    SCOPED_TRACE(path);
    files::WriteText(folder + "list.tlx", "1\n2\n" + path + "\n" + seg + "\n" + seg + "\n");
    LoadList(folder + "list.tlx");
    EXPECT_EQ(Ui().imageCount, 0);
    files::WriteText(folder + "list.tlx", "1\n2\n" + grey + "\n" + seg + "\n" + path + "\n");
    LoadList(folder + "list.tlx");
    EXPECT_EQ(Ui().imageCount, 2);
    EXPECT_FALSE(Ui().progressPanel->visible());
    EXPECT_STREQ(Ui().statusOutput->value(), "Loading failed");
  }
  ExpectInOrder();
}

TEST_F(HostileFilesTest, AFileThatVanishesBetweenHeaderAndVoxelsFailsToLoad) {
  SelectGrey(Made("grey.gipl", files::Volume(kDims)));
  EXPECT_EQ(Ui().greyXdimInput->value(), kDims[0]);
  fs::remove(folder + "grey.gipl");
  LoadSelectedGrey();
  EXPECT_EQ(Ui().imageCount, 0);
  EXPECT_STREQ(Ui().statusOutput->value(), "Loading failed");

  LoadStudy(kDims, 1);
  fs::remove(folder + "grey.gipl");  // a further slot shares its voxels
  LoadSeg("second.gipl", kDims);
  EXPECT_EQ(Ui().imageCount, 2);
  ExpectInOrder();
}

TEST_F(HostileFilesTest, AFileThatShrinksBetweenHeaderAndVoxelsLoadsAsFarAsItGoes) {
  for (const std::uintmax_t size : {0, 1, 255, 256, 257, 300}) {
    SCOPED_TRACE(size);
    SelectGrey(Made("grey.gipl", files::Volume(kDims, {1, 2, 3})));
    fs::resize_file(folder + "grey.gipl", size);
    LoadSelectedGrey();
    EXPECT_EQ(Ui().imageCount, 1);
    Made("seg.gipl", files::Volume(kDims, {2}));
    fs::resize_file(folder + "seg.gipl", size);
    LoadSegByHand(folder + "seg.gipl");
    EXPECT_STREQ(Ui().statusOutput->value(), "Loading Successful");
  }
  ExpectInOrder();
}

TEST_F(HostileFilesTest, AFileThatBecomesAPipeAfterItsHeaderDoesNotHang) {
  SelectGrey(Made("grey.gipl", files::Volume(kDims)));
  fs::remove(folder + "grey.gipl");
  ASSERT_EQ(mkfifo((folder + "grey.gipl").c_str(), 0600), 0);
  LoadSelectedGrey();

  EXPECT_STREQ(Ui().statusOutput->value(), "Loading failed");
  fs::remove(folder + "grey.gipl");
}

TEST_F(HostileFilesTest, SizesThatNoMemoryHoldsAreRefused) {
  SelectGrey(Made("grey.gipl", files::GiplHeader({65535, 65535, 65535})));
  LoadSelectedGrey();
  EXPECT_EQ(Ui().imageCount, 0);
  EXPECT_STREQ(Ui().statusOutput->value(), "Loading failed");
  EXPECT_THAT(TakeErrors(), HasSubstr("No volume of 65535 x 65535 x 65535 voxels can be held"));

  files::WriteText(folder + "list.tlx", "1\n1\n" + folder + "grey.gipl\n" + folder + "grey.gipl\n");
  LoadList(folder + "list.tlx");
  EXPECT_EQ(Ui().imageCount, 0);
  ExpectInOrder();
}

/// What memory and swap space can still hold, in bytes.
double AvailableBytes() {
  std::ifstream lines("/proc/meminfo");
  double sum = 0.0;
  for (std::string line; std::getline(lines, line);) {
    std::istringstream words(line);
    std::string name;
    double kibibytes = 0.0;
    words >> name >> kibibytes;
    if (name == "MemAvailable:" || name == "SwapFree:") { sum += 1024.0 * kibibytes; }
  }
  return sum;
}

TEST_F(HostileFilesTest, SizesWhoseArraysFitMemoryOnlyOneByOneAreRefused) {
  // Grey values alone would take half of it; labels and their twin come on top.
  const double runs = AvailableBytes() / 4.0 / 65535.0;
  const int side = static_cast<int>(std::sqrt(runs));
  ASSERT_GT(side, 0);
  SelectGrey(Made("grey.gipl", files::GiplHeader({side, side, 65535})));
  LoadSelectedGrey();

  EXPECT_EQ(Ui().imageCount, 0);
  EXPECT_STREQ(Ui().statusOutput->value(), "Loading failed");
  EXPECT_THAT(TakeErrors(), HasSubstr("voxels can be held"));
  ExpectInOrder();
}

TEST_F(HostileFilesTest, MetaImageHeadersThatClaimTooMuchLeaveTheDialogAlone) {
  const auto header = [](const std::string& dims, const std::string& sizes,
                         const std::string& file) {
    return "NDims = " + dims + "\nDimSize = " + sizes +
           "\nElementType = MET_UCHAR\nElementByteOrderMSB = False\nElementDataFile = " + file +
           "\n";
  };
  ASSERT_EQ(mkfifo("pipe", 0600), 0);
  fs::create_directory("directory");
  const std::string headers[] = {header("11", "1 1 1 1 1 1 1 1 1 1 1", "LOCAL"),
                                 header("-1", "", "LOCAL"),
                                 header("1e30", "1", "LOCAL"),
                                 header("nan", "1", "LOCAL"),
                                 header("3", "65536 65536 65536", "LOCAL"),
                                 header("3", "-4 -4 4", "LOCAL"),
                                 header("3", "1e30 1e30 1e30", "LOCAL"),
                                 header("3", "5 4 3", "pipe"),
                                 header("3", "5 4 3", "directory"),
                                 header("3", "5 4 3", "no such file"),
                                 header("3", "5 4 3", "%s%s%n"),
                                 header("3", "5 4 3", "%d%d"),
                                 header("3", "5 4 3", "%5000d"),
                                 header("3", "5 4 3", "%"),
                                 header("3", "5 4 3", "/dev/zero"),
                                 header("3", "5 4 3", std::string(5000, 'n')),
                                 std::string(100000, '='),
                                 std::string(100000, 'N'),
                                 std::string(1000, '\0'),
                                 "NDims"};
  for (const std::string& text : headers) {
    SCOPED_TRACE(text.substr(0, 100));
    files::WriteText(folder + "header.mha", text);
    SelectGrey(folder + "header.mha");
    EXPECT_EQ(Ui().greyXdimInput->value(), 0.0);
  }
  ExpectInOrder();
}

// Names.

TEST_F(HostileFilesTest, NoNameOfACompressedHeaderRunsACommand) {
  Made("plain", files::Volume(kDims));
  for (const auto& [tool, ending] : {std::pair{"gzip -c", ".gipl.gz"}, {"gzip -c", ".gipl.Z"}}) {
    ASSERT_EQ(std::system((std::string(tool) + " plain > packed").c_str()), 0);
    for (const std::string name : kNames) {
      SCOPED_TRACE(name + ending);
      fs::copy_file("packed", name + ending, fs::copy_options::overwrite_existing);
      Ui().greyXdimInput->value(0);
      SelectGrey(name + ending);  // relative, so that a dash stands first
      if (std::string(ending) == ".gipl.gz") { EXPECT_EQ(Ui().greyXdimInput->value(), kDims[0]); }
      fs::remove(name + ending);
    }
  }
  ExpectNothingRan();
}

TEST_F(HostileFilesTest, EveryNameLoadsAndShowsAsItIs) {
  LoadGrey(kDims);
  for (const std::string name : kNames) {
    SCOPED_TRACE(name);
    const std::string path = Made(name + ".gipl", files::Volume(kDims, {2, 2}));
    SelectGrey(path);
    LoadSelectedGrey();
    LoadSegByHand(path);
    EXPECT_STREQ(Ui().statusOutput->value(), "Loading Successful");
    EXPECT_EQ(EntryText(Ui().image1Choice, 0), name + ".gipl");
    EXPECT_EQ(Ui().images[0]->labelPresent[2], 1);
  }
  ExpectNothingRan();
}

TEST_F(HostileFilesTest, EveryNameLoadsFromAList) {
  for (const std::string name : kNames) {
    if (name.find('\n') != std::string::npos) { continue; }  // two lines of a list
    SCOPED_TRACE(name);
    const std::string path = Made(name + ".gipl", files::Volume(kDims, {2, 2}));
    files::WriteText(folder + name + ".tlx", "1\n2\n" + path + "\n" + path + "\n" + path + "\n");
    EXPECT_THAT(LoadList(folder + name + ".tlx"), IsEmpty());
    EXPECT_EQ(Ui().imageCount, 2);
  }
  ExpectNothingRan();
}

TEST_F(HostileFilesTest, EveryNameIsWrittenToAsItIs) {
  LoadPairs();
  for (const Export& one : kExports) {
    for (const std::string name : kNames) {
      SCOPED_TRACE(one.name + (" " + name));
      const std::string path = folder + name + one.ending;
      fs::remove(path);
      RunExport(one, path);
      EXPECT_GT(fs::exists(path) ? fs::file_size(path) : 0, 0U);
      EXPECT_THAT(alerts, IsEmpty());
    }
  }
  ExpectNothingRan();
}

TEST_F(HostileFilesTest, ANameWithPercentSignsIsToldAsItIs) {
  LoadPairs();
  RunExport(kExports[0], "/no such folder/%s%n%d.xls");
  EXPECT_STREQ(Ui().statusOutput->value(),
               "The file cannot be written: /no such folder/%s%n%d.xls");

  RunExport(kExports[5], "/no such folder/%s%n%d.tlx");
  EXPECT_THAT(alerts,
              testing::ElementsAre("The list file cannot be written: /no such folder/%s%n%d.tlx"));
}

// Writing.

TEST_F(HostileFilesTest, NothingThatIsNoFileIsWrittenTo) {
  LoadPairs();
  for (const Export& one : kExports) {
    for (const std::string& path : NoFiles(one.ending)) {
      if (path.empty() || path == one.ending) { continue; }  // a name of its own
      SCOPED_TRACE(one.name + (" " + path.substr(0, 80)));
      RunExport(one, path);
      EXPECT_THAT(Told(), testing::AnyOf(HasSubstr("cannot be written"), HasSubstr("Not able to"),
                                         HasSubstr("at most 299 characters")));
    }
  }
  ExpectInOrder();
}

/// Files of at most so many bytes, as a disk that is full behind them.
class SmallDisk {
public:
  explicit SmallDisk(rlim_t bytes) {
    getrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{bytes, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
  }
  SmallDisk(const SmallDisk&) = delete;
  SmallDisk& operator=(const SmallDisk&) = delete;
  ~SmallDisk() {
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, SIG_DFL);
  }

private:
  rlimit before{};
};

TEST_F(HostileFilesTest, AWriteThroughALinkLeavesTheLink) {
  LoadPairs();
  for (const Export& one : kExports) {
    SCOPED_TRACE(one.name);
    const std::string file = folder + "file" + one.ending;
    const std::string link = folder + "link" + one.ending;
    files::WriteText(file, "");
    fs::remove(link);
    fs::create_symlink(file, link);
    RunExport(one, link);
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_GT(fs::file_size(file), 0U);
  }
}

TEST_F(HostileFilesTest, AFullDiskCostsNothingThatWasThereAndIsTold) {
  LoadPairs();
  for (const Export& one : kExports) {
    SCOPED_TRACE(one.name);
    const std::string path = folder + "table" + one.ending;
    const std::string earlier = (one.appends ? std::string(20000, '\n') : "") + "last words";
    files::WriteText(path, earlier);
    TakeOutput();  // what is told counts as well
    TakeErrors();
    {
      const SmallDisk disk(earlier.size() + 10);
      RunExport(one, path);
    }
    std::cout.clear();
    EXPECT_EQ(files::TextOf(path), earlier);
    EXPECT_FALSE(fs::exists(path + ".part"));
    EXPECT_THAT(Told(), testing::AnyOf(HasSubstr("cannot be written"), HasSubstr("Not able to")));
  }
}

TEST_F(HostileFilesTest, AFullDiskLeavesNoPartOfANewFile) {
  LoadPairs();
  for (const Export& one : kExports) {
    SCOPED_TRACE(one.name);
    const std::string path = folder + "new" + one.ending;
    fs::remove(path);
    TakeOutput();
    TakeErrors();
    {
      const SmallDisk disk(10);
      RunExport(one, path);
    }
    std::cout.clear();
    std::cerr.clear();
    EXPECT_FALSE(fs::exists(path));
    EXPECT_FALSE(fs::exists(path + ".part"));
    EXPECT_THAT(Told(), testing::AnyOf(HasSubstr("cannot be written"), HasSubstr("Not able to")));
  }
}

// Volumes of strange sizes.

class SizesTest : public HostileFilesTest {
protected:
  /// Every measure, then every export, on a study of two images.
  void MeasureAll(const files::Dims& dims, std::size_t refusedVolumes) {
    LoadStudy(dims, 2);
    Ui().userCount = 1;
    Ui().slicesPerUser = 2;
    Ui().medianWithSurfaceCheck->value(1);
    std::size_t refused = 0;
    for (Fl_Widget* button : VolumeButtons()) { refused += AlertsOf(button).size(); }
    EXPECT_EQ(refused, refusedVolumes);
    Click(Ui().compareAllButton);
    for (Fl_Check_Button* check :
         {Ui().compareOverlayCheck, Ui().compareHaussdorfCheck, Ui().compareSurfaceDistCheck}) {
      check->value(1);
    }
    for (const Export& one : kExports) { RunExport(one, folder + "made" + one.ending); }
    Click(Ui().createAverageButton);
    Settle();
  }
  std::size_t SliceRefusals() {
    std::size_t refused = 0;
    for (Fl_Widget* direction : {static_cast<Fl_Widget*>(Ui().directionXYButton),
                                 static_cast<Fl_Widget*>(Ui().directionXZButton),
                                 static_cast<Fl_Widget*>(Ui().directionYZButton)}) {
      for (Fl_Widget* other : {static_cast<Fl_Widget*>(Ui().directionXYButton),
                               static_cast<Fl_Widget*>(Ui().directionXZButton),
                               static_cast<Fl_Widget*>(Ui().directionYZButton)}) {
        dynamic_cast<Fl_Button*>(other)->value(0);
      }
      Click(direction);
      for (Fl_Widget* button :
           {Ui().overlay2DButton, Ui().complexityButton, Ui().areaPerimeterButton,
            Ui().danielsson2DButton, Ui().haussdorfButton, Ui().overlayIntraButton,
            Ui().overlayInterButton}) {
        refused += AlertsOf(button).size();
      }
    }
    return refused;
  }
  void MoveEverything() {
    for (const int tool : {0, 1}) {
      Click(tool == 0 ? Ui().moveToolButton : Ui().crosshairToolButton);
      for (int axis = 0; axis < 3; ++axis) { Slide(Ui().cursorSlider[axis], 100000); }
      for (const double image : {0.0, Ui().imageSlider->maximum()}) {
        Slide(Ui().imageSlider, image);
      }
      Settle();
    }
    Menu("File/Refresh");
    Settle();
  }
};

TEST_F(SizesTest, AVolumeOfOneVoxelIsLoadedShownAndMeasured) {
  LoadGrey({1, 1, 1});
  LoadSeg("one.gipl", {1, 1, 1}, {2});
  LoadSeg("two.gipl", {1, 1, 1}, {2});
  SetLabel(2);
  Click(Ui().overlayResult3DButton);
  EXPECT_STREQ(Ui().intersect3DOutput->value(), "1");
  EXPECT_STREQ(Ui().overlapRatio3DOutput->value(), "1.000000");

  Ui().userCount = 1;
  Ui().slicesPerUser = 2;
  std::size_t refused = SliceRefusals();
  for (Fl_Widget* button : VolumeButtons()) { refused += AlertsOf(button).size(); }
  EXPECT_EQ(refused, 0U);
  Click(Ui().compareAllButton);
  Ui().compareHaussdorfCheck->value(1);
  Ui().compareSurfaceDistCheck->value(1);
  for (const Export& one : kExports) {
    RunExport(one, folder + "made" + one.ending);
    EXPECT_TRUE(fs::exists(folder + "made" + one.ending)) << one.name;
  }
  Click(Ui().createAverageButton);
  MoveEverything();
  ExpectInOrder();
}

TEST_F(SizesTest, AGiplHeaderOfOneSliceIsNo3DData) {
  SelectGrey(Made("one.gipl", files::Volume({1, 1, 1}, {7})));

  EXPECT_EQ(Ui().greyXdimInput->value(), 0.0);
  EXPECT_THAT(TakeErrors(), HasSubstr("Not 3D data"));
}

TEST_F(SizesTest, AVolumeOfThreeHundredByThreeHundredIsShownAndItsSlicesMeasured) {
  MeasureAll({300, 300, 2}, 6);
  EXPECT_EQ(SliceRefusals(), 0U);
  EXPECT_STREQ(Ui().union2DOutput->value(), "1");
  MoveEverything();
  ExpectInOrder();
}

TEST_F(SizesTest, AVolumeOf281OnOneAxisIsShownAndItsSlicesMeasured) {
  for (const files::Dims& dims : {files::Dims{281, 3, 2}, {3, 281, 2}, {3, 2, 281}}) {
    SCOPED_TRACE(testing::PrintToString(dims));
    MeasureAll(dims, 6);
    EXPECT_EQ(SliceRefusals(), 0U);
    MoveEverything();
  }
  ExpectInOrder();
}

}  // namespace
