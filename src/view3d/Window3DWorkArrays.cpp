// Window3D: the arrays of the volume measures.
#include "VoxData/VoxData.h"
#include "ui/MainUI.h"
#include "view3d/Window3D.h"
#include "view3d/Window3DWork.h"

#include <cstdlib>
#include <iostream>

void Window3D::AllocateVolumes(int x, int y, int z) {
  if (workArraysReady != 0) { return; }
  workState->sizeX = x;
  workState->sizeY = y;
  workState->sizeZ = z;
  const std::size_t count = workState->Voxels();
  distMask = static_cast<std::int32_t*>(std::calloc(count, sizeof(std::int32_t)));
  distX = static_cast<float*>(std::calloc(count, sizeof(float)));
  distY = static_cast<float*>(std::calloc(count, sizeof(float)));
  distZ = static_cast<float*>(std::calloc(count, sizeof(float)));
  bool complete = distMask != nullptr && distX != nullptr && distY != nullptr && distZ != nullptr &&
                  savedLabels != nullptr;
  for (VoxData* volume : ui->workVolumes) {
    complete = volume->SetupWork(x, y, z, 1, 0, 0, 0, 0, 0) == 1 && complete;
    volume->SetSpacing(1.0F, 1.0F, 1.0F);
  }
  ClearAllSurfaces();
  workArraysReady = 1;
  if (!complete) {
    FreeVolumes();
    std::cerr << "There is no memory for the volume measures." << std::endl;
  }
}

void Window3D::FreeVolumes() {
  workArraysReady = 0;
  std::free(distMask);
  std::free(distX);
  std::free(distY);
  std::free(distZ);
  distMask = nullptr;
  distX = nullptr;
  distY = nullptr;
  distZ = nullptr;
  if (ui != nullptr) { ui->displayVolume1->FreeArrays(2); }
}
