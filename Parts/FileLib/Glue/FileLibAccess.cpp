#include "FileLib/Glue/FileLibAccess.h"

#include "Failure/Chain/ObjectTypeWords.h"
#include "Failure/Classes/XClasses.h"
#include "Failure/Raising/Raise.h"
#include "FileLib/Glue/CFileLibGlue.h"
#include "FileLib/Glue/GlueGuard.h"

#include <cstring>
#include <memory>

namespace NSFileLib {

namespace {

constinit std::unique_ptr<IFileLib> sFileLib;

int32_t CheckName(const char* name) {
    if (name == nullptr) {
        return kFileLibStatus_Invariant;
    }
    if (*name == '\0') {
        return kFileLibStatus_BadArgument;
    }
    if (std::strcmp(name, kFileLibName) != 0) {
        return kFileLibStatus_UnsupportedFormat;
    }
    return kFileLibStatus_OK;
}

} // namespace

IFileLib* OpenFileLibByName(const char* name, int32_t* status) {
    return NSFileLibInternals::CreateGuarded<IFileLib>(
        CheckName(name), status, [] { return new NSFileLibInternals::CFileLibGlue(); });
}

IFileLib* GetFileLibSingleton() {
    if (sFileLib == nullptr) {
        sFileLib.reset(NSFileLibInternals::StartFileLib(kFileLibName));
    }
    return sFileLib.get();
}

void ReleaseFileLibSingleton() {
    sFileLib.reset();
}

} // namespace NSFileLib

namespace NSFileLibInternals {

NSFileLib::IFileLib* StartFileLib(const char* name) {
    int32_t status = NSFileLib::kFileLibStatus_LogicError;
    std::unique_ptr<NSFileLib::IFileLib> made(NSFileLib::OpenFileLibByName(name, &status));
    if (status != NSFileLib::kFileLibStatus_OK) {
        NSLichen::RaiseWithTarget(NSLichen::XOpen("Failed to open File support library"),
                                  NSLichen::DllWord());
    }
    return made.release();
}

} // namespace NSFileLibInternals
