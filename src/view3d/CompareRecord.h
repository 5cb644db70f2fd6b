// CompareRecord, found under the folder of the view that holds the records.
#pragma once

#include "view3d/volumemeasures/CompareRecord.h"  // IWYU pragma: export
