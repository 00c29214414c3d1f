// A file system in memory whose operations can be made to fail, with drives, shares, special
// folders and shell links as a test likes them.
#pragma once

#include "FileLib/Source/Win/IPlatformFileOps.h"
#include "FileLib/Source/Win/PlatformCodes.h"

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace NSFileLibInternals {

struct SFakeFile {
    std::vector<uint8_t> fBytes;
    uint32_t fAttributes = kAttribute_Archive;
    SFileTimes fTimes = {1000, 2000, 3000};
};

struct SFakeDrive {
    uint32_t fKind = kDrive_Fixed;
    std::u16string fDeviceName;
    uint32_t fVolumeError = kError_None;
};

struct SFakeLink {
    uint32_t fResult = 0;
    ELinkStep fStep = ELinkStep::kDone;
    std::u16string fTarget; // empty: no item
};

// Begins with the volume C:\ and the folders C:\Windows\ and C:\Temp\. Paths differ by their text.
// While it lives, it is the table in use.
class CFakeFileOps : public IPlatformFileOps {
public:
    CFakeFileOps();
    ~CFakeFileOps() override;
    CFakeFileOps(const CFakeFileOps&) = delete;
    CFakeFileOps& operator=(const CFakeFileOps&) = delete;

    // The next calls of an operation answer these codes, kError_None for a call that does its work.
    void Script(const std::string& operation, const std::vector<uint32_t>& codes);
    int CountCalls(const std::string& operation) const;

    void AddFile(const std::u16string& path, const std::string& text, uint64_t creationTime = 1000);
    void AddFolder(const std::u16string& path);
    bool HasFile(const std::u16string& path) const { return fFiles.count(path) != 0; }
    std::string TextOf(const std::u16string& path) const;

    std::map<std::u16string, std::shared_ptr<SFakeFile>> fFiles; // folders without their last "\"
    std::map<std::u16string, SFakeDrive> fDrives;
    std::map<int32_t, std::u16string> fSpecialFolders;
    std::map<std::u16string, SFakeLink> fLinks;
    std::u16string fWindowsFolder = u"C:\\Windows";
    std::u16string fExecutable = u"\\\\?\\C:\\Program\\a.exe";
    size_t fLongestPath = 260;
    std::vector<uint32_t> fWaits; // milliseconds
    uint32_t fErrorMode = 0;
    uint32_t fErrorModeOfLastVolumeCall = 0;
    bool fHasItemPaths = true;

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

private:
    struct SOpenFile {
        std::shared_ptr<SFakeFile> fFile;
        SOpenRequest fRequest;
    };
    struct SScan {
        std::vector<SPlatformEntry> fEntries;
        size_t fNext = 0;
    };

    uint32_t Enter(const std::string& operation);
    SPlatformEntry EntryOf(const std::u16string& path, const SFakeFile& file) const;

    std::map<std::string, std::deque<uint32_t>> fScript;
    std::map<std::string, int> fCallCounts;
    std::map<PlatformHandle, SOpenFile> fOpenFiles;
    std::map<PlatformHandle, SScan> fScans;
    PlatformHandle fLastHandle = 0;
    uint32_t fLastTempNumber = 0;
    IPlatformFileOps* fBefore;
};

} // namespace NSFileLibInternals
