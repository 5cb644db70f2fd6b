// The loops over rows that a test can run here.
#pragma once

#include "views/slicemeasures/SliceRows.h"

#include <vector>

inline std::vector<const measure::RowLoops*> RowLoopsOfThisMachine() {
  std::vector<const measure::RowLoops*> loops = {&measure::kRowLoops};
  if (const measure::RowLoops* wide = measure::WideRowLoops()) { loops.push_back(wide); }
  return loops;
}
