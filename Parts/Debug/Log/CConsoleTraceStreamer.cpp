#include "Debug/Log/CConsoleTraceStreamer.h"

#include "Debug/Platform/DebugPlatform.h"

namespace NSDebugPackage {

void CConsoleTraceStreamer::Write(const char* line, size_t) {
    SendToDebugOutput(line);
    SendToDebugOutput("\n");
}

} // namespace NSDebugPackage
