// What a VoxData owns behind its public pointers.
#pragma once

#include "VoxData/VoxData.h"
#include "VoxData/VoxelTable.h"

struct VoxData::Storage {
  voxels::VoxelTable<std::uint16_t> grey;
  voxels::VoxelTable<std::uint8_t> seg;
  voxels::VoxelTable<std::uint8_t> work;
};
