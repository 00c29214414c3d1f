#include "LoopLibrary/Render/C16BitWaveSample.h"
#include "LoopLibrary/Render/C24BitWaveSample.h"
#include "Tests/Render/RenderTestTools.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace NSLOPDLL {
namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();

TEST(WaveSample, WritesFloatsRoundedAndClipped) {
    const struct {
        float fValue;
        int32_t fIn16;
        int32_t fIn24;
    } cases[] = {
        {0.0F, 0, 0},
        {1.0F, 32767, 8388607},
        {-1.0F, -32767, -8388607},
        {-1.00002F, -32768, -8388608},
        {2.0F, 32767, 8388607},
        {-2.0F, -32768, -8388608},
        {128.0F, 32767, 8388607}, // of a damaged stream: beyond 31 bits when scaled
        {1e30F, 32767, 8388607},
        {-kInfinity, -32768, -8388608},
        {std::numeric_limits<float>::quiet_NaN(), 0, 0},
        {0.49F / 32767.0F, 0, 125},
        {0.5F / 32767.0F, 1, 128},
        {-0.5F / 32767.0F, -1, -128},
    };
    C16BitWaveSample narrow(44100, 1, false);
    C24BitWaveSample wide(44100, 1, false);
    for (const auto& c : cases) {
        narrow.SetFloatSample(0, c.fValue, 1);
        wide.SetFloatSample(0, c.fValue, 1);
        EXPECT_EQ(narrow.Get16BitSample(0, 1), c.fIn16) << c.fValue;
        EXPECT_EQ(wide.Get24BitSample(0, 1), c.fIn24) << c.fValue;
    }
    narrow.Set16BitSample(0, 32767, 1);
    EXPECT_EQ(narrow.GetFloatSample(0, 1), 0.999969482421875F);
    wide.Set24BitSample(0, -8388608, 1);
    EXPECT_EQ(wide.GetFloatSample(0, 1), -1.0F);
}

TEST(WaveSample, ConvertsBetweenDepths) {
    C16BitWaveSample narrow(44100, 1, false);
    C24BitWaveSample wide(44100, 1, false);
    narrow.Set16BitSample(0, -1, 1);
    EXPECT_EQ(narrow.Get24BitSample(0, 1), -256);
    EXPECT_EQ(narrow.Get24BitFloatSample(0, 1), -256.0F);
    wide.Set24BitSample(0, 0x7fffff, 1);
    EXPECT_EQ(wide.Get16BitSample(0, 1), 32767);
    wide.Set24BitSample(0, -1, 1);
    EXPECT_EQ(wide.Get16BitSample(0, 1), -1);
    wide.Set16BitSample(0, -32768, 1);
    EXPECT_EQ(wide.Get24BitFloatSample(0, 1), -8388608.0F);
    wide.Set24BitSample(0, 1 << 30, 1); // of a damaged stream
    EXPECT_EQ(wide.GetFloatSample(0, 1), 128.0F);

    const struct {
        int32_t fIn24;
        int16_t fStored;
    } shifts[] = {{-1, -1}, {255, 0}, {256, 1}, {-257, -2}, {8388607, 32767}, {-8388608, -32768}};
    for (const auto& c : shifts) {
        narrow.Set24BitSample(0, c.fIn24, 1);
        EXPECT_EQ(narrow.Get16BitSample(0, 1), c.fStored) << c.fIn24;
    }

    const struct {
        float fValue;
        int16_t fIn16;
        int32_t fIn24;
    } floats[] = {{300.9F, 1, 300},
                  {-300.9F, -2, -300},
                  {1e20F, 32767, 8388607},
                  {-1e20F, -32768, -8388608},
                  {std::nanf(""), 0, 0}};
    for (const auto& c : floats) {
        narrow.Set24BitFloatSample(0, c.fValue, 1);
        wide.Set24BitFloatSample(0, c.fValue, 1);
        EXPECT_EQ(narrow.Get16BitSample(0, 1), c.fIn16) << c.fValue;
        EXPECT_EQ(wide.Get24BitSample(0, 1), c.fIn24) << c.fValue;
    }
}

