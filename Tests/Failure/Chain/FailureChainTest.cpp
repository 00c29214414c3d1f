#include "Failure/Chain/FailureChain.h"

#include "Failure/Chain/ObjectTypeWords.h"
#include "Failure/Chain/PartKeys.h"

#include <gtest/gtest.h>

#include <limits>

using namespace NSLichen;

namespace {

CFailureItem MakeItem(int32_t code, const std::string& text = {},
                      std::vector<CFailurePart> parts = {}) {
    return CFailureItem{{}, code, text, std::move(parts)};
}

CExceptionBodyMixin MakeBody(std::vector<CFailureItem> items) {
    CExceptionBodyMixin body{CFailureSite()};
    body.fItems = std::move(items);
    return body;
}

} // namespace

TEST(FailureChain, ABodyWithoutItemsAnswersItsOwnCode) {
    CExceptionBodyMixin body{CFailureSite()};
    EXPECT_TRUE(ExpandBodyItems(body).empty());
    body.fCode = 25;
    body.fSite.fNumber = 7;
    CFailureItem expected = MakeItem(25);
    expected.fSite.fNumber = 7;
    EXPECT_EQ(ExpandBodyItems(body), std::vector{expected});
    EXPECT_EQ(CombineBody(body, MakeItem(30)).fCode, 25);
    EXPECT_EQ(CombineBody(body, MakeItem(30)).fSite, body.fSite);
    body.fEmpty = true;
    EXPECT_TRUE(ExpandBodyItems(body).empty());
}

TEST(FailureChain, TheFirstCodedItemIsTheRoot) {
    EXPECT_EQ(CombineBody(MakeBody({MakeItem(5), MakeItem(22)}), MakeItem(30)).fCode, 22);
    EXPECT_EQ(CombineBody(MakeBody({MakeItem(22)}), MakeItem(5)).fCode, 22);
    EXPECT_EQ(CombineBody(MakeBody({}), MakeItem(5)).fCode, 5);
}

TEST(FailureChain, AnnotationsFoldIntoTheFailureBeforeThem) {
    const auto body = MakeBody({MakeItem(22, "root", {ErrorCodePart(1), VersionNumberPart(2)}),
                                MakeItem(5, "ignored", {ErrorCodePart(3)}), MakeItem(30, "later"),
                                MakeItem(5, "", {TargetObjectTypePart(FileWord())})});
    const std::vector<CFailureItem> expected{
        MakeItem(22, "root", {VersionNumberPart(2), ErrorCodePart(3)}),
        MakeItem(30, "later", {TargetObjectTypePart(FileWord())})};
    EXPECT_EQ(FlattenFailureItems(body), expected);
    EXPECT_EQ(GetPrimaryFailureItem(body), expected[1]);
}

// A chain may begin with context; it forms a group of its own as soon as a failure follows.
TEST(FailureChain, LeadingContextStandsAlone) {
    const auto body = MakeBody({MakeItem(5, "context"), MakeItem(22, "failure")});
    EXPECT_EQ(FlattenFailureItems(body),
              (std::vector{MakeItem(5, "context"), MakeItem(22, "failure")}));
}

TEST(FailureChain, AChainOfContextAloneNamesNoFailure) {
    const auto body = MakeBody({MakeItem(5, "a"), MakeItem(5, "b")});
    EXPECT_TRUE(FlattenFailureItems(body).empty());
    EXPECT_FALSE(FindPrimaryFailureItem(body).has_value());
    EXPECT_THROW(GetPrimaryFailureItem(body), int);
}

TEST(FailureValue, EqualityGoesByKindAndContent) {
    EXPECT_EQ(CFailureValue(), CFailureValue());
    EXPECT_EQ(CFailureValue::FromFloat(0.0f), CFailureValue::FromFloat(-0.0f));
    const auto notANumber = CFailureValue::FromFloat(std::numeric_limits<float>::quiet_NaN());
    EXPECT_FALSE(notANumber == notANumber);
    EXPECT_FALSE(CFailureValue::FromText("dll") == CFailureValue::FromWord(DllWord()));
    EXPECT_EQ(CFailureValue::FromText(std::string("a\0b", 3)), CFailureValue::FromText("a"));
}
