#pragma once

#include "FileLib/Platform/IPlatformFileOps.h"

#include <string>

namespace NSFileLibInternals {

/// The operations of the system that the library is built for: its two bodies stand in the files
/// whose names begin with "Platform".
class CSystemFileOps : public IPlatformFileOps {
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
    std::u16string FollowLinks(const std::u16string& path) override;
    uint32_t Move(const std::u16string& from, const std::u16string& to, uint32_t flags) override;
    uint32_t Delete(const std::u16string& path) override;
    uint32_t MakeFolder(const std::u16string& path) override;
    uint32_t RemoveFolder(const std::u16string& path) override;
    uint32_t MakeTempName(const std::u16string& folder, const std::u16string& prefix,
                          uint32_t number, std::u16string& path) override;
    uint32_t FindTempFolder(std::u16string& folder) override;
    uint32_t ListDriveRoots(std::vector<std::u16string>& roots) override;
    uint32_t ReadDriveKind(const std::u16string& root) override;
    uint32_t ReadVolumeInfo(const std::u16string& root, SPlatformVolume& info) override;
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
