#include "LoopLibrary/Render/Forms/PlainForms.h"

namespace NSLOPDLL {

std::span<const SRenderForm> GetRenderForms() noexcept {
    static constexpr SRenderForm kForms[] = {kPlainForm};
    return kForms;
}

} // namespace NSLOPDLL
