#pragma once

#include <cstdint>

namespace NSLOPDLL {

constexpr int32_t kTWIPSignals = 5;

/// The adaptive state of one channel, the same in decoder and encoder. All arithmetic is on 32
/// bits and wraps.
struct TWIPChannelState {
    /// The last sample, and its first to fourth differences.
    int32_t fValue[kTWIPSignals] = {0, 0, 0, 0, 0};
    /// Decayed magnitude sums of the five signals.
    uint32_t fEnergy[kTWIPSignals] = {2560, 2560, 2560, 2560, 2560};

    /// The signal that the next code word carries: the one of least energy, on a tie the lowest.
    int32_t ChooseOrder() const {
        int32_t best = 0;
        for (int32_t i = 1; i < kTWIPSignals; ++i) {
            if (fEnergy[i] < fEnergy[best]) {
                best = i;
            }
        }
        return best;
    }

    /// Range of the remainder, and worth of the first zeros, of a code word for signal `order`.
    uint32_t GetStep(int32_t order) const { return StepOf(fEnergy[order]); }
    static uint32_t StepOf(uint32_t energy) { return (energy + 12u) * 3u >> 7; }

    /// Moves one sample on, given the new value of the signal `order`.
    void Advance(int32_t order, int32_t value) {
        uint32_t difference = static_cast<uint32_t>(value);
        for (int32_t i = order; i < kTWIPSignals; ++i) {
            const uint32_t old = static_cast<uint32_t>(fValue[i]);
            fValue[i] = static_cast<int32_t>(difference);
            difference -= old;
        }
        for (int32_t i = order - 1; i >= 0; --i) {
            fValue[i] = static_cast<int32_t>(static_cast<uint32_t>(fValue[i]) +
                                             static_cast<uint32_t>(fValue[i + 1]));
        }
        for (int32_t i = 0; i < kTWIPSignals; ++i) {
            fEnergy[i] += Fold(fValue[i]) - (fEnergy[i] >> 5);
        }
    }

    /// 0, -1, 1, -2, 2 ... to 0, 1, 2, 3, 4 ...
    static uint32_t Fold(int32_t value) {
        const uint32_t doubled = static_cast<uint32_t>(value) << 1;
        return value < 0 ? ~doubled : doubled;
    }

    /// The reverse of `Fold`.
    static int32_t Unfold(uint32_t folded) {
        const uint32_t half = folded >> 1;
        return static_cast<int32_t>((folded & 1u) != 0 ? ~half : half);
    }
};

} // namespace NSLOPDLL
