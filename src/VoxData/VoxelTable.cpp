#include "VoxData/VoxelTable.h"

#include <cstdint>
#include <fstream>
#include <limits>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

namespace voxels {

namespace {

double PhysicalBytes() {
  return static_cast<double>(sysconf(_SC_PHYS_PAGES)) * static_cast<double>(sysconf(_SC_PAGESIZE));
}

/// Bytes that can still be filled before the system has to end a program, with the swap space.
double AvailableBytes() {
  std::ifstream lines("/proc/meminfo");
  std::string name;
  double kibibytes = 0.0;
  double sum = 0.0;
  bool known = false;
  while (lines >> name >> kibibytes) {
    if (name == "MemAvailable:") { known = true; }
    if (name == "MemAvailable:" || name == "SwapFree:") { sum += 1024.0 * kibibytes; }
    lines.ignore(std::numeric_limits<std::streamsize>::max(), '\n');
  }
  return known ? sum : PhysicalBytes();
}

}  // namespace

void PreferLargePages(void* array, std::size_t bytes) {
  constexpr std::uintptr_t kPage = 4096;
  constexpr std::size_t kWorthIt = std::size_t{4} << 20U;
  if (bytes < kWorthIt) { return; }
  const auto begin = (reinterpret_cast<std::uintptr_t>(array) + kPage - 1) / kPage * kPage;
  const auto end = (reinterpret_cast<std::uintptr_t>(array) + bytes) / kPage * kPage;
  madvise(reinterpret_cast<void*>(begin), end - begin, MADV_HUGEPAGE);  // only a wish
}

std::size_t CountThatFits(int dimX, int dimY, int dimZ, std::size_t bytesPerVoxel) {
  constexpr double kSmall = 1 << 20;  // always there: the system need not be asked
  if (dimX < 1 || dimY < 1 || dimZ < 1) { return 0; }
  const double rows = static_cast<double>(dimX) * dimY;
  const double bytes = rows * dimZ * static_cast<double>(bytesPerVoxel) + rows * sizeof(void*);
  if (bytes > kSmall && bytes > AvailableBytes()) { return 0; }
  return static_cast<std::size_t>(dimX) * static_cast<std::size_t>(dimY) *
         static_cast<std::size_t>(dimZ);
}

}  // namespace voxels
