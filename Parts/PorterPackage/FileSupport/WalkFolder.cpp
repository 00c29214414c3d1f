#include "PorterPackage/FileSupport/WalkFolder.h"

#include "Failure/Classes/XClasses.h"
#include "FileLib/Interface/IDirScanner.h"
#include "PorterPackage/FileSupport/FolderHelpers.h"
#include "Text/Comparison.h"

namespace NSFileLibSupport {

using namespace NSFileLib;

namespace {

bool IsAliasName(const std::u16string& name) {
    const std::u16string extension = u".lnk";
    return name.size() >= extension.size() &&
           NSTextPackage::TextEqualsIgnoreCase(name.substr(name.size() - extension.size()),
                                               extension);
}

void FollowAlias(const DirHandle& folder, SFolderEntry& entry) {
    const FileHandle alias = GetChildFile(folder, entry.fName);
    IDirSpec* targetFolder = nullptr;
    IFileSpec* targetFile = nullptr;
    const int32_t status =
        GetFileLibSingleton()->ResolvePossibleAlias(alias.get(), &targetFolder, &targetFile);
    entry.fFolder.reset(targetFolder);
    entry.fFile.reset(targetFile);
    ThrowIfFileLibError(status);
}

bool FindEntry(const DirHandle& folder, bool isFolder, SFolderEntry& entry) {
    try {
        entry.fIsAlias = !isFolder && IsAliasName(entry.fName);
        if (entry.fIsAlias) {
            FollowAlias(folder, entry);
        } else if (isFolder) {
            entry.fFolder = GetChildFolder(folder, entry.fName);
        } else {
            entry.fFile = GetChildFile(folder, entry.fName);
        }
        return true;
    } catch (const NSLichen::XNotFound&) {
        return false;
    } catch (const NSLichen::XResolve&) {
        return false;
    }
}

} // namespace

void WalkFolder(const DirHandle& folder, const std::function<void(const SFolderEntry&)>& visit) {
    const auto scanner = CallFileLib([&](IFileLib& fileLib, int32_t* status) {
        return fileLib.CreateDirScanner(folder.get(), status);
    });
    while (scanner->IsAtEnd() == 0) {
        char16_t name[kFileLibTextUnits] = {};
        SFileInfo info = {};
        int32_t isFolder = 0;
        ThrowIfFileLibError(scanner->GetCurrent(name, &info, &isFolder));
        SFolderEntry entry;
        entry.fName = name;
        if (FindEntry(folder, isFolder != 0, entry)) {
            visit(entry);
        }
        ThrowIfFileLibError(scanner->Advance());
    }
}

} // namespace NSFileLibSupport
