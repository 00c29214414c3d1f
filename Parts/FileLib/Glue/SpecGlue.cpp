#include "FileLib/Glue/SpecGlue.h"

#include "FileLib/Implementation/FileLibImplWin.h"

namespace NSFileLibInternals {

int32_t CDirSpecGlue::GetName(char16_t* name) const {
    return RunGuarded(CheckCall(IsValid(), {name}), [&] {
        PutUnfinished(name);
        PutText(name, CFileLibImpl().GetFolderName(PathOf(this)));
    });
}

int32_t CFileSpecGlue::GetName(char16_t* name) const {
    return RunGuarded(CheckCall(IsValid(), {name}), [&] {
        PutUnfinished(name);
        PutText(name, CFileLibImpl().GetFileName(PathOf(this)));
    });
}

} // namespace NSFileLibInternals
