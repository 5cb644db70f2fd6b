// Window3D: confusion matrix of Image 1 and Image 2.
#include "ui/Fields.h"
#include "ui/MainUI.h"
#include "ui/StudyChecks.h"
#include "view3d/CommandSupport.h"
#include "view3d/Window3D.h"
#include "view3d/volumemeasures/ConfusionMatrix.h"
#include "view3d/volumemeasures/TableFile.h"

#include <FL/Fl_Choice.H>
#include <FL/Fl_Output.H>
#include <FL/Fl_Slider.H>

#include <algorithm>
#include <iostream>

namespace {

/// The part of an image that lies within the working sizes.
LabelVolume WithinSizes(const Window3D& view, const VoxData& image) {
  const LabelVolume labels = image.Labels();
  return {labels.voxels, std::min(labels.dimX, view.dimX), std::min(labels.dimY, view.dimY),
          std::min(labels.dimZ, view.dimZ)};
}

}  // namespace

void Window3D::ComputeConfusionMatrix(char* fileName) {
  const RunningCommand running(*ui);
  if (running.Refused()) { return; }
  const ChosenPair pair = TakeChosenPair(*ui);
  if (!pair.ok) { return; }
  const std::string name = tables::WithExtension(fileName);
  // ON PURPOSE: the image on the slider gives the sizes that are counted, not one of the two.
  const VoxData* shown = ImageAt(*ui, Truncated(ui->imageSlider));
  TakeWorkingSizes(*this, shown != nullptr ? *shown : *pair.image1);
  const auto counts =
      measure::CountConfusion(WithinSizes(*this, *pair.image1), WithinSizes(*this, *pair.image2));
  const std::string text = measure::ConfusionText(
      counts, {EntryText(ui->image1Choice, pair.index1), pair.image1->labelPresent},
      {EntryText(ui->image2Choice, pair.index2), pair.image2->labelPresent});
  if (tables::Append(name, text)) { return; }
  std::cout << "Not able to create the file !" << std::endl;
  std::cerr << "The confusion matrix cannot be written to " << name << std::endl;
  ui->statusOutput->value("Not able to create the file !");
}
