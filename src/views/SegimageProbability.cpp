// Segimage: probability within one user and between two users on a slice.
#include "VoxData/VoxData.h"
#include "ui/Fields.h"
#include "ui/MainUI.h"
#include "ui/StudyChecks.h"
#include "views/Segimage.h"
#include "views/SegimageMeasures.h"
#include "views/slicemeasures/SliceProbability.h"

#include <FL/Fl_Output.H>
#include <FL/Fl_Slider.H>

#include <cstring>

namespace {

measure::RepeatedSlices RepeatsOf(const MainUI& ui, int direction) {
  measure::RepeatedSlices study;
  study.users = ui.userCount;
  study.repeats = ui.slicesPerUser;
  for (int slot = 0; slot < study.users * study.repeats; ++slot) {
    study.slices.push_back(slice::SliceOf(ui, *ui.images[slot], direction));
  }
  return study;
}

/// Counts every user's repeats in the directions that are on.
void CountRepeats(Segimage& canvas) {
  const MainUI& ui = *canvas.mainUI;
  for (const int wanted : slice::DirectionsOn(ui)) {
    canvas.PrepareDirection(wanted);
    measure::CountUsers(RepeatsOf(ui, wanted), ui.currentLabel, slice::SizeOf(canvas),
                        canvas.userCounts);
  }
}

}  // namespace

void Segimage::ProbabilityIntra() {
  const RunningCommand running(*mainUI);
  if (running.Refused() || !CanMeasureOneUser(*mainUI) || !slice::CanShowSlices(*mainUI)) {
    return;
  }
  greyHidden = 0;
  CountRepeats(*this);
  const double overlap = measure::PaintOneUser(userCounts, Truncated(mainUI->overlayIntraSlider),
                                               mainUI->slicesPerUser, slice::SizeOf(*this), result);
  SetField(mainUI->probaOverlapIntraOutput, "%.6f", overlap);
  slice::ShowGreyResult(*this);
}

void Segimage::ProbabilityInter() {
  const RunningCommand running(*mainUI);
  if (running.Refused() || !CanMeasureUsers(*mainUI, kMaxSliceUsers) ||
      !slice::CanShowSlices(*mainUI)) {
    return;
  }
  greyHidden = 0;
  std::memset(userCounts, 0, sizeof userCounts);
  CountRepeats(*this);
  const double overlap = measure::PaintTwoUsers(
      userCounts, mainUI->userCount, mainUI->slicesPerUser, slice::SizeOf(*this), result);
  SetField(mainUI->probaOverlapInterOutput, "%.6f", overlap);
  slice::ShowGreyResult(*this);
}
