#include "LoopLibrary/Codec/TWIPForms.h"

namespace NSLOPDLL {

std::span<const STWIPForm> GetTWIPForms() noexcept {
    static constexpr STWIPForm kForms[] = {{"plain", nullptr, nullptr}};
    return kForms;
}

} // namespace NSLOPDLL
