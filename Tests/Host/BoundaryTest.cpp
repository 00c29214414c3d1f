#include <gtest/gtest.h>

extern "C" int CheckBoundaryInC();

TEST(Boundary, HasTheSameLayoutInC) {
    EXPECT_EQ(CheckBoundaryInC(), 0);
}
