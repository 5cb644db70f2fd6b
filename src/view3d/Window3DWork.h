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

/// An image whose labels a measure changes for a while, from the moment that savedLabels holds
/// them. They are whole again when this goes, and while another measure runs inside the one that
/// changed them.
class AlteredLabels {
public:
  AlteredLabels(Window3D& owner, VoxData& altered);
  AlteredLabels(const AlteredLabels&) = delete;
  AlteredLabels& operator=(const AlteredLabels&) = delete;
  ~AlteredLabels();

  void Restored();  ///< the measure itself has put the labels back
  void Suspend();   ///< whole labels, while another measure may use savedLabels
  void Resume();    ///< the changed ones again

private:
  Window3D& view;
  VoxData& image;
  AlteredLabels* before;
  std::vector<std::uint8_t> whole;  ///< z fastest, while the measure is interrupted
  std::vector<std::uint8_t> changed;
  int suspensions = 0;  ///< measures that run inside this one, one inside the other
  bool restored = false;
};
