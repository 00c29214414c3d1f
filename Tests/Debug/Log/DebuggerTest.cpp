#include "Debug/Log/CDebugger.h"

#include "Debug/Log/LogThread.h"
#include "Debug/Platform/DebugPlatform.h"
#include "Failure/Raising/DebuggerAccess.h"
#include "Tests/Debug/AllocationCount.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <thread>

namespace NSDebugPackage {

using Texts = std::vector<std::string>;

static const char* const kSkipped =
    "Debug: At least one line of the log was skipped because of too fast tracing and/or too much "
    "CPU load.";

// Keeps what a debugger writes.
class CRecordingStreamer : public ITraceOutputStreamer {
public:
    void Write(const char* line, size_t bufferSize) override {
        EXPECT_EQ(bufferSize, 4096U);
        fThread = std::stoul(std::string(line, 16), nullptr, 16);
        fTexts.emplace_back(line + 37); // behind thread and time
        if (fOnWrite) {
            fOnWrite();
        }
    }
    void Flush() override { ++fFlushCount; }

    std::function<void()> fOnWrite;
    Texts fTexts;
    unsigned long fThread = 0; // of the last line
    int fFlushCount = 0;
};

static void OnOtherThread(const std::function<void()>& work) {
    std::thread(work).join();
}

class DebuggerTest : public testing::Test {
protected:
    DebuggerTest() { EXPECT_TRUE(AllocateThreadSlots()); }
    ~DebuggerTest() override {
        fDebugger.reset();
        ClearLogThread();
        FreeThreadSlots();
    }

    void Open(uint32_t flags) {
        fDebugger = std::make_unique<CDebugger>("X", "Title", flags);
        fDebugger->AddStreamer(fRecorder);
    }
    void Trace(const std::string& text) { fDebugger->Trace({}, text.c_str()); }
    void TraceElsewhere(const std::string& text) {
        OnOtherThread([&] { Trace(text); });
    }

