// Forms for x86-64 processors. A form may be called only where GetTWIPForms answers it.
#pragma once

#include "LoopLibrary/Codec/TWIPForms.h"

namespace NSLOPDLL {

template <class Sample>
int64_t DecodeTWIPSse2(STWIPSpan& span, TWIPChannelState* channels,
                       const TTWIPOutput<Sample>& output, int64_t frameCount) noexcept;

/// With BMI2 and LZCNT.
template <class Sample>
int64_t DecodeTWIPAvx2(STWIPSpan& span, TWIPChannelState* channels,
                       const TTWIPOutput<Sample>& output, int64_t frameCount) noexcept;

} // namespace NSLOPDLL
