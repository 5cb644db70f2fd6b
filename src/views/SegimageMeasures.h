// What the commands of the slice measures share.
#pragma once

#include "base/LabelSlice.h"
#include "views/slicemeasures/Picture.h"

#include <vector>

class MainUI;
class Segimage;
class VoxData;

namespace slice {

/// The directions whose buttons are on, in the order XY, YZ, XZ.
std::vector<int> DirectionsOn(const MainUI& ui);

/// The value of the slice slider of an axis.
int SliderSlice(const MainUI& ui, int axis);

/// The slice of `image` that the slider of the fixed axis shows.
LabelSlice SliceOf(const MainUI& ui, const VoxData& image, int direction);

/// Whether the slices of all directions that are on fit the canvas; says so where they do not.
bool CanShowSlices(const MainUI& ui);

/// Whether the slice that the canvas is made for fits its pictures.
bool FitsPictures(const Segimage& canvas);

/// The part of the canvas's slice that its pictures hold: all of it, where it fits.
measure::SliceSize SizeOf(const Segimage& canvas);

/// Ends a measure: the picture in `result` is what the canvas shows from now on.
void ShowGreyResult(Segimage& canvas);

}  // namespace slice
