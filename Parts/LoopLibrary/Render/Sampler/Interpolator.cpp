#include "LoopLibrary/Render/Sampler/Interpolator.h"

namespace NSLOPDLL {

bool HasAvx2() noexcept {
    return __builtin_cpu_supports("avx2") != 0;
}

InterpolateFunction ChooseInterpolator() noexcept {
    return HasAvx2() ? InterpolateAvx2 : InterpolateSse2;
}

} // namespace NSLOPDLL
