#include "LoopLibrary/Render/Sampler/VoiceGains.h"

#include "LoopLibrary/Render/Forms/RenderForms.h"

#include <algorithm>

namespace NSLOPDLL {

void CVoiceGains::Plan(size_t index, float& gain, const CGainMove& move) noexcept {
    if (move.fAttackRamp > 0.0F) {
        gain = FillGains(gain, move, fGains[index]); // may stop at its target on the way
    } else if (move.fRamp == 0.0F && gain != 0.0F) {
        std::fill_n(fGains[index], kBlockFrames, gain); // a zero could change its sign
    } else {
        fRamps[fRampCount++] = {&gain, fGains[index], move.fRamp};
    }
}

void CVoiceGains::Finish() noexcept {
    for (size_t first = 0; first < fRampCount; first += kLanes) {
        const size_t used = std::min(kLanes, fRampCount - first);
        float* targets[kLanes];
        float values[kLanes];
        float steps[kLanes];
        for (size_t lane = 0; lane < kLanes; ++lane) {
            const bool isUsed = lane < used;
            targets[lane] = isUsed ? fRamps[first + lane].fTarget : fSpare;
            values[lane] = isUsed ? *fRamps[first + lane].fVoiceGain : 0.0F;
            steps[lane] = isUsed ? fRamps[first + lane].fStep : 0.0F;
        }
        GetRenderForm().fFillFourRamps(targets, values, steps);
        for (size_t lane = 0; lane < used; ++lane) {
            *fRamps[first + lane].fVoiceGain = values[lane];
        }
    }
}

} // namespace NSLOPDLL
