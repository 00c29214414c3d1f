#pragma once

#include "FileLib/Interface/IFileLib.h"

#include <cstdint>

namespace NSFileLib {

constexpr char kFileLibName[] = "IFileLib";

/// Makes a library by the name of its interface; the caller deletes it. Null name:
/// kFileLibStatus_Invariant; empty name: kFileLibStatus_BadArgument; a name other than
/// kFileLibName: kFileLibStatus_UnsupportedFormat.
IFileLib* OpenFileLibByName(const char* name, int32_t* status);

/// The module's library, made on first use. Raises XOpen with the target word "dll" when it cannot
/// be made. No lock: the first call and the release happen while no other thread is here.
IFileLib* GetFileLibSingleton();
void ReleaseFileLibSingleton();

} // namespace NSFileLib

namespace NSFileLibInternals {

/// What the singleton is made by. Raises XOpen.
NSFileLib::IFileLib* StartFileLib(const char* name);

} // namespace NSFileLibInternals
