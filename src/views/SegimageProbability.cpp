// Segimage: probability within and between users on a slice.
#include "ui/Fields.h"
#include "ui/MainUI.h"
#include "views/Segimage.h"
#include "views/SegimageMeasures.h"
#include "views/slicemeasures/SliceProbability.h"

#include <FL/Fl_Output.H>
#include <FL/Fl_Slider.H>

#include <algorithm>
#include <cstring>

void Segimage::CountUsers() {
  const int images = mainUI->userCount * mainUI->slicesPerUser;
  for (const int wanted : slice::DirectionsOn(*mainUI)) {
    PrepareDirection(wanted);
    std::vector<LabelSlice> slices;
    for (int slot = 0; slot < images; ++slot) {
      slices.push_back(slice::SliceOf(*mainUI, *mainUI->images[slot], wanted));
    }
    measure::CountRepeats(slices, mainUI->userCount, mainUI->slicesPerUser, mainUI->currentLabel,
                          std::min(sliceWidth, kMaxSliceSide), std::min(sliceHeight, kMaxSliceSide),
                          userCounts);
  }
}

void Segimage::ShowProbability() {
  extraTextureOn = 0;
  CreateGreySliceTexture();
  overlayInDrawCurrent = 0;
  redraw();
}

void Segimage::ProbabilityIntra() {
  const RunningCommand running(*mainUI);
  if (running.Refused()) { return; }
  if (!slice::CanShowSlices(*mainUI) || !CanMeasureUsers(*mainUI, kMaxSliceUsers)) { return; }
  greyHidden = 0;
  CountUsers();
  const int user = std::clamp(Truncated(mainUI->overlayIntraSlider), 0, kMaxSliceUsers - 1);
  const double agreement = measure::AgreementWithin(userCounts, user, mainUI->slicesPerUser,
                                                    std::min(sliceWidth, kMaxSliceSide),
                                                    std::min(sliceHeight, kMaxSliceSide), result);
  SetField(mainUI->probaOverlapIntraOutput, "%.6f", agreement);
  ShowProbability();
}

void Segimage::ProbabilityInter() {
  const RunningCommand running(*mainUI);
  if (running.Refused()) { return; }
  if (!slice::CanShowSlices(*mainUI) || !CanMeasureUsers(*mainUI, kMaxSliceUsers)) { return; }
  greyHidden = 0;
  std::memset(userCounts, 0, sizeof userCounts);
  CountUsers();
  const double agreement = measure::AgreementBetween(
      userCounts, mainUI->userCount, mainUI->slicesPerUser, std::min(sliceWidth, kMaxSliceSide),
      std::min(sliceHeight, kMaxSliceSide), result);
  SetField(mainUI->probaOverlapInterOutput, "%.6f", agreement);
  ShowProbability();
}
