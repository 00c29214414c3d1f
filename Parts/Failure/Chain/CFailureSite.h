#pragma once

#include "Failure/Chain/CFixedName.h"

#include <cstdint>

namespace NSLichen {

/// Where a failure arose. Throw sites of this system pass a default site; what a site holds is
/// carried, copied and compared, and a trace line takes its number along.
struct CFailureSite {
    CFixedName fName1;
    TFixedText<512> fName2;
    TFixedText<129> fName3;
    int32_t fNumber = 0;

    friend bool operator==(const CFailureSite&, const CFailureSite&) = default;
};

} // namespace NSLichen
