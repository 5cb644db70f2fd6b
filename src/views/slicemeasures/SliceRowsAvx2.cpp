// The loops over rows for machines with AVX2; this file alone is compiled for them.
#include "views/slicemeasures/SliceRows.h"

#ifdef __AVX2__
#include "views/slicemeasures/SliceRowLoops.h"
#endif

namespace measure {

const RowLoops* WideRowLoops() {
#ifdef __AVX2__
  static const RowLoops loops = {TakeFromSource, FindChanges};
  return __builtin_cpu_supports("avx2") != 0 ? &loops : nullptr;
#else
  return nullptr;
#endif
}

}  // namespace measure
