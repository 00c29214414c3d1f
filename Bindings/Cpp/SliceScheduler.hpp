/*
 * Plays the rendered slices of a loop in time with a host, exact to the frame.
 *
 * The preview of LoopLibrary.h begins every slice on a grid of 64 frames. A host that must stay
 * with its own clock renders the slices once (LOPRenderSlice), on a worker thread, and lets this
 * class place them: each slice begins at the frame nearest to its musical position, however the
 * audio comes in blocks, so that nothing drifts. C++17, needs no library.
 *
 *     SliceScheduler scheduler;                        // any thread: allocates its voices
 *     scheduler.SetLoop(slices.data(), slices.size(), loopQuarters);
 *     scheduler.Render(hostQuarter, hostBpm, left, right, frames); // audio thread, every block
 *
 * Positions are in quarter notes from the start of the timeline, on which the loop repeats for ever
 * in both directions. A slice plays at its own speed, rings past its end over the slices behind it,
 * and is mixed, not cut. A position that does not follow from the block before is a jump (a host
 * that loops, or a person who clicks): what sounds fades out over kFadeFrames, and playing goes on
 * in the middle of the slice that stands there. Slices begun by Trigger know no position: they ring
 * on through jumps and stops until Silence.
 *
 * All calls but the constructor belong to the audio thread, or to any other while that one makes
 * none: arithmetic alone, no allocation, no lock, no exception. The slices are borrowed: the caller
 * keeps them until another SetLoop has returned, or until what ReplaceLoop fades out is over.
 */
