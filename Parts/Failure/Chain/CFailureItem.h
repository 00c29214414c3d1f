#pragma once

#include "Failure/Chain/CFailureSite.h"
#include "Failure/Chain/CFailureValue.h"
#include "Failure/Codes/FailureCodes.h"

#include <cstdint>
#include <string>
#include <vector>

namespace NSLichen {

/// A named detail of a failure.
struct CFailurePart {
    CFixedName fKey;
    CFailureValue fValue;

    friend bool operator==(const CFailurePart&, const CFailurePart&) = default;
};

/// One link of a failure's chain: a failure of its own, or, with kFailureCode_UndefinedException,
/// context for the one before it. Parts stand in order of addition.
struct CFailureItem {
    CFailureSite fSite;
    int32_t fCode = kFailureCode_UndefinedException;
    std::string fText;
    std::vector<CFailurePart> fParts;

    friend bool operator==(const CFailureItem&, const CFailureItem&) = default;
};

} // namespace NSLichen
