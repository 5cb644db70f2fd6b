// The numbers of the Load Grey Data dialog, in and out.
#pragma once

#include "VoxData/RawFields.h"

class MainUI;

/// What the dialog holds now.
RawFields ReadLoadGreyDialog(const MainUI& ui);
/// Writes every field that `fields` holds back into the dialog.
void FillLoadGreyDialog(MainUI& ui, const RawFields& fields);
