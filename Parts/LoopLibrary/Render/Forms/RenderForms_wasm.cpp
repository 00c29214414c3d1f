#include "LoopLibrary/Render/Forms/BulkLanes.h"
#include "LoopLibrary/Render/Forms/BulkSse2.h"
#include "LoopLibrary/Render/Forms/PlainForms.h"

namespace NSLOPDLL {

// The compiler turns SSE2's operations into those of WebAssembly's vectors, which every engine that
// compiles this module has.
std::span<const SRenderForm> GetRenderForms() noexcept {
    static constexpr SRenderForm kForms[] = {kPlainForm,
                                             {"simd128", InterpolateLanes, FilterStereoLanes,
                                              ReadFloats16Sse2, ReadFloats24Sse2, StoreFloats16Sse2,
                                              StoreFloats24Sse2, Narrow24Sse2, FindPeaksSse2,
                                              FillFourRampsLanes, ShapeTailLanes, ReverseLanes}};
    return kForms;
}

} // namespace NSLOPDLL
