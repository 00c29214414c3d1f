#include "LoopLibrary/Render/Forms/PlainForms.h"

namespace NSLOPDLL {

std::span<const SRenderForm> GetRenderForms() noexcept {
    static constexpr SRenderForm kForms[] = {
        {"plain", InterpolateScalar, FilterStereoPlain, ReadFloats16Plain, ReadFloats24Plain,
         StoreFloats16Plain, StoreFloats24Plain, Narrow24Plain, FindPeaksPlain, FillFourRampsPlain,
         ScaleTwicePlain, ReversePlain}};
    return kForms;
}

} // namespace NSLOPDLL
