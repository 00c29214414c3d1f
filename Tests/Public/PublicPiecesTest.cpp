#include "LoopLibrary/Public/CCreateCallback.h"
#include "LoopLibrary/Public/CInsideLibrary.h"
#include "LoopLibrary/Public/ClipSamples.h"
#include "LoopLibrary/Public/CreatorText.h"
#include "LoopLibrary/Public/FillLoopInfo.h"
#include "LoopLibrary/Public/LoopHandles.h"
#include "LoopLibrary/Public/PlatformVersion.h"
#include "Tests/Host/FloatingPointControl.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <thread>
#include <vector>

namespace {

using namespace NSLOPDLL;

TEST(Handles, ReverseTheFourLowBytes) {
    EXPECT_EQ(ExchangeLowBytes(0x1122334455667788U), 0x1122334488776655U);
    // NOLINTNEXTLINE(performance-no-int-to-ptr)
    CLOPObject* const object = reinterpret_cast<CLOPObject*>(uintptr_t{0x7FFF12345678});
    EXPECT_EQ(HandleFromObject(object), 0x7FFF78563412U);
    EXPECT_EQ(ObjectFromHandle(HandleFromObject(object)), object);
}

TEST(PlatformVersion, RefusesOldSystems) {
    struct SRow {
        SWindowsVersion fVersion;
        bool fExpected;
    };
    for (const SRow& row : {
             SRow{{4, 10, 6, true, false}, false},
             SRow{{5, 0, 4, true, false}, false},
             SRow{{5, 1, 1, true, false}, false},
             SRow{{5, 1, 2, true, false}, true},
             SRow{{5, 2, 1, true, true}, false},
             SRow{{5, 2, 2, true, true}, true},
             SRow{{5, 2, 1, false, true}, true},
             SRow{{5, 2, 1, true, false}, true},
             SRow{{6, 0, 0, true, true}, true},
             SRow{{10, 0, 0, true, true}, true},
         }) {
        EXPECT_EQ(IsSupportedWindows(row.fVersion), row.fExpected)
            << row.fVersion.fMajor << "." << row.fVersion.fMinor;
    }
}

TEST(LoopInfo, TellsOnlyTheListedDepths) {
    for (int32_t depth = 0; depth <= 40; ++depth) {
        const bool listed =
            depth == 8 || depth == 16 || depth == 20 || depth == 22 || depth == 24 || depth == 32;
        EXPECT_EQ(PublicBitDepth(depth), listed ? depth : 0);
    }
}

TEST(LoopInfo, ClampsTheLengthOfTheLongestLoop) {
    EXPECT_EQ(ClampedPPQLength(2, 3, 6, 8), 15360 * 4 * 15 / 8);
    // 999 bars of 15/1 are 920 678 400 pulses, below the limit; more is cut.
    EXPECT_EQ(ClampedPPQLength(999, 7, 15, 1), 15360 * 4 * (999 * 15 + 7));
    EXPECT_EQ(ClampedPPQLength(100000, 0, 15, 1), std::numeric_limits<int32_t>::max());
}

TEST(CreatorText, IsCutBetweenCharacters) {
    EXPECT_EQ(CutUtf8("abc", 3), "abc");
    EXPECT_EQ(CutUtf8("ab\xC3\xA9", 3), "ab");
    EXPECT_EQ(CutUtf8("a\xE2\x82\xAC", 3), "a");
    EXPECT_EQ(CutUtf8("\xF0\x9F\x98\x80", 3), "");
}

TEST(ClipSamples, LeavesWhatIsInRangeAndNaN) {
    float samples[] = {1.5f, 1.0f, -1.0f, -7.0f, 0.25f, std::nanf("")};
    ClipSamples(samples, 6);
    EXPECT_EQ(samples[0], 1.0f);
    EXPECT_EQ(samples[1], 1.0f);
    EXPECT_EQ(samples[2], -1.0f);
    EXPECT_EQ(samples[3], -1.0f);
    EXPECT_EQ(samples[4], 0.25f);
    EXPECT_TRUE(std::isnan(samples[5]));
}

TEST(InsideLibrary, CountsTheDepthOfTheThread) {
    EXPECT_EQ(CInsideLibrary::GetDepth(), 0);
    {
        const CInsideLibrary outer;
        const CInsideLibrary inner;
        EXPECT_EQ(CInsideLibrary::GetDepth(), 2);
        std::thread([] {
            const CInsideLibrary other;
            EXPECT_EQ(CInsideLibrary::GetDepth(), 1);
        }).join();
        std::vector<std::unique_ptr<CInsideLibrary>> beyondTheTable(CInsideLibrary::kMostMarks);
        for (auto& mark : beyondTheTable) {
            mark = std::make_unique<CInsideLibrary>();
        }
        EXPECT_EQ(CInsideLibrary::GetDepth(), int32_t{CInsideLibrary::kMostMarks});
    }
    EXPECT_EQ(CInsideLibrary::GetDepth(), 0);
}

// Stops at 1 and at 100.
extern "C" int32_t LeaveAnotherMode(int32_t percent, void* /*userData*/) {
    for (const SFloatingPointMode& mode : GetOtherFloatingPointModes()) {
        SetFloatingPointControl(mode.fControl);
    }
    return percent == 100 ? 1 : percent;
}

TEST(CreateCallback, GivesItsPercentageAndKeepsTheFloatingPointMode) {
    struct SRow {
        uint32_t fTotal;
        uint32_t fDone;
        bool fStops;
    };
    const uint64_t before = GetFloatingPointControl();
    for (const SRow& row : {SRow{0xFFFFFFFF, 0x028F5C28, false}, SRow{0xFFFFFFFF, 0x028F5C29, true},
                            SRow{200, 4, false}, SRow{0, 1, true}}) {
        CCreateCallback callback(row.fTotal, LeaveAnotherMode, nullptr);
        EXPECT_EQ(callback.ShouldStop(row.fDone), row.fStops) << row.fDone;
        EXPECT_EQ(GetFloatingPointControl(), before);
        EXPECT_FALSE(CCreateCallback(row.fTotal, nullptr, nullptr).ShouldStop(row.fDone));
    }
}

} // namespace
