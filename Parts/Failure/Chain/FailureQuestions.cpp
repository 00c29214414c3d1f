#include "Failure/Chain/FailureQuestions.h"

#include "Failure/Chain/FailureChain.h"
#include "Failure/Chain/PartKeys.h"

#include <optional>

namespace NSLichen {

CFailureValue GetPartValue(const CExceptionBodyMixin& body, const CFixedName& key) {
    const std::optional<CFailureItem> item = FindPrimaryFailureItem(body);
    if (item.has_value()) {
        for (const CFailurePart& part : item->fParts) {
            if (part.fKey == key) {
                return part.fValue;
            }
        }
    }
    return CFailureValue();
}

std::u16string GetPartValueText(const CExceptionBodyMixin& body, const CFixedName& key) {
    return ToWideText(GetPartValue(body, key));
}

bool HasPartValue(const CExceptionBodyMixin& body, const CFixedName& key,
                  const CFailureValue& value) {
    return GetPartValue(body, key) == value;
}

bool HasTargetObjectType(const CExceptionBodyMixin& body, const CFixedName& word) {
    return HasPartValue(body, TargetObjectTypeKey(), CFailureValue::FromWord(word));
}

} // namespace NSLichen
