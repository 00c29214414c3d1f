#include "LoopWriter/DrumFiles.h"

#include <utility>

namespace NSLoopWriter {

namespace {

SDrumLoopOptions ForOlderKinds(SDrumLoopOptions options) {
    options.fBitDepth = 16;
    options.fStereo = false;
    return options;
}

} // namespace

SLOP2File MakeDrumLOP2(const SDrumLoopOptions& options) {
    SDrumLoop loop = MakeDrumLoop(options);
    SLOP2File file;
    file.fGeneralInfo.fBars = static_cast<uint16_t>(options.fBeats / 4);
    file.fGeneralInfo.fBeats = static_cast<uint8_t>(options.fBeats % 4);
    file.fGeneralInfo.fTempo = options.fTempo;
    file.fSampleInfo.fSampleRate = options.fSampleRate;
    file.fBitDepth = options.fBitDepth;
    file.fLeft = std::move(loop.fLeft);
    file.fRight = std::move(loop.fRight);
    file.fSlices.clear();
    for (const uint32_t hit : loop.fHits) {
        SLOP2Slice slice;
        slice.fPosition = hit;
        slice.fLength = loop.fFramesPerHit;
        file.fSlices.push_back(slice);
    }
    return file;
}

STSLFile MakeDrumTSL(const SDrumLoopOptions& options) {
    SDrumLoop loop = MakeDrumLoop(ForOlderKinds(options));
    STSLFile file;
    file.fAudio.fCommon.fSampleRate = options.fSampleRate;
    file.fBars = static_cast<uint16_t>(options.fBeats / 4);
    file.fBeats = static_cast<uint8_t>(options.fBeats % 4);
    file.fTempo = options.fTempo;
    file.fTempoStored = 1;
    file.SetLoop(0, static_cast<uint32_t>(loop.fLeft.size()));
    file.fAudio.fSamples = std::move(loop.fLeft);
    file.fSlices.clear();
    for (const uint32_t hit : loop.fHits) {
        STSLSlice slice;
        slice.fPosition = hit;
        file.fSlices.push_back(slice);
    }
    return file;
}

SLOPFile MakeDrumLOP(const SDrumLoopOptions& options) {
    SDrumLoop loop = MakeDrumLoop(ForOlderKinds(options));
    SLOPFile file;
    file.fAudio.fCommon.fSampleRate = options.fSampleRate;
    file.fAudio.fSamples = std::move(loop.fLeft);
    file.fPPQLength = static_cast<uint32_t>(options.fBeats) * 960;
    file.fTempo = options.fTempo;
    file.fSlices.clear();
    for (size_t i = 0; i < loop.fHits.size(); ++i) {
        file.fSlices.push_back({loop.fHits[i], loop.fFramesPerHit, static_cast<uint32_t>(i) * 480});
    }
    return file;
}

} // namespace NSLoopWriter
