#include "Tests/Host/LoadedLibrary.h"

#include <array>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

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

// Handles are multiples of four, given from the lowest free one on. GetProcessHandleCount answers 0
// under Wine.
int64_t OpenHandles() {
    int64_t handles = 0;
    for (uintptr_t value = 4; value < 8000; value += 4) {
        DWORD flags = 0;
        // NOLINTNEXTLINE(performance-no-int-to-ptr): handles are numbers.
        handles += GetHandleInformation(reinterpret_cast<HANDLE>(value), &flags) != 0 ? 1 : 0;
    }
    return handles;
}

// Of the 1088 slots of thread-local storage that a process has. Those that are left are counted,
// since the lowest of them says nothing about those above it.
int64_t SlotsInUse() {
    std::vector<DWORD> left;
    for (DWORD slot = TlsAlloc(); slot != TLS_OUT_OF_INDEXES; slot = TlsAlloc()) {
        left.push_back(slot);
    }
    for (const DWORD slot : left) {
        TlsFree(slot);
    }
    return 1088 - static_cast<int64_t>(left.size());
}

} // namespace

// A library of one function that throws and catches one exception leaves about 1500 bytes, records
// of the threads that threw among them.
const int64_t kBytesKeptOfALoad = 2000;

SProcessUse GetProcessUse() {
    SProcessUse use{OpenHandles() + SlotsInUse(), 0};
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
