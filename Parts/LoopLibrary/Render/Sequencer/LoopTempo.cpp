#include "LoopLibrary/Render/Sequencer/LoopTempo.h"

#include "LoopLibrary/Render/Common/BlockTime.h"

#include <algorithm>

namespace NSLOPDLL {

int32_t LoopTempo(int64_t frames, uint32_t sampleRate, int64_t beats) noexcept {
    const double minutes = static_cast<double>(frames) / (static_cast<double>(sampleRate) * 60.0);
    if (!(minutes > 0.0)) {
        return 0;
    }
    const double tempo = static_cast<double>(beats) / minutes * 1000.0 + 0.5;
    return SaturateToInt32(std::min(tempo, 999999.0));
}

} // namespace NSLOPDLL
