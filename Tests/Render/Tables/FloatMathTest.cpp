#include "LoopLibrary/Render/Common/FloatMath.h"

#include <gtest/gtest.h>

#include <cmath>

namespace NSLOPDLL {
namespace {

// The exact values rounded once, by the forms of extended precision. The C libraries' float forms
// miss some of these.
TEST(FloatMath, RoundsTheExactValues) {
    constexpr int32_t kSteps = 50000;
    for (int32_t i = 1; i <= kSteps; ++i) {
        const float part = static_cast<float>(i) / kSteps;
        const auto exact = static_cast<long double>(part);
        EXPECT_EQ(FloatPow(0.25F, part), static_cast<float>(std::pow(0.25L, exact))) << part;
        EXPECT_EQ(FloatExp(-4.0F * part), static_cast<float>(std::exp(-4.0L * exact))) << part;
        EXPECT_EQ(FloatLog(part), static_cast<float>(std::log(exact))) << part;
        EXPECT_EQ(FloatCos(3.0F * part),
                  static_cast<float>(std::cos(static_cast<long double>(3.0F * part))))
            << part;
    }
}

} // namespace
} // namespace NSLOPDLL
