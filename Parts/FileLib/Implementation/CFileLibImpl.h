#pragma once

#include "FileLib/Interface/FileLibRecords.h"

#include <string>

namespace NSFileLibInternals {

enum class ESpecKind { kFolder, kFile };

/// What a spec object names. Paths of folders end in "\", those of files do not.
struct SSpecPath {
    ESpecKind fKind = ESpecKind::kFile;
    std::u16string fPath;
};

/// What the file library does with URLs, native paths, children and aliases; the rest of its
/// operations are the functions of FileFunctionsWin.h. Paths go in and come out, failures are
/// exceptions; the glue turns them into status values.
///
/// A "volume" is a root ("C:\"), a "folder" ends in "\", a "file" does not; answers keep to that,
/// and arguments are taken as specs hold them. A "name" is one component. All text is UTF-16, URLs
/// are UTF-8. What is not there is XNotFound except where another failure is named.
class CFileLibImpl {
public:
    /// --- URLs: "file://" and the path, with its "\" kept
    /// "file://" may be missing, "/" counts as "\". What ends in "\" is a folder, all else a file;
    /// it must exist.
    static SSpecPath InterpretURL(const std::string& url);
    static std::string GetURL(const std::u16string& path);

    /// --- Specs from native paths: tests the form only, so that a spec can name what is not there
    /// (except that a file is refused as a folder). XNotFound for a text that is not a path.
    static std::u16string MakeVolumePath(const std::u16string& nativePath);
    static std::u16string MakeFolderPath(const std::u16string& nativePath);
    static std::u16string MakeFilePath(const std::u16string& nativePath);

    /// --- Children
    /// Where a child of that name is or would be. XNotFound for a name that is not valid.
    static std::u16string MakeChildPath(const std::u16string& folder, const std::u16string& name);
    static NSFileLib::SFileInfo GetChildInfo(const std::u16string& folder,
                                             const std::u16string& name, bool& isFolder);
    static bool DoesChildFileExist(const std::u16string& folder, const std::u16string& name);
    static bool DoesChildFolderExist(const std::u16string& folder, const std::u16string& name);
    static std::u16string GetChildFile(const std::u16string& folder, const std::u16string& name);
    /// ".." gives the parent, "." the folder itself; both must exist too.
    static std::u16string GetChildDirectory(const std::u16string& folder,
                                            const std::u16string& name);
    /// XCreate for a name that is not valid or is there already.
    static std::u16string CreateFolder(const std::u16string& folder, const std::u16string& name);

    /// --- Aliases: shell links on Windows, symbolic links under a name with ".lnk" elsewhere. What
    /// is an alias is told by the extension alone.
    /// Writes an alias file that leads to the source file. XNotFound, XCreate.
    static void CreateAlias(const std::u16string& alias, const std::u16string& source);
    /// XNotFound, XResolve.
    static SSpecPath ResolvePossibleAlias(const std::u16string& alias);
};

} // namespace NSFileLibInternals
