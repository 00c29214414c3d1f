#include "Debug/Platform/DebugPlatform.h"

#include <gtest/gtest.h>
#include <windows.h>

namespace NSDebugPackage {
namespace {

TEST(ThreadSlots, KeepTheLastErrorOfWhoeverTraces) {
    ASSERT_TRUE(AllocateThreadSlots());
    SetLastError(1234);
    SetThreadSlot(kThreadSlot_Level, 5);
    EXPECT_EQ(GetThreadSlot(kThreadSlot_Level), 5);
    EXPECT_EQ(GetLastError(), 1234U);
    FreeThreadSlots();
}

} // namespace
} // namespace NSDebugPackage
