// The distance transform: label, voxel size and sizes first, the labels behind them. Every instruction set
// that this machine has.
#include "fuzz/FuzzInput.h"
#include "tests/support/PlainDistanceTransform.h"
#include "tests/support/TestField.h"
#include "tests/support/TestVolume.h"
#include "view3d/volumemeasures/DistanceTransform.h"

#include <cstring>

namespace {

float Spacing(fuzz::FuzzInput& input) {
  return input.Byte() % 4 == 3 ? input.Float() : static_cast<float>(input.Small(1, 40)) / 8.0F;
}

/// Equal bits, or both not-a-number, whose sign no rule tells.
bool Same(float a, float b) {
  return std::memcmp(&a, &b, sizeof a) == 0 || a == b || (a != a && b != b);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::FuzzInput input(data, size);
  const int label = input.Byte() % 8 == 7 ? input.Int() : input.Small(0, 3);
  const measure::VoxelSize voxel{Spacing(input), Spacing(input), Spacing(input)};
  // Small volumes mostly, so that many are tried; wide ones for the rows that go in registers.
  const int most = input.Byte() % 8 == 7 ? 24 : 9;
  const int dims[3] = {input.Small(1, most), input.Small(1, most), input.Small(1, most)};
  TestVolume image(dims[0], dims[1], dims[2]);
  image.FillFrom(input.Filled(image.Labels().Count()).data());

  const TestField plainly(image.Labels());
  plain::ComputeDistanceTransform(image.Labels(), label, voxel, plainly.View());
  Progress silent;
  for (const measure::InstructionSet set : measure::SupportedInstructionSets()) {
    const TestField field(image.Labels());
    measure::ComputeDistanceTransformOn(set, image.Labels(), label, voxel, field.View(), silent);
    FUZZ_HOLDS(field.Mask() == plainly.Mask());
    for (std::size_t i = 0; i < field.Count(); ++i) {
      FUZZ_HOLDS(Same(field.X()[i], plainly.X()[i]) && Same(field.Y()[i], plainly.Y()[i]) &&
                 Same(field.Z()[i], plainly.Z()[i]));
    }
  }
  return 0;
}