#ifndef LOOPLIBRARY_SLICESCHEDULER_HPP
#define LOOPLIBRARY_SLICESCHEDULER_HPP

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace LoopLibrary {

/// A slice as LOPRenderSlice gave it.
struct PlacedSlice {
    const float* fLeft = nullptr;
    /// Null for a mono loop.
    const float* fRight = nullptr;
    /// Frames of each array.
    int64_t fFrames = 0;
    /// fPPQPosition of LOPSliceInfo / LOP_PPQ: 0 or more, below the loop's length, ascending.
    double fQuarter = 0.0;
    /// Muted slices are not begun; one that sounds already rings on.
    bool fMuted = false;
};

/// Turns slices, positions and tempos into frames; see the top of the file.
class SliceScheduler {
public:
    /// A voice that is cut off fades linearly over so many frames.
    static constexpr int64_t kFadeFrames = 64;
    /// Frames per second.
    static constexpr double kMostSampleRate = 1.0e7;
    /// To a quarter note: with more, the slices of a far position have no numbers.
    static constexpr double kMostSlices = 1.0e9;

    /// `voices` slices may ring at once, at least 2; a further one takes the place of the oldest.
    explicit SliceScheduler(std::size_t voices = 32) : fVoices(std::max<std::size_t>(voices, 2)) {}

    /// Borrows the slices. `loopQuarters` is fPPQLength of LOPInfo / LOP_PPQ. Without slices, at 0
    /// or below, and with more than kMostSlices to a quarter note the scheduler is silent. What
    /// sounds is dropped at once, since its arrays may be gone.
    void SetLoop(const PlacedSlice* slices, std::size_t count, double loopQuarters) noexcept {
        Reset();
        Borrow(slices, count, loopQuarters);
    }

    /// Like SetLoop, but what sounds of the old loop, keys included, fades out over the next
    /// kFadeFrames frames of Render or Ring, and the new loop fades in. The caller keeps the old
    /// slices until those frames are rendered.
    void ReplaceLoop(const PlacedSlice* slices, std::size_t count, double loopQuarters) noexcept {
        for (Voice& voice : fVoices) {
            if (voice.fDelay > 0) {
                voice.fSlice = nullptr; // begins in a later block, by when its slice may be gone
            }
        }
        Fade(false);
        Fade(true);
        Borrow(slices, count, loopQuarters);
    }

    /// Frames per second of the host and of the rendered slices, above 0 and at most
    /// kMostSampleRate; at others nothing begins.
    void SetSampleRate(double rate) noexcept {
        fSampleRate = rate <= kMostSampleRate ? rate : 0.0;
        fRunning = false;
    }

    /// Factor of all samples; it glides over the next block.
    void SetGain(float gain) noexcept { fTargetGain = gain; }

    /// The slice with which the loop begins: the timeline's start plays slice `slice` and the loop
    /// goes round from there; one that the loop does not have stands for its last. Takes effect as
    /// a jump.
    void SetStartSlice(std::size_t slice) noexcept {
        fStartSlice = static_cast<int64_t>(std::min<std::size_t>(slice, 0x7FFFFFFF));
    }

    /// Forgets what sounds, without a fade.
    void Reset() noexcept {
        for (Voice& voice : fVoices) {
            voice.fSlice = nullptr;
        }
        fRunning = false;
    }

    /// The transport stands: what it began fades out over the following Ring calls.
    void Stop() noexcept {
        Fade(false);
        fRunning = false;
    }

    /// Fades out what Trigger began.
    void Silence() noexcept { Fade(true); }

    /// Begins a slice `offset` frames into the next block (below 0: at its start), whatever the
    /// position; `level` is its factor. Nothing for a slice that the loop does not have. For keys
    /// and pads.
    void Trigger(std::size_t slice, float level, int64_t offset) noexcept {
        if (slice < static_cast<std::size_t>(fCount)) {
            Begin(fSlices[slice], 0, std::max<int64_t>(offset, 0), level, true);
        }
    }

    /// Mixes what sounds into the arrays, and begins nothing of its own.
    void Ring(float* left, float* right, int64_t frames) noexcept { Mix(left, right, frames); }

    /// Adds the next `frames` frames to the arrays; `right` null gives the mean of both channels.
    /// `quarter` is the position of the first frame, `bpm` quarter notes per minute during the
    /// block. Nothing begins at 0 or below, nor where there would be more slices than frames.
    void Render(double quarter, double bpm, float* left, float* right, int64_t frames) noexcept {
        const double step = bpm / (60.0 * fSampleRate); // quarters a frame
        if (fCount > 0 && frames > 0 && step > 0.0 &&
            step * static_cast<double>(fCount) <= fLoopQuarters && std::abs(quarter) < kFarthest) {
            if (!fRunning ||
                std::abs(quarter - fExpected) >
                    kJumpSeconds * fSampleRate * std::max(step, fStep) ||
                fStartSlice != fPlayedStart) {
                Jump(quarter, step);
            }
            BeginDue(quarter, step, frames);
            fExpected = quarter + static_cast<double>(frames) * step;
            fStep = step;
            fRunning = true;
        }
        Mix(left, right, frames);
    }

private:
    void Borrow(const PlacedSlice* slices, std::size_t count, double loopQuarters) noexcept {
        fSlices = slices;
        const bool isPlayable =
            std::isfinite(loopQuarters) && static_cast<double>(count) <= kMostSlices * loopQuarters;
        fCount = isPlayable ? static_cast<int64_t>(count) : 0;
        fLoopQuarters = loopQuarters;
        fRunning = false;
    }

    /// Below this distance a block follows the last: hosts round the positions they report, to
    /// whole ticks for one, and report one tempo for a block in which it glides.
    static constexpr double kJumpSeconds = 0.005;
    /// Quarters; farther out a double no longer holds a frame exactly.
    static constexpr double kFarthest = 1.0e9;

    struct Voice {
        const PlacedSlice* fSlice = nullptr;
        int64_t fNext = 0;  // frame of the slice that plays next
        int64_t fDelay = 0; // frames of the coming block before it
        int64_t fFade = -1; // frames left of a fade-out; -1: none
        int64_t fRise = 0;  // frames left of a fade-in from the middle of a slice
        float fLevel = 1.0F;
        bool fTriggered = false;
        uint64_t fAge = 0;
    };

    /// The place of the n-th slice on the timeline; n counts on through the passes of the loop.
    double QuarterOf(int64_t n) const noexcept {
        const int64_t first = std::min(fPlayedStart, fCount - 1);
        const int64_t shifted = n + first;
        int64_t pass = shifted / fCount;
        int64_t index = shifted % fCount;
        if (index < 0) {
            index += fCount;
            --pass;
        }
        const double origin = first == 0 ? 0.0 : fSlices[first].fQuarter;
        return static_cast<double>(pass) * fLoopQuarters + (fSlices[index].fQuarter - origin);
    }
    const PlacedSlice& SliceOf(int64_t n) const noexcept {
        const int64_t index = (n + std::min(fPlayedStart, fCount - 1)) % fCount;
        return fSlices[index < 0 ? index + fCount : index];
    }

    /// The frame of the block that is nearest to the slice's place; half a frame rounds up, so that
    /// every place belongs to exactly one block.
    static double FrameOf(double place, double quarter, double step) noexcept {
        return std::floor((place - quarter) / step + 0.5);
    }

    /// Fades what sounds, finds the first slice from the position on, and enters the one before it
    /// in its middle, unless a slice begins just here.
    void Jump(double quarter, double step) noexcept {
        Fade(false);
        fPlayedStart = fStartSlice;
        // The first slice of the pass before the position's: at most two passes lie behind it.
        fNext = (static_cast<int64_t>(std::floor(quarter / fLoopQuarters)) - 1) * fCount;
        int64_t low = fNext;
        int64_t high = fNext + 3 * fCount;
        while (low < high) {
            const int64_t middle = low + (high - low) / 2;
            if (FrameOf(QuarterOf(middle), quarter, step) < 0.0) {
                low = middle + 1;
            } else {
                high = middle;
            }
        }
        fNext = low;
        if (FrameOf(QuarterOf(fNext), quarter, step) == 0.0) {
            return;
        }
        const PlacedSlice& before = SliceOf(fNext - 1);
        const double passed = -FrameOf(QuarterOf(fNext - 1), quarter, step);
        if (!before.fMuted && passed < static_cast<double>(before.fFrames)) {
            Begin(before, static_cast<int64_t>(passed), 0);
        }
    }

    void BeginDue(double quarter, double step, int64_t frames) noexcept {
        for (;;) {
            const double frame = FrameOf(QuarterOf(fNext), quarter, step);
            if (frame >= static_cast<double>(frames)) {
                return;
            }
            const PlacedSlice& slice = SliceOf(fNext);
            if (!slice.fMuted) {
                // A host's position may have stepped back by its rounding: not before the block.
                Begin(slice, 0, static_cast<int64_t>(std::max(frame, 0.0)));
            }
            ++fNext;
        }
    }

    void Begin(const PlacedSlice& slice, int64_t from, int64_t delay, float level = 1.0F,
               bool triggered = false) noexcept {
        Voice* free = &fVoices.front();
        for (Voice& voice : fVoices) {
            if (voice.fSlice == nullptr) {
                free = &voice;
                break;
            }
            if (voice.fAge < free->fAge) {
                free = &voice;
            }
        }
        *free =
            Voice{&slice, from, delay, -1, from > 0 ? kFadeFrames : 0, level, triggered, ++fAge};
    }

    void Fade(bool triggered) noexcept {
        for (Voice& voice : fVoices) {
            if (voice.fSlice != nullptr && voice.fTriggered == triggered && voice.fFade < 0) {
                voice.fFade = kFadeFrames;
            }
        }
    }

    void Mix(float* left, float* right, int64_t frames) noexcept {
        if (frames <= 0) {
            return;
        }
        const float gainStep = (fTargetGain - fGain) / static_cast<float>(frames);
        for (Voice& voice : fVoices) {
            if (voice.fSlice != nullptr) {
                MixVoice(voice, left, right, frames, gainStep);
            }
        }
        fGain = fTargetGain;
    }

    void MixVoice(Voice& voice, float* left, float* right, int64_t frames,
                  float gainStep) noexcept {
        const PlacedSlice& slice = *voice.fSlice;
        int64_t frame = std::min(voice.fDelay, frames);
        voice.fDelay -= frame;
        for (; frame < frames && voice.fNext < slice.fFrames && voice.fFade != 0; ++frame) {
            float gain = (fGain + gainStep * static_cast<float>(frame)) * voice.fLevel;
            if (voice.fFade > 0) {
                gain *= static_cast<float>(voice.fFade--) / static_cast<float>(kFadeFrames);
            }
            if (voice.fRise > 0) {
                gain *= 1.0F - static_cast<float>(voice.fRise--) / static_cast<float>(kFadeFrames);
            }
            const float one = slice.fLeft[voice.fNext];
            const float two = slice.fRight != nullptr ? slice.fRight[voice.fNext] : one;
            if (right != nullptr) {
                left[frame] += gain * one;
                right[frame] += gain * two;
            } else {
                left[frame] += gain * 0.5F * (one + two);
            }
            ++voice.fNext;
        }
        if (voice.fNext >= slice.fFrames || voice.fFade == 0) {
            voice.fSlice = nullptr;
        }
    }

    std::vector<Voice> fVoices;
    const PlacedSlice* fSlices = nullptr;
    int64_t fCount = 0;
    double fLoopQuarters = 0.0;
    double fSampleRate = 44100.0;
    int64_t fStartSlice = 0;
    int64_t fPlayedStart = 0;
    int64_t fNext = 0; // number of the next slice to begin
    double fExpected = 0.0;
    double fStep = 0.0;
    bool fRunning = false;
    float fGain = 1.0F;
    float fTargetGain = 1.0F;
    uint64_t fAge = 0;
};

/// Where nobody names a tempo.
constexpr double kDefaultBpm = 120.0;

/// Turns a tempo that changes now and then into positions, for a host without a timeline of its
/// own. The position is counted in whole frames from the last change of tempo, so that it does not
/// drift.
class TempoClock {
public:
    explicit TempoClock(double sampleRate, double bpm = kDefaultBpm, double quarter = 0.0) noexcept
        : fSampleRate(sampleRate), fBpm(bpm), fQuarter(quarter) {}

    double GetQuarter() const noexcept {
        return fQuarter + static_cast<double>(fFrames) * fBpm / (60.0 * fSampleRate);
    }
    double GetBpm() const noexcept { return fBpm; }
    void Advance(int64_t frames) noexcept { fFrames += frames; }
    /// From the present position on.
    void SetBpm(double bpm) noexcept {
        if (bpm != fBpm) {
            fQuarter = GetQuarter();
            fFrames = 0;
            fBpm = bpm;
        }
    }
    void MoveTo(double quarter) noexcept {
        fQuarter = quarter;
        fFrames = 0;
    }

private:
    double fSampleRate;
    double fBpm;
    double fQuarter;
    int64_t fFrames = 0;
};

/// One change of a tempo map: from `fQuarter` on the tempo is `fBpm`.
struct TempoPoint {
    double fQuarter;
    double fBpm;
};

/// Plays a tempo map: Render follows every change at its own frame, also in the middle of a block.
/// The points ascend, the first stands at quarter 0 or before; they are borrowed.
class TempoMapPlayer {
public:
    TempoMapPlayer(const TempoPoint* points, std::size_t count, double sampleRate) noexcept
        : fPoints(points), fCount(count), fSampleRate(sampleRate), fClock(sampleRate, BpmAt(0)) {}

    double GetQuarter() const noexcept { return fClock.GetQuarter(); }

    void MoveTo(double quarter) noexcept {
        fAt = 0;
        while (fAt + 1 < fCount && fPoints[fAt + 1].fQuarter <= quarter) {
            ++fAt;
        }
        fClock.MoveTo(quarter);
        fClock.SetBpm(BpmAt(fAt));
    }

    void Render(SliceScheduler& scheduler, float* left, float* right, int64_t frames) noexcept {
        while (frames > 0) {
            int64_t part = frames;
            const bool last = fAt + 1 >= fCount;
            if (!last) {
                const double rest = (fPoints[fAt + 1].fQuarter - fClock.GetQuarter()) * 60.0 *
                                    fSampleRate / fClock.GetBpm();
                // The frame at or behind the point is the first in the new tempo.
                if (rest < static_cast<double>(frames)) {
                    part = static_cast<int64_t>(std::max(std::ceil(rest), 0.0));
                }
            }
            if (part > 0) {
                scheduler.Render(fClock.GetQuarter(), fClock.GetBpm(), left, right, part);
                fClock.Advance(part);
                left += part;
                right = right != nullptr ? right + part : nullptr;
                frames -= part;
            }
            if (!last && (part == 0 || frames > 0)) {
                EnterNextPoint();
            }
        }
    }

private:
    double BpmAt(std::size_t point) const noexcept {
        return fCount > 0 ? fPoints[point].fBpm : kDefaultBpm;
    }

    /// The old tempo held up to the present frame, at most one frame too long: what was counted too
    /// far at the old tempo is counted anew at the new one.
    void EnterNextPoint() noexcept {
        const double over = fClock.GetQuarter() - fPoints[fAt + 1].fQuarter;
        const double oldBpm = fClock.GetBpm();
        ++fAt;
        fClock.MoveTo(fPoints[fAt].fQuarter + over * fPoints[fAt].fBpm / oldBpm);
        fClock.SetBpm(fPoints[fAt].fBpm);
    }

    const TempoPoint* fPoints;
    std::size_t fCount;
    double fSampleRate;
    std::size_t fAt = 0;
    TempoClock fClock;
};

} // namespace LoopLibrary

#endif
