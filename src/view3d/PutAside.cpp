#include "view3d/PutAside.h"

#include "VoxData/VoxData.h"
#include "ui/MainUI.h"
#include "view3d/Window3D.h"
#include "view3d/Window3DWork.h"
#include "view3d/volumemeasures/Shell.h"

#include <FL/Fl_Box.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Group.H>
#include <FL/Fl_Output.H>
#include <FL/Fl_Slider.H>
#include <vtkFloatArray.h>
#include <vtkPointData.h>
#include <vtkSmartPointer.h>
#include <vtkStructuredPoints.h>

#include <cstring>
#include <new>
#include <string>
#include <vector>

namespace {

/// Fills `bytes` with the labels or colours of a table, z fastest; needs their size.
void CopyInto(std::vector<std::uint8_t>& bytes, const std::uint8_t* const* const* table,
              const LabelVolume& shape) {
  std::uint8_t* to = bytes.data();
  for (int x = 0; x < shape.dimX; ++x) {
    for (int y = 0; y < shape.dimY; ++y) {
      std::memcpy(to, table[x][y], static_cast<std::size_t>(shape.dimZ));
      to += shape.dimZ;
    }
  }
}

/// The same in a vector of its own.
std::vector<std::uint8_t> CopyOf(const std::uint8_t* const* const* table,
                                 const LabelVolume& shape) {
  std::vector<std::uint8_t> bytes(shape.Count());
  CopyInto(bytes, table, shape);
  return bytes;
}

void CopyBack(const std::vector<std::uint8_t>& bytes, std::uint8_t* const* const* table,
              const LabelVolume& shape) {
  const std::uint8_t* from = bytes.data();
  for (int x = 0; x < shape.dimX; ++x) {
    for (int y = 0; y < shape.dimY; ++y) {
      std::memcpy(table[x][y], from, static_cast<std::size_t>(shape.dimZ));
      from += shape.dimZ;
    }
  }
}

}  // namespace

AlteredLabels::AlteredLabels(Window3D& owner, VoxData& altered)
    : view(owner), image(altered), before(owner.workState->altered) {
  view.workState->altered = this;
}

AlteredLabels::~AlteredLabels() {
  if (!restored) {
    Progress silent;
    measure::RestoreLabels(view.savedLabels, image.EditableLabels(), silent);
  }
  view.workState->altered = before;
}

void AlteredLabels::Restored() { restored = true; }

void AlteredLabels::Suspend() {
  if (restored) { return; }
  if (suspensions == 0) {
    changed = CopyOf(image.seg, image.Labels());
    whole.resize(changed.size());
    // Nothing below can fail: a copy that found no memory leaves everything as it was.
    Progress silent;
    measure::RestoreLabels(view.savedLabels, image.EditableLabels(), silent);
    CopyInto(whole, image.seg, image.Labels());
  }
  ++suspensions;
}

void AlteredLabels::Resume() {
  if (restored || --suspensions > 0) { return; }
  CopyBack(whole, image.seg, image.Labels());
  Progress silent;
  measure::SaveLabels(image.Labels(), view.savedLabels, silent);
  CopyBack(changed, image.seg, image.Labels());
}

struct PutAside::Contents {
  MainUI& ui;
  std::vector<std::int32_t> mask;
  std::vector<float> vectors[3];
  int dims[3];
  std::vector<std::uint8_t> colours[3];
  vtkSmartPointer<vtkFloatArray> scalars[3];  ///< of a picture that is being painted
  vtkSmartPointer<vtkDataArray> attached[3];  ///< of one that is about to become a surface
  float progressWidth;
  double range;
  int barWidth;
  bool panelVisible;
  bool canUpdateColours;
  std::string message;

  explicit Contents(MainUI& owner) : ui(owner) {
    const Window3D& view = *ui.window3D;
    const std::size_t count = view.workArraysReady != 0 ? view.workState->Voxels() : 0;
    if (count > 0) {
      mask.assign(view.distMask, view.distMask + count);
      vectors[0].assign(view.distX, view.distX + count);
      vectors[1].assign(view.distY, view.distY + count);
      vectors[2].assign(view.distZ, view.distZ + count);
    }
    dims[0] = view.dimX;
    dims[1] = view.dimY;
    dims[2] = view.dimZ;
    for (int i = 0; i < 3; ++i) { CopyColours(i); }
    progressWidth = view.progressWidth;
    range = ui.progressRange->maximum();
    barWidth = ui.progressBar->w();
    panelVisible = ui.progressPanel->visible() != 0;
    canUpdateColours = ui.updateColorButton->active() != 0;
    message = ui.progressText->value();
    if (view.workState->altered != nullptr) { view.workState->altered->Suspend(); }
    // Nothing below can fail: what was taken is given back.
    for (int i = 0; i < 3; ++i) { TakeScalars(i); }
  }

  void CopyColours(int i) {
    const VoxData& volume = *ui.workVolumes[i];
    if (volume.work != nullptr) { colours[i] = CopyOf(volume.work, volume.Labels()); }
  }

  void TakeScalars(int i) {
    VoxData& volume = *ui.workVolumes[i];
    if (volume.image != nullptr) { attached[i] = volume.image->GetPointData()->GetScalars(); }
    scalars[i] = volume.workScalars;
    volume.workScalars = nullptr;
    if (scalars[i] != nullptr) { scalars[i]->UnRegister(nullptr); }
  }

  void GiveVolumeBack(int i) {
    VoxData& volume = *ui.workVolumes[i];
    if (!colours[i].empty()) { CopyBack(colours[i], volume.work, volume.Labels()); }
    if (volume.image != nullptr) { volume.image->GetPointData()->SetScalars(attached[i]); }
    if (volume.workScalars != nullptr) { volume.workScalars->Delete(); }
    volume.workScalars = scalars[i];
    if (scalars[i] != nullptr) { scalars[i]->Register(nullptr); }
  }

  void GiveBack() {
    Window3D& view = *ui.window3D;
    if (!mask.empty()) {
      std::memcpy(view.distMask, mask.data(), mask.size() * sizeof(std::int32_t));
      std::memcpy(view.distX, vectors[0].data(), mask.size() * sizeof(float));
      std::memcpy(view.distY, vectors[1].data(), mask.size() * sizeof(float));
      std::memcpy(view.distZ, vectors[2].data(), mask.size() * sizeof(float));
    }
    view.dimX = dims[0];
    view.dimY = dims[1];
    view.dimZ = dims[2];
    for (int i = 0; i < 3; ++i) { GiveVolumeBack(i); }
    if (view.workState->altered != nullptr) { view.workState->altered->Resume(); }
    view.progressWidth = progressWidth;
    ui.progressRange->maximum(range);
    Fl_Box& bar = *ui.progressBar;
    bar.resize(bar.x(), bar.y(), barWidth, bar.h());
    ui.progressText->value(message.c_str());
    if (panelVisible) { ui.progressPanel->show(); }
    // The vectors that "Update Color" takes its colours from are those of before again.
    if (canUpdateColours) {
      ui.updateColorButton->activate();
    } else {
      ui.updateColorButton->deactivate();
    }
  }
};

PutAside::PutAside(MainUI& owner) {
  try {
    contents = std::make_unique<Contents>(owner);
    complete = true;
  } catch (const std::bad_alloc&) { complete = false; }
}

PutAside::~PutAside() {
  if (complete) { contents->GiveBack(); }
}
