#include "LoopLibrary/Render/Sequencer/CClockSettings.h"

#include "LoopLibrary/Render/Common/BlockTime.h"

namespace NSLOPDLL {

int32_t CClockSettings::OutputTime(int64_t frames, bool useTempo) const noexcept {
    auto scaled = static_cast<double>(frames);
    if (useTempo) {
        scaled = fLoopTempo * scaled / fTempo;
    }
    return ScaleFrames(scaled, fOutputRate, fSourceRate);
}

int32_t CClockSettings::BlockTime(int64_t frames) const noexcept {
    return RoundToBlock(OutputTime(frames));
}

} // namespace NSLOPDLL
