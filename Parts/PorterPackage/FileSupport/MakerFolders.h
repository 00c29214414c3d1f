#pragma once

#include "PorterPackage/FileSupport/SpecHandles.h"

namespace NSFileLibSupport {

// The maker's folder, "Halyard Software", in a place of the user's, created when missing. XNotFound
// when the user has no such place.

/// Below the documents.
DirHandle GetOrCreateMusicDocumentsDirSpec();
/// Below the application data.
DirHandle GetCachedDataFolderDirSpec();

} // namespace NSFileLibSupport
