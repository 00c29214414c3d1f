#pragma once

#include "FileLib/Glue/FileLibAccess.h"
#include "FileLib/Glue/FileLibFailures.h"
#include "FileLib/Interface/ISpecs.h"

#include <cstdint>
#include <memory>
#include <type_traits>

#include <boost/shared_ptr.hpp>

namespace NSFileLibSupport {

/// Shared specs; the last handle deletes the object.
using VolumeHandle = boost::shared_ptr<NSFileLib::IVolumeSpec>;
using DirHandle = boost::shared_ptr<NSFileLib::IDirSpec>;
using FileHandle = boost::shared_ptr<NSFileLib::IFileSpec>;

/// Calls the file library for an object and raises what a bad status names. The call takes the
/// library and a pointer to the status.
template <class TCall>
auto CallFileLib(const TCall& call) {
    NSFileLib::IFileLib& fileLib = *NSFileLib::GetFileLibSingleton();
    int32_t status = NSFileLib::kFileLibStatus_LogicError;
    std::unique_ptr<std::remove_pointer_t<decltype(call(fileLib, &status))>> object(
        call(fileLib, &status));
    NSFileLib::ThrowIfFileLibError(status);
    return object;
}

} // namespace NSFileLibSupport
