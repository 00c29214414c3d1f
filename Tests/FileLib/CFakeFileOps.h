// A file system in memory whose operations can be made to fail, with drives, shares, special
// folders and shell links as a test likes them.
#pragma once

#include "FileLib/Platform/IPlatformFileOps.h"
#include "FileLib/Platform/PlatformCodes.h"
#include "FileLib/Rules/NameMaking.h"
#include "Text/UnicodeConversion.h"

#include <algorithm>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace NSFileLibInternals {

struct SFakeFile {
    std::string fBytes;
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
    using TPath = const std::u16string&;
    using THandle = PlatformHandle;

    CFakeFileOps() : fBefore(SetPlatformFileOps(this)) {
        for (const char16_t* folder : {u"C:\\", u"C:\\Windows", u"C:\\Temp"}) {
            AddFolder(folder);
        }
    }
    ~CFakeFileOps() override { SetPlatformFileOps(fBefore); }
    CFakeFileOps(const CFakeFileOps&) = delete;
    CFakeFileOps& operator=(const CFakeFileOps&) = delete;

    // The next calls of an operation answer these codes, kError_None for a call that does its work.
    void Script(const std::string& operation, const std::vector<uint32_t>& codes) {
        fScript[operation].assign(codes.begin(), codes.end());
    }
    int CountCalls(const std::string& operation) { return fCallCounts[operation]; }

    void AddFile(TPath path, const std::string& text, uint64_t creation = 1000) {
        fFiles[path] = std::make_shared<SFakeFile>();
        fFiles[path]->fBytes = text;
        fFiles[path]->fTimes.fCreation = creation;
    }
    void AddFolder(TPath path) {
        AddFile(path, "");
        fFiles[path]->fAttributes = kAttribute_Directory;
    }
    bool HasFile(TPath path) const { return fFiles.count(path) != 0; }
    std::string TextOf(TPath path) const {
        return HasFile(path) ? fFiles.at(path)->fBytes : "(none)";
    }

    std::map<std::u16string, std::shared_ptr<SFakeFile>> fFiles; // folders without their last "\"
    std::map<std::u16string, SFakeDrive> fDrives = {{u"C:\\", {}}};
    std::map<int32_t, std::u16string> fSpecialFolders;
    std::map<std::u16string, SFakeLink> fLinks;
    std::u16string fWindowsFolder = u"C:\\Windows";
    size_t fLongestPath = 260;
    std::map<std::u16string, std::u16string> fSymbolicLinks;
    uint64_t fMostWritten = 1000000; // bytes, in one call
    std::vector<uint32_t> fWaits;    // milliseconds
    std::vector<uint32_t> fMoveFlags;
    uint32_t fErrorMode = 0;
    uint32_t fErrorModeOfLastVolumeCall = 0;
    bool fHasItemPaths = true;

    size_t GetLongestPath() const noexcept override { return fLongestPath; }
    uint32_t ReadAttributes(TPath path, uint32_t& errorCode) override {
        errorCode = DoOn("ReadAttributes", path, [] {});
        return errorCode == kError_None ? fFiles[path]->fAttributes : kAttributes_None;
    }
    uint32_t WriteAttributes(TPath path, uint32_t attributes) override {
        return DoOn("WriteAttributes", path, [&] { fFiles[path]->fAttributes = attributes; });
    }
    uint32_t FindFirst(TPath folder, THandle& scan, SPlatformEntry& entry) override {
        scan = ++fLastHandle;
        for (const auto& [path, file] : fFiles) {
            if (path == folder + GetNameOfPath(path)) {
                fScans[scan].push_back(EntryOf(path));
            }
        }
        return FindNext(scan, entry);
    }
    uint32_t FindNext(THandle scan, SPlatformEntry& entry) override {
        if (fScans[scan].empty()) {
            return kError_NoMoreFiles;
        }
        return Do("FindNext", [&] {
            entry = fScans[scan].front();
            fScans[scan].pop_front();
        });
    }
    void EndFind(THandle scan) noexcept override { fScans.erase(scan); }
    uint32_t FindEntry(TPath path, SPlatformEntry& entry) override {
        return DoOn("FindEntry", path, [&] { entry = EntryOf(path); });
    }

