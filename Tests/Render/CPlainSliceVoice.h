#pragma once

#include "LoopLibrary/Render/CABCWaveSample.h"
#include "LoopLibrary/Render/CSamplerSettings.h"
#include "LoopLibrary/Render/CSlicePlayRange.h"
#include "Tests/Render/RenderTestTools.h"

#include <cstdint>

namespace NSLOPDLL {

// A slice voice written out plainly, frame by frame and with no shared code but the tables: what
// the sampler's voices are compared with, to the bit.
class CPlainSliceVoice {
public:
    CPlainSliceVoice(const CABCWaveSample& sample, int32_t outputRate,
                     const CSamplerSettings& settings, const CSlicePlayRange& range);

    // Adds a block; false once the voice has died.
    bool Render(CTestBlock& block);

private:
    struct CCursor {
        int32_t fPosition;
        uint32_t fDirection;
        bool fInTail;
        float fFade;
        float fLevel;
    };

    float Target() const;
    void Fetch(CCursor& cursor, size_t k, bool lookAhead);

    const CABCWaveSample& fSample;
    const CSamplerSettings fSettings;
    const CSlicePlayRange fRange;
    CCursor fCursor;
    float fRatio;
    float fFadeStep;
    float fLevelStep;
    float fAttackRate; // per block
    float fDecayFactor;
    float fCompressorAttackRate;
    float fCompressorFactor;
    bool fRising;
    bool fCompressorRising;
    float fEnvelope;
    float fCompressor;
    float fGain;
    uint32_t fPhase = 0;
    float fLeft[4112];
    float fRight[4112];
};

} // namespace NSLOPDLL
