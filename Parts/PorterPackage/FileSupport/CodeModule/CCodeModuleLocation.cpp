#include "PorterPackage/FileSupport/CodeModule/CCodeModuleLocation.h"

#include "PorterPackage/FileSupport/CodeModule/OwnModule.h"
#include "PorterPackage/FileSupport/FolderHelpers.h"

namespace NSPorter {

CCodeModuleLocation FindCodeModule(void* systemHandle) {
    const SOwnModulePath path = FindOwnModulePath(systemHandle);
    const CLibrarySearchFolder searchFolder(path.fFolder);
    const NSFileLibSupport::FileHandle file = NSFileLibSupport::MakeFileSpec(path.fPath);
    // A module without a folder would be no place to look for companions.
    NSFileLibSupport::GetParent(file);
    const std::u16string name = NSFileLibSupport::GetName(*file);
    return {file, name, name, systemHandle};
}

} // namespace NSPorter
