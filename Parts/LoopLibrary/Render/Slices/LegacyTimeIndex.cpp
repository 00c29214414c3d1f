#include "LoopLibrary/Render/Slices/LegacyTimeIndex.h"

#include "LoopLibrary/Render/Tables/CDSPTablesHandle.h"

#include <algorithm>
#include <cmath>

namespace NSLOPDLL {

int32_t LegacyTimeIndex(int32_t value, bool isDecay, int32_t rate) {
    if (isDecay && value == 127) {
        return kEnvelopeTableSize - 1;
    }
    // The old scale has no 3.9 to take off, unlike the table: so do old files come out as they
    // always have.
    const float part = static_cast<float>(value) * 0.0078125F;
    const auto time = static_cast<float>(::pow(1.1, static_cast<double>(part) * 100.0) * 4.0);

    const CDSPTablesHandle tables(rate);
    const float* times = tables->GetTimes();
    const float* atOrAbove = std::lower_bound(times, times + kEnvelopeTableSize, time);
    auto index = static_cast<int32_t>(atOrAbove - times);
    if (index == kEnvelopeTableSize) {
        index = kEnvelopeTableSize - 1;
    }
    if (index > 0 && times[index] - time > time - times[index - 1]) {
        --index;
    }
    return index;
}

} // namespace NSLOPDLL
