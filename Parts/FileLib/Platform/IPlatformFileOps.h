// The operations that a platform supplies to the file functions; all logic above speaks to the file
// system, the volumes and the shell through this table and through nothing else.
//
// Every path is UTF-16 with drive and "\" (see PosixNameCodec.h for systems that have neither),
// every answer is a Windows error code, kError_None for success. An operation that fails leaves its
// out-arguments alone. Operations raise nothing but std::bad_alloc.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace NSFileLibInternals {

using PlatformHandle = std::intptr_t;
constexpr PlatformHandle kNoPlatformHandle = -1;

/// Times in 100 ns units since the beginning of 1601, UTC. 0 stands for "not known", and for "leave
/// as it is" where times are set.
struct SFileTimes {
    uint64_t fCreation = 0;
    uint64_t fLastAccess = 0;
    uint64_t fLastWrite = 0;
};

struct SPlatformEntry {
    std::u16string fName; // one component, without folder
    uint32_t fAttributes = 0;
    SFileTimes fTimes;
    uint64_t fSize = 0; // bytes
};

enum class EFileAccess { kRead, kReadWrite, kWriteAttributes };
enum class EFileCreation { kCreateNew = 1, kCreateAlways = 2, kOpenExisting = 3 };

constexpr uint32_t kShare_None = 0;
constexpr uint32_t kShare_Read = 1;
constexpr uint32_t kShare_Write = 2;

struct SOpenRequest {
    EFileAccess fAccess = EFileAccess::kRead;
    uint32_t fSharing = kShare_None;
    EFileCreation fCreation = EFileCreation::kOpenExisting;
};

struct SPlatformVolume {
    std::u16string fLabel;
    std::u16string fFileSystem;
    uint32_t fSerialNumber = 0;
    uint32_t fMaxComponentLength = 0;
    uint32_t fFlags = 0;
};

struct SDiskSpace {
    uint64_t fFreeForUser = 0; // bytes
    uint64_t fTotal = 0;       // bytes
};

/// An item of the shell (an item list on Windows), held as opaque bytes.
using ShellItem = std::vector<uint8_t>;

/// Where loading a shell link stopped.
enum class ELinkStep { kCreate, kLoad, kGetTarget, kDone };

class IPlatformFileOps {
public:
    virtual ~IPlatformFileOps() = default;

    /// Longest path that this platform takes, in UTF-16 units.
    virtual size_t GetLongestPath() const noexcept = 0;

    /// kAttributes_None when nothing has that path; errorCode then tells why.
    virtual uint32_t ReadAttributes(const std::u16string& path, uint32_t& errorCode) = 0;
    virtual uint32_t WriteAttributes(const std::u16string& path, uint32_t attributes) = 0;

    /// Iterates a folder (which ends in "\") without "." and "..". An empty folder and the end of
    /// the iteration answer kError_NoMoreFiles; the handle is open only after kError_None.
    virtual uint32_t FindFirst(const std::u16string& folder, PlatformHandle& scan,
                               SPlatformEntry& entry) = 0;
    virtual uint32_t FindNext(PlatformHandle scan, SPlatformEntry& entry) = 0;
    virtual void EndFind(PlatformHandle scan) noexcept = 0;
    /// The entry of one path, not a pattern. A symbolic link has the attributes, times and size of
    /// what it leads to, or its own when that is missing; an alias always has its own.
    virtual uint32_t FindEntry(const std::u16string& path, SPlatformEntry& entry) = 0;

    virtual uint32_t Open(const std::u16string& path, const SOpenRequest& request,
                          PlatformHandle& file) = 0;
    virtual void Close(PlatformHandle file) noexcept = 0;
    /// transferred tells how many bytes moved; fewer than count with kError_None is the file's end.
    virtual uint32_t Read(PlatformHandle file, uint64_t position, uint64_t count, uint8_t* buffer,
                          uint64_t& transferred) = 0;
    virtual uint32_t Write(PlatformHandle file, uint64_t position, uint64_t count,
                           const uint8_t* buffer, uint64_t& transferred) = 0;
    virtual uint32_t ReadSize(PlatformHandle file, uint64_t& size) = 0;
    virtual uint32_t ReadTimes(PlatformHandle file, SFileTimes& times) = 0;
    virtual uint32_t WriteTimes(PlatformHandle file, const SFileTimes& times) = 0;

