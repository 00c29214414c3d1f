// Character data for the systems that offer none: simple lower-casing of the basic plane, and the
// canonical decompositions of lower-case Latin, Greek and Cyrillic.
#pragma once

#include <cstdint>
#include <span>

namespace NSTextPackage {

/// Every fStep-th unit from fFirst to fLast has its lower case at fDelta from itself.
struct SCaseRun {
    uint16_t fFirst;
    uint16_t fLast;
    uint16_t fStep;
    int32_t fDelta;
};

/// One step: fBase may decompose further. fMark is 0 where a character is another form of fBase.
struct SDecomposition {
    uint16_t fUnit;
    uint16_t fBase;
    uint16_t fMark;
};

/// Both ascend by their first member.
std::span<const SCaseRun> CaseRuns();
std::span<const SDecomposition> Decompositions();

} // namespace NSTextPackage
