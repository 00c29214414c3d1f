#include "Failure/Raising/Raise.h"

#include "Failure/Chain/FailureQuestions.h"
#include "Failure/Chain/ObjectTypeWords.h"
#include "Failure/Chain/PartKeys.h"
#include "Failure/Classes/XClasses.h"
#include "Failure/Codes/ThrowByFailureCode.h"
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

TEST(Raise, RecordsOneItemWithCodeTextAndTarget) {
    try {
        RaiseWithTarget(XFormatViolation("bad Tessel chunk magic"), LopFileWord());
    } catch (const XFormatViolation& exception) {
        EXPECT_STREQ(exception.what(), "bad Tessel chunk magic");
        EXPECT_FALSE(exception.fEmpty);
        EXPECT_EQ(exception.fCode, 22);
        const CFailureItem expected{
            {}, 22, "bad Tessel chunk magic", {TargetObjectTypePart(LopFileWord())}};
        EXPECT_EQ(exception.fItems, std::vector{expected});
        EXPECT_TRUE(HasTargetObjectType(exception, LopFileWord()));
        EXPECT_FALSE(HasTargetObjectType(exception, FileWord()));
    }
}

TEST(Raise, ThrowsAStandardExceptionAsItsStandIn) {
    EXPECT_THROW(Raise(std::domain_error("d")), NSLichenDetails::XStdDomainError);
    EXPECT_THROW(Raise(std::bad_alloc()), NSLichenDetails::XStdBadAlloc);
    try {
        Raise(std::exception());
    } catch (const NSLichenDetails::XStdException& exception) {
        EXPECT_STREQ(exception.what(), "Unknown exception");
        EXPECT_EQ(exception.fCode, 7);
    }
}

TEST(Raise, AnnotatesWhatIsRaisedAgain) {
    try {
        try {
            RaiseWithTarget(XRead("short"), FileWord());
        } catch (const XRead& exception) {
            RaiseWithTarget(exception, LopFileWord());
        }
    } catch (const XRead& exception) {
        EXPECT_STREQ(exception.what(), "short");
        const CFailureItem annotation{{}, 5, "", {TargetObjectTypePart(LopFileWord())}};
        ASSERT_EQ(exception.fItems.size(), 2u);
        EXPECT_EQ(exception.fItems[1], annotation);
        EXPECT_TRUE(HasTargetObjectType(exception, LopFileWord()));
    }
}

// The class follows the latest failure, the body's code the first.
TEST(Raise, KeepsRootCodeAndLatestClassApart) {
    CFailureSite site;
    site.fNumber = 9;
    CFailureRecord record{site};
    AttachException(record, XOpen("cannot open"));
    record.fBody = CExceptionBodyMixin(CFailureSite());
    record.fBody.fItems.push_back(CFailureItem{{}, 22, "root", {}});
    try {
        RaiseRecord(record);
    } catch (const XOpen& exception) {
        EXPECT_STREQ(exception.what(), "cannot open");
        EXPECT_EQ(exception.fCode, 22);
        ASSERT_EQ(exception.fItems.size(), 2u);
        EXPECT_EQ(exception.fItems[1].fSite, site);
        EXPECT_EQ(exception.fSite, CFailureSite());
    }
}

TEST(FailureQuestions, KnowEachPartByItsKeyAndKind) {
    CFailureItem item{{}, 25, "", {}};
    const struct {
        CFailurePart fPart;
        const char* fKey;
        EValueKind fKind;
        const char16_t* fText;
    } rows[] = {
        {TargetObjectTypePart(DllWord()), "target_object_type", kValueKind_Word, u"dll"},
        {TargetObjectIdPart(CFailureValue::FromFloat(1.5f)), "target_object_id", kValueKind_Float,
         u"1.500000"},
        {ErrorCodePart(-12), "error_code", kValueKind_Integer, u"-12"},
        {ErrorStringPart("1.\xE9"), "error_string", kValueKind_Text, u"1.\u00E9"},
        {VersionNumberPart(3), "version_number", kValueKind_Integer, u"3"},
        {VersionStringPart("3b"), "version_string", kValueKind_Text, u"3b"},
        {SecondaryObjectTypePart(ItemWord()), "secondary_object_type", kValueKind_Word, u"item"},
        {SecondaryObjectIdPart({}), "secondary_object_id", kValueKind_Nil, u"<nil>"},
    };
    for (const auto& row : rows) {
        item.fParts.push_back(row.fPart);
    }
    CExceptionBodyMixin body{CFailureSite()};
    body.fItems.push_back(item);
    for (const auto& row : rows) {
        const CFixedName key(row.fKey);
        EXPECT_EQ(GetPartValue(body, key).GetKind(), row.fKind) << row.fKey;
        EXPECT_EQ(GetPartValueText(body, key), row.fText) << row.fKey;
    }
    EXPECT_FALSE(HasPartValue(body, ErrorCodeKey(), CFailureValue::FromFloat(-12.0f)));
    // The later string, a wide one, takes the place of the first.
    body.fItems[0].fParts.push_back(ErrorStringPart(u"wide"));
    EXPECT_TRUE(HasPartValue(body, ErrorStringKey(), CFailureValue::FromWideText(u"wide")));
    EXPECT_EQ(GetPartValueText(body, ErrorStringKey()), u"wide");
    EXPECT_EQ(GetPartValueText(CExceptionBodyMixin(), ErrorCodeKey()), u"<nil>");
}

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
