#include "LoopLibrary/Render/Sample/C16BitWaveSample.h"

namespace NSLOPDLL {

C16BitWaveSample::C16BitWaveSample(uint32_t sampleRate, uint32_t frameCount, bool stereo)
    : TPlanarWaveSample(sampleRate, frameCount, stereo) {}

} // namespace NSLOPDLL
