#include "FileLib/Glue/SpecGlue.h"

#include "FileLib/Rules/NameMaking.h"

namespace NSFileLibInternals {

int32_t CDirSpecGlue::GetName(char16_t* name) const {
    return RunGuarded(CheckCall(IsValid(), {name}), [&] {
        PutUnfinished(name);
        PutText(name, GetNameOfPath(PathOf(this)));
    });
}

int32_t CFileSpecGlue::GetName(char16_t* name) const {
    return RunGuarded(CheckCall(IsValid(), {name}), [&] {
        PutUnfinished(name);
        PutText(name, GetNameOfPath(PathOf(this)));
    });
}

} // namespace NSFileLibInternals