    uint32_t Open(TPath path, const SOpenRequest& request, THandle& file) override {
        if (HasFile(path) && request.fCreation == EFileCreation::kCreateNew) {
            return kError_FileExists;
        }
        const auto open = [&] {
            if (!HasFile(path)) {
                AddFile(path, "", 9000);
            }
            file = ++fLastHandle;
            fOpenFiles[file] = fFiles[path];
            if (request.fCreation == EFileCreation::kCreateAlways) {
                fFiles[path]->fBytes.clear();
            }
        };
        return Do("Open", open, HasFile(path) || request.fCreation != EFileCreation::kOpenExisting);
    }
    void Close(THandle file) noexcept override { fOpenFiles.erase(file); }
    uint32_t Read(THandle file, uint64_t position, uint64_t count, uint8_t* buffer,
                  uint64_t& transferred) override {
        const std::string& bytes = fOpenFiles.at(file)->fBytes;
        const size_t start = std::min<uint64_t>(position, bytes.size());
        transferred = bytes.copy(reinterpret_cast<char*>(buffer), count, start);
        return Enter("Read");
    }
    uint32_t Write(THandle file, uint64_t position, uint64_t count, const uint8_t* buffer,
                   uint64_t& transferred) override {
        return Do("Write", [&] {
            std::string& bytes = fOpenFiles.at(file)->fBytes;
            transferred = std::min(count, fMostWritten);
            bytes.resize(std::max<uint64_t>(bytes.size(), position + transferred));
            bytes.replace(position, transferred, reinterpret_cast<const char*>(buffer),
                          transferred);
        });
    }
    uint32_t ReadSize(THandle file, uint64_t& size) override {
        return Give("ReadSize", size, fOpenFiles.at(file)->fBytes.size());
    }
    uint32_t ReadTimes(THandle file, SFileTimes& times) override {
        return Give("ReadTimes", times, fOpenFiles.at(file)->fTimes);
    }
    uint32_t WriteTimes(THandle file, const SFileTimes& times) override {
        return Do("WriteTimes", [&] { // zero leaves a time as it is
            SFileTimes& kept = fOpenFiles.at(file)->fTimes;
            for (const auto time : {&SFileTimes::fCreation, &SFileTimes::fLastWrite}) {
                kept.*time = times.*time != 0 ? times.*time : kept.*time;
            }
        });
    }
    void CopyAccessRights(TPath, TPath) override { Enter("CopyAccessRights"); }
    std::u16string FollowLinks(TPath path) override {
        return fSymbolicLinks.count(path) != 0 ? fSymbolicLinks.at(path) : path;
    }

    uint32_t Move(TPath from, TPath to, uint32_t flags) override {
        if (HasFile(to) && (flags & kMove_Replace) == 0) {
            return kError_AlreadyExists;
        }
        fMoveFlags.push_back(flags);
        return DoOn("Move", from, [&] {
            fFiles[to] = fFiles[from];
            fFiles.erase(from);
        });
    }
    uint32_t Delete(TPath path) override {
        return DoOn("Delete", path, [&] { fFiles.erase(path); });
    }
    uint32_t MakeFolder(TPath path) override {
        return HasFile(path) ? kError_AlreadyExists : Do("MakeFolder", [&] { AddFolder(path); });
    }
    uint32_t RemoveFolder(TPath path) override {
        return DoOn("RemoveFolder", path, [&] { fFiles.erase(path); });
    }

    uint32_t MakeTempName(TPath folder, TPath prefix, uint32_t number,
                          std::u16string& path) override {
        return Do("MakeTempName", [&] {
            const std::string digits = std::to_string(number != 0 ? number : ++fLastTempNumber);
            path = JoinPath(folder, prefix + NSTextPackage::AsciiToUtf16(digits, false) + u".tmp");
            if (number == 0) {
                AddFile(path, "", 8000);
            }
        });
    }
    uint32_t FindTempFolder(std::u16string& folder) override {
        return Give<std::u16string>("FindTempFolder", folder, u"C:\\Temp");
    }

