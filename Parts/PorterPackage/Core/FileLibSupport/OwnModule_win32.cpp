#include "PorterPackage/Core/FileLibSupport/OwnModule.h"

#include <exception>
#include <string>

#include <windows.h>

#include "Failure/Raise.h"
#include "FileLib/Source/Win/NameMaking.h"

namespace NSPorter {

namespace {

constexpr DWORD kPathRoom = 260;

std::u16string ToNative(const wchar_t* text, size_t length) {
    return std::u16string(text, text + length);
}

} // namespace

SOwnModulePath FindOwnModulePath(void* systemHandle) {
    wchar_t moduleName[kPathRoom] = {};
    const DWORD moduleLength =
        GetModuleFileNameW(static_cast<HMODULE>(systemHandle), moduleName, kPathRoom);
    // A name that fills the room was cut.
    if (moduleLength == 0 || moduleLength >= kPathRoom) {
        NSLichen::Raise(std::exception());
    }
    wchar_t fullPath[kPathRoom] = {};
    wchar_t* filePart = nullptr;
    const DWORD fullLength = GetFullPathNameW(moduleName, kPathRoom, fullPath, &filePart);
    if (fullLength == 0 || fullLength >= kPathRoom || filePart == nullptr) {
        NSLichen::Raise(std::exception());
    }
    using NSFileLibInternals::StripLongPathPrefix;
    return {StripLongPathPrefix(ToNative(fullPath, fullLength)),
            StripLongPathPrefix(ToNative(fullPath, static_cast<size_t>(filePart - fullPath)))};
}

CLibrarySearchFolder::CLibrarySearchFolder(const std::u16string& folder) {
    wchar_t before[kPathRoom + 1] = {};
    const DWORD length = GetDllDirectoryW(kPathRoom + 1, before);
    if (length >= 1 && length <= kPathRoom) {
        fFolderBefore = ToNative(before, length);
    }
    SetDllDirectoryW(std::wstring(folder.begin(), folder.end()).c_str());
}

CLibrarySearchFolder::~CLibrarySearchFolder() {
    if (fFolderBefore.empty()) {
        SetDllDirectoryW(nullptr);
        return;
    }
    // A fixed buffer: nothing may fail here.
    wchar_t before[kPathRoom + 1] = {};
    for (size_t i = 0; i < fFolderBefore.size(); ++i) {
        before[i] = fFolderBefore[i];
    }
    SetDllDirectoryW(before);
}

} // namespace NSPorter
