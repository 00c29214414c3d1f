#include "LoopLibrary/Render/Sample/C24BitWaveSample.h"

namespace NSLOPDLL {

C24BitWaveSample::C24BitWaveSample(uint32_t sampleRate, uint32_t frameCount, bool stereo)
    : TPlanarWaveSample(sampleRate, frameCount, stereo) {}

} // namespace NSLOPDLL
