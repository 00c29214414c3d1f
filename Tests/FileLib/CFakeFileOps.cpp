#include "Tests/FileLib/CFakeFileOps.h"

#include "FileLib/Source/Win/NameMaking.h"
#include "Text/UnicodeConversion.h"

#include <algorithm>

namespace NSFileLibInternals {

CFakeFileOps::CFakeFileOps() : fBefore(SetPlatformFileOps(this)) {
    fDrives[u"C:\\"] = {};
    AddFolder(u"C:\\");
    AddFolder(u"C:\\Windows");
    AddFolder(u"C:\\Temp");
}

CFakeFileOps::~CFakeFileOps() {
    SetPlatformFileOps(fBefore);
}

void CFakeFileOps::Script(const std::string& operation, const std::vector<uint32_t>& codes) {
    fScript[operation].assign(codes.begin(), codes.end());
}

int CFakeFileOps::CountCalls(const std::string& operation) const {
    const auto found = fCallCounts.find(operation);
    return found != fCallCounts.end() ? found->second : 0;
}

uint32_t CFakeFileOps::Enter(const std::string& operation) {
    ++fCallCounts[operation];
    std::deque<uint32_t>& codes = fScript[operation];
    if (codes.empty()) {
        return kError_None;
    }
    const uint32_t code = codes.front();
    codes.pop_front();
    return code;
}

void CFakeFileOps::AddFile(const std::u16string& path, const std::string& text,
                           uint64_t creationTime) {
    auto file = std::make_shared<SFakeFile>();
    file->fBytes.assign(text.begin(), text.end());
    file->fTimes.fCreation = creationTime;
    fFiles[path] = file;
}

void CFakeFileOps::AddFolder(const std::u16string& path) {
    auto folder = std::make_shared<SFakeFile>();
    folder->fAttributes = kAttribute_Directory;
    fFiles[path] = folder;
}

std::string CFakeFileOps::TextOf(const std::u16string& path) const {
    const auto found = fFiles.find(path);
    return found == fFiles.end()
               ? "(none)"
               : std::string(found->second->fBytes.begin(), found->second->fBytes.end());
}

SPlatformEntry CFakeFileOps::EntryOf(const std::u16string& path, const SFakeFile& file) const {
    return {GetNameOfPath(path), file.fAttributes, file.fTimes, file.fBytes.size()};
}

size_t CFakeFileOps::GetLongestPath() const noexcept {
    return fLongestPath;
}

uint32_t CFakeFileOps::ReadAttributes(const std::u16string& path, uint32_t& errorCode) {
    errorCode = Enter("ReadAttributes");
    const auto found = fFiles.find(path);
    if (errorCode == kError_None && found == fFiles.end()) {
        errorCode = kError_FileNotFound;
    }
    return errorCode == kError_None ? found->second->fAttributes : kAttributes_None;
}

uint32_t CFakeFileOps::WriteAttributes(const std::u16string& path, uint32_t attributes) {
    const uint32_t code = Enter("WriteAttributes");
    if (code == kError_None) {
        fFiles.at(path)->fAttributes = attributes;
    }
    return code;
}

uint32_t CFakeFileOps::FindFirst(const std::u16string& folder, PlatformHandle& scan,
                                 SPlatformEntry& entry) {
    const uint32_t code = Enter("FindFirst");
    if (code != kError_None) {
        return code;
    }
    SScan found;
    for (const auto& [path, file] : fFiles) {
        if (path.size() > folder.size() && path.starts_with(folder) &&
            path.find(u'\\', folder.size()) == std::u16string::npos) {
            found.fEntries.push_back(EntryOf(path, *file));
        }
    }
    if (found.fEntries.empty()) {
        return kError_NoMoreFiles;
    }
    scan = ++fLastHandle;
    fScans[scan] = found;
    return FindNext(scan, entry);
}

uint32_t CFakeFileOps::FindNext(PlatformHandle scan, SPlatformEntry& entry) {
    const uint32_t code = Enter("FindNext");
    SScan& state = fScans.at(scan);
    if (code != kError_None || state.fNext == state.fEntries.size()) {
        return code != kError_None ? code : kError_NoMoreFiles;
    }
    entry = state.fEntries[state.fNext++];
    return kError_None;
}

void CFakeFileOps::EndFind(PlatformHandle scan) noexcept {
    fScans.erase(scan);
}

uint32_t CFakeFileOps::FindEntry(const std::u16string& path, SPlatformEntry& entry) {
    const uint32_t code = Enter("FindEntry");
    const auto found = fFiles.find(path);
    if (code != kError_None || found == fFiles.end()) {
        return code != kError_None ? code : kError_FileNotFound;
    }
    entry = EntryOf(path, *found->second);
    return kError_None;
}

uint32_t CFakeFileOps::Open(const std::u16string& path, const SOpenRequest& request,
                            PlatformHandle& file) {
    const uint32_t code = Enter("Open");
    if (code != kError_None) {
        return code;
    }
    const bool exists = HasFile(path);
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
    fOpenFiles[file] = {fFiles[path], request};
    return kError_None;
}

void CFakeFileOps::Close(PlatformHandle file) noexcept {
    fOpenFiles.erase(file);
}

uint32_t CFakeFileOps::Read(PlatformHandle file, uint64_t position, uint64_t count, uint8_t* buffer,
                            uint64_t& transferred) {
    const uint32_t code = Enter("Read");
    if (code == kError_None) {
        const std::vector<uint8_t>& bytes = fOpenFiles.at(file).fFile->fBytes;
        const uint64_t begin = std::min<uint64_t>(position, bytes.size());
        transferred = std::min<uint64_t>(count, bytes.size() - begin);
        std::copy_n(bytes.begin() + static_cast<int64_t>(begin), transferred, buffer);
    }
    return code;
}

uint32_t CFakeFileOps::Write(PlatformHandle file, uint64_t position, uint64_t count,
                             const uint8_t* buffer, uint64_t& transferred) {
    const uint32_t code = Enter("Write");
    if (code == kError_None) {
        std::vector<uint8_t>& bytes = fOpenFiles.at(file).fFile->fBytes;
        bytes.resize(std::max<uint64_t>(bytes.size(), position + count));
        std::copy_n(buffer, count, bytes.begin() + static_cast<int64_t>(position));
        transferred = count;
    }
    return code;
}

uint32_t CFakeFileOps::ReadSize(PlatformHandle file, uint64_t& size) {
    size = fOpenFiles.at(file).fFile->fBytes.size();
    return Enter("ReadSize");
}

uint32_t CFakeFileOps::ReadTimes(PlatformHandle file, SFileTimes& times) {
    times = fOpenFiles.at(file).fFile->fTimes;
    return Enter("ReadTimes");
}

uint32_t CFakeFileOps::WriteTimes(PlatformHandle file, const SFileTimes& times) {
    const uint32_t code = Enter("WriteTimes");
    if (code == kError_None) {
        SFileTimes& kept = fOpenFiles.at(file).fFile->fTimes;
        kept.fCreation = times.fCreation != 0 ? times.fCreation : kept.fCreation;
        kept.fLastAccess = times.fLastAccess != 0 ? times.fLastAccess : kept.fLastAccess;
        kept.fLastWrite = times.fLastWrite != 0 ? times.fLastWrite : kept.fLastWrite;
    }
    return code;
}

void CFakeFileOps::CopyAccessRights(const std::u16string&, const std::u16string&) {
    Enter("CopyAccessRights");
}

uint32_t CFakeFileOps::Move(const std::u16string& from, const std::u16string& to, uint32_t flags) {
    const uint32_t code = Enter("Move");
    if (code != kError_None) {
        return code;
    }
    if (!HasFile(from)) {
        return kError_FileNotFound;
    }
    if (HasFile(to) && (flags & kMove_Replace) == 0) {
        return kError_AlreadyExists;
    }
    fFiles[to] = fFiles[from];
    fFiles.erase(from);
    return kError_None;
}

uint32_t CFakeFileOps::Delete(const std::u16string& path) {
    const uint32_t code = Enter("Delete");
    if (code != kError_None) {
        return code;
    }
    return fFiles.erase(path) != 0 ? kError_None : kError_FileNotFound;
}

uint32_t CFakeFileOps::MakeFolder(const std::u16string& path) {
    const uint32_t code = Enter("MakeFolder");
    if (code == kError_None && HasFile(path)) {
        return kError_AlreadyExists;
    }
    if (code == kError_None) {
        AddFolder(path);
    }
    return code;
}

uint32_t CFakeFileOps::RemoveFolder(const std::u16string& path) {
    const uint32_t code = Enter("RemoveFolder");
    return code == kError_None ? Delete(path) : code;
}

uint32_t CFakeFileOps::MakeTempName(const std::u16string& folder, const std::u16string& prefix,
                                    uint32_t number, std::u16string& path) {
    const uint32_t code = Enter("MakeTempName");
    if (code == kError_None) {
        const uint32_t used = number != 0 ? number : ++fLastTempNumber;
        path = JoinPath(folder, prefix + NSTextPackage::AsciiToUtf16(std::to_string(used), false) +
                                    u".tmp");
        if (number == 0) {
            AddFile(path, "", 8000);
        }
    }
    return code;
}

uint32_t CFakeFileOps::FindTempFolder(std::u16string& folder) {
    folder = u"C:\\Temp";
    return Enter("FindTempFolder");
}

uint32_t CFakeFileOps::ListDriveRoots(std::vector<std::u16string>& roots) {
    for (const auto& [root, drive] : fDrives) {
        roots.push_back(root);
    }
    return Enter("ListDriveRoots");
}

uint32_t CFakeFileOps::ReadDriveKind(const std::u16string& root) {
    const auto found = fDrives.find(root);
    return found != fDrives.end() ? found->second.fKind : kDrive_NoRoot;
}

uint32_t CFakeFileOps::ReadVolumeInfo(const std::u16string& root, SVolumeInfo& info) {
    fErrorModeOfLastVolumeCall = fErrorMode;
    const uint32_t code = Enter("ReadVolumeInfo");
    if (code != kError_None) {
        return code;
    }
    info.fLabel = u"label";
    const auto found = fDrives.find(root);
    return found != fDrives.end() ? found->second.fVolumeError : kError_PathNotFound;
}

uint32_t CFakeFileOps::ReadDiskSpace(const std::u16string&, SDiskSpace& space) {
    space = {uint64_t{5} << 32, uint64_t{9} << 32};
    return Enter("ReadDiskSpace");
}

uint32_t CFakeFileOps::ReadDeviceName(const std::u16string& drive, std::u16string& name) {
    name = fDrives[drive + u'\\'].fDeviceName;
    return kError_None;
}

uint32_t CFakeFileOps::ReadLongPath(const std::u16string& path, std::u16string& longPath) {
    longPath = path;
    return HasFile(path) ? Enter("ReadLongPath") : kError_FileNotFound;
}

uint32_t CFakeFileOps::FindWindowsFolder(std::u16string& folder) {
    folder = fWindowsFolder;
    return Enter("FindWindowsFolder");
}

uint32_t CFakeFileOps::LocateSpecialFolder(int32_t number, ShellItem& item) {
    const auto found = fSpecialFolders.find(number);
    if (found == fSpecialFolders.end()) {
        return kOLE_NotFound;
    }
    const std::string bytes = NSTextPackage::Utf16ToUtf8(found->second);
    item.assign(bytes.begin(), bytes.end());
    return 0;
}

uint32_t CFakeFileOps::CreateShellLink(const std::u16string& link, const std::u16string& source,
                                       const std::u16string&) {
    const uint32_t code = Enter("CreateShellLink");
    if (code == kError_None) {
        AddFile(link, "link");
        fLinks[link].fTarget = source;
    }
    return code;
}

uint32_t CFakeFileOps::LoadShellLink(const std::u16string& link, ShellItem& target,
                                     ELinkStep& step) {
    const SFakeLink& found = fLinks[link];
    const std::string bytes = NSTextPackage::Utf16ToUtf8(found.fTarget);
    target.assign(bytes.begin(), bytes.end());
    step = found.fStep;
    return found.fResult;
}

bool CFakeFileOps::ReadShellItemPath(const ShellItem& item, std::u16string& path) {
    path = NSTextPackage::Utf8ToUtf16Default(std::string(item.begin(), item.end()));
    return fHasItemPaths;
}

uint32_t CFakeFileOps::FindExecutable(std::u16string& path) {
    path = fExecutable;
    return Enter("FindExecutable");
}

uint32_t CFakeFileOps::SetErrorMode(uint32_t mode) noexcept {
    const uint32_t before = fErrorMode;
    fErrorMode = mode;
    return before;
}

void CFakeFileOps::Wait(uint32_t milliseconds) noexcept {
    fWaits.push_back(milliseconds);
}

} // namespace NSFileLibInternals
