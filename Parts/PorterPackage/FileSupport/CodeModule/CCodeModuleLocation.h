#pragma once

#include "FileLib/Interface/ISpecs.h"

#include <string>

#include <boost/shared_ptr.hpp>

namespace NSPorter {

/// Where a code module, the library itself, lies.
struct CCodeModuleLocation {
    boost::shared_ptr<NSFileLib::IFileSpec> fFile;
    /// Both the file's name.
    std::u16string fPath1;
    std::u16string fPath2;
    /// The platform's, null where modules have none. Not owned.
    void* fSystemHandle = nullptr;
};

/// Finds the module that this code is part of. The file itself need not be there any more. On
/// Windows the handle is the module's, and the search for further libraries is led to the module's
/// folder meanwhile. Raises a plain std::exception when the system does not know the module's path;
/// a path over 260 characters counts as such on Windows.
CCodeModuleLocation FindCodeModule(void* systemHandle);

} // namespace NSPorter
