#include "Failure/Classes/XClasses.h"
#include "Failure/Raising/RaisingSteps.h"

#include <array>
#include <cstring>
#include <new>
#include <stdexcept>
#include <typeinfo>

namespace NSLichen {

namespace {

using namespace NSLichenDetails;

template <class X>
bool Is(const std::exception& exception) {
    return dynamic_cast<const X*>(&exception) != nullptr;
}

// By name, since the type information of two modules need not be one object.
template <class X>
bool IsExactly(const std::exception& exception) {
    return std::strcmp(typeid(exception).name(), typeid(X).name()) == 0;
}

struct STest {
    bool (*fMatches)(const std::exception&);
    int32_t fCode;
};

// In each table the first match counts.
constexpr std::array kRuntimeErrorTests{
    STest{Is<std::overflow_error>, kFailureCode_RuntimeError_Overflow},
    STest{Is<std::underflow_error>, kFailureCode_RuntimeError_Underflow},
    STest{Is<std::range_error>, kFailureCode_RuntimeError_RangeError},
    STest{Is<XUnsupportedFormat>, kFailureCode_RuntimeError_UnsupportedFormat},
    STest{Is<XFormatViolation>, kFailureCode_RuntimeError_FormatViolation},
    STest{Is<XVersionTooOld>, kFailureCode_RuntimeError_VersionTooOld},
    STest{Is<XVersionTooNew>, kFailureCode_RuntimeError_VersionTooNew},
    STest{Is<XRead>, kFailureCode_RuntimeError_ReadFailure},
    STest{Is<XWrite>, kFailureCode_RuntimeError_WriteFailure},
    STest{Is<XOutOfSpace>, kFailureCode_RuntimeError_OutOfSpace},
    STest{Is<XOutOfItems>, kFailureCode_RuntimeError_OutOfItems},
    STest{Is<XCreate>, kFailureCode_RuntimeError_Create},
    STest{Is<XOpen>, kFailureCode_RuntimeError_Open},
    STest{Is<XClose>, kFailureCode_RuntimeError_Close},
    STest{Is<XDelete>, kFailureCode_RuntimeError_Delete},
    STest{Is<XResolve>, kFailureCode_RuntimeError_ResolveFailure},
    STest{Is<XNotFound>, kFailureCode_RuntimeError_NotFound},
    STest{Is<XAlreadyExists>, kFailureCode_RuntimeError_AlreadyExists},
    STest{Is<XPermission>, kFailureCode_RuntimeError_Permission},
    STest{Is<XLocked>, kFailureCode_RuntimeError_Locked},
    STest{Is<XReadOnly>, kFailureCode_RuntimeError_ReadOnly},
    STest{Is<XNotReady>, kFailureCode_RuntimeError_NotReady},
    STest{Is<XTimeout>, kFailureCode_RuntimeError_Timeout},
    STest{Is<XAbort>, kFailureCode_RuntimeError_Abort},
    STest{Is<XSilentAbort>, kFailureCode_RuntimeError_SilentAbort},
    STest{Is<std::runtime_error>, kFailureCode_RuntimeError}};

constexpr std::array kLogicErrorTests{
    STest{Is<std::domain_error>, kFailureCode_LogicError_Domain},
    STest{Is<std::invalid_argument>, kFailureCode_LogicError_InvalidArgument},
    STest{Is<std::length_error>, kFailureCode_LogicError_Length},
    STest{Is<std::out_of_range>, kFailureCode_LogicError_OutOfRange},
    STest{Is<XIllegalCallSequence>, kFailureCode_LogicError_IllegalCallSequence},
    STest{Is<XInvariantCorrupt>, kFailureCode_LogicError_InvariantCorrupt},
    STest{Is<std::logic_error>, kFailureCode_LogicError}};

constexpr std::array kOtherTests{STest{Is<XStdException>, kFailureCode_Exception},
                                 STest{Is<XTunneledError>, kFailureCode_TunneledError},
                                 STest{Is<XUnitTestFailure>, kFailureCode_UnitTestFailure},
                                 STest{IsExactly<std::exception>, kFailureCode_Exception}};

template <class TTests>
int32_t FirstMatch(const std::exception& exception, const TTests& tests, int32_t otherwise) {
    for (const STest& test : tests) {
        if (test.fMatches(exception)) {
            return test.fCode;
        }
    }
    return otherwise;
}

int32_t ClassifyCode(const std::exception& exception) {
    if (Is<std::bad_alloc>(exception)) {
        return kFailureCode_BadAlloc;
    }
    // An exception can be of both bases; the runtime errors are asked first.
    if (Is<std::runtime_error>(exception)) {
        return FirstMatch(exception, kRuntimeErrorTests, kFailureCode_RuntimeError);
    }
    if (Is<std::logic_error>(exception)) {
        return FirstMatch(exception, kLogicErrorTests, kFailureCode_LogicError);
    }
    return FirstMatch(exception, kOtherTests, kFailureCode_NonLichenException);
}

// The plain classes of the standard library hold no text and answer what their runtime likes.
std::string GetText(const std::exception& exception) {
    if (IsExactly<std::exception>(exception)) {
        return "Unknown exception";
    }
    if (IsExactly<std::bad_alloc>(exception)) {
        return "bad allocation";
    }
    // Classes of hosts may answer null.
    const char* const text = exception.what();
    return text != nullptr ? text : "";
}

} // namespace

SExceptionClass ClassifyException(const std::exception* exception) {
    if (exception == nullptr) {
        return {kFailureCode_UndefinedException, std::string()};
    }
    return {ClassifyCode(*exception), GetText(*exception)};
}

} // namespace NSLichen
