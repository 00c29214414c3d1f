#include "Failure/FailureCodes.h"

#include <gtest/gtest.h>

#include <string>

#include "Failure/ObjectTypeWords.h"

using namespace NSLichen;

TEST(FailureCodes, EveryCodeHasANameThatLeadsBack) {
    for (int32_t code = kFailureCode_UndefinedException; code < kFailureMapEnd; ++code) {
        const CFixedName name = GetFailureCodeName(code);
        EXPECT_EQ(name.GetView().substr(0, 13), "kFailureCode_") << code;
        int32_t found = 0;
        EXPECT_TRUE(FindFailureCodeByName(name, found));
        EXPECT_EQ(found, code);
    }
    EXPECT_STREQ(GetFailureCodeName(22).GetText(), "kFailureCode_RuntimeError_FormatViolation");
    EXPECT_STREQ(GetFailureCodeName(43).GetText(), "kFailureCode_UnitTestFailure");
}

TEST(FailureCodes, NothingLiesBesideTheTable) {
    EXPECT_TRUE(GetFailureCodeName(4).IsEmpty());
    EXPECT_TRUE(GetFailureCodeName(kFailureMapEnd).IsEmpty());
    int32_t code = -1;
    EXPECT_FALSE(FindFailureCodeByName(CFixedName("kFailureCode_Nonsense"), code));
    EXPECT_FALSE(FindFailureCodeByName(CFixedName(), code));
    EXPECT_EQ(code, -1);
}

TEST(ObjectTypeWords, KeepTheirIndices) {
    ASSERT_EQ(GetObjectTypeWordCount(), 32u);
    EXPECT_EQ(GetObjectTypeWord(0), RangeWord());
    EXPECT_EQ(GetObjectTypeWord(5), CFixedName("dll"));
    EXPECT_EQ(GetObjectTypeWord(9), CFixedName("file"));
    EXPECT_EQ(GetObjectTypeWord(20), CFixedName("property"));
    EXPECT_EQ(GetObjectTypeWord(29), UnicodeWord());
    EXPECT_EQ(GetObjectTypeWord(30), CFixedName("file_handle"));
    EXPECT_EQ(GetObjectTypeWord(31), DirectoryWord());
    EXPECT_TRUE(GetObjectTypeWord(32).IsEmpty());
}

TEST(FixedName, CutsTextAtItsLimitAndAtATerminator) {
    const std::string longText(70, 'x');
    EXPECT_EQ(CFixedName(longText).GetView(), std::string(64, 'x'));
    EXPECT_EQ(CFixedName(std::string_view("ab\0cd", 5)), CFixedName("ab"));
}
