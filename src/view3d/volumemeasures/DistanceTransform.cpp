#include "view3d/volumemeasures/DistanceTransform.h"

#include "view3d/volumemeasures/DistancePlane.h"
#include "view3d/volumemeasures/VoxelBlocks.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <utility>

namespace measure {

namespace {

constexpr int kStartFactor = 4;  // start distance in voxels, times the longest axis

PlaneSweeps SweepsOf(InstructionSet set) {
  switch (set) {
  case InstructionSet::Sse2: return Sse2Sweeps();
  case InstructionSet::Avx2: return Avx2Sweeps();
  case InstructionSet::Avx512: return Avx512Sweeps();
  default: return PlainSweeps();
  }
}

bool ProcessorHas(InstructionSet set) {
#if defined(__x86_64__) || defined(__i386__)
  switch (set) {
  case InstructionSet::Plain: return true;
  case InstructionSet::Sse2: return __builtin_cpu_supports("sse2") != 0;
  case InstructionSet::Avx2: return __builtin_cpu_supports("avx2") != 0;
  case InstructionSet::Avx512:
    return __builtin_cpu_supports("avx512f") != 0 && __builtin_cpu_supports("avx512dq") != 0;
  }
#endif
  return set == InstructionSet::Plain;
}

/// Whether all squared lengths are exact in 32-bit floats: where every component is a multiple of
/// one power of two, and the longest vector that is tried squares to at most 2^24 of its squares.
bool SquaresAreWhole(const VoxelSize& size, int far) {
  constexpr double kWholeFloats = 16777216.0;
  const double sides[] = {size.x, size.y, size.z};
  const double largest = std::max({std::abs(sides[0]), std::abs(sides[1]), std::abs(sides[2])});
  for (double unit = kStartFactor;; unit /= 2.0) {
    const double longest = (far + largest) / unit;
    // Not-a-number fails here too.
    if (!(3.0 * longest * longest <= kWholeFloats)) { return false; }
    const auto isMultiple = [&](double side) {
      return std::fmod(side, unit) == 0.0;
    };
    if (std::all_of(std::begin(sides), std::end(sides), isMultiple)) { return true; }
  }
}

/// A slab of the mask: labels lie along z, the mask along x.
void FillSlab(const DistanceField& field, const SlabPlace& at, const Slab& turned) {
  for (int z = 0; z < at.countZ; ++z) {
    std::int32_t* to = field.mask + field.Index(at.x, at.y, at.z + z);
    for (int i = 0; i < at.BlocksX(); ++i) {
      const Bytes row = turned.blocks[i][z / kBlock].rows[z % kBlock] & AllBytes(1);
      std::int32_t ones[kBlock];
      for (int k = 0; k < kBlock; ++k) { ones[k] = row[k]; }
      const int count = std::min(at.countX - i * kBlock, kBlock);
      std::memcpy(to + i * kBlock, ones, static_cast<std::size_t>(count) * sizeof(std::int32_t));
    }
  }
}

void FillMask(const LabelVolume& image, int label, const DistanceField& field, Progress& progress) {
  const LabelTest test(label);
  Slab slab;
  const auto fill = [&](const SlabPlace& at) {
    slab.LoadMask(image, test, at);
    slab.Turn(at);
    FillSlab(field, at, slab);
  };
  ForEachSlab(image, 0, image.dimX - 1, fill, [&](int planes) {
    for (int step = 0; step < planes; ++step) { progress.Step(); }
  });
}

/// Work memory that begins with a line of the cache: no row's vectors lie across two of them.
template <class Element>
class Lines {
public:
  void Assign(std::size_t count, Element value) {
    elements.assign(count + kLine / sizeof(Element), value);
    void* begin = elements.data();
    std::size_t room = elements.size() * sizeof(Element);
    first = static_cast<Element*>(std::align(kLine, count * sizeof(Element), begin, room));
  }
  Element* First() const { return first; }

private:
  static constexpr std::size_t kLine = 64;

