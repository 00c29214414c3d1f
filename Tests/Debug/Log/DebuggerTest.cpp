#include "Debug/Log/CDebugger.h"

#include "Debug/Log/LogThread.h"
#include "Debug/Platform/DebugPlatform.h"
#include "Failure/Raising/DebuggerAccess.h"
#include "Tests/Debug/AllocationCount.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace NSDebugPackage {
namespace {

const char* const kSkipped = "Debug: At least one line of the log was skipped because of too fast "
                             "tracing and/or too much CPU load.";

// Keeps what a debugger writes.
class CRecordingStreamer : public ITraceOutputStreamer {
public:
    void Write(const char* line, size_t bufferSize) override {
        fLines.emplace_back(line);
        fBufferSize = bufferSize;
        if (fOnWrite) {
            fOnWrite();
        }
    }
    void Flush() override { ++fFlushCount; }

    // What follows thread, time and indentation of 0.
    std::string GetText(size_t index) const { return fLines.at(index).substr(37); }

    std::function<void()> fOnWrite;
    std::vector<std::string> fLines;
    size_t fBufferSize = 0;
    int fFlushCount = 0;
};

class DebuggerTest : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(AllocateThreadSlots()); }
    void TearDown() override {
        ClearLogThread();
        FreeThreadSlots();
    }

    std::shared_ptr<CRecordingStreamer> AddRecorder(CDebugger& debugger) {
        auto recorder = std::make_shared<CRecordingStreamer>();
        debugger.AddStreamer(recorder);
        return recorder;
    }

    static void OnOtherThread(const std::function<void()>& work) { std::thread(work).join(); }
};

TEST_F(DebuggerTest, WithoutALogThreadEachThreadWritesForItself) {
    CDebugger debugger("X", "Title", 0);
    const auto recorder = AddRecorder(debugger);
    debugger.Trace({}, "here");
    OnOtherThread([&] { debugger.Trace({}, "there"); });
    ASSERT_EQ(recorder->fLines.size(), 2U);
    EXPECT_EQ(recorder->fLines[1].substr(0, 17), "0000000000000000 ");
    EXPECT_EQ(recorder->GetText(1), "there");
    EXPECT_EQ(recorder->fBufferSize, 4096U);
    EXPECT_EQ(recorder->fFlushCount, 0);
    debugger.Flush();
    EXPECT_EQ(recorder->fFlushCount, 1);
}

TEST_F(DebuggerTest, LinesOfOtherThreadsWaitForTheLogThread) {
    CDebugger debugger("X", "Title", kDebuggerFlag_OwnLogThread);
    const auto recorder = AddRecorder(debugger);
    uint32_t other = 0;
    OnOtherThread([&] {
        other = GetCurrentThreadNumber();
        debugger.Indent();
        debugger.Trace({}, std::string(3000, 'x').c_str());
        debugger.DrainTraceQueue();
    });
    EXPECT_TRUE(recorder->fLines.empty());
    debugger.Trace({}, "own");
    ASSERT_EQ(recorder->fLines.size(), 2U);
    EXPECT_EQ(recorder->GetText(0), "|  " + std::string(2047, 'x'));
    EXPECT_EQ(std::stoul(recorder->fLines[0].substr(0, 16), nullptr, 16), other);
    EXPECT_EQ(recorder->GetText(1), "own");
}

TEST_F(DebuggerTest, LostLinesAreToldOncePerDrain) {
    CDebugger debugger("X", "Title", kDebuggerFlag_OwnLogThread);
    const auto recorder = AddRecorder(debugger);
    for (int round = 0; round < 2; ++round) {
        OnOtherThread([&] {
            for (int i = 0; i < 155; ++i) {
                debugger.Trace({}, std::to_string(i).c_str());
            }
        });
        recorder->fLines.clear();
        debugger.DrainTraceQueue();
        ASSERT_EQ(recorder->fLines.size(), 151U);
        EXPECT_EQ(recorder->GetText(149), "149");
        EXPECT_EQ(recorder->GetText(150), kSkipped);
        debugger.DrainTraceQueue();
        EXPECT_EQ(recorder->fLines.size(), 151U);
    }
}

TEST_F(DebuggerTest, QueuingAllocatesNothing) {
    CDebugger debugger("X", "Title", kDebuggerFlag_OwnLogThread | kDebuggerFlag_Install);
    uint64_t allocations = 1;
    OnOtherThread([&] {
        const uint64_t before = GetAllocationCount();
        for (int i = 0; i < 400; ++i) {
            NSLichen::TraceFormatted({}, "line %d", i);
            NSLichen::IndentTrace();
        }
        allocations = GetAllocationCount() - before;
    });
    EXPECT_EQ(allocations, 0U);
}

