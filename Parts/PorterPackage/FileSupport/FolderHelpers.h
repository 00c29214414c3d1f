#pragma once

#include "PorterPackage/FileSupport/SpecHandles.h"

#include <string>

namespace NSFileLibSupport {

// Specs with exceptions in place of statuses. Paths are native: UTF-16 with drive and "\"; a
// folder's ends in "\".

/// By the text alone; nothing need be there.
VolumeHandle MakeVolumeSpec(const std::u16string& nativePath);
DirHandle MakeDirSpec(const std::u16string& nativePath);
FileHandle MakeFileSpec(const std::u16string& nativePath);

DirHandle GetParent(const FileHandle& file);
/// XNotFound for a root.
DirHandle GetParent(const DirHandle& folder);
/// The last component of the path.
std::u16string GetName(const NSFileLib::IFileSpec& file);
std::u16string GetName(const NSFileLib::IDirSpec& folder);

/// XNotFound when it is not there.
FileHandle GetChildFile(const DirHandle& folder, const std::u16string& name);
DirHandle GetChildFolder(const DirHandle& folder, const std::u16string& name);
bool DoesChildFileExist(const DirHandle& folder, const std::u16string& name);

} // namespace NSFileLibSupport
