#include "Debug/Dump/DumpReport_posix.h"

#include "Debug/Dump/ProcessMemory_posix.h"
#include "Debug/Platform/CNewFile_posix.h"
#include "Debug/Platform/WriteAll_posix.h"
#include "Debug/Symbols/StackTrace.h"

#include <unistd.h>

namespace NSDebugPackage {

bool WriteDumpReport(const std::string& path) {
    SStackTrace trace;
    CaptureStackTrace(trace);
    std::string text = "Stack of thread " + std::to_string(gettid()) + ":\n";
    for (const std::string& line : PrintStackTrace(trace)) {
        text += line + '\n';
    }
    text += "\nMemory map:\n" + ReadSmallFile("/proc/self/maps");

    CNewFile file(path);
    return file.IsOpen() && WriteAll(file.Get(), text.data(), text.size()) && file.Finish();
}

} // namespace NSDebugPackage
