#pragma once

#include "Debug/Log/ITraceOutputStreamer.h"
#include "Debug/Log/VMISOBuffer.h"
#include "Failure/Raising/IDebugger.h"
#include "Support/Threads/CPlatformMutex.h"
#include "Support/Time/CalendarTime.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace NSDebugPackage {

constexpr uint32_t kDebuggerQueueCapacity = 150;

/// Becomes the failure framework's debugger, until it is destroyed.
constexpr uint32_t kDebuggerFlag_Install = 1;
/// Makes the thread that constructs it the log thread, until it is destroyed.
constexpr uint32_t kDebuggerFlag_OwnLogThread = 2;

/// A named debugger: trace lines of any thread go to its streamers.
///
/// Trace, Indent and Outdent may be called by any thread. While a log thread is claimed, only that
/// thread touches the streamers; a trace on another thread leaves its line in a queue, neither
/// waits nor allocates, and loses the line when the queue is full. The log thread empties the queue
/// whenever it traces. Without a log thread every thread writes for itself, one at a time.
///
/// Any thread may also flush, dump, and add and remove streamers and listeners; these may wait for
/// one another. AddLogFile alone has to come before other threads know the debugger.
class CDebugger : public NSLichen::IDebugger {
public:
    CDebugger(const std::string& name, const std::string& title, uint32_t flags);
    /// Writes what the queue still holds, then flushes. No thread may be tracing any more.
    ~CDebugger() override;
    CDebugger(const CDebugger&) = delete;
    CDebugger& operator=(const CDebugger&) = delete;

    void Trace(const NSLichen::CFailureSite& site, const char* text) override;
    void Report(const NSLichen::CExceptionBodyMixin&) override {}
    /// Assertions are dropped.
    void ReportAssertion(const NSLichen::CFailureSite&, const char*) override {}
    void Indent() override;
    void Outdent() override;

    /// Writes the queued lines; does nothing on a thread that is not the log thread.
    void DrainTraceQueue();
    /// Flushes the streamers.
    void Flush();

    void AddStreamer(const std::shared_ptr<ITraceOutputStreamer>& streamer);
    /// A log file in the folder, which ends in "\", named by the debugger's name and the time.
    /// Dumps go to that folder too.
    void AddLogFile(const std::string& folder);
    /// A log file of that path. With `erase` a file that is there is deleted first; when that
    /// fails, a plain std::exception is raised.
    void AddLogFileAt(const std::string& path, bool erase);
    /// Takes the first match away.
    void RemoveStreamer(const ITraceOutputStreamer* streamer);

    /// Debuggers that live at least as long as this one; it hands them nothing.
    void AddListener(const std::shared_ptr<NSLichen::IDebugger>& listener);
    void RemoveListener(const NSLichen::IDebugger* listener);

    /// Dumps the process into the log folder. Answers the dump's path, empty when there is no
    /// folder, no free name (19 dumps of one second), or when the dump fails.
    std::string WriteMiniDump();
    /// The same for a fault of the calling thread: `fault` is what the system hands to the handler,
    /// EXCEPTION_POINTERS* on Windows, ucontext_t* elsewhere. It allocates, so it may not come back
    /// from a fault inside the allocator.
    std::string WriteMiniDumpOnFault(void* fault);

    /// When set, all lines stand at level 0, and Indent and Outdent do nothing.
    void SetFlatTrace(bool flat) noexcept { fFlatTrace = flat; }

    const std::string& GetName() const { return fName; }
    const std::string& GetTitle() const { return fTitle; }
    const std::string& GetLogFolder() const { return fLogFolder; }
    const std::string& GetLogFileName() const { return fLogFileName; }
    const NSSupport::SCalendarTime& GetStartTime() const { return fStartTime; } // UTC

private:
    uint32_t GetLevel() const noexcept;
    void QueueLine(const NSLichen::CFailureSite& site, const NSSupport::SCalendarTime& time,
                   const char* text) noexcept;
    /// These under fStreamersMutex.
    void WriteQueuedLines();
    void WriteLine(const NSSupport::SCalendarTime& time, uint32_t thread, uint32_t level,
                   const char* text);
    template <class Work>
    void ForEachStreamer(Work&& work);

    std::string fName;
    std::string fTitle;
    std::string fLogFolder;
    std::string fLogFileName;
    NSSupport::SCalendarTime fStartTime;
    /// Held around all writing, also by the log thread: a thread that found no log thread may still
    /// be writing when one is claimed. A thread whose lines are queued never takes it.
    NSSupport::CPlatformMutex fStreamersMutex;
    mutable NSSupport::CPlatformMutex fListenersMutex;
    VMISOBuffer fQueue{kDebuggerQueueCapacity};
    std::atomic<uint32_t> fSkippedLine{0};
    std::atomic<bool> fFlatTrace{false};
    bool fDraining = false; // under fStreamersMutex
    std::vector<std::shared_ptr<NSLichen::IDebugger>> fListeners;
    std::vector<std::shared_ptr<ITraceOutputStreamer>> fStreamers;
    const bool fOwnsLogThread;
};

} // namespace NSDebugPackage
