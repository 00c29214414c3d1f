// A build of the library, opened by its path, so that two builds can be measured in one run.
#pragma once

#include "LoopLibrary/Public/LoopLibrary.h"

#include <cstdint>
#include <string>
#include <vector>

namespace LoopBench {

class CLibrary {
public:
    /// Throws std::runtime_error when there is no library, or one without a function.
    CLibrary(std::string name, const std::string& path);
    ~CLibrary();
    CLibrary(const CLibrary&) = delete;
    CLibrary& operator=(const CLibrary&) = delete;

    const std::string& GetName() const { return fName; }
    const std::string& GetPath() const { return fPath; }

    decltype(&LOPInitializeDLL) fInitialize;
    decltype(&LOPUninitializeDLL) fUninitialize;
    decltype(&LOPCreate) fCreate;
    decltype(&LOPDelete) fDelete;
    decltype(&LOPGetInfo) fGetInfo;
    decltype(&LOPGetInfoFromBuffer) fGetInfoFromBuffer;
    decltype(&LOPGetSliceInfo) fGetSliceInfo;
    decltype(&LOPRenderSlice) fRenderSlice;
    decltype(&LOPSetOutputSampleRate) fSetOutputSampleRate;
    decltype(&LOPStartPreview) fStartPreview;
    decltype(&LOPStopPreview) fStopPreview;
    decltype(&LOPSetPreviewTempo) fSetPreviewTempo;
    decltype(&LOPRenderPreviewBatch) fRenderPreviewBatch;

    /// Loads a loop; throws when the library refuses it.
    LOPHandle Load(const std::vector<uint8_t>& file) const;

private:
    std::string fName;
    std::string fPath;
    void* fModule;
};

/// The function of a module, which stays open. Throws std::runtime_error without it.
void* FindInModule(const std::string& path, const char* name);

} // namespace LoopBench
