#include "Debug/Platform/DebugPlatform.h"

#include <gtest/gtest.h>

#include <windows.h>

namespace NSDebugPackage {

TEST(ThreadSlots, LeaveTheLastErrorOfTheHostAlone) {
    ASSERT_TRUE(AllocateThreadSlots());
    SetLastError(1234);
    SetThreadSlot(0, 5);
    EXPECT_EQ(GetThreadSlot(0), 5);
    EXPECT_EQ(GetLastError(), 1234U);
    FreeThreadSlots();
}

} // namespace NSDebugPackage
