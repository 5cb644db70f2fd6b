// The slice distance map: choices and sizes first, the labels behind them. The loops of every
// machine that this one can run.
#include "fuzz/FuzzInput.h"
#include "fuzz/SliceInput.h"
#include "tests/slicemeasures/PlainSlices.h"
#include "tests/support/TestVolume.h"
#include "views/slicemeasures/SliceDistance.h"

#include <algorithm>

namespace {

/// What no slice covers keeps its pixels.
void ComparePainted(const measure::SliceVectors& vectors) {
  constexpr int kBefore = 12345;
  static measure::Picture painted;
  std::fill_n(&painted[0][0], kMaxSliceSide * kMaxSliceSide, kBefore);
  measure::PaintDistances(vectors, painted);
  for (int i = 0; i < kMaxSliceSide; ++i) {
    for (int j = 0; j < kMaxSliceSide; ++j) {
      const bool inside = i < vectors.size.width && j < vectors.size.height;
      const int level = inside ? static_cast<int>(900.0 * vectors.Length(i, j)) : kBefore;
      FUZZ_HOLDS(painted[i][j] == level);
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::FuzzInput input(data, size);
  const int direction = input.Small(0, 2);
  const int label = input.Small(0, 3);
  const int kept = input.Byte();  // the fewer bytes stand for labels, the longer the vectors
  const fuzz::Dims dims = fuzz::DrawDims(input, 20000);
  const int index = input.Small(0, dims[static_cast<std::size_t>(direction)] - 1);
  TestVolume volume(dims[0], dims[1], dims[2]);
  auto labels = input.Filled(volume.Labels().Count());
  for (std::uint8_t& voxel : labels) { voxel = voxel <= kept ? voxel % 4 : 0; }
  volume.FillFrom(labels.data());

  const plain::DistanceMap expected(volume.Labels(), direction, index, label);
  const LabelSlice slice{volume.Labels(), direction, index};
  for (const measure::RowLoops* loops : {&measure::kRowLoops, measure::WideRowLoops()}) {
    if (loops == nullptr) { continue; }  // not on this machine
    Progress silent;
    auto vectors = measure::StartVectors(slice, label, {slice.Width(), slice.Height()});
    measure::ScanForward(vectors, silent, *loops);
    measure::ScanBackward(vectors, silent, *loops);
    FUZZ_HOLDS(vectors.x == expected.x && vectors.y == expected.y);
    ComparePainted(vectors);
  }
  return 0;
}
