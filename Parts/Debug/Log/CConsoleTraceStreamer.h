#pragma once

#include "Debug/Log/ITraceOutputStreamer.h"

namespace NSDebugPackage {

/// Sends lines to the debug output of the platform.
class CConsoleTraceStreamer : public ITraceOutputStreamer {
public:
    void Write(const char* line, size_t bufferSize) override;
    void Flush() override {}
};

} // namespace NSDebugPackage
