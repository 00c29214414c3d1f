#include "Failure/Raising/RaisingSteps.h"

#include "Failure/Chain/FailureChain.h"
#include "Failure/Codes/ThrowByFailureCode.h"

namespace NSLichen {

CExceptionBodyMixin GetExceptionBody(const std::exception& exception) {
    const auto* body = dynamic_cast<const CExceptionBodyMixin*>(&exception);
    return body != nullptr ? *body : CExceptionBodyMixin();
}

void AttachException(CFailureRecord& record, const std::exception& exception) {
    record.fBody = GetExceptionBody(exception);
    if (record.fBody.fEmpty) {
        const SExceptionClass classified = ClassifyException(&exception);
        record.fItem = CFailureItem{record.fItem.fSite, classified.fCode, classified.fText, {}};
    }
}

void AddPartToRecord(CFailureRecord& record, const CFailurePart& part) {
    record.fItem.fParts.push_back(part);
}

void RaiseRecord(const CFailureRecord& record) {
    const CExceptionBodyMixin body =
        record.fBody.fEmpty ? CExceptionBodyMixin(record.fItem.fSite) : record.fBody;
    ThrowFailureBody(CombineBody(body, record.fItem));
}

} // namespace NSLichen
