#pragma once

#include "Failure/Chain/CExceptionBodyMixin.h"
#include "Failure/Chain/CFailureSite.h"

namespace NSLichen {

/// What the framework asks of a debugger. Any thread may call.
class IDebugger {
public:
    virtual void Trace(const CFailureSite& site, const char* text) = 0;
    virtual void Report(const CExceptionBodyMixin& failure) = 0;
    virtual void ReportAssertion(const CFailureSite& site, const char* text) = 0;
    /// The trace lines of the calling thread move in and out by one level. Neither raises.
    virtual void Indent() = 0;
    virtual void Outdent() = 0;
    virtual ~IDebugger() = default;

protected:
    IDebugger() = default;
    IDebugger(const IDebugger&) = default;
    IDebugger& operator=(const IDebugger&) = default;
};

} // namespace NSLichen
