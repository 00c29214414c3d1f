#include "PorterPackage/FileSupport/CodeModule/OwnModule.h"

#include "Failure/Raising/Raise.h"
#include "FileLib/Platform/WindowsText.h"
#include "FileLib/Rules/NameMaking.h"

#include <exception>
#include <string>

#include <windows.h>

namespace NSPorter {

using NSFileLibInternals::StripLongPathPrefix;
using NSFileLibInternals::Utf16Of;
using NSFileLibInternals::WideOf;

namespace {

constexpr DWORD kPathRoom = 260;

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
    const std::u16string path = Utf16Of(fullPath);
    return {StripLongPathPrefix(path),
            StripLongPathPrefix(path.substr(0, static_cast<size_t>(filePart - fullPath)))};
}

CLibrarySearchFolder::CLibrarySearchFolder(const std::u16string& folder) {
    wchar_t before[kPathRoom + 1] = {};
    const DWORD length = GetDllDirectoryW(kPathRoom + 1, before);
    if (length >= 1 && length <= kPathRoom) {
        fFolderBefore = Utf16Of(before);
    }
    SetDllDirectoryW(WideOf<wchar_t>(folder).c_str());
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
