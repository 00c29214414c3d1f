// Names for addresses of code, and the lock that all use of the platform's symbol functions shares.
#pragma once

#include "Support/Threads/CPlatformMutex.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace NSDebugPackage {

/// Counted: the first call starts the platform's engine, and the exit that belongs to it ends it.
/// An engine that does not start is told to the debug output only.
void InitSymbols();
void ExitSymbols();

/// Holds the symbol lock for a scope; scopes of one thread may nest. Raises a plain std::exception
/// when the platform refuses the lock.
class CSymbolLock {
public:
    CSymbolLock();

private:
    const NSSupport::CMutexLock fLock;
};

struct SCodeSymbol {
    std::string fSource; // the source file, or the module's where lines are not known
    unsigned long fLine = 0;
    std::string fName; // empty when unknown
    uint64_t fOffset = 0;
};

constexpr size_t kLongestSymbolName = 2000;

/// The platform's part, each call under the symbol lock.
bool StartSymbolEngine();
void EndSymbolEngine();
SCodeSymbol FindCodeSymbol(const void* address);
/// Fills at most `limit` return addresses of the calling thread from `first` on. When `first` is
/// not among them, all that lie above the caller.
uint32_t CaptureFrames(const void* first, void** frames, uint32_t limit);

} // namespace NSDebugPackage
