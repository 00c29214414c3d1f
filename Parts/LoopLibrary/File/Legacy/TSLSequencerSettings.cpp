#include "LoopLibrary/File/Common/LoopLimits.h"
#include "LoopLibrary/File/Legacy/CTSLAppChunk.h"
#include "LoopLibrary/File/Legacy/TSLLoader.h"
#include "LoopLibrary/Render/Sequencer/CTesselSequencer.h"

#include <cmath>

namespace NSLOPDLL {

namespace {

// The pitch at which the recording would play, were it only sped up from the tempo of its length to
// the stored one.
int16_t TransposeOfTempo(int32_t loopTempo, int32_t storedTempo) {
    const double l = loopTempo;
    const double t = storedTempo;
    double semitones = 24.0;
    if (l > 0.0) {
        semitones = -24.0;
        if (t / l > 0.0) {
            semitones = 12.0 * std::log(t / l) / std::log(2.0);
        }
    }
    // The two tempos lie within 1 to 999999 and 20000 to 450000: 16 bits hold every result.
    return ClampTranspose(static_cast<int16_t>(semitones * 100.0));
}

void SetTempoOf(const CTSLAppChunk& chunk, CTesselSequencer& sequencer) {
    if (!chunk.HasLength()) {
        sequencer.SetTempo(130000);
        sequencer.SetTempoSync(false);
        return;
    }
    const int32_t loopTempo = sequencer.GetLoopTempo();
    sequencer.SetTempo(ClampTempo(loopTempo));
    sequencer.SetTempoSync(true);
    if (chunk.fTempoStored) {
        const int32_t storedTempo = ClampTempo(chunk.fTempo);
        sequencer.SetTempo(storedTempo);
        sequencer.GetSampler().SetTranspose(TransposeOfTempo(loopTempo, storedTempo));
    }
}

} // namespace

void ReadTSLSequencerSettings(NSPorter::CMedia& media, CTesselSequencer& sequencer) {
    const CTSLAppChunk chunk = ReadTSLChunk(media);
    sequencer.SetTimeSignature(ClampSignaturePart(chunk.fTimeSignatureNumerator),
                               ClampSignaturePart(chunk.fTimeSignatureDenominator));
    sequencer.SetBars(ClampBars(chunk.fBars));
    sequencer.SetBeats(ClampBeats(chunk.fBeats));
    sequencer.SetDropMuted(chunk.fDropMuted);
    SetTempoOf(chunk, sequencer);

    CTesselSampler& sampler = sequencer.GetSampler();
    sampler.SetShaperOn(true);
    sampler.SetShaperAttack(0);
    sampler.SetShaperDecay(1023);
    sampler.SetShaperStretch(chunk.GetStretchPercent());
}

} // namespace NSLOPDLL
