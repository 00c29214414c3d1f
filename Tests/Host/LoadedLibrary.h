#pragma once

#include "LoopLibrary/Public/LoopLibrary.h"

#include <cstdint>
#include <filesystem>

// The library loaded from a file while the program runs, as hosts of plug-ins do it.

/// The file that this program's own copy of the library came from.
std::filesystem::path LinkedLibraryFile();
/// Tells whether a module of this file is in the process.
bool IsLoaded(const std::filesystem::path& file);

/// What the process holds: open handles and slots of thread-local storage, or descriptors, and
/// bytes of heap, 0 where a sanitizer's heap does not tell.
struct SProcessUse {
    int64_t fHandles = 0;
    int64_t fHeapBytes = 0;
};
SProcessUse GetProcessUse();
/// Heap that the language's runtime, which each load brings along where it is linked into the
/// library, keeps of a load for good.
extern const int64_t kBytesKeptOfALoad;

/// An address that is whichever function it is assigned to.
class CFoundExport {
public:
    explicit CFoundExport(void* address) : fAddress(address) {}
    template <class Function>
    operator Function*() const { // NOLINT(google-explicit-constructor)
        return reinterpret_cast<Function*>(fAddress);
    }

private:
    void* fAddress;
};

class CLoadedLibrary {
public:
    /// Throws std::runtime_error when the file does not load.
    explicit CLoadedLibrary(const std::filesystem::path& file);
    ~CLoadedLibrary();
    CLoadedLibrary(const CLoadedLibrary&) = delete;
    CLoadedLibrary& operator=(const CLoadedLibrary&) = delete;

private:
    // Throws std::runtime_error when there is none of the name.
    CFoundExport Find(const char* name) const;

    void* fModule; // before the exports, which are found in it

public:
    const decltype(&::LOPInitializeDLL) InitializeDLL = Find("LOPInitializeDLL");
    const decltype(&::LOPUninitializeDLL) UninitializeDLL = Find("LOPUninitializeDLL");
    const decltype(&::LOPCreate) Create = Find("LOPCreate");
    const decltype(&::LOPDelete) Delete = Find("LOPDelete");
    const decltype(&::LOPGetInfo) GetInfo = Find("LOPGetInfo");
    const decltype(&::LOPStartPreview) StartPreview = Find("LOPStartPreview");
    const decltype(&::LOPStopPreview) StopPreview = Find("LOPStopPreview");
    const decltype(&::LOPRenderPreviewBatch) RenderPreviewBatch = Find("LOPRenderPreviewBatch");
};
