#include "Failure/Chain/PartKeys.h"

namespace NSLichen {

CFailurePart TargetObjectTypePart(const CFixedName& word) {
    return {TargetObjectTypeKey(), CFailureValue::FromWord(word)};
}

CFailurePart TargetObjectIdPart(const CFailureValue& id) {
    return {TargetObjectIdKey(), id};
}

CFailurePart ErrorCodePart(int64_t code) {
    return {ErrorCodeKey(), CFailureValue::FromInteger(code)};
}

CFailurePart ErrorStringPart(const std::string& text) {
    return {ErrorStringKey(), CFailureValue::FromText(text)};
}

CFailurePart ErrorStringPart(const std::u16string& text) {
    return {ErrorStringKey(), CFailureValue::FromWideText(text)};
}

CFailurePart VersionNumberPart(int64_t version) {
    return {VersionNumberKey(), CFailureValue::FromInteger(version)};
}

CFailurePart VersionStringPart(const std::string& text) {
    return {VersionStringKey(), CFailureValue::FromText(text)};
}

CFailurePart SecondaryObjectTypePart(const CFixedName& word) {
    return {SecondaryObjectTypeKey(), CFailureValue::FromWord(word)};
}

CFailurePart SecondaryObjectIdPart(const CFailureValue& id) {
    return {SecondaryObjectIdKey(), id};
}

} // namespace NSLichen
