// The loops over rows for every machine, and the choice between them and the wide ones.
#include "views/slicemeasures/SliceRows.h"

#include "views/slicemeasures/SliceRowLoops.h"

namespace measure {

const RowLoops kRowLoops = {TakeFromSource, FindChanges};

const RowLoops* WideRowLoops() {
#ifdef __SSE2__
  return __builtin_cpu_supports("avx2") != 0 ? kAvx2RowLoops : nullptr;
#else
  return nullptr;
#endif
}

const RowLoops& BestRowLoops() {
  static const RowLoops* const wide = WideRowLoops();
  return wide != nullptr ? *wide : kRowLoops;
}

}  // namespace measure
