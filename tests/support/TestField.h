// A distance field for tests: owns its mask and vectors.
#pragma once

#include "base/DistanceField.h"
#include "base/LabelVolume.h"

#include <cstdint>
#include <vector>

class TestField {
public:
  TestField(int x, int y, int z)
      : count(static_cast<std::size_t>(x) * static_cast<std::size_t>(y) *
              static_cast<std::size_t>(z)),
        mask(count, -1), vx(count, kUnset), vy(count, kUnset),
        vz(count, kUnset), view{mask.data(), vx.data(), vy.data(), vz.data(), x, y, z} {}
  explicit TestField(const LabelVolume& image) : TestField(image.dimX, image.dimY, image.dimZ) {}

  // The view points into the object itself.
  TestField(const TestField&) = delete;
  TestField& operator=(const TestField&) = delete;

  const DistanceField& View() const { return view; }
  std::size_t Count() const { return count; }
  const std::vector<std::int32_t>& Mask() const { return mask; }
  const std::vector<float>& X() const { return vx; }
  const std::vector<float>& Y() const { return vy; }
  const std::vector<float>& Z() const { return vz; }

private:
  static constexpr float kUnset = -12345.0F;  // what no transform may leave behind

  std::size_t count;
  std::vector<std::int32_t> mask;
  std::vector<float> vx;
  std::vector<float> vy;
  std::vector<float> vz;
  DistanceField view;
};
