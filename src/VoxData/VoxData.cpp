#include "VoxData/VoxData.h"

#include "VoxData/VoxDataStorage.h"

#include <vtkFloatArray.h>
#include <vtkPointData.h>
#include <vtkSmartPointer.h>
#include <vtkStructuredPoints.h>

#include <algorithm>
#include <cstring>
#include <iostream>
#include <limits>

namespace {

constexpr std::size_t kNameBytes = 500;

char* NewName() { return static_cast<char*>(std::calloc(kNameBytes, 1)); }

/// One 0.0 for each of `count` voxels, in pages that cost nothing until they are written.
vtkSmartPointer<vtkFloatArray> NewZeroScalars(std::size_t count) {
  auto scalars = vtkSmartPointer<vtkFloatArray>::New();
  auto* values = static_cast<float*>(std::calloc(count, sizeof(float)));
  if (values == nullptr) { return nullptr; }
  scalars->SetArray(values, static_cast<vtkIdType>(count), 0, vtkFloatArray::VTK_DATA_ARRAY_FREE);
  return scalars;
}

vtkStructuredPoints* NewImage(int dimX, int dimY, int dimZ) {
  vtkStructuredPoints* image = vtkStructuredPoints::New();
  image->SetDimensions(dimX, dimY, dimZ);
  image->SetSpacing(1.0, 1.0, 1.0);
  return image;
}

/// Whether grey values, labels and their twin, which a slot holds at once, fit memory together.
bool SlotFits(int dimX, int dimY, int dimZ) {
  constexpr std::size_t kBytes = sizeof(std::uint16_t) + sizeof(std::uint8_t) + sizeof(float);
  return voxels::CountThatFits(dimX, dimY, dimZ, kBytes) > 0;
}

void SetTraversal(VoxData& volume, int axis, int size, int flip, int unflippedEnd) {
  // Sizes below 1 are refused later; the smallest number of all has none below it.
  constexpr int kLeast = -std::numeric_limits<int>::max();
  volume.loopStart[axis] = flip != 0 ? std::max(size, kLeast) - 1 : 0;
  volume.loopEnd[axis] = flip != 0 ? -1 : unflippedEnd;
  volume.loopStep[axis] = flip != 0 ? -1 : 1;
}

}  // namespace

VoxData::VoxData()
    : fileName1(NewName()), fileName2(NewName()), labels(new LabelEntry[256]),
      storage(std::make_unique<Storage>()) {
  InitLabels();
}

VoxData::VoxData(const VoxData& source)
    : fileName1(NewName()), fileName2(NewName()), greyScale(source.greyScale),
      labelCount(source.labelCount), labels(new LabelEntry[256]), grey(source.grey),
      dimX(source.dimX), dimY(source.dimY), dimZ(source.dimZ),
      storage(std::make_unique<Storage>()) {
  std::cout << "copy...." << std::endl;
  std::memcpy(fileName1, source.fileName1, kNameBytes);
  std::memcpy(fileName2, source.fileName2, kNameBytes);
  for (int axis = 0; axis < 3; ++axis) {
    loopStart[axis] = source.loopStart[axis];
    loopEnd[axis] = source.loopEnd[axis];
    loopStep[axis] = source.loopStep[axis];
    spacing[axis] = source.spacing[axis];
  }
  std::memcpy(labels, source.labels, 256 * sizeof(LabelEntry));
  if (source.seg != nullptr && storage->seg.Allocate(dimX, dimY, dimZ)) {
    seg = storage->seg.Planes();
    std::memcpy(storage->seg.Block(), source.storage->seg.Block(), Labels().Count());
  }
  if (source.image != nullptr) { image = NewImage(dimX, dimY, dimZ); }
}

VoxData::~VoxData() {
  FreeArrays(1);
  if (workScalars != nullptr) { workScalars->Delete(); }
  std::free(fileName1);
  std::free(fileName2);
  delete[] labels;
}