// Runs every bulk form of one view from `first` over `count` frames of each channel and compares
// with the accessors of single frames.
template <typename View, typename GetOne, typename GetBulk, typename SetBulk>
void CheckPlanes(uint32_t depth, GetOne getOne, GetBulk getBulk, SetBulk setBulk) {
    constexpr int32_t kFirst = 3;
    constexpr int32_t kCount = 70;
    const auto source = MakeNoiseSample(44100, 80, true, depth);
    const auto target = CreateWaveSample(44100, 80, true, depth);
    for (const int32_t channel : {2, 1}) {
        std::vector<View> values(kCount);
        ((*source).*getBulk)(kFirst, kCount, values.data(), channel);
        ((*target).*setBulk)(kFirst, kCount, values.data(), channel);
        ((*target).*setBulk)(0, 0, values.data(), channel);
        ((*target).*setBulk)(0, -5, values.data(), channel);
        for (int32_t i = 0; i < kCount; ++i) {
            EXPECT_EQ(values[static_cast<size_t>(i)], ((*source).*getOne)(kFirst + i, channel));
            EXPECT_NEAR(((*target).*getOne)(kFirst + i, channel), values[static_cast<size_t>(i)],
                        3.1e-5);
        }
        EXPECT_EQ(target->Get24BitSample(kFirst - 1, channel), 0);
        EXPECT_EQ(target->Get24BitSample(kFirst + kCount, channel), 0);
    }
}

template <typename View, typename GetOne, typename GetFrames, typename SetFrames>
void CheckFrames(uint32_t depth, GetOne getOne, GetFrames getFrames, SetFrames setFrames) {
    const auto source = MakeNoiseSample(44100, 40, true, depth);
    const auto target = CreateWaveSample(44100, 40, true, depth);
    std::vector<View> values(60);
    ((*source).*getFrames)(5, 30, values.data());
    ((*target).*setFrames)(5, 30, values.data());
    for (int32_t i = 0; i < 60; ++i) {
        EXPECT_EQ(values[static_cast<size_t>(i)], ((*source).*getOne)(5 + i / 2, 1 + i % 2));
        EXPECT_EQ(values[static_cast<size_t>(i)], ((*target).*getOne)(5 + i / 2, 1 + i % 2));
    }
}

TEST(WaveSample, BulkFormsAgreeWithSingleFrames) {
    using S = CABCWaveSample;
    for (const uint32_t depth : {16U, 24U}) {
        CheckPlanes<float>(depth, &S::GetFloatSample, &S::GetFloatSamples, &S::SetFloatSamples);
        CheckPlanes<int16_t>(depth, &S::Get16BitSample, &S::Get16BitSamples, &S::Set16BitSamples);
        CheckPlanes<int32_t>(depth, &S::Get24BitSample, &S::Get24BitSamples, &S::Set24BitSamples);
        CheckPlanes<float>(depth, &S::Get24BitFloatSample, &S::Get24BitFloatSamples,
                           &S::Set24BitFloatSamples);
        CheckFrames<int16_t>(depth, &S::Get16BitSample, &S::Get16BitFrames, &S::Set16BitFrames);
        CheckFrames<int32_t>(depth, &S::Get24BitSample, &S::Get24BitFrames, &S::Set24BitFrames);
        CheckFrames<float>(depth, &S::Get24BitFloatSample, &S::Get24BitFloatFrames,
                           &S::Set24BitFloatFrames);
    }
}

TEST(WaveSample, MakesPreviewOfOverlappingEntries) {
    for (const int32_t frames : {0, 63, 64, 65, 128, 191, 192, 1000}) {
        for (const uint32_t depth : {16U, 24U}) {
            const auto sample = MakeNoiseSample(44100, frames, true, depth);
            EXPECT_FALSE(sample->HasPreview());
            sample->CreatePreview();
            const CWaveSamplePreview& preview = *sample->GetPreview();
            ASSERT_EQ(preview.GetEntryCount(), frames / 64);
            for (int32_t i = 0; i < 2 * preview.GetEntryCount(); ++i) {
                std::vector<int16_t> values(192);
                const int32_t entry = i % preview.GetEntryCount();
                const int32_t channel = 1 + i / preview.GetEntryCount();
                const int32_t count = std::min(frames - 64 * entry, 192);
                sample->Get16BitSamples(64 * entry, count, values.data(), channel);
                const auto [low, high] =
                    std::minmax_element(values.begin(), values.begin() + count);
                const int16_t* peaks =
                    channel == 1 ? preview.GetLeftPeaks() : preview.GetRightPeaks();
                EXPECT_EQ(peaks[2 * entry], *low);
                EXPECT_EQ(peaks[2 * entry + 1], *high);
            }
        }
    }
}

