#include "Failure/Raising/DebuggerAccess.h"

#include "Failure/Classes/XUnitTestFailure.h"
#include "Failure/Raising/Raise.h"

#include <atomic>
#include <cstdarg>
#include <cstdio>

namespace NSLichen {

namespace {

constinit std::atomic<IDebugger*> sDebugger = nullptr;

constexpr std::size_t kTraceBufferSize = 4096;

[[gnu::format(printf, 3, 0)]] void TraceRendered(IDebugger& debugger, const CFailureSite& site,
                                                 const char* format, va_list arguments) {
    char text[kTraceBufferSize] = {};
    std::vsnprintf(text, sizeof text, format, arguments);
    text[sizeof text - 1] = '\0';
    debugger.Trace(site, text);
}

// Moves the calling thread's lines out by one level for a scope, however that ends.
class COutdentedTrace {
public:
    explicit COutdentedTrace(IDebugger& debugger) : fDebugger(debugger) { fDebugger.Outdent(); }
    ~COutdentedTrace() { fDebugger.Indent(); }
    COutdentedTrace(const COutdentedTrace&) = delete;
    COutdentedTrace& operator=(const COutdentedTrace&) = delete;

private:
    IDebugger& fDebugger;
};

} // namespace

void SetDebugger(IDebugger* debugger) noexcept {
    sDebugger.store(debugger, std::memory_order_release);
}

IDebugger* GetDebugger() noexcept {
    return sDebugger.load(std::memory_order_acquire);
}

void OnAssertionFailed(const CFailureSite& place, const char* text) {
    IDebugger* const debugger = GetDebugger();
    if (debugger == nullptr) {
        Raise(XUnitTestFailure("OnAssertionFailed"));
    }
    debugger->ReportAssertion(place, text);
}

void TraceFormatted(const CFailureSite& site, const char* format, ...) {
    if (IDebugger* const debugger = GetDebugger()) {
        va_list arguments;
        va_start(arguments, format);
        TraceRendered(*debugger, site, format, arguments);
        va_end(arguments);
    }
}

void TraceFormattedOutdented(const CFailureSite& site, const char* format, ...) {
    if (IDebugger* const debugger = GetDebugger()) {
        const COutdentedTrace outdented(*debugger);
        va_list arguments;
        va_start(arguments, format);
        TraceRendered(*debugger, site, format, arguments);
        va_end(arguments);
    }
}

void ReportToDebugger(const CExceptionBodyMixin& failure) {
    if (IDebugger* const debugger = GetDebugger()) {
        debugger->Report(failure);
    }
}

void IndentTrace() {
    if (IDebugger* const debugger = GetDebugger()) {
        debugger->Indent();
    }
}

void OutdentTrace() {
    if (IDebugger* const debugger = GetDebugger()) {
        debugger->Outdent();
    }
}

} // namespace NSLichen
