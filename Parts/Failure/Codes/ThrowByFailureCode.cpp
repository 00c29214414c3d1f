#include "Failure/Codes/ThrowByFailureCode.h"

#include "Failure/Chain/FailureChain.h"
#include "Failure/Classes/XClasses.h"

#include <array>
#include <cstddef>

namespace NSLichen {

namespace {

using TThrow = void (*)(const CExceptionBodyMixin& body, const std::string& text);

template <class X>
[[noreturn]] void Throw(const CExceptionBodyMixin& body, const std::string& text) {
    throw X(body, text);
}

template <>
[[noreturn]] void Throw<NSLichenDetails::XStdBadAlloc>(const CExceptionBodyMixin& body,
                                                       const std::string& /*text*/) {
    throw NSLichenDetails::XStdBadAlloc(body);
}

// By code, from kFailureCode_NonLichenException on.
constexpr std::array<TThrow, kFailureCodeCount - 1> kThrows{
    Throw<NSLichenDetails::XStdException>,
    Throw<NSLichenDetails::XStdException>,
    Throw<NSLichenDetails::XTunneledError>,
    Throw<NSLichenDetails::XStdLogicError>,
    Throw<NSLichenDetails::XStdDomainError>,
    Throw<NSLichenDetails::XStdInvalidArgument>,
    Throw<NSLichenDetails::XStdLengthError>,
    Throw<NSLichenDetails::XStdOutOfRange>,
    Throw<XIllegalCallSequence>,
    Throw<XInvariantCorrupt>,
    Throw<NSLichenDetails::XStdBadAlloc>,
    Throw<NSLichenDetails::XStdRuntimeError>,
    Throw<NSLichenDetails::XStdOverflowError>,
    Throw<NSLichenDetails::XStdUnderflowError>,
    Throw<NSLichenDetails::XStdRangeError>,
    Throw<XUnsupportedFormat>,
    Throw<XFormatViolation>,
    Throw<XVersionTooOld>,
    Throw<XVersionTooNew>,
    Throw<XRead>,
    Throw<XWrite>,
    Throw<XOutOfSpace>,
    Throw<XOutOfItems>,
    Throw<XCreate>,
    Throw<XOpen>,
    Throw<XClose>,
    Throw<XDelete>,
    Throw<XResolve>,
    Throw<XNotFound>,
    Throw<XAlreadyExists>,
    Throw<XPermission>,
    Throw<XLocked>,
    Throw<XReadOnly>,
    Throw<XNotReady>,
    Throw<XTimeout>,
    Throw<XAbort>,
    Throw<XSilentAbort>,
    Throw<XUnitTestFailure>};

} // namespace

void ThrowByFailureCode(int32_t code, const CExceptionBodyMixin& body, const std::string& text) {
    if (IsFailureCode(code) && code != kFailureCode_UndefinedException) {
        kThrows[static_cast<std::size_t>(code - kFailureCode_NonLichenException)](body, text);
    }
    // NOLINTNEXTLINE(hicpp-exception-baseclass): an integer, because there is no class to name.
    throw static_cast<int>(kFailureCode_UndefinedException);
}

void ThrowFailureBody(const CExceptionBodyMixin& body) {
    const CFailureItem primary = GetPrimaryFailureItem(body);
    ThrowByFailureCode(primary.fCode, body, primary.fText);
}

} // namespace NSLichen
