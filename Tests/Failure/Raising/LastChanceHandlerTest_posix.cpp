#include "Failure/Raising/LastChanceHandler.h"

#include <gtest/gtest.h>

using namespace NSLichen;

TEST(LastChanceHandlerDeathTest, WithoutAHandlerTheProcessEnds) {
    // The low byte of -1.
    EXPECT_EXIT(HandleEscapedException(), testing::ExitedWithCode(255), "");
}