    uint32_t ListDriveRoots(std::vector<std::u16string>& roots) override {
        for (const auto& [root, drive] : fDrives) {
            roots.push_back(root);
        }
        return Enter("ListDriveRoots");
    }
    uint32_t ReadDriveKind(TPath root) override {
        return fDrives.count(root) != 0 ? fDrives[root].fKind : kDrive_NoRoot;
    }
    uint32_t ReadVolumeInfo(TPath root, SPlatformVolume& info) override {
        fErrorModeOfLastVolumeCall = fErrorMode;
        info.fLabel = u"label";
        return fDrives.count(root) != 0 ? fDrives[root].fVolumeError : kError_PathNotFound;
    }
    uint32_t ReadDiskSpace(TPath, SDiskSpace& space) override {
        return Give("ReadDiskSpace", space, {uint64_t{5} << 32, uint64_t{9} << 32});
    }
    uint32_t ReadDeviceName(TPath drive, std::u16string& name) override {
        name = fDrives[drive + u'\\'].fDeviceName;
        return kError_None;
    }
    uint32_t ReadLongPath(TPath path, std::u16string& longPath) override {
        return DoOn("ReadLongPath", path, [&] { longPath = path; });
    }
    uint32_t FindWindowsFolder(std::u16string& folder) override {
        return Give("FindWindowsFolder", folder, fWindowsFolder);
    }

    uint32_t LocateSpecialFolder(int32_t number, ShellItem& item) override {
        item = ItemOf(fSpecialFolders.count(number) != 0 ? fSpecialFolders[number] : u"");
        return item.empty() ? kOLE_NotFound : 0;
    }
    uint32_t CreateShellLink(TPath link, TPath source, TPath) override {
        return Do("CreateShellLink", [&] {
            AddFile(link, "link");
            fLinks[link].fTarget = source;
        });
    }
    uint32_t LoadShellLink(TPath link, ShellItem& target, ELinkStep& step) override {
        target = ItemOf(fLinks[link].fTarget);
        step = fLinks[link].fStep;
        return fLinks[link].fResult;
    }
    bool ReadShellItemPath(const ShellItem& item, std::u16string& path) override {
        path = NSTextPackage::Utf8ToUtf16Default(std::string(item.begin(), item.end()));
        return fHasItemPaths;
    }

    uint32_t FindExecutable(std::u16string& path) override {
        return Give<std::u16string>("FindExecutable", path, u"\\\\?\\C:\\Program\\a.exe");
    }
    uint32_t SetErrorMode(uint32_t mode) noexcept override {
        return std::exchange(fErrorMode, mode);
    }
    void Wait(uint32_t milliseconds) noexcept override { fWaits.push_back(milliseconds); }

private:
    uint32_t Enter(const std::string& operation) {
        ++fCallCounts[operation];
        std::deque<uint32_t>& codes = fScript[operation];
        if (codes.empty()) {
            return kError_None;
        }
        const uint32_t code = codes.front();
        codes.pop_front();
        return code;
    }
    // Work as far as the script has no failure for it.
    template <class TWork>
    uint32_t Do(const std::string& operation, const TWork& work, bool isThere = true) {
        const uint32_t code = Enter(operation);
        if (code != kError_None || !isThere) {
            return code != kError_None ? code : kError_FileNotFound;
        }
        work();
        return kError_None;
    }
    template <class TWork>
    uint32_t DoOn(const std::string& operation, TPath path, const TWork& work) {
        return Do(operation, work, HasFile(path));
    }
    template <class TValue>
    uint32_t Give(const std::string& operation, TValue& place, const TValue& value) {
        return Do(operation, [&] { place = value; });
    }
    SPlatformEntry EntryOf(TPath path) const {
        const SFakeFile& file = *fFiles.at(path);
        return {GetNameOfPath(path), file.fAttributes, file.fTimes, file.fBytes.size()};
    }
    static ShellItem ItemOf(TPath path) {
        const std::string bytes = NSTextPackage::Utf16ToUtf8(path);
        return ShellItem(bytes.begin(), bytes.end());
    }

    std::map<std::string, std::deque<uint32_t>> fScript;
    std::map<std::string, int> fCallCounts;
    std::map<PlatformHandle, std::shared_ptr<SFakeFile>> fOpenFiles;
    std::map<PlatformHandle, std::deque<SPlatformEntry>> fScans;
    PlatformHandle fLastHandle = 0;
    uint32_t fLastTempNumber = 0;
    IPlatformFileOps* fBefore;
};

} // namespace NSFileLibInternals
