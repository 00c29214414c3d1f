#include "LoopLibrary/File/Legacy/CTSLAppChunk.h"
#include "LoopLibrary/File/Legacy/TSLLoader.h"
#include "LoopLibrary/Render/Common/LoopRanges.h"
#include "LoopLibrary/Render/Sequencer/CTesselSequencer.h"

#include <cmath>

namespace NSLOPDLL {

namespace {

// The change in pitch, in cents, if the recording were sped up like a tape from the tempo that its
// length gives to the stored one.
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
    return kTransposeRange.Clip16(static_cast<int16_t>(semitones * 100.0));
}

void SetTempoOf(const CTSLAppChunk& chunk, CTesselSequencer& sequencer) {
    if (!chunk.HasLength()) {
        sequencer.SetTempo(130000);
        sequencer.SetTempoSync(false);
        return;
    }
    const int32_t loopTempo = sequencer.GetLoopTempo();
    sequencer.SetTempo(kTempoRange.Clip(loopTempo));
    sequencer.SetTempoSync(true);
    if (chunk.fTempoStored) {
        const int32_t storedTempo = kTempoRange.Clip(chunk.fTempo);
        sequencer.SetTempo(storedTempo);
        sequencer.GetSampler().SetTranspose(TransposeOfTempo(loopTempo, storedTempo));
    }
}

} // namespace

void ReadTSLSequencerSettings(NSPorter::CMedia& media, CTesselSequencer& sequencer) {
    const CTSLAppChunk chunk = ReadTSLChunk(media);
    sequencer.SetTimeSignature(kSignaturePartRange.Clip(chunk.fTimeSignatureNumerator),
                               kSignaturePartRange.Clip(chunk.fTimeSignatureDenominator));
    sequencer.SetBars(kBarsRange.Clip(chunk.fBars));
    sequencer.SetBeats(kBeatsRange.Clip(chunk.fBeats));
    sequencer.SetDropMuted(chunk.fDropMuted);
    SetTempoOf(chunk, sequencer);

    CTesselSampler& sampler = sequencer.GetSampler();
    sampler.SetShaperOn(true);
    sampler.SetShaperAttack(0);
    sampler.SetShaperDecay(kNoDecay);
    sampler.SetShaperStretch(chunk.GetStretchPercent());
}

} // namespace NSLOPDLL
