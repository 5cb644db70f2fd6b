// The store of one image slot: grey values, labels, work voxels, label table and VTK twin.
#pragma once

#include "VoxData/LabelEntry.h"
#include "VoxData/VtkNames.h"
#include "base/LabelVolume.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <memory>

/// One volume. All three arrays are addressed [x][y][z]; z is the fastest index.
///
/// Slots of one study share a grey array: the slot that read it owns it, later slots borrow the
/// pointer. A `work` volume (mode 2) is the scratch of the measures and of the 3D view.
class VoxData {
public:
  char* fileName1 = nullptr;  ///< 500 characters, reserved for the name of the grey file
  char* fileName2 = nullptr;  ///< 500 characters, reserved for the name of the segmentation
  std::int32_t loopStart[3] = {0, 0, 0};  ///< traversal in file order: first index of each axis
  std::int32_t loopEnd[3] = {0, 0, 0};    ///< exclusive end of each axis; loops test inequality
  std::int32_t loopStep[3] = {1, 1, 1};   ///< +1 or -1
  double greyScale = 0.0;                 ///< factor from source grey values to stored ones
  std::int32_t labelCount = 0;            ///< labels that count as defined
  LabelEntry* labels = nullptr;           ///< 256 entries, by label id
  std::uint8_t*** work = nullptr;
  vtkStructuredPoints* image = nullptr;  ///< VTK twin of `seg` or `work`, spacing 1
  std::uint8_t labelPresent[256] = {};   ///< 1 where the last segmentation read holds the value
  std::uint8_t*** seg = nullptr;
  float spacing[3] = {1.0F, 1.0F, 1.0F};
  std::uint16_t*** grey = nullptr;
  vtkScalars* workScalars = nullptr;  ///< set by a measure, so that SetWorkVoxel feeds VTK as well
  std::int32_t dimX = 0;
  std::int32_t dimY = 0;
  std::int32_t dimZ = 0;

  VoxData();
  VoxData(const VoxData& source);
  VoxData& operator=(const VoxData&) = delete;
  ~VoxData();  ///< releases what this object owns; a borrowed grey array is left alone

  /// Mode 0: grey. Mode 1: seg, all 0, and image with scalars 0. Mode 2: work, and image without
  /// scalars. Returns 1; -1 for another mode, or where the arrays do not fit memory.
  int AllocateArrays(int mode);
  /// Mode 0: grey. Mode 1: seg and image, then work. Returns 1, or -1 for another mode.
  int FreeArrays(int mode);
  /// Gives a work volume its size; `bytes`, `min` and `max` are ignored. Returns 1.
  int SetupWork(int dimX, int dimY, int dimZ, int bytes, int min, int max, int flipX, int flipY,
                int flipZ);
  /// Prepares a further slot without reading a file. Returns 1, or -1 where it does not fit memory.
  int SetupSlot(const char* path, int dimX, int dimY, int dimZ, int bytes, int min, int max,
                int flipX, int flipY, int flipZ);
  /// Reads grey values of 1 or 2 bytes (big-endian) behind a header. Returns 1 or -1.
  int ReadGrey(const char* path, int dimX, int dimY, int dimZ, int bytes, int min, int max,
               int flipX, int flipY, int flipZ, int headerSize);
  /// Reads labels of one byte into the sizes that the object holds. Returns 1 or -1.
  int ReadSeg(const char* path, int headerSize);
  /// fopen, with a line on the error stream when it fails.
  static std::FILE* OpenFile(const char* path, const char* mode);

  /// Return -1 and leave `value` alone outside the volume, else 1.
  int GetGreyVoxel(int x, int y, int z, std::uint16_t& value) const;
  int GetSegVoxel(int x, int y, int z, std::uint8_t& value) const;
  void SetWorkVoxel(int x, int y, int z, std::uint8_t value);
  /// One plane: axis 0 written y outer z inner, axis 1 x outer z inner, axis 2 y outer x inner.
  int GetGreySlice(int axis, int index, std::uint16_t* out) const;
  int GetSegSlice(int axis, int index, std::uint8_t* out) const;

  void GetDims(int* out) const;
  int GetDimX() const { return dimX; }
  int GetDimY() const { return dimY; }
  int GetDimZ() const { return dimZ; }
  void GetSpacing(float* out) const;
  int SetSpacing(float x, float y, float z);
  double GetScale() const { return greyScale; }
  vtkStructuredPoints* GetImage() const { return image; }

  /// First labelled voxel on a ray, all in voxel units. 1 hit, 0 none, -1 invalid ray.
  int CastRay(double ox, double oy, double oz, double dx, double dy, double dz, int* voxel) const;

  int InitLabels();
  int GetLabelCount() const { return labelCount; }
  /// Channels 0.0 to 1.0; black for an id outside 0 to 255 or an undefined label.
  std::array<float, 3> GetLabelColour(int id) const;
  /// Three bytes and the name (201 characters); -1 for an id out of range or undefined, else 1.
  int GetLabel(int id, std::uint8_t* rgbOut, char* nameOut) const;

  // Views for the kernels.
  LabelVolume Labels() const { return {seg, dimX, dimY, dimZ}; }
  EditVolume EditableLabels() { return {seg, dimX, dimY, dimZ}; }
  /// Needs `workScalars`.
  WorkVolume Work();
  /// New scalars of `count` zeros in `workScalars`, for a picture that a measure begins.
  void NewWorkScalars(std::size_t count);
  /// Hands `workScalars` to `image` as point scalars and gives up the own reference.
  void AttachWorkScalars();

private:
  /// Says that the sizes cannot be held, and keeps no array of them. Returns -1.
  int RefuseSize();
  void SetFileTraversal(int flipX, int flipY, int flipZ);

  struct Storage;  ///< the blocks behind the pointer tables
  std::unique_ptr<Storage> storage;
};
