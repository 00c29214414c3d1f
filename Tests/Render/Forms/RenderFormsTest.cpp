#include "LoopLibrary/Render/Forms/RenderForms.h"
#include "LoopLibrary/Render/Sampler/TailShape.h"
#include "Tests/Render/RenderTestTools.h"

#include <algorithm>
#include <bit>
#include <limits>

namespace NSLOPDLL {
namespace {

// Everything that the bulk loops of a form make of `count` values, floats by their bits. The arrays
// are as long as the count, so that a sanitizer sees a form that goes further.
std::vector<int64_t> RunBulk(const SRenderForm& form, const std::vector<int32_t>& words,
                             const std::vector<float>& floats, int32_t count) {
    const auto size = static_cast<size_t>(count);
    std::vector<int64_t> found;
    const auto note = [&found](const auto& values) {
        for (const auto value : values) {
            if constexpr (std::is_same_v<decltype(value), const float>) {
                found.push_back(std::bit_cast<int32_t>(value));
            } else {
                found.push_back(value);
            }
        }
    };
    const std::vector<int32_t> samples24(words.begin(), words.begin() + count);
    std::vector<int16_t> samples16(size);
    form.fNarrow24(samples24.data(), count, samples16.data());
    note(samples16);
    const SPeaks peaks = form.fFindPeaks(samples16.data(), count);
    note(std::array{peaks.fLow, peaks.fHigh});

    std::vector<float> values(size);
    form.fReadFloats16(samples16.data(), count, values.data());
    note(values);
    form.fReadFloats24(samples24.data(), count, values.data());
    note(values);

    values.assign(floats.begin(), floats.begin() + count);
    std::vector<int32_t> stored(size);
    form.fStoreFloats16(values.data(), count, samples16.data());
    form.fStoreFloats24(values.data(), count, stored.data());
    note(samples16);
    note(stored);

    std::replace_if(
        values.begin(), values.end(), [](float value) { return value != value; }, 0.5F);
    std::vector<float> right(values.rbegin(), values.rend());
    // The second reaches the floor of the fade within the longer counts.
    for (const float fadeStep : {0.001F, 0.021F}) {
        for (const float levelStep : {0.0F, 0.013F, -0.017F}) {
            CTailShape shape{1.0F, fadeStep, 0.75F, levelStep};
            form.fShapeTail(shape, count, values.data(), count % 3 == 0 ? nullptr : right.data());
            note(std::array{shape.fFade, shape.fLevel});
        }
    }
    note(values);
    note(right);
    form.fReverse(values.data(), count);
    note(values);
    return found;
}

TEST(RenderForms, BulkLoopsGiveTheSameBits) {
    CTestNoise noise(7);
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    const std::vector<float> ends = {0.0F,         -0.0F,
                                     1.0F,         -1.0F,
                                     2.0F,         -2.0F,
                                     kInfinity,    -kInfinity,
                                     1e38F,        -1e38F,
                                     1e-40F,       -1.000015F,
                                     0.5F / 32767, std::numeric_limits<float>::quiet_NaN()};
    std::vector<int32_t> words(64);
    std::vector<float> floats(64);
    for (int32_t count = 0; count < 64; ++count) {
        // Words of damaged streams have more than 24 bits.
        std::generate(words.begin(), words.end(),
                      [&] { return static_cast<int32_t>(noise.Next() << 8 ^ noise.Next()); });
        std::generate(floats.begin(), floats.end(), [&] {
            const uint32_t choice = noise.Next() % 40;
            return choice < ends.size() ? ends[choice] : 1.1F * noise.NextFloat();
        });
        const auto plain = RunBulk(GetRenderForms().front(), words, floats, count);
        for (const SRenderForm& form : GetRenderForms()) {
            ASSERT_EQ(RunBulk(form, words, floats, count), plain) << form.fName << count;
        }
    }
}

TEST(RenderForms, FourRampsGiveTheSameBits) {
    for (const SRenderForm& form : GetRenderForms()) {
        CTestNoise noise(8);
        float values[4];
        float steps[4];
        for (size_t ramp = 0; ramp < 4; ++ramp) {
            values[ramp] = noise.NextFloat();
            steps[ramp] = noise.NextFloat() / 64.0F;
        }
        float expected[4];
        std::copy_n(values, 4, expected);
        float rows[4][kBlockFrames];
        float* const targets[4] = {rows[0], rows[1], rows[2], rows[3]};
        form.fFillFourRamps(targets, values, steps);
        for (size_t ramp = 0; ramp < 4; ++ramp) {
            for (const float value : rows[ramp]) {
                ASSERT_EQ(value, expected[ramp]) << form.fName << ramp;
                expected[ramp] += steps[ramp];
            }
            EXPECT_EQ(values[ramp], expected[ramp]);
        }
    }
}

TEST(RenderForms, TheFastestIsInUseUnlessOneIsForced) {
    EXPECT_EQ(&GetRenderForm(), &GetRenderForms().back());
    EXPECT_TRUE(ForceRenderForm("plain"));
    EXPECT_FALSE(ForceRenderForm("none"));
    EXPECT_STREQ(GetRenderForm().fName, "plain");
    EXPECT_TRUE(ForceRenderForm(""));
    EXPECT_EQ(&GetRenderForm(), &GetRenderForms().back());
}

} // namespace
} // namespace NSLOPDLL
