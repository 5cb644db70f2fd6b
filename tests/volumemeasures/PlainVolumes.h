// The volume measures as plain loops in the order in which they are told, one voxel at a time.
//
// The reference for the tests and for the benchmarks' ratios: slow, and easy to read.
#pragma once

#include "base/ColourValues.h"
#include "base/DistanceField.h"
#include "base/LabelVolume.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace plain {

struct Counts {
  int onlyA = 0;
  int onlyB = 0;
  int common = 0;
};

inline Counts OverlayResult(const LabelVolume& a, const LabelVolume& b, int label,
                            const WorkVolume& picture) {
  Counts counts;
  for (int z = 0; z < a.dimZ; ++z) {
    for (int x = 0; x < a.dimX; ++x) {
      for (int y = 0; y < a.dimY; ++y) {
        const bool inA = a.Bears(label, x, y, z);
        const bool inB = b.Bears(label, x, y, z);
        if (inA && inB) {
          picture.Set(x, y, z, 192);
          ++counts.common;
        } else if (inA) {
          picture.Set(x, y, z, 64);
          ++counts.onlyA;
        } else if (inB) {
          picture.Set(x, y, z, 128);
          ++counts.onlyB;
        } else {
          picture.Set(x, y, z, 0);
        }
      }
    }
  }
  return counts;
}

inline void Overlay(const LabelVolume& a, const LabelVolume& b, int label, const WorkVolume& first,
                    const WorkVolume& second, const WorkVolume& both) {
  for (int z = 0; z < a.dimZ; ++z) {
    for (int x = 0; x < a.dimX; ++x) {
      for (int y = 0; y < a.dimY; ++y) {
        const bool inA = a.Bears(label, x, y, z);
        const bool inB = b.Bears(label, x, y, z);
        first.Set(x, y, z, inA ? 64 : 0);
        second.Set(x, y, z, inB ? 128 : 0);
        both.Set(x, y, z, inA && inB ? 192 : 0);
      }
    }
  }
}

/// The pass over B, which also clears the picture.
inline float HaussdorfPassB(const LabelVolume& b, int label, const DistanceField& field,
                            const WorkVolume& picture) {
  float largest = 0.0F;
  for (int x = 1; x <= b.dimX - 2; ++x) {
    for (int y = 0; y < b.dimY; ++y) {
      for (int z = 0; z < b.dimZ; ++z) {
        picture.Set(x, y, z, 0);
        const float distance = field.Length(x, y, z);
        if (largest < distance && b.Bears(label, x, y, z)) { largest = distance; }
      }
    }
  }
  return largest;
}

struct Far {
  float distance = 0.0F;
  int x = 0;
  int y = 0;
  int z = 0;
};

inline Far HaussdorfPassA(const LabelVolume& a, int label, const DistanceField& field) {
  Far far;
  const auto bears = [&](int x, int y, int z) {
    return a.Contains(x, y, z) && a.Bears(label, x, y, z);
  };
  for (int x = 0; x < a.dimX; ++x) {
    for (int y = 0; y < a.dimY; ++y) {
      for (int z = 0; z < a.dimZ; ++z) {
        const float distance = field.Length(x, y, z);
        if (!(far.distance < distance && a.Bears(label, x, y, z))) { continue; }
        far = {distance, x, y, z};
        if (!bears(x - 1, y, z)) {
          far.x = x - 1;
        } else if (!bears(x + 1, y, z)) {
          far.x = x + 1;
        } else if (!bears(x, y - 1, z)) {
          far.y = y - 1;
        } else if (!bears(x, y + 1, z)) {
          far.y = y + 1;
        }
      }
    }
  }
  return far;
}

inline void HaussdorfColours(const LabelVolume& a, int label, const DistanceField& field,
                             const Far& far, const WorkVolume& picture) {
  const int divisor = far.distance == 0.0F ? 1 : static_cast<int>(far.distance);
  for (int x = 0; x < a.dimX; ++x) {
    for (int y = 0; y < a.dimY; ++y) {
      for (int z = 0; z < a.dimZ; ++z) {
        if (a.Bears(label, x, y, z)) { picture.Set(x, y, z, 50); }
        const double distance = field.Length(x, y, z);
        picture.SetColour(x, y, z, LowByte(192 - distance * 140 / divisor));
      }
    }
  }
  if (a.Contains(far.x, far.y, far.z)) { picture.Set(far.x, far.y, far.z, 1); }
}

inline void Save(const LabelVolume& a, std::int32_t (*saved)[280][280]) {
  for (int x = 0; x < a.dimX; ++x) {
    for (int y = 0; y < a.dimY; ++y) {
      for (int z = 0; z < a.dimZ; ++z) { saved[x][y][z] = a.At(x, y, z); }
    }
  }
}

inline void Restore(std::int32_t (*saved)[280][280], const EditVolume& a) {
  for (int x = 0; x < a.dimX; ++x) {
    for (int y = 0; y < a.dimY; ++y) {
      for (int z = 0; z < a.dimZ; ++z) {
        a.Set(x, y, z, static_cast<std::uint8_t>(saved[x][y][z]));
      }
    }
  }
}

