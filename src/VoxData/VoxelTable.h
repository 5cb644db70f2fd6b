// Voxels of one array: a block behind pointer tables, so that table[x][y][z] is three loads.
#pragma once

#include <cstddef>
#include <cstdlib>

namespace voxels {

/// Number of voxels, or 0 where the sizes make no volume or more than memory can still hold.
std::size_t CountThatFits(int dimX, int dimY, int dimZ, std::size_t bytesPerVoxel);

/// Asks for large pages behind an array that will be filled: a fault for each small one costs more
/// than the voxels in it.
void PreferLargePages(void* array, std::size_t bytes);

/// Owner of one array. All voxels are 0 after Allocate; pages that nobody touches cost nothing.
template <class Voxel>
class VoxelTable {
public:
  VoxelTable() = default;
  VoxelTable(const VoxelTable&) = delete;
  VoxelTable& operator=(const VoxelTable&) = delete;
  ~VoxelTable() { Release(); }

  bool Allocate(int dimX, int dimY, int dimZ) {
    Release();
    const std::size_t count = CountThatFits(dimX, dimY, dimZ, sizeof(Voxel));
    if (count == 0) { return false; }
    const auto sizeX = static_cast<std::size_t>(dimX);
    const auto sizeY = static_cast<std::size_t>(dimY);
    block = static_cast<Voxel*>(std::calloc(count, sizeof(Voxel)));
    rows = static_cast<Voxel**>(std::malloc(sizeX * sizeY * sizeof(Voxel*)));
    planes = static_cast<Voxel***>(std::malloc(sizeX * sizeof(Voxel**)));
    if (block == nullptr || rows == nullptr || planes == nullptr) {
      Release();
      return false;
    }
    PreferLargePages(block, count * sizeof(Voxel));
    for (std::size_t row = 0; row < sizeX * sizeY; ++row) {
      rows[row] = block + row * static_cast<std::size_t>(dimZ);
    }
    for (std::size_t plane = 0; plane < sizeX; ++plane) { planes[plane] = rows + plane * sizeY; }
    return true;
  }

  void Release() {
    std::free(block);
    std::free(rows);
    std::free(planes);
    block = nullptr;
    rows = nullptr;
    planes = nullptr;
  }

  Voxel*** Planes() const { return planes; }
  Voxel* Block() const { return block; }

private:
  Voxel* block = nullptr;
  Voxel** rows = nullptr;
  Voxel*** planes = nullptr;
};

}  // namespace voxels
