#include "LoopLibrary/Codec/COptimizedTWIPDecompressor.h"

#include "Failure/Classes/XTransferErrors.h"
#include "Failure/Raising/Raise.h"
#include "PorterPackage/Core/Bytes/ByteOrder.h"

#include <bit>

namespace NSLOPDLL {

// The plain form. It decodes what no faster form does: everything on a processor that has none, and
// elsewhere the code words at the end of a span.

// The span and the current word in locals. Only TakeWord reaches the decoder's own fields, so that
// all of these stay in registers.
class COptimizedTWIPDecompressor::CBitReader {
public:
    explicit CBitReader(COptimizedTWIPDecompressor& owner)
        : fOwner(owner), fNextWord(owner.fSpan.fNextWord), fEndOfWords(owner.fSpan.fEndOfWords),
          fBitsLeft(owner.fSpan.fBitsLeft), fCurrentWord(owner.fSpan.fCurrentWord) {}

    void StoreTo(STWIPSpan& span) const {
        span = {fNextWord, fEndOfWords, fCurrentWord, fBitsLeft};
    }

    ptrdiff_t GetWordsLeft() const { return fEndOfWords - fNextWord; }

    // Takes a run of zeros and the 1 that ends it; the result is the number of zeros. Nothing but
    // zeros stands below the bits that are left, so a word that is not 0 holds the 1.
    uint64_t ReadUnary() {
        uint64_t zeros = 0;
        for (;;) {
            if (fBitsLeft == 0) {
                fCurrentWord = TakeWord();
                fBitsLeft = 32;
            }
            if (fCurrentWord != 0) [[likely]] {
                break;
            }
            zeros += static_cast<uint32_t>(fBitsLeft);
            fBitsLeft = 0;
        }
        const int32_t inWord = std::countl_zero(fCurrentWord);
        fCurrentWord = fCurrentWord << inWord << 1;
        fBitsLeft -= inWord + 1;
        return zeros + static_cast<uint32_t>(inWord);
    }

    // The next bit if it is wanted, otherwise 0. Whether it is wanted is a coin toss, so nothing
    // branches on it but at the end of a word.
    uint32_t ReadBitIf(bool wanted) {
        const int32_t count = wanted ? 1 : 0;
        if (fBitsLeft < count) [[unlikely]] {
            fCurrentWord = TakeWord();
            fBitsLeft = 32;
        }
        const uint32_t bit = (fCurrentWord >> 31) & static_cast<uint32_t>(count);
        fCurrentWord <<= count;
        fBitsLeft -= count;
        return bit;
    }

    // `count` from 1 to 31.
    uint32_t ReadBits(int32_t count) {
        uint32_t bits = fCurrentWord >> (32 - count);
        fCurrentWord <<= count;
        fBitsLeft -= count;
        if (fBitsLeft < 0) {
            const int32_t missing = -fBitsLeft;
            const uint32_t word = TakeWord();
            bits |= word >> (32 - missing);
            fCurrentWord = word << missing;
            fBitsLeft = 32 - missing;
        }
        return bits;
    }

private:
    uint32_t TakeWord() {
        if (fNextWord == fEndOfWords) [[unlikely]] {
            fOwner.Underflow();
            fNextWord = fOwner.fSpan.fNextWord;
            fEndOfWords = fOwner.fSpan.fEndOfWords;
        }
        return NSPorter::DecodeBigEndian(reinterpret_cast<const uint8_t*>(fNextWord++));
    }

    COptimizedTWIPDecompressor& fOwner;
    const uint32_t* fNextWord;
    const uint32_t* fEndOfWords;
    int32_t fBitsLeft;
    uint32_t fCurrentWord;
};

// One channel's state in locals, with each signal held doubled: its fold is then the value itself,
// complemented if negative, and what a code word gives needs no shift.
class COptimizedTWIPDecompressor::CChannel {
public:
    explicit CChannel(const TWIPChannelState& state)
        : fValue0(Doubled(state.fValue[0])), fValue1(Doubled(state.fValue[1])),
          fValue2(Doubled(state.fValue[2])), fValue3(Doubled(state.fValue[3])),
          fValue4(Doubled(state.fValue[4])), fEnergy0(state.fEnergy[0]), fEnergy1(state.fEnergy[1]),
          fEnergy2(state.fEnergy[2]), fEnergy3(state.fEnergy[3]), fEnergy4(state.fEnergy[4]),
          fOrder(state.ChooseOrder()), fLeastEnergy(state.fEnergy[fOrder]) {}

    void StoreTo(TWIPChannelState& state) const {
        state = {
            {Halved(fValue0), Halved(fValue1), Halved(fValue2), Halved(fValue3), Halved(fValue4)},
            {fEnergy0, fEnergy1, fEnergy2, fEnergy3, fEnergy4}};
    }

