#pragma once

#include <cstddef>

namespace NSDebugPackage {

/// The size of the buffer that a finished line comes in, its terminator included.
constexpr size_t kTraceLineSize = 4096;

/// Where finished lines go. A debugger calls one streamer from one thread at a time.
class ITraceOutputStreamer {
public:
    virtual ~ITraceOutputStreamer() = default;
    /// `line` is UTF-8 with a terminator and without a line end; `bufferSize` is kTraceLineSize.
    virtual void Write(const char* line, size_t bufferSize) = 0;
    virtual void Flush() = 0;

protected:
    ITraceOutputStreamer() = default;
    ITraceOutputStreamer(const ITraceOutputStreamer&) = default;
    ITraceOutputStreamer& operator=(const ITraceOutputStreamer&) = default;
};

} // namespace NSDebugPackage
