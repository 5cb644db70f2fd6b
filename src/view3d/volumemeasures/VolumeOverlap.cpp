#include "view3d/volumemeasures/VolumeOverlap.h"

#include "view3d/volumemeasures/VoxelBlocks.h"

namespace measure {

namespace {

/// Colour values of 16 voxels: the value of both classes is the sum of the two others.
Bytes ClassesOf(Bytes inA, Bytes inB) {
  constexpr auto kOnlyA = static_cast<std::uint8_t>(OverlapClass::OnlyA);
  constexpr auto kOnlyB = static_cast<std::uint8_t>(OverlapClass::OnlyB);
  static_assert(kOnlyA + kOnlyB == static_cast<int>(OverlapClass::Both));
  return (inA & AllBytes(kOnlyA)) | (inB & AllBytes(kOnlyB));
}

int DivisorOf(const VolumeOverlap& overlap, OverlapDivisor divisor) {
  const auto& [onlyA, onlyB, common] = overlap;
  switch (divisor) {
  case OverlapDivisor::Average:
    // ON PURPOSE: an odd sum is truncated before the ratio is formed.
    return (onlyA + 2 * common + onlyB) / 2;
  case OverlapDivisor::Union: return common + onlyB + onlyA;
  case OverlapDivisor::FirstImage: return onlyA + common;
  }
  return 0;
}

/// How many bytes of a block's mask are set, from their number in each of its columns.
int Total(Bytes perColumn) {
  // At most 16 in each byte: the product adds eight of them up in its top byte.
  constexpr std::uint64_t kAddUp = 0x0101010101010101U;
  const auto halves = reinterpret_cast<Longs>(perColumn);
  return static_cast<int>(((halves[0] * kAddUp) >> 56U) + ((halves[1] * kAddUp) >> 56U));
}

template <class Visit>
void ForEachBlock(const SlabPlace& at, Visit visit) {
  for (int i = 0; i < at.BlocksX(); ++i) {
    for (int k = 0; k < at.BlocksZ(); ++k) { visit(i, k); }
  }
}

/// Counts the classes of a block; leaves their colour values in the mask of A.
void Classify(Block& inA, const Block& inB, VolumeOverlap& overlap) {
  Bytes onlyA{};
  Bytes onlyB{};
  Bytes common{};
  for (int i = 0; i < kBlock; ++i) {
    const Bytes both = inA.rows[i] & inB.rows[i];
    onlyA -= inA.rows[i] ^ both;  // a set byte is -1
    onlyB -= inB.rows[i] ^ both;
    common -= both;
    inA.rows[i] = ClassesOf(inA.rows[i], inB.rows[i]);
  }
  overlap.onlyA += Total(onlyA);
  overlap.onlyB += Total(onlyB);
  overlap.common += Total(common);
}

/// Paints the voxels of a mask in one colour, which the mask then holds by z.
void PaintRegion(Slab& mask, OverlapClass where, const WorkVolume& picture, const SlabPlace& at) {
  const Bytes colour = AllBytes(static_cast<std::uint8_t>(where));
  ForEachBlock(at, [&](int i, int k) {
    for (Bytes& row : mask.blocks[i][k].rows) { row &= colour; }
  });
  StoreColours(picture, at, mask);
  mask.Turn(at);
  StoreScalars(picture, at, mask);
}

/// One step for each z plane of a volume, given out as its x planes are done: those are what the
/// labels lie in.
class PlaneSteps {
public:
  PlaneSteps(const LabelVolume& volume, Progress& receiver) : shape(volume), progress(receiver) {}

  void Done(int planes) {
    planesDone += planes;
    const auto due =
        static_cast<int>(static_cast<std::int64_t>(planesDone) * shape.dimZ / shape.dimX);
    for (; given < due; ++given) { progress.Step(); }
  }

private:
  const LabelVolume& shape;
  Progress& progress;
  int planesDone = 0;
  int given = 0;
};

}  // namespace

VolumeOverlap CountOverlap(const LabelVolume& a, const LabelVolume& b, int label,
                           Progress& progress) {
  VolumeOverlap overlap;
  const auto wanted = static_cast<std::uint8_t>(label);
  const int lastX = label == wanted ? a.dimX : 0;  // no voxel bears a label that is no byte
  for (int x = 0; x < lastX; ++x) {
    for (int y = 0; y < a.dimY; ++y) {
      const std::uint8_t* runA = a.voxels[x][y];
      const std::uint8_t* runB = b.voxels[x][y];
      int inA = 0;
      int inB = 0;
      int both = 0;
      for (int z = 0; z < a.dimZ; ++z) {
        const int bearsA = runA[z] == wanted ? 1 : 0;
        const int bearsB = runB[z] == wanted ? 1 : 0;
        inA += bearsA;
        inB += bearsB;
        both += bearsA & bearsB;
      }
      overlap.onlyA += inA - both;
      overlap.onlyB += inB - both;
      overlap.common += both;
    }
  }
  for (int z = 0; z < a.dimZ; ++z) { progress.Step(); }
  return overlap;
}

VolumeOverlap PaintOverlap(const LabelVolume& a, const LabelVolume& b, int label,
                           const WorkVolume& picture, Progress& progress) {
  VolumeOverlap overlap;
  const LabelTest test(label);
  PlaneSteps steps(a, progress);
  Slab inA;
  Slab inB;
  const auto paint = [&](const SlabPlace& at) {
    inA.LoadMask(a, test, at);
    inB.LoadMask(b, test, at);
    ForEachBlock(at, [&](int i, int k) { Classify(inA.blocks[i][k], inB.blocks[i][k], overlap); });
    StoreColours(picture, at, inA);
    inA.Turn(at);
    StoreScalars(picture, at, inA);
  };
  ForEachSlab(a, 0, a.dimX - 1, paint, [&](int planes) { steps.Done(planes); });
  return overlap;
}

void PaintRegions(const LabelVolume& a, const LabelVolume& b, int label, const WorkVolume& pictureA,
                  const WorkVolume& pictureB, const WorkVolume& pictureBoth, Progress& progress) {
  const LabelTest test(label);
  PlaneSteps steps(a, progress);
  Slab inA;
  Slab inB;
  Slab both;
  const auto paint = [&](const SlabPlace& at) {
    inA.LoadMask(a, test, at);
    inB.LoadMask(b, test, at);
    ForEachBlock(at, [&](int i, int k) {
      for (int row = 0; row < kBlock; ++row) {
        both.blocks[i][k].rows[row] = inA.blocks[i][k].rows[row] & inB.blocks[i][k].rows[row];
      }
    });
    PaintRegion(inA, OverlapClass::OnlyA, pictureA, at);
    PaintRegion(inB, OverlapClass::OnlyB, pictureB, at);
    PaintRegion(both, OverlapClass::Both, pictureBoth, at);
  };
  ForEachSlab(a, 0, a.dimX - 1, paint, [&](int planes) { steps.Done(planes); });
}

std::optional<double> OverlapRatio(const VolumeOverlap& overlap, OverlapDivisor divisor) {
  const int quantity = DivisorOf(overlap, divisor);
  if (quantity == 0) { return std::nullopt; }
  return static_cast<double>(overlap.common) / quantity;
}

}  // namespace measure
