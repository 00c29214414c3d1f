#include "Failure/Codes/FailureMap.h"

#include "Failure/Raising/Raise.h"

#include <exception>

namespace NSLichen {

const SFailureCodeMapEntry* FindMappedValue(const SFailureCodeMapEntry* map, int32_t value) {
    if (map != nullptr) {
        for (; map->fCode != kFailureMapEnd; ++map) {
            if (map->fMappedValue == value) {
                return map;
            }
        }
    }
    return nullptr;
}

int32_t MapFailureToInteger(const SFailureTarget& target, const SIntegerRange& range,
                            const SFailureCodeMapEntry* map,
                            const SCustomObjectTypes& customTypes) {
    if (map != nullptr) {
        for (; map->fCode != kFailureMapEnd; ++map) {
            if (map->fCode == target.fCode &&
                (map->fType == target.fType || map->fType.IsEmpty())) {
                return map->fMappedValue;
            }
        }
    }
    return static_cast<int32_t>(range.fFirst + EncodeFailureTarget(target, customTypes));
}

SFailureTarget MapIntegerToFailure(int32_t value, const SIntegerRange& range,
                                   const SFailureCodeMapEntry* map,
                                   const SCustomObjectTypes& customTypes) {
    if (const SFailureCodeMapEntry* const entry = FindMappedValue(map, value)) {
        return {entry->fCode, entry->fType};
    }
    const uint32_t packed = static_cast<uint32_t>(value) - range.fFirst;
    if (!range.Contains(value) || !IsPackedFailure(packed)) {
        Raise(std::exception());
    }
    return DecodeFailureTarget(packed, customTypes);
}

} // namespace NSLichen
