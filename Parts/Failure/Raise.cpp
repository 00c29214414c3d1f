#include "Failure/Raise.h"

#include "Failure/PartKeys.h"
#include "Failure/RaisingSteps.h"

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