    const std::shared_ptr<CRecordingStreamer> fRecorder = std::make_shared<CRecordingStreamer>();
    std::unique_ptr<CDebugger> fDebugger;
};

TEST_F(DebuggerTest, WithoutALogThreadEachThreadWritesForItself) {
    Open(0);
    Trace("here");
    TraceElsewhere("there");
    EXPECT_EQ(fRecorder->fTexts, (Texts{"here", "there"}));
    EXPECT_EQ(fRecorder->fThread, 0U);
    EXPECT_EQ(fRecorder->fFlushCount, 0);
    fDebugger->Flush();
    EXPECT_EQ(fRecorder->fFlushCount, 1);
}

TEST_F(DebuggerTest, LinesOfOtherThreadsWaitForTheLogThread) {
    Open(kDebuggerFlag_OwnLogThread);
    uint32_t other = 0;
    OnOtherThread([&] {
        other = GetCurrentThreadNumber();
        fDebugger->Indent();
        Trace(std::string(3000, 'x'));
        fDebugger->DrainTraceQueue();
    });
    EXPECT_EQ(fRecorder->fTexts, Texts{});
    fDebugger->DrainTraceQueue();
    EXPECT_EQ(fRecorder->fThread, other);
    Trace("own");
    EXPECT_EQ(fRecorder->fTexts, (Texts{"|  " + std::string(2047, 'x'), "own"}));
}

TEST_F(DebuggerTest, LostLinesAreToldOncePerDrain) {
    Open(kDebuggerFlag_OwnLogThread);
    for (int round = 0; round < 2; ++round) {
        Texts expected;
        for (int i = 0; i < 150; ++i) {
            expected.push_back(std::to_string(i));
        }
        OnOtherThread([&] {
            for (int i = 0; i < 155; ++i) {
                Trace(std::to_string(i));
            }
        });
        expected.emplace_back(kSkipped);
        fRecorder->fTexts.clear();
        fDebugger->DrainTraceQueue();
        fDebugger->DrainTraceQueue();
        EXPECT_EQ(fRecorder->fTexts, expected);
    }
}

TEST_F(DebuggerTest, QueuingAllocatesNothing) {
    Open(kDebuggerFlag_OwnLogThread | kDebuggerFlag_Install);
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
    Open(0);
    fDebugger->Indent();
    Trace("in");
    TraceElsewhere("other");
    fDebugger->SetFlatTrace(true);
    fDebugger->Indent();
    Trace("flat");
    fDebugger->SetFlatTrace(false);
    Trace("in");
    // One level out of its block, also at the edge.
    fDebugger->Outdent();
    fDebugger->Outdent();
    Trace("edge");
    fDebugger->Indent();
    Trace("edge");
    EXPECT_EQ(fRecorder->fTexts, (Texts{"|  in", "other", "flat", "|  in", "edge", "edge"}));
}

TEST_F(DebuggerTest, InstallsItselfAndGivesUpEverything) {
    Open(kDebuggerFlag_Install | kDebuggerFlag_OwnLogThread);
    EXPECT_EQ(NSLichen::GetDebugger(), fDebugger.get());
    EXPECT_EQ(fDebugger->GetTitle(), "Title");
    EXPECT_GE(fDebugger->GetStartTime().fYear, 2020);
    NSLichen::TraceFormattedOutdented({}, "%s", "line");
    NSLichen::OnAssertionFailed({}, "dropped");
    OnOtherThread([] { EXPECT_FALSE(IsLogThread()); });
    TraceElsewhere("late");
    fDebugger.reset();
    EXPECT_EQ(NSLichen::GetDebugger(), nullptr);
    OnOtherThread([] { EXPECT_TRUE(IsLogThread()); });
    EXPECT_EQ(fRecorder->fTexts, (Texts{"line", "late"}));
    EXPECT_EQ(fRecorder->fFlushCount, 1);
    EXPECT_EQ(fRecorder.use_count(), 1);
    NSLichen::TraceFormatted({}, "nobody listens");
}

TEST_F(DebuggerTest, StreamersAndListenersGoByPointer) {
    Open(0);
    const auto second = std::make_shared<CRecordingStreamer>();
    fDebugger->AddStreamer(second);
    fDebugger->AddStreamer(fRecorder);
    fDebugger->RemoveStreamer(fRecorder.get());
    fDebugger->RemoveStreamer(nullptr);
    Trace("line");
    EXPECT_EQ(fRecorder->fTexts, Texts{"line"});
    EXPECT_EQ(second->fTexts, Texts{"line"});

    const auto listener = std::make_shared<CDebugger>("Y", "Listener", 0);
    fDebugger->AddListener(listener);
    EXPECT_EQ(listener.use_count(), 2);
    fDebugger->RemoveListener(listener.get());
    EXPECT_EQ(listener.use_count(), 1);
}

TEST_F(DebuggerTest, AStreamerThatTracesComesToAnEnd) {
    Open(kDebuggerFlag_OwnLogThread);
    fRecorder->fOnWrite = [&] { Trace("again"); };
    TraceElsewhere("queued");
    fDebugger->DrainTraceQueue();
    EXPECT_EQ(fRecorder->fTexts.at(0), "queued");
    EXPECT_LT(fRecorder->fTexts.size(), 100U);
}

TEST_F(DebuggerTest, AStreamerThatFailsTakesNothingFromOthers) {
    Open(kDebuggerFlag_OwnLogThread);
    const auto failing = std::make_shared<CRecordingStreamer>();
    failing->fOnWrite = [] { throw std::runtime_error("full"); };
    fDebugger->RemoveStreamer(fRecorder.get());
    fDebugger->AddStreamer(failing);
    fDebugger->AddStreamer(fRecorder);
    TraceElsewhere("queued");
    EXPECT_THROW(fDebugger->DrainTraceQueue(), std::runtime_error);
    fDebugger->RemoveStreamer(failing.get());
    fDebugger->DrainTraceQueue();
    EXPECT_EQ(fRecorder->fTexts, Texts{"queued"});
    fDebugger->AddStreamer(failing);
    TraceElsewhere("late");
    fDebugger.reset();
    EXPECT_EQ(fRecorder->fTexts, (Texts{"queued", "late"}));
    EXPECT_EQ(fRecorder->fFlushCount, 1);
}

TEST_F(DebuggerTest, AllThreadsAtOnce) {
    Open(0);
    std::vector<std::thread> threads(4);
    for (std::thread& thread : threads) {
        thread = std::thread([this] {
            for (int i = 0; i < 500; ++i) {
                Trace("line");
            }
        });
    }
    // The log thread is claimed and given up in the midst of it.
    for (int i = 0; i < 50; ++i) {
        SetLogThread();
        Trace("line");
        ClearLogThread();
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    fDebugger.reset();
    EXPECT_GE(fRecorder->fTexts.size(), 50U);
    for (const std::string& text : fRecorder->fTexts) {
        EXPECT_TRUE(text == "line" || text == kSkipped) << text;
    }
}

} // namespace NSDebugPackage
