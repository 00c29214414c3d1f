#pragma once

#include "PorterPackage/FileSupport/SpecHandles.h"

#include <functional>
#include <string>

namespace NSFileLibSupport {

struct SFolderEntry {
    std::u16string fName; // of the entry itself, ".lnk" included
    bool fIsAlias = false;
    /// What the entry is or, for an alias, leads to: one of the two is set.
    FileHandle fFile;
    DirHandle fFolder;
};

/// Visits the entries of one folder and follows names with the extension ".lnk". An alias that
/// leads nowhere, and an entry that is gone when its turn comes, are passed over. What the visitor
/// throws ends the walk.
void WalkFolder(const DirHandle& folder, const std::function<void(const SFolderEntry&)>& visit);

} // namespace NSFileLibSupport
