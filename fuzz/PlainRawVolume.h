// Raw volumes taken voxel by voxel in the order of the file, to hold the reader against.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace plain {

/// The numbers of the load dialog.
struct RawDialog {
  int dims[3];
  int bytes;
  int min;
  int max;
  int flips[3];
  int headerSize;
};

/// Calls `put(x, y, z, value)` for each voxel. Bytes that the file lacks stay those of the slice
/// before, in the first slice zeros.
template <class Put>
void ForEachVoxel(const std::string& file, const RawDialog& d, int bytes, Put put) {
  const auto at = [&d](int axis, int index) {
    return d.flips[axis] != 0 ? d.dims[axis] - 1 - index : index;
  };
  std::vector<std::uint8_t> slice(static_cast<std::size_t>(d.dims[0] * d.dims[1] * bytes));
  auto next = static_cast<std::size_t>(std::max(d.headerSize, 0));
  // From the bottom only as many rows as the slice has columns.
  const int rows = d.flips[1] != 0 ? d.dims[1] : std::min(d.dims[0], d.dims[1]);
  for (int k = 0; k < d.dims[2]; ++k) {
    for (std::uint8_t& byte : slice) {
      if (next < file.size()) { byte = static_cast<std::uint8_t>(file[next++]); }
    }
    const std::uint8_t* voxel = slice.data();
    for (int j = 0; j < rows; ++j) {
      for (int i = 0; i < d.dims[0]; ++i, voxel += bytes) {
        put(at(0, i), at(1, j), at(2, k), bytes == 2 ? 256 * voxel[0] + voxel[1] : voxel[0]);
      }
    }
  }
}

/// What a volume holds after a grey load and a segmentation from the same file.
class RawVolume {
public:
  std::vector<std::uint16_t> grey;
  std::vector<std::uint8_t> seg;
  std::vector<float> twin;  ///< x fastest
  double scale = 0.0;

  RawVolume(const std::string& file, const RawDialog& dialog) : d(dialog) {
    const auto count = static_cast<std::size_t>(d.dims[0] * d.dims[1] * d.dims[2]);
    grey.resize(count);
    seg.resize(count);
    twin.resize(count);
    ReadGrey(file);
    ForEachVoxel(file, d, 1, [this](int x, int y, int z, int value) {
      seg[At(x, y, z)] = static_cast<std::uint8_t>(value);
      twin[static_cast<std::size_t>(d.dims[0] * (d.dims[1] * z + y) + x)] =
          value != 0 ? 255.0F : 0.0F;
    });
  }

  std::size_t At(int x, int y, int z) const {
    return static_cast<std::size_t>((x * d.dims[1] + y) * d.dims[2] + z);
  }

private:
  void ReadGrey(const std::string& file) {
    std::int64_t low = 100000;
    std::int64_t high = 0;
    ForEachVoxel(file, d, d.bytes, [&](int, int, int, int value) {
      low = std::min<std::int64_t>(low, value);
      high = std::max<std::int64_t>(high, value);
    });
    if (d.min != 0 || d.max != 0) {
      low = d.min;
      high = d.max;
    }
    scale = 65535.0 / static_cast<double>(high - low);
    if (high == low) { return; }  // infinite: every voxel is 0
    ForEachVoxel(file, d, d.bytes, [&](int x, int y, int z, int value) {
      const double stored = static_cast<double>(value - low) * scale;
      grey[At(x, y, z)] = static_cast<std::uint16_t>(static_cast<std::int64_t>(stored));
    });
  }

  RawDialog d;
};

}  // namespace plain
