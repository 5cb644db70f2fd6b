#include "VoxData/loading/LoadDialogs.h"

#include "VoxData/GiplIO.h"
#include "VoxData/ImageLoader.h"
#include "VoxData/MetaImage.h"
#include "app/Globals.h"
#include "ui/MainUI.h"

#include <FL/Fl_Value_Input.H>

namespace {

/// The fields of the dialog in the order of RawFields.
struct DialogFields {
  Fl_Value_Input* headerSize;
  Fl_Value_Input* dims[3];
  Fl_Value_Input* bytes;
  Fl_Value_Input* spacing[3];

  explicit DialogFields(const MainUI& ui)
      : headerSize(ui.greyHeaderSizeInput), dims{ui.greyXdimInput, ui.greyYdimInput,
                                                 ui.greyZdimInput},
        bytes(ui.greyBytesInput), spacing{ui.greyXspacingInput, ui.greyYspacingInput,
                                          ui.greyZspacingInput} {}
};

}  // namespace

RawFields ReadLoadGreyDialog(const MainUI& ui) {
  const DialogFields dialog(ui);
  RawFields fields;
  fields.headerSize = dialog.headerSize->value();
  fields.bytes = dialog.bytes->value();
  for (int axis = 0; axis < 3; ++axis) {
    fields.dims[axis] = dialog.dims[axis]->value();
    fields.spacing[axis] = dialog.spacing[axis]->value();
  }
  return fields;
}

void FillLoadGreyDialog(MainUI& ui, const RawFields& fields) {
  const DialogFields dialog(ui);
  dialog.headerSize->value(fields.headerSize);
  dialog.bytes->value(fields.bytes);
  for (int axis = 0; axis < 3; ++axis) {
    dialog.dims[axis]->value(fields.dims[axis]);
    dialog.spacing[axis]->value(fields.spacing[axis]);
  }
}

void ipReadGiplHeader(const char* path) {
  RawFields fields = ReadLoadGreyDialog(*mainUI);
  ipReadGiplHeader(path, fields);
  FillLoadGreyDialog(*mainUI, fields);
}

void FillDialogFromMetaImage(const char* path) {
  RawFields fields = ReadLoadGreyDialog(*mainUI);
  if (FillFieldsFromMetaImage(path, fields)) { FillLoadGreyDialog(*mainUI, fields); }
}