int VoxData::AllocateArrays(int mode) {
  if (mode == 0) {
    storage->grey.Release();
    const bool fits = SlotFits(dimX, dimY, dimZ) && storage->grey.Allocate(dimX, dimY, dimZ);
    grey = storage->grey.Planes();  // null where it does not fit
    return fits ? 1 : -1;
  }
  if (mode != 1 && mode != 2) { return -1; }
  auto& table = mode == 1 ? storage->seg : storage->work;
  const bool fits = table.Allocate(dimX, dimY, dimZ);
  (mode == 1 ? seg : work) = table.Planes();
  if (!fits) { return -1; }
  if (image != nullptr) { image->Delete(); }
  image = NewImage(dimX, dimY, dimZ);
  if (mode == 2) { return 1; }
  const auto scalars = NewZeroScalars(Labels().Count());
  if (scalars == nullptr) { return -1; }
  image->GetPointData()->SetScalars(scalars);
  return 1;
}

int VoxData::FreeArrays(int mode) {
  if (mode == 0) {
    // A borrowed array belongs to the slot that read it.
    if (grey != nullptr && grey == storage->grey.Planes()) { grey = nullptr; }
    storage->grey.Release();
    return 1;
  }
  if (mode != 1) { return -1; }
  storage->seg.Release();
  storage->work.Release();
  seg = nullptr;
  work = nullptr;
  if (image != nullptr) {
    image->Delete();
    image = nullptr;
  }
  return 1;
}

int VoxData::SetupWork(int sizeX, int sizeY, int sizeZ, int /*bytes*/, int /*min*/, int /*max*/,
                       int flipX, int flipY, int flipZ) {
  FreeArrays(0);
  FreeArrays(1);
  dimX = sizeX;
  dimY = sizeY;
  dimZ = sizeZ;
  SetTraversal(*this, 0, dimX, flipX, dimX);
  SetTraversal(*this, 1, dimY, flipY, dimY);
  SetTraversal(*this, 2, dimZ, flipZ, dimZ);
  return AllocateArrays(2);
}

void VoxData::SetFileTraversal(int flipX, int flipY, int flipZ) {
  SetTraversal(*this, 0, dimX, flipX, dimX);
  // ON PURPOSE: the end of the unflipped y axis is the size in x. It shows with the y origin
  // "bottom" and sizes that differ: then only the first dimX rows of a slice are filled.
  SetTraversal(*this, 1, dimY, flipY, dimX);
  SetTraversal(*this, 2, dimZ, flipZ, dimZ);
}

void VoxData::SetWorkVoxel(int x, int y, int z, std::uint8_t value) {
  work[x][y][z] = value;
  const auto index = (static_cast<vtkIdType>(dimY) * z + y) * dimX + x;
  workScalars->GetPointer(0)[index] = value != 0 ? 255.0F : 0.0F;
}

WorkVolume VoxData::Work() {
  return {work, workScalars != nullptr ? workScalars->GetPointer(0) : nullptr, dimX, dimY, dimZ};
}

void VoxData::NewWorkScalars(std::size_t count) {
  if (workScalars != nullptr) { workScalars->Delete(); }
  workScalars = nullptr;
  const auto scalars = NewZeroScalars(count);
  if (scalars == nullptr) { return; }
  voxels::PreferLargePages(scalars->GetPointer(0), count * sizeof(float));
  scalars->Register(nullptr);
  workScalars = scalars;
}

void VoxData::AttachWorkScalars() {
  if (workScalars == nullptr || image == nullptr) { return; }
  image->GetPointData()->SetScalars(workScalars);
  workScalars->Delete();
  workScalars = nullptr;
}

void VoxData::GetDims(int* out) const {
  out[0] = dimX;
  out[1] = dimY;
  out[2] = dimZ;
}

void VoxData::GetSpacing(float* out) const {
  for (int axis = 0; axis < 3; ++axis) { out[axis] = spacing[axis]; }
}

int VoxData::SetSpacing(float x, float y, float z) {
  spacing[0] = x;
  spacing[1] = y;
  spacing[2] = z;
  return 1;
}
