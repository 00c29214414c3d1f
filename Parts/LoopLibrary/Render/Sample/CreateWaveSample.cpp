#include "LoopLibrary/Render/Sample/C16BitWaveSample.h"
#include "LoopLibrary/Render/Sample/C24BitWaveSample.h"

namespace NSLOPDLL {

std::unique_ptr<CABCWaveSample> CreateWaveSample(uint32_t sampleRate, uint32_t frameCount,
                                                 bool stereo, uint32_t bitDepth) {
    if (bitDepth == 8 || bitDepth == 16) {
        return std::make_unique<C16BitWaveSample>(sampleRate, frameCount, stereo);
    }
    return std::make_unique<C24BitWaveSample>(sampleRate, frameCount, stereo);
}

std::unique_ptr<CABCWaveSample> CloneWaveSample(const CABCWaveSample& sample) {
    if (const auto* narrow = dynamic_cast<const C16BitWaveSample*>(&sample)) {
        return std::make_unique<C16BitWaveSample>(*narrow);
    }
    if (const auto* wide = dynamic_cast<const C24BitWaveSample*>(&sample)) {
        return std::make_unique<C24BitWaveSample>(*wide);
    }
    return nullptr;
}

} // namespace NSLOPDLL