  std::vector<Element> elements;
  Element* first = nullptr;
};

/// The two scans along z. Two planes of vectors with room round them are all the work memory.
class Scans {
public:
  Scans(const VoxelSize& size, const DistanceField& arrays, InstructionSet set)
      : field(arrays), stride(kRowPad + (field.dimX + kRowPad - 1) / kRowPad * kRowPad) {
    const int far = kStartFactor * std::max({field.dimX, field.dimY, field.dimZ});
    const bool whole = SquaresAreWhole(size, far);
    const PlaneSweeps sweeps = SweepsOf(set);
    sweep = whole ? sweeps.whole : sweeps.real;
    steps = {size.x, size.y, size.z, static_cast<float>(far)};
    const auto rowLength = static_cast<std::size_t>(stride);
    for (Lines<float>& plane : planes) {
      plane.Assign(rowLength * 3 * static_cast<std::size_t>(field.dimY) + kRowPad, 0.0F);
    }
    const std::size_t count = rowLength * kLengthRows + kRowPad;
    if (whole) {
      floatLengths.Assign(count, std::numeric_limits<float>::infinity());
      lengths = floatLengths.First();
    } else {
      doubleLengths.Assign(count, std::numeric_limits<double>::infinity());
      lengths = doubleLengths.First();
    }
  }

  void Start() { SweepPlane(0, nullptr, false); }
  void Forward(int z) { SweepPlane(z, planes[1].First(), false); }
  void Backward(int z) { SweepPlane(z, planes[1].First(), true); }

private:
  void SweepPlane(int z, const float* source, bool backward) {
    const std::size_t first = field.Index(0, 0, z);
    PlaneJob job{};
    job.steps = steps;
    job.dimX = field.dimX;
    job.dimY = field.dimY;
    job.stride = stride;
    job.source = source;
    job.target = planes[0].First();
    job.lengths = lengths;
    job.backward = backward;
    job.mask = field.mask + first;
    job.x = field.x + first;
    job.y = field.y + first;
    job.z = field.z + first;
    sweep(job);
    std::swap(planes[0], planes[1]);
  }

  const DistanceField& field;
  int stride;
  SweepSteps steps{};
  void (*sweep)(const PlaneJob&) = nullptr;
  Lines<float> planes[2];  // the one to be swept, and the one swept last
  Lines<float> floatLengths;
  Lines<double> doubleLengths;
  void* lengths = nullptr;  // of the one of both that is in use
};

}  // namespace

std::vector<InstructionSet> SupportedInstructionSets() {
  std::vector<InstructionSet> sets;
  for (const InstructionSet set : {InstructionSet::Plain, InstructionSet::Sse2,
                                   InstructionSet::Avx2, InstructionSet::Avx512}) {
    if (ProcessorHas(set) && SweepsOf(set).real != nullptr) { sets.push_back(set); }
  }
  return sets;
}

void ComputeDistanceTransform(const LabelVolume& image, int label, const VoxelSize& size,
                              const DistanceField& field, Progress& progress) {
  const InstructionSet fastest = SupportedInstructionSets().back();
  ComputeDistanceTransformOn(fastest, image, label, size, field, progress);
}

void ComputeDistanceTransformOn(InstructionSet set, const LabelVolume& image, int label,
                                const VoxelSize& size, const DistanceField& field,
                                Progress& progress) {
  FillMask(image, label, field, progress);
  Scans scans(size, field, set);
  if (field.dimZ > 0) { scans.Start(); }
  progress.Print("starting forward scan");
  progress.ShowMessage("Starting forward scan");
  for (int z = 1; z < field.dimZ; ++z) {
    progress.Step();
    scans.Forward(z);
  }
  progress.Print("starting backward scan");
  for (int z = field.dimZ - 2; z >= 0; --z) {
    progress.Step();
    scans.Backward(z);
  }
}

}  // namespace measure
