#include "Failure/Codes/IntegerForm.h"

#include "Failure/Chain/FailureChain.h"
#include "Failure/Chain/FailureQuestions.h"
#include "Failure/Chain/PartKeys.h"
#include "Failure/Raising/Raise.h"
#include "Failure/Raising/RaisingSteps.h"

namespace NSLichen {

namespace {

[[noreturn]] void RaiseItem(const CFailureItem& item) {
    CFailureRecord record;
    record.fItem = item;
    RaiseRecord(record);
}

void AddTarget(CFailureItem& item, const CFixedName& type) {
    if (!type.IsEmpty()) {
        item.fParts.push_back(TargetObjectTypePart(type));
    }
}

} // namespace

int32_t EncodeExceptionToInteger(const std::exception& exception, const SIntegerRange& range,
                                 const SFailureCodeMapEntry* map, const CFailureSite& site) {
    CExceptionBodyMixin body = GetExceptionBody(exception);
    if (body.fEmpty) {
        const SExceptionClass classified = ClassifyException(&exception);
        body = CombineBody(body, CFailureItem{site, classified.fCode, classified.fText, {}});
    }
    const int32_t code = GetPrimaryFailureItem(body).fCode;
    if (code == kFailureCode_TunneledError) {
        const CFailureValue foreign = GetPartValue(body, ErrorCodeKey());
        const bool known = foreign.GetKind() == kValueKind_Integer;
        return static_cast<int32_t>(range.fFirst +
                                    (known ? static_cast<uint32_t>(foreign.GetInteger()) : 0u));
    }
    const CFailureValue type = GetPartValue(body, TargetObjectTypeKey());
    const SFailureTarget target{code,
                                type.GetKind() == kValueKind_Word ? type.GetWord() : CFixedName()};
    return MapFailureToInteger(target, range, map, GetCustomObjectTypes());
}

void ThrowForIntegerPacked(int32_t value, const SIntegerRange& range,
                           const SFailureCodeMapEntry* map, const CFailureSite& site) {
    const SFailureTarget target = MapIntegerToFailure(value, range, map, GetCustomObjectTypes());
    CFailureItem item{site, target.fCode, {}, {}};
    AddTarget(item, target.fType);
    RaiseItem(item);
}

void ThrowForIntegerTunneled(int32_t value, const SIntegerRange& range,
                             const SFailureCodeMapEntry* map, const CFailureSite& site) {
    CFailureItem item{site, kFailureCode_TunneledError, {}, {}};
    if (const SFailureCodeMapEntry* const entry = FindMappedValue(map, value)) {
        item.fCode = entry->fCode;
        AddTarget(item, entry->fType);
    } else if (range.Contains(value)) {
        item.fParts.push_back(ErrorCodePart(static_cast<uint32_t>(value) - range.fFirst));
    } else {
        Raise(std::exception());
    }
    RaiseItem(item);
}

} // namespace NSLichen
