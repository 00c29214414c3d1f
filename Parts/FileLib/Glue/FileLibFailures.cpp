#include "FileLib/Glue/FileLibFailures.h"

#include "Failure/Chain/ObjectTypeWords.h"
#include "Failure/Codes/FailureMap.h"
#include "Failure/Codes/IntegerForm.h"
#include "Failure/Raising/IByteReader.h"
#include "FileLib/Interface/FileLibStatus.h"

#include <exception>

namespace NSFileLib {

namespace {

using namespace NSLichen;

// Walked in order both ways: a row with a type stands before its twin for any type, and of two rows
// for one failure the first is what it becomes.
constexpr SFailureCodeMapEntry kFailureMap[] = {
    {kFailureCode_BadAlloc, {}, kFileLibStatus_OutOfMemory},
    {kFailureCode_LogicError_InvalidArgument, {}, kFileLibStatus_BadArgument},
    {kFailureCode_LogicError_InvariantCorrupt, {}, kFileLibStatus_Invariant},
    {kFailureCode_LogicError_IllegalCallSequence, {}, kFileLibStatus_IllegalCallSequence},
    {kFailureCode_LogicError, {}, kFileLibStatus_LogicError},
    {kFailureCode_RuntimeError_OutOfSpace, DiskWord(), kFileLibStatus_OutOfSpace},
    {kFailureCode_RuntimeError_OutOfSpace, {}, kFileLibStatus_OutOfSpace},
    {kFailureCode_RuntimeError_Create, {}, kFileLibStatus_Create},
    {kFailureCode_RuntimeError_Locked, {}, kFileLibStatus_Locked},
    {kFailureCode_RuntimeError_NotReady, {}, kFileLibStatus_NotReady},
    {kFailureCode_RuntimeError_Permission, {}, kFileLibStatus_Permission},
    {kFailureCode_RuntimeError_ReadFailure, {}, kFileLibStatus_Read},
    {kFailureCode_RuntimeError_WriteFailure, {}, kFileLibStatus_Write},
    {kFailureCode_RuntimeError_FormatViolation, {}, kFileLibStatus_FormatViolation},
    {kFailureCode_RuntimeError_UnsupportedFormat, {}, kFileLibStatus_UnsupportedFormat},
    {kFailureCode_RuntimeError_ResolveFailure, ReferenceWord(), kFileLibStatus_ResolveReference},
    {kFailureCode_RuntimeError_ResolveFailure, {}, kFileLibStatus_Resolve},
    {kFailureCode_RuntimeError_NotFound, {}, kFileLibStatus_NotFound},
    {kFailureCode_RuntimeError_NotFound, {}, kFileLibStatus_NotFoundAlias},
    {kFailureCode_RuntimeError_OutOfItems, FileHandleWord(), kFileLibStatus_OutOfItems},
    {kFailureCode_RuntimeError_OutOfItems, {}, kFileLibStatus_OutOfItems},
    {kFailureCode_RuntimeError_RangeError, FileHandleWord(), kFileLibStatus_Range},
    {kFailureCode_RuntimeError_RangeError, {}, kFileLibStatus_Range},
    {kFailureCode_RuntimeError, {}, kFileLibStatus_RuntimeError},
    {kFailureMapEnd, {}, kFileLibStatus_OK}};

constexpr SIntegerRange kRange{kFileLibTunnelFirst, 0xFFFFFFFF};

} // namespace

void ThrowIfFileLibError(int32_t status, const CFailureSite& site) {
    if (status != kFileLibStatus_OK) {
        ThrowForIntegerPacked(status, kRange, kFailureMap, site);
    }
}

void ThrowIfByteStreamError(int32_t status, const CFailureSite& site) {
    if (status != kByteStreamStatus_OK) {
        ThrowForIntegerTunneled(status, kRange, kFailureMap, site);
    }
}

int32_t GetCurrentExceptionCode(const CFailureSite& site) {
    // Rethrowing nothing would terminate.
    if (std::current_exception() == nullptr) {
        return kFileLibStatus_RuntimeError;
    }
    try {
        throw;
    } catch (const std::exception& exception) {
        return EncodeExceptionToInteger(exception, kRange, kFailureMap, site);
    } catch (...) {
        return kFileLibStatus_RuntimeError;
    }
}

} // namespace NSFileLib
