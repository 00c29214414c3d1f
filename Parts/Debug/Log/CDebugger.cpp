#include "Debug/Log/CDebugger.h"

#include "Debug/Dump/MiniDump.h"
#include "Debug/Log/CLogFile.h"
#include "Debug/Log/LogThread.h"
#include "Debug/Log/TraceLine.h"
#include "Debug/Platform/DebugPlatform.h"
#include "Debug/Symbols/SymbolEngine.h"
#include "Failure/Raising/DebuggerAccess.h"

#include <algorithm>
#include <cstring>

namespace NSDebugPackage {

using NSLichen::CFailureSite;
using NSSupport::CMutexLock;

namespace {

// A streamer that traces from its Write would otherwise never come back.
constexpr intptr_t kDeepestTrace = 16;

// Counts how deep the calling thread is inside the trace path.
class CTraceDepth {
public:
    CTraceDepth() noexcept : fDepth(GetThreadSlot(kThreadSlot_Depth) + 1) {
        SetThreadSlot(kThreadSlot_Depth, fDepth);
    }
    ~CTraceDepth() { SetThreadSlot(kThreadSlot_Depth, fDepth - 1); }
    CTraceDepth(const CTraceDepth&) = delete;
    CTraceDepth& operator=(const CTraceDepth&) = delete;

