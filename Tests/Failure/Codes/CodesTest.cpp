#include "Failure/Chain/FailureQuestions.h"
#include "Failure/Chain/ObjectTypeWords.h"
#include "Failure/Chain/PartKeys.h"
#include "Failure/Classes/XClasses.h"
#include "Failure/Codes/FailureCodes.h"
#include "Failure/Codes/IntegerForm.h"
#include "Failure/Raising/Raise.h"
#include "Failure/Raising/RaisingSteps.h"

#include <gtest/gtest.h>

#include <new>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

using namespace NSLichen;
using NSLichenDetails::XStdDomainError;
using NSLichenDetails::XStdException;
using NSLichenDetails::XTunneledError;

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

namespace {

constexpr SIntegerRange kRange{100000, 0x7FFFFFFF};
constexpr SFailureCodeMapEntry kMap[] = {{30, FileWord(), 7001},
                                         {30, CFixedName(), 7002},
                                         {34, DirectoryWord(), 7003},
                                         {kFailureMapEnd, CFixedName(), 7004}};

int32_t Encode(const std::exception& exception) {
    return EncodeExceptionToInteger(exception, kRange, kMap, CFailureSite());
}

template <class TThrow>
int32_t EncodeThrown(const TThrow& throwing) {
    try {
        throwing();
    } catch (const std::exception& exception) {
        return Encode(exception);
    }
    return 0;
}

} // namespace

TEST(PackedFailure, PacksFourFields) {
    const SPackedFailure highest{127, 255, 254};
    EXPECT_EQ(PackFailure(highest), 0x7FFFFEBAu);
    EXPECT_EQ(UnpackFailure(0x7FFFFEBA), highest);
    EXPECT_TRUE(IsPackedFailure(0x7FFFFEBA));
    EXPECT_FALSE(IsPackedFailure(0x960000BA));
    EXPECT_FALSE(IsPackedFailure(0x160000BB));
}

TEST(PackedFailure, TargetsGoBothWays) {
    const SCustomObjectTypes custom = GetCustomObjectTypes();
    const struct {
        SFailureTarget fTarget;
        uint32_t fValue;
    } rows[] = {{{22, {}}, 0x160000BA},
                {{22, FileWord()}, 0x160109BA},
                {{25, RangeWord()}, 0x190100BA},
                {{22, LopFileWord()}, 0x160200BA}};
    for (const auto& row : rows) {
        EXPECT_EQ(EncodeFailureTarget(row.fTarget, custom), row.fValue);
        EXPECT_EQ(DecodeFailureTarget(row.fValue, custom), row.fTarget);
    }
    EXPECT_EQ(EncodeFailureTarget({22, CFixedName("cheese")}, custom), 0x160000BAu);
    EXPECT_EQ(EncodeFailureTarget({22, LopFileWord()}, SCustomObjectTypes()), 0x160000BAu);
}

TEST(PackedFailure, RefusesWhatWasNeverPacked) {
    const struct {
        uint32_t fValue;
        const char* fText;
    } rows[] = {{0x040000BA, "Illegal Lichen failure_code!"},
                {0x2C0000BA, "Illegal Lichen failure_code!"},
                {0x160300BA, "Unknown group for target object type!"}};
    for (const auto& row : rows) {
        try {
            DecodeFailureTarget(row.fValue, GetCustomObjectTypes());
            ADD_FAILURE() << std::hex << row.fValue;
        } catch (const XStdDomainError& exception) {
            EXPECT_STREQ(exception.what(), row.fText);
        }
    }
    // Indices past the two tables: word 32, custom word 1.
    EXPECT_EQ(DecodeFailureTarget(0x160120BA, GetCustomObjectTypes()), (SFailureTarget{22, {}}));
    EXPECT_EQ(DecodeFailureTarget(0x160201BA, GetCustomObjectTypes()), (SFailureTarget{22, {}}));
}

