#include "LoopLibrary/Render/Forms/BulkLanes.h"
#include "LoopLibrary/Render/Forms/BulkSse2.h"
#include "LoopLibrary/Render/Forms/PlainForms.h"

namespace NSLOPDLL {

// Wider vectors gain in the interpolator alone: the filters have no more lanes to fill, and the
// bulk loops wait for memory.
std::span<const SRenderForm> GetRenderForms() noexcept {
    static constexpr SRenderForm kForms[] = {
        kPlainForm,
        {"sse2", InterpolateLanes, FilterStereoLanes, ReadFloats16Sse2, ReadFloats24Sse2,
         StoreFloats16Sse2, StoreFloats24Sse2, Narrow24Sse2, FindPeaksSse2, FillFourRampsLanes,
         ShapeTailLanes, ReverseLanes},
        {"avx2", InterpolateAvx2, FilterStereoLanes, ReadFloats16Sse2, ReadFloats24Sse2,
         StoreFloats16Sse2, StoreFloats24Sse2, Narrow24Sse2, FindPeaksSse2, FillFourRampsLanes,
         ShapeTailLanes, ReverseLanes},
    };
    return {kForms, __builtin_cpu_supports("avx2") != 0 ? std::size_t{3} : std::size_t{2}};
}

} // namespace NSLOPDLL