    // The next value of the channel, doubled.
    uint32_t Decode(CBitReader& bits) {
        Advance(ReadCodeWord(bits));
        return fValue0;
    }

    static uint32_t Doubled(int32_t value) { return static_cast<uint32_t>(value) << 1; }
    static int32_t Halved(uint32_t doubled) { return static_cast<int32_t>(doubled) >> 1; }

private:
    // The new value, doubled, of the signal of least energy. The first seven zeros are worth a step
    // each, the next seven four steps, and so on; what follows the 1 is a truncated binary code of
    // the range below the last of these steps.
    uint32_t ReadCodeWord(CBitReader& bits) {
        uint32_t step = TWIPChannelState::StepOf(fLeastEnergy);
        uint32_t folded = 0;
        uint64_t zeros = bits.ReadUnary();
        while (zeros >= 7 && step != 0) {
            folded += 7 * step;
            step <<= 2;
            zeros -= 7;
        }
        folded += static_cast<uint32_t>(zeros) * step;

        // In 64 bits the bound above a step with the highest bit set needs no special case. A step
        // of 0, which no sound stream has, leaves the bound at 2 and so reads nothing.
        while (step >= fStepBound) {
            fStepBound <<= 1;
            ++fStepBits;
        }
        while (step < fStepBound >> 1 && fStepBits > 0) {
            fStepBound >>= 1;
            --fStepBits;
        }
        if (fStepBits > 0) {
            uint32_t remainder = bits.ReadBits(fStepBits);
            const int64_t excess =
                static_cast<int64_t>(step) - static_cast<int64_t>(fStepBound) + remainder;
            const bool isLong = excess >= 0;
            remainder += isLong ? static_cast<uint32_t>(excess) : 0;
            remainder += bits.ReadBitIf(isLong);
            folded += remainder;
        }
        return (folded & 1u) != 0 ? ~folded : folded;
    }

    void Advance(uint32_t value) {
        uint32_t old;
        switch (fOrder) {
        case 0:
            old = fValue0;
            fValue0 = value;
            value -= old;
            old = fValue1;
            fValue1 = value;
            value -= old;
            old = fValue2;
            fValue2 = value;
            value -= old;
            old = fValue3;
            fValue3 = value;
            fValue4 = value - old;
            break;
        case 1:
            old = fValue1;
            fValue1 = value;
            value -= old;
            old = fValue2;
            fValue2 = value;
            value -= old;
            old = fValue3;
            fValue3 = value;
            fValue4 = value - old;
            fValue0 += fValue1;
            break;
        case 2:
            old = fValue2;
            fValue2 = value;
            value -= old;
            old = fValue3;
            fValue3 = value;
            fValue4 = value - old;
            fValue1 += fValue2;
            fValue0 += fValue1;
            break;
        case 3:
            old = fValue3;
            fValue3 = value;
            fValue4 = value - old;
            fValue2 += fValue3;
            fValue1 += fValue2;
            fValue0 += fValue1;
            break;
        default:
            fValue4 = value;
            fValue3 += fValue4;
            fValue2 += fValue3;
            fValue1 += fValue2;
            fValue0 += fValue1;
            break;
        }

        // The next order is chosen while the sums are moved on; on a tie the lower one stays.
        fEnergy0 += Folded(fValue0) - (fEnergy0 >> 5);
        fLeastEnergy = fEnergy0;
        fOrder = 0;
        fEnergy1 += Folded(fValue1) - (fEnergy1 >> 5);
        Compare(fEnergy1, 1);
        fEnergy2 += Folded(fValue2) - (fEnergy2 >> 5);
        Compare(fEnergy2, 2);
        fEnergy3 += Folded(fValue3) - (fEnergy3 >> 5);
        Compare(fEnergy3, 3);
        fEnergy4 += Folded(fValue4) - (fEnergy4 >> 5);
        Compare(fEnergy4, 4);
    }

    static uint32_t Folded(uint32_t doubled) {
        return doubled ^ static_cast<uint32_t>(static_cast<int32_t>(doubled) >> 31);
    }

    void Compare(uint32_t energy, int32_t order) {
        fOrder = energy < fLeastEnergy ? order : fOrder;
        fLeastEnergy = energy < fLeastEnergy ? energy : fLeastEnergy;
    }

