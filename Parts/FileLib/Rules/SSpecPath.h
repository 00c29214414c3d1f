#pragma once

#include <string>

namespace NSFileLibInternals {

enum class ESpecKind { kFolder, kFile };

/// What a spec object names. Paths of folders end in "\", those of files do not.
struct SSpecPath {
    ESpecKind fKind = ESpecKind::kFile;
    std::u16string fPath;
};

} // namespace NSFileLibInternals
