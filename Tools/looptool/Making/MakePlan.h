#pragma once

#include "looptool/Audio/SAudio.h"
#include "looptool/Loop/LoopSettings.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace NSLoopTool {

struct SSignature {
    int32_t fNumerator = 4;   // beats of a bar
    int32_t fDenominator = 4; // note value of a beat
};

/// A cut as it will be stored.
struct SCut {
    int64_t fFrame = 0;
    int32_t fLevel = 32767;
    bool fIsHidden = false;
    bool fIsForced = false;
    bool fIsMuted = false;
};

/// All that goes into a loop file, checked. Tempos are thousandths of a beat of the time signature
/// per minute.
struct SMakePlan {
    std::string fName; // of the audio, for messages
    std::string_view fKind = kKind_LOP2;
    SAudio fAudio;
    int64_t fLoopStart = 0;
    int64_t fLoopEnd = 0; // behind the last frame
    SSignature fSignature;
    int32_t fBars = 0;
    int32_t fBeats = 0; // beyond the bars
    int32_t fTempo = 0;
    bool fIsTempoGiven = false;
    std::vector<SCut> fCuts; // rising, none twice, at least one
    CLoopSettings fSettings;
    std::vector<std::string> fTexts;

    int64_t GetFrames() const { return static_cast<int64_t>(fAudio.GetFrameCount()); }
    int32_t GetTotalBeats() const { return fBars * fSignature.fNumerator + fBeats; }
    double GetFramesPerBeat() const {
        return static_cast<double>(fLoopEnd - fLoopStart) / GetTotalBeats();
    }
};

} // namespace NSLoopTool
