#include "PorterPackage/FileSupport/CRobustFileSpec.h"

#include "Failure/Classes/XClasses.h"
#include "Failure/Raising/Raise.h"
#include "PorterPackage/FileSupport/FolderHelpers.h"

#include <utility>

namespace NSFileLibSupport {

using namespace NSFileLib;

namespace {

std::string GetFileURL(const IFileSpec& file) {
    char url[kFileLibTextUnits] = {};
    ThrowIfFileLibError(GetFileLibSingleton()->GetFileURL(&file, url));
    std::string text = url;
    // A URL near the end of the buffer may have been cut, and would name something else.
    constexpr size_t kLongestCharacter = 4;
    if (text.size() + kLongestCharacter >= sizeof url) {
        NSLichen::Raise(NSLichen::XOutOfSpace(""));
    }
    return text;
}

} // namespace

CRobustFileSpec::CRobustFileSpec(std::string url) : fURL(std::move(url)) {}

CRobustFileSpec::CRobustFileSpec(std::string url, std::u16string name)
    : fURL(std::move(url)), fHasName(true), fName(std::move(name)) {}

CRobustFileSpec::CRobustFileSpec(const FileHandle& file)
    : CRobustFileSpec(GetFileURL(*file), NSFileLibSupport::GetName(*file)) {}

std::u16string CRobustFileSpec::GetName() const {
    return fHasName ? fName : NSFileLibSupport::GetName(*GetFile());
}

FileHandle CRobustFileSpec::GetFile() const {
    IVolumeSpec* volume = nullptr;
    IDirSpec* folder = nullptr;
    IFileSpec* file = nullptr;
    const int32_t status =
        GetFileLibSingleton()->InterpretURL(fURL.c_str(), &volume, &folder, &file);
    const VolumeHandle volumeHandle(volume);
    const DirHandle folderHandle(folder);
    FileHandle fileHandle(file);
    // A URL that leads to a folder names no file either.
    if (status == kFileLibStatus_NotFound ||
        (status == kFileLibStatus_OK && fileHandle == nullptr)) {
        NSLichen::Raise(NSLichen::XNotFound("File not found."));
    }
    ThrowIfFileLibError(status);
    return fileHandle;
}

} // namespace NSFileLibSupport