    /// Gives a file the owner and the access rights of another, as far as the platform keeps them
    /// with the file and allows it; never gives rights that the other file does not give.
    virtual void CopyAccessRights(const std::u16string& from, const std::u16string& to) = 0;
    /// The path that a name leads to by symbolic links, where the platform has them; what is there
    /// may be missing. The path itself for anything else, and for an alias.
    virtual std::u16string FollowLinks(const std::u16string& path) = 0;

    /// flags: kMove_Replace, kMove_WriteThrough. Without kMove_Replace an existing target is
    /// kError_AlreadyExists.
    virtual uint32_t Move(const std::u16string& from, const std::u16string& to, uint32_t flags) = 0;
    virtual uint32_t Delete(const std::u16string& path) = 0;
    virtual uint32_t MakeFolder(const std::u16string& path) = 0;
    virtual uint32_t RemoveFolder(const std::u16string& path) = 0;

    /// With number 0 creates an empty file under a new name, for the user alone where files have
    /// such rights; with another number only gives the name that this number makes.
    virtual uint32_t MakeTempName(const std::u16string& folder, const std::u16string& prefix,
                                  uint32_t number, std::u16string& path) = 0;
    virtual uint32_t FindTempFolder(std::u16string& folder) = 0;

    virtual uint32_t ListDriveRoots(std::vector<std::u16string>& roots) = 0;
    virtual uint32_t ReadDriveKind(const std::u16string& root) = 0; // one of kDrive_
    virtual uint32_t ReadVolumeInfo(const std::u16string& root, SPlatformVolume& info) = 0;
    virtual uint32_t ReadDiskSpace(const std::u16string& folder, SDiskSpace& space) = 0;
    /// drive is a letter and ":".
    virtual uint32_t ReadDeviceName(const std::u16string& drive, std::u16string& name) = 0;
    virtual uint32_t ReadLongPath(const std::u16string& path, std::u16string& longPath) = 0;

    virtual uint32_t FindWindowsFolder(std::u16string& folder) = 0;
    /// The next three answer a COM result, with the sign bit set for a failure.
    virtual uint32_t LocateSpecialFolder(int32_t number, ShellItem& item) = 0;
    virtual uint32_t CreateShellLink(const std::u16string& link, const std::u16string& source,
                                     const std::u16string& description) = 0;
    /// step tells where a failure arose. An empty target with a successful result is possible.
    virtual uint32_t LoadShellLink(const std::u16string& link, ShellItem& target,
                                   ELinkStep& step) = 0;
    virtual bool ReadShellItemPath(const ShellItem& item, std::u16string& path) = 0;

    virtual uint32_t FindExecutable(std::u16string& path) = 0;
    virtual uint32_t SetErrorMode(uint32_t mode) noexcept = 0; // answers the mode before
    virtual void Wait(uint32_t milliseconds) noexcept = 0;
};

/// The operations of the running system.
IPlatformFileOps& GetSystemFileOps();

/// The operations in use: those of the running system unless others are set.
IPlatformFileOps& GetPlatformFileOps();

/// Puts other operations in use, which the caller keeps alive; null goes back to the system's.
/// Answers what was set before. Not for use while another thread is inside a file function.
IPlatformFileOps* SetPlatformFileOps(IPlatformFileOps* ops) noexcept;

/// A number from 1 to 65535 for a temporary name. A process, which gives its own number, gets a
/// number again only after all others, and goes through them in another order than most.
uint32_t NextTempNumber(uint32_t process) noexcept;

/// No dialog boxes for drives without a medium, until the end of the scope.
class CErrorBoxesOff {
public:
    CErrorBoxesOff();
    ~CErrorBoxesOff();
    CErrorBoxesOff(const CErrorBoxesOff&) = delete;
    CErrorBoxesOff& operator=(const CErrorBoxesOff&) = delete;

private:
    IPlatformFileOps& fOps;
    uint32_t fModeBefore;
};

} // namespace NSFileLibInternals
