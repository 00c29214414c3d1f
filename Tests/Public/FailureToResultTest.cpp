#include "LoopLibrary/Public/FailureToResult.h"

#include "Failure/Classes/XClasses.h"

#include <functional>
#include <gtest/gtest.h>
#include <new>
#include <stdexcept>

namespace {

using namespace NSLichen;

template <class X>
std::function<void()> Throwing(const X& exception) {
    return [exception] { throw exception; }; // NOLINT(cert-err60-cpp): failures carry texts
}

struct SDerivedAbort : XAbort {
    using XAbort::XAbort;
};

TEST(FailureToResult, MapsByClassAndThatOneText) {
    struct SRow {
        std::function<void()> fThrow;
        LOPResult fExpected;
    };
    const SRow rows[] = {
        {Throwing(XFormatViolation("zero loop length")), kLOPResult_ZeroLoopLength},
        {Throwing(XFormatViolation("zero loop length ")), kLOPResult_FileCorrupt},
        {Throwing(XFormatViolation("")), kLOPResult_FileCorrupt},
        {Throwing(XUnsupportedFormat("zero loop length")), kLOPResult_FileCorrupt},
        {Throwing(XVersionTooNew("")), kLOPResult_FileTooNew},
        {Throwing(XVersionTooOld("")), kLOPResult_Undefined},
        {Throwing(XRead("")), kLOPResult_FileCorrupt},
        {Throwing(XWrite("")), kLOPResult_Undefined},
        {Throwing(std::bad_alloc()), kLOPResult_OutOfMemory},
        {Throwing(std::bad_array_new_length()), kLOPResult_OutOfMemory},
        {Throwing(XAbort("")), kLOPResult_Aborted},
        {Throwing(SDerivedAbort("")), kLOPResult_Aborted},
        {Throwing(XSilentAbort("")), kLOPResult_Aborted},
        {Throwing(std::domain_error("bad format")), kLOPResult_FileCorrupt},
        {Throwing(std::logic_error("")), kLOPResult_Undefined},
        {Throwing(std::exception()), kLOPResult_Undefined},
        {Throwing(5), kLOPResult_Undefined},
    };
    for (const SRow& row : rows) {
        LOPResult result = kLOPResult_OK;
        try {
            row.fThrow();
        } catch (...) {
            result = NSLOPDLL::ResultOfCurrentException();
        }
        EXPECT_EQ(result, row.fExpected) << &row - rows;
    }
}

} // namespace
