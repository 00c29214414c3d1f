#include "Tests/Render/RenderTestTools.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <tuple>

namespace NSLOPDLL {
namespace {

using S = CABCWaveSample;

// What the writers of floats leave in both depths.
struct SConversion {
    float fValue;
    int32_t fNarrow, fWide;
};

TEST(WaveSample, ConvertsFloatsAndDepths) {
    const auto narrow = CreateWaveSample(44100, 1, false, 16);
    const auto wide = CreateWaveSample(44100, 1, false, 24);
    const SConversion units[] = {
        {1.0F, 32767, 8388607},        {-1.0F, -32767, -8388607},
        {2.0F, 32767, 8388607},        {-2.0F, -32768, -8388608},
        {1e30F, 32767, 8388607},       {-1e30F, -32768, -8388608}, // beyond 31 bits when scaled
        {-1.00002F, -32768, -8388608}, {std::nanf(""), 0, 0},
        {0.49F / 32767.0F, 0, 125},    {0.5F / 32767.0F, 1, 128},
        {-0.5F / 32767.0F, -1, -128},
    };
    for (const SConversion& row : units) {
        narrow->SetFloatSample(0, row.fValue, 1);
        wide->SetFloatSample(0, row.fValue, 1);
        EXPECT_EQ(narrow->Get16BitSample(0, 1), row.fNarrow) << row.fValue;
        EXPECT_EQ(wide->Get24BitSample(0, 1), row.fWide) << row.fValue;
    }
    const SConversion scaled[] = {
        {-1.0F, -1, -1},         {255.0F, 0, 255},           {8388607.0F, 32767, 8388607},
        {300.9F, 1, 300},        {-300.9F, -2, -300},        {std::nanf(""), 0, 0},
        {1e20F, 32767, 8388607}, {-1e20F, -32768, -8388608},
    };
    for (const SConversion& row : scaled) {
        narrow->Set24BitFloatSample(0, row.fValue, 1);
        wide->Set24BitFloatSample(0, row.fValue, 1);
        EXPECT_EQ(narrow->Get16BitSample(0, 1), row.fNarrow) << row.fValue;
        EXPECT_EQ(wide->Get24BitSample(0, 1), row.fWide) << row.fValue;
        EXPECT_EQ(wide->Get16BitSample(0, 1), row.fNarrow) << row.fValue;
        narrow->Set24BitSample(0, row.fWide, 1);
        EXPECT_EQ(narrow->Get16BitSample(0, 1), row.fNarrow) << row.fValue;
    }
    narrow->Set16BitSample(0, 32767, 1);
    EXPECT_EQ(narrow->GetFloatSample(0, 1), 0.999969482421875F);
    narrow->Set16BitSample(0, -1, 1);
    EXPECT_EQ(narrow->Get24BitFloatSample(0, 1), -256.0F);
    wide->Set24BitSample(0, 1 << 30, 1); // of a damaged stream
    EXPECT_EQ(wide->GetFloatSample(0, 1), 128.0F);
}

std::vector<int32_t> Values(const S& sample, int32_t channel) {
    std::vector<int32_t> values(sample.GetFrameCount());
    for (size_t i = 0; i < values.size(); ++i) {
        values[i] = sample.Get24BitSample(static_cast<int32_t>(i), channel);
    }
    return values;
}

// The bulk and interleaved forms of one view over frames 3 to 72 against the accessors of single
// frames. Floats have no interleaved form.
template <typename View, typename GetBulk, typename SetBulk, typename... Frames>
void CheckBulk(View (S::*get)(int32_t, int32_t) const noexcept,
               void (S::*set)(int32_t, View, int32_t) noexcept, GetBulk getBulk, SetBulk setBulk,
               Frames... frameForms) {
    for (const uint32_t depth : {16U, 24U}) {
        const auto source = MakeNoiseSample(44100, 80, true, depth);
        const auto single = CreateWaveSample(44100, 80, true, depth);
        const auto bulk = CloneWaveSample(*single);
        const auto interleaved = CloneWaveSample(*single);
        std::vector<View> frames(140);
        for (const int32_t channel : {1, 2}) {
            std::vector<View> plane(70);
            (*source.*getBulk)(3, 70, plane.data(), channel);
            (*bulk.*setBulk)(3, 70, plane.data(), channel);
            (*bulk.*setBulk)(0, -5, plane.data(), channel);
            for (int32_t i = 0; i < 70; ++i) {
                const View value = (*source.*get)(3 + i, channel);
                EXPECT_EQ(plane[static_cast<size_t>(i)], value);
                (*single.*set)(3 + i, value, channel);
                frames[static_cast<size_t>(2 * i + channel - 1)] = value;
            }
            EXPECT_EQ(Values(*bulk, channel), Values(*single, channel));
        }
        if constexpr (sizeof...(Frames) == 2) {
            const auto [getFrames, setFrames] = std::pair(frameForms...);
            std::vector<View> read(140);
            (*source.*getFrames)(3, 70, read.data());
            EXPECT_EQ(read, frames);
            (*interleaved.*setFrames)(3, 70, frames.data());
            EXPECT_EQ(Values(*interleaved, 1), Values(*single, 1));
            EXPECT_EQ(Values(*interleaved, 2), Values(*single, 2));
        }
    }
}

TEST(WaveSample, BulkFormsAgreeWithSingleFrames) {
    CheckBulk(&S::GetFloatSample, &S::SetFloatSample, &S::GetFloatSamples, &S::SetFloatSamples);
    CheckBulk(&S::Get16BitSample, &S::Set16BitSample, &S::Get16BitSamples, &S::Set16BitSamples,
              &S::Get16BitFrames, &S::Set16BitFrames);
    CheckBulk(&S::Get24BitSample, &S::Set24BitSample, &S::Get24BitSamples, &S::Set24BitSamples,
              &S::Get24BitFrames, &S::Set24BitFrames);
    CheckBulk(&S::Get24BitFloatSample, &S::Set24BitFloatSample, &S::Get24BitFloatSamples,
              &S::Set24BitFloatSamples, &S::Get24BitFloatFrames, &S::Set24BitFloatFrames);
}

TEST(WaveSample, MakesPreviewOfOverlappingEntriesThatClonesTake) {
    for (const int32_t frames : {0, 63, 64, 65, 191, 192, 1000}) {
        const bool stereo = frames % 2 == 0;
        auto source = MakeNoiseSample(44100, frames, stereo, 24);
        source->CreatePreview();
        const auto sample = CloneWaveSample(*source);
        source.reset();
        const CWaveSamplePreview& preview = *sample->GetPreview();
        ASSERT_EQ(preview.GetEntryCount(), frames / 64);
        ASSERT_EQ(preview.GetRightPeaks() != nullptr, stereo);
        for (int32_t first = 0; first + 64 <= frames; first += 64) {
            std::vector<int16_t> values(static_cast<size_t>(std::min(frames - first, 192)));
            for (int32_t channel = 1; channel <= (stereo ? 2 : 1); ++channel) {
                sample->Get16BitSamples(first, static_cast<int32_t>(values.size()), values.data(),
                                        channel);
                const auto [low, high] = std::minmax_element(values.begin(), values.end());
                const int16_t* peaks =
                    (channel == 1 ? preview.GetLeftPeaks() : preview.GetRightPeaks()) + first / 32;
                EXPECT_EQ(std::pair(peaks[0], peaks[1]), std::pair(*low, *high));
            }
        }
    }
}

// The left channel is loud, and changes its sign at frame 55000.
TEST(WaveSample, FindsQuietPlaces) {
    EXPECT_EQ(CreateWaveSample(44100, 0, false, 16)->FindZeroCrossing(7), 0);
    constexpr std::pair<int32_t, int32_t> kFound[] = {
        {54990, 55000},
        {55010, 55000}, // backward: the frame behind the crossing
        {28000, 53000}, // gives up 25000 frames ahead
        {0, 0},         // or at the start, whichever is first
        {59999, 60000}, // the silence behind the sample is quiet
        {std::numeric_limits<int32_t>::max(), 60000},
        {std::numeric_limits<int32_t>::min(), 0},
    };
    for (const bool stereo : {false, true}) {
        const auto step = CreateWaveSample(44100, 60000, stereo, 16);
        for (int32_t i = 0; i < 60000; ++i) {
            step->Set16BitSample(i, 2000, stereo ? 2 : 1);
            step->Set16BitSample(i, i < 55000 ? 2000 : -2000, 1);
        }
        for (const auto& [from, found] : kFound) {
            EXPECT_EQ(step->FindZeroCrossing(from), found);
        }
    }
    for (const int32_t channel : {1, 2}) {
        for (const auto& [depth, least] : {std::pair(16U, 1023 * 256), {24U, 0x3FFFF}}) {
            const auto loud = CreateWaveSample(44100, 200, true, depth);
            const std::vector<int32_t> values(400, 512000);
            loud->Set24BitFrames(0, 200, values.data());
            loud->Set24BitSample(100, least, channel); // just not quiet
            EXPECT_NE(loud->FindZeroCrossing(105), 100);
            loud->Set24BitSample(100, least - 1, channel);
            EXPECT_EQ(loud->FindZeroCrossing(105), 100);
        }
    }
}

TEST(WaveSample, ReplacesAChannelOfACloneAlone) {
    for (const uint32_t depth : {8U, 16U, 20U, 24U}) {
        const auto sample = MakeNoiseSample(44100, 10, false, depth, 1);
        EXPECT_EQ(sample->GetBitDepth(), depth <= 16 ? 16U : 24U);
        const auto source = MakeNoiseSample(44100, 6, false, depth, 2);
        auto padded = Values(*source, 1);
        padded.resize(10);
        sample->SetLoop(2, 3, 7);
        const auto clone = CloneWaveSample(*sample);
        EXPECT_EQ(std::tuple(clone->HasLoop(), clone->GetLoopMode(), clone->GetLoopStart(),
                             clone->GetLoopEnd()),
                  std::tuple(true, 2U, 3, 7));
        for (const int32_t channel : {2, 1}) {
            clone->ReplaceChannelFrom(*source, channel);
            EXPECT_EQ(Values(*clone, 3 - channel), Values(*sample, 1));
            EXPECT_EQ(Values(*clone, channel), padded);
            EXPECT_FALSE(sample->IsStereo());
        }
    }
}

} // namespace
} // namespace NSLOPDLL
