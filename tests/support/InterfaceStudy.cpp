// Interface: loading studies through the dialogs.
#include "tests/support/Golden.h"
#include "tests/support/Interface.h"

#include <FL/Fl_Button.H>
#include <FL/Fl_Choice.H>
#include <FL/Fl_Input.H>
#include <FL/Fl_Slider.H>
#include <FL/Fl_Value_Input.H>

void Interface::LoadGreyByHand(const std::string& path, const std::array<int, 3>& dims, int bytes,
                               int headerSize, const std::array<double, 3>& spacing, int minimum,
                               int maximum) {
  Menu("File/Load/GreyRawFile");
  Ui().greyFileNameInput->value(path.c_str());
  Ui().greyXdimInput->value(dims[0]);
  Ui().greyYdimInput->value(dims[1]);
  Ui().greyZdimInput->value(dims[2]);
  Ui().greyBytesInput->value(bytes);
  Ui().greyHeaderSizeInput->value(headerSize);
  Ui().greyXspacingInput->value(spacing[0]);
  Ui().greyYspacingInput->value(spacing[1]);
  Ui().greyZspacingInput->value(spacing[2]);
  Ui().greyMinValInput->value(minimum);
  Ui().greyMaxValInput->value(maximum);
  Click(Ui().greyLoadButton);
  Settle();
}

void Interface::LoadGreyGipl(const std::string& path) {
  Menu("File/Load/GreyRawFile");
  chooserAnswers.emplace_back(path);
  Click(ButtonByLabel(Ui().loadGreyWindow, "Select"));
  Click(Ui().greyLoadButton);
  Settle();
}

void Interface::LoadSegByHand(const std::string& path) {
  Menu("File/Load/SegRawFile");
  Ui().segFileNameInput->value(path.c_str());
  Click(Ui().segLoadButton);
  Settle();
}

void Interface::LoadGoldenStudy(const std::string& name) {
  const nlohmann::json study = golden::Json("volumes/" + name + "/expected.json")["study"];
  const std::string folder = golden::Path("volumes/" + name + "/");
  Ui().greyOriginXChoice->value(study["origin"]["greyOriginXChoice"].get<int>());
  Ui().greyOriginYChoice->value(study["origin"]["greyOriginYChoice"].get<int>());
  Ui().greyOriginZChoice->value(study["origin"]["greyOriginZChoice"].get<int>());
  const auto dims = study["dims"].get<std::array<int, 3>>();
  const auto spacing = study["spacing"].get<std::array<double, 3>>();
  LoadGreyByHand(folder + study["greyRawFile"].get<std::string>(), dims, 2, 256, spacing);
  for (const auto& file : study["segFiles"]) { LoadSegByHand(folder + file.get<std::string>()); }
  Ui().userCount = study["userCount"].get<int>();
  Ui().slicesPerUser = study["slicesPerUser"].get<int>();
  Ui().overlayIntraSlider->maximum(Ui().userCount - 1);
  ASSERT_EQ(Ui().imageCount, study["imageCount"].get<int>()) << name;
}