// A sample that holds `loud` up to a frame and -`loud` from there on.
std::unique_ptr<CABCWaveSample> MakeStep(bool stereo, int32_t frames, int32_t at, int16_t loud) {
    auto sample = CreateWaveSample(44100, static_cast<uint32_t>(frames), stereo, 16);
    for (int32_t i = 0; i < frames; ++i) {
        const auto value = static_cast<int16_t>(i < at ? loud : -loud);
        sample->Set16BitSample(i, value, 1);
        if (stereo) {
            sample->Set16BitSample(i, 2000, 2);
        }
    }
    return sample;
}

TEST(WaveSample, FindsQuietPlaces) {
    EXPECT_EQ(CreateWaveSample(44100, 0, false, 16)->FindZeroCrossing(7), 0);

    for (const bool stereo : {false, true}) {
        const auto step = MakeStep(stereo, 60000, 30000, 2000);
        EXPECT_EQ(step->FindZeroCrossing(29990), 30000);
        EXPECT_EQ(step->FindZeroCrossing(30010), 30000); // backward: the frame behind the crossing
        EXPECT_EQ(step->FindZeroCrossing(0), 0);         // the lower end stops the first walk back
        EXPECT_EQ(step->FindZeroCrossing(26000), 30000);
        EXPECT_EQ(step->FindZeroCrossing(59999), 60000); // the silence behind the sample is quiet
        EXPECT_EQ(step->FindZeroCrossing(std::numeric_limits<int32_t>::max()), 60000);
        EXPECT_EQ(step->FindZeroCrossing(std::numeric_limits<int32_t>::min()), 0);
        step->Set16BitSample(100, 1022, stereo ? 2 : 1);
        EXPECT_EQ(step->FindZeroCrossing(100), 100);
        EXPECT_EQ(step->FindZeroCrossing(105), 100);
        step->Set16BitSample(100, 1023, stereo ? 2 : 1);
        EXPECT_NE(step->FindZeroCrossing(105), 100);
    }
    const auto flat = MakeStep(false, 60000, 60000, 2000);
    EXPECT_EQ(flat->FindZeroCrossing(26000), 51000); // gives up 25000 frames ahead
}

TEST(WaveSample, ReplacesChannels) {
    for (const uint32_t depth : {16U, 24U}) {
        const auto sample = MakeNoiseSample(44100, 10, false, depth, 1);
        const auto before = CloneWaveSample(*sample);
        const auto source = MakeNoiseSample(44100, 6, false, depth, 2);
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
}

TEST(WaveSample, ClonesEverything) {
    for (const uint32_t depth : {8U, 16U, 20U, 24U}) {
        const auto sample = MakeNoiseSample(48000, 200, true, depth);
        EXPECT_EQ(sample->GetBitDepth(), depth <= 16 ? 16U : 24U);
        EXPECT_EQ(sample->GetLoopEnd(), 200);
        EXPECT_EQ(sample->GetLoopMode(), 1U);
        EXPECT_FALSE(sample->HasLoop());
        sample->SetLoop(2, 10, 90);
        sample->CreatePreview();
        const auto clone = CloneWaveSample(*sample);
        EXPECT_TRUE(clone->HasLoop());
        EXPECT_EQ(clone->GetLoopMode(), 2U);
        EXPECT_EQ(clone->GetLoopStart(), 10);
        EXPECT_EQ(clone->GetLoopEnd(), 90);
        EXPECT_EQ(clone->GetSampleRate(), 48000U);
        EXPECT_EQ(clone->GetBitDepth(), sample->GetBitDepth());
        ASSERT_NE(clone->GetPreview(), sample->GetPreview());
        EXPECT_TRUE(std::equal(clone->GetPreview()->GetRightPeaks(),
                               clone->GetPreview()->GetRightPeaks() + 6,
                               sample->GetPreview()->GetRightPeaks()));
        sample->Set24BitSample(100, 0, 2);
        EXPECT_NE(clone->Get24BitSample(100, 2), 0);
    }
}

} // namespace
} // namespace NSLOPDLL
