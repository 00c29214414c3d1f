#include "Failure/Raising/Raise.h"

#include "Failure/Chain/PartKeys.h"
#include "Failure/Raising/RaisingSteps.h"

namespace NSLichen {

void RaiseException(const std::exception& exception) {
    CFailureRecord record{CFailureSite()};
    AttachException(record, exception);
    RaiseRecord(record);
}

void RaiseExceptionWithTarget(const std::exception& exception, const CFixedName& targetObjectType) {
    CFailureRecord record{CFailureSite()};
    AttachException(record, exception);
    AddPartToRecord(record, TargetObjectTypePart(targetObjectType));
    RaiseRecord(record);
}

} // namespace NSLichen
