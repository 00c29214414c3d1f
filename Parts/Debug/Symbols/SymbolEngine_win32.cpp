#include "Debug/Symbols/SymbolEngine.h"

#include <windows.h>

#include <dbghelp.h>

#include <algorithm>
#include <cstdint>
#include <vector>

namespace NSDebugPackage {

namespace {

// The debug help library, loaded when it is needed: no module that only carries this code depends
// on it.
struct SDebugHelp {
    HMODULE fModule = nullptr;
    decltype(&::SymSetOptions) fSetOptions = nullptr;
    decltype(&::SymInitialize) fInitialize = nullptr;
    decltype(&::SymCleanup) fCleanup = nullptr;
    decltype(&::SymFromAddr) fFromAddress = nullptr;
    decltype(&::SymGetLineFromAddr64) fLineFromAddress = nullptr;
};

SDebugHelp gHelp;
bool gStarted = false;

template <class Function>
bool Find(HMODULE module, const char* name, Function& function) {
    function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
    return function != nullptr;
}

bool LoadDebugHelp() {
    gHelp.fModule = LoadLibraryW(L"dbghelp.dll");
    return gHelp.fModule != nullptr && Find(gHelp.fModule, "SymSetOptions", gHelp.fSetOptions) &&
           Find(gHelp.fModule, "SymInitialize", gHelp.fInitialize) &&
           Find(gHelp.fModule, "SymCleanup", gHelp.fCleanup) &&
           Find(gHelp.fModule, "SymFromAddr", gHelp.fFromAddress) &&
           Find(gHelp.fModule, "SymGetLineFromAddr64", gHelp.fLineFromAddress);
}

// No boxes for drives without a medium while symbols are looked for.
class CErrorBoxesOff {
public:
    CErrorBoxesOff() : fBefore(SetErrorMode(SEM_FAILCRITICALERRORS)) {}
    ~CErrorBoxesOff() { SetErrorMode(fBefore); }
    CErrorBoxesOff(const CErrorBoxesOff&) = delete;
    CErrorBoxesOff& operator=(const CErrorBoxesOff&) = delete;

private:
    const UINT fBefore;
};

} // namespace

bool StartSymbolEngine() {
    gStarted = false;
    if (LoadDebugHelp()) {
        gHelp.fSetOptions(SYMOPT_UNDNAME | SYMOPT_DEFERRED_LOADS);
        gStarted = gHelp.fInitialize(GetCurrentProcess(), nullptr, TRUE) != 0;
    }
    return gStarted;
}

void EndSymbolEngine() {
    if (gStarted) {
        gHelp.fCleanup(GetCurrentProcess());
        gStarted = false;
    }
    if (gHelp.fModule != nullptr) {
        FreeLibrary(gHelp.fModule);
    }
    gHelp = {};
}

SCodeSymbol FindCodeSymbol(const void* address) {
    SCodeSymbol result;
    if (!gStarted) {
        return result;
    }
    const CErrorBoxesOff boxesOff;
    const auto place = reinterpret_cast<DWORD64>(address);
    // The record is followed by its text; 64-bit units keep it aligned.
    std::vector<uint64_t> memory((sizeof(SYMBOL_INFO) + kLongestSymbolName) / sizeof(uint64_t) + 1);
    auto* const symbol = reinterpret_cast<SYMBOL_INFO*>(memory.data());
    symbol->SizeOfStruct = sizeof(SYMBOL_INFO);
    symbol->MaxNameLen = kLongestSymbolName;
    DWORD64 offset = 0;
    if (gHelp.fFromAddress(GetCurrentProcess(), place, &offset, symbol)) {
        result.fName = symbol->Name;
        result.fOffset = offset;
    }
    IMAGEHLP_LINE64 line{};
    line.SizeOfStruct = sizeof line;
    DWORD column = 0;
    if (gHelp.fLineFromAddress(GetCurrentProcess(), place, &column, &line)) {
        result.fSource = line.FileName;
        result.fLine = line.LineNumber;
    }
    return result;
}

uint32_t CaptureFrames(const void* first, void** frames, uint32_t limit) {
    decltype(&::RtlCaptureStackBackTrace) capture = nullptr;
    const HMODULE kernel = GetModuleHandleW(L"kernel32.dll");
    if (kernel == nullptr || !Find(kernel, "RtlCaptureStackBackTrace", capture)) {
        return 0;
    }
    // How many frames of this package lie on top depends on the build.
    void* top[4] = {};
    const USHORT count = capture(0, static_cast<DWORD>(std::size(top)), top, nullptr);
    const auto skipped = std::find(top, top + count, first) - top;
    return capture(static_cast<DWORD>(skipped < count ? skipped : 2), limit, frames, nullptr);
}

} // namespace NSDebugPackage