/// `zeroOnly`: only a neighbour of value 0 makes a surface, else every other value does.
inline void Shell(std::int32_t (*saved)[280][280], int label, bool zeroOnly, const EditVolume& a) {
  const LabelVolume shape = a.Labels();
  const auto opens = [&](int x, int y, int z) {
    if (!shape.Contains(x, y, z)) { return true; }
    return zeroOnly ? saved[x][y][z] == 0 : saved[x][y][z] != label;
  };
  for (int x = 0; x < a.dimX; ++x) {
    for (int y = 0; y < a.dimY; ++y) {
      for (int z = 0; z < a.dimZ; ++z) {
        const bool surface = saved[x][y][z] == label &&
                             (opens(x - 1, y, z) || opens(x + 1, y, z) || opens(x, y - 1, z) ||
                              opens(x, y + 1, z) || opens(x, y, z - 1) || opens(x, y, z + 1));
        a.Set(x, y, z, static_cast<std::uint8_t>(surface ? label : 0));
      }
    }
  }
}

struct Side {
  int count = 0;
  float sum = 0.0F;
  float max = 0.0F;
  std::vector<float> distances;
};

struct Distances {
  Side inside;
  Side outside;
  std::vector<float> all;
};

inline Distances AlongSurface(const LabelVolume& a, const LabelVolume& b, int label,
                              const DistanceField& field, bool keep) {
  Distances distances;
  for (int x = 1; x <= b.dimX - 2; ++x) {
    for (int y = 1; y <= b.dimY - 2; ++y) {
      for (int z = 1; z <= b.dimZ - 2; ++z) {
        if (!b.Bears(label, x, y, z)) { continue; }
        if (b.At(x - 1, y, z) != 0 && b.At(x + 1, y, z) != 0 && b.At(x, y - 1, z) != 0 &&
            b.At(x, y + 1, z) != 0 && b.At(x, y, z - 1) != 0 && b.At(x, y, z + 1) != 0) {
          continue;
        }
        const float d = field.Length(x, y, z);
        Side& side = a.Bears(label, x, y, z) ? distances.inside : distances.outside;
        if (d > side.max) { side.max = d; }
        side.sum += d;
        ++side.count;
        if (keep) {
          side.distances.push_back(d);
          distances.all.push_back(d);
        }
      }
    }
  }
  return distances;
}

inline void SignedColours(const LabelVolume& a, const LabelVolume& b, int label,
                          const DistanceField& field, float maxInside, float maxOutside,
                          const WorkVolume& picture) {
  for (int x = 0; x < a.dimX; ++x) {
    for (int y = 0; y < a.dimY; ++y) {
      for (int z = 0; z < a.dimZ; ++z) {
        picture.Set(x, y, z, 0);
        if (b.Bears(label, x, y, z)) { picture.Set(x, y, z, 50); }
        const double d = field.Length(x, y, z);
        double value = 0.0;
        if (a.Bears(label, x, y, z)) {
          value = maxInside == 0.0F ? 128 + d * 64 : 128 + d * 64 / maxInside;
        } else {
          value = maxOutside == 0.0F ? 128 - d * 64 : 128 - d * 64 / maxOutside;
        }
        picture.SetColour(x, y, z, LowByte(value));
      }
    }
  }
}

inline void UpdatedColours(const LabelVolume& a, int label, const DistanceField& field,
                           float maxInside, float maxOutside, const WorkVolume& picture) {
  for (int x = 0; x < a.dimX; ++x) {
    for (int y = 0; y < a.dimY; ++y) {
      for (int z = 0; z < a.dimZ; ++z) {
        const double d = field.Length(x, y, z);
        if (a.Bears(label, x, y, z)) {
          const double v = d * 64 / maxInside;
          picture.SetColour(x, y, z, v <= 64 ? LowByte(v + 128) : 192);
        } else {
          const double v = d * 64 / maxOutside;
          picture.SetColour(x, y, z, v <= 64 ? LowByte(128 - v) : 64);
        }
      }
    }
  }
}

/// The share of each user's repeats, voxel by voxel, with 15 counters of which 11 are added up.
inline double ProbabilityMap(const std::vector<LabelVolume>& images, int users, int repeats,
                             int label, const WorkVolume& picture) {
  const int all = users * repeats;
  float differences = 0.0F;
  float shares = 0.0F;
  for (int x = 0; x < picture.dimX; ++x) {
    for (int y = 0; y < picture.dimY; ++y) {
      for (int z = 0; z < picture.dimZ; ++z) {
        int hits[15] = {};
        for (int image = 0; image < all; ++image) {
          if (images[static_cast<std::size_t>(image)].Bears(label, x, y, z)) {
            ++hits[image / repeats];
          }
        }
        int total = 0;
        for (int user = 0; user < 11; ++user) { total += hits[user]; }
        picture.Set(x, y, z, total != 0 ? 50 : 0);
        if (total != 0) {
          const int colour = 192 - (total * 128 - 128) / (all - 1);
          picture.SetColour(x, y, z, static_cast<std::uint8_t>(colour & 255));
        }
        const double first = static_cast<double>(hits[0]) / repeats;
        const double second = static_cast<double>(hits[1]) / repeats;
        differences = static_cast<float>(differences + std::abs(first - second));
        if (hits[0] != 0 || hits[1] != 0) {
          shares = static_cast<float>(shares + static_cast<double>(total) / all);
        }
      }
    }
  }
  return 1.0 - static_cast<double>(differences) / shares * 0.5;
}

}  // namespace plain