    bool IsTooDeep() const noexcept { return fDepth > kDeepestTrace; }

private:
    const intptr_t fDepth;
};

void AddToLevel(intptr_t delta) noexcept {
    SetThreadSlot(kThreadSlot_Level, GetThreadSlot(kThreadSlot_Level) + delta);
}

template <class Work>
void IgnoreFailure(Work&& work) noexcept {
    try {
        work();
    } catch (...) { // nothing is left that could be done
    }
}

template <class Object>
void RemoveFirst(std::vector<std::shared_ptr<Object>>& objects, const Object* object) {
    const auto found =
        std::find_if(objects.begin(), objects.end(),
                     [object](const auto& candidate) { return candidate.get() == object; });
    if (found != objects.end()) {
        objects.erase(found);
    }
}

} // namespace

CDebugger::CDebugger(const std::string& name, const std::string& title, uint32_t flags)
    : fName(name), fTitle(title), fStartTime(NSSupport::GetUtcTime()),
      fOwnsLogThread((flags & kDebuggerFlag_OwnLogThread) != 0) {
    InitSymbols();
    if ((flags & kDebuggerFlag_Install) != 0) {
        NSLichen::SetDebugger(this);
    }
    if (fOwnsLogThread) {
        SetLogThread();
    }
}

CDebugger::~CDebugger() {
    IgnoreFailure([this] {
        const CMutexLock lock(fStreamersMutex);
        WriteQueuedLines();
    });
    // Also when a streamer refused a line: others hold theirs.
    IgnoreFailure([this] { Flush(); });
    if (fOwnsLogThread) {
        ClearLogThread();
    }
    if (NSLichen::GetDebugger() == this) {
        NSLichen::SetDebugger(nullptr);
    }
    fStreamers.clear();
    IgnoreFailure(ExitSymbols);
}

void CDebugger::Trace(const CFailureSite& site, const char* text) {
    const CTraceDepth depth;
    if (depth.IsTooDeep()) {
        return;
    }
    DrainTraceQueue();
    const NSSupport::SCalendarTime time = NSSupport::GetUtcTime();
    if (IsLogThread()) {
        const CMutexLock lock(fStreamersMutex);
        WriteLine(time, 0, GetLevel(), text);
    } else {
        QueueLine(site, time, text);
    }
}

void CDebugger::Indent() {
    if (!fFlatTrace) {
        AddToLevel(1);
    }
}

void CDebugger::Outdent() {
    if (!fFlatTrace) {
        AddToLevel(-1);
    }
}

// The slot may be below 0 between an outdent and its indent; lines then stand at the edge.
uint32_t CDebugger::GetLevel() const noexcept {
    const intptr_t level = fFlatTrace ? 0 : GetThreadSlot(kThreadSlot_Level);
    return static_cast<uint32_t>(std::clamp<intptr_t>(level, 0, INT32_MAX));
}

void CDebugger::QueueLine(const CFailureSite& site, const NSSupport::SCalendarTime& time,
                          const char* text) noexcept {
    VMISOBufferEntry entry;
    entry.fTime = time;
    entry.fThread = GetCurrentThreadNumber();
    entry.fNumber = site.fNumber;
    entry.fIndent = GetLevel();
    std::memcpy(entry.fText, text, strnlen(text, kQueuedTextLength));
    if (!fQueue.Offer(entry)) {
        fSkippedLine = 1;
    }
}

void CDebugger::DrainTraceQueue() {
    if (!IsLogThread()) {
        return;
    }
    const CMutexLock lock(fStreamersMutex);
    WriteQueuedLines();
}

void CDebugger::WriteQueuedLines() {
    // A streamer that traces comes here again while its entry still counts as filled.
    if (fDraining) {
        return;
    }
    fDraining = true;
    try {
        fQueue.Drain([this](const VMISOBufferEntry& entry) {
            WriteLine(entry.fTime, entry.fThread, entry.fIndent, entry.fText);
        });
    } catch (...) {
        fDraining = false;
        throw;
    }
    fDraining = false;
    uint32_t skipped = 1;
    if (fSkippedLine.compare_exchange_strong(skipped, 0)) {
        WriteLine(NSSupport::GetUtcTime(), 0, GetLevel(),
                  "Debug: At least one line of the log was skipped because of too fast tracing "
                  "and/or too much CPU load.");
    }
}

template <class Work>
void CDebugger::ForEachStreamer(Work&& work) {
    for (size_t i = 0; i < fStreamers.size(); ++i) {
        // A streamer may add or remove streamers.
        const std::shared_ptr<ITraceOutputStreamer> streamer = fStreamers[i];
        work(*streamer);
    }
}

void CDebugger::WriteLine(const NSSupport::SCalendarTime& time, uint32_t thread, uint32_t level,
                          const char* text) {
    TraceLine line;
    FormatTraceLine(time, thread, level, text, line);
    ForEachStreamer([&line](ITraceOutputStreamer& streamer) { streamer.Write(line, sizeof line); });
}

void CDebugger::Flush() {
    const CMutexLock lock(fStreamersMutex);
    ForEachStreamer([](ITraceOutputStreamer& streamer) { streamer.Flush(); });
}

void CDebugger::AddStreamer(const std::shared_ptr<ITraceOutputStreamer>& streamer) {
    const CMutexLock lock(fStreamersMutex);
    fStreamers.push_back(streamer);
}

void CDebugger::AddLogFile(const std::string& folder) {
    fLogFolder = folder;
    fLogFileName = MakeLogFileName(fName, ".log");
    AddStreamer(std::make_shared<CLogFile>(fLogFileName, fLogFolder, false));
}

void CDebugger::AddLogFileAt(const std::string& path, bool erase) {
    AddStreamer(std::make_shared<CLogFile>(path, "", erase));
}

void CDebugger::RemoveStreamer(const ITraceOutputStreamer* streamer) {
    const CMutexLock lock(fStreamersMutex);
    RemoveFirst(fStreamers, streamer);
}

void CDebugger::AddListener(const std::shared_ptr<NSLichen::IDebugger>& listener) {
    const CMutexLock lock(fListenersMutex);
    fListeners.push_back(listener);
}

void CDebugger::RemoveListener(const NSLichen::IDebugger* listener) {
    const CMutexLock lock(fListenersMutex);
    RemoveFirst(fListeners, listener);
}

std::string CDebugger::WriteMiniDump() {
    return WriteMiniDumpOnFault(nullptr);
}

std::string CDebugger::WriteMiniDumpOnFault(void* fault) {
    return fLogFolder.empty() ? std::string() : WriteMiniDumpFile(fLogFolder, fName, fault);
}

} // namespace NSDebugPackage
