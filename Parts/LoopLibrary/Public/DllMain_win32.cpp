#include "LoopLibrary/Public/CInsideLibrary.h"
#include "LoopLibrary/Public/PlatformVersion.h"
#include "LoopLibrary/Public/RuntimeThreadSlot_win32.h"
#include "LoopLibrary/Public/SystemHandle.h"

#include <windows.h>

namespace __gnu_cxx { // NOLINT(bugprone-reserved-identifier): the runtime's own name

// Frees the memory that the language's runtime, a copy of which each load of this library brings
// along, keeps for exceptions when memory is short. Nothing but the process's end does so
// otherwise.
void __freeres(); // NOLINT(bugprone-reserved-identifier)

} // namespace __gnu_cxx

namespace NSLOPDLL {

namespace {

void* gSystemHandle = nullptr;
bool gIsUnloaded = false;

// Is constructed before every other static object of the library and so destroyed after them, when
// nothing is left that throws, locks a mutex or asks for thread-local storage.
class CAfterAllElse {
public:
    CAfterAllElse() = default;
    ~CAfterAllElse() {
        if (gIsUnloaded) {
            FreeRuntimeThreadSlot(gSystemHandle);
        }
    }
    CAfterAllElse(const CAfterAllElse&) = delete;
    CAfterAllElse& operator=(const CAfterAllElse&) = delete;
};

[[gnu::init_priority(101)]] CAfterAllElse gAfterAllElse;

bool IsThisWindowsSupported() noexcept {
    OSVERSIONINFOEXW version{};
    version.dwOSVersionInfoSize = sizeof version;
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
    const BOOL known = GetVersionExW(reinterpret_cast<OSVERSIONINFOW*>(&version));
#pragma GCC diagnostic pop
    if (known == 0) {
        return false;
    }
    SYSTEM_INFO system{};
    GetSystemInfo(&system);
    return IsSupportedWindows({version.dwMajorVersion, version.dwMinorVersion,
                               version.wServicePackMajor,
                               version.wProductType == VER_NT_WORKSTATION,
                               system.wProcessorArchitecture == PROCESSOR_ARCHITECTURE_AMD64});
}

} // namespace

void* GetSystemHandle() noexcept {
    return gSystemHandle;
}

} // namespace NSLOPDLL

// Runs under the loader's lock: it loads nothing, waits for nothing and throws nothing.
extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID);

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID processEnds) {
    using namespace NSLOPDLL;
    gSystemHandle = instance;
    const CInsideLibrary inside;
    if (reason == DLL_PROCESS_ATTACH && !IsThisWindowsSupported()) {
        return FALSE;
    }
    if (reason == DLL_PROCESS_DETACH && processEnds == nullptr) {
        gIsUnloaded = true;
        __gnu_cxx::__freeres();
    }
    return TRUE;
}
