#include "LoopLibrary/Public/FailureToResult.h"

#include "Failure/Classes/XClasses.h"

#include <cstring>
#include <new>
#include <stdexcept>

namespace NSLOPDLL {

namespace {

// This very text, and no other, is the loop of no length.
constexpr char kZeroLengthText[] = "zero loop length";

template <class X>
bool Is(const std::exception& exception) noexcept {
    return dynamic_cast<const X*>(&exception) != nullptr;
}

} // namespace

LOPResult ResultOfException(const std::exception& exception) noexcept {
    if (Is<NSLichen::XFormatViolation>(exception)) {
        return std::strcmp(exception.what(), kZeroLengthText) == 0 ? kLOPResult_ZeroLoopLength
                                                                   : kLOPResult_FileCorrupt;
    }
    if (Is<NSLichen::XUnsupportedFormat>(exception)) {
        return kLOPResult_FileCorrupt;
    }
    if (Is<NSLichen::XVersionTooNew>(exception)) {
        return kLOPResult_FileTooNew;
    }
    if (Is<NSLichen::XRead>(exception)) {
        return kLOPResult_FileCorrupt;
    }
    if (Is<std::bad_alloc>(exception)) {
        return kLOPResult_OutOfMemory;
    }
    if (Is<NSLichen::XAbort>(exception) || Is<NSLichen::XSilentAbort>(exception)) {
        return kLOPResult_Aborted;
    }
    if (Is<std::domain_error>(exception)) {
        return kLOPResult_FileCorrupt;
    }
    return kLOPResult_Undefined;
}

LOPResult ResultOfCurrentException() noexcept {
    try {
        throw;
    } catch (const std::exception& exception) {
        return ResultOfException(exception);
    } catch (...) {
        return kLOPResult_Undefined;
    }
}

LOPResult UndefinedResult() noexcept {
    return kLOPResult_Undefined;
}

} // namespace NSLOPDLL
