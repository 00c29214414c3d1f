#include "LoopLibrary/Render/CABCWaveSample.h"
#include "Tests/Render/RenderTestTools.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <type_traits>
#include <utility>
#include <vector>

namespace NSLOPDLL {
namespace {

using S = CABCWaveSample;

TEST(WaveSample, WritesFloatsRoundedAndClipped) {
    const auto narrow = CreateWaveSample(44100, 1, false, 16);
    const auto wide = CreateWaveSample(44100, 1, false, 24);
    const auto store = [&](float value) {
        narrow->SetFloatSample(0, value, 1);
        wide->SetFloatSample(0, value, 1);
        return std::pair<int32_t, int32_t>(narrow->Get16BitSample(0, 1),
                                           wide->Get24BitSample(0, 1));
    };
    EXPECT_EQ(store(1.0F), std::pair(32767, 8388607));
    EXPECT_EQ(store(-1.0F), std::pair(-32767, -8388607));
    EXPECT_EQ(store(-1.00002F), std::pair(-32768, -8388608));
    EXPECT_EQ(store(2.0F), std::pair(32767, 8388607));
    EXPECT_EQ(store(-2.0F), std::pair(-32768, -8388608));
    EXPECT_EQ(store(1e30F), std::pair(32767, 8388607)); // beyond 31 bits when scaled
    EXPECT_EQ(store(-1e30F), std::pair(-32768, -8388608));
    EXPECT_EQ(store(std::nanf("")), std::pair(0, 0));
    EXPECT_EQ(store(0.49F / 32767.0F), std::pair(0, 125));
    EXPECT_EQ(store(0.5F / 32767.0F), std::pair(1, 128));
    EXPECT_EQ(store(-0.5F / 32767.0F), std::pair(-1, -128));

    narrow->Set16BitSample(0, 32767, 1);
    EXPECT_EQ(narrow->GetFloatSample(0, 1), 0.999969482421875F);
    wide->Set24BitSample(0, -8388608, 1);
    EXPECT_EQ(wide->GetFloatSample(0, 1), -1.0F);
    wide->Set24BitSample(0, 1 << 30, 1); // of a damaged stream
    EXPECT_EQ(wide->GetFloatSample(0, 1), 128.0F);
}

TEST(WaveSample, ConvertsBetweenDepths) {
    const auto narrow = CreateWaveSample(44100, 1, false, 16);
    const auto wide = CreateWaveSample(44100, 1, false, 24);
    narrow->Set16BitSample(0, -1, 1);
    EXPECT_EQ(narrow->Get24BitSample(0, 1), -256);
    EXPECT_EQ(narrow->Get24BitFloatSample(0, 1), -256.0F);
    wide->Set16BitSample(0, -32768, 1);
    EXPECT_EQ(wide->Get24BitFloatSample(0, 1), -8388608.0F);

    // What the writers of floats and of integers in 24-bit scale leave in both depths.
    const auto store = [&](float value, int32_t whole) {
        narrow->Set24BitFloatSample(0, value, 1);
        wide->Set24BitFloatSample(0, value, 1);
        const std::pair<int32_t, int32_t> stored(narrow->Get16BitSample(0, 1),
                                                 wide->Get24BitSample(0, 1));
        narrow->Set24BitSample(0, whole, 1);
        EXPECT_EQ(narrow->Get16BitSample(0, 1), stored.first) << value;
        EXPECT_EQ(wide->Get16BitSample(0, 1), stored.first) << value;
        return stored;
    };
    EXPECT_EQ(store(-1.0F, -1), std::pair(-1, -1));
    EXPECT_EQ(store(255.0F, 255), std::pair(0, 255));
    EXPECT_EQ(store(8388607.0F, 8388607), std::pair(32767, 8388607));
    EXPECT_EQ(store(300.9F, 300), std::pair(1, 300));
    EXPECT_EQ(store(-300.9F, -300), std::pair(-2, -300));
    EXPECT_EQ(store(1e20F, 8388607), std::pair(32767, 8388607));
    EXPECT_EQ(store(-1e20F, -8388608), std::pair(-32768, -8388608));
    EXPECT_EQ(store(std::nanf(""), 0), std::pair(0, 0));
}

// The bulk and interleaved forms of one view over frames 3 to 72 against the accessors of single
// frames. A null pointer leaves a form out.
template <typename View, typename GetBulk, typename SetBulk, typename GetFrames, typename SetFrames>
void CheckBulk(View (S::*get)(int32_t, int32_t) const noexcept,
               void (S::*set)(int32_t, View, int32_t) noexcept, GetBulk getBulk, SetBulk setBulk,
               GetFrames getFrames, SetFrames setFrames) {
    for (const uint32_t depth : {16U, 24U}) {
        const auto source = MakeNoiseSample(44100, 80, true, depth);
        const auto single = CreateWaveSample(44100, 80, true, depth);
        const auto bulk = CreateWaveSample(44100, 80, true, depth);
        const auto interleaved = CreateWaveSample(44100, 80, true, depth);
        std::vector<View> planes(140);
        std::vector<View> frames(140);
        for (const int32_t channel : {1, 2}) {
            View* plane = planes.data() + ptrdiff_t{70} * (channel - 1);
            (*source.*getBulk)(3, 70, plane, channel);
            (*bulk.*setBulk)(3, 70, plane, channel);
            (*bulk.*setBulk)(0, -5, plane, channel);
            for (int32_t i = 0; i < 70; ++i) {
                EXPECT_EQ(plane[i], (*source.*get)(3 + i, channel));
                (*single.*set)(3 + i, plane[i], channel);
                frames[static_cast<size_t>(2 * i + channel - 1)] = plane[i];
            }
        }
        if constexpr (!std::is_null_pointer_v<GetFrames>) {
            (*interleaved.*setFrames)(3, 70, frames.data());
            std::vector<View> read(140);
            (*source.*getFrames)(3, 70, read.data());
            EXPECT_EQ(read, frames);
        }
        for (int32_t i = 0; i < 160; ++i) {
            const int32_t expected = single->Get24BitSample(i / 2, 1 + i % 2);
            EXPECT_EQ(bulk->Get24BitSample(i / 2, 1 + i % 2), expected);
            if constexpr (!std::is_null_pointer_v<GetFrames>) {
                EXPECT_EQ(interleaved->Get24BitSample(i / 2, 1 + i % 2), expected);
            }
        }
    }
}

TEST(WaveSample, BulkFormsAgreeWithSingleFrames) {
    CheckBulk(&S::GetFloatSample, &S::SetFloatSample, &S::GetFloatSamples, &S::SetFloatSamples,
              nullptr, nullptr);
    CheckBulk(&S::Get16BitSample, &S::Set16BitSample, &S::Get16BitSamples, &S::Set16BitSamples,
              &S::Get16BitFrames, &S::Set16BitFrames);
    CheckBulk(&S::Get24BitSample, &S::Set24BitSample, &S::Get24BitSamples, &S::Set24BitSamples,
              &S::Get24BitFrames, &S::Set24BitFrames);
    CheckBulk(&S::Get24BitFloatSample, &S::Set24BitFloatSample, &S::Get24BitFloatSamples,
              &S::Set24BitFloatSamples, &S::Get24BitFloatFrames, &S::Set24BitFloatFrames);
}

TEST(WaveSample, MakesPreviewOfOverlappingEntries) {
    for (const int32_t frames : {0, 63, 64, 65, 128, 191, 192, 1000}) {
        const auto sample = MakeNoiseSample(44100, frames, true, 24);
        EXPECT_FALSE(sample->HasPreview());
        sample->CreatePreview();
        const CWaveSamplePreview& preview = *sample->GetPreview();
        ASSERT_EQ(preview.GetEntryCount(), frames / 64);
        for (int32_t i = 0; i < 2 * preview.GetEntryCount(); ++i) {
            const int32_t entry = i / 2;
            std::vector<int16_t> values(192);
            const int32_t count = std::min(frames - 64 * entry, 192);
            sample->Get16BitSamples(64 * entry, count, values.data(), 1 + i % 2);
            const auto [low, high] = std::minmax_element(values.begin(), values.begin() + count);
            const int16_t* peaks = i % 2 == 0 ? preview.GetLeftPeaks() : preview.GetRightPeaks();
            peaks += ptrdiff_t{2} * entry;
            EXPECT_EQ(std::pair(peaks[0], peaks[1]), std::pair(*low, *high));
        }
    }
}

// The left channel is loud, and changes its sign at frame 55000.
TEST(WaveSample, FindsQuietPlaces) {
    EXPECT_EQ(CreateWaveSample(44100, 0, false, 16)->FindZeroCrossing(7), 0);
    for (const bool stereo : {false, true}) {
        const auto step = CreateWaveSample(44100, 60000, stereo, 16);
        for (int32_t i = 0; i < 60000; ++i) {
            step->Set16BitSample(i, 2000, stereo ? 2 : 1);
            step->Set16BitSample(i, i < 55000 ? 2000 : -2000, 1);
        }
        EXPECT_EQ(step->FindZeroCrossing(54990), 55000);
        EXPECT_EQ(step->FindZeroCrossing(55010), 55000); // backward: the frame behind the crossing
        EXPECT_EQ(step->FindZeroCrossing(28000), 53000); // gives up 25000 frames ahead
        EXPECT_EQ(step->FindZeroCrossing(0), 0);         // or at the start, whichever is first
        EXPECT_EQ(step->FindZeroCrossing(59999), 60000); // the silence behind the sample is quiet
        EXPECT_EQ(step->FindZeroCrossing(std::numeric_limits<int32_t>::max()), 60000);
        EXPECT_EQ(step->FindZeroCrossing(std::numeric_limits<int32_t>::min()), 0);
        step->Set16BitSample(100, 1022, stereo ? 2 : 1);
        EXPECT_EQ(step->FindZeroCrossing(100), 100);
        EXPECT_EQ(step->FindZeroCrossing(105), 100);
        step->Set16BitSample(100, 1023, stereo ? 2 : 1);
        EXPECT_NE(step->FindZeroCrossing(105), 100);
    }
}

TEST(WaveSample, ReplacesChannels) {
    const auto sample = MakeNoiseSample(44100, 10, false, 24, 1);
    const auto before = CloneWaveSample(*sample);
    const auto source = MakeNoiseSample(44100, 6, false, 24, 2);
    sample->ReplaceChannelFrom(*source, 2);
    ASSERT_TRUE(sample->IsStereo());
    for (int32_t i = 0; i < 10; ++i) {
        EXPECT_EQ(sample->Get24BitSample(i, 1), before->Get24BitSample(i, 1));
        EXPECT_EQ(sample->Get24BitSample(i, 2), i < 6 ? source->Get24BitSample(i, 1) : 0);
    }
    sample->ReplaceChannelFrom(*source, 1);
    EXPECT_EQ(sample->Get24BitSample(3, 1), source->Get24BitSample(3, 1));
    EXPECT_EQ(sample->Get24BitSample(3, 2), before->Get24BitSample(3, 1));
}

TEST(WaveSample, ClonesAreDeep) {
    for (const uint32_t depth : {8U, 16U, 20U, 24U}) {
        const auto sample = MakeNoiseSample(48000, 200, true, depth);
        EXPECT_EQ(sample->GetBitDepth(), depth <= 16 ? 16U : 24U);
        sample->SetLoop(2, 10, 90);
        sample->CreatePreview();
        const auto clone = CloneWaveSample(*sample);
        EXPECT_TRUE(clone->HasLoop());
        EXPECT_EQ(clone->GetLoopEnd(), 90);
        EXPECT_EQ(clone->GetPreview()->GetRightPeaks()[5],
                  sample->GetPreview()->GetRightPeaks()[5]);
        EXPECT_EQ(clone->Get24BitSample(100, 2), sample->Get24BitSample(100, 2));
        sample->Set24BitSample(100, 0, 2);
        EXPECT_NE(clone->Get24BitSample(100, 2), 0);
    }
}

} // namespace
} // namespace NSLOPDLL
