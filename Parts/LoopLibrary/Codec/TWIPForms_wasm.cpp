#include "LoopLibrary/Codec/TWIPForms_wasm.h"

namespace NSLOPDLL {

std::span<const STWIPForm> GetTWIPForms() noexcept {
    static constexpr STWIPForm kForms[] = {
        {"plain", nullptr, nullptr},
        {"simd128", DecodeTWIPSimd128<int16_t>, DecodeTWIPSimd128<int32_t>},
    };
    return kForms;
}

} // namespace NSLOPDLL
