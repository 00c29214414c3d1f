#include "LoopLibrary/Render/Common/FloatMath.h"

#include <cmath>

namespace NSLOPDLL {

float FloatPow(float base, float exponent) noexcept {
    return static_cast<float>(::pow(static_cast<double>(base), static_cast<double>(exponent)));
}

float FloatExp(float value) noexcept {
    return static_cast<float>(::exp(static_cast<double>(value)));
}

float FloatLog(float value) noexcept {
    return static_cast<float>(::log(static_cast<double>(value)));
}

float FloatCos(float angle) noexcept {
    return static_cast<float>(::cos(static_cast<double>(angle)));
}

} // namespace NSLOPDLL
