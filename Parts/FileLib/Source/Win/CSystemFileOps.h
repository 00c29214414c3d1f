#pragma once

#include "FileLib/Source/Win/IPlatformFileOps.h"

#include <string>

namespace NSFileLibInternals {

// POSIX with one volume, "C:\", which is "/"; other letters and shares are well formed and do not
// exist. Handles are file descriptors, and pointers for scans; shell items are the bytes of a path.
//
// Sharing is by advisory locks, so it holds among users of this library. A name with the extension
// of an alias is taken as the link itself and not as what it leads to, which makes symbolic links
// under such names behave as shell links do. Hidden is a leading ".", and cannot be set; a file
// without any write permission is read-only, also for those who may write everything.
class CPosixFileOps : public IPlatformFileOps {
public:
    size_t GetLongestPath() const noexcept override;
    uint32_t ReadAttributes(const std::u16string& path, uint32_t& errorCode) override;
    uint32_t WriteAttributes(const std::u16string& path, uint32_t attributes) override;
    uint32_t FindFirst(const std::u16string& folder, PlatformHandle& scan,
                       SPlatformEntry& entry) override;
    uint32_t FindNext(PlatformHandle scan, SPlatformEntry& entry) override;
    void EndFind(PlatformHandle scan) noexcept override;
    uint32_t FindEntry(const std::u16string& path, SPlatformEntry& entry) override;
    uint32_t Open(const std::u16string& path, const SOpenRequest& request,
                  PlatformHandle& file) override;
    void Close(PlatformHandle file) noexcept override;
    uint32_t Read(PlatformHandle file, uint64_t position, uint64_t count, uint8_t* buffer,
                  uint64_t& transferred) override;
    uint32_t Write(PlatformHandle file, uint64_t position, uint64_t count, const uint8_t* buffer,
                   uint64_t& transferred) override;
    uint32_t ReadSize(PlatformHandle file, uint64_t& size) override;
    uint32_t ReadTimes(PlatformHandle file, SFileTimes& times) override;
    uint32_t WriteTimes(PlatformHandle file, const SFileTimes& times) override;
    void CopyAccessRights(const std::u16string& from, const std::u16string& to) override;
    uint32_t Move(const std::u16string& from, const std::u16string& to, uint32_t flags) override;
    uint32_t Delete(const std::u16string& path) override;
    uint32_t MakeFolder(const std::u16string& path) override;
    uint32_t RemoveFolder(const std::u16string& path) override;
    uint32_t MakeTempName(const std::u16string& folder, const std::u16string& prefix,
                          uint32_t number, std::u16string& path) override;
    uint32_t FindTempFolder(std::u16string& folder) override;
    uint32_t ListDriveRoots(std::vector<std::u16string>& roots) override;
    uint32_t ReadDriveKind(const std::u16string& root) override;
    uint32_t ReadVolumeInfo(const std::u16string& root, SVolumeInfo& info) override;
    uint32_t ReadDiskSpace(const std::u16string& folder, SDiskSpace& space) override;
    uint32_t ReadDeviceName(const std::u16string& drive, std::u16string& name) override;
    uint32_t ReadLongPath(const std::u16string& path, std::u16string& longPath) override;
    uint32_t FindWindowsFolder(std::u16string& folder) override;
    uint32_t LocateSpecialFolder(int32_t number, ShellItem& item) override;
    uint32_t CreateShellLink(const std::u16string& link, const std::u16string& source,
                             const std::u16string& description) override;
    uint32_t LoadShellLink(const std::u16string& link, ShellItem& target, ELinkStep& step) override;
    bool ReadShellItemPath(const ShellItem& item, std::u16string& path) override;
    uint32_t FindExecutable(std::u16string& path) override;
    uint32_t SetErrorMode(uint32_t mode) noexcept override;
    void Wait(uint32_t milliseconds) noexcept override;
};

} // namespace NSFileLibInternals
