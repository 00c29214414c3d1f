#pragma once

#include "Failure/Chain/CFailureItem.h"
#include "Failure/Chain/CFixedName.h"

#include <cstdint>
#include <string>

namespace NSLichen {

/// The vocabulary of a failure's parts.
constexpr CFixedName TargetObjectTypeKey() {
    return CFixedName("target_object_type");
}
constexpr CFixedName TargetObjectIdKey() {
    return CFixedName("target_object_id");
}
constexpr CFixedName ErrorCodeKey() {
    return CFixedName("error_code");
}
constexpr CFixedName ErrorStringKey() {
    return CFixedName("error_string");
}
constexpr CFixedName VersionNumberKey() {
    return CFixedName("version_number");
}
constexpr CFixedName VersionStringKey() {
    return CFixedName("version_string");
}
constexpr CFixedName SecondaryObjectTypeKey() {
    return CFixedName("secondary_object_type");
}
constexpr CFixedName SecondaryObjectIdKey() {
    return CFixedName("secondary_object_id");
}

/// Parts of each key, with a value of the kind that belongs to it.
CFailurePart TargetObjectTypePart(const CFixedName& word);
CFailurePart TargetObjectIdPart(const CFailureValue& id);
CFailurePart ErrorCodePart(int64_t code);
CFailurePart ErrorStringPart(const std::string& text);
CFailurePart ErrorStringPart(const std::u16string& text);
CFailurePart VersionNumberPart(int64_t version);
CFailurePart VersionStringPart(const std::string& text);
CFailurePart SecondaryObjectTypePart(const CFixedName& word);
CFailurePart SecondaryObjectIdPart(const CFailureValue& id);

} // namespace NSLichen
