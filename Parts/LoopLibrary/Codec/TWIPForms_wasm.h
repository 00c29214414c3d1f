// The form for the vectors of WebAssembly, which every engine that compiles the module has.
#pragma once

#include "LoopLibrary/Codec/TWIPForms.h"

namespace NSLOPDLL {

template <class Sample>
int64_t DecodeTWIPSimd128(STWIPSpan& span, TWIPChannelState* channels,
                          const TTWIPOutput<Sample>& output, int64_t frameCount) noexcept;

} // namespace NSLOPDLL
