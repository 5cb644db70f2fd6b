// The batch over image pairs: its stages, the record of each pair, its console words and rows.
#pragma once

#include "view3d/volumemeasures/CompareRecord.h"
#include "view3d/volumemeasures/CompareTable.h"
#include "view3d/volumemeasures/PairMeasures.h"
#include "view3d/volumemeasures/VolumeOverlap.h"

#include <string>
#include <vector>

namespace measure {

/// What a run does with each pair.
struct CompareStages {
  CompareColumns columns;  ///< the measures
  bool histogram = false;
  bool write = false;
};

/// A study whose pairs are compared.
class CompareStudy : public PairStudy {
public:
  /// Read anew for each pair: the user may change the boxes meanwhile.
  virtual CompareStages Stages() const = 0;
  /// Name of an image as the rows show it; cut at 49 characters.
  virtual std::string Name(int slot) const = 0;
  virtual CompareRecord& Record(int row) = 0;
  virtual HistogramTable Histogram() = 0;
  virtual void ShowHaussdorf(const CompareRecord& /*record*/) {}
  /// Appends rows, whole or not at all, and says where that fails.
  virtual void AppendRows(const std::string& rows) = 0;
  virtual void AppendHistogramRows(const std::string& /*rows*/) {}
  virtual void HistogramOverflowed() {}
};

/// Measures all pairs in their order and writes each as it is finished.
///
/// Report: the words of the console, one line each; steps and messages of the transforms.
/// ON PURPOSE: the surface of the first image is that of voxels beside a 0, where the interactive
/// measure takes those beside any other value; the overlap is always that of the average, which
/// is not truncated; and the Hausdorff distance leaves out no plane.
void ComparePairs(CompareStudy& study, const std::vector<SlotPair>& pairs);

/// Names of at most 49 characters; longer ones are cut.
void SetNames(CompareRecord& record, const std::string& first, const std::string& second);

/// ON PURPOSE: the union leaves out the intersection, and the average is not truncated.
void SetOverlap(CompareRecord& record, const VolumeOverlap& overlap);

void SetSurface(CompareRecord& record, const SurfaceDistance& distance);

void SetHaussdorf(CompareRecord& record, float firstToSecond, float secondToFirst);

}  // namespace measure
