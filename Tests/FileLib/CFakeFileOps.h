// A file system in memory whose operations can be made to fail, with drives, shares, special
// folders and shell links as a test likes them.
#pragma once

#include "FileLib/Source/Win/IPlatformFileOps.h"
#include "FileLib/Source/Win/NameMaking.h"
#include "FileLib/Source/Win/PlatformCodes.h"
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

    void AddFile(const std::u16string& path, const std::string& text, uint64_t creation = 1000) {
        fFiles[path] = std::make_shared<SFakeFile>();
        fFiles[path]->fBytes = text;
        fFiles[path]->fTimes.fCreation = creation;
    }
    void AddFolder(const std::u16string& path) {
        AddFile(path, "");
        fFiles[path]->fAttributes = kAttribute_Directory;
    }
    bool HasFile(const std::u16string& path) const { return fFiles.count(path) != 0; }
    std::string TextOf(const std::u16string& path) const {
        return HasFile(path) ? fFiles.at(path)->fBytes : "(none)";
    }

    std::map<std::u16string, std::shared_ptr<SFakeFile>> fFiles; // folders without their last "\"
    std::map<std::u16string, SFakeDrive> fDrives = {{u"C:\\", {}}};
    std::map<int32_t, std::u16string> fSpecialFolders;
    std::map<std::u16string, SFakeLink> fLinks;
    std::u16string fWindowsFolder = u"C:\\Windows";
    size_t fLongestPath = 260;
    std::vector<uint32_t> fWaits; // milliseconds
    uint32_t fErrorMode = 0;
    uint32_t fErrorModeOfLastVolumeCall = 0;
    bool fHasItemPaths = true;

    size_t GetLongestPath() const noexcept override { return fLongestPath; }
    uint32_t ReadAttributes(const std::u16string& path, uint32_t& errorCode) override {
        errorCode = DoOn("ReadAttributes", path, [] {});
        return errorCode == kError_None ? fFiles[path]->fAttributes : kAttributes_None;
    }
    uint32_t WriteAttributes(const std::u16string& path, uint32_t attributes) override {
        return DoOn("WriteAttributes", path, [&] { fFiles[path]->fAttributes = attributes; });
    }
    uint32_t FindFirst(const std::u16string& folder, PlatformHandle& scan,
                       SPlatformEntry& entry) override {
        scan = ++fLastHandle;
        for (const auto& [path, file] : fFiles) {
            if (path.size() > folder.size() && path.starts_with(folder) &&
                path.find(u'\\', folder.size()) == std::u16string::npos) {
                fScans[scan].push_back(EntryOf(path));
            }
        }
        const uint32_t code = Enter("FindFirst");
        return code == kError_None ? FindNext(scan, entry) : code;
    }
    uint32_t FindNext(PlatformHandle scan, SPlatformEntry& entry) override {
        if (fScans[scan].empty()) {
            return kError_NoMoreFiles;
        }
        entry = fScans[scan].front();
        fScans[scan].pop_front();
        return kError_None;
    }
    void EndFind(PlatformHandle scan) noexcept override { fScans.erase(scan); }
    uint32_t FindEntry(const std::u16string& path, SPlatformEntry& entry) override {
        return DoOn("FindEntry", path, [&] { entry = EntryOf(path); });
    }

    uint32_t Open(const std::u16string& path, const SOpenRequest& request,
                  PlatformHandle& file) override {
        const bool exists = HasFile(path);
        if (const uint32_t code = Enter("Open"); code != kError_None) {
            return code;
        }
        if (exists ? request.fCreation == EFileCreation::kCreateNew
                   : request.fCreation == EFileCreation::kOpenExisting) {
            return exists ? kError_FileExists : kError_FileNotFound;
        }
        if (!exists) {
            AddFile(path, "", 9000);
        } else if (request.fCreation == EFileCreation::kCreateAlways) {
            fFiles[path]->fBytes.clear();
        }
        file = ++fLastHandle;
        fOpenFiles[file] = fFiles[path];
        return kError_None;
    }
    void Close(PlatformHandle file) noexcept override { fOpenFiles.erase(file); }
    uint32_t Read(PlatformHandle file, uint64_t position, uint64_t count, uint8_t* buffer,
                  uint64_t& transferred) override {
        const std::string& bytes = fOpenFiles.at(file)->fBytes;
        transferred = bytes.substr(std::min<uint64_t>(position, bytes.size()), count)
                          .copy(reinterpret_cast<char*>(buffer), count);
        return Enter("Read");
    }
    uint32_t Write(PlatformHandle file, uint64_t position, uint64_t count, const uint8_t* buffer,
                   uint64_t& transferred) override {
        return Do("Write", [&] {
            std::string& bytes = fOpenFiles.at(file)->fBytes;
            bytes.resize(std::max<uint64_t>(bytes.size(), position + count));
            bytes.replace(position, count, reinterpret_cast<const char*>(buffer), count);
            transferred = count;
        });
    }
    uint32_t ReadSize(PlatformHandle file, uint64_t& size) override {
        size = fOpenFiles.at(file)->fBytes.size();
        return Enter("ReadSize");
    }
    uint32_t ReadTimes(PlatformHandle file, SFileTimes& times) override {
        times = fOpenFiles.at(file)->fTimes;
        return Enter("ReadTimes");
    }
    uint32_t WriteTimes(PlatformHandle file, const SFileTimes& times) override {
        return Do("WriteTimes", [&] { // zero leaves a time as it is
            SFileTimes& kept = fOpenFiles.at(file)->fTimes;
            kept.fCreation = times.fCreation != 0 ? times.fCreation : kept.fCreation;
            kept.fLastAccess = times.fLastAccess != 0 ? times.fLastAccess : kept.fLastAccess;
            kept.fLastWrite = times.fLastWrite != 0 ? times.fLastWrite : kept.fLastWrite;
        });
    }
    void CopyAccessRights(const std::u16string&, const std::u16string&) override {
        Enter("CopyAccessRights");
    }

    uint32_t Move(const std::u16string& from, const std::u16string& to, uint32_t flags) override {
        if (HasFile(to) && (flags & kMove_Replace) == 0) {
            return kError_AlreadyExists;
        }
        return DoOn("Move", from, [&] {
            fFiles[to] = fFiles[from];
            fFiles.erase(from);
        });
    }
    uint32_t Delete(const std::u16string& path) override {
        return DoOn("Delete", path, [&] { fFiles.erase(path); });
    }
    uint32_t MakeFolder(const std::u16string& path) override {
        return HasFile(path) ? kError_AlreadyExists : Do("MakeFolder", [&] { AddFolder(path); });
    }
    uint32_t RemoveFolder(const std::u16string& path) override {
        const uint32_t code = Enter("RemoveFolder");
        return code == kError_None ? Delete(path) : code;
    }

    uint32_t MakeTempName(const std::u16string& folder, const std::u16string& prefix,
                          uint32_t number, std::u16string& path) override {
        const std::string digits = std::to_string(number != 0 ? number : fLastTempNumber + 1);
        const uint32_t code = Enter("MakeTempName");
        path = JoinPath(folder, prefix + NSTextPackage::AsciiToUtf16(digits, false) + u".tmp");
        if (code == kError_None && number == 0) {
            ++fLastTempNumber;
            AddFile(path, "", 8000);
        }
        return code;
    }
    uint32_t FindTempFolder(std::u16string& folder) override {
        folder = u"C:\\Temp";
        return Enter("FindTempFolder");
    }

    uint32_t ListDriveRoots(std::vector<std::u16string>& roots) override {
        for (const auto& [root, drive] : fDrives) {
            roots.push_back(root);
        }
        return Enter("ListDriveRoots");
    }
    uint32_t ReadDriveKind(const std::u16string& root) override {
        return fDrives.count(root) != 0 ? fDrives[root].fKind : kDrive_NoRoot;
    }
    uint32_t ReadVolumeInfo(const std::u16string& root, SVolumeInfo& info) override {
        fErrorModeOfLastVolumeCall = fErrorMode;
        info.fLabel = u"label";
        return fDrives.count(root) != 0 ? fDrives[root].fVolumeError : kError_PathNotFound;
    }
    uint32_t ReadDiskSpace(const std::u16string&, SDiskSpace& space) override {
        space = {uint64_t{5} << 32, uint64_t{9} << 32};
        return Enter("ReadDiskSpace");
    }
    uint32_t ReadDeviceName(const std::u16string& drive, std::u16string& name) override {
        name = fDrives[drive + u'\\'].fDeviceName;
        return kError_None;
    }
    uint32_t ReadLongPath(const std::u16string& path, std::u16string& longPath) override {
        longPath = path;
        return HasFile(path) ? Enter("ReadLongPath") : kError_FileNotFound;
    }
    uint32_t FindWindowsFolder(std::u16string& folder) override {
        folder = fWindowsFolder;
        return Enter("FindWindowsFolder");
    }

    uint32_t LocateSpecialFolder(int32_t number, ShellItem& item) override {
        item = ItemOf(fSpecialFolders.count(number) != 0 ? fSpecialFolders[number] : u"");
        return item.empty() ? kOLE_NotFound : 0;
    }
    uint32_t CreateShellLink(const std::u16string& link, const std::u16string& source,
                             const std::u16string&) override {
        return Do("CreateShellLink", [&] {
            AddFile(link, "link");
            fLinks[link].fTarget = source;
        });
    }
    uint32_t LoadShellLink(const std::u16string& link, ShellItem& target,
                           ELinkStep& step) override {
        target = ItemOf(fLinks[link].fTarget);
        step = fLinks[link].fStep;
        return fLinks[link].fResult;
    }
    bool ReadShellItemPath(const ShellItem& item, std::u16string& path) override {
        path = NSTextPackage::Utf8ToUtf16Default(std::string(item.begin(), item.end()));
        return fHasItemPaths;
    }

    uint32_t FindExecutable(std::u16string& path) override {
        path = u"\\\\?\\C:\\Program\\a.exe";
        return Enter("FindExecutable");
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
    uint32_t Do(const std::string& operation, const TWork& work) {
        const uint32_t code = Enter(operation);
        if (code == kError_None) {
            work();
        }
        return code;
    }
    template <class TWork>
    uint32_t DoOn(const std::string& operation, const std::u16string& path, const TWork& work) {
        const uint32_t code = Enter(operation);
        if (code != kError_None || !HasFile(path)) {
            return code != kError_None ? code : kError_FileNotFound;
        }
        work();
        return kError_None;
    }
    SPlatformEntry EntryOf(const std::u16string& path) const {
        const SFakeFile& file = *fFiles.at(path);
        return {GetNameOfPath(path), file.fAttributes, file.fTimes, file.fBytes.size()};
    }
    static ShellItem ItemOf(const std::u16string& path) {
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
