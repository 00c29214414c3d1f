#include "Failure/Raise.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

#include "Failure/FailureQuestions.h"
#include "Failure/ObjectTypeWords.h"
#include "Failure/PartKeys.h"
#include "Failure/RaisingSteps.h"
#include "Failure/XClasses.h"

using namespace NSLichen;

TEST(Raise, RecordsOneItemWithCodeTextAndTarget) {
    try {
        RaiseWithTarget(XFormatViolation("bad Tessel chunk magic"), LopFileWord());
    } catch (const XFormatViolation& exception) {
        EXPECT_STREQ(exception.what(), "bad Tessel chunk magic");
        EXPECT_FALSE(exception.fEmpty);
        EXPECT_EQ(exception.fCode, 22);
        ASSERT_EQ(exception.fItems.size(), 1u);
        EXPECT_EQ(exception.fItems[0],
                  (CFailureItem{
                      {}, 22, "bad Tessel chunk magic", {TargetObjectTypePart(LopFileWord())}}));
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
        ASSERT_EQ(exception.fItems.size(), 2u);
        EXPECT_EQ(exception.fItems[1].fCode, 5);
        EXPECT_TRUE(exception.fItems[1].fText.empty());
        EXPECT_TRUE(HasTargetObjectType(exception, LopFileWord()));
    }
}

// The class follows the latest failure, the body's code the first.
TEST(Raise, KeepsRootCodeAndLatestClassApart) {
    CFailureRecord record{CFailureSite()};
    AttachException(record, XOpen("cannot open"));
    record.fBody = CExceptionBodyMixin(CFailureSite());
    record.fBody.fItems.push_back(CFailureItem{{}, 22, "root", {}});
    try {
        RaiseRecord(record);
    } catch (const XOpen& exception) {
        EXPECT_STREQ(exception.what(), "cannot open");
        EXPECT_EQ(exception.fCode, 22);
        EXPECT_EQ(exception.fItems.size(), 2u);
    }
}

TEST(Raise, CopiesOfAnExceptionCarryTheBody) {
    try {
        RaiseWithTarget(XUnitTestFailure("t"), ItemWord());
    } catch (const XUnitTestFailure& exception) {
        const auto copy = std::make_unique<XUnitTestFailure>(exception);
        EXPECT_STREQ(copy->what(), "t");
        EXPECT_EQ(GetExceptionBody(*copy), GetExceptionBody(exception));
    }
}

TEST(FailureQuestions, GiveEachKindOfValueAsText) {
    CExceptionBodyMixin body{CFailureSite()};
    body.fItems.push_back(
        CFailureItem{{},
                     25,
                     "",
                     {ErrorCodePart(-12), TargetObjectIdPart(CFailureValue::FromFloat(1.5f)),
                      VersionStringPart("1.\xE9"), ErrorStringPart(u"wide"),
                      SecondaryObjectTypePart(DllWord())}});
    const struct {
        CFixedName fKey;
        const char16_t* fText;
    } rows[] = {{ErrorCodeKey(), u"-12"},           {TargetObjectIdKey(), u"1.500000"},
                {VersionStringKey(), u"1.\u00E9"},  {ErrorStringKey(), u"wide"},
                {SecondaryObjectTypeKey(), u"dll"}, {VersionNumberKey(), u"<nil>"}};
    for (const auto& row : rows) {
        EXPECT_EQ(GetPartValueText(body, row.fKey), row.fText) << row.fKey.GetText();
    }
    EXPECT_TRUE(HasPartValue(body, ErrorCodeKey(), CFailureValue::FromInteger(-12)));
    EXPECT_FALSE(HasPartValue(body, ErrorCodeKey(), CFailureValue::FromFloat(-12.0f)));
    EXPECT_EQ(GetPartValueText(CExceptionBodyMixin(), ErrorCodeKey()), u"<nil>");
}
