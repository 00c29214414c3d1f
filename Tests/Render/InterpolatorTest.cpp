#include "LoopLibrary/Render/Interpolator.h"
#include "LoopLibrary/Render/VoiceFetch.h"
#include "Tests/Render/RenderTestTools.h"

#include <gtest/gtest.h>

#include <vector>

namespace NSLOPDLL {
namespace {

CTestBlock Interpolate(InterpolateFunction form, const std::vector<float>& left,
                       const std::vector<float>& right, uint32_t phase, uint32_t step) {
    CTestBlock block;
    std::vector<float> gains;
    for (size_t i = 0; i < 64; ++i) {
        block.fLeft[i] = 0.3F;
        block.fRight[i] = -0.7F * static_cast<float>(i);
        gains.push_back(0.1F + static_cast<float>(i) * 0.0137F);
    }
    form({left.data(), right.data(), phase, step, gains.data(), block.Buffers()});
    return block;
}

// The arrays end two floats behind the last tap, so that a sanitizer sees a form that reads
// further.
TEST(Interpolator, AllFormsGiveTheSameBits) {
    CTestNoise noise(5);
    std::vector<uint32_t> steps = {0, 1, 16383, 16384, 16385, 8192, kLargestStep};
    for (int32_t i = 0; i < 200; ++i) {
        steps.push_back(noise.Next() % (i < 100 ? 40000U : kLargestStep));
    }
    for (const uint32_t step : steps) {
        const uint32_t phase = step == kLargestStep ? 16383 : noise.Next() & 0x3fff;
        std::vector<float> left(((phase + 63 * step) >> 14) + 8);
        std::vector<float> right(left.size());
        for (size_t i = 0; i < left.size(); ++i) {
            left[i] = static_cast<float>(noise.Within(-8388608, 8388607)) * 0x1p-23F;
            right[i] = static_cast<float>(noise.Within(-8388608, 8388607)) * 0x1p-23F;
        }
        const CTestBlock stereo = Interpolate(InterpolateScalar, left, right, phase, step);
        const CTestBlock mono = Interpolate(InterpolateScalar, left, left, phase, step);
        for (const InterpolateFunction form : {InterpolateSse2, InterpolateAvx2}) {
            if (form == InterpolateAvx2 && !HasAvx2()) {
                continue;
            }
            ASSERT_EQ(Interpolate(form, left, right, phase, step), stereo) << step;
            ASSERT_EQ(Interpolate(form, left, left, phase, step), mono) << step;
        }
    }
    EXPECT_EQ(ChooseInterpolator(), HasAvx2() ? InterpolateAvx2 : InterpolateSse2);
}

} // namespace
} // namespace NSLOPDLL
