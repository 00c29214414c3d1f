// Volumes, well-known places, and what else the system is asked.

#include "FileLib/Platform/CSystemFileOps.h"
#include "FileLib/Platform/PlatformCodes.h"
#include "FileLib/Platform/WindowsText.h"

#include <string>

#include <windows.h>

namespace NSFileLibInternals {

namespace {

// Asks again with more room until the answer fits: ask gives a length without the terminator, or,
// when the room is too small, the room that is needed; 0 for an error.
template <class Ask>
uint32_t ReadGrowingText(std::wstring& text, Ask ask) {
    text.resize(MAX_PATH + 1);
    for (;;) {
        const DWORD length = ask(text.data(), static_cast<DWORD>(text.size()));
        if (length == 0) {
            return GetLastError();
        }
        if (length < text.size()) {
            text.resize(length);
            return kError_None;
        }
        text.resize(length + 1);
    }
}

template <class Ask>
uint32_t ReadGrowingPath(std::u16string& path, Ask ask) {
    std::wstring text;
    const uint32_t errorCode = ReadGrowingText(text, ask);
    if (errorCode == kError_None) {
        path = Utf16Of(text.c_str());
    }
    return errorCode;
}

} // namespace

IPlatformFileOps& GetSystemFileOps() {
    static CSystemFileOps ops;
    return ops;
}

uint32_t CSystemFileOps::FindTempFolder(std::u16string& folder) {
    return ReadGrowingPath(folder,
                           [](wchar_t* text, DWORD room) { return GetTempPathW(room, text); });
}

uint32_t CSystemFileOps::ListDriveRoots(std::vector<std::u16string>& roots) {
    std::wstring list;
    const uint32_t errorCode = ReadGrowingText(
        list, [](wchar_t* text, DWORD room) { return GetLogicalDriveStringsW(room, text); });
    if (errorCode != kError_None) {
        return errorCode;
    }
    roots.clear();
    for (const wchar_t* root = list.c_str(); *root != L'\0';) {
        roots.push_back(Utf16Of(root));
        root += roots.back().size() + 1;
    }
    return kError_None;
}

uint32_t CSystemFileOps::ReadDriveKind(const std::u16string& root) {
    return GetDriveTypeW(WideOf<wchar_t>(root).c_str());
}

uint32_t CSystemFileOps::ReadVolumeInfo(const std::u16string& root, SPlatformVolume& info) {
    wchar_t label[MAX_PATH + 1] = {};
    wchar_t fileSystem[MAX_PATH + 1] = {};
    DWORD serialNumber = 0;
    DWORD maxComponentLength = 0;
    DWORD flags = 0;
    if (!GetVolumeInformationW(WideOf<wchar_t>(root).c_str(), label, MAX_PATH + 1, &serialNumber,
                               &maxComponentLength, &flags, fileSystem, MAX_PATH + 1)) {
        return GetLastError();
    }
    info = {Utf16Of(label), Utf16Of(fileSystem), serialNumber, maxComponentLength, flags};
    return kError_None;
}

uint32_t CSystemFileOps::ReadDiskSpace(const std::u16string& folder, SDiskSpace& space) {
    ULARGE_INTEGER freeForUser = {};
    ULARGE_INTEGER total = {};
    if (!GetDiskFreeSpaceExW(WideOf<wchar_t>(folder).c_str(), &freeForUser, &total, nullptr)) {
        return GetLastError();
    }
    space = {freeForUser.QuadPart, total.QuadPart};
    return kError_None;
}

uint32_t CSystemFileOps::ReadDeviceName(const std::u16string& drive, std::u16string& name) {
    wchar_t buffer[1024] = {};
    if (QueryDosDeviceW(WideOf<wchar_t>(drive).c_str(), buffer, 1024) == 0) {
        return GetLastError();
    }
    name = Utf16Of(buffer);
    return kError_None;
}

uint32_t CSystemFileOps::FindWindowsFolder(std::u16string& folder) {
    return ReadGrowingPath(
        folder, [](wchar_t* text, DWORD room) { return GetWindowsDirectoryW(text, room); });
}

uint32_t CSystemFileOps::FindExecutable(std::u16string& path) {
    // A cut answer fills the room and tells nothing else.
    return ReadGrowingPath(path, [](wchar_t* text, DWORD room) {
        const DWORD length = GetModuleFileNameW(nullptr, text, room);
        return length == room ? room * 2 : length;
    });
}

uint32_t CSystemFileOps::SetErrorMode(uint32_t mode) noexcept {
    // The mode of the thread: that of the process would race with other threads of the host.
    DWORD before = 0;
    SetThreadErrorMode(mode, &before);
    return before;
}

void CSystemFileOps::Wait(uint32_t milliseconds) noexcept {
    Sleep(milliseconds);
}

} // namespace NSFileLibInternals
