// What a command checks before it touches anything; each check says why in a message box.
#pragma once

class MainUI;
class VoxData;

/// The two images of a comparison; `ok` is false after a refusal.
struct ChosenPair {
  bool ok = false;
  int index1 = 0;
  int index2 = 0;
  VoxData* image1 = nullptr;
  VoxData* image2 = nullptr;
};

/// Slot `index` with its labels, or null.
VoxData* ImageAt(const MainUI& ui, int index);

/// Image 1 and Image 2 of the choosers. Refused: an entry without a slot, two sizes that differ.
ChosenPair TakeChosenPair(const MainUI& ui);
/// The same without a message box, for what follows a measure that has refused already.
ChosenPair FindChosenPair(const MainUI& ui);

/// The chosen pair for a measure on volumes. Refused besides: a size other than that of slot 0
/// or of the image on the slider, more than 280 voxels on an axis.
ChosenPair TakeVolumePair(const MainUI& ui);

/// False, with a message box, where `image` cannot be measured as a volume.
bool CanMeasureVolume(const MainUI& ui, const VoxData* image);

/// Whether a slice of the image on the slider along `direction` fits 300 by 300 pixels.
bool FitsCanvas(const MainUI& ui, int direction);

/// False, with a message box, where a slice along `direction` (0, 1, 2) does not fit the result
/// canvas of 300 by 300 pixels.
bool CanShowSlice(const MainUI& ui, int direction);

/// One line on the error stream when `image` holds no voxel of the current label, since the
/// number that follows is no measurement. `role` is "Image 1" or the like.
void WarnIfLabelMissing(const MainUI& ui, const VoxData& image, const char* role);

/// False, with a message box, where the images of `userCount` users with `slicesPerUser` repeats
/// are not all loaded and of one size, where there are none, or more users than `mostUsers`.
bool CanMeasureUsers(const MainUI& ui, int mostUsers);

/// The same for the user at overlayIntraSlider on a slice, who has to be one of them.
bool CanMeasureOneUser(const MainUI& ui);
