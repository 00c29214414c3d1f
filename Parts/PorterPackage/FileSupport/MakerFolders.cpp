#include "PorterPackage/FileSupport/MakerFolders.h"

#include "FileLib/Platform/PlatformCodes.h"

namespace NSFileLibSupport {

namespace {

constexpr const char16_t* kMaker = u"Halyard Software";
constexpr const char16_t* kNoProduct = u"";

} // namespace

DirHandle GetOrCreateMusicDocumentsDirSpec() {
    return CallFileLib([](NSFileLib::IFileLib& fileLib, int32_t* status) {
        return fileLib.GetProductDir(NSFileLibInternals::kSpecialFolder_Personal, kMaker,
                                     kNoProduct, status);
    });
}

DirHandle GetCachedDataFolderDirSpec() {
    return CallFileLib([](NSFileLib::IFileLib& fileLib, int32_t* status) {
        return fileLib.GetAppDataDir(kMaker, kNoProduct, 0, status);
    });
}

} // namespace NSFileLibSupport
