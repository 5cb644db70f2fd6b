// What surrounds the work arrays of the 3D view: their sizes, and labels altered for a while.
#pragma once

#include "view3d/Window3D.h"

#include <cstddef>
#include <cstdint>
#include <vector>

class VoxData;

struct Window3D::Work {
  int sizeX = 0;  ///< sizes that the work arrays were allocated for
  int sizeY = 0;
  int sizeZ = 0;
  class AlteredLabels* altered = nullptr;  ///< the image whose labels a running measure changed

  std::size_t Voxels() const {
    return static_cast<std::size_t>(sizeX) * static_cast<std::size_t>(sizeY) *
           static_cast<std::size_t>(sizeZ);
  }
  static Work& Of(Window3D& view) { return *view.workState; }
};

/// An image whose labels a measure changes for a while. They are whole again when this goes, and
/// while another measure runs inside the one that changed them.
class AlteredLabels {
public:
  AlteredLabels(Window3D& view, VoxData& image);
  AlteredLabels(const AlteredLabels&) = delete;
  AlteredLabels& operator=(const AlteredLabels&) = delete;
  ~AlteredLabels();

  void Restore();                       ///< the image's own labels
  void Suspend();                       ///< the same, and remembers the changed ones
  void Resume();                        ///< the changed ones again
  bool Ready() const { return ready; }  ///< false where memory was short; nothing was changed

private:
  Window3D::Work& work;
  VoxData& image;
  AlteredLabels* before;
  std::vector<std::uint8_t> whole;    ///< the labels as they were, z fastest
  std::vector<std::uint8_t> changed;  ///< the measure's, while it is interrupted
  bool ready = false;
  bool restored = false;
};
