#include "Debug/Log/DebugFiles.h"

#include "Support/Modules/WideText_win32.h"

#include <windows.h>

#include <objbase.h>
#include <shlobj.h>

namespace NSDebugPackage {

using NSSupport::Wide;

namespace {

HANDLE ToHandle(intptr_t file) {
    return reinterpret_cast<HANDLE>(file); // NOLINT(performance-no-int-to-ptr)
}

bool FindShellFolder(int number, std::u16string& folder) {
    LPITEMIDLIST item = nullptr;
    if (SHGetSpecialFolderLocation(nullptr, number, &item) != S_OK) {
        return false;
    }
    wchar_t path[MAX_PATH] = {};
    const bool found = SHGetPathFromIDListW(item, path) && path[0] != L'\0';
    CoTaskMemFree(item);
    if (found) {
        folder = reinterpret_cast<const char16_t*>(path);
        if (folder.back() != u'\\') {
            folder += u'\\';
        }
    }
    return found;
}

} // namespace

bool PathExists(const std::u16string& path) {
    return GetFileAttributesW(Wide(path)) != INVALID_FILE_ATTRIBUTES;
}

bool MakeFolder(const std::u16string& path) {
    return CreateDirectoryW(Wide(path), nullptr) != 0;
}

bool RemoveFile(const std::u16string& path) {
    return DeleteFileW(Wide(path)) != 0;
}

bool CopyOneFile(const std::u16string& source, const std::u16string& target) {
    return CopyFileW(Wide(source), Wide(target), FALSE) != 0;
}

bool FindDocumentsFolder(std::u16string& folder) {
    return FindShellFolder(CSIDL_PERSONAL, folder);
}

bool FindDesktopFolder(std::u16string& folder) {
    return FindShellFolder(CSIDL_DESKTOP, folder);
}

CAppendFile::CAppendFile(const std::u16string& path)
    : fFile(reinterpret_cast<intptr_t>(CreateFileW(Wide(path), FILE_APPEND_DATA, FILE_SHARE_READ,
                                                   nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL,
                                                   nullptr))) {}

CAppendFile::~CAppendFile() {
    if (ToHandle(fFile) != INVALID_HANDLE_VALUE) {
        CloseHandle(ToHandle(fFile));
    }
}

bool CAppendFile::Append(const char* bytes, size_t count) {
    LARGE_INTEGER distance;
    distance.QuadPart = 0;
    DWORD written = 0;
    return ToHandle(fFile) != INVALID_HANDLE_VALUE &&
           SetFilePointerEx(ToHandle(fFile), distance, nullptr, FILE_END) &&
           WriteFile(ToHandle(fFile), bytes, static_cast<DWORD>(count), &written, nullptr) &&
           written == count;
}

void CAppendFile::Flush() {
    if (ToHandle(fFile) != INVALID_HANDLE_VALUE) {
        FlushFileBuffers(ToHandle(fFile));
    }
}

} // namespace NSDebugPackage
