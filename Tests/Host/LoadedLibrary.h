#pragma once

#include "LoopLibrary/Public/LoopLibrary.h"

#include <cstdint>
#include <filesystem>

// The library loaded from a file while the program runs, as hosts of plug-ins do it.

/// The file that this program's own copy of the library came from.
std::filesystem::path LinkedLibraryFile();
/// Tells whether a module of this file is in the process.
bool IsLoaded(const std::filesystem::path& file);

/// What the process holds: open handles or descriptors, and bytes of heap, 0 where a sanitizer's
/// heap does not tell.
struct SProcessUse {
    int64_t fHandles = 0;
    int64_t fHeapBytes = 0;
};
SProcessUse GetProcessUse();
/// Heap that the language's runtime, which each load brings along where it is linked into the
/// library, keeps of a load for good.
extern const int64_t kBytesKeptOfALoad;

class CLoadedLibrary {
public:
    /// Throws std::runtime_error when the file does not load.
    explicit CLoadedLibrary(const std::filesystem::path& file);
    ~CLoadedLibrary();
    CLoadedLibrary(const CLoadedLibrary&) = delete;
    CLoadedLibrary& operator=(const CLoadedLibrary&) = delete;

private:
    void* fModule;

    template <class Function>
    Function Find(const char* name) const {
        return reinterpret_cast<Function>(FindExport(name));
    }
    // Throws std::runtime_error when there is none of the name.
    void* FindExport(const char* name) const;

public:
    // The exports, named as they are without their prefix.
#define LOADED_EXPORT(name)                                                                        \
    const decltype(&::LOP##name) name = Find<decltype(&::LOP##name)>("LOP" #name)
    LOADED_EXPORT(InitializeDLL);
    LOADED_EXPORT(UninitializeDLL);
    LOADED_EXPORT(Create);
    LOADED_EXPORT(Delete);
    LOADED_EXPORT(GetInfo);
    LOADED_EXPORT(GetInfoFromBuffer);
    LOADED_EXPORT(StartPreview);
    LOADED_EXPORT(StopPreview);
    LOADED_EXPORT(RenderPreviewBatch);
#undef LOADED_EXPORT
};
