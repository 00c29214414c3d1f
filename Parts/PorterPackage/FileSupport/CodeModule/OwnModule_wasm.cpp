#include "PorterPackage/FileSupport/CodeModule/OwnModule.h"

namespace NSPorter {

// A module is loaded from bytes and lies nowhere. It has a name so that hosts of the code above
// find what they expect.
SOwnModulePath FindOwnModulePath(void* /*systemHandle*/) {
    return {u"C:\\LoopLibrary.wasm", u"C:\\"};
}

CLibrarySearchFolder::CLibrarySearchFolder(const std::u16string& /*folder*/) {}

CLibrarySearchFolder::~CLibrarySearchFolder() = default;

} // namespace NSPorter