TEST(FailureMap, TheFirstMatchingRowCounts) {
    const SCustomObjectTypes custom = GetCustomObjectTypes();
    EXPECT_EQ(MapFailureToInteger({30, FileWord()}, kRange, kMap, custom), 7001);
    EXPECT_EQ(MapFailureToInteger({30, DiskWord()}, kRange, kMap, custom), 7002);
    EXPECT_EQ(MapFailureToInteger({30, {}}, kRange, kMap, custom), 7002);
    EXPECT_EQ(MapFailureToInteger({34, DirectoryWord()}, kRange, kMap, custom), 7003);
    EXPECT_EQ(MapFailureToInteger({34, FileWord()}, kRange, kMap, custom), 100000 + 0x220109BA);
    EXPECT_EQ(MapFailureToInteger({30, {}}, kRange, nullptr, custom), 100000 + 0x1E0000BA);

    EXPECT_EQ(MapIntegerToFailure(7003, kRange, kMap, custom),
              (SFailureTarget{34, DirectoryWord()}));
    EXPECT_EQ(MapIntegerToFailure(100000 + 0x220109BA, kRange, kMap, custom),
              (SFailureTarget{34, FileWord()}));
    // The terminator's own value, below the range, at its end, and not packed.
    for (const int32_t value : {7004, 99999, -1, 0x7FFFFFFF, 100077}) {
        EXPECT_THROW(MapIntegerToFailure(value, kRange, kMap, custom), XStdException) << value;
    }
}

TEST(IntegerForm, EncodesTheLatestFailureOfAnyException) {
    EXPECT_EQ(Encode(std::bad_alloc()), 100000 + 0x100000BA);
    EXPECT_EQ(Encode(XOpen("never raised")), 7002);
    EXPECT_EQ(EncodeThrown([] { RaiseWithTarget(XOpen(""), FileWord()); }), 7001);
    EXPECT_EQ(EncodeThrown([] { RaiseWithTarget(XFormatViolation(""), LopFileWord()); }),
              100000 + 0x160200BA);
    // A target that is not a word counts as none.
    CExceptionBodyMixin body{CFailureSite()};
    body.fItems.push_back(
        CFailureItem{{}, 30, "", {{TargetObjectTypeKey(), CFailureValue::FromText("file")}}});
    EXPECT_EQ(Encode(XOpen(body, "")), 7002);
    // A chain of annotations only has no integer.
    body.fItems[0].fCode = 5;
    EXPECT_THROW(Encode(XOpen(body, "")), int);
}

TEST(IntegerForm, ThrowsAgainAsTheSameClassAndTarget) {
    CFailureSite site;
    site.fNumber = 12;
    try {
        ThrowForIntegerPacked(100000 + 0x160200BA, kRange, kMap, site);
    } catch (const XFormatViolation& exception) {
        const CFailureItem expected{site, 22, "", {TargetObjectTypePart(LopFileWord())}};
        EXPECT_EQ(exception.fItems, std::vector{expected});
        EXPECT_EQ(exception.fSite, site);
        EXPECT_STREQ(exception.what(), "");
        EXPECT_EQ(Encode(exception), 100000 + 0x160200BA);
    }
    EXPECT_THROW(ThrowForIntegerPacked(7003, kRange, kMap, site), XNotFound);
    EXPECT_THROW(ThrowForIntegerPacked(6999, kRange, kMap, site), XStdException);
}

TEST(IntegerForm, AForeignIntegerComesOutAsItWentIn) {
    // Also when it looks like a packed failure, and up to the last of the range.
    for (const int32_t foreign : {100000, 100077, 100000 + 0x160109BA, 0x7FFFFFFE}) {
        const auto enter = [foreign] { ThrowForIntegerTunneled(foreign, kRange, kMap, {}); };
        EXPECT_THROW(enter(), XTunneledError);
        EXPECT_EQ(EncodeThrown(enter), foreign);
    }
    EXPECT_THROW(ThrowForIntegerTunneled(99, kRange, kMap, {}), XStdException);
    try {
        ThrowForIntegerTunneled(7001, kRange, kMap, {});
    } catch (const XOpen& exception) {
        EXPECT_TRUE(HasTargetObjectType(exception, FileWord()));
    }
    // One that was never given its integer.
    EXPECT_EQ(Encode(XTunneledError("")), 100000);
}
