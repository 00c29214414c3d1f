#include "LoopLibrary/Render/Forms/BulkLanes.h"
#include "LoopLibrary/Render/Forms/BulkNeon.h"
#include "LoopLibrary/Render/Forms/PlainForms.h"

namespace NSLOPDLL {

std::span<const SRenderForm> GetRenderForms() noexcept {
    static constexpr SRenderForm kForms[] = {
        kPlainForm,
        {"neon", InterpolateLanes, FilterStereoLanes, ReadFloats16Neon, ReadFloats24Neon,
         StoreFloats16Neon, StoreFloats24Neon, Narrow24Neon, FindPeaksNeon, FillFourRampsLanes,
         ShapeTailLanes, ReverseLanes},
    };
    return kForms;
}

} // namespace NSLOPDLL
