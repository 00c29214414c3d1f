#include "FileLib/Implementation/CFileHandle.h"

#include "FileLib/Platform/PlatformCodes.h"

#include <utility>

namespace NSFileLibInternals {

CFileHandle::~CFileHandle() {
    Close();
}

uint32_t CFileHandle::Open(const std::u16string& path, const SOpenRequest& request) {
    Close();
    fOps = &GetPlatformFileOps();
    return fOps->Open(path, request, fHandle);
}

void CFileHandle::Close() noexcept {
    if (IsOpen()) {
        fOps->Close(std::exchange(fHandle, kNoPlatformHandle));
    }
}

bool CFileHandle::IsOpen() const noexcept {
    return fHandle != kNoPlatformHandle;
}

} // namespace NSFileLibInternals
