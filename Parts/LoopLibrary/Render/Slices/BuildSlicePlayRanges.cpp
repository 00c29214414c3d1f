#include "LoopLibrary/Render/Slices/BuildSlicePlayRanges.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace NSLOPDLL {

namespace {

constexpr float kLargestTailGain = 10.0F;

// Frames at a rate for a number of frames at 44100.
int64_t ScaleTo(int64_t frames, uint32_t rate) {
    return frames * int64_t{rate} / 44100;
}

struct CPeak {
    int64_t fFrame = 0;
    float fLevel = -2.0F;
};

// The strongest frame of the left channel from `from` backward, `count` frames long; the latest one
// of equals.
CPeak FindPeakBackward(const CABCWaveSample& waveSample, int64_t from, int64_t count) {
    CPeak peak{from};
    std::array<float, 256> levels; // one call gets many frames
    while (count > 0) {
        const auto read = static_cast<int32_t>(std::min<int64_t>(count, levels.size()));
        const int64_t first = from - read + 1;
        waveSample.GetFloatSamples(static_cast<int32_t>(first), read, levels.data(), kChannel_Left);
        for (int32_t i = read - 1; i >= 0; --i) {
            const float level = std::fabs(levels[static_cast<size_t>(i)]);
            if (level > peak.fLevel) {
                peak = {first + i, level};
            }
        }
        from -= read;
        count -= read;
    }
    return peak;
}

// Collects the ranges of a table, cut at the loop points of the sample.
class CRangeBuilder {
public:
    explicit CRangeBuilder(const CABCWaveSample& waveSample)
        : fLoopStart(waveSample.GetLoopStart()), fLoopEnd(waveSample.GetLoopEnd()),
          fFrameCount(waveSample.GetFrameCount()),
          fRanges(std::make_unique<std::vector<CSlicePlayRange>>()) {}

    void PushWholeSample() {
        if (fLoopStart > 0) {
            Push(0, fLoopStart);
        }
        int64_t start = fLoopStart;
        if (fLoopEnd < fFrameCount) {
            Push(start, fLoopEnd);
            start = fLoopEnd;
        }
        Push(start, fFrameCount);
    }

    void PushLeadIn(int64_t firstSlice) {
        int64_t start = 0;
        if (fLoopStart > 0 && fLoopStart < firstSlice) {
            Push(0, fLoopStart);
            start = fLoopStart;
        }
        if (fLoopEnd < firstSlice) {
            Push(start, fLoopEnd);
            start = fLoopEnd;
        }
        Push(start, firstSlice);
    }

    // A slice that sounds from `start` to `end`, the next one being at `next`.
    void PushSlice(int64_t start, int64_t end, int64_t next, bool skip) {
        const int64_t position = start;
        if (position < fLoopStart && next > fLoopStart) {
            if (!skip) {
                Push(start, std::min(end, fLoopStart));
            }
            start = fLoopStart;
            skip = skip || start >= end;
        }
        if (position < fLoopEnd && next > fLoopEnd) {
            if (!skip) {
                Push(start, std::min(end, fLoopEnd));
            }
            if (end <= fLoopEnd) {
                return;
            }
            start = fLoopEnd;
        }
        if (!skip) {
            Push(start, end);
        }
    }

    std::unique_ptr<std::vector<CSlicePlayRange>> Take() { return std::move(fRanges); }

private:
    void Push(int64_t start, int64_t end) {
        fRanges->push_back({static_cast<int32_t>(start), static_cast<int32_t>(end),
                            static_cast<int32_t>(start), static_cast<int32_t>(end), 1.0F});
    }

    const int64_t fLoopStart;
    const int64_t fLoopEnd;
    const int64_t fFrameCount;
    std::unique_ptr<std::vector<CSlicePlayRange>> fRanges;
};

} // namespace

std::unique_ptr<std::vector<CSlicePlayRange>> BuildSlicePlayRanges(const CABCWaveSample& waveSample,
                                                                   const CSliceSequence& sequence,
                                                                   bool dropMuted, bool synced) {
    CRangeBuilder builder(waveSample);
    const CSlice* slice = nullptr; // the active slice that waits for its successor
    const auto pushSlice = [&](int64_t next) {
        const int64_t position = slice->GetPosition();
        const int64_t end = synced ? position + slice->GetLength() : next;
        builder.PushSlice(position, end, next, slice->IsMuted() && dropMuted && synced);
    };
    for (const CSlice& candidate : sequence.GetSlices()) {
        if (!sequence.IsActive(candidate)) {
            continue;
        }
        if (slice != nullptr) {
            pushSlice(candidate.GetPosition());
        } else if (candidate.GetPosition() > 0) {
            builder.PushLeadIn(candidate.GetPosition());
        }
        slice = &candidate;
    }
    if (slice != nullptr) {
        pushSlice(waveSample.GetFrameCount());
    } else {
        builder.PushWholeSample();
    }

    auto ranges = builder.Take();
    if (synced) {
        for (CSlicePlayRange& range : *ranges) {
            FindTail(waveSample, range);
        }
    }
    return ranges;
}

void FindTail(const CABCWaveSample& waveSample, CSlicePlayRange& range) noexcept {
    const int64_t span = ScaleTo(400, waveSample.GetSampleRate());
    const int64_t reach = ScaleTo(20000, waveSample.GetSampleRate());
    range.fTailStart = range.fStart;
    range.fTailEnd = range.fEnd;
    range.fTailGain = 1.0F;
    // Rates under 111 have no span to search.
    if (span == 0 || int64_t{range.fEnd} - range.fStart < 3 * span) {
        return;
    }

    const CPeak upper = FindPeakBackward(waveSample, range.fEnd - span, span);
    const int64_t back = std::min(reach, (upper.fFrame - range.fStart) / 2);
    const int64_t from = upper.fFrame - back;
    const CPeak lower = FindPeakBackward(waveSample, from, std::min(span, from - range.fStart + 1));
    range.fTailEnd = static_cast<int32_t>(upper.fFrame);
    range.fTailStart = static_cast<int32_t>(lower.fFrame);
    if (lower.fLevel != 0.0F) {
        range.fTailGain = std::min(upper.fLevel / lower.fLevel, kLargestTailGain);
    }
}

} // namespace NSLOPDLL
