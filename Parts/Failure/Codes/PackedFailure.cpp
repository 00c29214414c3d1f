#include "Failure/Codes/PackedFailure.h"

#include "Failure/Chain/ObjectTypeWords.h"
#include "Failure/Raising/Raise.h"

#include <optional>
#include <stdexcept>

namespace NSLichen {

namespace {

// An index has eight bits to travel in.
constexpr uint32_t kIndexEnd = 256;

std::optional<SPackedFailure> FindType(const CFixedName& type,
                                       const SCustomObjectTypes& customTypes) {
    for (uint32_t i = 0; i < GetObjectTypeWordCount(); ++i) {
        if (GetObjectTypeWord(i) == type) {
            return SPackedFailure{0, kTargetGroup_Word, i};
        }
    }
    for (uint32_t i = 0; i < customTypes.fCount && i < kIndexEnd; ++i) {
        if (customTypes.fTypes[i] == type) {
            return SPackedFailure{0, kTargetGroup_Custom, i};
        }
    }
    return std::nullopt;
}

} // namespace

uint32_t PackFailure(const SPackedFailure& fields) {
    return (fields.fCode & 0x7Fu) << 24 | (fields.fGroup & 0xFFu) << 16 |
           (fields.fIndex & 0xFFu) << 8 | kTunnelMagic;
}

SPackedFailure UnpackFailure(uint32_t value) {
    return {value >> 24 & 0x7Fu, value >> 16 & 0xFFu, value >> 8 & 0xFFu};
}

bool IsPackedFailure(uint32_t value) {
    return (value & 0x80000000u) == 0 && (value & 0xFFu) == kTunnelMagic;
}

uint32_t EncodeFailureTarget(const SFailureTarget& target, const SCustomObjectTypes& customTypes) {
    SPackedFailure fields;
    if (!target.fType.IsEmpty()) {
        fields = FindType(target.fType, customTypes).value_or(SPackedFailure());
    }
    fields.fCode = static_cast<uint32_t>(target.fCode);
    return PackFailure(fields);
}

SFailureTarget DecodeFailureTarget(uint32_t value, const SCustomObjectTypes& customTypes) {
    const SPackedFailure fields = UnpackFailure(value);
    const auto code = static_cast<int32_t>(fields.fCode);
    if (!IsFailureCode(code)) {
        Raise(std::domain_error("Illegal Lichen failure_code!"));
    }
    switch (fields.fGroup) {
    case kTargetGroup_None:
        return {code, CFixedName()};
    case kTargetGroup_Word:
        return {code, GetObjectTypeWord(fields.fIndex)};
    case kTargetGroup_Custom:
        return {code, fields.fIndex < customTypes.fCount ? customTypes.fTypes[fields.fIndex]
                                                         : CFixedName()};
    default:
        Raise(std::domain_error("Unknown group for target object type!"));
    }
}

} // namespace NSLichen
