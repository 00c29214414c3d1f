#include "Tests/Host/LoadedLibrary.h"

#include <array>
#include <stdexcept>
#include <string>

#include <windows.h>

std::filesystem::path LinkedLibraryFile() {
    std::array<wchar_t, 1024> name{};
    GetModuleFileNameW(GetModuleHandleW(L"LoopLibrary.dll"), name.data(), 1024);
    return name.data();
}

bool IsLoaded(const std::filesystem::path& file) {
    return GetModuleHandleW(file.c_str()) != nullptr;
}

namespace {

int64_t BusyBytes(HANDLE heap) {
    int64_t bytes = 0;
    PROCESS_HEAP_ENTRY entry{};
    HeapLock(heap);
    while (HeapWalk(heap, &entry) != 0) {
        if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0) {
            bytes += entry.cbData;
        }
    }
    HeapUnlock(heap);
    return bytes;
}

} // namespace

// A library of one function that throws and catches one exception leaves about 1500 bytes, records
// of the threads that threw among them.
const int64_t kBytesKeptOfALoad = 2000;

// Slots of thread-local storage are handles too: a process has some thousand, given from the lowest
// free one on.
SProcessUse GetProcessUse() {
    DWORD handles = 0;
    GetProcessHandleCount(GetCurrentProcess(), &handles);
    const DWORD firstFreeSlot = TlsAlloc();
    TlsFree(firstFreeSlot);
    SProcessUse use{int64_t{handles} + firstFreeSlot, 0};
    std::array<HANDLE, 64> heaps{};
    const DWORD count = GetProcessHeaps(64, heaps.data());
    for (DWORD i = 0; i < count && i < heaps.size(); ++i) {
        use.fHeapBytes += BusyBytes(heaps[i]);
    }
    return use;
}

CLoadedLibrary::CLoadedLibrary(const std::filesystem::path& file)
    : fModule(LoadLibraryW(file.c_str())) {
    if (fModule == nullptr) {
        throw std::runtime_error("not loaded, error " + std::to_string(GetLastError()));
    }
}

CLoadedLibrary::~CLoadedLibrary() {
    FreeLibrary(static_cast<HMODULE>(fModule));
}

CFoundExport CLoadedLibrary::Find(const char* name) const {
    const FARPROC found = GetProcAddress(static_cast<HMODULE>(fModule), name);
    if (found == nullptr) {
        throw std::runtime_error(name);
    }
    return CFoundExport(reinterpret_cast<void*>(found));
}
