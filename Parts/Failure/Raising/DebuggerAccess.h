#pragma once

#include "Failure/Raising/IDebugger.h"

namespace NSLichen {

/// The module's debugger: null until one installs itself. Borrowed; written during start.
void SetDebugger(IDebugger* debugger) noexcept;
IDebugger* GetDebugger() noexcept;

/// Hands a failed assertion to the debugger. Without one it raises XUnitTestFailure with the text
/// "OnAssertionFailed", whatever the text given.
void OnAssertionFailed(const CFailureSite& place, const char* text);

// The entries below return at once when there is no debugger.

/// Renders in the manner of printf, up to 4095 characters, and traces the result.
[[gnu::format(printf, 2, 3)]] void TraceFormatted(const CFailureSite& site, const char* format,
                                                  ...);
/// The same for a line that stands one level out from its block.
[[gnu::format(printf, 2, 3)]] void TraceFormattedOutdented(const CFailureSite& site,
                                                           const char* format, ...);
void ReportToDebugger(const CExceptionBodyMixin& failure);
void IndentTrace();
void OutdentTrace();

} // namespace NSLichen
