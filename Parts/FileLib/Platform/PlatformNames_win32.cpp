// Attributes, names and folders.

#include "FileLib/Platform/CSystemFileOps.h"
#include "FileLib/Platform/PlatformCodes.h"
#include "FileLib/Platform/WindowsText.h"
#include "FileLib/Platform/WindowsValues.h"
#include "FileLib/Rules/PathRules.h"

#include <memory>
#include <string_view>
#include <utility>

#include <windows.h>

namespace NSFileLibInternals {

namespace {

uint32_t LastErrorUnless(BOOL succeeded) {
    return succeeded ? kError_None : GetLastError();
}

SPlatformEntry EntryOf(const WIN32_FIND_DATAW& data) {
    SPlatformEntry entry;
    entry.fName = Utf16Of(data.cFileName);
    entry.fAttributes = data.dwFileAttributes;
    entry.fTimes = {TimeOf(data.ftCreationTime), TimeOf(data.ftLastAccessTime),
                    TimeOf(data.ftLastWriteTime)};
    entry.fSize = (static_cast<uint64_t>(data.nFileSizeHigh) << 32) | data.nFileSizeLow;
    return entry;
}

struct SScanCloser {
    void operator()(HANDLE scan) const { ::FindClose(scan); }
};
using ScanPointer = std::unique_ptr<void, SScanCloser>;

bool IsSelfOrParent(const WIN32_FIND_DATAW& data) {
    const std::wstring_view name = data.cFileName;
    return name == L"." || name == L"..";
}

// Goes on until the data is that of a real entry.
uint32_t SkipSelfAndParent(HANDLE scan, WIN32_FIND_DATAW& data) {
    while (IsSelfOrParent(data)) {
        if (!FindNextFileW(scan, &data)) {
            return GetLastError();
        }
    }
    return kError_None;
}

} // namespace

size_t CSystemFileOps::GetLongestPath() const noexcept {
    return kMaxPathLength;
}

uint32_t CSystemFileOps::ReadAttributes(const std::u16string& path, uint32_t& errorCode) {
    const DWORD attributes = GetFileAttributesW(WideOf<wchar_t>(path).c_str());
    errorCode = attributes == INVALID_FILE_ATTRIBUTES ? GetLastError() : kError_None;
    return attributes;
}

uint32_t CSystemFileOps::WriteAttributes(const std::u16string& path, uint32_t attributes) {
    return LastErrorUnless(SetFileAttributesW(WideOf<wchar_t>(path).c_str(),
                                              attributes != 0 ? attributes : kAttribute_Normal));
}

uint32_t CSystemFileOps::FindFirst(const std::u16string& folder, PlatformHandle& scan,
                                   SPlatformEntry& entry) {
    WIN32_FIND_DATAW data = {};
    const HANDLE handle = FindFirstFileW(WideOf<wchar_t>(folder + u"*").c_str(), &data);
    if (handle == INVALID_HANDLE_VALUE) {
        const DWORD errorCode = GetLastError();
        // The root of an empty volume has no "." that would be found.
        const bool isEmpty = errorCode == ERROR_FILE_NOT_FOUND && folder.size() == 3;
        return isEmpty ? kError_NoMoreFiles : errorCode;
    }
    ScanPointer owner(handle);
    const uint32_t errorCode = SkipSelfAndParent(handle, data);
    if (errorCode == kError_None) {
        entry = EntryOf(data);
        scan = reinterpret_cast<PlatformHandle>(owner.release());
    }
    return errorCode;
}

uint32_t CSystemFileOps::FindNext(PlatformHandle scan, SPlatformEntry& entry) {
    WIN32_FIND_DATAW data = {};
    if (!FindNextFileW(HandleOf(scan), &data)) {
        return GetLastError();
    }
    const uint32_t errorCode = SkipSelfAndParent(HandleOf(scan), data);
    if (errorCode == kError_None) {
        entry = EntryOf(data);
    }
    return errorCode;
}

void CSystemFileOps::EndFind(PlatformHandle scan) noexcept {
    ::FindClose(HandleOf(scan));
}

uint32_t CSystemFileOps::FindEntry(const std::u16string& path, SPlatformEntry& entry) {
    WIN32_FIND_DATAW data = {};
    const HANDLE handle = FindFirstFileW(WideOf<wchar_t>(path).c_str(), &data);
    if (handle == INVALID_HANDLE_VALUE) {
        return GetLastError();
    }
    ::FindClose(handle);
    entry = EntryOf(data);
    return kError_None;
}

// Files get their rights from their folder, and the file of another name is in the same.
void CSystemFileOps::CopyAccessRights(const std::u16string& /*from*/,
                                      const std::u16string& /*to*/) {}

uint32_t CSystemFileOps::Move(const std::u16string& from, const std::u16string& to,
                              uint32_t flags) {
    const DWORD systemFlags =
        ((flags & kMove_WriteThrough) != 0 ? DWORD{MOVEFILE_WRITE_THROUGH} : 0) |
        ((flags & kMove_Replace) != 0 ? DWORD{MOVEFILE_REPLACE_EXISTING} : 0);
    return LastErrorUnless(
        MoveFileExW(WideOf<wchar_t>(from).c_str(), WideOf<wchar_t>(to).c_str(), systemFlags));
}

uint32_t CSystemFileOps::Delete(const std::u16string& path) {
    return LastErrorUnless(DeleteFileW(WideOf<wchar_t>(path).c_str()));
}

uint32_t CSystemFileOps::MakeFolder(const std::u16string& path) {
    return LastErrorUnless(CreateDirectoryW(WideOf<wchar_t>(path).c_str(), nullptr));
}

uint32_t CSystemFileOps::RemoveFolder(const std::u16string& path) {
    return LastErrorUnless(RemoveDirectoryW(WideOf<wchar_t>(path).c_str()));
}

std::u16string CSystemFileOps::FollowLinks(const std::u16string& path) {
    return path;
}

uint32_t CSystemFileOps::MakeTempName(const std::u16string& folder, const std::u16string& prefix,
                                      uint32_t number, std::u16string& path) {
    wchar_t buffer[MAX_PATH + 1] = {};
    const std::wstring wideFolder = WideOf<wchar_t>(folder);
    const std::wstring widePrefix = WideOf<wchar_t>(prefix);
    // The system's own numbers go by the clock, so that several users of one folder get the same.
    for (int i = 0; i <= 0xFFFF; ++i) {
        if (GetTempFileNameW(wideFolder.c_str(), widePrefix.c_str(),
                             number != 0 ? number : NextTempNumber(GetCurrentProcessId()),
                             buffer) == 0) {
            return GetLastError();
        }
        std::u16string candidate = Utf16Of(buffer);
        PlatformHandle file = kNoPlatformHandle;
        const uint32_t errorCode =
            number != 0
                ? kError_None
                : Open(candidate, {EFileAccess::kReadWrite, kShare_None, EFileCreation::kCreateNew},
                       file);
        if (errorCode == kError_None) {
            if (number == 0) {
                Close(file);
            }
            path = std::move(candidate);
            return kError_None;
        }
        if (errorCode != kError_FileExists && errorCode != kError_AlreadyExists) {
            return errorCode;
        }
    }
    return kError_FileExists;
}

uint32_t CSystemFileOps::ReadLongPath(const std::u16string& path, std::u16string& longPath) {
    std::wstring buffer(MAX_PATH + 1, L'\0');
    for (;;) {
        const DWORD length = GetLongPathNameW(WideOf<wchar_t>(path).c_str(), buffer.data(),
                                              static_cast<DWORD>(buffer.size()));
        if (length == 0) {
            return GetLastError();
        }
        if (length < buffer.size()) {
            longPath = Utf16Of(buffer.c_str());
            return kError_None;
        }
        buffer.resize(length);
    }
}

} // namespace NSFileLibInternals
