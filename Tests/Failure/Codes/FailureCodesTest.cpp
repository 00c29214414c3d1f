#include "Failure/Codes/FailureCodes.h"

#include "Failure/Chain/ObjectTypeWords.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

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
    // Other modules and stored integers know them by these places.
    std::istringstream words(
        "range length memory format buffer dll disk volume drive file driver network socket port "
        "message handle symbol interface api thread property authentication user password "
        "reference server item magic path unicode file_handle directory");
    std::string word;
    uint32_t index = 0;
    for (; words >> word; ++index) {
        EXPECT_EQ(GetObjectTypeWord(index).GetView(), word);
    }
    EXPECT_EQ(GetObjectTypeWordCount(), index);
    EXPECT_TRUE(GetObjectTypeWord(index).IsEmpty());
    EXPECT_STREQ(LopFileWord().GetText(), "lop_file");
}

TEST(FixedName, CutsTextAtItsLimitAndAtATerminator) {
    const std::string longText(70, 'x');
    EXPECT_EQ(CFixedName(longText).GetView(), std::string(64, 'x'));
    EXPECT_EQ(CFixedName(std::string_view("ab\0cd", 5)), CFixedName("ab"));
}
