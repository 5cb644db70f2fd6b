// The loops over rows for machines with AVX2; this file alone is compiled for them.
#include "views/slicemeasures/SliceRows.h"

#ifdef __AVX2__
#include "views/slicemeasures/SliceRowLoops.h"
#endif

namespace measure {

#ifdef __AVX2__
namespace {
constexpr RowLoops kLoops = {TakeFromSource, FindChanges};
}  // namespace
const RowLoops* const kAvx2RowLoops = &kLoops;
#else
const RowLoops* const kAvx2RowLoops = nullptr;
#endif

}  // namespace measure
