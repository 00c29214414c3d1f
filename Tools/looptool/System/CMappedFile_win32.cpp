#include "looptool/System/CMappedFile.h"

#include <windows.h>

namespace NSLoopTool {

CMappedFile::CMappedFile(const std::filesystem::path& path) {
    constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, kShareAll, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return;
    }
    LARGE_INTEGER size{};
    if (GetFileType(file) == FILE_TYPE_DISK && GetFileSizeEx(file, &size) != 0) {
        fIsOpen = size.QuadPart == 0;
        const HANDLE mapping =
            fIsOpen ? nullptr : CreateFileMappingW(file, nullptr, PAGE_READONLY, 0, 0, nullptr);
        if (mapping != nullptr) {
            const void* const bytes = MapViewOfFile(mapping, FILE_MAP_READ, 0, 0, 0);
            CloseHandle(mapping); // the view keeps it
            fIsOpen = bytes != nullptr;
            if (fIsOpen) {
                fBytes = {static_cast<const uint8_t*>(bytes), static_cast<size_t>(size.QuadPart)};
            }
        }
    }
    CloseHandle(file);
}

CMappedFile::~CMappedFile() {
    if (!fBytes.empty()) {
        UnmapViewOfFile(fBytes.data());
    }
}

} // namespace NSLoopTool
