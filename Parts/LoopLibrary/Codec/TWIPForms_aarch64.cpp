#include "LoopLibrary/Codec/TWIPForms_aarch64.h"

namespace NSLOPDLL {

std::span<const STWIPForm> GetTWIPForms() noexcept {
    static constexpr STWIPForm kForms[] = {
        {"plain", nullptr, nullptr},
        {"neon", DecodeTWIPNeon<int16_t>, DecodeTWIPNeon<int32_t>},
    };
    return kForms;
}

} // namespace NSLOPDLL
