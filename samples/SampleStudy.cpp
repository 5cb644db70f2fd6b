#include "SampleStudy.h"

#include "GiplFile.h"

#include <array>
#include <cmath>
#include <filesystem>

namespace sample {

namespace {

constexpr std::size_t kVoxels = std::size_t{kDimX} * kDimY * kDimZ;

/// Numbers from -1 to 1 that are the same on every machine.
class Random {
public:
  explicit Random(std::uint64_t seed) : state(seed * 2862933555777941757ULL + 3037000493ULL) {}
  double Next() {
    state = state * 6364136223846793005ULL + 1442695040888963407ULL;
    return static_cast<double>(state >> 33U) / 1073741824.0 - 1.0;
  }

private:
  std::uint64_t state;
};

/// An ellipsoid in millimetres whose radius varies smoothly with the direction.
///
/// Only sums, products, quotients and square roots are used: they are exactly rounded, so the
/// study has the same bytes wherever it is made.
struct Body {
  std::array<double, 3> centre;
  std::array<double, 3> radius;
  std::array<double, 9> ripple{};  // linear, squared and mixed terms of the direction

  /// Below 1 inside, 1 on the outline.
  double Depth(double x, double y, double z) const {
    const double u = (x - centre[0]) / radius[0];
    const double v = (y - centre[1]) / radius[1];
    const double w = (z - centre[2]) / radius[2];
    const double length = std::sqrt(u * u + v * v + w * w);
    if (length == 0.0) { return 0.0; }
    const double a = u / length;
    const double b = v / length;
    const double c = w / length;
    const double swell = 1.0 + ripple[0] * a + ripple[1] * b + ripple[2] * c + ripple[3] * a * b +
                         ripple[4] * b * c + ripple[5] * c * a + ripple[6] * (a * a - b * b) +
                         ripple[7] * (b * b - c * c) + ripple[8] * a * b * c;
    return length / swell;
  }
};

struct Bodies {
  Body border;  // label 1
  Body organ;   // label 2
  Body core;    // label 5
};

const Bodies kTruth = {{{8.0, 70.0, 66.0}, {26.0, 34.0, 40.0}},
                       {{70.0, 58.0, 64.0}, {30.0, 24.0, 38.0}},
                       {{73.0, 57.0, 62.0}, {11.0, 9.0, 15.0}}};

/// How a hand strays: the user has a habit, each repeat a slip of its own.
void Stray(Body& body, Random& habit, Random& slip) {
  for (int axis = 0; axis < 3; ++axis) {
    body.centre[axis] += 0.8 * habit.Next() + 0.4 * slip.Next();
    body.radius[axis] *= 1.0 + 0.03 * habit.Next() + 0.015 * slip.Next();
  }
  for (double& term : body.ripple) { term = 0.04 * habit.Next() + 0.03 * slip.Next(); }
}

template <class Voxel, class Value>
std::vector<Voxel> FillVolume(Value value) {
  std::vector<Voxel> voxels;
  voxels.reserve(kVoxels);
  for (int z = 0; z < kDimZ; ++z) {
    for (int y = 0; y < kDimY; ++y) {
      for (int x = 0; x < kDimX; ++x) {
        voxels.push_back(value((x + 0.5) * 0.9, (y + 0.5) * 0.9, (z + 0.5) * 2.0));
      }
    }
  }
  return voxels;
}

/// 1 well inside, 0 well outside, with a soft edge.
double Soft(double depth) {
  const double t = (1.08 - depth) / 0.16;
  if (t <= 0.0) { return 0.0; }
  return t >= 1.0 ? 1.0 : t * t * (3.0 - 2.0 * t);
}

}  // namespace

std::vector<std::uint16_t> GreyVolume() {
  Random noise(11);
  return FillVolume<std::uint16_t>([&noise](double x, double y, double z) {
    double value = 300.0 + 1.2 * y + 0.8 * z;
    value += 500.0 * Soft(kTruth.border.Depth(x, y, z));
    value += 800.0 * Soft(kTruth.organ.Depth(x, y, z));
    value += 450.0 * Soft(kTruth.core.Depth(x, y, z));
    return static_cast<std::uint16_t>(value + 40.0 * noise.Next());
  });
}

std::vector<std::uint8_t> LabelVolume(int user, int repeat) {
  Random habit(static_cast<std::uint64_t>(100 + user));
  Random slip(static_cast<std::uint64_t>(1000 + user * kRepeats + repeat));
  Bodies drawn = kTruth;
  Stray(drawn.border, habit, slip);
  Stray(drawn.organ, habit, slip);
  Stray(drawn.core, habit, slip);
  return FillVolume<std::uint8_t>([&drawn](double x, double y, double z) -> std::uint8_t {
    const bool inOrgan = drawn.organ.Depth(x, y, z) <= 1.0;
    if (inOrgan && drawn.core.Depth(x, y, z) <= 1.0) { return 5; }
    if (inOrgan) { return 2; }
    return drawn.border.Depth(x, y, z) <= 1.0 ? 1 : 0;
  });
}

std::string WriteStudy(const std::string& folder) {
  std::error_code error;
  const std::filesystem::path where = std::filesystem::absolute(folder, error);
  std::filesystem::create_directories(where, error);
  if (error) { return "cannot make the folder " + folder; }

  const std::array<int, 3> size = {kDimX, kDimY, kDimZ};
  const std::array<float, 3> spacing = {kSpacing[0], kSpacing[1], kSpacing[2]};
  std::vector<std::uint8_t> grey;
  grey.reserve(2 * kVoxels);
  for (const std::uint16_t value : GreyVolume()) {
    grey.push_back(static_cast<std::uint8_t>(value >> 8U));
    grey.push_back(static_cast<std::uint8_t>(value & 0xFFU));
  }
  const std::string greyPath = (where / "grey.gipl").string();
  if (!gipl::Write(greyPath, {size, gipl::kSigned16, spacing}, grey)) {
    return "cannot write " + greyPath;
  }

  std::string list =
      std::to_string(kUsers) + "\n" + std::to_string(kRepeats) + "\n" + greyPath + "\n";
  for (int user = 0; user < kUsers; ++user) {
    for (int repeat = 0; repeat < kRepeats; ++repeat) {
      const std::string name =
          "user" + std::to_string(user + 1) + "_repeat" + std::to_string(repeat + 1) + ".gipl";
      const std::string path = (where / name).string();
      if (!gipl::Write(path, {size, gipl::kUnsigned8, spacing}, LabelVolume(user, repeat))) {
        return "cannot write " + path;
      }
      list += path + "\n";
    }
  }
  const bool listed = gipl::WriteText((where / "study.tlx").string(), list + "\n");
  return listed ? "" : "cannot write the list file";
}

}  // namespace sample
