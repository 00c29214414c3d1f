#include "Debug/Log/CConsoleTraceStreamer.h"
#include "Debug/Log/TraceLine.h"
#include "Tests/CTimeZone_posix.h"

#include <gtest/gtest.h>

namespace NSDebugPackage {

TEST(LocalTimes, InLinesAndInNames) {
    const CTimeZone zone("XXX-5:45");
    TraceLine line;
    FormatTraceLine({2023, 12, 0, 31, 20, 20, 7, 89}, 0xABCDE, 2, "text", line);
    EXPECT_STREQ(line, "00000000000ABCDE 20240101-020507.089 |  |  text");
    const auto before = NSSupport::UtcToLocal(NSSupport::GetUtcTime());
    const std::string log = MakeLogFileName("X", ".log");
    const auto after = NSSupport::UtcToLocal(NSSupport::GetUtcTime());
    EXPECT_GE(log, MakeLogFileName("X", ".log", before));
    EXPECT_LE(log, MakeLogFileName("X", ".log", after));
}

TEST(ConsoleTraceStreamer, SendsLinesToStandardError) {
    testing::internal::CaptureStderr();
    CConsoleTraceStreamer streamer;
    streamer.Write("one", kTraceLineSize);
    streamer.Write("two", kTraceLineSize);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "one\ntwo\n");
}

} // namespace NSDebugPackage
