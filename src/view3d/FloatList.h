// FloatList, found under the folder of the view whose commands fill it.
#pragma once

#include "view3d/volumemeasures/FloatList.h"  // IWYU pragma: export
