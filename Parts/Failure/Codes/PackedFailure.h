#pragma once

#include "Failure/Chain/CFixedName.h"
#include "Failure/Codes/FailureCodes.h"
#include "Failure/Raising/CFailureModule.h"

#include <cstdint>

namespace NSLichen {

/// A failure in 31 bits: code (bits 30 to 24), group and index of the target's type (23 to 16 and
/// 15 to 8), and a mark in the low byte. Bit 31 stays clear.
constexpr uint32_t kTunnelMagic = 186;

/// Where the type of the target is looked up.
enum ETargetGroup : uint32_t {
    kTargetGroup_None = 0,
    kTargetGroup_Word = 1,
    kTargetGroup_Custom = 2
};

struct SPackedFailure {
    uint32_t fCode = 0;  // 0 to 127
    uint32_t fGroup = 0; // 0 to 255
    uint32_t fIndex = 0; // 0 to 255

    friend bool operator==(const SPackedFailure&, const SPackedFailure&) = default;
};

/// Bits that a field has no room for are dropped.
uint32_t PackFailure(const SPackedFailure& fields);
SPackedFailure UnpackFailure(uint32_t value);
bool IsPackedFailure(uint32_t value);

/// What failed, and what it was about; an empty type when that is not known.
struct SFailureTarget {
    int32_t fCode = kFailureCode_UndefinedException;
    CFixedName fType;

    friend bool operator==(const SFailureTarget&, const SFailureTarget&) = default;
};

/// A type in neither table is dropped.
uint32_t EncodeFailureTarget(const SFailureTarget& target, const SCustomObjectTypes& customTypes);
/// Raises std::domain_error for a code or a group that does not exist. An index past its table
/// gives no type: the failure is worth more than the word.
SFailureTarget DecodeFailureTarget(uint32_t value, const SCustomObjectTypes& customTypes);

} // namespace NSLichen
