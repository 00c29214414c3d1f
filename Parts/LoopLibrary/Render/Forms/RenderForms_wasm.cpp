#include "LoopLibrary/Render/Forms/BulkSse2.h"
#include "LoopLibrary/Render/Forms/PlainForms.h"

namespace NSLOPDLL {

// The compiler turns SSE2's operations into those of WebAssembly's vectors, which every engine that
// compiles this module has.
std::span<const SRenderForm> GetRenderForms() noexcept {
    static constexpr SRenderForm kForms[] = {
        {"plain", InterpolateScalar, FilterStereoPlain, ReadFloats16Plain, ReadFloats24Plain,
         StoreFloats16Plain, StoreFloats24Plain, Narrow24Plain, FindPeaksPlain, FillFourRampsPlain,
         ScaleTwicePlain, ReversePlain},
        {"simd128", InterpolateSse2, FilterStereoSse2, ReadFloats16Sse2, ReadFloats24Sse2,
         StoreFloats16Sse2, StoreFloats24Sse2, Narrow24Sse2, FindPeaksSse2, FillFourRampsSse2,
         ScaleTwiceSse2, ReverseSse2}};
    return kForms;
}

} // namespace NSLOPDLL
