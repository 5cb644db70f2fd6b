#include "view3d/volumemeasures/DistanceRegion.h"

#include "base/ColourValues.h"

namespace measure {

void PaintDistanceRegion(const DistanceField& field, double limit, const WorkVolume& picture,
                         Progress& progress) {
  for (int x = 0; x < field.dimX; ++x) {
    for (int y = 0; y < field.dimY; ++y) {
      for (int z = 0; z < field.dimZ; ++z) {
        const bool inside = limit >= static_cast<double>(field.Length(x, y, z));
        picture.Set(x, y, z, inside ? kGreen : std::uint8_t{0});
      }
    }
    progress.Step();
  }
}

}  // namespace measure
