#include "PorterPackage/Core/FileLibSupport/MakerFolders.h"

namespace NSFileLibSupport {

namespace {

constexpr const char16_t* kMaker = u"Halyard Software";
constexpr const char16_t* kNoProduct = u"";
// The platform's number of the user's documents.
constexpr int32_t kDocumentsFolder = 5;

} // namespace

DirHandle GetOrCreateMusicDocumentsDirSpec() {
    return CallFileLib([](NSFileLib::IFileLib& fileLib, int32_t* status) {
        return fileLib.GetProductDir(kDocumentsFolder, kMaker, kNoProduct, status);
    });
}

DirHandle GetCachedDataFolderDirSpec() {
    return CallFileLib([](NSFileLib::IFileLib& fileLib, int32_t* status) {
        return fileLib.GetAppDataDir(kMaker, kNoProduct, 0, status);
    });
}

} // namespace NSFileLibSupport
