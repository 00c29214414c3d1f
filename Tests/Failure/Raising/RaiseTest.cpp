#include "Failure/Raising/Raise.h"

#include "Failure/Chain/FailureQuestions.h"
#include "Failure/Chain/ObjectTypeWords.h"
#include "Failure/Chain/PartKeys.h"
#include "Failure/Classes/XClasses.h"
#include "Failure/Raising/RaisingSteps.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

using namespace NSLichen;

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
