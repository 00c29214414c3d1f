#include "Failure/ThrowByFailureCode.h"

#include <gtest/gtest.h>

#include <ios>
#include <new>
#include <stdexcept>
#include <typeinfo>

#include "Failure/RaisingSteps.h"
#include "Failure/XClasses.h"

using namespace NSLichen;
using namespace NSLichenDetails;

namespace {

class XForeign : public std::exception {};
class XForeignRuntime : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

} // namespace

TEST(ThrowByFailureCode, ThrowsTheClassOfEachCode) {
    const struct {
        int32_t fCode;
        const std::type_info& fClass;
        int32_t fClassified;
    } rows[] = {
        {6, typeid(XStdException), 7},
        {7, typeid(XStdException), 7},
        {8, typeid(XTunneledError), 8},
        {9, typeid(XStdLogicError), 9},
        {10, typeid(XStdDomainError), 10},
        {11, typeid(XStdInvalidArgument), 11},
        {12, typeid(XStdLengthError), 12},
        {13, typeid(XStdOutOfRange), 13},
        {14, typeid(XIllegalCallSequence), 14},
        {15, typeid(XInvariantCorrupt), 15},
        {16, typeid(XStdBadAlloc), 16},
        {17, typeid(XStdRuntimeError), 17},
        {18, typeid(XStdOverflowError), 18},
        {19, typeid(XStdUnderflowError), 19},
        {20, typeid(XStdRangeError), 20},
        {21, typeid(XUnsupportedFormat), 21},
        {22, typeid(XFormatViolation), 22},
        {23, typeid(XVersionTooOld), 23},
        {24, typeid(XVersionTooNew), 24},
        {25, typeid(XRead), 25},
        {26, typeid(XWrite), 26},
        {27, typeid(XOutOfSpace), 27},
        {28, typeid(XOutOfItems), 28},
        {29, typeid(XCreate), 29},
        {30, typeid(XOpen), 30},
        {31, typeid(XClose), 31},
        {32, typeid(XDelete), 32},
        {33, typeid(XResolve), 33},
        {34, typeid(XNotFound), 34},
        {35, typeid(XAlreadyExists), 35},
        {36, typeid(XPermission), 36},
        {37, typeid(XLocked), 37},
        {38, typeid(XReadOnly), 38},
        {39, typeid(XNotReady), 39},
        {40, typeid(XTimeout), 40},
        {41, typeid(XAbort), 41},
        {42, typeid(XSilentAbort), 42},
        {43, typeid(XUnitTestFailure), 43},
    };
    CExceptionBodyMixin body{CFailureSite()};
    body.fItems.push_back(CFailureItem{{}, 22, "kept", {}});
    for (const auto& row : rows) {
        SCOPED_TRACE(row.fCode);
        try {
            ThrowByFailureCode(row.fCode, body, "text");
        } catch (const std::exception& exception) {
            EXPECT_EQ(typeid(exception), row.fClass);
            EXPECT_STREQ(exception.what(), row.fCode == 16 ? "bad allocation" : "text");
            EXPECT_EQ(GetExceptionBody(exception), body);
            EXPECT_EQ(ClassifyException(&exception).fCode, row.fClassified);
        }
    }
}

TEST(ThrowByFailureCode, ThrowsTheIntegerFiveForEverythingElse) {
    for (const int32_t code : {5, 4, 44, -1, 0x7FFFFFFF}) {
        try {
            ThrowByFailureCode(code, CExceptionBodyMixin(), "text");
        } catch (int thrown) {
            EXPECT_EQ(thrown, 5);
        }
    }
}

TEST(ClassifyException, AsksTheStandardClassesInOrder) {
    const struct {
        const std::exception& fException;
        int32_t fCode;
        const char* fText;
    } rows[] = {
        {XStdBadAlloc(), 16, "bad allocation"}, {std::bad_alloc(), 16, "bad allocation"},
        {std::overflow_error("o"), 18, "o"},    {std::underflow_error("u"), 19, "u"},
        {std::range_error("r"), 20, "r"},       {XForeignRuntime("f"), 17, "f"},
        {std::runtime_error("rt"), 17, "rt"},   {std::logic_error("l"), 9, "l"},
        {std::out_of_range("oor"), 13, "oor"},  {std::exception(), 7, "Unknown exception"},
        {XStdException("own"), 7, "own"},
    };
    for (const auto& row : rows) {
        const SExceptionClass classified = ClassifyException(&row.fException);
        EXPECT_EQ(classified.fCode, row.fCode) << row.fText;
        EXPECT_EQ(classified.fText, row.fText);
    }
    const XForeign foreign;
    EXPECT_EQ(ClassifyException(&foreign).fCode, 6);
    const std::bad_array_new_length tooLong;
    EXPECT_EQ(ClassifyException(&tooLong).fCode, 16);
    EXPECT_EQ(ClassifyException(nullptr).fCode, 5);
}
