#pragma once

#include "Failure/Codes/PackedFailure.h"

#include <cstdint>

namespace NSLichen {

/// A row of a failure map: what a client of integers calls a failure. An empty type stands for any
/// target. A map is an array of rows, the first match counts, and a row with kFailureMapEnd ends
/// it.
struct SFailureCodeMapEntry {
    int32_t fCode;
    CFixedName fType;
    int32_t fMappedValue;
};

/// The half-open range of integers that carry packed or tunnelled failures.
struct SIntegerRange {
    uint32_t fFirst;
    uint32_t fEnd;

    constexpr bool Contains(int32_t value) const {
        return static_cast<uint32_t>(value) >= fFirst && static_cast<uint32_t>(value) < fEnd;
    }
};

// The map may be null in each of these.

/// The row that names the value; null when there is none.
const SFailureCodeMapEntry* FindMappedValue(const SFailureCodeMapEntry* map, int32_t value);
/// The mapped value of the first row that matches; otherwise the packed failure in the range.
int32_t MapFailureToInteger(const SFailureTarget& target, const SIntegerRange& range,
                            const SFailureCodeMapEntry* map, const SCustomObjectTypes& customTypes);
/// The way back. Raises a plain std::exception for an integer that names no failure.
SFailureTarget MapIntegerToFailure(int32_t value, const SIntegerRange& range,
                                   const SFailureCodeMapEntry* map,
                                   const SCustomObjectTypes& customTypes);

} // namespace NSLichen
