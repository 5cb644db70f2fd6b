// What a study of several users shows, as plain loops over its voxels: averages, shares of users,
// matrices of labels.
#pragma once

#include "tests/support/TestVolume.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace plain {

/// The segmentations of all users, the first user's repeats first.
class Study {
public:
  using Volume = std::unique_ptr<TestVolume>;

  std::vector<Volume> images;
  int users;
  int repeats;
  int label;
  std::array<int, 3> dims;

  Study(int userCount, int repeatCount, int wanted, const std::array<int, 3>& size)
      : users(userCount), repeats(repeatCount), label(wanted), dims(size) {}

  Volume Empty() const { return std::make_unique<TestVolume>(dims[0], dims[1], dims[2]); }

  /// How many repeats of a user mark a voxel.
  int Votes(int user, int x, int y, int z) const {
    int votes = 0;
    for (int r = 0; r < repeats; ++r) {
      votes += images[At(user * repeats + r)]->At({x, y, z}) == label ? 1 : 0;
    }
    return votes;
  }

  Volume Average(int user) const {
    int needed = static_cast<int>((repeats + 0.5) * 0.5);
    if (needed == 0) { needed = 1; }
    Volume average = Empty();
    ForEachVoxel([&](int x, int y, int z) {
      const bool marked = Votes(user, x, y, z) >= needed;
      average->voxel(x, y, z) = static_cast<std::uint8_t>(marked ? label : 0);
    });
    return average;
  }

  /// How far a user agrees with himself on the slice at z.
  std::string Intra(int user, int z) const {
    double sum = 0.0;
    int marked = 0;
    for (int x = 0; x < dims[0]; ++x) {
      for (int y = 0; y < dims[1]; ++y) {
        const int votes = Votes(user, x, y, z);
        sum += static_cast<double>(votes) / repeats;
        marked += votes != 0 ? 1 : 0;
      }
    }
    return Text("%.6f", sum / marked);
  }

  /// How far the first two users agree on the slice at z.
  std::string Inter(int z) const {
    double apart = 0.0;
    double both = 0.0;
    for (int x = 0; x < dims[0]; ++x) {
      for (int y = 0; y < dims[1]; ++y) {
        const double a = Votes(0, x, y, z);
        const double b = Votes(1, x, y, z);
        apart += std::fabs(a / repeats - b / repeats);
        both += (a + b) / (2.0 * repeats);
      }
    }
    return Text("%.6f", 1.0 - (apart / both) * 0.5);
  }

  /// The same over the whole volume: the sums are rounded at each voxel, and what the first two
  /// mark is compared with the share of all users. At most 11 users.
  std::string Overlap() const {
    float apart = 0.0F;
    float all = 0.0F;
    ForEachVoxel([&](int x, int y, int z) {
      const int a = Votes(0, x, y, z);
      const int b = Votes(1, x, y, z);
      apart += static_cast<float>(
          std::fabs(static_cast<double>(a) / repeats - static_cast<double>(b) / repeats));
      if (a == 0 && b == 0) { return; }
      all += static_cast<float>(static_cast<double>(Total(x, y, z)) / (users * repeats));
    });
    return Text("%f", 1.0 - (static_cast<double>(apart) / static_cast<double>(all)) * 0.5);
  }

  int Total(int x, int y, int z) const {
    int total = 0;
    for (int user = 0; user < users; ++user) { total += Votes(user, x, y, z); }
    return total;
  }

  /// The colour of a voxel in the probability map.
  int Colour(int x, int y, int z) const {
    const int total = Total(x, y, z);
    return total == 0 ? 0 : (192 - (total * 128 - 128) / (users * repeats - 1)) & 255;
  }

  /// Calls visit(x, y, z), x outer, z inner.
  template <class Visit>
  void ForEachVoxel(Visit visit) const {
    for (int x = 0; x < dims[0]; ++x) {
      for (int y = 0; y < dims[1]; ++y) {
        for (int z = 0; z < dims[2]; ++z) { visit(x, y, z); }
      }
    }
  }

private:
  static std::size_t At(int index) { return static_cast<std::size_t>(index); }

  static std::string Text(const char* format, double value) {
    char text[64];
    std::snprintf(text, sizeof text, format, value);
    return text;
  }
};

/// An image of a matrix of labels: its name, its voxels in any order, its labels with a column or
/// a row.
struct MatrixImage {
  std::string name;
  const std::vector<std::uint8_t>& voxels;
  std::set<int> present;
};

inline std::string Matrix(const MatrixImage& first, const MatrixImage& second) {
  std::vector<std::vector<int>> joint(256, std::vector<int>(256));
  std::vector<int> sizeA(256);
  std::vector<int> sizeB(256);
  for (std::size_t i = 0; i < first.voxels.size(); ++i) {
    ++joint[first.voxels[i]][second.voxels[i]];
    ++sizeA[first.voxels[i]];
    ++sizeB[second.voxels[i]];
  }
  const auto withZero = [](std::set<int> labels) {
    labels.insert(0);
    return labels;
  };
  std::string text = second.name + " - " + first.name + "\n";
  for (int part = 0; part < 3; ++part) {
    if (part > 0) { text += "\n\n" + (part == 1 ? first.name : second.name) + " probaility\n"; }
    for (const int a : first.present) { text += "\t" + std::to_string(a); }
    text += "\n";
    for (const int b : withZero(second.present)) {
      text += std::to_string(b);
      for (const int a : withZero(first.present)) {
        const auto i = static_cast<std::size_t>(a);
        const auto j = static_cast<std::size_t>(b);
        char cell[64];
        std::snprintf(cell, sizeof cell, "\t%f",
                      static_cast<double>(joint[i][j]) / (part == 1 ? sizeA[i] : sizeB[j]));
        text += part == 0 ? "\t" + std::to_string(joint[i][j]) : cell;
      }
      text += "\n";
    }
  }
  return text;
}

}  // namespace plain