    uint32_t fValue0, fValue1, fValue2, fValue3, fValue4;
    uint32_t fEnergy0, fEnergy1, fEnergy2, fEnergy3, fEnergy4;
    int32_t fOrder;
    uint32_t fLeastEnergy;
    // The lowest power of two above the last step, at least 2, and the bits below the step's
    // highest: the step of the next sample is seldom far away.
    uint64_t fStepBound = 2;
    int32_t fStepBits = 0;
};

// From sample `done` of the output on, to its end or until the span has words for a faster form
// again, but at least to the end of a frame. Answers the samples done then.
template <int32_t kChannels, class Sample>
int64_t COptimizedTWIPDecompressor::DecodePlainly(int64_t done, int64_t frameCount,
                                                  const TTWIPOutput<Sample>& output,
                                                  bool toTheEnd) {
    CBitReader bits(*this);
    CChannel first(fChannels[0]);
    CChannel second(fChannels[1]);
    // Added before they are halved: a sum too is good modulo 2^31.
    const auto decodeSecond = [&](uint32_t left, int64_t frame) {
        output.fSecond[frame * output.fStride] =
            static_cast<Sample>(CChannel::Halved(left + second.Decode(bits)));
    };
    int64_t frame = done / kChannels;
    if constexpr (kChannels == 2) {
        if (done % 2 != 0) {
            decodeSecond(CChannel::Doubled(fChannels[0].fValue[0]), frame++);
        }
    }
    while (frame < frameCount &&
           (toTheEnd || bits.GetWordsLeft() < kTWIPFormWords || frame == done / kChannels)) {
        const uint32_t left = first.Decode(bits);
        // The analyser takes one past null for null, and stereo for mono then.
        // NOLINTNEXTLINE(clang-analyzer-core.NullDereference)
        output.fFirst[frame * output.fStride] = static_cast<Sample>(CChannel::Halved(left));
        if constexpr (kChannels == 2) {
            decodeSecond(left, frame);
        }
        ++frame;
    }
    first.StoreTo(fChannels[0]);
    if constexpr (kChannels == 2) {
        second.StoreTo(fChannels[1]);
    }
    bits.StoreTo(fSpan);
    return frame * kChannels;
}

template <class Sample>
void COptimizedTWIPDecompressor::Decompress(int32_t frameCount, const TTWIPOutput<Sample>& output) {
    const STWIPForm& form = GetTWIPForm();
    TDecodeTWIP<Sample> decode;
    if constexpr (sizeof(Sample) == sizeof(int16_t)) {
        decode = form.fDecode16;
    } else {
        decode = form.fDecode32;
    }
    const bool isStereo = output.fSecond != nullptr;
    const int64_t sampleCount = int64_t{frameCount} * (isStereo ? 2 : 1);
    int64_t done = 0;
    while (done < sampleCount) {
        if (decode != nullptr && fSpan.fEndOfWords - fSpan.fNextWord >= kTWIPFormWords) {
            const int64_t frame = isStereo ? done / 2 : done;
            const auto offset = static_cast<ptrdiff_t>(frame * output.fStride);
            done += decode(fSpan, fChannels,
                           {output.fFirst + offset, isStereo ? output.fSecond + offset : nullptr,
                            output.fStride},
                           frameCount - frame);
        }
        if (done < sampleCount) {
            const bool toTheEnd = decode == nullptr;
            done = isStereo ? DecodePlainly<2>(done, frameCount, output, toTheEnd)
                            : DecodePlainly<1>(done, frameCount, output, toTheEnd);
        }
    }
}

template void COptimizedTWIPDecompressor::Decompress(int32_t, const TTWIPOutput<int16_t>&);
template void COptimizedTWIPDecompressor::Decompress(int32_t, const TTWIPOutput<int32_t>&);

void COptimizedTWIPDecompressor::DecompressMono(int32_t frameCount, int16_t* out16,
                                                int32_t* out32) {
    if (out16 != nullptr) {
        Decompress(frameCount, TTWIPOutput<int16_t>{out16, nullptr, 1});
    } else {
        Decompress(frameCount, TTWIPOutput<int32_t>{out32, nullptr, 1});
    }
}

void COptimizedTWIPDecompressor::DecompressStereo(int32_t frameCount, int16_t* out16,
                                                  int32_t* out32) {
    if (frameCount < 1) {
        return; // there may be no array to have a second sample
    }
    if (out16 != nullptr) {
        Decompress(frameCount, TTWIPOutput<int16_t>{out16, out16 + 1, 2});
    } else {
        Decompress(frameCount, TTWIPOutput<int32_t>{out32, out32 + 1, 2});
    }
}

void COptimizedTWIPDecompressor::SetWords(int32_t wordCount, const uint32_t* words) {
    fSpan.fNextWord = words;
    fSpan.fEndOfWords = words + wordCount;
    fSpan.fBitsLeft = 0;
}

void COptimizedTWIPDecompressor::Underflow() {
    NSLichen::Raise(NSLichen::XOutOfItems("TWIP decompressor underflow"));
}

} // namespace NSLOPDLL
