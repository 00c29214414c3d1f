#include "Failure/Codes/ThrowByFailureCode.h"

#include "Failure/Classes/XClasses.h"
#include "Failure/Raising/RaisingSteps.h"

#include <gtest/gtest.h>

#include <ios>
#include <new>
#include <stdexcept>
#include <typeindex>
#include <typeinfo>
#include <vector>

using namespace NSLichen;
using namespace NSLichenDetails;

namespace {

class XForeign : public std::exception {
public:
    const char* what() const noexcept override { return nullptr; }
};
class XForeignRuntime : public std::runtime_error {
    using std::runtime_error::runtime_error;
};
class XOfBothKinds : public std::logic_error, public std::range_error {
public:
    XOfBothKinds() : std::logic_error("l"), std::range_error("r") {}
};

template <class... X>
std::vector<std::type_index> TypesOf() {
    return {typeid(X)...};
}

} // namespace

TEST(ThrowByFailureCode, ThrowsTheClassOfEachCode) {
    // From code 6 on.
    const auto classes =
        TypesOf<XStdException, XStdException, XTunneledError, XStdLogicError, XStdDomainError,
                XStdInvalidArgument, XStdLengthError, XStdOutOfRange, XIllegalCallSequence,
                XInvariantCorrupt, XStdBadAlloc, XStdRuntimeError, XStdOverflowError,
                XStdUnderflowError, XStdRangeError, XUnsupportedFormat, XFormatViolation,
                XVersionTooOld, XVersionTooNew, XRead, XWrite, XOutOfSpace, XOutOfItems, XCreate,
                XOpen, XClose, XDelete, XResolve, XNotFound, XAlreadyExists, XPermission, XLocked,
                XReadOnly, XNotReady, XTimeout, XAbort, XSilentAbort, XUnitTestFailure>();
    CExceptionBodyMixin body{CFailureSite()};
    body.fItems.push_back(CFailureItem{{}, 22, "kept", {}});
    int32_t code = 6;
    for (const std::type_index& thrown : classes) {
        SCOPED_TRACE(code);
        try {
            ThrowByFailureCode(code, body, "text");
        } catch (const std::exception& exception) {
            EXPECT_EQ(std::type_index(typeid(exception)), thrown);
            EXPECT_STREQ(exception.what(), code == 16 ? "bad allocation" : "text");
            EXPECT_EQ(GetExceptionBody(exception), body);
            // One class serves two codes.
            EXPECT_EQ(ClassifyException(&exception).fCode, code == 6 ? 7 : code);
        }
        ++code;
    }
    EXPECT_EQ(code, kFailureMapEnd);
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
    } rows[] = {{XStdBadAlloc(), 16, "bad allocation"}, {std::bad_alloc(), 16, "bad allocation"},
                {std::overflow_error("o"), 18, "o"},    {std::underflow_error("u"), 19, "u"},
                {std::range_error("r"), 20, "r"},       {XForeignRuntime("f"), 17, "f"},
                {std::runtime_error("rt"), 17, "rt"},   {std::logic_error("l"), 9, "l"},
                {std::out_of_range("oor"), 13, "oor"},  {std::exception(), 7, "Unknown exception"},
                {XStdException("own"), 7, "own"}};
    for (const auto& row : rows) {
        const SExceptionClass classified = ClassifyException(&row.fException);
        EXPECT_EQ(classified.fCode, row.fCode) << row.fText;
        EXPECT_EQ(classified.fText, row.fText);
    }
    const XForeign foreign;
    EXPECT_EQ(ClassifyException(&foreign).fCode, 6);
    EXPECT_EQ(ClassifyException(&foreign).fText, "");
    // A runtime error before it is a logic error, through whichever base it is caught.
    const XOfBothKinds both;
    EXPECT_EQ(ClassifyException(static_cast<const std::logic_error*>(&both)).fCode, 20);
    const std::bad_array_new_length tooLong;
    EXPECT_EQ(ClassifyException(&tooLong).fCode, 16);
    EXPECT_EQ(ClassifyException(nullptr).fCode, 5);
}
