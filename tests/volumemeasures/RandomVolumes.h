// Random volumes and vectors, for holding fast measures against plain ones.
#pragma once

#include "tests/support/TestField.h"
#include "tests/support/TestVolume.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <random>
#include <vector>

/// Labels 0 to 3: noise, or boxes that overlap and touch the border, or one label throughout.
inline std::unique_ptr<TestVolume> RandomLabels(std::mt19937& random,
                                                const std::array<int, 3>& dims) {
  auto volume = std::make_unique<TestVolume>(dims[0], dims[1], dims[2]);
  const auto below = [&](int end) {
    return static_cast<int>(random() % static_cast<unsigned>(end));
  };
  const auto end = [&](int axis) {
    return dims[static_cast<std::size_t>(axis)] - 1;
  };
  const int kind = below(8);
  if (kind == 0) { volume->Fill({0, 0, 0}, {end(0), end(1), end(2)}, 2); }
  if (kind == 1) {
    for (int x = 0; x < dims[0]; ++x) {
      for (int y = 0; y < dims[1]; ++y) {
        for (int z = 0; z < dims[2]; ++z) {
          volume->voxel(x, y, z) = static_cast<std::uint8_t>(below(4));
        }
      }
    }
  }
  for (int box = 0; kind > 1 && box < 6; ++box) {
    TestVolume::Voxel low{};
    TestVolume::Voxel high{};
    for (std::size_t axis = 0; axis < 3; ++axis) {
      low[axis] = below(dims[axis]);
      high[axis] = low[axis] + below(dims[axis] - low[axis]);
    }
    volume->Fill(low, high, static_cast<std::uint8_t>(below(4)));
  }
  return volume;
}

/// Sizes of 1 to about 60, at times one beyond a block of 16 or a slab of 128 or 256.
inline std::array<int, 3> RandomSizes(std::mt19937& random) {
  std::array<int, 3> dims{};
  for (int& size : dims) { size = 1 + static_cast<int>(random() % 24); }
  const std::size_t longest = random() % 3;
  constexpr int kLong[] = {15, 16, 17, 33, 64, 127, 129, 144, 255, 257, 272, 280};
  if (random() % 2 == 0) { dims[longest] = kLong[random() % 12]; }
  return dims;
}

/// Vectors of few lengths, so that ties are common; a few are long, and all may be zero.
inline void FillRandomly(std::mt19937& random, const TestField& field) {
  const unsigned kinds = 1 + static_cast<unsigned>(random() % 9);
  for (std::size_t i = 0; i < field.Count(); ++i) {
    for (float* component : {field.View().x, field.View().y, field.View().z}) {
      const auto steps = static_cast<float>(random() % kinds);
      component[i] = (random() % 2 == 0 ? steps : -steps) * 0.3F;
      if (random() % 512 == 0) { component[i] *= 1000.0F; }
    }
  }
}

/// A picture with something in it before it is painted.
class TestPicture {
public:
  explicit TestPicture(const std::array<int, 3>& dims)
      : colours(dims[0], dims[1], dims[2]), scalars(colours.Bytes().size(), -1.0F) {
    colours.Fill({0, 0, 0}, {dims[0] - 1, dims[1] - 1, dims[2] - 1}, 77);
  }
  WorkVolume Work() { return colours.Work(scalars.data()); }
  /// The picture as a command gets it: scalars made of zeros.
  WorkVolume NewWork() {
    std::fill(scalars.begin(), scalars.end(), 0.0F);
    return Work().WithNewScalars();
  }
  const std::vector<std::uint8_t>& Colours() const { return colours.Bytes(); }
  const std::vector<float>& Scalars() const { return scalars; }

private:
  TestVolume colours;
  std::vector<float> scalars;
};
