// Raw volumes: the numbers of the load dialog come first, the file behind them.
#include "VoxData/VoxData.h"
#include "fuzz/FuzzInput.h"
#include "fuzz/PlainRawVolume.h"
#include "fuzz/ScratchFolder.h"

#include <vtkFloatArray.h>
#include <vtkPointData.h>
#include <vtkStructuredPoints.h>

#include <algorithm>
#include <cstdint>
#include <vector>

namespace {

using Dialog = plain::RawDialog;

/// Any number now and then, small ones mostly.
int Number(fuzz::FuzzInput& input, int most) {
  return input.Byte() % 16 == 15 ? input.Int() : input.Small(0, most);
}

Dialog ReadDialog(fuzz::FuzzInput& input) {
  Dialog dialog{};
  for (int& dim : dialog.dims) { dim = Number(input, 40); }
  dialog.bytes = Number(input, 3);
  dialog.min = Number(input, 255);
  dialog.max = Number(input, 255);
  for (int& flip : dialog.flips) { flip = input.Small(0, 1); }
  dialog.headerSize = Number(input, 32);
  return dialog;
}

double VoxelsOf(const Dialog& dialog) {
  double voxels = 1.0;
  for (const int dim : dialog.dims) { voxels *= dim; }
  return voxels;
}

/// Small enough to be read often, or so large that the reader has to refuse.
void Shrink(Dialog& dialog) {
  constexpr double kOften = 8.0e3;
  constexpr double kRefused = 1.0e13;
  while (VoxelsOf(dialog) > kOften && VoxelsOf(dialog) < kRefused) {
    *std::max_element(std::begin(dialog.dims), std::end(dialog.dims)) /= 2;
  }
}

void TouchSlices(const VoxData& volume) {
  for (int axis = -1; axis <= 3; ++axis) {
    const int dims[3] = {volume.dimX, volume.dimY, volume.dimZ};
    const auto at = static_cast<std::size_t>(axis);
    const std::size_t pixels =
        axis < 0 || axis > 2 ? 1 : volume.Labels().Count() / static_cast<std::size_t>(dims[at]);
    std::vector<std::uint16_t> grey(pixels);
    std::vector<std::uint8_t> seg(pixels);
    for (const int index : {-1, 0, volume.dimX - 1, volume.dimY, volume.dimZ - 1}) {
      FUZZ_HOLDS(volume.GetGreySlice(axis, index, grey.data()) ==
                 volume.GetSegSlice(axis, index, seg.data()));
    }
  }
}

/// Both arrays and the twin are those of the plain reader.
void Compare(const VoxData& volume, const std::string& file, const Dialog& d) {
  const plain::RawVolume expected(file, d);
  FUZZ_HOLDS(volume.greyScale == expected.scale);
  for (int x = 0; x < d.dims[0]; ++x) {
    for (int y = 0; y < d.dims[1]; ++y) {
      for (int z = 0; z < d.dims[2]; ++z) {
        std::uint16_t grey = 0;
        std::uint8_t label = 0;
        FUZZ_HOLDS(volume.GetGreyVoxel(x, y, z, grey) == 1);
        FUZZ_HOLDS(volume.GetSegVoxel(x, y, z, label) == 1);
        FUZZ_HOLDS(grey == expected.grey[expected.At(x, y, z)]);
        FUZZ_HOLDS(label == expected.seg[expected.At(x, y, z)]);
      }
    }
  }
  auto* scalars = vtkFloatArray::SafeDownCast(volume.image->GetPointData()->GetScalars());
  FUZZ_HOLDS(scalars != nullptr);
  FUZZ_HOLDS(std::equal(expected.twin.begin(), expected.twin.end(), scalars->GetPointer(0)));
}

int Read(VoxData& volume, const std::string& path, const Dialog& d) {
  return volume.ReadGrey(path.c_str(), d.dims[0], d.dims[1], d.dims[2], d.bytes, d.min, d.max,
                         d.flips[0], d.flips[1], d.flips[2], d.headerSize);
}

/// Any numbers, those just outside of the volume among them.
void TouchVoxels(const VoxData& volume, const Dialog& d) {
  std::uint16_t grey = 0;
  std::uint8_t label = 0;
  for (const int at : {-1, 0, d.dims[0], d.dims[1], d.dims[2], d.min}) {
    for (const int other : {-1, 0, d.dims[1], d.max}) {
      volume.GetGreyVoxel(at, other, at, grey);
      volume.GetSegVoxel(other, at, other, label);
      volume.GetLabelColour(other);
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::FuzzInput input(data, size);
  Dialog d = ReadDialog(input);
  Shrink(d);
  const std::string file = input.Rest();
  const std::string path = fuzz::Scratch().Write("volume.raw", file);

  VoxData volume;
  const int grey = Read(volume, path, d);
  FUZZ_HOLDS(grey == 1 || grey == -1);
  const int labels = volume.ReadSeg(path.c_str(), d.headerSize);
  FUZZ_HOLDS(grey != 1 || labels == 1);
  TouchVoxels(volume, d);
  VoxData further;
  if (further.SetupSlot("", d.dims[0], d.dims[1], d.dims[2], d.bytes, d.min, d.max, d.flips[0],
                        d.flips[1], d.flips[2]) == 1) {
    FUZZ_HOLDS(further.ReadSeg(path.c_str(), d.headerSize) == 1);
    FUZZ_HOLDS(further.GetLabelCount() == volume.GetLabelCount());
  }
  if (grey != 1) { return 0; }
  Compare(volume, file, d);
  TouchSlices(volume);
  int defined = 0;
  for (int id = -1; id <= 256; ++id) {
    std::uint8_t rgb[3];
    char name[201];
    defined += volume.GetLabel(id, rgb, name) == 1 ? 1 : 0;
  }
  FUZZ_HOLDS(defined == volume.GetLabelCount());

  // Another volume into the same object, read as one that is shorter or longer than its file.
  const Dialog turned{{d.dims[2], d.dims[0] - 1, d.dims[1]},
                      3 - d.bytes,
                      0,
                      0,
                      {d.flips[2], d.flips[0], d.flips[1]},
                      0};
  if (Read(volume, path, turned) == 1) {
    FUZZ_HOLDS(volume.ReadSeg(path.c_str(), 0) == 1);
    Compare(volume, file, turned);
    TouchSlices(volume);
  }
  return 0;
}
