#include "Debug/Log/CConsoleTraceStreamer.h"

#include <gtest/gtest.h>

namespace NSDebugPackage {
namespace {

TEST(ConsoleTraceStreamer, SendsLinesToStandardError) {
    testing::internal::CaptureStderr();
    CConsoleTraceStreamer streamer;
    streamer.Write("one", kTraceLineSize);
    streamer.Write("two", kTraceLineSize);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "one\ntwo\n");
}

} // namespace
} // namespace NSDebugPackage
