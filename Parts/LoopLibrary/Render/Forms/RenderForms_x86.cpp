#include "LoopLibrary/Render/Forms/BulkAvx2.h"
#include "LoopLibrary/Render/Forms/BulkLanes.h"
#include "LoopLibrary/Render/Forms/BulkSse2.h"
#include "LoopLibrary/Render/Forms/PlainForms.h"

namespace NSLOPDLL {

// Wider vectors gain in the interpolator and in what it reads: the filters have no more lanes to
// fill, and the other bulk loops wait for memory.
std::span<const SRenderForm> GetRenderForms() noexcept {
    static constexpr SRenderForm kForms[] = {
        kPlainForm,
        {"sse2", InterpolateLanes, FilterStereoLanes, ReadFloats16Sse2, ReadFloats24Sse2,
         StoreFloats16Sse2, StoreFloats24Sse2, Narrow24Sse2, FindPeaksSse2, FillFourRampsLanes,
         ShapeTailLanes, ReverseLanes},
        {"avx2", InterpolateAvx2, FilterStereoLanes, ReadFloats16Avx2, ReadFloats24Avx2,
         StoreFloats16Sse2, StoreFloats24Sse2, Narrow24Sse2, FindPeaksSse2, FillFourRampsLanes,
         ShapeTailLanes, ReverseLanes},
    };
    return {kForms, __builtin_cpu_supports("avx2") != 0 ? std::size_t{3} : std::size_t{2}};
}

} // namespace NSLOPDLL
