// Rows and headings of the tables that a spreadsheet opens.
#pragma once

#include "view3d/volumemeasures/CompareRecord.h"

#include <string>

namespace measure {

/// The measures of a run; each brings its own columns.
struct CompareColumns {
  bool overlay = false;
  bool haussdorf = false;
  bool surface = false;
};

/// Heading and row of a run. ON PURPOSE: only the surface columns end without a tab.
std::string CompareHeading(const CompareColumns& columns);
std::string CompareRow(const CompareRecord& record, const CompareColumns& columns);

/// Heading and row of an export: every column, whatever was computed.
std::string ExportHeading();
std::string ExportRow(const CompareRecord& record);

/// Heading and row of the 26 bins.
///
/// ON PURPOSE: the positive half of the bins runs backwards, the twelfth is never printed, and the
/// column "-0.5" repeats the value of "0.5".
std::string BinHeading();
std::string BinRow(const CompareRecord& record);

}  // namespace measure
