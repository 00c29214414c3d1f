#include "LoopLibrary/Render/Equalizer/EqualizerFilter.h"

#include <cmath>
#include <initializer_list>

namespace NSLOPDLL {

bool CEqualizerState::IsFinite() const noexcept {
    bool isFinite = true;
    for (const auto* memory : {&fInput, &fBand1, &fBand2, &fLow, &fOutput}) {
        isFinite = isFinite && std::isfinite((*memory)[0]) && std::isfinite((*memory)[1]);
    }
    return isFinite;
}

} // namespace NSLOPDLL
