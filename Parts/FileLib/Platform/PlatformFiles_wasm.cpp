#include "FileLib/Platform/CSystemFileOps.h"
#include "FileLib/Platform/PlatformCodes.h"

// The module has no file system: hosts hand over bytes. Every operation says so as a drive without
// a medium does; names and paths, which are text alone, work as elsewhere.
namespace NSFileLibInternals {

namespace {

constexpr size_t kMostPathUnits = 4096;

} // namespace

IPlatformFileOps& GetSystemFileOps() {
    static CSystemFileOps ops;
    return ops;
}

size_t CSystemFileOps::GetLongestPath() const noexcept {
    return kMostPathUnits;
}

uint32_t CSystemFileOps::ReadAttributes(const std::u16string& /*path*/, uint32_t& /*errorCode*/) {
    return kError_NotReady;
}

uint32_t CSystemFileOps::WriteAttributes(const std::u16string& /*path*/, uint32_t /*attributes*/) {
    return kError_NotReady;
}

uint32_t CSystemFileOps::FindFirst(const std::u16string& /*folder*/, PlatformHandle& /*scan*/,
                                   SPlatformEntry& /*entry*/) {
    return kError_NotReady;
}

uint32_t CSystemFileOps::FindNext(PlatformHandle /*scan*/, SPlatformEntry& /*entry*/) {
    return kError_NotReady;
}

void CSystemFileOps::EndFind(PlatformHandle /*scan*/) noexcept {}

uint32_t CSystemFileOps::FindEntry(const std::u16string& /*path*/, SPlatformEntry& /*entry*/) {
    return kError_NotReady;
}

uint32_t CSystemFileOps::Open(const std::u16string& /*path*/, const SOpenRequest& /*request*/,
                              PlatformHandle& /*file*/) {
    return kError_NotReady;
}

void CSystemFileOps::Close(PlatformHandle /*file*/) noexcept {}

uint32_t CSystemFileOps::Read(PlatformHandle /*file*/, uint64_t /*position*/, uint64_t /*count*/,
                              uint8_t* /*buffer*/, uint64_t& /*transferred*/) {
    return kError_NotReady;
}

uint32_t CSystemFileOps::Write(PlatformHandle /*file*/, uint64_t /*position*/, uint64_t /*count*/,
                               const uint8_t* /*buffer*/, uint64_t& /*transferred*/) {
    return kError_NotReady;
}

uint32_t CSystemFileOps::ReadSize(PlatformHandle /*file*/, uint64_t& /*size*/) {
    return kError_NotReady;
}

uint32_t CSystemFileOps::ReadTimes(PlatformHandle /*file*/, SFileTimes& /*times*/) {
    return kError_NotReady;
}

uint32_t CSystemFileOps::WriteTimes(PlatformHandle /*file*/, const SFileTimes& /*times*/) {
    return kError_NotReady;
}

void CSystemFileOps::CopyAccessRights(const std::u16string& /*from*/,
                                      const std::u16string& /*to*/) {}

std::u16string CSystemFileOps::FollowLinks(const std::u16string& path) {
    return path;
}

uint32_t CSystemFileOps::Move(const std::u16string& /*from*/, const std::u16string& /*to*/,
                              uint32_t /*flags*/) {
    return kError_NotReady;
}

uint32_t CSystemFileOps::Delete(const std::u16string& /*path*/) {
    return kError_NotReady;
}

uint32_t CSystemFileOps::MakeFolder(const std::u16string& /*path*/) {
    return kError_NotReady;
}

uint32_t CSystemFileOps::RemoveFolder(const std::u16string& /*path*/) {
    return kError_NotReady;
}

uint32_t CSystemFileOps::MakeTempName(const std::u16string& /*folder*/,
                                      const std::u16string& /*prefix*/, uint32_t /*number*/,
                                      std::u16string& /*path*/) {
    return kError_NotReady;
}

uint32_t CSystemFileOps::FindTempFolder(std::u16string& /*folder*/) {
    return kError_NotReady;
}

uint32_t CSystemFileOps::ListDriveRoots(std::vector<std::u16string>& /*roots*/) {
    return kError_NotReady;
}

uint32_t CSystemFileOps::ReadDriveKind(const std::u16string& /*root*/) {
    return kDrive_NoRoot;
}

uint32_t CSystemFileOps::ReadVolumeInfo(const std::u16string& /*root*/, SPlatformVolume& /*info*/) {
    return kError_NotReady;
}

uint32_t CSystemFileOps::ReadDiskSpace(const std::u16string& /*folder*/, SDiskSpace& /*space*/) {
    return kError_NotReady;
}

uint32_t CSystemFileOps::ReadDeviceName(const std::u16string& /*drive*/, std::u16string& /*name*/) {
    return kError_NotReady;
}

uint32_t CSystemFileOps::ReadLongPath(const std::u16string& /*path*/,
                                      std::u16string& /*longPath*/) {
    return kError_NotReady;
}

uint32_t CSystemFileOps::FindWindowsFolder(std::u16string& /*folder*/) {
    return kError_NotReady;
}

uint32_t CSystemFileOps::LocateSpecialFolder(int32_t /*number*/, ShellItem& /*item*/) {
    return kError_NotReady;
}

uint32_t CSystemFileOps::CreateShellLink(const std::u16string& /*link*/,
                                         const std::u16string& /*source*/,
                                         const std::u16string& /*description*/) {
    return kError_NotReady;
}

uint32_t CSystemFileOps::LoadShellLink(const std::u16string& /*link*/, ShellItem& /*target*/,
                                       ELinkStep& /*step*/) {
    return kError_NotReady;
}

bool CSystemFileOps::ReadShellItemPath(const ShellItem& /*item*/, std::u16string& /*path*/) {
    return false;
}

uint32_t CSystemFileOps::FindExecutable(std::u16string& /*path*/) {
    return kError_NotReady;
}

uint32_t CSystemFileOps::SetErrorMode(uint32_t /*mode*/) noexcept {
    return 0;
}

void CSystemFileOps::Wait(uint32_t /*milliseconds*/) noexcept {}

} // namespace NSFileLibInternals
