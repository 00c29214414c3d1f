// The form for 64-bit ARM processors, all of which have NEON.
#pragma once

#include "LoopLibrary/Codec/TWIPForms.h"

namespace NSLOPDLL {

template <class Sample>
int64_t DecodeTWIPNeon(STWIPSpan& span, TWIPChannelState* channels,
                       const TTWIPOutput<Sample>& output, int64_t frameCount) noexcept;

} // namespace NSLOPDLL
