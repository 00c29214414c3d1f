#include "LoopLibrary/Render/Sampler/TailShape.h"

namespace NSLOPDLL {

void ShapeTailPlain(CTailShape& shape, int32_t count, float* left, float* right) noexcept {
    for (int32_t i = 0; i < count; ++i) {
        left[i] = left[i] * shape.fFade * shape.fLevel;
        if (right != nullptr) {
            right[i] = right[i] * shape.fFade * shape.fLevel;
        }
        shape.Advance();
    }
}

} // namespace NSLOPDLL
