// The form of lines and of the names of the files that hold them.
#pragma once

#include "Debug/Log/ITraceOutputStreamer.h"
#include "Support/Time/CalendarTime.h"

#include <cstdint>
#include <string>

namespace NSDebugPackage {

using TraceLine = char[kTraceLineSize];

/// "<thread, 16 hex digits> <local time> <indentation><text>". Text beyond the line's size is cut,
/// and the final character is taken away when it is not ASCII, complete or not: a cut inside a
/// character thus leaves no broken one in the log. `time` is UTC.
void FormatTraceLine(const NSSupport::SCalendarTime& time, uint32_t thread, uint32_t level,
                     const char* text, TraceLine& line);

/// "X 230302 123456.log" for the base "X", the extension ".log" and a local time.
std::string MakeLogFileName(const std::string& base, const std::string& extension,
                            const NSSupport::SCalendarTime& localTime);
/// The same, now.
std::string MakeLogFileName(const std::string& base, const std::string& extension);

/// "X 230302 123456 minidump.dmp" for n 1, "X 230302 123456 minidump 2.dmp" from 2 on; at most 1023
/// characters.
std::string MakeMiniDumpName(const std::string& base, int n,
                             const NSSupport::SCalendarTime& localTime);

/// A source path for a trace: what follows the first "\Dev\", otherwise what begins with the first
/// "boost\", otherwise the path.
std::string TrimSourcePath(const std::string& path);

} // namespace NSDebugPackage