TEST_F(DebuggerTest, LevelsBelongToThreads) {
    CDebugger debugger("X", "Title", 0);
    const auto recorder = AddRecorder(debugger);
    debugger.Indent();
    debugger.Trace({}, "in");
    OnOtherThread([&] { debugger.Trace({}, "other"); });
    debugger.SetFlatTrace(true);
    debugger.Indent();
    debugger.Trace({}, "flat");
    debugger.SetFlatTrace(false);
    debugger.Trace({}, "in");
    // One level out of its block, also at the edge.
    debugger.Outdent();
    debugger.Outdent();
    debugger.Trace({}, "edge");
    debugger.Indent();
    debugger.Trace({}, "edge");
    const char* const expected[] = {"|  in", "other", "flat", "|  in", "edge", "edge"};
    for (size_t i = 0; i < std::size(expected); ++i) {
        EXPECT_EQ(recorder->GetText(i), expected[i]);
    }
}

TEST_F(DebuggerTest, InstallsItselfAndGivesUpEverything) {
    const auto recorder = std::make_shared<CRecordingStreamer>();
    {
        CDebugger debugger("X", "Title", kDebuggerFlag_Install | kDebuggerFlag_OwnLogThread);
        debugger.AddStreamer(recorder);
        EXPECT_EQ(NSLichen::GetDebugger(), &debugger);
        NSLichen::TraceFormattedOutdented({}, "%s", "line");
        NSLichen::OnAssertionFailed({}, "dropped");
        OnOtherThread([&] {
            EXPECT_FALSE(IsLogThread());
            debugger.Trace({}, "late");
        });
    }
    EXPECT_EQ(NSLichen::GetDebugger(), nullptr);
    OnOtherThread([] { EXPECT_TRUE(IsLogThread()); });
    ASSERT_EQ(recorder->fLines.size(), 2U);
    EXPECT_EQ(recorder->GetText(1), "late");
    EXPECT_EQ(recorder->fFlushCount, 1);
    EXPECT_EQ(recorder.use_count(), 1);
    NSLichen::TraceFormatted({}, "nobody listens");
}

TEST_F(DebuggerTest, StreamersAndListenersGoByPointer) {
    CDebugger debugger("X", "Title", 0);
    const auto first = AddRecorder(debugger);
    const auto second = AddRecorder(debugger);
    debugger.AddStreamer(first);
    debugger.RemoveStreamer(first.get());
    debugger.RemoveStreamer(nullptr);
    debugger.Trace({}, "line");
    EXPECT_EQ(first->fLines.size(), 1U);
    EXPECT_EQ(second->fLines.size(), 1U);

    const auto listener = std::make_shared<CDebugger>("Y", "Listener", 0);
    debugger.AddListener(listener);
    EXPECT_EQ(debugger.GetListeners().size(), 1U);
    debugger.RemoveListener(listener.get());
    EXPECT_TRUE(debugger.GetListeners().empty());
}

TEST_F(DebuggerTest, AStreamerThatTracesComesToAnEnd) {
    CDebugger debugger("X", "Title", kDebuggerFlag_OwnLogThread);
    const auto recorder = AddRecorder(debugger);
    recorder->fOnWrite = [&] { debugger.Trace({}, "again"); };
    OnOtherThread([&] { debugger.Trace({}, "queued"); });
    debugger.DrainTraceQueue();
    EXPECT_EQ(recorder->GetText(0), "queued");
    EXPECT_LT(recorder->fLines.size(), 100U);
}

TEST_F(DebuggerTest, AStreamerThatFailsTakesNothingFromOthers) {
    const auto failing = std::make_shared<CRecordingStreamer>();
    failing->fOnWrite = [] { throw std::runtime_error("full"); };
    const auto recorder = std::make_shared<CRecordingStreamer>();
    {
        CDebugger debugger("X", "Title", kDebuggerFlag_OwnLogThread);
        debugger.AddStreamer(failing);
        debugger.AddStreamer(recorder);
        OnOtherThread([&] { debugger.Trace({}, "queued"); });
        EXPECT_THROW(debugger.DrainTraceQueue(), std::runtime_error);
        debugger.RemoveStreamer(failing.get());
        debugger.DrainTraceQueue();
        ASSERT_EQ(recorder->fLines.size(), 1U);
        debugger.AddStreamer(failing);
        OnOtherThread([&] { debugger.Trace({}, "late"); });
    }
    EXPECT_EQ(recorder->fLines.size(), 2U);
    EXPECT_EQ(recorder->fFlushCount, 1);
}

TEST_F(DebuggerTest, AllThreadsAtOnce) {
    const auto recorder = std::make_shared<CRecordingStreamer>();
    {
        CDebugger debugger("X", "Title", 0);
        debugger.AddStreamer(recorder);
        std::vector<std::thread> threads;
        threads.reserve(4);
        for (int thread = 0; thread < 4; ++thread) {
            threads.emplace_back([&debugger] {
                for (int i = 0; i < 500; ++i) {
                    debugger.Trace({}, "line");
                }
            });
        }
        // The log thread is claimed and given up in the midst of it.
        for (int i = 0; i < 50; ++i) {
            SetLogThread();
            debugger.Trace({}, "line");
            ClearLogThread();
        }
        for (auto& thread : threads) {
            thread.join();
        }
    }
    for (size_t i = 0; i < recorder->fLines.size(); ++i) {
        EXPECT_TRUE(recorder->GetText(i) == "line" || recorder->GetText(i) == kSkipped);
    }
    EXPECT_GE(recorder->fLines.size(), 50U);
}

} // namespace
} // namespace NSDebugPackage
