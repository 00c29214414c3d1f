// Making valid names, cutting them to a length, and taking names and paths apart. Pure functions.
#pragma once

#include <cstddef>
#include <string>

namespace NSFileLibInternals {

/// Behind the last "." and including it, when that is at most 256 units; otherwise no extension.
void SplitFileName(const std::u16string& name, std::u16string& stem, std::u16string& extension);

/// Behind the last "\": the folder keeps it. No "\": empty folder.
void SplitPath(const std::u16string& path, std::u16string& folder, std::u16string& name);

/// At most limit units, the extension kept. XOutOfSpace when no unit is left for the stem.
std::u16string TruncateFileName(const std::u16string& name, size_t limit);

/// A name that is near the wanted one and valid; an empty name stays empty. The limit holds for the
/// cut only: a reserved name gets a "_" more, and a cut may end in a blank or ".".
std::u16string MakeValidFileName(const std::u16string& name, size_t limit);
std::u16string MakeValidFolderName(const std::u16string& name);
std::u16string MakeValidVolumeName(const std::u16string& name);

/// Folder paths end in "\", file paths do not.
std::u16string WithTrailingSeparator(const std::u16string& path);
std::u16string WithoutTrailingSeparator(const std::u16string& path);

/// The path of a child; the folder's last "\" may be missing.
std::u16string JoinPath(const std::u16string& folder, const std::u16string& name);

/// The folder that holds a file or folder, with its last "\". XNotFound for a volume's root.
std::u16string GetParentPath(const std::u16string& path);

/// "C:\" or "\\server\share\" of a valid path.
std::u16string GetVolumeOfPath(const std::u16string& path);

/// The last component, without "\"; for a volume's root what stands before the last "\".
std::u16string GetNameOfPath(const std::u16string& path);

/// Whether the extension of the name is that of an alias.
bool WinIsAliasName(const std::u16string& name);

/// Windows may give paths as "\\?\C:\..." or "\\?\UNC\server\share\...", which are not valid
/// here; this gives the plain form.
std::u16string StripLongPathPrefix(const std::u16string& path);

} // namespace NSFileLibInternals
