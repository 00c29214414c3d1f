#pragma once

#include "looptool/Loop/CLoop.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace NSLoopTool {

/// A cut of a loop file, or a place where a slice begins without one (the loop's start). Frames are
/// of the stored audio.
struct SMark {
    int64_t fFrame = 0;
    bool fIsStored = true; // false: a start without a stored cut
    bool fIsActive = true; // false: hidden, or too weak for the loop's sensitivity
    bool fIsHidden = false;
    bool fIsForced = false;
    bool fIsMuted = false;
    int32_t fLevel = 32767;
    /// The slice that LOPRenderSlice renders from here, and where it stops; -1 for none.
    int32_t fSlice = -1;
    int64_t fEndFrame = 0;
};

/// What commands show of a loop beyond what the public interface tells: read from the insides.
struct SLoopModel {
    std::string_view fKind;
    int64_t fFrames = 0; // of the stored audio
    int32_t fSampleRate = 0;
    int64_t fLoopStart = 0;
    int64_t fLoopEnd = 0; // behind the last
    int32_t fBars = 0;
    int32_t fBeats = 0;
    bool fIsTempoStored = true; // only a .tsl may have none
    std::vector<SMark> fMarks;  // rising

    double GetSeconds() const { return static_cast<double>(fFrames) / fSampleRate; }
};

SLoopModel ReadLoopModel(const CLoop& loop);

} // namespace NSLoopTool
